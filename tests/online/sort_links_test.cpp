#include <gtest/gtest.h>

#include "larkstone/online/table.hpp"

#include "rendered.hpp"

namespace larkstone {
namespace {

using test::rendered;
using test::runner;

clsLarkstoneOnlineTable tableOf(LRKCourse& course) {
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.baseURL("/splits?class=\"H21\"");
  table.showStartTimes(true);
  table.showFinishTimes(true);
  table.caption("name", "Name");
  table.caption("startTime", "Start");
  table.caption("finishTime", "Time");
  table.caption("legTimeSortCaption", "Leg");
  table.caption("totalTimeSortCaption", "Total");
  table.caption("passingEndTimeSortCaption", "Clock");
  table.caption("sortByName", "Sort by \"name\"");
  table.caption("sortByFinishTime", "Sort by time");
  table.caption("sortByLegTime", "Leg time to");
  table.caption("sortByTotalTime", "Total time to");
  table.caption("sortByPassingEndTime", "Clock time at");
  table.caption("control", "control");
  table.caption("finish", "the finish");
  return table;
}

std::string link(const std::string& parameters, const std::string& tooltip,
                 const std::string& caption) {
  return "<A href=\"/splits?class=&quot;H21&quot;" + parameters + "\" class=\"sort\"" +
         (tooltip.empty() ? "" : " title=\"" + tooltip + "\"") + ">" + caption + "</A>";
}

std::string selected(const std::string& link) {
  return "<SPAN class=\"sortedBy\">&nbsp;" + link + "&nbsp;</SPAN>";
}

TEST(SortLinksTest, Captions) {
  LRKCourse course = test::adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  auto rows = rendered(table);
  const std::string name = link("&sortBy=1", "Sort by &quot;name&quot;", "Name");
  EXPECT_EQ(rows[0][0].content, "&nbsp;");
  EXPECT_EQ(rows[0][1].content, name);
  EXPECT_EQ(rows[0][2].content, link("&sortBy=12", "", "Start"));
  EXPECT_EQ(rows[0][3].content, link("&sortBy=-1", "Sort by time", "Time"));
  EXPECT_EQ(rows[0][4].content, link("&sortBy=-1", "Sort by time", "&nbsp;"));
  EXPECT_EQ(rows[0][5].content, link("&sortBy=32&legNo=0", "Leg time to control 1", "Leg") +
                                    "&nbsp;" +
                                    link("&sortBy=33&legNo=0", "Total time to control 1", "Total"));
  EXPECT_EQ(rows[0][6].content,
            link("&sortBy=32&legNo=1", "Leg time to the finish", "Leg") + "&nbsp;" +
                link("&sortBy=33&legNo=1", "Total time to the finish", "Total"));
  EXPECT_EQ(rows[0][7].content, name);
  EXPECT_EQ(rows[1][0].content, link("&sortBy=4", "", "&nbsp;"));
  EXPECT_EQ(rows[1][1].content, "-1 (31)");
  EXPECT_EQ(rows[1][3].content, link("&sortBy=4", "", "&nbsp;"));

  table.passingEndTimes(true);
  rows = rendered(table);
  EXPECT_EQ(rows[0][5].content, link("&sortBy=32&legNo=0", "Leg time to control 1", "Leg") +
                                    "&nbsp;" +
                                    link("&sortBy=35&legNo=0", "Clock time at control 1", "Clock"));
}

TEST(SortLinksTest, SortedColumnIsMarked) {
  LRKCourse course = test::calculatedCourse({runner("S-31-32-33-F", {0, 60, 120, 180, 241}),
                                             runner("S-31-32-33-F", {0, 61, 120, 180, 240})});
  clsLarkstoneOnlineTable table = tableOf(course);
  struct Row {
    int line;
    enmSort sortBy;
    int legNo;
    std::vector<std::string> marked;  // captions in the order of the cells
  };
  const Row rows[] = {
      {__LINE__, esorLegTime, 3, {"&sortBy=32&legNo=3"}},
      {__LINE__, esorTotalTime, 0, {"&sortBy=33&legNo=0"}},
      {__LINE__, esorPassingEndTime, 0, {}},
      {__LINE__, esorName, -1, {"&sortBy=1", "&sortBy=1"}},
      {__LINE__, esorClub, 7, {"&sortBy=4", "&sortBy=4"}},
      {__LINE__, esorStartTime, 0, {"&sortBy=12"}},
      {__LINE__, esorCustom, 0, {"&sortBy=-1", "&sortBy=-1"}},
      {__LINE__, esorResultTime, -1, {}},
      {__LINE__, esorLegTime, 4, {}},
      {__LINE__, static_cast<enmSort>(30), 0, {}},
      {__LINE__, static_cast<enmSort>(-30000), 30000, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    table.sort(row.sortBy, row.legNo);
    EXPECT_EQ(table.sortedBy(), row.sortBy);
    EXPECT_EQ(table.sortedByLegNo(), row.legNo);
    table.createHTMLTable();
    std::vector<std::string> marked;
    std::size_t at = 0;
    for (;;) {
      const std::string address = test::between(
          table.htmlTableString(), at,
          "<SPAN class=\"sortedBy\">&nbsp;<A href=\"/splits?class=&quot;H21&quot;", "\"");
      if (at == std::string::npos) break;
      marked.push_back(address);
    }
    EXPECT_EQ(marked, row.marked);
  }
  table.sort(esorLegTime, 3);
  EXPECT_EQ(rendered(table)[0][8].content,
            selected(link("&sortBy=32&legNo=3", "Leg time to the finish", "Leg")) + "&nbsp;" +
                link("&sortBy=33&legNo=3", "Total time to the finish", "Total"));
}

TEST(SortLinksTest, NoLinksWithoutAnAddress) {
  LRKCourse course = test::adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.baseURL("");
  table.sort(esorName);
  table.createHTMLTable();
  EXPECT_EQ(table.htmlTableString().find("<A"), std::string::npos);
  EXPECT_EQ(table.htmlTableString().find("<SPAN"), std::string::npos);
}

std::string order(const LRKCourse& course) {
  std::string names;
  for (int i = 0; i < course.noOfRunners(); ++i) names += course.runner(i).name() + ",";
  return names;
}

LRKRunner named(const char* first, const char* last, int finish) {
  LRKRunner result = runner("S-31-F", {0, 300 - finish, finish});
  result.firstName(first);
  result.lastName(last);
  return result;
}

TEST(SortLinksTest, OrderOfTheRunners) {
  LRKCourse course = test::calculatedCourse({named("Eva", "Berg", 201), named("Åke", "Alm", 200),
                                             named("Ada", "Berg", 202), named("Bo", "Alm", 203)});
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.sort(esorName);
  EXPECT_EQ(order(course), "Bo Alm,Åke Alm,Ada Berg,Eva Berg,");
  EXPECT_EQ(course.runner(3).sortPlace(), 3);  // equal last names share the place
  table.sort(esorCustom, 0);
  EXPECT_EQ(order(course), "Åke Alm,Eva Berg,Ada Berg,Bo Alm,");
  table.sort(esorTotalTime, 0);
  EXPECT_EQ(order(course), "Bo Alm,Ada Berg,Eva Berg,Åke Alm,");
  table.sort(esorLegTime);
  EXPECT_EQ(order(course), "Åke Alm,Eva Berg,Ada Berg,Bo Alm,");
  table.sort(esorLegTime, 99);
  EXPECT_EQ(order(course), "Åke Alm,Eva Berg,Ada Berg,Bo Alm,");
}

}  // namespace
}  // namespace larkstone
