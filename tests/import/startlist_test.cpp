// Start times of start lists into an event that has its runners.

#include "larkstone/import/startlist.hpp"

#include <algorithm>
#include <random>

#include "larkstone/core/time.hpp"
#include "larkstone/import/name_index.hpp"

#include "imported.hpp"
#include "treated_pages.hpp"

namespace larkstone {
namespace {

using testing::ElementsAre;

using Runners = std::vector<std::pair<std::string, std::string>>;  // names and clubs

class StartlistTest : public test::ImportTest {
 protected:
  // Everybody runs S-31-F, 1 s and 2 s behind a start that is not known.
  void addCategory(const std::string& name, const Runners& runners) {
    LRKCategory category;
    category.name(name);
    for (const auto& [runnerName, club] : runners) {
      LRKRunner runner;
      runner.name(runnerName);
      runner.club(club);
      runner.startTime(0);
      runner.punches().add(100, 31);
      runner.finishTime(200);
      category.addRunner(std::move(runner));
    }
    ASSERT_EQ(event.addCategory(category), 0);
  }

  std::int32_t importList(const std::string& page, const std::string& stage = {},
                          std::int32_t format = LRK_IMPORT_AUTO) {
    notes.clear();
    told.clear();
    return importer.importStartlist(format, event, folder.write("list.html", page), stage);
  }

  /// "H21 Eva Berg 10:02:00": all who have a start.
  std::vector<std::string> starts() {
    std::vector<std::string> texts;
    for (int i = 0; i < event.noOfCategories(); ++i) {
      const auto category = event.category(i);
      for (int k = 0; k < category->noOfRunners(); ++k) {
        const LRKRunner& runner = category->runner(k);
        if (runner.startTime() == 0) continue;
        EXPECT_EQ(runner.punches().time(1) - runner.startTime(), 100);
        EXPECT_EQ(runner.finishTime() - runner.startTime(), 200);
        texts.push_back(category->name() + " " + runner.name() + " " +
                        timeToString(runner.startTime(), etstHMS, etacSeconds, true, "::,"));
      }
    }
    return texts;
  }

  static std::string olaPage(const std::string& className, const std::string& name,
                             const std::string& club, const std::string& start) {
    return "<html><h1>Vinter</h1><hr><b>" + className + "</b><table><tr><td>1</td><td>" + name +
           "</td><td>" + club + "</td><td>" + start +
           "</td></tr></table><p>Skapad med OLA version 5.0</p></html>";
  }
};

TEST_F(StartlistTest, AClassBelongsToTheNearestCategory) {
  for (const char* name : {"H21E", "H21", "H21 A", "H21 B", "D10", ""}) {
    addCategory(name, {{"Eva", "Syd"}});
  }
  struct Row {
    std::string className, category;
  };
  const Row rows[] = {
      {"H21", "H21"},    {"h21e", "H21E"},  {"H21 Elite", "H21"},
      {"H21EX", "H21E"}, {"H2", "H21"},     {"H21 ", "H21"},
      {"D", "D10"},      {"D10-12", "D10"}, {"H21 A lang", "H21 A"},
      {"H20", ""},       {"", ""},
  };
  Time second = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.className);
    const Time start = 3600000 + 100 * ++second;
    EXPECT_EQ(importList(olaPage(row.className, "Eva", "Syd",
                                 timeToString(start, etstHMS, etacSeconds, true, "::,"))),
              0);
    for (int i = 0; i < event.noOfCategories(); ++i) {
      EXPECT_EQ(runner(i, 0).startTime() == start,
                !row.category.empty() && event.categoryName(i) == row.category);
    }
    EXPECT_EQ(notes.size(), row.category.empty() ? 1U : 0U);
  }
}

TEST_F(StartlistTest, HeadingsEndWithTheNumberOfEntries) {
  constexpr std::pair<std::string_view, std::string_view> rows[] = {
      {"H21 (25)", "H21"},
      {"H21  (2 Starter)  5.2 km", "H21"},
      {"H21 (A) (25)", "H21 (A)"},
      {"H21 (2) (25)", "H21 (2)"},
      {"H21 (A)  (2", "H21 (A)"},
      {"H21 lang  (", "H21 lang"},
      {"H21 (5) 3 km (2 x)", "H21"},
      {"D14 (10-12)", "-"},
      {"D14 (A)", "-"},
      {"D14 (2b)", "-"},
      {"D14 ()", "-"},
      {"", "-"},
  };
  for (const auto& [heading, name] : rows) {
    EXPECT_EQ(nameBeforeCount(heading).value_or("-"), name) << heading;
  }
  // Without a number the name is whole, and so is the one it belongs to.
  addCategory("H21", {{"Eva", "Syd"}});
  addCategory("H21 (A)", {{"Eva", "Syd"}});
  EXPECT_EQ(importList("LUETTELO<h3>H21 (A)</h3><pre>1 Eva  Syd 10.00</pre>"), 0);
  EXPECT_THAT(starts(), ElementsAre("H21 (A) Eva 10:00:00"));
}

