// Lists of real timing programs, where a machine has them: LARKSTONE_SHARED_DATA names the folder.

#include <cstdlib>

#include "larkstone/platform/xml.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

// What the lists hold by count: categories, and runners and punches within them. A list of version
// 2 gives no runner without split times.
struct Fact {
  std::string_view file;
  std::int32_t code;
  int categories;
  int runners;
  int punches;  // without start and finish, with additional ones
  enmImportConstants format = LRK_IMPORT_AUTO;
};
constexpr Fact facts[] = {
    {"iof_xml_2/20130508_200904_emma.xml", 0, 23, 377, 542},
    {"iof_xml_2/EmmaJKRelayEndOfEvent.xml", 0, 6, 286, 1140},
    {"iof_xml_2/iof_ResultList_example.xml", 0, 2, 65, 633},
    {"iof_xml_2/meos-results-iof-ids.xml", 0, 0, 0, 0},
    {"iof_xml_2/woc2015_sprintFinal.xml", 0, 2, 88, 1938},
    {"iof_xml_3/etiming_iofres.xml", 0, 42, 235, 4166},
    {"iof_xml_3/otime_2012.xml", 0, 3, 94, 1197},
    {"iof_xml_3/wc2023_middle_results.xml", 0, 2, 257, 5404},
    {"lookalikes/online_splits_table.html", 9, 0, 0, 0},
    {"oe_csv/boc2003.csv", 0, 69, 2017, 30348},
    {"oe_csv/kup10_brac.csv", 0, 22, 267, 2614},
    {"oe_csv/oe2010_splits_day5.csv", 0, 1, 28, 84},
    {"oe_csv/swedish.txt", 0, 11, 105, 1201},
    {"os_csv/pozega_sprintrelay.csv", 0, 13, 124, 56},  // 34 teams of 90, with their handovers
    {"solv_html/result-2006.html", 0, 22, 60, 929},
    {"solv_html/result-2018-4491.html", 0, 27, 78, 2280},
    {"solv_html/solv_results_html_5554.html", 0, 21, 60, 884},
    {"pekka_html/krv.html", 0, 77, 2543, 32943},
    {"pekka_html/vali.html", 0, 34, 712, 8237},
    {"pekka_html/vali_webapp.html", 0, 34, 712, 8237},
    {"lookalikes/eresults_satarastit150414.html", LRK_IMPORT_PEKKA_PIRILA_INVALID_FORMAT, 0, 0, 0},
    {"sportsoftware_splits/132.html", 0, 2, 103, 1204},
    {"sportsoftware_splits/46.html", 0, 1, 25, 300},
    {"sportsoftware_splits/79.txt", 0, 10, 157, 1749},
    {"sportsoftware_splits/LangdonHills.html", 0, 8, 168, 2542},
    {"sportsoftware_splits/aus.html", 0, 2, 63, 1669},
    {"sportsoftware_splits/czech.html", 0, 23, 507, 8068},
    {"sportsoftware_splits/frenchNosClub.html", 0, 24, 352, 4114},
    {"sportsoftware_splits/german.html", 0, 12, 112, 1465, LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT},
    {"sportsoftware_splits/jok.html", 0, 4, 322, 3011},
    {"sportsoftware_splits/missinghour.html", 0, 61, 638, 13429},
    {"sportsoftware_splits/missingTimes.html", 0, 8, 87, 1358},
};

class SharedDataTest : public test::ImportTest {
 protected:
  void SetUp() override {
    if (data == nullptr) GTEST_SKIP() << "no shared data";
  }
  // Where the list is that is imported into an event of its own.
  std::string imported(std::string_view list, std::int32_t code = 0,
                       enmImportConstants format = LRK_IMPORT_AUTO) {
    newEvent();
    const std::string file = std::string(data) + "/" + std::string(list);
    EXPECT_EQ(importer.import(format, event, file), code);
    return file;
  }
  const char* const data = std::getenv("LARKSTONE_SHARED_DATA");
};

TEST_F(SharedDataTest, ListsHoldWhatWasCounted) {
  for (const Fact& fact : facts) {
    SCOPED_TRACE(fact.file);
    imported(fact.file, fact.code, fact.format);
    EXPECT_EQ(event.noOfCategories(), fact.categories);
    int runners = 0;
    int punches = 0;
    for (int i = 0; i < event.noOfCategories(); ++i) {
      const auto category = event.category(i);
      runners += category->noOfRunners();
      for (int k = 0; k < category->noOfRunners(); ++k) {
        const LRKRunner& runner = category->runner(k);
        EXPECT_TRUE(runner.punches().startExists() && runner.punches().finishExists());
        punches += runner.punches().count() - 2 + runner.extraPunches().count();
      }
    }
    EXPECT_EQ(runners, fact.runners);
    EXPECT_EQ(punches, fact.punches);
  }
}

struct RelayFact {
  std::string_view file;
  int standings;  // of teams after a leg, with a time
};
constexpr RelayFact relayFacts[] = {
    {"iof_xml_3/SpeakerResult_OS_IOFV3.xml", 76},
    {"iof_xml_3/iof_example_ResultList2.xml", 9},
    {"iof_xml_3/wc2023_sprint_relay_results.xml", 217},
};

// The team's time after a leg, as the event has it.
Time timeAfter(LRKEvent& event, const std::string& className, const std::string& team, int leg) {
  for (int i = 0; i < event.noOfCategories(); ++i) {
    if (event.categoryName(i) != className + " whole legs") continue;
    for (int k = 0; k < event.category(i)->noOfRunners(); ++k) {
      const LRKRunner& runner = event.category(i)->runner(k);
      if (runner.name() == team) return runner.punches().time(leg) - runner.startTime();
    }
  }
  return LRK_NO_TIME;
}

TEST_F(SharedDataTest, TeamsStandAfterEveryLegWhereTheListSays) {
  for (const RelayFact& fact : relayFacts) {
    SCOPED_TRACE(fact.file);
    XmlDocument list;
    ASSERT_TRUE(list.parse(test::bytesOf(imported(fact.file))));
    int standings = 0;
    for (const XmlNode classResult : list.root().children("ClassResult")) {
      for (const XmlNode team : classResult.children("TeamResult")) {
        for (const XmlNode member : team.children("TeamMemberResult")) {
          const XmlNode result = member.child("Result");
          const int time = std::atoi(result.textAt("OverallResult/Time").c_str());
          if (time == 0) continue;
          ++standings;
          // Who does not count on a parallel leg is behind.
          if (result.textAt("LegOrder") > "1") continue;
          EXPECT_EQ(timeAfter(event, classResult.textAt("Class/Name"), team.textAt("Name"),
                              std::atoi(result.textAt("Leg").c_str())),
                    time * 100);
        }
      }
    }
    EXPECT_EQ(standings, fact.standings);
  }
}

}  // namespace
}  // namespace larkstone
