// A calculation as a whole: what it tells on its way, and what does not depend on order.

#include <algorithm>
#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

// The messages and the values of a calculation.
std::pair<std::string, std::vector<float>> reportsOf(LRKCourse& course, int flags) {
  std::pair<std::string, std::vector<float>> reports;
  course.onAction([&reports](std::string_view message, float value) {
    reports.first += std::string(message) + ",";
    reports.second.push_back(value);
  });
  course.calculate(flagsOf(flags));
  return reports;
}

TEST(CalculateTest, TellsItsStagesInOrder) {
  // Flags, the method of time losses, whether they are taken out, and the messages.
  const std::tuple<int, int, bool, std::string> rows[] = {
      {23, etlcCompareToTopTime, false, "0,1,1,2,3,3,4,4,6,6,7,7,"},
      {23, etlcCompareToBestTime, true, "0,1,1,2,3,3,4,4,5,5,6,6,7,7,"},
      {7, etlcCompareToBestTime, false, "0,1,1,2,4,4,6,6,7,7,"},
      {8, etlcCompareToTopTime, false, "0,1,1,2,3,3,6,6,8,8,"},
      {0, etlcCompareToTopTime, true, "0,1,1,2,3,3,6,6,"},
      {4, etlcCompareToBestTime, true, "0,1,1,2,6,6,"},
      {1, 2, true, "0,1,1,2,5,5,6,6,"},
  };
  for (const auto& [flags, method, withoutTimeLoss, messages] : rows) {
    SCOPED_TRACE(messages);
    LRKCourse course = courseByLegs("S-31-F", {{60, 60}, {70, 70}});
    course.timeLossCalculationMethod(static_cast<enmTimeLossCalculationMethod>(method));
    course.timesWithoutTimeLoss(withoutTimeLoss);
    EXPECT_EQ(reportsOf(course, flags).first, "start calculate," + messages + "end calculate,");
    EXPECT_TRUE(course.calculated());
    EXPECT_EQ(course.calculationFlags(), flags);
  }
}

TEST(CalculateTest, TellsHowMuchIsDone) {
  LRKCourse course = courseByLegs("S-31-F", {{60, 60}, {70, 70}});
  course.timesWithoutTimeLoss(true);
  course.timeLossCalculationMethod(etlcCompareToBestTime);
  // Two runners, ln 2 = 0.693147: the second is 0.0405 ln 2 + 0.197, the last but one
  // 0.965 - 0.0923 ln 2, the last 0.121 ln 2 + 0.278.
  const double shares[] = {0.496, 0.225072, 0.00332, 0.2, 0.1, 1.33, 0.901023, 0.361871};
  double total = 0;
  for (const double share : shares) total += share;
  const std::vector<float> values = reportsOf(course, 23).second;
  ASSERT_EQ(values.size(), 16);
  EXPECT_NEAR(values[2], (shares[0] + shares[1] / 2) / total, 1e-6);
  const std::size_t ends[] = {1, 3, 4, 6, 8, 10, 12, 14};  // all but two come in halves
  double done = 0;
  for (std::size_t i = 0; i < 8; ++i) {
    done += shares[i];
    EXPECT_NEAR(values[ends[i]], done / total, 1e-6) << i;
  }
  // The following stage, 0.335 ln 2 + 0.222, has its share in the whole.
  EXPECT_NEAR(reportsOf(course, 31).second[1], 0.496 / (total + 0.454204), 1e-6);
}

TEST(CalculateTest, WithoutRunnersItIsDoneAtOnce) {
  LRKCourse course = emptyCourse("S-31-F");
  const auto [messages, values] = reportsOf(course, eccfComplete);
  EXPECT_EQ(messages, "start calculate,end calculate,");
  EXPECT_EQ(values, (std::vector<float>{0, 1}));
  EXPECT_TRUE(course.calculated());
  EXPECT_EQ(course.legTopTime(1), none);
  EXPECT_EQ(course.averageTime(1, elstTotal), none);
}

