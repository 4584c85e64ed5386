#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using test::courseByLegs;
using test::emptyCourse;
using test::flagsOf;
using test::none;
using test::runner;
using test::runnerByLegs;
using test::Times;

Times lossesOf(const LRKRunner& runner) {
  Times losses;
  for (int i = 0; i < runner.legs().count(); ++i) losses.push_back(runner.timeLoss(i, elstLeg));
  return losses;
}

// A share of the runners so small that the top time is the best time.
constexpr float bestOnly = 0.01F;

TEST(TimeLossTest, AgainstTopTimes) {
  LRKCourse course = courseByLegs("S-31-32-33-F", {{100, 200, 100, 200}, {125, 250, 185, 250}});
  course.topPercentile(bestOnly);
  course.calculate(eccfTimeLoss);
  // Lengths 1/6, 2/6, 1/6, 2/6. The second runner's indices are 0.8, 0.8, 100/185 = 0.54, 0.8: half
  // the course is below 0.8. 100 s / 0.8 = 125 s are expected on leg 2, 60 s (48 %) less. Without
  // that leg the speed is still 0.8.
  const LRKRunner& second = course.runner(1);
  EXPECT_EQ(lossesOf(second), (Times{0, 0, 6000, 0}));
  EXPECT_EQ(second.timeLoss(3, elstTotal), 6000);
  EXPECT_EQ(second.noOfTimeLossLegs(), 1);
  EXPECT_FLOAT_EQ(second.coursePercentualTimeLoss(), 60.0F / (810 - 60));
  EXPECT_EQ(lossesOf(course.runner(0)), (Times{0, 0, 0, 0}));
  EXPECT_EQ(course.noOfTimeLossRunners(2), 1);
  EXPECT_EQ(course.noOfTimeLossRunners(1), 0);
  EXPECT_FLOAT_EQ(course.timeLossFrequency(2), 0.5F);
}

TEST(TimeLossTest, TheSecondEstimateLeavesTimeLossLegsOut) {
  // Against 90 s on all legs the indices are 0.5, 0.6, 0.9, 1: first 0.6 and 150 s expected. Leg 0
  // is 30 s or 20 % above, leg 1 just at it. Of the rest (0.6, 0.9, 1) the middle is 0.9, so 100 s.
  LRKCourse course = courseByLegs("S-31-32-33-F", {{90, 90, 90, 90}, {180, 150, 100, 90}});
  course.topPercentile(bestOnly);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{0, 0, 0, 0}));  // exactly the share is not above it
  course.timeLossConditionPercent(0.19F);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{8000, 0, 0, 0}));

  // Three quarters of the course are run at 0.9 or below: 100 s are expected, legs 0 and 1 are 80
  // and 50 s above. Three quarters of the other two legs reach to 1, so 90 s.
  course.timeLossPercentile(0.75);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{9000, 6000, 0, 0}));
  EXPECT_EQ(course.runner(1).timeLoss(2, elstTotal), 15000);
  EXPECT_FLOAT_EQ(course.runner(1).coursePercentualTimeLoss(), 150.0F / 370);
}

TEST(TimeLossTest, WithoutAnUndisturbedLegTheTopTimesAreExpected) {
  LRKCourse course = courseByLegs("S-31-32-33-F", {{100, 200, 100, 200}, {125, 250, 185, 250}});
  course.topPercentile(bestOnly);
  course.timeLossConditionTime(-100000);
  course.timeLossConditionBoth(false);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{2500, 5000, 8500, 5000}));
  EXPECT_EQ(course.runner(0).noOfTimeLossLegs(), 4);
  EXPECT_EQ(course.noOfTimeLossRunners(0), 1);
}

TEST(TimeLossTest, ConditionsAreStrict) {
  struct Row {
    int line;
    int normal;  // seconds on three legs for both runners
    int slow;    // the second runner's fourth leg
    bool both;
    Time loss;
  };
  const Row rows[] = {
      {__LINE__, 50, 65, true, 0},      // 30 %, but only 15 s
      {__LINE__, 50, 65, false, 1500},  //
      {__LINE__, 50, 70, true, 0},      // 40 %, just 20 s
      {__LINE__, 50, 71, true, 2100},   //
      {__LINE__, 150, 180, true, 0},    // 30 s, just 20 %
      {__LINE__, 150, 181, true, 3100},  {__LINE__, 150, 180, false, 3000},
      {__LINE__, 100, 120, false, 0},  // 20 s and 20 %: neither
      {__LINE__, 100, 121, false, 2100},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const int t = row.normal;
    LRKCourse course = courseByLegs("S-31-32-33-F", {{t, t, t, t}, {t, t, t, row.slow}});
    course.topPercentile(bestOnly);
    course.timeLossConditionBoth(row.both);
    course.calculate(eccfTimeLoss);
    EXPECT_EQ(lossesOf(course.runner(1)), (Times{0, 0, 0, row.loss}));
    EXPECT_EQ(course.runner(1).noOfTimeLossLegs(), row.loss > 0 ? 1 : 0);
  }
}

