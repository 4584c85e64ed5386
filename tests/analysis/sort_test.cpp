#include <functional>
#include <limits>
#include <tuple>
#include <type_traits>

#include <gtest/gtest.h>

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

// One runner for each name letter on S-31-F.
LRKCourse courseOf(std::string_view names) {
  LRKCourse course = emptyCourse("S-31-F");
  for (const char name : names) course.addRunner(runner("S-31-F", {}, std::string(1, name)));
  return course;
}

Ints sortPlaces(const LRKCourse& course) {
  return ofRunners(course,
                   [](const LRKRunner& r) { return r.sortPlaceSet() ? int{r.sortPlace()} : 0; });
}

// `set` gives a runner a value that stands behind all smaller ones.
void expectSorts(enmSort key, int legNo, const std::function<void(LRKRunner&, short)>& set) {
  SCOPED_TRACE(key);
  LRKCourse course = courseOf("BAC");
  const short values[] = {2, 1, 3};
  for (int r = 0; r < 3; ++r) set(course.runner(r), values[r]);
  course.sortRunners(key, legNo);
  EXPECT_EQ(order(course), "ABC");
  course.sortRunners(key, legNo, false);
  EXPECT_EQ(order(course), "CBA");
  EXPECT_EQ(course.sortedBy(), key);
  EXPECT_EQ(course.sortedByLegNo(), legNo);
  EXPECT_FALSE(course.sortedAscending());
}

template <class Value>
void expectSorts(enmSort key, void (LRKRunner::*set)(Value)) {
  expectSorts(key, -1, [set](LRKRunner& r, short value) {
    if constexpr (std::is_same_v<Value, std::string>) {
      (r.*set)(std::to_string(value));
    } else if constexpr (std::is_same_v<Value, Date>) {
      (r.*set)(Date{value * 1000.0});
    } else {
      (r.*set)(static_cast<Value>(value));
    }
  });
}

TEST(SortTest, KeysOfARunnerCompareTheirValue) {
  using R = LRKRunner;
  expectSorts(esorFirstName, &R::firstName);
  expectSorts(esorLastName, &R::lastName);
  expectSorts(esorClub, &R::club);
  expectSorts(esorClubCountryCode, &R::clubCountryCode);
  expectSorts(esorClubCountry, &R::clubCountry);
  expectSorts(esorNationality, &R::nationality);
  expectSorts(esorNationalityCode, &R::nationalityCode);
  expectSorts(esorCourseName, &R::courseName);
  expectSorts(esorRelayTeam, &R::relayTeam);
  expectSorts(esorBirthDate, &R::birthDate);
  expectSorts(esorGender, &R::gender);
  expectSorts(esorCourseLength, &R::courseLength);
  expectSorts(esorResultPlace, &R::resultPlace);
  expectSorts(esorStatus, &R::status);
  expectSorts(esorNoOfTimeLossLegs, &R::noOfTimeLossLegs);
  expectSorts(esorRelayLeg, &R::relayLeg);
  expectSorts(esorCoursePercentualTimeLoss, &R::coursePercentualTimeLoss);
  expectSorts(esorCoursePerformanceIndex, &R::coursePerformanceIndex);
  expectSorts(esorCoursePerformanceIndexWithoutTimeLoss, &R::coursePerformanceIndexWithoutTimeLoss);
  expectSorts(esorCoursePullIndex, &R::coursePullIndex);
  expectSorts(esorCourseFollowingIndex, &R::courseFollowingIndex);
  expectSorts(esorResultTime, &R::finishTime);
}

void setLeg(LRKRunner& r, int leg, Time begin, Time end) {
  r.legs().beginTime(leg, begin);
  r.legs().endTime(leg, end);
  r.initializeTimes(false);
}