TEST(CalculateTest, OnlyOkRunnersOfACategoryAlwaysQualify) {
  for (const bool isCategory : {true, false}) {
    LRKCourse course = emptyCourse("S-31-32-F");
    course.isCategoryCourse(isCategory);
    course.addRunner(runner("S-32-F", {0, 100, 200}));
    course.addRunner(withStatus(runner("S-31-32-F", {0, 50, 100, 200}), estaDisqualified));
    course.calculate();
    EXPECT_EQ(course.runner(0).qualifyEvenIfDisqualified(), isCategory);
    EXPECT_EQ(course.runner(1).time(2, elstTotal), isCategory ? none : 20000);
    course.qualifyRunnersEvenIfNotQualified(true);
    EXPECT_EQ(course.runner(1).time(2, elstTotal), 20000);
  }
}

// Everything that a calculation says about the runners, by name, and about the legs.
std::map<std::string, std::vector<double>> resultsOf(const LRKCourse& course) {
  std::map<std::string, std::vector<double>> results;
  const auto add = [&results](const std::string& name, auto... values) {
    (results[name].push_back(static_cast<double>(values)), ...);
  };
  for (int i = 0; i < course.noOfLegs(); ++i) {
    add("legs", course.legTopTime(i), course.idealTime(i), course.normalizedLength(i),
        course.timeLossFrequency(i));
    for (int r = 0; r < course.noOfRunners(); ++r) {
      const LRKRunner& runner = course.runner(r);
      add(runner.name(), runner.timeLoss(i, elstTotal), runner.performanceIndex(i, elstTotal),
          runner.coursePerformanceIndexWithoutTimeLoss(), runner.coursePercentualTimeLoss(),
          runner.followingIndex(i), runner.pullIndex(i), runner.courseFollowingIndex(),
          runner.followingBenefitTime(i, elstTotal), runner.noOfPulledRunners(i));
    }
    for (int number = 0; number < LRK_LEG_STYLES; ++number) {
      const auto style = static_cast<enmLegStyle>(number);
      add("legs", course.bestTime(i, style), course.averageTime(i, style),
          course.noOfQualifiedRunners(i, style));
      for (int r = 0; r < course.noOfRunners(); ++r) {
        const LRKRunner& runner = course.runner(r);
        add(runner.name(), runner.time(i, style), runner.place(i, style));
      }
    }
  }
  return results;
}

TEST(CalculateTest, CanBeRepeatedAndKnowsNoOrder) {
  for (const unsigned seed : {1U, 2U, 3U, 4U}) {
    for (const auto method : {etlcCompareToTopTime, etlcCompareToBestTime}) {
      SCOPED_TRACE(seed);
      LRKCourse course = randomCourse(seed, 150);
      course.timeLossCalculationMethod(method);
      course.pfIndexCalculationMethod(seed < 3 ? elfiExtended : elfiBasic);
      course.timesWithoutTimeLoss(seed % 3 == 0);
      LRKCourse shuffled = course;
      course.calculate();
      const auto results = resultsOf(course);
      course.calculate();
      EXPECT_EQ(resultsOf(course), results);

      std::vector<double> keys(150);
      std::generate(keys.begin(), keys.end(), std::mt19937(seed));
      shuffled.sortRunnersByNumericArray(keys, std::vector<bool>(150, true));
      shuffled.calculate();
      EXPECT_EQ(resultsOf(shuffled), results);
    }
  }
}

TEST(CalculateTest, PlacesOfALargeFieldAreThoseOfTheDefinition) {
  // Enough runners that the times are sorted in the way of large fields.
  LRKCourse course = randomCourse(5, 700);
  course.calculate(flagsOf(eccfPlacesAllowMissingPunches));
  for (const enmLegStyle style : {elstLeg, elstPassingEndAllowMissingPunches}) {
    for (int i = 0; i < course.noOfLegs(); ++i) {
      const Times times = ofRunners(course, [=](const auto& r) { return r.time(i, style); });
      const Ints expected = ofRunners(course, [&](const LRKRunner& r) {
        const auto faster = [&](Time other) { return !isDisq(other) && other < r.time(i, style); };
        return static_cast<int>(std::count_if(times.begin(), times.end(), faster)) + 1;
      });
      EXPECT_EQ(places(course, i, style), expected);
    }
  }
}

}  // namespace
}  // namespace larkstone