TEST(TimeLossTest, AgainstBestTimes) {
  // All legs are of 90 s, so all factors are 1. Deficits 1, 2/3, 1/9, 1/10: the lower median is
  // 1/9. Leg 0 is 180 - 100 s above, leg 1 150 - 100 s. Of the rest the lower median is 1/10, 99 s.
  LRKCourse course = courseByLegs("S-31-32-33-F", {{90, 90, 90, 90}, {180, 150, 100, 99}});
  course.timeLossCalculationMethod(etlcCompareToBestTime);
  course.calculate(eccfTimeLoss);
  const LRKRunner& second = course.runner(1);
  EXPECT_EQ(lossesOf(second), (Times{8100, 5100, 0, 0}));
  EXPECT_EQ(second.noOfTimeLossLegs(), 2);
  EXPECT_FLOAT_EQ(second.coursePercentualTimeLoss(), 132.0F / (529 - 132));
  EXPECT_EQ(course.noOfTimeLossRunners(1), 1);
  // The first runner's deficits are all 0, which counts as missing: 1, so 180 s are expected.
  EXPECT_EQ(lossesOf(course.runner(0)), (Times{0, 0, 0, 0}));

  // With 90 s on the last leg the second median is 0 as well and nothing is lost against 180 s.
  course = courseByLegs("S-31-32-33-F", {{90, 90, 90, 90}, {180, 150, 100, 90}});
  course.timeLossCalculationMethod(etlcCompareToBestTime);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{0, 0, 0, 0}));
  EXPECT_EQ(course.runner(1).noOfTimeLossLegs(), 2);
  EXPECT_EQ(course.noOfTimeLossRunners(0), 0);
}

TEST(TimeLossTest, DeficitsAreLargerOnShortLegs) {
  // Best times 10 and 310 s, mean 160 s: the factor of leg 0 is (1/16)^0.75 = 1/8. Deficits 0.5 and
  // 0.05, lower median 0.05, so 0.4 is normal on leg 0: 14 s expected, 15 s run.
  LRKCourse course = courseByLegs("S-31-F", {{10, 310}});
  LRKRunner r = runner("S-31-F", {0, 15});
  r.finishTime(1500 + 32550);
  course.addRunner(r);
  course.timeAccuracy(etacTenthsSeconds);
  course.timeLossCalculationMethod(etlcCompareToBestTime);
  course.timeLossConditionTime(50);
  course.timeLossConditionPercent(0.05F);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{100, 0}));
  course.timeLossConditionTime(100);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{0, 0}));
  course.timeLossConditionTime(50);
  course.timeLossConditionPercent(0.11F);  // 0.5 - 0.4 is less
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(lossesOf(course.runner(1)), (Times{0, 0}));
}

TEST(TimeLossTest, LegsWithoutATimeLoseNothingAndDoNotCount) {
  for (const auto method : {etlcCompareToTopTime, etlcCompareToBestTime}) {
    SCOPED_TRACE(method);
    LRKCourse course = courseByLegs("S-31-32-33-F", {{100, 100, 100, 100}});
    // 32 has no time: legs of 200 s, nothing, nothing, and 110 s.
    LRKRunner r = runner("S-31-32-33-F", {0, 200, -1, 410, 520});
    r.status(estaMisPunch);
    course.addRunner(r);
    course.topPercentile(bestOnly);
    course.timeLossPercentile(0.6);
    course.timeLossCalculationMethod(method);
    course.calculate(eccfTimeLoss);
    // Expected are 110 s (index 0.909, deficit 0.1) on leg 0.
    EXPECT_EQ(lossesOf(course.runner(1)), (Times{9000, 0, 0, 0}));
    EXPECT_FLOAT_EQ(course.runner(1).coursePercentualTimeLoss(), 90.0F / (310 - 90));
  }
}

