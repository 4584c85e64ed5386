#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using test::codes;
using test::emptyCourse;
using test::legs;
using test::none;
using test::runner;
using test::Times;

// A runner with these punches just as they stand, one minute apart.
LRKRunner runnerAsWritten(std::string_view text) {
  const LRKCodes list = text.empty() ? LRKCodes() : codes(text);
  LRKPunches punches;
  punches.count(list.count());
  for (int i = 0; i < list.count(); ++i) punches.edit(i, i * 6000, list.code(i));
  LRKRunner result;
  result.punches(std::move(punches));
  return result;
}

Times beginTimes(const LRKRunner& runner) {
  Times times;
  for (int i = 0; i < runner.legs().count(); ++i) times.push_back(runner.legs().beginTime(i));
  return times;
}

std::vector<int> punchIndices(const LRKRunner& runner) {
  std::vector<int> indices;
  for (int i = 0; i < runner.legs().count(); ++i) {
    indices.push_back(runner.legs().beginPunchIndex(i));
    indices.push_back(runner.legs().endPunchIndex(i));
  }
  return indices;
}

TEST(CourseAssemblyTest, AcceptsRunnersByThePolicy) {
  constexpr int refused = -1;
  struct Row {
    int line;
    const char* run;
    bool rearrangement;
    bool merging;
    int valueUsed[4];  // for erqlExactlyAll, erqlAll, erqlAtLeastOne, erqlNone
  };
  const Row rows[] = {
      {__LINE__, "S-31-32-F", false, false, {0, 0, 0, 0}},
      {__LINE__, "S-31-32-F-40", false, false, {refused, 0, 0, 0}},  // one leg more
      {__LINE__, "S-40-S-31-32-F", false, false, {refused, 0, 0, 0}},
      {__LINE__, "S-31-F", false, false, {refused, refused, 2, 2}},
      {__LINE__, "S-40-F", false, false, {refused, refused, refused, 3}},
      {__LINE__, "", false, false, {refused, refused, refused, 3}},
      // 31-32 before S-31: only one of them without rearrangement.
      {__LINE__, "31-32-F-S-31", false, false, {refused, refused, 2, 2}},
      {__LINE__, "31-32-F-S-31", true, false, {refused, 0, 0, 0}},
      // The detour over 40 stands for 31-32 when legs may be merged.
      {__LINE__, "S-31-40-32-F", false, false, {refused, refused, 2, 2}},
      {__LINE__, "S-31-40-32-F", false, true, {refused, 0, 0, 0}},
      {__LINE__, "S-31-40-32-F", true, true, {refused, 0, 0, 0}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    for (int required = 0; required < 4; ++required) {
      LRKCourse course = emptyCourse("S-31-32-F");
      course.setRunnerAdditionStyle(static_cast<enmRequiredLegs>(required), row.rearrangement,
                                    row.merging);
      const bool accepted = course.addRunner(runnerAsWritten(row.run));
      EXPECT_EQ(accepted, row.valueUsed[required] != refused) << required;
      ASSERT_EQ(course.noOfRunners(), accepted ? 1 : 0);
      if (accepted) {
        EXPECT_EQ(course.runner(0).requiredLegsValueUsed(), row.valueUsed[required]);
      }
    }
  }
}

TEST(CourseAssemblyTest, ARepeatedLegIsTheFirstOneBehindTheLastMatch) {
  LRKCourse course = emptyCourse("31-32-31-32", erqlAll);
  ASSERT_TRUE(course.addRunner(runner("S-31-32-31-32-31-32-F")));
  EXPECT_EQ(punchIndices(course.runner(0)), (std::vector<int>{1, 2, 2, 3, 3, 4}));
}

TEST(CourseAssemblyTest, AMissingLegHasNoTimesAndNoPunches) {
  LRKCourse course = emptyCourse("S-31-32-33-F", erqlAtLeastOne);
  ASSERT_TRUE(course.addRunner(runner("S-31-33-F")));
  EXPECT_EQ(punchIndices(course.runner(0)), (std::vector<int>{0, 1, -1, -1, -1, -1, 2, 3}));
  EXPECT_EQ(beginTimes(course.runner(0)), (Times{0, none, none, 12000}));
  EXPECT_FALSE(course.runner(0).rearrangementValueUsed());
}

TEST(CourseAssemblyTest, AButterflyMayBeRunInAnyOrderOfItsLoops) {
  const LRKRunner other = runner("S-50-33-34-50-31-32-50-F");
  LRKCourse course = emptyCourse("S-50-31-32-50-33-34-50-F", erqlExactlyAll);
  EXPECT_FALSE(course.addRunner(other));
  course.runnerAdditionStyleAllowRearrangement(true);
  EXPECT_TRUE(course.addRunner(runner("S-50-31-32-50-33-34-50-F")));
  ASSERT_TRUE(course.addRunner(other));
  EXPECT_FALSE(course.runner(0).rearrangementValueUsed());
  EXPECT_TRUE(course.runner(1).rearrangementValueUsed());
  // One minute a leg: the loop 50-31-32-50 began at minute 4, 50-33-34-50 at minute 1, 50-F at 7.
  EXPECT_EQ(beginTimes(course.runner(1)),
            (Times{0, 24000, 30000, 36000, 6000, 12000, 18000, 42000}));
}

TEST(CourseAssemblyTest, AForkIsMergedIntoOneLegThatKnowsItsControls) {
  LRKCourse course = emptyCourse("S-31-35-F", erqlAll);
  course.runnerAdditionStyleAllowMerging(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-41-42-35-F")));
  ASSERT_TRUE(course.addRunner(runner("S-31-51-35-F")));
  const LRKRunner& first = course.runner(0);
  EXPECT_TRUE(first.mergingValueUsed());
  EXPECT_FALSE(first.rearrangementValueUsed());
  EXPECT_EQ(first.legs().codesToString("S", "F", "", ecscDefault, "-", ",", true),
            "S-31-(41-42)-35-F");
  EXPECT_EQ(punchIndices(first), (std::vector<int>{0, 1, 1, 4, 4, 5}));
  EXPECT_EQ(first.time(1, elstLeg), 18000);  // three minutes
  EXPECT_EQ(course.runner(1).legs().noOfSubCodes(1), 1);
  EXPECT_EQ(course.runner(1).legs().subCode(1, 0), 51);
  ASSERT_TRUE(course.addRunner(runner("S-31-35-F")));
  EXPECT_FALSE(course.runner(2).mergingValueUsed());
  // With rearrangement a merged leg is looked for anywhere.
  course.runnerAdditionStyleAllowRearrangement(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-41-42-35-F")));
  EXPECT_TRUE(course.runner(3).mergingValueUsed());
  EXPECT_TRUE(course.runner(3).rearrangementValueUsed());
}

TEST(CourseAssemblyTest, AMergedRunThatBeginsEarlierWinsOverALaterDirectLeg) {
  LRKCourse course = emptyCourse("31-32", erqlAll);
  course.runnerAdditionStyleAllowMerging(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-40-32-31-32-F")));
  EXPECT_EQ(punchIndices(course.runner(0)), (std::vector<int>{1, 3}));
  // With rearrangement a direct leg comes first, wherever it is.
  course.runnerAdditionStyleAllowRearrangement(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-40-32-31-32-F")));
  EXPECT_EQ(punchIndices(course.runner(1)), (std::vector<int>{4, 5}));
  EXPECT_FALSE(course.runner(1).mergingValueUsed());
}

TEST(CourseAssemblyTest, ControlsActAsStartAndFinish) {
  LRKCourse course;
  course.setCourseLegsEx(legs("S-31-32-F"), codes("99"), codes("98"));
  course.setRunnerAdditionStyle(erqlAll, true, false);
  EXPECT_TRUE(course.addRunner(runner("99-31-32-98")));
  EXPECT_FALSE(course.addRunner(runner("97-31-32-98")));
  course.runnerAdditionStyleAllowRearrangement(false);
  EXPECT_FALSE(course.addRunner(runner("99-31-32-98")));
}

TEST(CourseAssemblyTest, FlagsAboutTheRunnersFollowEveryAddition) {
  LRKCourse course = emptyCourse("S-31-F", erqlAll);
  EXPECT_FALSE(course.allRunnersHaveTheSameCodes());
  LRKRunner r = runner("S-31-F");
  r.categoryIndex(4);
  course.addRunner(r);
  course.addRunner(r);
  EXPECT_TRUE(course.allRunnersHaveTheSameCodes());
  EXPECT_FALSE(course.runnersFromMultipleCategories());
  course.addRunner(runner("S-40-F"));  // refused: changes nothing
  EXPECT_TRUE(course.allRunnersHaveTheSameCodes());
  LRKRunner longer = runnerAsWritten("S-31-F-40");
  longer.categoryIndex(5);
  EXPECT_EQ(course.addRunnersFromArray(2, {longer, runner("S-40-F"), longer}), 1);
  EXPECT_FALSE(course.allRunnersHaveTheSameCodes());
  EXPECT_TRUE(course.runnersFromMultipleCategories());
  EXPECT_EQ(course.noOfRunners(), 3);
}

TEST(CourseAssemblyTest, NewLegsBeginANewCourse) {
  LRKCourse course = test::courseByLegs("S-31-F", {{60, 60}});
  course.calculate();
  LRKLegs other = legs("S-31-32-33-F");
  other.deleteLegByCodes(31, 32);
  course.setCourseLegs(other);
  EXPECT_EQ(course.noOfRunners(), 0);
  EXPECT_EQ(course.bestTime(0, elstLeg), none);
  EXPECT_EQ(course.legs().beginPunchIndex(2), 2);
  EXPECT_EQ(course.legs().endPunchIndex(2), 3);
}

TEST(CourseAssemblyTest, TheReferenceRunnerLendsItsLegs) {
  LRKCourse course = test::courseByLegs("S-31-F", {{60, 60}, {70, 70}});
  EXPECT_EQ(&course.referenceLegs(), &course.legs());
  course.referenceRunnerIndex(1);
  EXPECT_EQ(&course.referenceLegs(), &course.runner(1).legs());
  course.referenceRunnerIndexSet(false);
  EXPECT_EQ(&course.referenceLegs(), &course.legs());
  course.indexBreakpoint(2, 5);
  EXPECT_EQ(course.indexBreakpoint(2), 0);
}

TEST(CourseConversionTest, ACategoryBecomesACourse) {
  LRKCategory category;
  category.name("h21");
  category.timeAccuracy(etacTenthsSeconds);
  category.addRunner(runner("S-31-32-F"));
  category.addRunner(runner("S-31-F"));
  category.addRunner(runner("S-31-32-F"));

  std::optional<LRKLegs> used;
  const LRKCourse course = category.toCourse(erqlAll, false, false, used);
  EXPECT_EQ(course.name(), "h21");
  EXPECT_EQ(course.timeAccuracy(), etacTenthsSeconds);
  EXPECT_EQ(course.gender(), egndMale);
  EXPECT_TRUE(course.isCategoryCourse());
  EXPECT_EQ(course.noOfRunners(), 2);
  EXPECT_EQ(course.runner(1).runnerIndex(), 2);
  ASSERT_TRUE(used.has_value());
  EXPECT_EQ(test::textOf(*used), "S-31-32-F");

  used = legs("S-31");
  EXPECT_EQ(category.toCourse(erqlAll, false, false, used).noOfRunners(), 3);
  category.gender(egndMixed);
  EXPECT_EQ(category.toCourse(erqlAll, false, false).gender(), egndMixed);
  EXPECT_EQ(LRKCategory().toCourse(erqlExactlyAll, false, false).noOfLegs(), 0);
}

TEST(CourseConversionTest, ARunnerWithoutAStartPunchIsFoundThroughTheOthers) {
  // 99 comes where the others have the start, so it counts as the start.
  LRKCategory category;
  category.addRunner(runner("S-31-32-F"));
  category.addRunner(runner("99-31-32-F"));
  const LRKCourse course = category.toCourse(erqlExactlyAll, true, false);
  EXPECT_EQ(course.codesEqualToStart().toString(), "99");
  EXPECT_EQ(course.noOfRunners(), 2);
}

TEST(CourseConversionTest, ACourseBecomesACategory) {
  LRKCourse course = emptyCourse("S-31-32-F", erqlNone);
  course.addRunner(runner("S-31-32-F", {}, "A"));
  course.addRunner(runner("S-31-F", {}, "B"));
  const LRKCategory category = course.toCategory();
  ASSERT_EQ(category.noOfRunners(), 2);
  EXPECT_EQ(category.runner(1).name(), "B");
  EXPECT_FALSE(category.allRunnersHaveTheSameForking());
  EXPECT_EQ(category.minNoOfLegs(), 2);
  EXPECT_EQ(category.maxNoOfLegs(), 3);
}

}  // namespace
}  // namespace larkstone
