// Courses that no race makes: everything stays defined, finite and in bounds.

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using test::emptyCourse;
using test::flagsOf;
using test::none;
using test::runner;

using Random = std::mt19937;

template <class T, std::size_t n>
T oneOf(Random& random, const T (&values)[n]) {
  return values[random() % n];
}

LRKRunner randomRunner(Random& random, Code lastCode) {
  constexpr Time times[] = {0, 1, 100, none, 12345, 6000, none, 360000 * 9, none - 1, 200, 100};
  LRKRunner r;
  r.status(static_cast<enmStatus>(random() % 15));
  r.categoryIndex(static_cast<int>(random() % 3));
  LRKPunches punches;
  punches.count(static_cast<int>(random() % 9));
  for (int i = 0; i < punches.count(); ++i) {
    const Code code = i == 0 && random() % 4 != 0
                          ? LRK_START_CODE
                          : static_cast<Code>(31 + static_cast<int>(random() % 6) % lastCode);
    punches.edit(i, oneOf(random, times), code);
  }
  r.punches(std::move(punches));
  return r;
}

void randomSettings(Random& random, LRKCourse& course) {
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  constexpr float shares[] = {0.25F, 0, -1, 1, 0.01F, 1e30F, nan};
  course.topPercentile(oneOf(random, shares));
  course.timeLossPercentile(static_cast<double>(oneOf(random, shares)));
  course.timeLossConditionPercent(oneOf(random, shares));
  constexpr Time times[] = {2000, 0, -100, INT32_MAX, INT32_MIN};
  course.timeLossConditionTime(oneOf(random, times));
  course.timeLossConditionBoth(random() % 2 == 0);
  course.timesWithoutTimeLoss(random() % 2 == 0);
  course.timeLossCalculationMethod(static_cast<enmTimeLossCalculationMethod>(random() % 3));
  course.timeAccuracy(static_cast<enmTimeAccuracy>(random() % 6));
  course.correctZeroAndNegativeTimes(random() % 2 == 0);
  course.isCategoryCourse(random() % 2 == 0);
  course.referenceRunnerIndex(static_cast<int>(random() % 5) - 1);
}

void expectFinite(double value) { EXPECT_TRUE(std::isfinite(value)) << value; }

void expectDefined(const LRKCourse& course) {
  const int n = course.noOfRunners();
  for (int r = 0; r < n; ++r) {
    const LRKRunner& runner = course.runner(r);
    expectFinite(runner.coursePercentualTimeLoss());
    expectFinite(runner.coursePerformanceIndex());
    expectFinite(runner.coursePerformanceIndexWithoutTimeLoss());
    for (int i = 0; i < course.noOfLegs(); ++i) {
      expectFinite(runner.performanceIndex(i, elstLeg));
      expectFinite(runner.performanceIndex(i, elstTotal));
      EXPECT_GE(runner.timeLoss(i, elstLeg), 0);
      EXPECT_GE(runner.place(i, elstLeg), 1);
      for (int style = 0; style < LRK_LEG_STYLES; ++style) {
        EXPECT_LE(runner.place(i, static_cast<enmLegStyle>(style)), n);
        course.runnerTimeDifference(r, i, static_cast<enmLegStyle>(style), r % 2 == 0);
      }
    }
  }
  double lengths = 0;
  for (int i = 0; i < course.noOfLegs(); ++i) {
    expectFinite(course.normalizedLength(i));
    expectFinite(course.timeLossFrequency(i));
    lengths += course.normalizedLength(i);
    for (int style = 0; style < LRK_LEG_STYLES; ++style) {
      const auto legStyle = static_cast<enmLegStyle>(style);
      std::vector<Time> times;
      std::vector<int> runners;
      course.getSortedTimes(i, legStyle, times, runners);
      std::sort(runners.begin(), runners.end());
      for (int r = 0; r < n; ++r) EXPECT_EQ(runners[static_cast<std::size_t>(r)], r);
      EXPECT_LE(course.noOfQualifiedRunners(i, legStyle), n);
      course.averageTime(i, legStyle);
    }
  }
  if (n > 0 && course.noOfLegs() > 0) {
    EXPECT_NEAR(lengths, 1, 1e-9);
  }
}

TEST(HostileCourseTest, RandomCoursesStayDefined) {
  Random random(20260712);
  for (int round = 0; round < 1500; ++round) {
    SCOPED_TRACE(round);
    const Code lastCode = static_cast<Code>(random() % 6 + 1);
    LRKCategory category;
    for (auto n = random() % 9; n > 0; --n) category.addRunner(randomRunner(random, lastCode));
    LRKCourse course = category.toCourse(static_cast<enmRequiredLegs>(random() % 4),
                                         random() % 2 == 0, random() % 2 == 0);
    randomSettings(random, course);
    course.calculate(flagsOf(static_cast<int>(random() % 32)));
    expectDefined(course);
    course.sortRunners(static_cast<enmSort>(random() % 48), static_cast<int>(random() % 9) - 1,
                       random() % 2 == 0);
    randomSettings(random, course);
    course.calculate(flagsOf(static_cast<int>(random() % 32)));
    expectDefined(course);
    EXPECT_EQ(course.toCategory().noOfRunners(), course.noOfRunners());
  }
}

TEST(HostileCourseTest, SumsThatPassAllLimitsStayWithinThem) {
  // Legs of all the time there is, up and down, over a thousand legs.
  LRKRunner swinging;
  LRKRunner steady;
  swinging.status(estaOK);
  steady.status(estaOK);
  for (int i = 0; i <= 1000; ++i) {
    const auto code = static_cast<Code>(31 + i);
    swinging.punches().add(i % 2 == 0 ? 0 : none - 1, code);
    steady.punches().add(i, code);
  }
  for (const auto method : {etlcCompareToTopTime, etlcCompareToBestTime}) {
    LRKCourse course;
    course.setCourseLegs(swinging.punches().toLegs());
    course.addRunnersFromArray(3, {swinging, steady, steady});
    course.correctZeroAndNegativeTimes(false);
    course.timesWithoutTimeLoss(true);
    course.timeLossCalculationMethod(method);
    course.calculate();
    expectDefined(course);
    course.calculate();
    expectDefined(course);
    // 500 legs of 16777214, 3 times against it: nobody lost a thousandth of that.
    EXPECT_LE(course.runner(0).timeLoss(999, elstTotal), none);
    EXPECT_EQ(course.idealTime(999), 1000);
  }
}

TEST(HostileCourseTest, AFullCourseRefusesTheNextRunner) {
  LRKCourse course = emptyCourse("S-F");
  const LRKRunner r = test::runnerByLegs("S-F", {100});
  for (int n = 0; n < LRK_MAX_LIST; ++n) ASSERT_TRUE(course.addRunner(r));
  EXPECT_FALSE(course.addRunner(r));
  EXPECT_EQ(course.noOfRunners(), 32767);
  course.runner(5).legs().endTime(0, none);
  course.calculate();
  EXPECT_EQ(course.runner(0).place(0, elstPassingEnd), 1);
  EXPECT_EQ(course.runner(5).place(0, elstPassingEnd), 32767);
  EXPECT_EQ(course.noOfQualifiedRunners(0, elstTotal), 32766);
  std::vector<Time> times;
  std::vector<int> runners;
  course.getSortedTimes(0, elstLeg, times, runners);
  EXPECT_EQ(runners.back(), 5);
  course.sortRunners(esorLegTime, 0, false);
  EXPECT_EQ(course.runner(0).time(0, elstLeg), none);
}

}  // namespace
}  // namespace larkstone