TEST(TimeLossTest, TimesWithoutTimeLoss) {
  LRKCourse course = courseByLegs("S-31-32-33-F", {{100, 200, 100, 200}, {125, 250, 185, 250}});
  course.topPercentile(bestOnly);
  course.timesWithoutTimeLoss(true);
  course.calculate(flagsOf(eccfTimeLoss | eccfPlacesAllowMissingPunches | eccfPerformanceIndices));
  const LRKRunner& second = course.runner(1);
  EXPECT_EQ(second.time(2, elstLeg), 12500);
  EXPECT_EQ(second.time(3, elstTotal), 75000);
  EXPECT_EQ(second.time(3, elstPassingBegin), 50000);
  EXPECT_EQ(second.timeLoss(3, elstTotal), 0);
  EXPECT_FLOAT_EQ(second.coursePerformanceIndex(), 600.0F / 810);
  EXPECT_FLOAT_EQ(second.coursePerformanceIndexWithoutTimeLoss(), 0.8F);
  // The punches still hold the loss: another calculation finds it again.
  course.calculate(flagsOf(eccfTimeLoss | eccfPlacesAllowMissingPunches));
  EXPECT_EQ(second.time(2, elstLeg), 12500);
}

TEST(TimeLossTest, PlacesAndBestTimesFollowTheTimesWithoutLoss) {
  LRKCourse course = courseByLegs("S-31-32-33-F", {{110, 90, 90, 90}, {200, 90, 90, 90}});
  course.topPercentile(bestOnly);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(test::places(course, 0, elstLeg), (std::vector<int>{1, 2}));
  course.timesWithoutTimeLoss(true);
  course.calculate(eccfTimeLoss);
  // Against top times of 110 and 90 s the second runner's speed is 1: 90 s were lost on leg 0.
  EXPECT_EQ(course.runner(1).time(0, elstLeg), 11000);
  EXPECT_EQ(test::places(course, 0, elstLeg), (std::vector<int>{1, 1}));
  EXPECT_EQ(course.runnerTimeDifference(0, 0, elstLeg, true), 0);
  EXPECT_EQ(course.idealTime(3), 38000);
}

TEST(PerformanceTest, IndicesAgainstTopTimes) {
  LRKCourse course = emptyCourse("S-31-32-F");
  course.addRunner(runnerByLegs("S-31-32-F", {100, 200, 100}));
  course.addRunner(runnerByLegs("S-31-32-F", {200, 250, 100}));
  LRKRunner missing = runner("S-31-F", {0, 125, 500});
  missing.status(estaMisPunch);
  course.addRunner(missing);
  course.addRunner(runner("S-31-32-F", {0, -1, 300, 400}));  // OK: the gap at 31 is bridged
  course.topPercentile(bestOnly);
  course.calculate(flagsOf(eccfTimeLoss | eccfPerformanceIndices));
  struct Row {
    int line;
    int runner;
    float leg[3];
    float total[3];
    float course;
    float withoutTimeLoss;
  };
  const Row rows[] = {
      {__LINE__, 0, {1, 1, 1}, {1, 1, 1}, 1, 1},
      // Lost 75 s on leg 0 against the speed of 0.8.
      {__LINE__,
       1,
       {0.5F, 0.8F, 1},
       {0.5F, 300.0F / 450, 400.0F / 550},
       400.0F / 550,
       400.0F / 475},
      {__LINE__, 2, {0.8F, 0, 0}, {0.8F, 0, 0}, 0, 0},
      // No leg has a time where the total is there again: 1.
      {__LINE__, 3, {0, 0, 1}, {0, 1, 1}, 1, 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const LRKRunner& r = course.runner(row.runner);
    for (int i = 0; i < 3; ++i) {
      EXPECT_FLOAT_EQ(r.performanceIndex(i, elstLeg), row.leg[i]);
      EXPECT_FLOAT_EQ(r.performanceIndex(i, elstTotal), row.total[i]);
    }
    EXPECT_FLOAT_EQ(r.coursePerformanceIndex(), row.course);
    EXPECT_FLOAT_EQ(r.coursePerformanceIndexWithoutTimeLoss(), row.withoutTimeLoss);
  }
}

TEST(PerformanceTest, ALegOfNoTimeIsRunAtTopSpeed) {
  LRKCourse course = emptyCourse("S-31-F");
  course.correctZeroAndNegativeTimes(false);
  course.topPercentile(bestOnly);
  course.addRunner(runner("S-31-F", {0, 0, 100}));
  course.addRunner(runner("S-31-F", {50, 20, 100}));
  course.calculate();
  EXPECT_EQ(course.runner(0).performanceIndex(0, elstLeg), 1);
  EXPECT_EQ(course.runner(0).performanceIndex(0, elstTotal), 0);
  EXPECT_EQ(course.runner(1).performanceIndex(0, elstLeg), 0);
  EXPECT_FLOAT_EQ(course.runner(1).performanceIndex(1, elstTotal), 1);  // 80 s of 80 s
}

}  // namespace
}  // namespace larkstone
