// A calculation as a whole: what it tells on its way, and what does not depend on order.

#include <algorithm>
#include <map>
#include <random>

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

struct Reports {
  std::string messages;
  std::vector<float> values;
};

Reports reportsOf(LRKCourse& course, int flags) {
  Reports reports;
  course.onAction([&reports](std::string_view message, float value) {
    reports.messages += std::string(message) + ",";
    reports.values.push_back(value);
  });
  course.calculate(flagsOf(flags));
  return reports;
}

void expectValues(const std::vector<float>& values, const std::vector<double>& done, double total) {
  ASSERT_EQ(values.size(), done.size());
  for (std::size_t i = 0; i < done.size(); ++i) {
    EXPECT_NEAR(values[i], done[i] / total, 1e-6) << i;
  }
}

TEST(CalculateTest, TellsItsStagesInOrder) {
  struct Row {
    int line;
    int flags;
    enmTimeLossCalculationMethod method;
    bool withoutTimeLoss;
    const char* messages;
  };
  const Row rows[] = {
      {__LINE__, 23, etlcCompareToTopTime, false, "0,1,1,2,3,3,4,4,6,6,7,7,"},
      {__LINE__, 23, etlcCompareToBestTime, true, "0,1,1,2,3,3,4,4,5,5,6,6,7,7,"},
      {__LINE__, 7, etlcCompareToBestTime, false, "0,1,1,2,4,4,6,6,7,7,"},
      {__LINE__, 0, etlcCompareToTopTime, true, "0,1,1,2,3,3,6,6,"},
      {__LINE__, 4, etlcCompareToBestTime, true, "0,1,1,2,6,6,"},
      {__LINE__, 1, static_cast<enmTimeLossCalculationMethod>(2), true, "0,1,1,2,5,5,6,6,"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    LRKCourse course = courseByLegs("S-31-F", {{60, 60}, {70, 70}});
    course.timeLossCalculationMethod(row.method);
    course.timesWithoutTimeLoss(row.withoutTimeLoss);
    EXPECT_EQ(reportsOf(course, row.flags).messages,
              "start calculate," + std::string(row.messages) + "end calculate,");
    EXPECT_TRUE(course.calculated());
    EXPECT_EQ(course.calculationFlags(), row.flags);
  }
}

TEST(CalculateTest, TellsHowMuchIsDone) {
  // Two runners on two legs, ln 2 = 0.693147. In units of 4:
  const double w0 = 0.496;
  const double w1 = 0.199304;  // 0.087 ln 2 + 0.139
  const double w2 = 0.00332;
  const double w3 = 0.2;
  const double w5 = 1.33;
  const double w6 = 0.600908;  // 0.0922 ln 2 + 0.537
  const double w7 = 0.361871;  // 0.121 ln 2 + 0.278
  const double w8 = 0.454204;  // 0.335 ln 2 + 0.222
  const double c2 = w0 + w1 + w2;
  LRKCourse course = courseByLegs("S-31-F", {{60, 60}, {70, 70}});
  const double c5 = c2 + w3 + w5;
  const double total = c5 + w6 + w7;
  expectValues(reportsOf(course, 23).values,
               {0, w0, w0 + w1 / 2, w0 + w1, c2, c2 + w3 / 2, c2 + w3, c2 + w3, c2 + w3,
                c5 + w6 / 2, c5 + w6, c5 + w6 + w7 / 2, total, total},
               total);
  // The following stage has its share in the whole.
  EXPECT_NEAR(reportsOf(course, 31).values[1], w0 / (total + w8), 1e-6);

  course.timesWithoutTimeLoss(true);
  course.timeLossCalculationMethod(etlcCompareToBestTime);
  const double v1 = 0.225072;  // 0.0405 ln 2 + 0.197
  const double v4 = 0.1;
  const double v6 = 0.901023;  // 0.965 - 0.0923 ln 2
  const double b4 = w0 + v1 + w2 + v4;
  const double all = b4 + w5 + v6;
  expectValues(reportsOf(course, 1).values,
               {0, w0, w0 + v1 / 2, w0 + v1, w0 + v1 + w2, b4 - v4 / 2, b4, b4 + w5 / 2, b4 + w5,
                b4 + w5 + v6 / 2, all, all},
               all);
}

TEST(CalculateTest, WithoutRunnersItIsDoneAtOnce) {
  LRKCourse course = emptyCourse("S-31-F");
  const Reports reports = reportsOf(course, eccfComplete);
  EXPECT_EQ(reports.messages, "start calculate,end calculate,");
  EXPECT_EQ(reports.values, (std::vector<float>{0, 1}));
  EXPECT_TRUE(course.calculated());
  EXPECT_EQ(course.calculationFlags(), eccfComplete);
  EXPECT_EQ(course.timeAccuracy(), etacAuto);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(course.bestTime(i, elstLeg), none);
    EXPECT_EQ(course.legTopTime(i), none);
    EXPECT_EQ(course.idealTime(i), none);
    EXPECT_EQ(course.normalizedLength(i), 0);
    EXPECT_EQ(course.timeLossFrequency(i), 0);
    EXPECT_EQ(course.averageTime(i, elstTotal), none);
  }
}

