
#include "larkstone/core/date.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

using testing::ElementsAre;

class StandardTextTest : public test::ImportTest {
 protected:
  // A list with one category and one runner; the runner.
  const LRKRunner& imported(const std::string& legs, const std::string& line) {
    EXPECT_EQ(importAny(head + legs + "\n" + line), 0);
    return runner(event.noOfCategories() - 1, 0);
  }
  const std::string head = "Larkstone Standard Text Format\nE\n\n\nH21\n";
};

TEST_F(StandardTextTest, ReadsEventCategoriesAndRunners) {
  importer.master("Ann");
  EXPECT_EQ(importAny("  LARKSTONE standard text FORMAT \r\nV\xE5rserien\r\n3.5.2026\r\n4\r\n"
                      "H21\r\n500\t300\t200\r\n"
                      "\xC5sa \xD6"
                      "berg\t OK Syd\t10:00:00\t5:00\t1:02:03\t3:00\r\n"
                      " \r\n\r\n\t\t\r\nD21\r\n500\t0\t200\r\n\t\t\r\n\tTwo\t0:00\t1\t2\t3"),
            0);
  EXPECT_EQ(test::setProperties(event),
            "startDate=2026-05-03 createdBy=Ann lastModifiedBy=Ann "
            "importedFrom=Larkstone Standard Text ");
  EXPECT_EQ(event.name(), "Vårserien");
  ASSERT_THAT(test::categoryNames(event), ElementsAre("H21", "D21"));
  EXPECT_EQ(event.category(0)->courseLength(), 100000);
  EXPECT_EQ(event.category(0)->legLengthArray(),
            (std::vector<LegLength>{
                {LRK_START_CODE, 31, 500}, {31, 32, 300}, {32, LRK_FINISH_CODE, 200}}));
  const LRKRunner first = runner(0, 0);
  EXPECT_EQ(test::setProperties(first), "name=Åsa Öberg club=OK Syd courseLength=100000 ");
  // 10:00:00, after 5:00, after 1:02:03 more, after 3:00 more.
  EXPECT_EQ(test::textOf(first.punches()), "S 3600000, 31 3630000, 32 4002300, F 4020300");
  EXPECT_FALSE(event.category(1)->courseLengthSet());
  // Nobody on a line of tabs, which ends no block.
  EXPECT_EQ(test::setProperties(runner(1, 0)), "name= club= ");
  EXPECT_EQ(test::setProperties(runner(1, 1)), "name= club=Two ");
}

TEST_F(StandardTextTest, LinesWithHolesGiveARunner) {
  const test::ResultRow rows[] = {
      {"5\t3\t2\nA\tB\t10:00:00\t5:00\t-\t3:00", "S 3600000, 31 3630000, 32 -, F -",
       estaDidNotFinish},
      {"5\t3\t2\nA\tB\t0:00\t1:00\t1:00\tdnf", "S 0, 31 6000, 32 12000, F -", estaDidNotFinish},
      {"5\t3\t2\nA\tB\t0:00\t1:00", "S 0, 31 6000, 32 -, F -", estaDidNotFinish},
      {"5\t3\t2\t\nA\tB\tx\t1:00\t1:00\t1:00", "S -, 31 -, 32 -, F -", estaDidNotFinish},
      {"5\nA\tB\t1:00\t1:00", "S 6000, F 12000", estaOK},
      {"\nA\tB\t1:00\t1:00", "S 6000, F -", estaUnknown},
      {"5\nA", "S -, F -", estaDidNotFinish},
  };
  checkResults(rows, [&](const std::string& lines) { return head + lines; });
  EXPECT_THAT(told, ElementsAre("unreadable leg time \"dnf\"", "unreadable start time \"x\""));
  EXPECT_EQ(notes[0].where, "line 7 \"A\"");
  EXPECT_EQ(importer.noOfWarnings(), 0);  // of the last list
  EXPECT_EQ(imported("5\t3", "A\tB\t0:00\t?\t!").status(), estaDidNotFinish);
  ASSERT_EQ(importer.warnings().size(), 2U);
  EXPECT_EQ(importer.warnings()[1].what, "unreadable leg time \"!\"");
  // One field is the leg from start to finish; the length is rounded down to 10 m.
  imported("1234", "A\tB\t0:00\t1");
  EXPECT_EQ(lastCategory()->legLength(LRK_START_CODE, LRK_FINISH_CODE), 1234);
  EXPECT_EQ(lastCategory()->courseLength(), 123000);
  // More legs than there are codes, and a line that has none of them.
  std::string legs;
  for (int i = 0; i < 40000; ++i) legs += "1\t";
  EXPECT_EQ(imported(legs, "A\tB\t0:00").punches().count(), 257);
  // A name that every runner has a copy of.
  EXPECT_EQ(importAny("Larkstone Standard Text Format\nE\n\n\n" + std::string(5000, 'x')), 0);
  EXPECT_EQ(lastCategory()->name(), std::string(255, 'x'));
  std::string times;  // below what a time can hold
  for (int i = 0; i < 200; ++i) times += "\t-46:00:00";
  EXPECT_EQ(imported(legs, "A\tB\t0:00" + times).punches().time(200), LRK_NO_TIME);
}

TEST_F(StandardTextTest, HeadersAndDates) {
  constexpr std::pair<std::string_view, std::string_view> rows[] = {
      {"2026-05-03", "2026-05-03"}, {"3.5.2026", "2026-05-03"}, {"03/05/2026 ", "2026-05-03"},
      {"31/02/2026", "1899-12-30"}, {"May 2026", "1899-12-30"}, {"", "1899-12-30"},
      {"2026", "1899-12-30"},       {"3.5.26", "1899-12-30"},
  };
  for (const auto& [text, date] : rows) {
    event.startDate({});
    EXPECT_EQ(importAny("Larkstone Standard Text Format\rE\r" + std::string(text)), 0);
    EXPECT_EQ(toIsoText(event.startDate()), date) << text;
  }
  for (const char* const bytes :
       {"", "Larkstone Text Format\nE", "\nLarkstone Standard Text Format"}) {
    EXPECT_EQ(importer.importLarkstoneStandardText(event, folder.write("list.txt", bytes)),
              LRK_IMPORT_LARKSTONE_STANDARD_TEXT_INVALID_FORMAT);
  }
  EXPECT_EQ(event.name() + std::to_string(event.noOfCategories()), "E0");
}

}  // namespace
}  // namespace larkstone
