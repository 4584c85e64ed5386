#include <tuple>

#include <gtest/gtest.h>

#include "larkstone/model/category.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

// The punches at which the legs begin and end.
Ints punchIndices(const LRKRunner& runner) {
  Ints indices;
  for (int i = 0; i < runner.legs().count(); ++i) {
    indices.push_back(runner.legs().beginPunchIndex(i));
    indices.push_back(runner.legs().endPunchIndex(i));
  }
  return indices;
}

TEST(CourseAssemblyTest, AcceptsRunnersByThePolicy) {
  constexpr int no = -1;  // refused
  struct Row {
    const char* run;
    std::string_view allowed;  // r: rearrangement, m: merging
    int valueUsed[4];          // for erqlExactlyAll, erqlAll, erqlAtLeastOne, erqlNone
    Ints punches;              // with erqlNone
    const char* course = "S-31-32-F";
  };
  const Row rows[] = {
      {"S-31-32-F", "", {0, 0, 0, 0}, {0, 1, 1, 2, 2, 3}},
      {"S-31-32-F-40", "", {no, 0, 0, 0}, {0, 1, 1, 2, 2, 3}},
      {"S-40-S-31-32-F", "", {no, 0, 0, 0}, {2, 3, 3, 4, 4, 5}},
      {"S-31-F", "", {no, no, 2, 2}, {0, 1, -1, -1, -1, -1}},
      {"S-40-F", "", {no, no, no, 3}, {-1, -1, -1, -1, -1, -1}},
      {"", "", {no, no, no, 3}, {-1, -1, -1, -1, -1, -1}},
      // 31-32 before S-31: only one of them without rearrangement.
      {"31-32-F-S-31", "", {no, no, 2, 2}, {3, 4, -1, -1, -1, -1}},
      {"31-32-F-S-31", "r", {no, 0, 0, 0}, {3, 4, 0, 1, 1, 2}},
      // The detour over 40 stands for 31-32 when legs may be merged.
      {"S-31-40-32-F", "", {no, no, 2, 2}, {0, 1, -1, -1, 3, 4}},
      {"S-31-40-32-F", "m", {no, 0, 0, 0}, {0, 1, 1, 3, 3, 4}},
      {"S-31-40-32-F", "rm", {no, 0, 0, 0}, {0, 1, 1, 3, 3, 4}},
      // A repeated leg is the first one behind the last match.
      {"31-32-31-32-31", "", {no, no, 2, 2}, {0, 1, 1, 2, 2, 3, -1, -1}, "31-32-31-32-33"},
      // A merged run that begins earlier wins over a direct leg, except with rearrangement.
      {"S-31-40-32-31-32", "m", {no, 0, 0, 0}, {1, 3}, "31-32"},
      {"S-31-40-32-31-32", "rm", {no, 0, 0, 0}, {4, 5}, "31-32"},
      // The loops of a butterfly may be run in any order with rearrangement.
      {"50-32-50-31-50", "", {no, no, 2, 2}, {2, 3, 3, 4, -1, -1, -1, -1}, "50-31-50-32-50"},
      {"50-32-50-31-50", "r", {0, 0, 0, 0}, {2, 3, 3, 4, 0, 1, 1, 2}, "50-31-50-32-50"},
  };
  for (const Row& row : rows) {
    for (int required = 0; required < 4; ++required) {
      SCOPED_TRACE(std::string(row.run) + " " + std::string(row.allowed));
      LRKCourse course = emptyCourse(row.course);
      course.setRunnerAdditionStyle(static_cast<enmRequiredLegs>(required),
                                    row.allowed.starts_with('r'), row.allowed.ends_with('m'));
      const bool accepted = course.addRunner(runnerAsWritten(row.run));
      EXPECT_EQ(accepted, row.valueUsed[required] != no) << required;
      if (!accepted) continue;
      EXPECT_EQ(course.runner(0).requiredLegsValueUsed(), row.valueUsed[required]);
      EXPECT_EQ(punchIndices(course.runner(0)), row.punches);
    }
  }
}

