#include <gtest/gtest.h>

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

constexpr int strict = eccfPlacesDontAllowMissingPunches;
constexpr int allowing = eccfPlacesAllowMissingPunches;

// A and C are complete, B and D miss 31 and are first and third at the finish.
LRKCourse courseWithMissingPunches(int flags) {
  LRKCourse course = emptyCourse("S-31-32-F");
  course.addRunner(runner("S-31-32-F", {0, 100, 200, 300}));
  course.addRunner(withStatus(runner("S-32-F", {0, 150, 250}), estaMisPunch));
  course.addRunner(runner("S-31-32-F", {0, 110, 220, 320}));
  course.addRunner(withStatus(runner("S-32-F", {0, 230, 310}), estaMisPunch));
  course.calculate(flagsOf(flags));
  return course;
}

TEST(StylePlacesTest, OnlyTheStylesAskedForGetPlaces) {
  LRKCourse course = courseWithMissingPunches(allowing);
  EXPECT_EQ(places(course, 2, elstPassingEndAllowMissingPunches), (Ints{2, 1, 4, 3}));
  EXPECT_EQ(places(course, 2, elstPassingEnd), (Ints{0, 0, 0, 0}));
  EXPECT_EQ(course.noOfQualifiedRunners(2, elstPassingEndAllowMissingPunches), 4);
  // The best of the style that allows missing punches is read from its strict twin.
  EXPECT_EQ(course.bestTime(2, elstPassingEndAllowMissingPunches), none);
  EXPECT_EQ(course.bestTime(2, elstPassingBeginAllowMissingPunches), 15000);

  for (const int flags : {strict, strict | allowing}) {
    course = courseWithMissingPunches(flags);
    EXPECT_EQ(places(course, 2, elstPassingEnd), (Ints{1, 3, 2, 3}));
    EXPECT_EQ(course.bestTime(2, elstPassingEndAllowMissingPunches), 30000);
    EXPECT_EQ(course.noOfQualifiedRunners(2, elstPassingEnd), 2);
  }
  EXPECT_EQ(places(course, 2, elstPassingEndAllowMissingPunches), (Ints{2, 1, 4, 3}));
  // B and D stand behind the others by passing times, which is no place.
  const auto shown = [&](enmLegStyle style) {
    return ofRunners(course, [=](const LRKRunner& r) { return r.hasPlace(2, style) ? 1 : 0; });
  };
  EXPECT_EQ(shown(elstPassingEnd), (Ints{1, 0, 1, 0}));
  EXPECT_EQ(shown(elstPassingEndAllowMissingPunches), (Ints{1, 1, 1, 1}));
  course = courseWithMissingPunches(0);
  EXPECT_EQ(shown(elstPassingEnd), (Ints{0, 0, 0, 0}));
}

TEST(StylePlacesTest, AStartAtMidnightCountsALegWithoutTimeDoesNot) {
  LRKCourse course = emptyCourse("S-F");
  course.correctZeroAndNegativeTimes(false);
  course.addRunner(runner("S-F", {0, 0}));
  course.addRunner(runner("S-F", {10, 30}));
  course.calculate(flagsOf(strict));
  EXPECT_EQ(places(course, 0, elstPassingBegin), (Ints{1, 2}));
  for (const enmLegStyle style : {elstPassingEnd, elstTotal, elstLeg}) {
    EXPECT_EQ(places(course, 0, style), (Ints{2, 1}));
    EXPECT_FALSE(course.runner(0).hasPlace(0, style));
    EXPECT_TRUE(course.runner(1).hasPlace(0, style));
  }
  EXPECT_TRUE(course.runner(0).hasPlace(0, elstPassingBegin));
}

// With increasing times the derived places are those of a ranking of their own.
TEST(StylePlacesTest, DerivedPlacesAreTheDirectOnes) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    LRKCourse direct = randomCourse(seed, static_cast<int>(seed % 12 + 1));
    LRKCourse derived = direct;
    direct.calculate(flagsOf(strict));
    derived.calculate(flagsOf(strict | allowing));
    for (int i = 0; i < direct.noOfLegs(); ++i) {
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
