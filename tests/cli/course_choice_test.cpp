#include "cli/course_choice.hpp"

#include <array>
#include <initializer_list>
#include <vector>

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
      // Without a finisher, who have a valid result, most who punched any control.
      {__LINE__, {"S-F", "S-F", "!S-31-F", "!S-32-F", "!S-32-F"}, "S-32-F", false, false},
      {__LINE__, {"S-31", "S-32-33", "S-32-33", "S-31-F"}, "S-31-F", false, false},
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

// What the statistics of a course say, leg by leg.
std::vector<std::array<int, 5>> statisticsOf(const LRKCategory& category) {
  LRKCourse course = toCourse(category, erqlAtLeastOne, chooseCourse(category));
  course.calculate();
  std::vector<std::array<int, 5>> statistics;
  for (int i = 0; i < course.noOfLegs(); ++i) {
    statistics.push_back({course.bestTime(i, elstLeg), course.legTopTime(i),
                          course.averageTime(i, elstTotal), course.noOfTimeLossRunners(i),
                          course.noOfExistingRunners(i)});
  }
  return statistics;
}

TEST(CourseChoiceTest, EntriesWithoutControlsDecideNothing) {
  using Courses = std::initializer_list<const char*>;
  for (const Courses finishers :
       {Courses{"S-31-32-33-F", "S-31-32-33-F"}, Courses{"S-31-32-33-F", "S-31-33-F"},
        Courses{"S-50-1-50-2-50-F", "S-50-2-50-1-50-F"}, Courses{"S-31-41-F", "S-32-42-F"},
        Courses{"S-31-41-33-F", "S-31-42-33-F", "S-31-42-33-F"}}) {
    SCOPED_TRACE(*finishers.begin());
    const LRKCategory alone = categoryOf(finishers);
    LRKCategory withEmptyRows;
    for (int i = 0; i < 4; ++i) {  // vacant places and no-shows, whatever their status says
      withEmptyRows.addRunner(test::withStatus(test::runner(i == 3 ? "S" : "S-F", {0, -1}),
                                               i < 2 ? estaOK : estaDidNotStart));
    }
    for (const char* course : finishers) withEmptyRows.addRunner(test::runner(course));
    const CourseChoice expected = chooseCourse(alone);
    const CourseChoice choice = chooseCourse(withEmptyRows);
    EXPECT_EQ(textOf(*choice.legs), textOf(*expected.legs));
    EXPECT_EQ(choice.allowRearrangement, expected.allowRearrangement);
    EXPECT_EQ(choice.allowMerging, expected.allowMerging);
    EXPECT_EQ(statisticsOf(withEmptyRows), statisticsOf(alone));
  }
  // A class of results alone keeps them; who must have no legs stays.
  const LRKCategory results = categoryOf({"S-F", "!S-F"});
  EXPECT_EQ(toCourse(results, erqlAtLeastOne, chooseCourse(results)).noOfRunners(), 2);
  const LRKCategory mixed = categoryOf({"S-F", "S-31-F"});
  EXPECT_EQ(toCourse(mixed, erqlAtLeastOne, chooseCourse(mixed)).runner(0).runnerIndex(), 1);
  EXPECT_EQ(toCourse(mixed, erqlNone, chooseCourse(mixed)).noOfRunners(), 2);
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
