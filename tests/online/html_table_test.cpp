#include <gtest/gtest.h>

#include "larkstone/online/table.hpp"

#include "rendered.hpp"

namespace larkstone {
namespace {

using test::adaAndBo;
using test::calculatedCourse;
using test::contents;
using test::courseOf;
using test::fontOf;
using test::rendered;
using test::runner;

std::string lines(std::initializer_list<const char*> list) {
  std::string text;
  for (const char* line : list) text += std::string(line) + "\r\n";
  return text;
}

// Every border in a colour of its own, the best leg times white on red.
clsLarkstoneOnlineTable tableOf(LRKCourse& course) {
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.caption("place", "Pl");
  table.caption("name", "Name");
  table.caption("club", "Club");
  table.caption("startTime", "Start");
  table.caption("finishTime", "Time");
  table.caption("finishTimeDifference", "Diff");
  table.caption("startName", "S");
  table.caption("finishName", "F");
  table.caption("legTimeSortCaption", "Leg");
  table.caption("totalTimeSortCaption", "Total");
  table.caption("status_mp", "mp");
  table.caption("status_dnf", "dnf");
  table.caption("status_disq", "disq");
  table.caption("status_dns", "dns");
  table.outerBorderColor(255);
  table.innerBorderColor(65280);
  table.fixedBorderColor(16711680);
  table.unfixedBorderColor(8421504);
  table.highlightPercentage(0.5F);
  table.bestLegTimeFormat("Arial;9.5;1;1;3;4;5;6;2;1;#FFFFFF;255");
  return table;
}

TEST(HtmlTableTest, SmallTable) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.sort(esorResultTime);
  table.createHTMLTable();
  EXPECT_EQ(
      table.htmlTableString(),
      lines({R"(<TABLE border="0" cellspacing="0" cellpadding="0" style="border:2px solid #000000">)",
             R"(<TR><TD class="C0" rowspan="2">Pl</TD><TD class="C1">Name</TD>)"
             R"(<TD class="C1" rowspan="2">Diff</TD><TD class="C2">Leg&nbsp;Total</TD>)"
             R"(<TD class="C2">Leg&nbsp;Total</TD><TD class="C2">Name</TD></TR>)",
             R"(<TR><TD class="C1">Club</TD><TD class="C2">S-1 (31)</TD><TD class="C2">1-F</TD>)"
             R"(<TD class="C2">Club</TD></TR>)",
             R"(<TR id="1_0" onMouseOver="highlight(1,true)" onMouseOut="highlight(1,false)">)"
             R"(<TD class="C3" rowspan="2">1</TD><TD class="C4">Bo</TD>)"
             R"(<TD class="C4" rowspan="2">+0.00</TD><TD class="C5">1.10</TD>)"
             R"(<TD class="C6">1.10</TD><TD class="C5">Bo</TD></TR>)",
             R"(<TR id="1_1" onMouseOver="highlight(1,true)" onMouseOut="highlight(1,false)">)"
             R"(<TD class="C1">IF Syd</TD><TD class="C2">1.10</TD><TD class="C2">2.20</TD>)"
             R"(<TD class="C2">IF Syd</TD></TR>)",
             R"(<TR id="2_0" onMouseOver="highlight(2,true)" onMouseOut="highlight(2,false)">)"
             R"(<TD class="C7" rowspan="2">2</TD><TD class="C8">Ada</TD>)"
             R"(<TD class="C8" rowspan="2">+0.10</TD><TD class="C9">1.00</TD>)"
             R"(<TD class="C10">1.30</TD><TD class="C10">Ada</TD></TR>)",
             R"(<TR id="2_1" onMouseOver="highlight(2,true)" onMouseOut="highlight(2,false)">)"
             R"(<TD class="C1">OK Nord</TD><TD class="C2">1.00</TD><TD class="C2">2.30</TD>)"
             R"(<TD class="C2">OK Nord</TD></TR>)",
             "</TABLE>"}));
}

TEST(HtmlTableTest, SmallTableWithAllColumns) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.showPlaces(true);
  table.showStartTimes(true);
  table.showFinishTimes(true);
  table.sort(esorResultTime);
  table.createHTMLTable();
  EXPECT_EQ(
      table.htmlTableString(),
      lines({R"(<TABLE border="0" cellspacing="0" cellpadding="0" style="border:2px solid #000000">)",
             R"(<TR><TD class="C0" rowspan="2">Pl</TD><TD class="C1">Name</TD>)"
             R"(<TD class="C1" rowspan="2">Start</TD><TD class="C1" rowspan="2">Time</TD>)"
             R"(<TD class="C1" rowspan="2">Diff</TD><TD class="C2" colspan="2">Leg&nbsp;Total</TD>)"
             R"(<TD class="C2" colspan="2">Leg&nbsp;Total</TD><TD class="C2">Name</TD></TR>)",
             R"(<TR><TD class="C1">Club</TD><TD class="C2" colspan="2">S-1 (31)</TD>)"
             R"(<TD class="C2" colspan="2">1-F</TD><TD class="C2">Club</TD></TR>)",
             R"(<TR id="1_0" onMouseOver="highlight(1,true)" onMouseOut="highlight(1,false)">)"
             R"(<TD class="C3" rowspan="2">1</TD><TD class="C4">Bo</TD>)"
             R"(<TD class="C4" rowspan="2">10:02.00</TD><TD class="C4" rowspan="2">2.20</TD>)"
             R"(<TD class="C4" rowspan="2">+0.00</TD><TD class="C5">1.10</TD><TD class="C3">2</TD>)"
             R"(<TD class="C6">1.10</TD><TD class="C3">1</TD><TD class="C5">Bo</TD></TR>)",
             R"(<TR id="1_1" onMouseOver="highlight(1,true)" onMouseOut="highlight(1,false)">)"
             R"(<TD class="C1">IF Syd</TD><TD class="C2">1.10</TD><TD class="C0">2</TD>)"
             R"(<TD class="C2">2.20</TD><TD class="C0">1</TD><TD class="C2">IF Syd</TD></TR>)",
             R"(<TR id="2_0" onMouseOver="highlight(2,true)" onMouseOut="highlight(2,false)">)"
             R"(<TD class="C7" rowspan="2">2</TD><TD class="C8">Ada</TD>)"
             R"(<TD class="C8" rowspan="2">10:00.00</TD><TD class="C8" rowspan="2">2.30</TD>)"
             R"(<TD class="C8" rowspan="2">+0.10</TD><TD class="C9">1.00</TD><TD class="C7">1</TD>)"
             R"(<TD class="C10">1.30</TD><TD class="C7">2</TD><TD class="C10">Ada</TD></TR>)",
             R"(<TR id="2_1" onMouseOver="highlight(2,true)" onMouseOut="highlight(2,false)">)"
             R"(<TD class="C1">OK Nord</TD><TD class="C2">1.00</TD><TD class="C0">1</TD>)"
             R"(<TD class="C2">2.30</TD><TD class="C0">2</TD><TD class="C2">OK Nord</TD></TR>)",
             "</TABLE>"}));
}