TEST_F(StartlistTest, AnEntryIsForAllWhoAgreeWithIt) {
  addCategory("H21", {{"Eva Berg", "OK Syd"},
                      {"Eva Bergman", "OK Syd"},
                      {"\u00C5sa Ek", ""},
                      {"Eva Berg", "Nord"}});
  struct Row {
    std::string name, club, start;
    std::vector<int> runners;
    std::size_t notes = 0;
  };
  const Row rows[] = {
      {"Eva Berg", "OK Syd", "1:00", {0, 1}},    {"EVA BERGMAN", "ok syd 2", "2:00", {0, 1}},
      {"Eva Berg", "", "3:00", {0, 1, 3}},       {"\u00E5sa ek", "Any", "4:00", {2}},
      {"Eva Borg", "OK Syd", "5:00", {}, 1},     {"Eva Berg", "OK Syd", "6:xx", {}, 1},
      {"Eva Berg", "OK Syd", "99999:00", {}, 1}, {"\u0418\u0432\u0430", "OK Syd", "7:00", {}, 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name + row.club + row.start);
    std::vector<Time> expected;
    for (int i = 0; i < 4; ++i) expected.push_back(runner(0, i).startTime());
    for (const int i : row.runners) {
      expected[static_cast<std::size_t>(i)] = stringToClockTime(row.start, etacAuto);
    }
    EXPECT_EQ(importList(olaPage("H21", row.name, row.club, row.start)), 0);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(runner(0, i).startTime(), expected[static_cast<std::size_t>(i)]) << i;
    }
    EXPECT_EQ(notes.size(), row.notes);
  }
}

TEST(NameIndexTest, FindsWhatAgreesByTheDefinition) {
  std::mt19937 random(5);
  const auto name = [&] {
    std::string text(random() % 5, 'a');
    for (char& c : text) c = random() % 2 == 0 ? 'a' : '\xE5';
    return text;
  };
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> names(random() % 30);
    for (std::string& other : names) other = name();
    const NameIndex index(names);
    const std::string wanted = name() + name();
    std::vector<std::size_t> expected;
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
      const std::size_t length = std::min(names[i].size(), wanted.size());
      if (names[i].substr(0, length) == wanted.substr(0, length)) expected.push_back(i);
    }
    index.forEachAgreeing(wanted, [&](std::size_t i) { found.push_back(i); });
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected)) << wanted;
  }
}

struct ListFormat {
  std::int32_t format;
  std::string page;
  std::vector<std::string> stages[2];  // who starts when in either
  std::string untold = {};             // whose start the first one lacks
};

const ListFormat formats[] = {
    {LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT,
     "<title>Startliste</title><i>erzeugt von <a href='x'>OE2003 \u00A9 Autor 2003</a></i>\n"
     "<pre><b>Stnr Name                 Jg Verein                  Start</b>\n\n"
     "H21  (2 Starter)     5.200 km  180 m  15 P\n"
     "  12 J\u00F6rg Muster          80 OLG Beispiel         10:02:00\n"
     "  13 Eva Berg             81 OK Syd (2)\n"
     "  14 Vakant                                      10:06:00\n"
     "D10  (1\n"
     "  15 Ida Kurz             14 OK Syd               9:00:30\n</pre>\n",
     {{"H21 J\u00F6rg Muster 10:02:00", "D10 Ida Kurz 9:00:30"}, {}},
     "Eva Berg"},
    {LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT,
     "<i>MT2002 \u00A9 Autor 2002</i><PRE><FONT face=F>  Stnr Name                         Jg "
     "I-Karte Kategorie     Anz          E1         E2 \n\n"
     "<b>2  </b> <b>OK SYD        </b> <b>S  </b>\n\n"
     "     1 Kurz/Berg                               D10                  10:01:00            \n"
     "     2 Eva Berg                     84    5388 H21                  10:03:00   11:30:00 \n\n"
     "<b>168</b> <b>OLG BEISPIEL  </b> <b>S  </b>\n\n"
     "     7 J\u00F6rg Muster                          99 H21                             11:31:00 "
     "\n"
     "     8 Ida Kurz                              1 D10                                      \n"
     "</FONT></PRE>\n",
     {{"H21 Eva Berg 10:03:00"}, {"H21 J\u00F6rg Muster 11:31:00", "H21 Eva Berg 11:30:00"}},
     "Ida Kurz"},
    {LRK_IMPORT_STARTLIST_OLA_HTML,
     "<html><b>Startlista</b>\n<hr>\n<table><tr><td><b>H21</b></td><td>2 st</td></tr>\n"
     "<tr><td>Nr</td><td>Namn</td><td>Klubb</td><td>Bricka</td><td>Starttid</td></tr>\n"
     "<tr><td>&nbsp;12</td><td>J\u00F6rg\n Muster</td><td>OLG&nbsp;</td><td>81</td><td>1</td>"
     "<td>10:02:00</td></tr>\n<tr><td>13</td><td>Eva Berg</td><td>OK Syd</td><td>&nbsp;</td></tr>\n"
     "</table>\n<hr>\n<b>D10</b>\n<table><tr><td>Ida Kurz<td>OK Syd<td>9:00:30</tr></table>\n"
     "<p>Skapad med OLA version 5.0</p></html>",
     {{"H21 J\u00F6rg Muster 10:02:00", "D10 Ida Kurz 9:00:30"},
      {"H21 J\u00F6rg Muster 10:02:00", "D10 Ida Kurz 9:00:30"}},
     "Eva Berg"},
    {LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML,
     "<H2>L\u00C4HT\u00D6LUETTELO</H2>\n<H3>H21 (2)</H3>\n<PRE>\n"
     "  Nro Nimi                 Seura                L\u00E4ht\u00F6\n"
     "   12 J\u00F6rg Muster          OLG 77       10.02.00    11.31.00\n"
     "   13 ____________         OK Syd         10.03.00\n"
     "   14 vacant               OK Syd         10.04.00\n"
     "   17 Kai - Kolmas         OK Syd                   11.33.00\n"
     "   18 Max Lang             Ein Verein mit Beinamen    10.06.00    11.35.00\n"
     "   15 Eva Berg  OK Syd 10.05 0.00\n   16 Uno  OK Syd  -\n</PRE>\n"
     "<H3>D10 (1)</H3><PRE>\n9.00.30 3. Ida Kurz 712345\n</PRE>\n",
     {{"H21 J\u00F6rg Muster 10:02:00", "H21 Eva Berg 10:05:00", "H21 Max 10:06:00",
       "D10 Ida Kurz 9:00:30"},
      {"H21 J\u00F6rg Muster 11:31:00", "H21 Kai 11:33:00", "H21 Max 11:35:00"}},
     "Uno"},
};

