#include "larkstone/model/derived_course.hpp"

#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using References = std::vector<std::pair<int, int>>;

LRKDerivedCourse courseOf(const References& references) {
  LRKDerivedCourse course;
  for (const auto& [category, runner] : references) course.addRunner(category, runner);
  return course;
}

References referencesOf(const LRKDerivedCourse& course) {
  References references;
  for (int i = 0; i < course.noOfRunners(); ++i) {
    references.emplace_back(course.runnerCategoryIndex(i), course.runnerIndex(i));
  }
  return references;
}

TEST(DerivedCourseTest, ReferencesFollowTheEvent) {
  const References before = {{0, 5}, {1, 2}, {2, 7}, {0, 1}};
  // A category of -1: the categories are renumbered.
  const std::tuple<int, TranslationTable, References> rows[] = {
      {-1, {1, -1, 0}, {{1, 5}, {0, 7}, {1, 1}}},
      {-1, {3}, {{3, 5}, {3, 1}}},  // a table that ends too early
      {-1, {}, {}},
      {0, {-1, 4, -1, -1, -1, 0}, {{0, 0}, {1, 2}, {2, 7}, {0, 4}}},
      {0, {9, -1}, {{1, 2}, {2, 7}}},
      {3, {-1}, before},
  };
  for (const auto& [category, table, after] : rows) {
    LRKDerivedCourse course = courseOf(before);
    if (category < 0) {
      course.changeCategoryIndices(table);
    } else {
      course.changeRunnerIndices(category, table);
    }
    EXPECT_EQ(referencesOf(course), after) << category << testing::PrintToString(table);
  }
  LRKDerivedCourse wild = courseOf({{-7, 1}, {1, -7}, {70000, 1}, {1, 70000}, {1, 0}});
  wild.changeRunnerIndices(1, {6});
  wild.changeCategoryIndices({-1, 2});
  EXPECT_EQ(referencesOf(wild), (References{{2, 6}}));
}

TEST(DerivedCourseTest, ReferencesAreAddedAndRemovedOneByOne) {
  LRKDerivedCourse course = courseOf({{1, 2}, {0, 3}, {1, 2}});
  course.deleteRunner(2, 1);
  EXPECT_EQ(course.noOfRunners(), 3);
  course.deleteRunner(1, 2);
  EXPECT_EQ(referencesOf(course), (References{{0, 3}, {1, 2}}));
  course.deleteRunnerByIndex(0);
  course.noOfRunners(2);
  EXPECT_EQ(referencesOf(course), (References{{1, 2}, {0, 0}}));

  std::vector<LRKRunner> runners(3);
  runners[1].categoryIndex(4);
  runners[1].runnerIndex(11);
  course.addRunnersFromArray(2, runners);
  EXPECT_EQ(referencesOf(course), (References{{-1, -1}, {4, 11}}));
  course.addRunnersFromArray(9, runners);
  EXPECT_EQ(course.noOfRunners(), 3);
  course.noOfRunners(40000);
  course.addRunner(1, 1);
  EXPECT_EQ(course.noOfRunners(), 32767);
  EXPECT_EQ(course.runnerCategoryIndex(32766), 0);
}

TEST(DerivedCourseTest, PropertiesByTag) {
  LRKDerivedCourse course = courseOf({{0, 0}, {0, 1}, {0, 2}, {0, 3}});
  course.legs(test::legs("S-31-F"));
  course.codesEqualToStart(test::codes("100"));
  course.codesEqualToFinish(test::codes("200-201-202"));
  const std::tuple<enmFileTag, TagValue, TagValue> rows[] = {
      {etagDerivedCourseName, 12, std::string("12")},
      {etagDerivedCourseRequiredLegs, std::string("2"), 2},
      {etagDerivedCourseRequiredLegs, std::string("all"), 2},
      {etagDerivedCourseAllowRearrangement, 255, true},
      {etagDerivedCourseAllowRearrangement, 70000, true},
      {etagDerivedCourseAllowRearrangement, -1, false},
      {etagDerivedCourseAllowMerging, true, true},
      {etagDerivedCourseNoOfLegs, 7, 2},
      {etagDerivedCourseNoOfCodesEqualToStart, 7, 1},
      {etagDerivedCourseNoOfCodesEqualToFinish, 7, 3},
      {etagDerivedCourseNoOfRunners, 7, 4},
  };
  bool isSet = false;
  for (const auto& [tag, written, read] : rows) {
    course.setPropertyByTag(tag, written, true);
    EXPECT_EQ(course.getPropertyByTag(tag, isSet), read) << tag;
    EXPECT_TRUE(isSet);
  }
  EXPECT_EQ(course.getPropertyByTag(etagCategoryName, isSet), TagValue());
  EXPECT_FALSE(isSet);
}

}  // namespace
}  // namespace larkstone
