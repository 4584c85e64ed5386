#include "larkstone/model/course_determinator.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::codes;
using test::runner;
using test::textOf;

LRKCourseDeterminator determinatorOf(std::initializer_list<const char*> courses) {
  LRKCourseDeterminator determinator;
  for (const char* course : courses) determinator.addCodes(codes(course));
  return determinator;
}

TEST(CourseDeterminatorTest, LegsOfEachCourseType) {
  struct Row {
    int line;
    enmCourseType type;
    std::initializer_list<const char*> courses;
    const char* legs;
    int templateRunner = 0;
  };
  constexpr auto loop12 = "S-50-1-50-2-50-F";
  constexpr auto loop21 = "S-50-2-50-1-50-F";
  const Row rows[] = {
      {__LINE__, ectyNormal, {"S-31-32-F", "S-31-32-F", "S-31-32-F"}, "S-31-32-F"},
      {__LINE__, ectyNormal, {"S-31-32-F", "S-31-33-F", "S-31-32-F"}, ""},
      {__LINE__, ectyNormal, {}, ""},
      {__LINE__, ectyRelay, {"S-31-32-F", "S-31-33-32-F"}, "S-31-32-F"},
      {__LINE__, ectyRelay, {"31-32", "33-34", "31-32"}, ""},
      {__LINE__, ectyOneManRelay, {loop12, loop21}, loop12},
      {__LINE__, ectyOneManRelay, {loop12, loop21}, loop21, 1},
      {__LINE__, ectyOneManRelay, {loop12, loop21, "S-50-1-50-F"}, ""},
      {__LINE__, ectyOneManRelay, {loop12, loop21, "S-50-2-50-1-50-F-31"}, ""},
      // Each leg is found at its first place only.
      {__LINE__, ectyOneManRelay, {"S-50-1-50-1-50-F"}, "S-50-1-50-1-50-F"},
      {__LINE__, ectyOneManRelay, {"S-50-1-50-1-50-F", "S-50-1-50-1-50-F"}, ""},
      // 100 and 200 were punched where others have the start and the finish.
      {__LINE__, ectyOneManRelay, {"S-31-F", "100-31-F", "S-31-200"}, "100-31-F", 1},
      {__LINE__, ectyOneManRelay, {"S-31-F", "100-31-F", "101-31-200"}, "S-31-F"},
      {__LINE__, ectyOneManRelay, {"S-31-F", "S2-31-F3"}, "S-31-F"},
      {__LINE__, ectyOneManRelay, {"S-31-F", "100-32-F"}, ""},
      {__LINE__, ectyOneManRelay, {loop12, loop21}, "", 2},
      {__LINE__, ectyCommonLegs, {"S-31-32-33-F", "S-31-40-32-33-F"}, "S-31,32-33-F"},
      {__LINE__, ectyCommonLegs, {loop12, loop21}, loop21, 1},
      {__LINE__, ectyCommonLegs, {"S-1-2-3", "S-1-2", "1-2-3"}, "1-2"},
      {__LINE__, ectyCommonLegs, {"1-2", "1-2-1-2"}, "1-2,1-2", 1},
      {__LINE__, ectyCommonLegs, {"1-2", "1-2"}, "", -1},
      {__LINE__, ectyRogaining, {"31-32", "32-31"}, "31-32-31"},
      {__LINE__, ectyRogaining, {"32-31-F", "S2-40", "S-32-31"}, "S-32,S2-40,31-F,32-31"},
      {__LINE__, ectyRogaining, {"1-5", "1-S", "1-F", "2-0-3"}, "1-S,1-5,1-F"},
      {__LINE__, ectyRogaining, {"S-1"}, "S-1", 7},
      {__LINE__, static_cast<enmCourseType>(5), {"S-1"}, ""},
      {__LINE__, static_cast<enmCourseType>(-1), {"S-1"}, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    LRKCourseDeterminator determinator = determinatorOf(row.courses);
    EXPECT_EQ(textOf(determinator.calculateCourseLegs(row.type, row.templateRunner)), row.legs);
    const bool isWhole = std::string_view(row.legs).find(',') == std::string_view::npos;
    EXPECT_EQ(textOf(determinator.getCourseLegs(row.type)), isWhole ? row.legs : "");
    EXPECT_EQ(textOf(determinator.getCourseLegs(row.type, true)), row.legs);
  }
}

TEST(CourseDeterminatorTest, LegsAreKeptUntilSomethingIsAdded) {
  LRKCourseDeterminator determinator;
  determinator.addRunnersFromCategory(test::categoryOf({"S-1-2-F", "S-2-1-2-F"}));
  determinator.determineCourses(1);
  EXPECT_EQ(textOf(determinator.getCourseLegs(ectyCommonLegs, true, 0)), "1-2-F");
  EXPECT_EQ(textOf(determinator.getCourseLegs(ectyOneManRelay)), "");
  EXPECT_EQ(textOf(determinator.getCourseLegs(ectyRogaining, true)), "S-1,S-2,1-2-1,2-F");

  determinator.addRunnersFromArray(1, {runner("S-2-F"), runner("S-9-F")});
  EXPECT_EQ(textOf(determinator.getCourseLegs(ectyCommonLegs)), "2-F");
  determinator.addRunner(runner("9-8"));
  EXPECT_EQ(textOf(determinator.getCourseLegs(ectyCommonLegs)), "");
  EXPECT_EQ(determinator.getCourseLegs(ectyRogaining, true).count(), 6);
}

TEST(CourseDeterminatorTest, FullListsTakeNoMore) {
  LRKCourseDeterminator determinator;
  for (int i = 0; i < 32767; ++i) determinator.addCodes(codes("S-31-F"));
  determinator.determineCourses();
  determinator.addCodes(codes("S-32-F"));
  for (int type = ectyNormal; type <= ectyRogaining; ++type) {
    const auto courseType = static_cast<enmCourseType>(type);
    EXPECT_EQ(textOf(determinator.getCourseLegs(courseType)), "S-31-F") << type;
  }
}

}  // namespace
}  // namespace larkstone