TEST(HtmlTableTest, StyleSheetAndScript) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.selectedLinkBackColor(0x010203);
  table.linkForeColor(0x0000F0);
  table.linkHoverForeColor(0xF00000);
  table.totalTimeFormat("Arial;8;0;0;0;0;0;0;3;-1;0;#C8C8C8");
  table.sort(esorResultTime);
  table.createHTMLTable();
  table.createHTMLTable();  // nothing of the first rendering is left
  const std::string white =
      " {color:#000000;background-color:#FFFFFF;font-size:8pt;font-weight:normal;"
      "font-style:normal;font-family:Verdana,Verdana,Arial,sans-serif;text-align:left;"
      "vertical-align:top;padding:2px 1px 1px 2px;";
  const std::string red =
      " {color:#FFFFFF;background-color:#FF0000;font-size:9.5pt;font-weight:bold;"
      "font-style:italic;font-family:Arial,Verdana,Arial,sans-serif;text-align:right;"
      "vertical-align:center;padding:4px 5px 6px 3px;";
  const std::string outer = "border-top: 1px solid #FF0000;";
  const std::string inner = "border-top: 1px solid #00FF00;";
  const std::string fixed = "border-left: 1px solid #0000FF;";
  const std::string unfixed = "border-left: 1px solid #808080;";
  EXPECT_EQ(table.styleString(),
            "TD {white-space:nowrap;}\r\n"
            "SPAN.sortedBy {background-color: #030201;}\r\n"
            "A.sort {color:#F00000; text-decoration:none;}\r\n"
            "A.sort:hover {color:#0000F0;text-decoration:underline;}\r\n"
            ".C0" +
                white +
                "}\r\n"
                ".C1" +
                white + fixed +
                "}\r\n"
                ".C2" +
                white + unfixed +
                "}\r\n"
                ".C3" +
                white + outer +
                "}\r\n"
                ".C4" +
                white + outer + fixed +
                "}\r\n"
                ".C5" +
                white + outer + unfixed +
                "}\r\n"
                ".C6" +
                red + outer + unfixed +
                "}\r\n"
                ".C7 {color:#000000;background-color:#C8C8C8;font-size:8pt;font-weight:normal;"
                "font-style:normal;font-family:Arial,Verdana,Arial,sans-serif;text-align:;"
                "vertical-align:;padding:0px 0px 0px 0px;" +
                unfixed +
                "}\r\n"
                ".C8" +
                white + inner +
                "}\r\n"
                ".C9" +
                white + inner + fixed +
                "}\r\n"
                ".C10" +
                red + inner + unfixed +
                "}\r\n"
                ".C11" +
                white + inner + unfixed + "}");
  EXPECT_EQ(
      table.scriptString(),
      "<SCRIPT type=\"text/javascript\"><!--\r\n"
      "var hc = new Array('#808080','#808080','#808080','#808080','#808080','#808080','#800000',"
      "'#646464','#808080','#808080','#800000','#808080');\r\n"
      "function highlight(row, on) { var i=0; var j; var r; var c; while (1) { if(!(r = "
      "document.getElementById('' + row + '_' + i))) break; for(j=0; j<r.cells.length; j++) { c = "
      "r.cells.item(j).className.substring(1); if(on) r.cells.item(j).style.backgroundColor = "
      "hc[c]; else r.cells.item(j).style.backgroundColor = ''; } i++; } }\r\n"
      "--></SCRIPT>");
}

