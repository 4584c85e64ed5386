#include <gtest/gtest.h>

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

TEST(LegStatisticsTest, EqualTimesShareAPlaceAndTheNextOneSkips) {
  LRKCourse course = courseByLegs("S-31-F", {{90, 50}, {60, 50}, {60, 40}, {75, 60}});
  course.addRunner(runner("S-F", {0, 100}));
  course.calculate(flagsOf(0));
  EXPECT_EQ(places(course, 0, elstLeg), (Ints{4, 1, 1, 3, 5}));
  EXPECT_EQ(course.noOfQualifiedRunners(0, elstLeg), 4);
  EXPECT_EQ(course.noOfExistingRunners(0), 4);
  EXPECT_EQ(course.bestTime(1, elstLeg), 4000);
  EXPECT_EQ(course.idealTime(1), 10000);

  // 31 has two best runners: without one of them the other is the best.
  EXPECT_EQ(course.runnerTimeDifference(1, 0, elstLeg, true), 0);
  EXPECT_EQ(course.runnerTimeDifference(0, 1, elstLeg, true), 1000);
  EXPECT_EQ(course.runnerTimeDifference(2, 1, elstLeg), 0);
  EXPECT_EQ(course.runnerTimeDifference(2, 1, elstLeg, true), -1000);
  EXPECT_EQ(course.runnerTimeDifference(4, 0, elstLeg), none);

  Times times;
  Ints runners;
  course.getSortedTimes(0, elstLeg, times, runners);
  EXPECT_EQ(runners, (Ints{1, 2, 3, 0, 4}));
  EXPECT_EQ(times, (Times{6000, 6000, 7500, 9000, none}));
}

TEST(LegStatisticsTest, ALegThatNobodyHasIsOfMeanLength) {
  // Top times 100 and 300 s, nobody has 31-32: its raw length is 200 s of 600.
  LRKCourse course;
  LRKLegs legs = test::legs("S-31-32");
  legs.add(32, 31, 0, 0);
  course.setCourseLegs(legs);
  course.setRunnerAdditionStyle(erqlAtLeastOne, true, false);
  course.addRunner(runner("S-31-40-32-31", {0, 100, 150, 200, 500}));
  course.topPercentile(1);
  course.calculate();
  EXPECT_DOUBLE_EQ(course.normalizedLength(0), 1.0 / 6);
  EXPECT_DOUBLE_EQ(course.normalizedLength(1), 2.0 / 6);
  EXPECT_DOUBLE_EQ(course.accumulatedNormalizedLength(1), 3.0 / 6);
  for (const Time time : {course.bestTime(1, elstLeg), course.legTopTime(1),
                          course.averageTime(1, elstLeg), course.idealTime(2)}) {
    EXPECT_EQ(time, none);
  }
  EXPECT_EQ(course.timeLossFrequency(1), 0);
  EXPECT_EQ(course.idealTime(0), 10000);
  EXPECT_EQ(places(course, 1, elstLeg), Ints{1});
}

TEST(LegStatisticsTest, TheTopTimeIsAMeanOfTheFastest) {
  const std::pair<float, Time> rows[] = {
      {0.25F, 10180},  // (101 + 102 + 103 / 2) / 2.5
      {0.05F, 10100},  // only half a runner, still a mean
      {7.0F, 10550},   // there are no more than ten
      {-1.0F, none},
  };
  LRKCourse course =
      courseByLegs("S-F", {{110}, {102}, {109}, {101}, {108}, {103}, {107}, {104}, {106}, {105}});
  for (const auto& [percentile, top] : rows) {
    course.topPercentile(percentile);
    course.calculate();
    EXPECT_EQ(course.legTopTime(0, etacHundredthsSeconds), top) << percentile;
  }
}

TEST(LegStatisticsTest, RunnersWithANegativeTimeCountForTheShareOnly) {
  // Four runners have a leg time, one of them -10 s: x = 4 * 0.5 = 2, so (20 + 30) / 2 s.
  LRKCourse course = emptyCourse("S-F");
  course.correctZeroAndNegativeTimes(false);
  course.topPercentile(0.5F);
  for (const Ints& times : {Ints{10, 0}, Ints{0, 40}, Ints{0, 20}, Ints{0, 30}}) {
    course.addRunner(runner("S-F", times));
  }
  course.calculate();
  EXPECT_EQ(course.legTopTime(0), 2500);
  EXPECT_EQ(places(course, 0, elstLeg), (Ints{4, 3, 1, 2}));
}

LRKCourse finishingAt(std::initializer_list<Time> times) {
  LRKCourse course = emptyCourse("S-F");
  LRKRunner r = runner("S-F");
  for (const Time finish : times) {
    r.finishTime(finish);
    course.addRunner(r);
  }
  return course;
}

TEST(LegStatisticsTest, TimesAreCutAndMeansRounded) {
  LRKCourse course = finishingAt({12345, 1000, 1001});
  course.calculate();
  EXPECT_EQ(course.timeAccuracy(), etacHundredthsSeconds);
  EXPECT_EQ(course.averageTime(0, elstLeg), 4782);  // 14346 / 3
  EXPECT_EQ(course.averageTime(0, elstLeg, etacTenthsSeconds), 4780);
  // Two thirds of the runners are 1000.5: to the even neighbour.
  course.topPercentile(2.0F / 3);
  course.calculate();
  EXPECT_EQ(course.legTopTime(0), 1000);

  course.timeAccuracy(etacTenthsSeconds);
  course.calculate(flagsOf(eccfPlacesDontAllowMissingPunches));
  EXPECT_EQ(course.runner(0).time(0, elstLeg), 12340);
  EXPECT_EQ(course.runner(2).time(0, elstLeg), 1000);
  EXPECT_EQ(course.bestFinishTime(), 1000);
  // A style that has no best time has nothing to compare with.
  EXPECT_EQ(course.runnerTimeDifference(0, 0, elstTotal), 11340);
  course.calculate(flagsOf(0));
  EXPECT_EQ(course.runnerTimeDifference(0, 0, elstTotal), none);
  EXPECT_EQ(course.runnerTimeDifference(0, 0, elstLeg), 11340);
}

TEST(LegStatisticsTest, TopTimesAreRoundedToTheAccuracyAskedFor) {
  LRKCourse course = finishingAt({12340, 12350});
  course.topPercentile(1);  // the mean of both, 12345
  course.timeAccuracy(etacTenthsSeconds);
  course.calculate();
  EXPECT_EQ(course.legTopTime(0, etacHundredthsSeconds), 12345);
  EXPECT_EQ(course.legTopTime(0), 12350);  // the course's accuracy; halves go up
  EXPECT_EQ(course.legTopTime(0, etacSeconds), 12300);
  EXPECT_EQ(course.legTopTime(0, etacMinutes), 12000);
}

}  // namespace
}  // namespace larkstone
