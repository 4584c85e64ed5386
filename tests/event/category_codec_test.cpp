// No property is lost on the way through a file: every row of every table with a value of its own,
// all at once and each alone. And what storing a category works out on it.

#include <algorithm>
#include <optional>

#include "support.hpp"

namespace larkstone::test {
namespace {

using Properties = EventTest;

TEST_F(Properties, OfAnEvent) {
  int rows = 1;
  for (int only = -1; only < rows; ++only) {
    ASSERT_EQ(openBytes(eventFile({})), 0);
    rows = fill(event_, only);
    ASSERT_EQ(event_.saveEvent(), 0);
    ASSERT_EQ(other_.openEvent(path_), 0);
    expectEqual(event_, other_);
    EXPECT_NE(other_.created(), other_.lastModified()) << "only a new event is stamped";
  }
}

TEST_F(Properties, OfACategoryAndARunner) {
  int rows = 1;
  for (int only = -1; only < rows; ++only) {
    LRKCategory category = categoryNamed("D12", 2);
    LRKRunner& runner = category.runner(1);
    rows = std::max(fill(category, only), fill(runner, only));
    category.legLength(-2, LRK_FINISH_CODE, -1);
    runner.punches().edit(1, 300, LRK_START_CODE);  // as a damaged card may hold it
    runner.extraPunches().add(100, 77);
    const LRKCategory read = decodeCategory(encodeCategory(category), 7);
    expectEqual(category, read);
    EXPECT_EQ(read.legLengthArray(), category.legLengthArray());
    ASSERT_EQ(read.noOfRunners(), 2);
    expectEqual(runner, read.runner(1));
    EXPECT_EQ(read.runner(1).punches().codeArray(), runner.punches().codeArray());
    EXPECT_EQ(read.runner(1).extraPunches().codeArray(), (std::vector<Code>{77}));
    EXPECT_EQ(read.runner(1).categoryIndex(), 7);
    EXPECT_EQ(read.runner(1).runnerIndex(), 1);
  }
}

// Fields narrower than their property hold the nearest value.
TEST_F(Properties, KeepToTheirFields) {
  LRKCategory category = categoryNamed("D12");
  category.noOfRelayLegs(300);
  category.runner(0).relayLeg(-1);
  category.runner(0).punches().edit(1, LRK_NO_TIME, 31);
  const LRKCategory read =
      decodeCategory(encodeCategory(category) + hex("80 05000000 95 40420F00"), 0);
  EXPECT_EQ(read.noOfRelayLegs(), 255);
  EXPECT_EQ(read.runner(0).relayLeg(), 0);
  EXPECT_EQ(read.runner(0).punches().time(1), 16777215);
  EXPECT_EQ(read.runner(1).rankingPosition(), 32767) << "a million in the file";
}

TEST(StoredValues, EqualTimesShareAPlace) {
  const Time finish[] = {186000, 180000, 170000, 180000, LRK_NO_TIME};
  const int place[] = {3, 1, 0, 1, 0};  // 0 is none
  LRKCategory category = categoryNamed("H21", 5);
  for (int i = 0; i < 5; ++i) category.runner(i).finishTime(finish[i]);
  category.runner(2).status(estaMisPunch);
  deriveStoredValues(category);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(category.runner(i).resultPlaceSet(), place[i] > 0) << i;
    EXPECT_EQ(category.runner(i).resultPlace(), place[i]) << i;
  }
}

// One course for all has no name.
TEST(StoredValues, DifferentCoursesAreNamedInOrderOfAppearance) {
  LRKCategory category = categoryNamed("H21", 2);
  category.courseType(ectyCommonLegs);
  deriveStoredValues(category);
  EXPECT_EQ(category.courseType(), ectyCommonLegs);
  EXPECT_FALSE(category.runner(0).courseNameSet());
  category = {};
  for (const Code code : std::vector<Code>{32, 33, 32, 33, 32}) {
    category.addRunner(runnerOn({31, code}));
  }
  category.runner(3).courseName("B");
  category.legLength(32, LRK_FINISH_CODE, 120);
  deriveStoredValues(category);
  EXPECT_EQ(category.courseType(), ectyOneManRelay);
  const char* const names[] = {"1", "2", "1", "B", "1"};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(category.runner(i).courseName(), names[i]) << i;
  EXPECT_EQ(category.legLengthArray().size(), 5U) << "every leg that was run";
  EXPECT_TRUE(category.legLengthSet(33, LRK_FINISH_CODE));
  EXPECT_EQ(category.legLength(32, LRK_FINISH_CODE), 120);
}

// A name is kept in parts where there are any, each while its flag is set, else in full.
TEST(StoredValues, NamesInTheirForms) {
  struct Row {
    std::optional<const char*> first, last;
    bool firstSet, lastSet;
    const char* stored;
  };
  const Row rows[] = {
      {std::nullopt, "Öberg", false, true, "Öberg"},
      {"", std::nullopt, true, false, "New"},
      {"Eva", "Öberg", false, false, "New"},
      {"Eva", "Öberg", true, false, "Eva"},
      {"Eva", "Öberg", false, true, "Öberg"},
      {"Eva", "", true, true, "Eva"},
      {"Eva", "", false, true, "New"},
  };
  for (const Row& row : rows) {
    LRKCategory category = categoryNamed("H21");
    LRKRunner& runner = category.runner(0);
    runner.name("New");
    if (row.first) runner.firstName(*row.first);
    if (row.last) runner.lastName(*row.last);
    runner.firstNameSet(row.firstSet);
    runner.lastNameSet(row.lastSet);
    deriveStoredValues(category);
    EXPECT_EQ(decodeCategory(encodeCategory(category), 0).runner(0).name(), row.stored)
        << &row - rows;
  }
}

}  // namespace
}  // namespace larkstone::test
