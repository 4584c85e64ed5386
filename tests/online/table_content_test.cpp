#include <gtest/gtest.h>

#include "larkstone/online/table.hpp"

#include "rendered.hpp"

namespace larkstone {
namespace {

using test::adaAndBo;
using test::calculatedCourse;
using test::contents;
using test::fontOf;
using test::rendered;
using test::runner;
using test::tableOf;

TEST(TableContentTest, RelativeAndPassingTimes) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.relativeLegTimes(true);
  auto rows = rendered(table);
  EXPECT_EQ(contents(rows[2]), "&nbsp; Ada +0.10 +0.00 +0.20 Ada");
  EXPECT_EQ(contents(rows[3]), "OK Nord 1.00 2.30 OK Nord");
  table.relativeLegTimes(false);
  table.relativeTotalTimes(true);
  rows = rendered(table);
  EXPECT_EQ(contents(rows[4]), "&nbsp; Bo +0.00 1.10 1.10 Bo");
  EXPECT_EQ(contents(rows[5]), "IF Syd +0.10 +0.00 IF Syd");
  table.passingEndTimes(true);
  table.caption("passingEndTimeSortCaption", "Clock");
  table.caption("timeDelimiters", "h'c");
  rows = rendered(table);
  EXPECT_EQ(contents(rows[0]), "Pl Name Diff Leg&nbsp;Clock Leg&nbsp;Clock Name");
  EXPECT_EQ(contents(rows[5]), "IF Syd 10h03'10 10h04'20 IF Syd");
  table.timeStyle(etstMS);
  EXPECT_EQ(contents(rendered(table)[5]), "IF Syd 603'10 604'20 IF Syd");
}

// One cell is made into what a row says; its two times and two places must be dressed alike.
TEST(TableContentTest, ChoiceOfFormats) {
  struct Row {
    int line;
    bool hasTime;
    bool estimated;
    Time loss;
    bool withoutLoss;
    int place;
    int topPlace;
    const char* leg;
    const char* total;
  };
  const Row rows[] = {
      {__LINE__, true, false, 0, false, 4, 3, "legTime", "totalTime"},
      {__LINE__, true, false, 0, false, 3, 3, "topLegTime", "topTotalTime"},
      {__LINE__, true, false, 0, false, 1, 3, "bestLegTime", "bestTotalTime"},
      {__LINE__, true, false, 0, false, 1, 0, "bestLegTime", "bestTotalTime"},
      {__LINE__, true, false, 0, false, 2, 0, "legTime", "totalTime"},
      {__LINE__, true, false, 0, false, 0, 3, "legTime", "totalTime"},
      {__LINE__, true, false, 1, false, 1, 3, "timeLossLegTime", "bestTotalTime"},
      {__LINE__, true, false, 1, true, 1, 3, "bestLegTime", "bestTotalTime"},
      {__LINE__, true, false, -1, false, 2, 3, "topLegTime", "topTotalTime"},
      {__LINE__, true, true, 1, false, 1, 3, "isEstimatedLegTime", "isEstimatedTotalTime"},
      {__LINE__, true, true, 0, false, 9, 3, "isEstimatedLegTime", "isEstimatedTotalTime"},
      {__LINE__, false, true, 1, false, 1, 3, "legTime", "totalTime"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    LRKRunner mispuncher = runner("S-31-F", {0, -1, 120});
    mispuncher.status(estaMisPunch);
    LRKCourse course =
        calculatedCourse({row.hasTime ? runner("S-31-F", {0, 61, 120}) : mispuncher});
    course.timesWithoutTimeLoss(row.withoutLoss);
    LRKRunner& only = course.runner(0);
    only.legs().endTimeIsEstimated(0, row.estimated);
    only.timeLoss(0, elstLeg, row.loss);
    for (const enmLegStyle style : {elstLeg, elstTotal, elstPassingEnd}) {
      only.place(0, style, row.place);
    }
    clsLarkstoneOnlineTable table;
    table.course(&course);
    test::nameFormats(table);
    table.showPlaces(true);
    table.topPlace(row.topPlace);
    const auto expectFormats = [&](const std::string& time, std::size_t atRow, std::size_t atCell) {
      const auto cells = rendered(table);
      std::string place = time;
      place.replace(place.rfind("Time"), 4, "Place");
      EXPECT_EQ(fontOf(table, cells[atRow][atCell].className), time + "Format");
      EXPECT_EQ(fontOf(table, cells[atRow][atCell + 1].className), place + "Format");
      EXPECT_EQ(cells[atRow][atCell].content, row.hasTime ? "1.01" : "&nbsp;");
      EXPECT_EQ(cells[atRow][atCell + 1].content,
                row.hasTime && row.place > 0 ? std::to_string(row.place) : "&nbsp;");
    };
    expectFormats(row.leg, 2, 3);
    expectFormats(row.total, 3, 1);
    table.passingEndTimes(true);
    std::string passing = row.total;
    const bool plain = passing == "totalTime";
    passing.replace(plain ? 0 : passing.rfind("Total"), 5, plain ? "passingEnd" : "PassingEnd");
    expectFormats(passing, 3, 1);
  }
}

TEST(TableContentTest, FormatsOfTheOtherCells) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table;
  table.course(&course);
  test::nameFormats(table);
  table.showStartTimes(true);
  table.showFinishTimes(true);
  const auto rows = rendered(table);
  const auto fonts = [&](std::size_t row) {
    std::string text;
    for (const auto& cell : rows[row]) {
      const std::string font = fontOf(table, cell.className);
      text += font.substr(0, font.rfind("CellFormat")) + ' ';
    }
    return text;
  };
  const std::string left = "fixedTopLeftAligned ";
  const std::string center = "fixedTopCenterAligned ";
  EXPECT_EQ(fonts(0), center + left + center + center + center + center + center + left);
  EXPECT_EQ(fonts(1), left + center + center + left);
  EXPECT_EQ(fonts(2),
            "place name startTime finishTime finishTimeDifference bestLegTimeFormat "
            "legTimeFormat name ");
  EXPECT_EQ(fonts(3), "club bestTotalTimeFormat totalTimeFormat club ");
}

TEST(TableContentTest, Tooltips) {
  LRKCourse course = calculatedCourse({runner("S-31-F", {0, 61, 120})});
  course.runner(0).timeLoss(0, elstLeg, 2050);
  course.runner(0).legs().endTimeIsEstimated(1, true);
  clsLarkstoneOnlineTable table = tableOf(course);
  table.caption("timeLoss", "\"Lost\" <at> least");
  EXPECT_EQ(contents(rendered(table)[2]), "&nbsp; &nbsp; +0.00 1.01 0.59 &nbsp;");
  table.showTooltips(true);
  EXPECT_EQ(contents(rendered(table)[2]),
            "&nbsp; &nbsp; +0.00 <A title=\"&quot;Lost&quot; <at> least: 0.20\">1.01</A> 0.59 "
            "&nbsp;");
  table.caption("estimatedTime", "Estimated");
  auto rows = rendered(table);
  EXPECT_EQ(rows[2][4].content, "<A title=\"Estimated\">0.59</A>");
  EXPECT_EQ(rows[3][2].content, "<A title=\"Estimated\">2.00</A>");
  EXPECT_EQ(rows[3][1].content, "1.01");  // time losses are marked on legs alone
}

TEST(TableContentTest, TextsFromFilesAreEscaped) {
  LRKRunner runner = test::runner("S-F", {0, 61}, "<b>\"A\" & B</b>");
  runner.club("<SCRIPT>&amp;");
  LRKCourse course = calculatedCourse({runner});
  clsLarkstoneOnlineTable table = tableOf(course);
  table.caption("name", "<b>Name</b>");
  const auto rows = rendered(table);
  EXPECT_EQ(rows[0][1].content, "<b>Name</b>");
  const std::string name = "&lt;b&gt;\"A\" &amp; B&lt;/b&gt;";
  EXPECT_EQ(rows[2][1].content, name);
  EXPECT_EQ(rows[2].back().content, name);
  EXPECT_EQ(rows[3].front().content, "&lt;SCRIPT&gt;&amp;amp;");
  EXPECT_EQ(rows[3].back().content, "&lt;SCRIPT&gt;&amp;amp;");
}

TEST(TableContentTest, StatusInsteadOfAResult) {
  struct Row {
    int line;
    enmStatus status;
    bool hasTime;
    const char* difference;
    const char* finish;
  };
  const Row rows[] = {
      {__LINE__, estaOK, true, "+0.00", "2.01"},
      {__LINE__, estaOK, false, "-", "&nbsp;"},
      {__LINE__, estaMisPunch, true, "mp", "&nbsp;"},
      {__LINE__, estaDidNotFinish, true, "dnf", "&nbsp;"},
      {__LINE__, estaDisqualified, true, "disq", "&nbsp;"},
      {__LINE__, estaDidNotStart, false, "dns", "&nbsp;"},
      {__LINE__, estaFinished, true, "-", "&nbsp;"},
      {__LINE__, estaUnknown, true, "-", "&nbsp;"},
      {__LINE__, static_cast<enmStatus>(99), true, "-", "&nbsp;"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    LRKRunner runner = test::runner("S-31-F", {0, 60, row.hasTime ? 121 : -1});
    runner.status(row.status);
    LRKCourse course = calculatedCourse({runner});
    clsLarkstoneOnlineTable table = tableOf(course);
    table.showFinishTimes(true);
    const auto cells = rendered(table);
    EXPECT_EQ(cells[2][2].content, row.finish);
    EXPECT_EQ(cells[2][3].content, row.difference);
  }
}

TEST(TableContentTest, MispuncherInTheTable) {
  LRKRunner cy = runner("S-31-33-F", {0, 70, 130, 201}, "Cy");
  cy.status(estaMisPunch);
  LRKCourse course = calculatedCourse({runner("S-31-32-33-F", {0, 60, 120, 180, 240}, "Di"), cy});
  clsLarkstoneOnlineTable table = tableOf(course);
  table.showPlaces(true);
  table.sort(esorResultTime);
  const auto rows = rendered(table);
  EXPECT_EQ(contents(rows[2]), "1 Di +0.00 1.00 1 1.00 1 1.00 1 1.00 1 Di");
  EXPECT_EQ(contents(rows[4]), "&nbsp; Cy mp 1.10 2 &nbsp; &nbsp; &nbsp; &nbsp; 1.11 2 Cy");
  EXPECT_EQ(contents(rows[5]), "&nbsp; 1.10 2 &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp;");
}

TEST(TableContentTest, WithoutLegsRunnersOrCourse) {
  clsLarkstoneOnlineTable table;
  table.sort(esorLegTime, 3);
  table.sort(esorCustom);
  const auto none = rendered(table);
  ASSERT_EQ(none.size(), 2U);
  EXPECT_EQ(contents(none[0]), "&nbsp; &nbsp; &nbsp; &nbsp;");
  EXPECT_EQ(contents(none[1]), "&nbsp; &nbsp;");

  LRKCourse empty;
  empty.calculate();
  table.course(&empty);
  table.sort(esorName);
  table.sort(esorCustom);
  EXPECT_EQ(rendered(table).size(), 2U);

  LRKCourse withoutRunners;
  withoutRunners.setCourseLegs(test::legs("S-31-F"));
  withoutRunners.calculate();
  table.course(&withoutRunners);
  table.sort(esorTotalTime, 1);
  EXPECT_EQ(contents(rendered(table)[0]),
            "&nbsp; &nbsp; &nbsp; &nbsp;&nbsp;&nbsp; &nbsp;&nbsp;&nbsp; &nbsp;");
}

TEST(TableContentTest, CourseNotOrPartlyCalculated) {
  const std::initializer_list<LRKRunner> runners = {runner("S-31-F", {0, 61, 120}, "Di")};
  LRKCourse course = test::courseOf(runners);
  clsLarkstoneOnlineTable table = tableOf(course);
  table.showPlaces(true);
  table.showFinishTimes(true);
  auto rows = rendered(table);
  EXPECT_EQ(contents(rows[2]), "&nbsp; Di &nbsp; - &nbsp; &nbsp; &nbsp; &nbsp; Di");
  course.calculate(eccfTimeLoss);
  rows = rendered(table);
  EXPECT_EQ(contents(rows[2]), "&nbsp; Di 2.00 &nbsp; 1.01 1 0.59 1 Di");
  EXPECT_EQ(contents(rows[3]), "&nbsp; 1.01 &nbsp; 2.00 &nbsp; &nbsp;");
}

TEST(TableContentTest, CreationTimeReadsAsMilliseconds) {
  clsLarkstoneOnlineTable table;
  EXPECT_EQ(table.htmlTableCreationTime(), "");
  table.createHTMLTable();
  const std::string time = table.htmlTableCreationTime();
  const auto digits = time.find_first_not_of("0123456789");
  ASSERT_GT(digits, 0U);
  ASSERT_EQ(time.size(), digits + 5);
  EXPECT_EQ(time[digits], '.');
  EXPECT_EQ(time.substr(digits + 2), " ms");
}

}  // namespace
}  // namespace larkstone
