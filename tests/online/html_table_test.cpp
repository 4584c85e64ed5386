#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/online/table.hpp"

#include "rendered.hpp"

namespace larkstone {
namespace {

using test::adaAndBo;
using test::tableOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

// Lines with ' for every double quote.
std::string lines(std::initializer_list<std::string> list) {
  std::string text;
  for (const std::string& line : list) text += line + "\r\n";
  std::replace(text.begin(), text.end(), '\'', '"');
  return text;
}

TEST(HtmlTableTest, SmallTable) {
  LRKCourse course = adaAndBo();
  clsLarkstoneOnlineTable table = tableOf(course);
  table.sort(esorResultTime);
  table.createHTMLTable();
  EXPECT_EQ(
      table.htmlTableString(),
      lines({"<TABLE border='0' cellspacing='0' cellpadding='0' style='border:2px solid #000000'>",
             "<TR><TD class='C0' rowspan='2'>Pl</TD><TD class='C1'>Name</TD>"
             "<TD class='C1' rowspan='2'>Diff</TD><TD class='C2'>Leg&nbsp;Total</TD>"
             "<TD class='C2'>Leg&nbsp;Total</TD><TD class='C2'>Name</TD></TR>",
             "<TR><TD class='C1'>Club</TD><TD class='C2'>S-1 (31)</TD><TD class='C2'>1-F</TD>"
             "<TD class='C2'>Club</TD></TR>",
             "<TR id='1_0' onMouseOver='highlight(1,true)' onMouseOut='highlight(1,false)'>"
             "<TD class='C3' rowspan='2'>1</TD><TD class='C4'>Bo</TD>"
             "<TD class='C4' rowspan='2'>+0.00</TD><TD class='C5'>1.10</TD>"
             "<TD class='C6'>1.10</TD><TD class='C5'>Bo</TD></TR>",
             "<TR id='1_1' onMouseOver='highlight(1,true)' onMouseOut='highlight(1,false)'>"
             "<TD class='C1'>IF Syd</TD><TD class='C2'>1.10</TD><TD class='C2'>2.20</TD>"
             "<TD class='C2'>IF Syd</TD></TR>",
             "<TR id='2_0' onMouseOver='highlight(2,true)' onMouseOut='highlight(2,false)'>"
             "<TD class='C7' rowspan='2'>2</TD><TD class='C8'>Ada</TD>"
             "<TD class='C8' rowspan='2'>+0.10</TD><TD class='C9'>1.00</TD>"
             "<TD class='C10'>1.30</TD><TD class='C10'>Ada</TD></TR>",
             "<TR id='2_1' onMouseOver='highlight(2,true)' onMouseOut='highlight(2,false)'>"
             "<TD class='C1'>OK Nord</TD><TD class='C2'>1.00</TD><TD class='C2'>2.30</TD>"
             "<TD class='C2'>OK Nord</TD></TR>",
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
  const std::string header =
      lines({"<TR><TD class='C0' rowspan='2'>Pl</TD><TD class='C1'>Name</TD>"
             "<TD class='C1' rowspan='2'>Start</TD><TD class='C1' rowspan='2'>Time</TD>"
             "<TD class='C1' rowspan='2'>Diff</TD><TD class='C2' colspan='2'>Leg&nbsp;Total</TD>"
             "<TD class='C2' colspan='2'>Leg&nbsp;Total</TD><TD class='C2'>Name</TD></TR>",
             "<TR><TD class='C1'>Club</TD><TD class='C2' colspan='2'>S-1 (31)</TD>"
             "<TD class='C2' colspan='2'>1-F</TD><TD class='C2'>Club</TD></TR>"});
  const std::string ada =
      lines({"<TR id='2_0' onMouseOver='highlight(2,true)' onMouseOut='highlight(2,false)'>"
             "<TD class='C7' rowspan='2'>2</TD><TD class='C8'>Ada</TD>"
             "<TD class='C8' rowspan='2'>10:00.00</TD><TD class='C8' rowspan='2'>2.30</TD>"
             "<TD class='C8' rowspan='2'>+0.10</TD><TD class='C9'>1.00</TD><TD class='C7'>1</TD>"
             "<TD class='C10'>1.30</TD><TD class='C7'>2</TD><TD class='C10'>Ada</TD></TR>",
             "<TR id='2_1' onMouseOver='highlight(2,true)' onMouseOut='highlight(2,false)'>"
             "<TD class='C1'>OK Nord</TD><TD class='C2'>1.00</TD><TD class='C0'>1</TD>"
             "<TD class='C2'>2.30</TD><TD class='C0'>2</TD><TD class='C2'>OK Nord</TD></TR>",
             "</TABLE>"});
  EXPECT_THAT(table.htmlTableString(), HasSubstr(header));
  EXPECT_THAT(table.htmlTableString(), EndsWith(ada));
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
  const std::string grey =
      " {color:#000000;background-color:#C8C8C8;font-size:8pt;font-weight:normal;"
      "font-style:normal;font-family:Arial,Verdana,Arial,sans-serif;text-align:;"
      "vertical-align:;padding:0px 0px 0px 0px;";
  EXPECT_EQ(table.styleString() + "\r\n",
            lines({"TD {white-space:nowrap;}", "SPAN.sortedBy {background-color: #030201;}",
                   "A.sort {color:#F00000; text-decoration:none;}",
                   "A.sort:hover {color:#0000F0;text-decoration:underline;}", ".C0" + white + "}",
                   ".C1" + white + fixed + "}", ".C2" + white + unfixed + "}",
                   ".C3" + white + outer + "}", ".C4" + white + outer + fixed + "}",
                   ".C5" + white + outer + unfixed + "}", ".C6" + red + outer + unfixed + "}",
                   ".C7" + grey + unfixed + "}", ".C8" + white + inner + "}",
                   ".C9" + white + inner + fixed + "}", ".C10" + red + inner + unfixed + "}",
                   ".C11" + white + inner + unfixed + "}"}));
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
  EXPECT_THAT(table.styleString(), HasSubstr("font-size:7.25pt"));
  EXPECT_THAT(table.styleString(), Not(HasSubstr("font-size:8pt")));
  EXPECT_THAT(table.styleString(), Not(HasSubstr("font-size:9.5pt")));
}

}  // namespace
}  // namespace larkstone
