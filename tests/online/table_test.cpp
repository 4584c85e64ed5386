#include "larkstone/online/table.hpp"

#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::runner;
using test::withStatus;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

// A course over the first runner's legs. Only differences above a minute count as time losses.
LRKCourse courseOf(std::initializer_list<LRKRunner> runners, bool calculated = true) {
  LRKCategory category;
  for (const LRKRunner& runner : runners) category.addRunner(runner);
  LRKCourse course = category.toCourse(erqlAtLeastOne, false, false);
  course.timeLossConditionTime(6000);
  if (calculated) course.calculate();
  return course;
}

// Ada is faster to the control, Bo to the finish.
LRKCourse adaAndBo() {
  LRKRunner ada = runner("S-31-F", {36000, 36060, 36150}, "Ada <A>");
  ada.club("R&D \"1\"");
  LRKRunner bo = runner("S-31-F", {36120, 36190, 36260}, "Bo");
  bo.club("IF Syd");
  return courseOf({ada, bo});
}

// Captions that read as their keys, and every border in a colour of its own.
clsLarkstoneOnlineTable tableOf(LRKCourse& course) {
  clsLarkstoneOnlineTable table;
  table.course(&course);
  std::istringstream keys(
      "place name club startTime finishTime finishTimeDifference startName finishName finish "
      "control legTimeSortCaption totalTimeSortCaption passingEndTimeSortCaption sortByFinishTime "
      "sortByLegTime sortByTotalTime sortByPassingEndTime timeLoss estimatedTime status_mp "
      "status_dnf status_disq status_dns");
  for (std::string key; keys >> key;) table.caption(key, key);
  table.outerBorderColor(255);
  table.innerBorderColor(65280);
  table.fixedBorderColor(16711680);
  table.unfixedBorderColor(8421504);
  return table;
}

// What stands behind a mark between two texts, wherever the mark is; a blank after each.
std::string pieces(std::string_view text, std::string_view mark, std::string_view begin,
                   std::string_view end) {
  std::string found;
  for (auto at = text.find(mark); at != text.npos; at = text.find(mark)) {
    text.remove_prefix(text.find(begin, at) + begin.size());
    found += std::string(text.substr(0, text.find(end))) + ' ';
  }
  return found;
}

// A line of the rendered table: 0 and 1 are the header, 2 and 3 the first runner, and so on.
std::string rowOf(clsLarkstoneOnlineTable& table, int row) {
  table.createHTMLTable();
  std::string_view html = table.htmlTableString();
  for (int i = 0; i <= row; ++i) html.remove_prefix(html.find("<TR") + 3);
  return std::string(html.substr(0, html.find("</TR>")));
}

// The contents of its cells.
std::string contents(clsLarkstoneOnlineTable& table, int row) {
  return pieces(rowOf(table, row), "<TD", ">", "</TD>");
}

// Lines as the table ends them. One that begins with a blank goes on with the line before.
std::string lines(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == ' ' && result.ends_with('\n')) {
      result.resize(result.size() - 2);
    } else {
      result += c == '\n' ? "\r\n" : std::string(1, c);
    }
  }
  return result;
}