TEST(SortTest, KeysOfALegCompareItsValue) {
  using R = LRKRunner;
  expectSorts(esorPullIndex, 0, [](R& r, short v) { r.pullIndex(0, v); });
  expectSorts(esorFollowingIndex, -1, [](R& r, short v) { r.followingIndex(1, v); });
  expectSorts(esorLegPerformanceIndex, 0, [](R& r, short v) { r.performanceIndex(0, elstLeg, v); });
  expectSorts(esorTotalPerformanceIndex, -1,
              [](R& r, short v) { r.performanceIndex(1, elstTotal, v); });
  expectSorts(esorStartTime, 1, [](R& r, short v) { setLeg(r, 0, v, 9000 - v); });
  expectSorts(esorFinishTime, 0, [](R& r, short v) { setLeg(r, 1, 6000, 9000 + v); });
  expectSorts(esorCourseTime, 0, [](R& r, short v) { setLeg(r, 1, 6000 - v, 9000); });
  expectSorts(esorLegTime, 0, [](R& r, short v) { setLeg(r, 0, 100 - v, 5000); });
  expectSorts(esorTotalTime, 1, [](R& r, short v) { setLeg(r, 0, 100 - v, 5000); });
  expectSorts(esorPassingBeginTime, 0, [](R& r, short v) { setLeg(r, 0, v, 5000 - v); });
  expectSorts(esorPassingEndTime, 0, [](R& r, short v) { setLeg(r, 0, 2 * v, 5000 + v); });
  expectSorts(esorTotalTimeAllowMissingPunches, 0,
              [](R& r, short v) { setLeg(r, 0, 0, 5000 + v); });
  expectSorts(esorPassingBeginTimeAllowMissingPunches, 1,
              [](R& r, short v) { setLeg(r, 1, 5000 + v, 9000 - v); });
  expectSorts(esorPassingEndTimeAllowMissingPunches, 0,
              [](R& r, short v) { setLeg(r, 0, 2 * v, 5000 + v); });

  const auto loss = [](int leg, int step) {
    return [=](R& r, short v) { r.timeLoss(leg, elstTotal, 500 + step * v); };
  };
  expectSorts(esorResultTimeWithoutTimeLoss, 0, loss(1, -1));
  expectSorts(esorCourseTimeLoss, 0, loss(1, 1));
  expectSorts(esorTotalTimeLoss, 0, loss(0, 1));
  expectSorts(esorLegTimeLoss, 1, loss(0, -1));
  const auto benefit = [](int leg, int step) {
    return [=](R& r, short v) { r.followingBenefitTime(leg, elstTotal, 500 + step * v); };
  };
  expectSorts(esorCourseFollowingBenefitTime, 0, benefit(1, 1));
  expectSorts(esorTotalFollowingBenefitTime, 0, benefit(0, 1));
  expectSorts(esorLegFollowingBenefitTime, -1, benefit(0, -1));
}

TEST(SortTest, EqualKeysShareAPlace) {
  LRKCourse course = emptyCourse("S-F");
  course.addRunner(runner("S-F", {0, 100}, "A"));
  course.addRunner(runner("S-F", {0, 100}, "B"));
  course.addRunner(runner("S-F", {0, 90}, "C"));
  course.addRunner(withStatus(runner("S-F", {0, 80}, "D"), estaMisPunch));
  TranslationTable tlt;
  course.sortRunnersAndCreateTLT(esorResultTime, tlt);
  EXPECT_EQ(tlt, (TranslationTable{1, 2, 0, 3}));
  EXPECT_EQ(order(course), "CABD");
  EXPECT_EQ(sortPlaces(course), (Ints{1, 2, 2, 0}));
  course.sortRunners(esorName);
  EXPECT_EQ(order(course), "ABCD");
  course.sortRunners(esorResultTime, -1, false);  // those without a result time come first
  EXPECT_EQ(order(course), "DBAC");
  EXPECT_EQ(sortPlaces(course), (Ints{0, 1, 1, 3}));
}