TEST(HtmlTableTest, TextSizeReplacesEverySize) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.textSize(7.25F);
  table.createHTMLTable();
  EXPECT_NE(table.styleString().find("font-size:7.25pt"), std::string::npos);
  EXPECT_EQ(table.styleString().find("font-size:8pt"), std::string::npos);
  EXPECT_EQ(table.styleString().find("font-size:9.5pt"), std::string::npos);
}

TEST(HtmlTableTest, RelativeAndPassingTimes) {
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
TEST(HtmlTableTest, ChoiceOfFormats) {
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
    LRKCourse course = calculatedCourse({runner("S-31-F", {0, row.hasTime ? 61 : -1, 120})});
    if (!row.hasTime) course.runner(0).status(estaMisPunch);
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

TEST(HtmlTableTest, FormatsOfTheOtherCells) {
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

TEST(HtmlTableTest, Tooltips) {
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

TEST(HtmlTableTest, TextsFromFilesAreEscaped) {
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

TEST(HtmlTableTest, StatusInsteadOfAResult) {
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

TEST(HtmlTableTest, MispuncherInTheTable) {
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

TEST(HtmlTableTest, WithoutLegsRunnersOrCourse) {
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

TEST(HtmlTableTest, CourseNotOrPartlyCalculated) {
  const std::initializer_list<LRKRunner> runners = {runner("S-31-F", {0, 61, 120}, "Di")};
  LRKCourse course = courseOf(runners);
  clsLarkstoneOnlineTable table = tableOf(course);
  table.showPlaces(true);
  table.showFinishTimes(true);
  auto rows = rendered(table);
  EXPECT_EQ(contents(rows[2]), "&nbsp; Di &nbsp; - &nbsp; &nbsp; &nbsp; &nbsp; Di");
  course.calculate(eccfTimeLoss);
  rows = rendered(table);
  EXPECT_EQ(contents(rows[2]), "&nbsp; Di 2.00 +0.00 1.01 1 0.59 1 Di");
  EXPECT_EQ(contents(rows[3]), "&nbsp; 1.01 &nbsp; 2.00 &nbsp; &nbsp;");
}

TEST(HtmlTableTest, CreationTimeReadsAsMilliseconds) {
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
