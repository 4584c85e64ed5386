#include <random>

#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using test::emptyCourse;
using test::flagsOf;
using test::none;
using test::places;
using test::runner;

constexpr int strict = eccfPlacesDontAllowMissingPunches;
constexpr int allowing = eccfPlacesAllowMissingPunches;

LRKRunner mispunched(const std::vector<int>& seconds) {
  LRKRunner r = runner("S-32-F", seconds);
  r.status(estaMisPunch);
  return r;
}

// A and C are complete, B and D miss 31 and are first and third at the finish.
LRKCourse courseWithMissingPunches() {
  LRKCourse course = emptyCourse("S-31-32-F");
  course.addRunner(runner("S-31-32-F", {0, 100, 200, 300}));
  course.addRunner(mispunched({0, 150, 250}));
  course.addRunner(runner("S-31-32-F", {0, 110, 220, 320}));
  course.addRunner(mispunched({0, 230, 310}));
  return course;
}

TEST(StylePlacesTest, OnlyTheStylesAskedForGetPlaces) {
  LRKCourse course = courseWithMissingPunches();
  course.calculate(flagsOf(allowing));
  EXPECT_EQ(places(course, 2, elstPassingEndAllowMissingPunches), (std::vector<int>{2, 1, 4, 3}));
  EXPECT_EQ(places(course, 2, elstPassingEnd), (std::vector<int>{0, 0, 0, 0}));
  EXPECT_EQ(course.noOfQualifiedRunners(2, elstPassingEndAllowMissingPunches), 4);
  // The best of the style that allows missing punches is read from its strict twin.
  EXPECT_EQ(course.bestTime(2, elstPassingEndAllowMissingPunches), none);
  EXPECT_EQ(course.bestTime(2, elstPassingBeginAllowMissingPunches), 15000);

  course = courseWithMissingPunches();
  course.calculate(flagsOf(strict));
  EXPECT_EQ(places(course, 2, elstPassingEnd), (std::vector<int>{1, 3, 2, 3}));
  EXPECT_EQ(course.bestTime(2, elstPassingEndAllowMissingPunches), 30000);
  EXPECT_EQ(course.noOfQualifiedRunners(2, elstPassingEnd), 2);
}

TEST(StylePlacesTest, WithBothTheStrictPlacesMoveUp) {
  LRKCourse course = courseWithMissingPunches();
  course.calculate(flagsOf(strict | allowing));
  EXPECT_EQ(places(course, 2, elstPassingEndAllowMissingPunches), (std::vector<int>{2, 1, 4, 3}));
  // A has one dropped runner in front, C two.
  EXPECT_EQ(places(course, 2, elstPassingEnd), (std::vector<int>{1, 3, 2, 3}));
  EXPECT_EQ(course.bestTime(2, elstPassingEnd), 30000);
  EXPECT_EQ(course.noOfQualifiedRunners(2, elstPassingEnd), 2);
  EXPECT_EQ(course.runnerTimeDifference(0, 2, elstPassingEnd, true), -2000);
  EXPECT_EQ(course.runnerTimeDifference(1, 2, elstPassingEnd), none);
}

TEST(StylePlacesTest, AStartAtMidnightCountsALegWithoutTimeDoesNot) {
  LRKCourse course = emptyCourse("S-F");
  course.correctZeroAndNegativeTimes(false);
  course.addRunner(runner("S-F", {0, 0}));
  course.addRunner(runner("S-F", {10, 30}));
  course.calculate(flagsOf(strict));
  EXPECT_EQ(places(course, 0, elstPassingBegin), (std::vector<int>{1, 2}));
  EXPECT_EQ(places(course, 0, elstPassingEnd), (std::vector<int>{2, 1}));
  EXPECT_EQ(places(course, 0, elstTotal), (std::vector<int>{2, 1}));
  EXPECT_EQ(places(course, 0, elstLeg), (std::vector<int>{2, 1}));
}

// With increasing times the derived places are those of a ranking of their own.
TEST(StylePlacesTest, DerivedPlacesAreTheDirectOnes) {
  std::mt19937 random(42);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    LRKCourse direct = emptyCourse("S-31-32-33-34-F");
    direct.isCategoryCourse(round % 2 == 0);
    for (auto n = random() % 12 + 1; n > 0; --n) {
      LRKPunches punches;
      Time time = static_cast<Time>(random() % 4) * 6000;
      for (const char* code : {"S", "31", "32", "33", "34", "F"}) {
        time += static_cast<Time>(random() % 3 + 1) * 6000;
        const auto kind = random() % 8;
        if (kind > 0) punches.add(kind == 1 ? none : time, stringToCode(code, "S", "F"));
      }
      LRKRunner r;
      r.status(static_cast<enmStatus>(random() % 9));
      r.punches(std::move(punches));
      direct.addRunner(r);
    }
    LRKCourse derived = direct;
    direct.calculate(flagsOf(strict));
    derived.calculate(flagsOf(strict | allowing));
    for (int i = 0; i < 5; ++i) {
      for (const enmLegStyle style : {elstTotal, elstPassingBegin, elstPassingEnd}) {
        EXPECT_EQ(places(derived, i, style), places(direct, i, style));
        EXPECT_EQ(derived.bestTime(i, style), direct.bestTime(i, style));
        EXPECT_EQ(derived.noOfQualifiedRunners(i, style), direct.noOfQualifiedRunners(i, style));
        for (int r = 0; r < direct.noOfRunners(); ++r) {
          EXPECT_EQ(derived.runnerTimeDifference(r, i, style, true),
                    direct.runnerTimeDifference(r, i, style, true));
        }
      }
    }
  }
}

}  // namespace
}  // namespace larkstone