TEST(SortTest, TheNameIsLastNameFirst) {
  LRKCourse course = courseOf("ABCD");
  course.runner(0).firstName("Zoe");
  course.runner(0).lastName("Berg");
  course.runner(1).lastName("Berg");
  course.runner(2).name("Berg Anna");
  course.runner(3).firstName("Eva");  // alone
  course.sortRunners(esorName);
  EXPECT_EQ(order(course), "BBerg AnnaAD");
  // By character code: capitals in front of small letters, Å behind all of them.
  course.sortRunnersByStringArray({"a", "Z", "\xC3\x85", "B"});
  EXPECT_EQ(order(course), "DBerg AnnaBA");
}

TEST(SortTest, ValuesThatAreNotSetAreEmpty) {
  LRKCourse course = courseOf("ABC");
  course.runner(0).club("Club");
  course.runner(0).clubSet(false);
  course.runner(1).club("Alpha");
  course.sortRunners(esorClub);
  EXPECT_EQ(order(course), "ACB");
  EXPECT_EQ(sortPlaces(course), (Ints{1, 1, 3}));
}

TEST(SortTest, NumericKeysKeepInvalidRunnersLast) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  // Keys, whether they are valid, whether they ascend, the order and the places.
  using Row = std::tuple<std::vector<double>, std::vector<bool>, bool, const char*, Ints>;
  const Row rows[] = {
      {{5, 7, 9, 5}, {true, false, true, true}, false, "CADB", {1, 2, 2, 0}},
      {{5, 7, 9, 5}, {true, false, true, true}, true, "ADCB", {1, 1, 3, 0}},
      {{nan, 1, 2, nan}, {true, true, true, true}, false, "CBAD", {1, 2, 0, 0}},
      {{0, inf, -inf, 1}, {false, true, true, true}, true, "CDBA", {1, 2, 3, 0}},
      {{3, 2}, {true, true, true, true}, true, "BACD", {1, 2, 0, 0}},  // too short
      {{}, {}, true, "ABCD", {0, 0, 0, 0}},
  };
  for (const auto& [keys, valid, ascending, expected, places] : rows) {
    SCOPED_TRACE(expected);
    LRKCourse course = courseOf("ABCD");
    course.sortRunnersByNumericArray(keys, valid, ascending);
    EXPECT_EQ(order(course), expected);
    EXPECT_EQ(sortPlaces(course), places);
    EXPECT_EQ(course.sortedBy(), esorCustom);
    EXPECT_EQ(course.sortedAscending(), ascending);
  }
}

TEST(SortTest, WhateverNamesRunnersByIndexIsCarriedOver) {
  LRKCourse course = courseOf("CAB");
  course.referenceRunnerIndex(2);  // B
  course.runner(0).noOfPulledRunners(1, 1);
  course.runner(0).pulledRunnerIndex(1, 0, 1);  // C pulls A
  course.runner(1).noOfFollowedRunners(0, 1);
  course.runner(1).followedRunnerIndex(0, 0, 0);  // A follows C
  course.sortRunners(esorName);
  EXPECT_EQ(order(course), "ABC");
  EXPECT_EQ(course.referenceRunnerIndex(), 1);
  EXPECT_EQ(course.runner(2).pulledRunnerIndex(1, 0), 0);
  EXPECT_EQ(course.runner(0).followedRunnerIndex(0, 0), 2);
}

TEST(SortTest, SomeKeysSortNothing) {
  LRKCourse course = courseOf("CAB");
  TranslationTable tlt;
  course.sortRunnersAndCreateTLT(esorUnsorted, tlt);
  EXPECT_EQ(tlt, (TranslationTable{0, 1, 2}));
  for (const int key : {-1, 30, 31, 47}) {
    tlt = {7};
    course.sortRunnersAndCreateTLT(static_cast<enmSort>(key), tlt, 0, false);
    EXPECT_EQ(tlt, TranslationTable{7});
    EXPECT_EQ(course.sortedBy(), esorUnsorted);
  }
}

}  // namespace
}  // namespace larkstone