TEST(TableTest, SmallTable) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.bestLegTimeFormat("Arial");
  table.clubCellFormat("Verdana;8.0;0;0;2;2;1;1;0;0;#000000;#FFFFFF");  // as the headings
  table.showStartTimes(true);
  table.showFinishTimes(true);
  table.caption("finishTimeDifference", "");
  table.caption("sortByName", "\"A\" <b>");
  table.baseURL("/?\"");
  table.sort(esorTotalTime, 1);
  table.createHTMLTable();
  EXPECT_EQ(table.htmlTableString(), lines(R"html(<TABLE border="0" cellspacing="0"
  cellpadding="0" style="border:2px solid #000000">
<TR><TD class="C0" rowspan="2">place</TD>
 <TD class="C1"><A href="/?&quot;&sortBy=1" class="sort" title="&quot;A&quot; <b>">name</A></TD>
 <TD class="C1" rowspan="2"><A href="/?&quot;&sortBy=12" class="sort">startTime</A></TD>
 <TD class="C1" rowspan="2"><A href="/?&quot;&sortBy=-1" class="sort" title="sortByFinishTime">
 finishTime</A></TD><TD class="C1" rowspan="2"><A href="/?&quot;&sortBy=-1" class="sort"
  title="sortByFinishTime">&nbsp;</A></TD>
 <TD class="C2"><A href="/?&quot;&sortBy=32&legNo=0" class="sort" title="sortByLegTime control 1">
 legTimeSortCaption</A>&nbsp;<A href="/?&quot;&sortBy=33&legNo=0" class="sort"
  title="sortByTotalTime control 1">totalTimeSortCaption</A></TD>
 <TD class="C2"><A href="/?&quot;&sortBy=32&legNo=1" class="sort" title="sortByLegTime finish">
 legTimeSortCaption</A>&nbsp;<SPAN class="sortedBy">&nbsp;<A href="/?&quot;&sortBy=33&legNo=1"
  class="sort" title="sortByTotalTime finish">totalTimeSortCaption</A>&nbsp;</SPAN></TD>
 <TD class="C2"><A href="/?&quot;&sortBy=1" class="sort" title="&quot;A&quot; <b>">name</A></TD>
 </TR>
<TR><TD class="C1"><A href="/?&quot;&sortBy=4" class="sort">club</A></TD>
 <TD class="C2">startName-1 (31)</TD><TD class="C2">1-finishName</TD>
 <TD class="C2"><A href="/?&quot;&sortBy=4" class="sort">club</A></TD></TR>
<TR id="1_0" onMouseOver="highlight(1,true)" onMouseOut="highlight(1,false)">
 <TD class="C3" rowspan="2">1</TD><TD class="C4">Bo</TD><TD class="C4" rowspan="2">10:02.00</TD>
 <TD class="C4" rowspan="2">2.20</TD><TD class="C4" rowspan="2">+0.00</TD>
 <TD class="C5">1.10</TD><TD class="C6">1.10</TD><TD class="C5">Bo</TD></TR>
<TR id="1_1" onMouseOver="highlight(1,true)" onMouseOut="highlight(1,false)"><TD class="C1">IF Syd
 </TD><TD class="C2">1.10</TD><TD class="C2">2.20</TD><TD class="C2">IF Syd</TD></TR>
<TR id="2_0" onMouseOver="highlight(2,true)" onMouseOut="highlight(2,false)">
 <TD class="C7" rowspan="2">2</TD><TD class="C8">Ada &lt;A&gt;</TD>
 <TD class="C8" rowspan="2">10:00.00</TD><TD class="C8" rowspan="2">2.30</TD>
 <TD class="C8" rowspan="2">+0.10</TD><TD class="C9">1.00</TD><TD class="C10">1.30</TD>
 <TD class="C10">Ada &lt;A&gt;</TD></TR>
<TR id="2_1" onMouseOver="highlight(2,true)" onMouseOut="highlight(2,false)">
 <TD class="C1">R&amp;D "1"</TD><TD class="C2">1.00</TD><TD class="C2">2.30</TD>
 <TD class="C2">R&amp;D "1"</TD></TR>
</TABLE>
)html"));
  table.showPlaces(true);
  const auto cells = [&](int row) { return pieces(rowOf(table, row), "<TD", "=\"", "</TD>"); };
  EXPECT_THAT(cells(1), HasSubstr(R"( C2" colspan="2">startName-1 (31) C2" colspan="2">1-fin)"));
  EXPECT_THAT(cells(4), HasSubstr(R"( C9">1.00 C7">1 C10">1.30 C7">2 C10">Ada &lt;A&gt; )"));
  EXPECT_EQ(cells(5), R"(C1">R&amp;D "1" C2">1.00 C0">1 C2">2.30 C0">2 C2">R&amp;D "1" )");
}

TEST(TableTest, StyleSheetAndScript) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.selectedLinkBackColor(0x010203);
  table.linkForeColor(0x0000F0);
  table.linkHoverForeColor(0xF00000);
  table.highlightPercentage(0.5F);
  table.bestLegTimeFormat("Arial;9.5;1;1;3;4;5;6;2;1;#FFFFFF;255");
  table.createHTMLTable();
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
  const std::string fixed = "border-left: 1px solid #0000FF;}\n";
  const std::string unfixed = "border-left: 1px solid #808080;}\n";
  const std::string classes = ".C0" + white + "}\n.C1" + white + fixed + ".C2" + white + unfixed +
                              ".C3" + white + outer + "}\n.C4" + white + outer + fixed + ".C5" +
                              red + outer + unfixed + ".C6" + white + outer + unfixed + ".C7" +
                              white + inner + "}\n.C8" + white + inner + fixed + ".C9" + white +
                              inner + unfixed + ".C10" + red + inner + unfixed;
  EXPECT_EQ(table.styleString() + "\r\n", lines(R"(TD {white-space:nowrap;}
SPAN.sortedBy {background-color: #030201;}
A.sort {color:#F00000; text-decoration:none;}
A.sort:hover {color:#0000F0;text-decoration:underline;}
)" + classes));
  EXPECT_EQ(table.scriptString(), lines(R"(<SCRIPT type="text/javascript"><!--
var hc = new Array('#808080','#808080','#808080','#808080','#808080','#800000','#808080',
 '#808080','#808080','#808080','#800000');
function highlight(row, on) { var i=0; var j; var r; var c; while (1) { if(!(r =
  document.getElementById('' + row + '_' + i))) break; for(j=0; j<r.cells.length; j++) { c =
  r.cells.item(j).className.substring(1); if(on) r.cells.item(j).style.backgroundColor = hc[c];
  else r.cells.item(j).style.backgroundColor = ''; } i++; } }
--></SCRIPT>)"));
  table.textSize(7.25F);
  table.nameCellFormat("Arial;8;0;0;0;0;0;0;1;3");
  table.createHTMLTable();
  EXPECT_THAT(pieces(table.styleString(), "font-size", ":", "pt"), MatchesRegex("(7.25 )+"));
  EXPECT_THAT(table.styleString(), HasSubstr("text-align:center;vertical-align:;padding:0px"));
}

LRKRunner named(const char* first, const char* last, LRKRunner result) {
  result.firstName(first);
  result.lastName(last);
  return result;
}

TEST(TableTest, OrderOfTheRunnersAndMarkedHeadings) {
  const auto finishing = [](int time) { return runner("S-31-F", {0, 300 - time, time}); };
  LRKCourse course =
      courseOf({named("Eva", "Berg", finishing(201)), named("Åke", "Alm", finishing(200)),
                named("Ada", "Berg", finishing(202)), named("Bo", "Alm", finishing(203))});
  clsLarkstoneOnlineTable table = tableOf(course);
  table.baseURL("/");
  table.passingEndTimes(true);
  const auto sorted = [&](int sortBy, int legNo) {
    table.sort(static_cast<enmSort>(sortBy), legNo);
    table.createHTMLTable();
    std::string names;
    for (int i = 0; i < 4; ++i) names += course.runner(i).firstName() + " ";
    return names + pieces(table.htmlTableString(), "<SPAN class=\"sortedBy", "sortBy=", "\"");
  };
  EXPECT_EQ(sorted(esorName, 7), "Bo Åke Ada Eva 1 1 ");
  EXPECT_EQ(sorted(esorCustom, 0), "Åke Eva Ada Bo -1 ");
  EXPECT_EQ(sorted(esorPassingEndTime, 0), "Bo Ada Eva Åke 35&legNo=0 ");
  EXPECT_THAT(table.htmlTableString(), HasSubstr("\"sortByPassingEndTime control 1\">passingEnd"));
  EXPECT_EQ(sorted(esorLegTime, 1), "Åke Eva Ada Bo 32&legNo=1 ");
  EXPECT_EQ(sorted(esorLegTime, -1), "Åke Eva Ada Bo 32&legNo=1 ");
  EXPECT_EQ(sorted(esorTotalTime, 99), "Åke Eva Ada Bo ");  // the last leg, without a heading
}

TEST(TableTest, RelativeAndPassingTimes) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.relativeLegTimes(true);
  EXPECT_EQ(contents(table, 4), "&nbsp; Bo +0.00 +0.10 +0.00 Bo ");
  table.relativeLegTimes(false);
  table.relativeTotalTimes(true);
  EXPECT_EQ(contents(table, 4), "&nbsp; Bo +0.00 1.10 1.10 Bo ");
  EXPECT_EQ(contents(table, 5), "IF Syd +0.10 +0.00 IF Syd ");
  table.passingEndTimes(true);
  table.caption("timeDelimiters", "h'c");
  EXPECT_EQ(contents(table, 5), "IF Syd 10h03'10 10h04'20 IF Syd ");
  table.timeStyle(etstMS);
  EXPECT_EQ(contents(table, 5), "IF Syd 603'10 604'20 IF Syd ");
}

// The names of the formats of a line's cells, where each format has its own name as its font.
std::string formats(clsLarkstoneOnlineTable& table, int row) {
  std::string names;
  std::istringstream classes(pieces(rowOf(table, row), "<TD", "\"", "\""));
  for (std::string name; classes >> name;) {
    names += pieces(table.styleString(), "." + name + " {", "font-family:", ",");
  }
  return names;
}

TEST(TableTest, ChoiceOfFormats) {
  LRKCourse course = courseOf({runner("S-F", {0, 61}), runner("S-F", {0, 0}),
                               withStatus(runner("S-F", {0, -1}), estaMisPunch)},
                              false);
  course.correctZeroAndNegativeTimes(false);
  course.calculate();
  clsLarkstoneOnlineTable table;
  table.course(&course);
#define LRK_TABLE_SETTING(name, type, initial)
#define LRK_CELL_FORMAT(name, family, kind) table.name(#name);
#include "larkstone/online/table_settings.def"
  table.showPlaces(true);
  table.topPlace(3);
  const auto expected = [](const std::string& leg, const std::string& total) {
    return "placeCellFormat nameCellFormat finishTimeDifferenceCellFormat " + leg + "TimeFormat " +
           leg + "PlaceFormat nameCellFormat clubCellFormat " + total + "TimeFormat " + total +
           "PlaceFormat clubCellFormat ";
  };
  const auto chosen = [&](int place, Time loss, bool estimated) {
    for (LRKRunner* runner : {&course.runner(0), &course.runner(1), &course.runner(2)}) {
      runner->legs().endTimeIsEstimated(0, estimated);
      runner->timeLoss(0, elstLeg, loss);
      for (const enmLegStyle style : {elstLeg, elstTotal, elstPassingEnd}) {
        runner->place(0, style, place);
      }
    }
    EXPECT_EQ(formats(table, 6) + formats(table, 7), expected("leg", "total"));  // no time
    if (loss < 1) {  // no time that is valid for a place
      EXPECT_EQ(formats(table, 4) + formats(table, 5), expected("leg", "total"));
    }
    return formats(table, 2) + formats(table, 3);
  };
  EXPECT_EQ(chosen(4, 0, false), expected("leg", "total"));
  EXPECT_EQ(chosen(0, 0, false), expected("leg", "total"));
  EXPECT_EQ(chosen(3, -1, false), expected("topLeg", "topTotal"));
  EXPECT_EQ(chosen(1, 0, false), expected("bestLeg", "bestTotal"));
  EXPECT_EQ(chosen(1, 1, false), expected("timeLossLeg", "bestTotal"));
  EXPECT_EQ(chosen(1, 1, true), expected("isEstimatedLeg", "isEstimatedTotal"));
  table.topPlace(0);
  course.timesWithoutTimeLoss(true);
  EXPECT_EQ(chosen(1, 1, false), expected("bestLeg", "bestTotal"));
  table.passingEndTimes(true);
  EXPECT_EQ(formats(table, 2) + formats(table, 3), expected("bestLeg", "bestPassingEnd"));
  table.showStartTimes(true);
  table.showFinishTimes(true);
  const std::string left = "fixedTopLeftAlignedCellFormat ";
  const std::string center = "fixedTopCenterAlignedCellFormat ";
  EXPECT_EQ(formats(table, 0), center + left + center + center + center + center + left);
  EXPECT_EQ(formats(table, 1), left + center + left);
  EXPECT_THAT(formats(table, 2), HasSubstr(" startTimeCellFormat finishTimeCellFormat "));
}

TEST(TableTest, Tooltips) {
  LRKCourse course = courseOf({runner("S-31-F", {0, 61, 120})});
  course.runner(0).timeLoss(0, elstLeg, 2050);
  course.runner(0).legs().endTimeIsEstimated(1, true);
  clsLarkstoneOnlineTable table = tableOf(course);
  EXPECT_EQ(contents(table, 2), "&nbsp; &nbsp; +0.00 1.01 0.59 &nbsp; ");
  table.showTooltips(true);
  table.caption("timeLoss", "\"Lost\" <b>");
  EXPECT_EQ(contents(table, 2),
            "&nbsp; &nbsp; +0.00 <A title=\"&quot;Lost&quot; <b>: 0.20\">1.01</A> "
            "<A title=\"estimatedTime\">0.59</A> &nbsp; ");
  EXPECT_EQ(contents(table, 3), "&nbsp; 1.01 <A title=\"estimatedTime\">2.00</A> &nbsp; ");
}

TEST(TableTest, StatusInsteadOfAResult) {
  const auto result = [](enmStatus status, int seconds) {
    LRKCourse course = courseOf({withStatus(runner("S-F", {0, seconds}), status)});
    clsLarkstoneOnlineTable table = tableOf(course);
    table.showFinishTimes(true);
    return pieces(rowOf(table, 2), "rowspan", ">", "<");
  };
  EXPECT_EQ(result(estaOK, -1), "&nbsp; &nbsp; - ");
  EXPECT_EQ(result(estaMisPunch, 121), "&nbsp; &nbsp; status_mp ");
  EXPECT_EQ(result(estaDidNotFinish, 121), "&nbsp; &nbsp; status_dnf ");
  EXPECT_EQ(result(estaDisqualified, 121), "&nbsp; &nbsp; status_disq ");
  EXPECT_EQ(result(estaDidNotStart, -1), "&nbsp; &nbsp; status_dns ");
  EXPECT_EQ(result(static_cast<enmStatus>(99), 121), "&nbsp; &nbsp; - ");
}

TEST(TableTest, MispuncherInTheTable) {
  LRKCourse course =
      courseOf({runner("S-31-32-33-F"),
                withStatus(runner("S-31-33-F", {0, 70, 130, 201}, "C"), estaMisPunch)});
  clsLarkstoneOnlineTable table = tableOf(course);
  table.showPlaces(true);
  EXPECT_EQ(contents(table, 4), "&nbsp; C status_mp 1.10 2 &nbsp; &nbsp; &nbsp; &nbsp; 1.11 2 C ");
  EXPECT_EQ(contents(table, 5), "&nbsp; 1.10 2 &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; ");
}

// The table as text, with a bar for each tab.
std::string textOf(clsLarkstoneOnlineTable& table) {
  table.createTextTable();
  std::string text = table.textTableString();
  std::replace(text.begin(), text.end(), '\t', '|');
  return text;
}

// Cy misses 31, and a tab and a line end in names stay within their cells.
TEST(TableTest, AsText) {
  LRKRunner ada = runner("S-31-F", {36000, 36060, 36150}, "Ada\tA");
  ada.club("R&D\n\"1\"");
  LRKRunner cy = runner("S-31-F", {36000, -1, 36200}, "Cy");
  cy.status(estaDisqualified);
  LRKCourse course = courseOf({runner("S-31-F", {36120, 36190, 36260}, "Bo"), ada, cy});
  clsLarkstoneOnlineTable table = tableOf(course);
  table.sort(esorTotalTime, 1);
  table.relativeLegTimes(true);
  EXPECT_EQ(textOf(table),
            lines(R"(place|name|finishTimeDifference|startName-1 (31)|1-finishName|name
|club||||club
1|Bo|+0.00|+0.10|+0.00|Bo
|||1.10|2.20|
2|Ada A|+0.10|+0.00|+0.20|Ada A
|R&D "1"||1.00|2.30|R&D "1"
|Cy|status_disq|||Cy
|||||
)"));
  table.relativeLegTimes(false);
  table.passingEndTimes(true);
  table.showPlaces(true);
  table.showStartTimes(true);
  table.showFinishTimes(true);
  const std::string text = textOf(table);
  EXPECT_THAT(text, HasSubstr("|2.30|+0.10|1.00|(1)|1.30|(2)|Ada A\r\n"
                              "|R&D \"1\"||||10:01.00|(1)|10:02.30|(1)|R&D"));
  EXPECT_THAT(text, HasSubstr("Cy|10:00.00||status_disq|||||Cy"));
}

// A runner whose punches have times in tenths of a second.
LRKRunner inTenths(std::string_view codes, const std::vector<int>& tenths) {
  LRKRunner result = runner(codes);
  for (std::size_t i = 0; i < tenths.size(); ++i) {
    result.punches().time(static_cast<int>(i), tenths[i] * 10);
  }
  return result;
}

// Legs: Ann 60.1 50.2 40.2, Bo 70.0 40.3 40.2, Cy 60.1 3640.3 150.6 s, and Eva, of whom no start
// is known, 50.2 and 40.0 s behind 31. Ann and Bo share the win; Cy comes 3700.5 s behind.
TEST(TableTest, TenthsTiesAndRunnersWhoAreHalfKnown) {
  LRKRunner bo = inTenths("S-31-32-F", {360600, 361300, 361703, 362105});
  bo.name("Bo Zed");
  LRKRunner eva = inTenths("31-32-F", {362000, 362502, 362902});
  eva.name("Eva");
  LRKCourse course =
      courseOf({named("Cy", "Dal", inTenths("S-31-32-F", {361200, 361801, 398204, 399710})), eva,
                bo, named("Ann", "Ask", inTenths("S-31-32-F", {360000, 360601, 361103, 361505}))},
               false);
  course.timeAccuracy(etacTenthsSeconds);
  course.calculate();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.showPlaces(true);
  table.showStartTimes(true);
  table.showFinishTimes(true);
  table.timeStyle(etstMS);
  table.sort(esorTotalTime, 2);
  EXPECT_THAT(textOf(table),
              ::testing::EndsWith(lines(
                  R"(1|Bo Zed|10:01.00,0|2.30,5|+0.00,0|1.10,0|(3)|0.40,3|(1)|0.40,2|(2)|Bo Zed
|||||1.10,0|(3)|1.50,3|(1)|2.30,5|(1)|
1|Ann Ask|10:00.00,0|2.30,5|+0.00,0|1.00,1|(1)|0.50,2|(2)|0.40,2|(2)|Ann Ask
|||||1.00,1|(1)|1.50,3|(1)|2.30,5|(1)|
3|Cy Dal|10:02.00,0|64.11,0|+61.40,5|1.00,1|(1)|60.40,3|(4)|2.30,6|(4)|Cy Dal
|||||1.00,1|(1)|61.40,4|(3)|64.11,0|(3)|
|Eva|||-|||0.50,2|(2)|0.40,0|(1)|Eva
|||||||||||
)")));
  EXPECT_EQ(contents(table, 8), "&nbsp; Eva &nbsp; &nbsp; - &nbsp; &nbsp; 0.50,2 2 0.40,0 1 Eva ");
  EXPECT_EQ(contents(table, 9), "&nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; &nbsp; ");
  // By last name, where there is none by name alone.
  table.sort(esorName);
  EXPECT_EQ(contents(table, 2).substr(0, 9), "1 Bo Zed ");
  EXPECT_EQ(contents(table, 6).substr(0, 10), "3 Ann Ask ");
}

TEST(TableTest, StartTimesThatAreNotKnownStayEmpty) {
  const auto starts = [](int first, int second, int third) {
    LRKCourse course = courseOf({runner("S-F", {first, 9000}), runner("S-F", {second, 9000}),
                                 runner("S-F", {third, 9000})});
    clsLarkstoneOnlineTable table = tableOf(course);
    table.showStartTimes(true);
    std::string shown;
    for (int row = 2; row < 2 + 2 * course.noOfRunners(); row += 2) {
      const std::string cells = contents(table, row);
      shown += cells.substr(14, cells.find(' ', 14) - 13);
    }
    return shown;
  };
  EXPECT_EQ(starts(0, -1, 0), "&nbsp; &nbsp; &nbsp; ");
  EXPECT_EQ(starts(0, -1, 61), "0:00.00 &nbsp; 0:01.01 ");
}

TEST(TableTest, NothingToShow) {
  clsLarkstoneOnlineTable table;
  LRKCourse empty;
  empty.calculate();
  for (LRKCourse* course : {static_cast<LRKCourse*>(nullptr), &empty}) {
    table.course(course);
    for (const enmSort key : {esorName, esorCustom, esorLegTime}) table.sort(key, 3);
    EXPECT_EQ(contents(table, 0), "&nbsp; &nbsp; &nbsp; &nbsp; ");
  }
  empty.setCourseLegs(test::legs("S-F"));
  empty.calculate();
  table.sort(esorTotalTime, 1);
  EXPECT_EQ(contents(table, 0), "&nbsp; &nbsp; &nbsp; &nbsp;&nbsp;&nbsp; &nbsp; ");
  LRKCourse uncalculated = courseOf({runner("S-F", {0, 61}, "Di")}, false);
  table.course(&uncalculated);
  EXPECT_EQ(contents(table, 2), "&nbsp; Di - &nbsp; Di ");
  EXPECT_THAT(table.htmlTableCreationTime(), MatchesRegex("[0-9]+\\.[0-9] ms"));
}

}  // namespace
}  // namespace larkstone
