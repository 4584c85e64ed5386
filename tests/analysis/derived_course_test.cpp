#include "larkstone/model/derived_course.hpp"

#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::runner;
using test::textOf;

// Numbers 1 to 5 of category 3: a start unit 100 in one race, one detour, one other course.
LRKCategory relayCategory() {
  LRKCategory category;
  category.name("H21");
  category.categoryIndex(3);
  for (const char* course :
       {"S-F", "S-31-32-F", "100-31-32-F", "S-31-40-32-F", "S-41-42-F", "S-31-32-F"}) {
    category.addRunner(runner(course));
  }
  category.deleteRunner(0);
  return category;
}

std::vector<int> runnerNumbers(const LRKDerivedCourse& course) {
  std::vector<int> numbers;
  for (int i = 0; i < course.noOfRunners(); ++i) numbers.push_back(course.runnerIndex(i));
  return numbers;
}

const std::vector<bool> all(9, true);

TEST(DerivedCourseConversionTest, ADerivedCourseTakesTheSameRunnersAgain) {
  struct Row {
    enmRequiredLegs required;
    bool rearrangement, merging;
    std::vector<int> runners;
  };
  const Row rows[] = {
      {erqlExactlyAll, false, false, {1, 5}},
      {erqlAll, false, true, {1, 3, 5}},
      {erqlExactlyAll, true, false, {1, 2, 5}},
      {erqlAtLeastOne, true, true, {1, 2, 3, 5}},
  };
  const LRKCategory category = relayCategory();
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    const LRKCourse course = category.toCourse(row.required, row.rearrangement, row.merging);
    const LRKDerivedCourse derived = course.toDerivedCourse(all, all);
    EXPECT_EQ(runnerNumbers(derived), row.runners);
    LRKCourse again;
    again.setCourseLegsEx(derived.legs(), derived.codesEqualToStart(),
                          derived.codesEqualToFinish());
    again.setRunnerAdditionStyle(derived.requiredLegs(), derived.allowRearrangement(),
                                 derived.allowMerging());
    for (int i = 0; i < category.noOfRunners(); ++i) again.addRunner(category.runner(i));
    EXPECT_EQ(runnerNumbers(again.toDerivedCourse(all, all)), row.runners);
  }
}

TEST(DerivedCourseConversionTest, ADerivedCourseHoldsWhatWasChosen) {
  const LRKCourse course = relayCategory().toCourse(erqlAtLeastOne, true, true);
  const LRKDerivedCourse derived =
      course.toDerivedCourse({false, true, false, true}, {true, false, true});
  EXPECT_EQ(derived.name(), "H21");
  EXPECT_EQ(textOf(derived.legs()), "S-31,32-F");
  EXPECT_EQ(derived.legs().endTime(1), 0);
  EXPECT_EQ(runnerNumbers(derived), (std::vector<int>{2, 5}));
  EXPECT_EQ(derived.runnerCategoryIndex(1), 3);
}

}  // namespace
}  // namespace larkstone
