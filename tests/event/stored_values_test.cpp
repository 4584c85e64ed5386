// What storing a category works out on it.

#include "larkstone/event/category_codec.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;

LRKRunner finishedAfter(Time time, enmStatus status = estaOK) {
  LRKRunner runner = runnerOn({31});
  runner.finishTime(time);
  runner.status(status);
  return runner;
}

TEST(StoredValues, EqualTimesShareAPlace) {
  LRKCategory category;
  category.addRunner(finishedAfter(186000));
  category.addRunner(finishedAfter(180000));
  category.addRunner(finishedAfter(170000, estaMisPunch));
  category.addRunner(finishedAfter(180000));
  category.addRunner(finishedAfter(LRK_NO_TIME));
  category.runner(4).resultPlace(9);
  category.runner(4).resultPlaceSet(false);
  deriveStoredValues(category);
  EXPECT_EQ(category.runner(0).resultPlace(), 3);
  EXPECT_EQ(category.runner(1).resultPlace(), 1);
  EXPECT_EQ(category.runner(3).resultPlace(), 1);
  EXPECT_TRUE(category.runner(3).resultPlaceSet());
  EXPECT_FALSE(category.runner(2).resultPlaceSet());
  EXPECT_FALSE(category.runner(4).resultPlaceSet());

  // A runner without a finish has the result time 0, which is a time.
  LRKRunner onTheWay;
  onTheWay.status(estaOK);
  onTheWay.startTime(0);
  category.addRunner(onTheWay);
  deriveStoredValues(category);
  EXPECT_EQ(category.runner(5).resultPlace(), 1);
  EXPECT_EQ(category.runner(1).resultPlace(), 2);
  EXPECT_EQ(category.runner(0).resultPlace(), 4);
}

TEST(StoredValues, DifferentCoursesAreNamedInOrderOfAppearance) {
  LRKCategory category;
  category.addRunner(runnerOn({31, 32}));
  category.addRunner(runnerOn({31, 33}));
  category.addRunner(runnerOn({31, 32}));
  category.addRunner(runnerOn({31, 33}));
  category.addRunner(runnerOn({34}));
  category.runner(3).courseName("B");
  deriveStoredValues(category);
  EXPECT_EQ(category.courseType(), ectyOneManRelay);
  const char* const names[] = {"1", "2", "1", "B", "3"};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(category.runner(i).courseName(), names[i]) << i;
  EXPECT_FALSE(category.allRunnersHaveTheSameForking());
  EXPECT_EQ(category.minNoOfLegs(), 2);
  EXPECT_EQ(category.maxNoOfLegs(), 3);
}

TEST(StoredValues, OneCourseStaysWhatItIs) {
  LRKCategory category = categoryNamed("H21", 3);
  category.courseType(ectyCommonLegs);
  deriveStoredValues(category);
  EXPECT_EQ(category.courseType(), ectyCommonLegs);
  EXPECT_FALSE(category.runner(0).courseNameSet());
  EXPECT_TRUE(category.allRunnersHaveTheSameForking());
}

TEST(StoredValues, EveryLegRunHasAnEntry) {
  LRKCategory category;
  category.legLength(32, LRK_FINISH_CODE, 120);
  category.addRunner(runnerOn({31, 32}));
  category.addRunner(runnerOn({32}));
  deriveStoredValues(category);
  const std::vector<LegLength> expected = {
      {32, LRK_FINISH_CODE, 120}, {LRK_START_CODE, 31, 0}, {31, 32, 0}, {LRK_START_CODE, 32, 0}};
  EXPECT_EQ(category.legLengthArray(), expected);
}

TEST(StoredValues, NamesAreKeptInPartsWhereThereAreAny) {
  LRKCategory category = categoryNamed("H21", 3);
  category.runner(0).lastName("Öberg");
  category.runner(1).firstName("");
  category.runner(1).lastName("");
  deriveStoredValues(category);
  EXPECT_FALSE(category.runner(0).nameSet());
  EXPECT_TRUE(category.runner(0).lastNameSet());
  EXPECT_TRUE(category.runner(1).nameSet());
  EXPECT_FALSE(category.runner(1).firstNameSet());
  EXPECT_FALSE(category.runner(1).lastNameSet());
  EXPECT_TRUE(category.runner(2).nameSet());
}

TEST(StoredValues, OfACategoryWithoutRunners) {
  LRKCategory category;
  category.minNoOfLegs(4);
  deriveStoredValues(category);
  EXPECT_TRUE(category.allRunnersHaveTheSameForking());
  EXPECT_EQ(category.minNoOfLegs(), 4);
  EXPECT_EQ(category.courseType(), ectyNormal);
}

}  // namespace
}  // namespace larkstone
