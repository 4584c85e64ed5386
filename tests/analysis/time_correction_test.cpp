#include <gtest/gtest.h>

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

TEST(TimeCorrectionTest, SpreadsPunchesThatAreOutOfOrder) {
  struct Row {
    const char* codes;
    Ints seconds, other;  // of the second runner: none for an empty list
    Ints expected;        // in hundredths
  };
  const char* const four = "S-31-32-33-F";
  const char* const five = "S-31-32-33-34-F";
  const Ints usual = {0, 30, 50, 90, 100};
  const Row rows[] = {
      // 32 is before the start. 31-32 takes 20 s, 32-33 40 s: a third of the way from 60 to 150 s.
      {four, {10, 60, 5, 150, 200}, usual, {1000, 6000, 9000, 15000, 20000}},
      // 31 is behind the finish. S-31 takes 30 s, 31-32 20 s: 10 + 3/5 of 40 s.
      {four, {10, 500, 50, 150, 200}, usual, {1000, 3400, 5000, 15000, 20000}},
      // One fault in either walk, 33 from the start and 32 from the finish: the backward walk
      // counts. 31-32 takes 20 s, 32-33 40 s: 30 + 50/3 = 46.67, cut to full seconds.
      {four, {0, 30, 90, 80, 200}, usual, {0, 3000, 4600, 8000, 20000}},
      // From the start 32, 33 and 34 are too early, from the finish only 31 is too late. Fewer
      // faults backwards: the forward walk counts and moves three. The legs from 31 on take 20, 10,
      // 10 and 60 s, as long as there is time from 90 to 190 s.
      {five,
       {0, 90, 40, 50, 60, 190},
       {0, 30, 50, 60, 70, 130},
       {0, 9000, 11000, 12000, 13000, 19000}},
      // All at the start time: 3 faults forwards, 2 backwards. The legs take 30, 20, 40 and 10 s of
      // 100, and there are 150 s.
      {four, {50, 50, 50, 50, 200}, usual, {5000, 9500, 12500, 18500, 20000}},
      // No time between the neighbours.
      {"S-31-F", {50, 50, 50}, {0, 30, 50}, {5000, 5000, 5000}},
      // Nobody connected 31-32 and 32-33: both count as the mean of 60 and 140 s. Backwards 32 and
      // 31 are at fault: 6000 * 6000 / 26000 = 1384.6, then 1385 + 10000 * 6000 / 26000 = 3692.7.
      {four, {0, 60, 60, 60, 200}, {}, {0, 1300, 3600, 6000, 20000}},
      // 32 is behind the finish, but its neighbour has no time.
      {"S-31-32-F", {0, -1, 200, 150}, {0, 30, 50, 90}, {0, none, 20000, 15000}},
      // The finish is before the start: 31 goes between them, 20 s of 30 s on the way of -80 s.
      {"S-31-F", {100, 120, 20}, {0, 30, 40}, {10000, 4600, 2000}},
      // In order: nothing moves.
      {"S-31-32-F", {0, -1, 60, 90}, {0, 30, 50, 90}, {0, none, 6000, 9000}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    LRKCourse course = emptyCourse(row.codes);
    course.addRunner(withStatus(runner(row.codes, row.seconds), estaMisPunch));
    if (!row.other.empty()) course.addRunner(runner(row.codes, row.other));
    course.calculate();
    const LRKRunner& r = course.runner(0);
    EXPECT_EQ(timesOf(r.punches()), row.expected);
    for (int i = 0; i < r.legs().count(); ++i) {
      EXPECT_EQ(r.legs().beginTime(i), r.punches().time(i));
      EXPECT_EQ(r.legs().endTime(i), r.punches().time(i + 1));
    }
  }
}

TEST(TimeCorrectionTest, OkRunnersOfACategoryHaveNoMissingTimes) {
  // S-31 and 31-32 take 30 s each: half of 100 s.
  for (const bool isCategory : {true, false}) {
    for (const enmStatus status : {estaOK, estaMisPunch}) {
      LRKCourse course = emptyCourse("S-31-32-F");
      course.isCategoryCourse(isCategory);
      course.addRunner(withStatus(runner("S-31-32-F", {0, -1, 100, 130}), status));
      course.addRunner(runner("S-31-32-F", {0, 30, 60, 80}));
      course.calculate();
      const LRKRunner& r = course.runner(0);
      const bool estimated = isCategory && status == estaOK;
      EXPECT_EQ(r.punches().time(1), estimated ? 5000 : none);
      EXPECT_EQ(r.time(1, elstLeg), estimated ? 5000 : none);
      EXPECT_EQ(r.timeIsEstimated(0, elstLeg), estimated);
      EXPECT_EQ(r.timeIsEstimated(1, elstPassingBegin), estimated);
      EXPECT_FALSE(r.timeIsEstimated(1, elstPassingEnd));
    }
  }
}

TEST(TimeCorrectionTest, LegsFollowTheirPunchesWhereverTheyAreOnTheCourse) {
  // The course wants 31-32 before S-31; the runner's 32 is too late and moves to 30 + 60/2 s.
  LRKCourse course;
  LRKLegs legs = test::legs("31-32-F");
  legs.add(LRK_START_CODE, 31, 0, 0);
  course.setCourseLegs(legs);
  course.setRunnerAdditionStyle(erqlAtLeastOne, true, false);
  course.addRunner(runner("S-31-32-F", {0, 30, 500, 90}));
  course.addRunner(runner("S-31-32-F", {0, 30, 40, 50}));
  course.calculate();
  EXPECT_EQ(course.runner(0).time(0, elstLeg), 3000);
  EXPECT_EQ(course.runner(0).time(1, elstLeg), 3000);
  EXPECT_TRUE(course.runner(0).timeIsEstimated(0, elstPassingEnd));
  EXPECT_FALSE(course.runner(0).timeIsEstimated(2, elstLeg));
}

}  // namespace
}  // namespace larkstone
