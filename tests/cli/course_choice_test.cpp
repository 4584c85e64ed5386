#include "cli/course_choice.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone::cli {
namespace {

using test::categoryOf;
using test::textOf;

TEST(CourseChoiceTest, TheCourseIsWhatMostOkRunnersRan) {
  struct Row {
    int line;
    std::initializer_list<const char*> courses;
    const char* course;
    bool rearrangement;
    bool merging;
  };
  constexpr auto same = "S-31-32-33-F";
  const Row rows[] = {
      {__LINE__, {"!S-31-33-F", "!S-31-33-F", "S-31-32-33-F"}, "S-31-32-33-F", false, false},
      // Nobody OK: most of all, the first of equals.
      {__LINE__, {"!S-31-F", "!S-32-F", "!S-33-F", "!S-32-F"}, "S-32-F", false, false},
      {__LINE__, {"!S-31-F", "!S-32-F"}, "S-31-F", false, false},
      // Butterfly.
      {__LINE__, {"S-50-1-50-2-50-F", "S-50-2-50-1-50-F"}, "S-50-1-50-2-50-F", true, false},
      // Forked: the common controls, over the one that most ran.
      {__LINE__, {"S-31-41-33-F", "S-31-42-33-F", "S-31-42-33-F"}, "S-31-33-F", false, true},
      // One of eleven went his own way: less than a tenth, no forking.
      {__LINE__,
       {same, same, same, same, same, same, same, same, same, same, "S-31-33-F"},
       same,
       false,
       false},
      // One of ten is a tenth.
      {__LINE__,
       {same, same, same, same, same, same, same, same, same, "S-31-33-F"},
       "S-31-33-F",
       false,
       true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const CourseChoice choice = chooseCourse(categoryOf(row.courses));
    EXPECT_EQ(textOf(choice.legs.value()), row.course);
    EXPECT_EQ(choice.allowRearrangement, row.rearrangement);
    EXPECT_EQ(choice.allowMerging, row.merging);
  }
  EXPECT_FALSE(chooseCourse(LRKCategory()).legs);
}

TEST(CourseChoiceTest, CoursesAsText) {
  const LRKCategory category = categoryOf({"S-31-F"});
  EXPECT_EQ(textOf(courseFromText("S-40-s2-41-F", category)->legs.value()), "S-40-S2-41-F");
  EXPECT_FALSE(courseFromText("first", category)->legs);
  EXPECT_EQ(textOf(courseFromText("auto", category)->legs.value()), "S-31-F");
  for (const char* text : {"", "S", "S-", "S-x-F", "31--32", "last"}) {
    EXPECT_FALSE(isCourseText(text)) << text;
  }
}

}  // namespace
}  // namespace larkstone::cli
