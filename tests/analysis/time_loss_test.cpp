#include <gtest/gtest.h>

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

constexpr auto top = etlcCompareToTopTime;
constexpr auto best = etlcCompareToBestTime;
// A share of the runners so small that the top time is the best time.
constexpr float bestOnly = 0.01F;

Times lossesOf(const LRKRunner& runner) {
  Times losses;
  for (int i = 0; i < runner.legs().count(); ++i) losses.push_back(runner.timeLoss(i, elstLeg));
  return losses;
}

TEST(TimeLossTest, IsWhatALegTookMoreThanExpected) {
  struct Row {
    enmTimeLossCalculationMethod method;
    Ints first, second;  // seconds of the legs, the first's are the top and best times
    Times losses;        // of the second
    float percent = 0.2F;
    Time time = 2000;
    bool both = true;
    double percentile = 0.5;
  };
  const Ints equal = {90, 90, 90, 90};
  const Row rows[] = {
      // Lengths 1/6, 2/6, 1/6, 2/6. The second runner's indices are 0.8, 0.8, 100/185 = 0.54, 0.8:
      // half the course is below 0.8. 100 s / 0.8 = 125 s are expected on leg 2, 60 s (48 %) less.
      {top, {100, 200, 100, 200}, {125, 250, 185, 250}, {0, 0, 6000, 0}},
      // No leg without a time loss is left: the top times are expected.
      {top, {100, 200, 100, 200}, {125, 250, 185, 250}, {2500, 5000, 8500, 5000}, 0.2F, -1, false},
      // Indices 0.5, 0.6, 0.9, 1: first 0.6 and 150 s expected. Leg 0 is just 20 % above.
      {top, equal, {180, 150, 100, 90}, {0, 0, 0, 0}},
      // Without it (0.6, 0.9, 1) the middle is 0.9, so 100 s.
      {top, equal, {180, 150, 100, 90}, {8000, 0, 0, 0}, 0.19F},
      // Three quarters of the course are run at 0.9 or below: 100 s are expected, legs 0 and 1 are
      // 80 and 50 s above. Three quarters of the other two legs reach to 1, so 90 s.
      {top, equal, {180, 150, 100, 90}, {9000, 6000, 0, 0}, 0.19F, 2000, true, 0.75},
      // All factors are 1. Deficits 1, 2/3, 1/9, 1/10: the lower median is 1/9. Leg 0 is
      // 180 - 100 s above, leg 1 150 - 100 s. Of the rest the lower median is 1/10, 99 s.
      {best, equal, {180, 150, 100, 99}, {8100, 5100, 0, 0}},
      // The second median is 0, which counts as missing: 1, so nothing is lost against 180 s.
      {best, equal, {180, 150, 100, 90}, {0, 0, 0, 0}},
      // Best times 10 and 310 s, mean 160 s: the factor of leg 0 is (1/16)^0.75 = 1/8. Deficits 1
      // and 0.1, lower median 0.1, so 0.8 is normal on leg 0: 18 s expected, 20 s run.
      {best, {10, 310}, {20, 341}, {200, 0}, 0.19F, 199},
      {best, {10, 310}, {20, 341}, {0, 0}, 0.19F, 200},
      {best, {10, 310}, {20, 341}, {0, 0}, 0.21F, 199},  // 1 - 0.8 is less
      // Both conditions are strict: 30 % but only 15 s, 40 % but just 20 s, 30 s but just 20 %.
      {top, {50, 50, 50, 50}, {50, 50, 50, 65}, {0, 0, 0, 0}},
      {top, {50, 50, 50, 50}, {50, 50, 50, 65}, {0, 0, 0, 1500}, 0.2F, 2000, false},
      {top, {50, 50, 50, 50}, {50, 50, 50, 70}, {0, 0, 0, 0}},
      {top, {50, 50, 50, 50}, {50, 50, 50, 71}, {0, 0, 0, 2100}},
      {top, {150, 150, 150, 150}, {150, 150, 150, 180}, {0, 0, 0, 0}},
      {top, {150, 150, 150, 150}, {150, 150, 150, 181}, {0, 0, 0, 3100}},
      {top, {100, 100, 100, 100}, {100, 100, 100, 120}, {0, 0, 0, 0}, 0.2F, 2000, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    const char* codes = row.first.size() == 2 ? "S-31-F" : "S-31-32-33-F";
    LRKCourse course = courseByLegs(codes, {row.first, row.second});
    course.topPercentile(bestOnly);
    course.timeLossCalculationMethod(row.method);
    course.timeLossConditionPercent(row.percent);
    course.timeLossConditionTime(row.time);
    course.timeLossConditionBoth(row.both);
    course.timeLossPercentile(row.percentile);
    course.calculate(eccfTimeLoss);
    EXPECT_EQ(lossesOf(course.runner(1)), row.losses);
  }
}

TEST(TimeLossTest, IsSummedUpByRunnerAndByLeg) {
  for (const auto method : {top, best}) {
    LRKCourse course = courseByLegs("S-31-32-33-F", {{100, 100, 100, 100}});
    // 32 has no time: legs of 200 s, nothing, nothing, and 110 s.
    course.addRunner(withStatus(runner("S-31-32-33-F", {0, 200, -1, 410, 520}), estaMisPunch));
    course.topPercentile(bestOnly);
    course.timeLossPercentile(0.6);
    course.timeLossCalculationMethod(method);
    course.calculate(eccfTimeLoss);
    // Expected are 110 s (index 0.909, deficit 0.1) on leg 0.
    EXPECT_EQ(lossesOf(course.runner(1)), (Times{9000, 0, 0, 0}));
    EXPECT_EQ(course.runner(1).timeLoss(3, elstTotal), 9000);
    EXPECT_EQ(course.runner(1).noOfTimeLossLegs(), 1);
    EXPECT_FLOAT_EQ(course.runner(1).coursePercentualTimeLoss(), 90.0F / (310 - 90));
    EXPECT_EQ(course.noOfTimeLossRunners(0), 1);
    EXPECT_EQ(course.noOfTimeLossRunners(3), 0);
    EXPECT_FLOAT_EQ(course.timeLossFrequency(0), 0.5F);
  }
}

TEST(TimeLossTest, TimesWithoutTimeLoss) {
  // Against top times of 110 and 90 s the second runner's speed is 1: 90 s were lost on leg 0.
  LRKCourse course = courseByLegs("S-31-32-33-F", {{110, 90, 90, 90}, {200, 90, 90, 90}});
  course.topPercentile(bestOnly);
  course.calculate(eccfTimeLoss);
  EXPECT_EQ(places(course, 0, elstLeg), (Ints{1, 2}));
  course.timesWithoutTimeLoss(true);
  for (int time = 0; time < 2; ++time) {  // the punches still hold the loss and show it again
    course.calculate(flagsOf(eccfTimeLoss | eccfPlacesAllowMissingPunches));
    EXPECT_EQ(course.runner(1).time(0, elstLeg), 11000);
    EXPECT_EQ(course.runner(1).time(3, elstTotal), 38000);
    EXPECT_EQ(course.runner(1).timeLoss(3, elstTotal), 0);
    EXPECT_EQ(places(course, 0, elstLeg), (Ints{1, 1}));
    EXPECT_EQ(course.idealTime(3), 38000);
  }
}

TEST(PerformanceTest, IndicesAgainstTopTimes) {
  LRKCourse course = courseByLegs("S-31-32-F", {{100, 200, 100}, {200, 250, 100}});
  course.addRunner(withStatus(runner("S-31-F", {0, 125, 500}), estaMisPunch));
  course.addRunner(runner("S-31-32-F", {0, -1, 300, 400}));  // OK: the gap at 31 is bridged
  course.topPercentile(bestOnly);
  course.calculate(flagsOf(eccfTimeLoss | eccfPerformanceIndices));
  struct Row {
    float leg[3], total[3], course, withoutTimeLoss;
  };
  const Row rows[] = {
      {{1, 1, 1}, {1, 1, 1}, 1, 1},
      // Lost 75 s on leg 0 against the speed of 0.8.
      {{0.5F, 0.8F, 1}, {0.5F, 300.0F / 450, 400.0F / 550}, 400.0F / 550, 400.0F / 475},
      {{0.8F, 0, 0}, {0.8F, 0, 0}, 0, 0},
      // No leg has a time where the total is there again: 1.
      {{0, 0, 1}, {0, 1, 1}, 1, 1},
  };
  for (int runner = 0; runner < 4; ++runner) {
    SCOPED_TRACE(runner);
    const Row& row = rows[runner];
    const LRKRunner& r = course.runner(runner);
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