TEST(CalculateTest, OnlyOkRunnersOfACategoryAlwaysQualify) {
  for (const bool isCategory : {true, false}) {
    LRKCourse course = emptyCourse("S-31-32-F");
    course.isCategoryCourse(isCategory);
    LRKRunner ok = runner("S-32-F", {0, 100, 200});
    LRKRunner disqualified = runner("S-31-32-F", {0, 50, 100, 200});
    disqualified.status(estaDisqualified);
    course.addRunner(ok);
    course.addRunner(disqualified);
    course.calculate();
    EXPECT_EQ(course.runner(0).qualifyEvenIfDisqualified(), isCategory);
    EXPECT_EQ(course.runner(1).time(2, elstTotal), isCategory ? none : 20000);
    course.qualifyRunnersEvenIfNotQualified(true);
    EXPECT_EQ(course.runner(1).time(2, elstTotal), 20000);
  }
}

// Random but plausible: increasing times, missing punches, all kinds of status.
LRKCourse randomCourse(unsigned seed, int runners) {
  std::mt19937 random(seed);
  LRKCourse course = emptyCourse("S-31-32-33-34-35-F");
  course.isCategoryCourse(seed % 2 == 0);
  for (int n = 0; n < runners; ++n) {
    LRKRunner r;
    r.name(std::to_string(n));
    r.status(random() % 4 == 0 ? estaMisPunch : estaOK);
    Time time = static_cast<Time>(random() % 10) * 6000;
    LRKPunches punches;
    for (const char* code : {"S", "31", "32", "33", "34", "35", "F"}) {
      if (r.status() == estaOK || random() % 5 != 0) {
        punches.add(time, stringToCode(code, "S", "F"));
      }
      time += static_cast<Time>(50 + random() % 100 + (random() % 6 == 0 ? 200 : 0)) * 100;
    }
    r.punches(std::move(punches));
    course.addRunner(r);
  }
  return course;
}

// Everything that a calculation says about one runner and one leg.
std::string resultsOf(const LRKRunner& r, int legs) {
  std::string text = std::to_string(r.coursePerformanceIndex()) + " " +
                     std::to_string(r.coursePerformanceIndexWithoutTimeLoss()) + " " +
                     std::to_string(r.coursePercentualTimeLoss()) + " " +
                     std::to_string(r.noOfTimeLossLegs());
  for (int i = 0; i < legs; ++i) {
    text += "\n" + std::to_string(r.timeLoss(i, elstTotal)) + " " +
            std::to_string(r.performanceIndex(i, elstTotal));
    for (int style = 0; style < LRK_LEG_STYLES; ++style) {
      const auto legStyle = static_cast<enmLegStyle>(style);
      text +=
          " " + std::to_string(r.time(i, legStyle)) + "/" + std::to_string(r.place(i, legStyle));
    }
  }
  return text;
}

std::map<std::string, std::string> resultsOf(const LRKCourse& course) {
  std::map<std::string, std::string> results;
  for (int r = 0; r < course.noOfRunners(); ++r) {
    results[course.runner(r).name()] = resultsOf(course.runner(r), course.noOfLegs());
  }
  for (int i = 0; i < course.noOfLegs(); ++i) {
    std::string& leg = results["leg " + std::to_string(i)];
    for (int style = 0; style < LRK_LEG_STYLES; ++style) {
      const auto legStyle = static_cast<enmLegStyle>(style);
      leg += std::to_string(course.bestTime(i, legStyle)) + " " +
             std::to_string(course.averageTime(i, legStyle)) + " " +
             std::to_string(course.noOfQualifiedRunners(i, legStyle)) + " ";
    }
    leg += std::to_string(course.legTopTime(i)) + " " + std::to_string(course.idealTime(i)) + " " +
           std::to_string(course.normalizedLength(i)) + " " +
           std::to_string(course.timeLossFrequency(i));
  }
  return results;
}

TEST(CalculateTest, CanBeRepeatedAndKnowsNoOrder) {
  for (const unsigned seed : {1U, 2U, 3U, 4U}) {
    for (const auto method : {etlcCompareToTopTime, etlcCompareToBestTime}) {
      SCOPED_TRACE(seed);
      LRKCourse course = randomCourse(seed, 150);
      course.timeLossCalculationMethod(method);
      course.timesWithoutTimeLoss(seed % 3 == 0);
      LRKCourse shuffled = course;
      course.calculate(flagsOf(23));
      const auto results = resultsOf(course);
      course.calculate(flagsOf(23));
      EXPECT_EQ(resultsOf(course), results);

      std::vector<double> keys(150);
      std::mt19937 random(seed);
      std::generate(keys.begin(), keys.end(), random);
      shuffled.sortRunnersByNumericArray(keys, std::vector<bool>(150, true));
      shuffled.calculate(flagsOf(23));
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
      std::vector<Time> valid;
      for (int r = 0; r < course.noOfRunners(); ++r) {
        if (!course.runner(r).isTimeDisq(i, style))
          valid.push_back(course.runner(r).time(i, style));
      }
      for (int r = 0; r < course.noOfRunners(); ++r) {
        const Time time = course.runner(r).time(i, style);
        const auto faster =
            std::count_if(valid.begin(), valid.end(), [time](Time other) { return other < time; });
        ASSERT_EQ(course.runner(r).place(i, style), faster + 1);
      }
    }
  }
}

}  // namespace
}  // namespace larkstone