class StartlistFormatsTest : public StartlistTest {
 protected:
  void renew() {
    newEvent();
    event.categorySortFlags(enmCategorySortFlags{});
    addCategory(
        "H21",
        {{"J\u00F6rg Muster", "OLG Beispiel"}, {"Eva Berg", "OK Syd"}, {"Kai", ""}, {"Max", ""}});
    addCategory("D10", {{"Ida Kurz", "OK Syd"}});
    EXPECT_EQ(event.saveEvent(), 0);
  }
};

TEST_F(StartlistFormatsTest, EveryFormatIsReadAlsoWhenTreated) {
  for (const ListFormat& format : formats) {
    for (const auto& [treatment, page] : test::treated(format.page)) {
      for (const int stage : {0, 1}) {
        SCOPED_TRACE(format.page.substr(0, 40) + treatment + std::to_string(stage));
        renew();
        EXPECT_EQ(importList(page, stage == 0 ? "" : "1"), 0);
        EXPECT_EQ(importer.determineStartlistFileFormat(folder / "list.html"), format.format);
        EXPECT_EQ(starts(), format.stages[stage]);
        EXPECT_EQ(importer.noOfStartTimesSet(), static_cast<int>(format.stages[stage].size()));
        const std::string missing = "no name or start time in \"" + format.untold + "\"";
        EXPECT_EQ(std::count(told.begin(), told.end(), missing), 1);
        // What was set is in the event file.
        std::string name = event.filename();
        EXPECT_EQ(event.openEvent(name), 0);
        EXPECT_EQ(starts(), format.stages[stage]);
      }
    }
  }
}

TEST_F(StartlistFormatsTest, ListsOfOthersAreRefused) {
  for (const ListFormat& format : formats) {
    renew();
    const std::string before = test::bytesOf(event.filename());
    EXPECT_EQ(importList("<pre>1. A</pre><table><tr><td>B</table>", {}, format.format),
              LRK_IMPORT_STARTLIST_UNKNOWN);
    EXPECT_EQ(importList("<pre>1. A</pre>"), LRK_IMPORT_UNKNOWN);
    EXPECT_EQ(test::bytesOf(event.filename()), before);
  }
}

TEST_F(StartlistFormatsTest, ACancelLeavesTheClassesBeforeItAndTheFile) {
  for (int at = 0; at < 3; ++at) {
    renew();
    const std::string before = test::bytesOf(event.filename());
    if (at == 0) importer.Cancel();
    int count = 0;
    importer.onWorkProgress([&](float) {
      if (++count == at) importer.Cancel();
    });
    EXPECT_EQ(importList(formats[2].page), LRK_IMPORT_CANCELLED);
    EXPECT_EQ(starts().size(), at == 2 ? 1U : 0U);
    EXPECT_EQ(test::bytesOf(event.filename()), before);
    EXPECT_FALSE(importer.importingNow());
  }
  event.closeEvent();
  importer.onWorkProgress(nullptr);
  EXPECT_GT(importList(formats[2].page), LRK_IMPORT_EVENT_FILE_ERROR);
}

}  // namespace
}  // namespace larkstone
