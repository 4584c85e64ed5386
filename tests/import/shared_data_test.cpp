// Lists of real timing programs, where a machine has them: LARKSTONE_SHARED_DATA names the folder.

#include <cstdlib>

#include <gtest/gtest.h>

#include "imported.hpp"

namespace larkstone {
namespace {

// What the lists hold by count: categories, and runners and punches within them. A list of version
// 2 gives no runner without split times; teams are left out.
struct Fact {
  std::string_view file;
  std::int32_t code;
  int categories;
  int runners;
  int punches;  // without start and finish, with additional ones
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
    {"solv_html/result-2006.html", 0, 22, 60, 929},
    {"solv_html/result-2018-4491.html", 0, 27, 78, 2280},
    {"solv_html/solv_results_html_5554.html", 0, 21, 60, 884},
    {"pekka_html/krv.html", 0, 77, 2543, 32943},
    {"pekka_html/vali.html", 0, 34, 712, 8237},
    {"pekka_html/vali_webapp.html", 0, 34, 712, 8237},
    {"lookalikes/eresults_satarastit150414.html", LRK_IMPORT_PEKKA_PIRILA_INVALID_FORMAT, 0, 0, 0},
};

TEST(SharedDataTest, IofXmlListsHoldWhatWasCounted) {
  const char* const data = std::getenv("LARKSTONE_SHARED_DATA");
  if (data == nullptr) GTEST_SKIP() << "no shared data";
  const test::TempFolder folder;
  for (const Fact& fact : facts) {
    SCOPED_TRACE(fact.file);
    LRKEvent event;
    event.tempFilePath(folder.path());
    ASSERT_EQ(event.createNewEvent(folder / "event.lrk4"), 0);
    LRKImport importer;
    const std::string file = std::string(data) + "/" + std::string(fact.file);
    EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, file), fact.code);
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

}  // namespace
}  // namespace larkstone
