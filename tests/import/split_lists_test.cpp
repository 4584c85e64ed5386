// Split-time pages in preformatted text and in tables: SportSoftware, OLA, eTiming.

#include "larkstone/core/text.hpp"

#include "imported.hpp"
#include "treated_pages.hpp"

namespace larkstone {
namespace {

using test::replaced;
using Cells = std::vector<std::string_view>;

// A line whose words end at given columns, in the page's encoding: there a letter is a byte.
std::string aligned(std::string_view left, std::size_t end, const Cells& cells,
                    std::size_t width = 9) {
  std::string line = windows1252FromUtf8(left);
  for (const std::string_view cell : cells) {
    line.resize(std::max(line.size(), end - cell.size()), ' ');
    line += cell;
    end += width;
  }
  return line + "\n";
}

constexpr std::string_view header = "    Pl    Stno Name                       Time\n\n";

// A row without a runner beside it; the columns end at 55, 64, ...
std::string row(const Cells& cells) { return aligned("", 55, cells); }

// Both lines of a runner: a place up to column 6, a start number up to 14, the name from 15, the
// result up to 46.
std::string runnerLines(std::string_view left, std::string_view result, const Cells& times,
                        const Cells& legs) {
  std::string first = utf8FromWindows1252(aligned(left, 46, {result}));
  first.pop_back();
  return aligned(first, 55, times) + aligned("               SBOC", 55, legs);
}

const std::string controls = row({"1(201)", "2(202)", "F"});
const std::string ann = runnerLines("     1  123456 Åsa Öberg", "32:01", {"3:38", "5:57", "32:01"},
                                    {"3:38", "2:19", "26:04"});
constexpr std::string_view annRead = "Åsa Öberg, SBOC, 0: S 0, 201 21800, 202 35700, F 192100";

std::string page(std::string_view list) {
  return "<html><head><title>Spring &amp; Co - SPORTident results</title></head><body>\n"
         "<b>Spring &amp;\nCo</b> created by <a href='http://www.sportsoftware.de'>OE2002 \xA9 "
         "A. Uthor</a>\n<pre><font size=3>" +
         std::string(list) + "</font></pre>\nEnd  (1)\n</body></html>\n";
}

class SplitListsTest : public test::ImportTest {
 protected:
  // "D21 420000: Åsa Öberg, SBOC, 0: S 0, 31 600, F 700 + 33 500; ...", or the code of a failure.
  std::string imported(std::string_view bytes, enmImportConstants format = LRK_IMPORT_AUTO) {
    const int first = event.noOfCategories();
    const std::int32_t code = importer.import(format, event, folder.write("list.html", bytes));
    std::string text = code == 0 ? "" : "code " + std::to_string(code);
    for (int i = first; i < event.noOfCategories(); ++i) {
      const auto category = event.category(i);
      text += text.empty() ? "" : "\n";
      text += category->name() + ' ' + std::to_string(category->courseLength()) + ':';
      for (int k = 0; k < category->noOfRunners(); ++k) {
        const LRKRunner& one = category->runner(k);
        EXPECT_EQ(one.courseLength(), category->courseLength());
        text += (k > 0 ? "; " : " ") + one.name() + ", " + one.club() + ", " +
                std::to_string(one.status()) + ": " + test::textOf(one.punches());
        const std::string extra = test::textOf(one.extraPunches());
        if (!extra.empty()) text += " + " + extra;
      }
    }
    return text;
  }
};

TEST_F(SplitListsTest, SportSoftwareLayouts) {
  const std::string start(header);
  const std::string codes =
      runnerLines("               Eva", "mp", {"1(85)", "2(48)", "F"}, {"2:32", "0.00", "1:13:51"});
  const std::string noNumber =
      aligned("    Pl Name", 39, {"Time"}) + "M10B\n" + aligned("", 47, {"1", "2", "F"}, 8) +
      aligned("       Bob Cole", 39, {"mp", "1:12", "-----", "1:20:38"}, 8) +
      aligned("       SLOW", 47, {"1:12", "", "1:19:26"}, 8);
  const std::string ranks =
      aligned("    Pl N° dép. Nom", 45, {"Temps"}) + "C\n" + aligned("", 53, {"1(122)", "A"}, 21) +
      aligned("     1      74 Ida", 45, {"26:15"}).substr(0, 45) +
      aligned("", 53, {"2:13"}).substr(45, 8) + "    0:09 (3)     26:15    0:00 (1)\n" +
      aligned("               77 CSL", 53, {"2:13", "24:02"}, 21);
  const std::pair<std::string, std::string> rows[] = {
      {start + "Green  (1)              3.900 km  180 m   2 C\n" + controls + ann,
       "Green 390000: " + std::string(annRead)},
      // No header; the count cut off or missing, the climb in "Cm", the length in metres.
      {"Long 5 km (x)  (4     10.700 km   19 P\n" + controls + ann,
       "Long 5 km (x) 1070000: " + std::string(annRead)},
      {start + "Men Open               2,900 km  150 Cm   2 C\n" + controls + ann +
           "\n\nWomen  (0)       1400 m 20 m\n" + controls + start,
       "Men Open 290000: " + std::string(annRead) + "\nWomen 140000:"},
      {noNumber, "M10B 0: Bob Cole, SLOW, 6: S 0, 31 7200, 32 -, F 483800"},
      // Two rows of controls, the finish alone in the second.
      {start + "A (1)\n" + row({"1(201)", "2(202)"}) + row({"F"}) +
           runnerLines("    nc    8344 Åsa Öberg", "32:01", {"3:38", "5:57"}, {"3:38", "2:19"}) +
           row({"32:01"}) + row({"26:04"}),
       "A 0: Åsa Öberg, SBOC, 9: S 0, 201 21800, 202 35700, F 192100"},
      // A course of the runner's own: controls, times, leg times.
      {start + "B (1)\n" + row({"1", "2", "3"}) + codes + row({"2:32", "", "71:19"}),
       "B 0: Eva, SBOC, 6: S 0, 85 15200, 48 -, F 443100"},
      // Time behind and rank beside each time.
      {ranks, "C 0: Ida, 77 CSL, 0: S 0, 122 13300, F 157500"},
  };
  for (const auto& [list, expected] : rows) EXPECT_EQ(imported(page(list)), expected) << list;
  EXPECT_EQ(event.name(), "Spring & Co");
  EXPECT_EQ(event.importedFrom(), "OE2002 HTML");
  EXPECT_TRUE(told.empty());
}

TEST_F(SplitListsTest, ColumnsStandWhereTheHeaderHasThem) {
  const std::string rows = "A\n" + aligned("", 64, {"1(201)", "F"});
  const std::string times = aligned("", 64, {"3:38", "32:01"});
  const std::string legs = aligned("", 64, {"3:38", "28:23"});
  struct Row {
    int line;
    std::string head, runner, second;
    std::string club = "OLG Beispiel";
    int status = 0;
    std::string birth = {};
  };
  const Row layouts[] = {
      {__LINE__, "    Pl    Stno Name                  YB       Time",
       "     1    1234 Ann Bell              80    1:32:01", "               OLG Beispiel",
       "OLG Beispiel", 0, "birthDate=1980-01-01 birthDateFormat=YYYY "},
      {__LINE__, "    Pl Name                  Jg Verein             Zeit",
       "     1 Ann Bell              54 OLG Beispiel     Fehlst", "", "OLG Beispiel", 6,
       "birthDate=1954-01-01 birthDateFormat=YYYY "},
      {__LINE__, "    Pl Name                  Jg  Zeit", "     1 Ann Bell              54 32:01",
       "       OLG Beispiel", "OLG Beispiel", 0, "birthDate=1954-01-01 birthDateFormat=YYYY "},
      {__LINE__, "  Stno Name              Tid Klubb",
       "    12 Ann Bell        32:01 OLG Beispiel Nord och Syd", "", "OLG Beispiel Nord och Syd"},
      {__LINE__, "Club no. Club          Stno   Pl Name                  Time",
       "      12 OLG Beispiel    81   AK Ann Bell             32:01", "", "OLG Beispiel", 9},
      {__LINE__, "Name                 Club             Pl      Time",
       "Ann Bell             OLG Beispiel    nc.     32:01", "", "OLG Beispiel", 9},
      {__LINE__, "   Pl     Tid Nat Namn                 Klubb",
       "    1   32:01 SWE Ann Bell             OLG Beispiel", ""},
  };
  for (const Row& row : layouts) {
    SCOPED_TRACE(row.line);
    const std::string list = row.head + "\n" + rows + row.runner + times.substr(row.runner.size()) +
                             row.second + legs.substr(row.second.size());
    EXPECT_EQ(imported(page(list)), "A 0: Ann Bell, " + row.club + ", " +
                                        std::to_string(row.status) + ": S 0, 201 21800, F 192100");
    EXPECT_EQ(test::setProperties(lastCategory()->runner(0)),
              "name=Ann Bell club=" + row.club + ' ' + row.birth);
  }
  EXPECT_TRUE(told.empty());
}

TEST_F(SplitListsTest, SportSoftwareRunners) {
  struct Row {
    int line;
    std::string_view result;
    Cells times;
    Cells legs;
    std::string_view read;
  };
  const Row rows[] = {
      {__LINE__, "dns", {}, {}, "10: S 0, 201 -, 202 -, F -"},
      {__LINE__, "N Ang", {"-----", "-----"}, {}, "10: S 0, 201 -, 202 -, F -"},
      {__LINE__, "Aufg", {"1:00", "0.00"}, {"1:00"}, "7: S 0, 201 6000, 202 -, F -"},
      {__LINE__, "DISK", {"1:00", "x"}, {"1:00"}, "8: S 0, 201 6000, 202 -, F -"},
      {__LINE__,
       "pm",
       {"-----", "9:00", "9:30"},
       {"", "9:00"},
       "6: S 0, 201 -, 202 54000, F 57000"},
      {__LINE__, "?", {"1:00", "9:00", "8:30"}, {"1:00"}, "14: S 0, 201 6000, 202 54000, F 51000"},
      // The finish that the list lacks is the result.
      {__LINE__, "114:08", {"1:00"}, {"1:00"}, "0: S 0, 201 6000, 202 -, F 684800"},
      // An hour cut off: the first that is late enough, by the time before and the leg.
      {__LINE__,
       "mp",
       {"58:00", ":05:11", ":03:00"},
       {"58:00", "7:11", ":57:49"},
       "6: S 0, 201 348000, 202 391100, F 1098000"},
      {__LINE__, "mp", {"-----", ":05:00", ":04:00"}, {}, "6: S 0, 201 -, 202 390000, F 744000"},
      // Extra punches behind the finish.
      {__LINE__,
       "9:30",
       {"1:00", "9:00", "9:30", "", "4:48", ":02:00"},
       {"1:00", "8:00", "0:30", "", "*203", "*7"},
       "0: S 0, 201 6000, 202 54000, F 57000 + 203 28800, 7 372000"},
  };
  for (const Row& one : rows) {
    SCOPED_TRACE(one.line);
    const std::string list = runnerLines("            12 Eva", one.result, one.times, one.legs);
    const std::string expected = "H21 0: Eva, SBOC, " + std::string(one.read);
    EXPECT_EQ(imported(page(std::string(header) + "H21\n" + controls + list)), expected);
  }
  EXPECT_EQ(told, (std::vector<std::string>{"unreadable time \"x\"", "unknown status \"?\""}));
}

TEST_F(SplitListsTest, DamagedPagesStillGiveWhatTheyHold) {
  const std::string extra = row({"4:48"}) + row({"*203"});
  const std::string list =
      std::string(header) + "D&auml;m (2) 2.1 km\n" + controls + ann + extra + ann;
  const std::string read =
      "Däm 210000: " + std::string(annRead) + " + 203 28800; " + std::string(annRead);
  const std::string whole = page(list);
  const std::string tagged =
      "<FONT color=#080000\nsize=3><B>" + replaced(list, "\n", "</B></FONT>\n<I>");
  auto forms = test::treated(utf8FromWindows1252(whole));
  forms.emplace_back("empty lines", replaced(whole, "\n", "\n\n"));
  forms.emplace_back("no end tag", replaced(whole, "</pre>", ""));
  forms.emplace_back("tags in lines", page(tagged));
  forms.emplace_back("blanks at ends", page(replaced(list, "\n", std::string(60, ' ') + "\n")));
  forms.emplace_back("text",
                     "Spring Day      Sat 1/5\n"
                     "SPORTident results   created by OE2003 \xA9 A. Uthor\n" +
                         list);
  for (const auto& [treatment, form] : forms) {
    const std::string got = imported(form);
    EXPECT_EQ(got.substr(0, read.size()), read) << treatment;
  }
  EXPECT_EQ(event.name(), "Spring Day");
  EXPECT_EQ(event.importedFrom(), "OE2003 text");
}

constexpr std::string_view olaPage =
    "<h1>Spring, Day 2</h1><h2>2004-05-02</h2><table><tr><td>menu</td></tr></table>\n"
    "<table><tr><td><b>D21</b></td><td>12 starts</td><td>4 200 m</td></tr><tr><th>Plac</th></tr>\n"
    "<tr valign=top><td>1</td><td>Eva&nbsp;Ek<br>OK &Ouml;</td><td>32:01</td>"
    "<td>3:38<br>31:10 (2)</td><td><b>5:57</b><br>32:00</td><td>7:00<br>&nbsp;</td></tr>\n"
    "<tr valign=top><td></td><td>Ida</td><td>Ej godk.</td><td>3:48<br>x</td></tr>\n"
    "<tr valign=top><td></td><td>Bo</td><td>disk</td></tr>\n</table>\n"
    "Skapad med OLA version 4.2</body>";
constexpr std::string_view olaRead =
    "D21 420000: Eva Ek, OK Ö, 0: S 0, 31 21800, 32 35700, 33 42000, 34 187000, F 192100; "
    "Ida, , 7: S 0, 31 22800, 32 -, 33 -, 34 -, F -; Bo, , 8: S 0, 31 -, 32 -, 33 -, 34 -, F -";

// Times of the legs beside those from the start; a first row that lacks the last one.
constexpr std::string_view olaTimes =
    "med OLA version 5<table><tr><td>H21</tr>"
    "<tr valign=top><td>AK<td>Per<td>9:00<td>1:00 (1)<br>1:00<td>2:30<br>1:30<td>&nbsp;</tr>"
    "<tr "
    "valign=top><td>2<td>Ola<td>disk<td>1:10<br>1:10<td>2:20<br>1:10<td>9:59<br>7:39</tr></table>"
    "<table><tr><td>H10</tr><tr "
    "valign=top><td>1<td>Bo<td>3:00<td>1:00<br>1:00<br>+0<td>0:30<br>1:30"
    "<td>1:30<br>3:00<td>2:00<br>&nbsp;<br>&nbsp;</tr></table>";
constexpr std::string_view olaTimesRead =
    "H21 0: Per, , 9: S 0, 31 6000, 32 15000, F 54000; "
    "Ola, , 8: S 0, 31 7000, 32 14000, F 59900\n"
    "H10 0: Bo, , 0: S 0, 31 6000, 32 9000, F 18000";

const std::string eTimingPage =
    "<title>eTiming</title><h1>Spring</h1><h3>OK North</h3>\n<h2>D21  4.2 km</h2><table></table>\n"
    "<pre>\n  1(101)   2(102)  F\n" +
    aligned("<b>  1 Ek, Eva", 47, {"32:01", "OK Sk&ouml;ld</b>"}, 17) +
    " 3:38    <b>5:57</b>  32:01\n 3:38  2:19  26:04\n" +
    aligned("<b>  AK Bo Berg", 47, {"33.01"}).substr(0, 47) +
    "</b>\n --  5.50  33.01\n     5.50  27.11\ndisk\n</pre>\n<h2><a name=h>H21</a> 5,1 km"
    "</h2><pre><b>Per</b>\n1:00\n3:00\n";
constexpr std::string_view eTimingRead =
    "D21 420000: Eva Ek, OK Sköld, 0: S 0, 101 21800, 102 35700, F 192100; Bo Berg, , 9: S 0, "
    "101 -, 102 35000, F 198100\nH21 510000: Per, , 0: S 0, 31 6000, F 18000";

TEST_F(SplitListsTest, OlaAndETiming) {
  EXPECT_EQ(imported(olaPage), olaRead);
  EXPECT_EQ(told, std::vector<std::string>{"unreadable time \"x\""});
  EXPECT_EQ(event.name(), "Spring");
  EXPECT_EQ(event.importedFrom(), "OLA 4.2 HTML");
  EXPECT_EQ(toIsoText(event.startDate()), "2004-05-02");
  EXPECT_EQ(imported(olaTimes), olaTimesRead);
  EXPECT_EQ(imported(eTimingPage), eTimingRead);
  EXPECT_EQ(event.organiser(), "OK North");
  EXPECT_EQ(event.importedFrom(), "eTiming");
  EXPECT_EQ(told.back(), "line skipped \"disk\"");
  for (const auto& [page, read] :
       {std::pair(std::string(olaPage), olaRead), std::pair(eTimingPage, eTimingRead)}) {
    auto forms = test::treated(utf8FromWindows1252(page));
    forms.emplace_back("end tags", replaced(replaced(page, "/td>", "/TD >"), "/b>", "/B >"));
    forms.emplace_back("cell", replaced(replaced(page, "<td", "<TD class=a"), "<b", "<B"));
    forms.emplace_back("row", replaced(page, "<tr valign", "<TR class='a'\nvAlign"));
    for (const auto& [treatment, form] : forms) EXPECT_EQ(imported(form), read) << treatment;
  }
  for (std::size_t length = 0; length < eTimingPage.size(); length += 11) {
    const std::string got = imported(eTimingPage.substr(0, length), LRK_IMPORT_ETIMING_HTML);
    EXPECT_TRUE(got.empty() || got == "code 10" || got.starts_with("D")) << got;
  }
}

TEST_F(SplitListsTest, PagesOfOtherProgramsAreRefused) {
  const std::string others[] = {
      "", "Name;Time\n",
      "<html><h1>OLA</h1><table><tr><td>Split time results</td></tr></table></html>",
      "<html><pre>       1. [055]   2. [056]     Tulos\n   1. Eva      2-00.14\n</pre></html>"};
  for (const std::string& other : others) {
    EXPECT_EQ(imported(other, LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT), "code 9");
    EXPECT_EQ(imported(other, LRK_IMPORT_ETIMING_HTML), "code 10");
    EXPECT_EQ(imported(other, LRK_IMPORT_OLA_HTML), "code 11");
  }
  EXPECT_EQ(event.name(), "");
  // Of the right program, but without a runner, or a heading with the name of the event.
  EXPECT_EQ(imported("<h1>eTiming</h1>"), "");
  EXPECT_EQ(imported(page("")), "");
  event.name("Known");
  EXPECT_EQ(imported("<h2>eTiming</h2>"), "eTiming 0:");
  EXPECT_EQ(imported("med OLA version 4"), "");
  EXPECT_EQ(imported("<title></title>SPORTident results<pre></pre>"), "");
  EXPECT_EQ(event.name(), "Known");
}

}  // namespace
}  // namespace larkstone
