// Courses that no race makes: everything stays defined, finite and in bounds.

#include <cassert>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "larkstone/model/category.hpp"
#include "larkstone/model/derived_course.hpp"

#include "analysis/courses.hpp"
#include "support/defined.hpp"

namespace larkstone {
namespace {

using namespace test;
using Random = std::mt19937;

int below(Random& random, unsigned limit) { return static_cast<int>(random() % limit); }

template <class Values>
auto oneOf(Random& random, const Values& values) {
  return values[random() % std::size(values)];
}

LRKRunner hostileRunner(Random& random) {
  constexpr Time times[] = {0, 1, 100, none, 12345, 6000, 360000 * 9, none - 1, 200};
  LRKRunner r;
  r.status(static_cast<enmStatus>(below(random, 15)));
  r.punches().count(below(random, 9));
  for (int i = 0; i < r.punches().count(); ++i) {
    const int code = i == 0 && below(random, 4) != 0 ? LRK_START_CODE : 31 + below(random, 4);
    r.punches().edit(i, oneOf(random, times), static_cast<Code>(code));
  }
  return r;
}

void hostileSettings(Random& random, LRKCourse& course) {
  constexpr float shares[] = {0.25F, 0, -1, 1e30F, std::numeric_limits<float>::quiet_NaN()};
  constexpr Time times[] = {2000, 0, INT32_MAX, INT32_MIN};
  course.topPercentile(oneOf(random, shares));
  course.timeLossPercentile(static_cast<double>(oneOf(random, shares)));
  course.timeLossConditionPercent(oneOf(random, shares));
  course.timeLossConditionTime(oneOf(random, times));
  course.timesWithoutTimeLoss(below(random, 2) == 0);
  course.timeLossCalculationMethod(static_cast<enmTimeLossCalculationMethod>(below(random, 3)));
  course.pfIndexCalculationMethod(static_cast<enmPFIndexCalculationMethod>(below(random, 2)));
  course.indexBreakpoint(0, oneOf(random, times));
  course.indexBreakpoint(1, oneOf(random, times));
  course.timeAccuracy(static_cast<enmTimeAccuracy>(below(random, 6)));
  course.correctZeroAndNegativeTimes(below(random, 2) == 0);
}

void expectDefined(const LRKCourse& course) {
  checkDefined(course, [](bool holds, const char* what) { EXPECT_TRUE(holds) << what; });
}

TEST(HostileCourseTest, RandomCoursesStayDefined) {
  Random random(20260712);
  for (int round = 0; round < 1500; ++round) {
    SCOPED_TRACE(round);
    LRKCategory category;
    for (int n = below(random, 9); n > 0; --n) category.addRunner(hostileRunner(random));
    LRKCourse course = category.toCourse(static_cast<enmRequiredLegs>(below(random, 4)),
                                         below(random, 2) == 0, below(random, 2) == 0);
    for (int calculation = 0; calculation < 2; ++calculation) {
      hostileSettings(random, course);
      course.calculate(flagsOf(below(random, 32)));
      expectDefined(course);
      course.sortRunners(static_cast<enmSort>(below(random, 48)), below(random, 9) - 1,
                         below(random, 2) == 0);
    }
  }
}

TEST(HostileCourseTest, SumsThatPassAllLimitsStayWithinThem) {
  // Legs of all the time there is, up and down, over a thousand legs.
  LRKRunner swinging;
  LRKRunner steady;
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
    EXPECT_LE(course.runner(0).timeLoss(999, elstTotal), none);
    EXPECT_EQ(course.idealTime(999), 1000);
  }
}

TEST(HostileCourseTest, LegsMayComeAndGoBetweenCalculations) {
  LRKCourse course = courseByLegs("S-31-32-F", {{60, 60, 60}, {70, 50, 65}, {80, 90, 40}});
  for (const int legs : {5, 1, 0, 3, 7}) {
    SCOPED_TRACE(legs);
    course.legs().count(legs);
    EXPECT_EQ(course.averageTime(6, elstLeg), none);
    course.calculate();
    expectDefined(course);
    course.sortRunners(esorLegTime, legs - 1, false);
    course.sortRunners(esorCourseTimeLoss);
  }
  // Nobody ran what came later.
  EXPECT_EQ(course.runner(0).time(6, elstLeg), none);
  EXPECT_EQ(course.noOfExistingRunners(6), 0);
  EXPECT_EQ(places(course, 6, elstLeg), (Ints{1, 1, 1}));
  EXPECT_FALSE(course.runner(0).hasPlace(6, elstLeg));
  EXPECT_EQ(course.noOfExistingRunners(2), 3);
}

TEST(HostileCourseTest, AFullCourseRefusesTheNextRunner) {
  LRKCourse course = emptyCourse("S-F");
  const LRKRunner r = runner("S-F", {0, 100});
  for (int n = 0; n < LRK_MAX_LIST; ++n) ASSERT_TRUE(course.addRunner(r));
  EXPECT_FALSE(course.addRunner(r));
  EXPECT_EQ(course.lastRefusal(), erefCourseIsFull);
  course.runner(5).legs().endTime(0, none);
  course.calculate();
  EXPECT_EQ(course.runner(0).place(0, elstPassingEnd), 1);
  EXPECT_EQ(course.runner(5).place(0, elstPassingEnd), 32767);
  // All others run side by side; only so many of them are listed.
  EXPECT_EQ(course.runner(0).followingIndex(0), 0.5F);
  EXPECT_EQ(course.runner(0).noOfFollowedRunners(0), 1024);
  EXPECT_EQ(course.runner(0).followedRunnerIndex(0, 0), 1);
  EXPECT_EQ(course.runner(5).followingIndex(0), 0);
}

bool assertsAreOn() {
  bool on = false;
  assert(on = true);
  return on;
}

TEST(IndexDeathTest, ForeignIndicesStopADebugBuild) {
  if (!assertsAreOn()) GTEST_SKIP() << "the library is built without asserts";
  LRKPunches punches = test::punches("S-31-F");
  LRKCodes codes = test::codes("S-31-F");
  LRKLegs legs = test::legs("S-31-F");
  LRKCategory category = categoryOf({"S-31-F", "S-31-F"});
  LRKCourse course = category.toCourse(erqlAll, false, false);
  LRKDerivedCourse derived;
  derived.addRunner(0, 0);
  const std::function<void()> calls[] = {
      [&] { punches.time(3); },
      [&] { punches.edit(-1, 0, 31); },
      [&] { punches.erase(3); },
      [&] { punches.insert(4, 0, 31); },
      [&] { codes.code(3, 31); },
      [&] { legs.beginCode(2); },
      [&] { legs.subCode(0, 0); },
      [&] { legs.erase(-1); },
      [&] { legs.insert(3, 0, 31, 0, 32); },
      [&] { category.runner(2); },
      [&] { category.moveRunner(0, 2); },
      [&] { category.deleteRunner(-1); },
      [&] { category.runner(0).place(0, elstLeg, 1); },
      [&] { course.runner(2); },
      [&] { course.runner(0).timeLoss(2, elstLeg, 1); },
      [&] { course.runner(0).pulledRunnerIndex(0, 0, 1); },
      [&] { derived.runnerIndex(1); },
      [&] { derived.deleteRunnerByIndex(1); },
  };
  for (std::size_t i = 0; i < std::size(calls); ++i) EXPECT_DEATH(calls[i](), "index >= 0") << i;
}

}  // namespace
}  // namespace larkstone