TEST(CourseAssemblyTest, LegsThatWereRunTwiceAreFoundTwice) {
  // The first runner's course, what the second ran, and where that has the legs.
  const std::tuple<const char*, const char*, Ints> rows[] = {
      // Both loops begin with 50-1.
      {"S-50-1-2-50-1-3-50-9-F",
       "S-50-1-3-50-1-2-50-9-F",
       {0, 1, 1, 2, 5, 6, 6, 7, 4, 5, 2, 3, 3, 4, 7, 8, 8, 9}},
      // The hub is the last control too, so 1 behind it acts as a finish: only where 50-1 is gone.
      {"S-50-1-2-50-1-3-50-F",
       "S-50-1-3-50-1-2-50-F",
       {0, 1, 1, 2, 5, 6, 6, 7, 4, 5, 2, 3, 3, 4, 7, 8}},
      // A loop run twice, one lap behind the other loop or in front of it.
      {"S-50-1-50-2-50-1-50-9-F",
       "S-50-1-50-1-50-2-50-9-F",
       {0, 1, 1, 2, 2, 3, 5, 6, 6, 7, 3, 4, 4, 5, 7, 8, 8, 9}},
  };
  for (const auto& [first, run, punches] : rows) {
    SCOPED_TRACE(run);
    LRKCourse course = categoryOf({first, run}).toCourse(erqlExactlyAll, true, false);
    ASSERT_EQ(course.noOfRunners(), 2);
    EXPECT_FALSE(course.runner(0).rearrangementValueUsed());
    EXPECT_TRUE(course.runner(1).rearrangementValueUsed());
    EXPECT_EQ(punchIndices(course.runner(1)), punches);
    course.calculate();
    const int last = course.noOfLegs() - 1;
    EXPECT_EQ(course.runner(1).time(last, elstTotal), (last + 1) * 6000);
  }
  // The same for legs that stand for loops: each lap is another one.
  LRKCourse course = emptyCourse("S-50-50-50-F", erqlAll);
  course.setRunnerAdditionStyle(erqlAll, true, true);
  ASSERT_TRUE(course.addRunner(runner("S-50-1-50-2-3-50-F")));
  EXPECT_EQ(punchIndices(course.runner(0)), (Ints{0, 1, 1, 3, 3, 6, 6, 7}));
}

