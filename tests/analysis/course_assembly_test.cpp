#include <gtest/gtest.h>

#include "larkstone/model/category.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

// A runner with these punches just as they stand, one minute apart.
LRKRunner runnerAsWritten(std::string_view text) {
  const LRKCodes list = codes(text);
  LRKPunches punches;
  punches.count(list.count());
  for (int i = 0; i < list.count(); ++i) punches.edit(i, i * 6000, list.code(i));
  LRKRunner result;
  result.punches(std::move(punches));
  return result;
}

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
    int line;
    const char* run;
    bool rearrangement;
    bool merging;
    int valueUsed[4];  // for erqlExactlyAll, erqlAll, erqlAtLeastOne, erqlNone
    Ints punches;      // with erqlNone
    const char* course = "S-31-32-F";
  };
  const char* const butterfly = "S-50-31-32-50-33-34-50-F";
  const char* const otherLoop = "S-50-33-34-50-31-32-50-F";
  const Row rows[] = {
      {__LINE__, "S-31-32-F", false, false, {0, 0, 0, 0}, {0, 1, 1, 2, 2, 3}},
      {__LINE__, "S-31-32-F-40", false, false, {no, 0, 0, 0}, {0, 1, 1, 2, 2, 3}},
      {__LINE__, "S-40-S-31-32-F", false, false, {no, 0, 0, 0}, {2, 3, 3, 4, 4, 5}},
      {__LINE__, "S-31-F", false, false, {no, no, 2, 2}, {0, 1, -1, -1, -1, -1}},
      {__LINE__, "S-40-F", false, false, {no, no, no, 3}, {-1, -1, -1, -1, -1, -1}},
      {__LINE__, "", false, false, {no, no, no, 3}, {-1, -1, -1, -1, -1, -1}},
      // 31-32 before S-31: only one of them without rearrangement.
      {__LINE__, "31-32-F-S-31", false, false, {no, no, 2, 2}, {3, 4, -1, -1, -1, -1}},
      {__LINE__, "31-32-F-S-31", true, false, {no, 0, 0, 0}, {3, 4, 0, 1, 1, 2}},
      // The detour over 40 stands for 31-32 when legs may be merged.
      {__LINE__, "S-31-40-32-F", false, false, {no, no, 2, 2}, {0, 1, -1, -1, 3, 4}},
      {__LINE__, "S-31-40-32-F", false, true, {no, 0, 0, 0}, {0, 1, 1, 3, 3, 4}},
      {__LINE__, "S-31-40-32-F", true, true, {no, 0, 0, 0}, {0, 1, 1, 3, 3, 4}},
      // A repeated leg is the first one behind the last match.
      {__LINE__, "31-32-31-32-31", false, false, {no, 0, 0, 0}, {0, 1, 1, 2, 2, 3}, "31-32-31-32"},
      // A merged run that begins earlier wins over a direct leg, except with rearrangement.
      {__LINE__, "S-31-40-32-31-32", false, true, {no, 0, 0, 0}, {1, 3}, "31-32"},
      {__LINE__, "S-31-40-32-31-32", true, true, {no, 0, 0, 0}, {4, 5}, "31-32"},
      // The loops of a butterfly are found in any order.
      {__LINE__,
       otherLoop,
       false,
       false,
       {no, no, 2, 2},
       {0, 1, 4, 5, 5, 6, 6, 7, -1, -1, -1, -1, -1, -1, 7, 8},
       butterfly},
      {__LINE__,
       otherLoop,
       true,
       false,
       {0, 0, 0, 0},
       {0, 1, 4, 5, 5, 6, 6, 7, 1, 2, 2, 3, 3, 4, 7, 8},
       butterfly},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    for (int required = 0; required < 4; ++required) {
      LRKCourse course = emptyCourse(row.course);
      course.setRunnerAdditionStyle(static_cast<enmRequiredLegs>(required), row.rearrangement,
                                    row.merging);
      const bool accepted = course.addRunner(runnerAsWritten(row.run));
      EXPECT_EQ(accepted, row.valueUsed[required] != no) << required;
      ASSERT_EQ(course.noOfRunners(), accepted ? 1 : 0);
      if (!accepted) continue;
      EXPECT_EQ(course.runner(0).requiredLegsValueUsed(), row.valueUsed[required]);
      EXPECT_EQ(punchIndices(course.runner(0)), row.punches);
    }
  }
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
  EXPECT_EQ(punchIndices(first), (Ints{0, 1, 1, 4, 4, 5}));
  EXPECT_EQ(first.time(1, elstLeg), 18000);  // three minutes
  EXPECT_EQ(course.runner(1).legs().noOfSubCodes(1), 1);
  EXPECT_EQ(course.runner(1).legs().subCode(1, 0), 51);
  EXPECT_FALSE(course.runner(2).mergingValueUsed());
  // With rearrangement a merged leg is looked for anywhere.
  course.runnerAdditionStyleAllowRearrangement(true);
  ASSERT_TRUE(course.addRunner(runner("S-31-41-42-35-F")));
  EXPECT_TRUE(course.runner(3).mergingValueUsed());
  EXPECT_TRUE(course.runner(3).rearrangementValueUsed());
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
  EXPECT_EQ(course.bestTime(0, elstLeg), none);
  EXPECT_EQ(course.legs().beginPunchIndex(2), 2);
  EXPECT_EQ(course.legs().endPunchIndex(2), 3);
}

TEST(CourseConversionTest, ACategoryBecomesACourseAndACourseACategory) {
  LRKCategory category;
  category.name("h21");
  category.timeAccuracy(etacTenthsSeconds);
  category.addRunner(runner("S-31-32-F"));
  category.addRunner(runner("S-31-F", {}, "B"));
  category.addRunner(runner("S-31-32-F"));
  std::optional<LRKLegs> used;
  LRKCourse course = category.toCourse(erqlAll, false, false, used);
  EXPECT_EQ(course.name(), "h21");
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
  EXPECT_EQ(back.minNoOfLegs(), 2);
  EXPECT_EQ(back.maxNoOfLegs(), 3);
  EXPECT_EQ(LRKCategory().toCourse(erqlExactlyAll, false, false).noOfLegs(), 0);
}

TEST(CourseConversionTest, ARunnerWithoutAStartPunchIsFoundThroughTheOthers) {
  // 99 comes where the others have the start, so it counts as the start.
  LRKCategory category;
  category.addRunner(runner("S-31-32-F"));
  category.addRunner(runner("99-31-32-F"));
  LRKCourse course = category.toCourse(erqlExactlyAll, true, false);
  EXPECT_EQ(course.codesEqualToStart().toString(), "99");
  EXPECT_EQ(course.noOfRunners(), 2);
  EXPECT_FALSE(course.addRunner(runner("97-31-32-F")));
  course.runnerAdditionStyleAllowRearrangement(false);
  EXPECT_FALSE(course.addRunner(runner("99-31-32-F")));
}

}  // namespace
}  // namespace larkstone
