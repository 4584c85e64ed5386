#include "larkstone/model/category.hpp"

#include <tuple>

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::categoryOf;
using test::runner;
using test::textOf;

std::vector<int> runnerNumbers(const LRKCategory& category) {
  std::vector<int> numbers;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    numbers.push_back(category.runner(i).runnerIndex());
  }
  return numbers;
}

TEST(CategoryTest, RunnerNumbersAreNotUsedTwice) {
  LRKCategory category;
  category.name("H21");
  category.categoryIndex(4);
  for (int i = 0; i < 3; ++i) category.addRunner(runner("S-F"));
  category.deleteRunner(0);
  EXPECT_EQ(category.addRunner(runner("S-F")), 2);
  EXPECT_EQ(runnerNumbers(category), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(category.runner(2).categoryIndex(), 4);
  EXPECT_EQ(category.runner(2).categoryName(), "H21");
  category.moveRunner(2, 0);
  EXPECT_EQ(runnerNumbers(category), (std::vector<int>{3, 1, 2}));
  category.moveRunner(0, 1);
  EXPECT_EQ(runnerNumbers(category), (std::vector<int>{1, 3, 2}));
}

TEST(CategoryTest, CourseTypes) {
  const std::pair<std::vector<const char*>, enmCourseType> rows[] = {
      {{}, ectyNormal},
      {{"S-31-32-F", "S-31-32-F", "S-31-32-F"}, ectyNormal},
      {{"S-50-1-50-2-50-F", "S-50-2-50-1-50-F"}, ectyOneManRelay},
      {{"S-31-32-F", "S-41-42-F"}, ectyRelay},
      {{"31-32", "41-42"}, ectyRogaining},
      // 100 and 200 stand for start and finish, in the third runner's race for both at once.
      {{"S-31-32-F", "100-31-32-F", "S-31-32-200"}, ectyOneManRelay},
      // One leg more than the first runner has.
      {{"S-50-1-50-2-50-F", "S-50-2-50-1-50-F-F2"}, ectyRelay},
  };
  for (const auto& [courses, type] : rows) {
    LRKCategory category;
    for (const char* course : courses) category.addRunner(test::runnerAsWritten(course));
    EXPECT_EQ(category.determineCourseType(), type) << testing::PrintToString(courses);
  }
}

TEST(CategoryTest, ForkingInfo) {
  const std::tuple<LRKCategory, int, int, bool> rows[] = {
      {categoryOf({"S-31-32-F", "S-31-F", "S-31-32-33-F"}), 2, 4, false},
      {categoryOf({"S-31-32-F", "S-31-32-F", "S-31-33-F"}), 3, 3, false},
      {categoryOf({"S-31-32-F", "S-31-32-F"}), 3, 3, true},
  };
  LRKCategory category;
  for (const auto& [given, least, most, same] : rows) {
    category = given;
    category.updateForkingInfo();
    EXPECT_EQ(category.allRunnersHaveTheSameForking(), same);
    EXPECT_EQ(category.minNoOfLegs(), least);
    EXPECT_EQ(category.maxNoOfLegs(), most);
  }
  category.noOfRunners(0);
  category.updateForkingInfo();
  EXPECT_EQ(category.minNoOfLegs(), 3);  // without runners only the flag is set
}

TEST(CategoryTest, LegLengthsAreInMetresAndLegsInCentimetres) {
  LRKCategory category = categoryOf({"S-31-32-F", "S-32-31-F", "S-31-32-F"});
  EXPECT_EQ(category.legLength(31, 32), 0);
  EXPECT_FALSE(category.legLengthSet(31, 32));
  category.legLength(31, 32, 250);
  category.legLengthSet(32, 31, true);
  category.legLengthSet(31, 32, true);  // there already: keeps its length
  const LRKLegs legs = category.getAllRunnersLegs();
  EXPECT_EQ(textOf(legs), "S-31-32-F,S-32-31-F");
  EXPECT_EQ(legs.length(1), 25000);
  EXPECT_EQ(legs.length(2), 0);
  EXPECT_EQ(category.legLengthArray(), (std::vector<LegLength>{{31, 32, 250}, {32, 31, 0}}));
  category.legLengthSet(31, 32, false);
  EXPECT_EQ(category.legLengthArray(), (std::vector<LegLength>{{32, 31, 0}}));
}

TEST(CategoryTest, RunnersAreMatchedByNameAndClub) {
  const auto named = [](std::initializer_list<std::pair<const char*, const char*>> people) {
    LRKCategory category;
    for (const auto& [name, club] : people) {
      LRKRunner r;
      r.name(name);
      r.club(club);
      category.addRunner(std::move(r));
    }
    return category;
  };
  const LRKCategory before = named({{"Ö A", "X"}, {"B", "X"}, {"Ö A", "X"}, {"C", "Y"}});
  const LRKCategory after = named({{"C", "Z"}, {"b", "x"}, {"ö a", "X"}});
  TranslationTable table;
  before.createMatchingTLT(after, table);
  EXPECT_EQ(table, (TranslationTable{2, 1, -1, -1}));
}

TEST(CategoryTest, AccuracyOfTimes) {
  LRKCategory category = categoryOf({"S-31-F"});
  EXPECT_EQ(category.getHighestTimeAccuracy(), etacMinutes);
  category.runner(0).punches().time(1, 6010);
  EXPECT_EQ(category.getHighestTimeAccuracy(), etacTenthsSeconds);
  EXPECT_EQ(category.getHighestTimeAccuracy(true), etacMinutes);
  EXPECT_EQ(LRKCategory().getHighestTimeAccuracy(), etacHours);
}

TEST(CategoryTest, PropertiesByTag) {
  LRKCategory category;
  bool isSet = false;
  EXPECT_EQ(category.getPropertyByTag(etagCategoryNoOfRunners, isSet), TagValue(std::int32_t{0}));
  EXPECT_TRUE(isSet);
  EXPECT_EQ(category.getPropertyByTag(etagCategoryLegLengths, isSet), TagValue());
  EXPECT_FALSE(isSet);
  category.setPropertyByTag(etagCategoryNoOfRunners, std::int32_t{-5}, true);
  EXPECT_EQ(category.noOfRunners(), 0);
  category.setPropertyByTag(etagCategoryCourseLength, std::string("123,6"), false);
  EXPECT_EQ(category.courseLength(), 124);
  EXPECT_FALSE(category.courseLengthSet());
}

}  // namespace
}  // namespace larkstone