TEST(CourseAssemblyTest, AForkIsMergedIntoOneLegThatKnowsItsControls) {
  LRKCourse course = emptyCourse("S-31-35-F", erqlAll);
  course.runnerAdditionStyleAllowMerging(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-41-42-35-F")));
  ASSERT_TRUE(course.addRunner(runner("S-31-51-35-F")));
  ASSERT_TRUE(course.addRunner(runner("S-31-35-F")));
  const LRKRunner& first = course.runner(0);
  EXPECT_TRUE(first.mergingValueUsed());
  EXPECT_FALSE(first.rearrangementValueUsed());
  EXPECT_EQ(first.legs().codesToString("S", "F", "", ecscDefault, "-", ",", true),
            "S-31-(41-42)-35-F");
  EXPECT_EQ(first.time(1, elstLeg), 18000);  // three minutes
  EXPECT_FALSE(course.runner(2).mergingValueUsed());
  // With rearrangement a merged leg is looked for anywhere.
  course.runnerAdditionStyleAllowRearrangement(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-41-42-35-F")));
  EXPECT_TRUE(course.runner(3).mergingValueUsed());
  EXPECT_TRUE(course.runner(3).rearrangementValueUsed());
}

TEST(CourseAssemblyTest, SaysWhyARunnerIsRefused) {
  constexpr std::tuple<const char*, enmRequiredLegs, enmRefusal> rows[] = {
      {"S-31-F", erqlExactlyAll, erefTooFewLegs},
      {"S-40-32-F", erqlAll, erefTooFewLegs},
      {"S-31-32-F-40", erqlExactlyAll, erefOtherLegs},
      {"S-31-32-F-40", erqlAll, erefNone},
      {"S-40-F", erqlAtLeastOne, erefNoFit},
      {"", erqlAtLeastOne, erefNoFit},
      {"", erqlNone, erefNone},
  };
  LRKCourse course = emptyCourse("S-31-32-F");
  for (const auto& [run, required, refusal] : rows) {
    course.runnerAdditionStyleRequiredLegs(required);
    EXPECT_EQ(course.addRunner(runnerAsWritten(run)), refusal == erefNone) << run;
    EXPECT_EQ(course.lastRefusal(), refusal) << run;
  }
  EXPECT_EQ(course.noOfRefusedRunners(), 5);
  EXPECT_EQ(course.noOfRefusedRunners(erefTooFewLegs), 2);
  EXPECT_EQ(course.noOfRefusedRunners(erefNoFit), 2);
  EXPECT_EQ(course.noOfRefusedRunners(erefNone), 0);
  course.setCourseLegs(legs("S-F"));
  EXPECT_EQ(course.noOfRefusedRunners(), 0);

  LRKCategory category = categoryOf({"S-31-F", "S-F", "S-31-F"});
  category.addRunner(runnerAsWritten("S-31-F-40"));
  course = category.toCourse(erqlExactlyAll, false, false);
  EXPECT_EQ(course.noOfRefusedRunners(erefTooFewLegs), 1);
  EXPECT_EQ(course.noOfRefusedRunners(erefOtherLegs), 1);
}

TEST(CourseAssemblyTest, EstimatedPunchesMakeEstimatedLegs) {
  LRKRunner r = runner("S-31-40-32-F");
  r.punches().isEstimated(1, true);
  r.punches().isEstimated(2, true);
  LRKCourse course = emptyCourse("S-31-32-F");
  course.runnerAdditionStyleAllowMerging(true);
  course.addRunner(r);
  const auto estimated = [&](enmLegStyle style) {
    Ints legs;
    for (int i = 0; i < 3; ++i) legs.push_back(course.runner(0).timeIsEstimated(i, style) ? 1 : 0);
    return legs;
  };
  EXPECT_EQ(estimated(elstLeg), (Ints{1, 1, 0}));
  EXPECT_EQ(estimated(elstTotal), (Ints{1, 0, 0}));
  EXPECT_EQ(estimated(elstPassingBegin), (Ints{0, 1, 0}));
}

TEST(CourseAssemblyTest, FlagsAboutTheRunnersFollowEveryAddition) {
  LRKCourse course = emptyCourse("S-31-F", erqlAll);
  EXPECT_FALSE(course.allRunnersHaveTheSameCodes());
  LRKRunner r = runner("S-31-F");
  r.categoryIndex(4);
  EXPECT_EQ(course.addRunnersFromArray(3, {r, runner("S-40-F"), r}), 2);
  EXPECT_TRUE(course.allRunnersHaveTheSameCodes());  // one that is refused changes nothing
  EXPECT_FALSE(course.runnersFromMultipleCategories());
  LRKRunner longer = runnerAsWritten("S-31-F-40");
  longer.categoryIndex(5);
  EXPECT_TRUE(course.addRunner(longer));
  EXPECT_FALSE(course.allRunnersHaveTheSameCodes());
  EXPECT_TRUE(course.runnersFromMultipleCategories());
}

TEST(CourseAssemblyTest, NewLegsBeginANewCourse) {
  LRKCourse course = courseByLegs("S-31-F", {{60, 60}, {70, 70}});
  course.calculate();
  course.referenceRunnerIndex(1);
  EXPECT_EQ(&course.referenceLegs(), &course.runner(1).legs());
  LRKLegs other = legs("S-31-32-33-F");
  other.deleteLegByCodes(31, 32);
  course.setCourseLegs(other);
  EXPECT_EQ(course.noOfRunners(), 0);
  EXPECT_EQ(&course.referenceLegs(), &course.legs());
  EXPECT_EQ(course.legs().beginPunchIndex(2), 2);
  EXPECT_EQ(course.legs().endPunchIndex(2), 3);
}

TEST(CourseConversionTest, ACategoryBecomesACourseAndACourseACategory) {
  LRKCategory category = categoryOf({"S-31-32-F", "S-31-F", "S-31-32-F"});
  category.name("h21");
  category.timeAccuracy(etacTenthsSeconds);
  category.runner(1).name("B");
  std::optional<LRKLegs> used;
  LRKCourse course = category.toCourse(erqlAll, false, false, used);
  EXPECT_EQ(course.timeAccuracy(), etacTenthsSeconds);
  EXPECT_EQ(course.gender(), egndMale);
  EXPECT_TRUE(course.isCategoryCourse());
  EXPECT_EQ(course.noOfRunners(), 2);
  EXPECT_EQ(course.runner(1).runnerIndex(), 2);
  ASSERT_TRUE(used.has_value());
  EXPECT_EQ(textOf(*used), "S-31-32-F");

  used = legs("S-31");
  category.gender(egndMixed);
  course = category.toCourse(erqlAll, false, false, used);
  EXPECT_EQ(course.gender(), egndMixed);
  const LRKCategory back = course.toCategory();
  ASSERT_EQ(back.noOfRunners(), 3);
  EXPECT_EQ(back.runner(1).name(), "B");
  EXPECT_FALSE(back.allRunnersHaveTheSameForking());
  EXPECT_EQ(back.maxNoOfLegs(), 3);
  EXPECT_EQ(LRKCategory().toCourse(erqlExactlyAll, false, false).noOfLegs(), 0);
}

}  // namespace
}  // namespace larkstone
