#include <algorithm>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "larkstone/analysis/course.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using test::courseByLegs;
using test::emptyCourse;
using test::none;
using test::order;
using test::runner;

// One runner for each name letter on S-31-F.
LRKCourse courseOf(std::string_view names) {
  LRKCourse course = emptyCourse("S-31-F");
  for (const char name : names) course.addRunner(runner("S-31-F", {}, std::string(1, name)));
  return course;
}

std::vector<int> sortPlaces(const LRKCourse& course) {
  return test::ofRunners(
      course, [](const LRKRunner& r) { return r.sortPlaceSet() ? int{r.sortPlace()} : 0; });
}

TEST(SortTest, EveryKeyComparesItsValue) {
  struct Row {
    int line;
    enmSort key;
    int legNo;
    void (*set)(LRKRunner& runner, int value);  // a larger value sorts behind a smaller one
  };
  using R = LRKRunner;
  static const auto t = [](int value) { return std::string(static_cast<std::size_t>(value), 'x'); };
  static const auto setLeg = [](R& r, int leg, Time begin, Time end) {
    r.legs().beginTime(leg, begin);
    r.legs().endTime(leg, end);
    r.initializeTimes(false);
  };
  const Row rows[] = {
      {__LINE__, esorName, -1, [](R& r, int v) { r.firstName("Y"), r.lastName(t(v)); }},
      {__LINE__, esorFirstName, -1, [](R& r, int v) { r.firstName(t(v)); }},
      {__LINE__, esorLastName, -1, [](R& r, int v) { r.lastName(t(v)); }},
      {__LINE__, esorClub, -1, [](R& r, int v) { r.club(t(v)); }},
      {__LINE__, esorClubCountryCode, -1, [](R& r, int v) { r.clubCountryCode(t(v)); }},
      {__LINE__, esorClubCountry, -1, [](R& r, int v) { r.clubCountry(t(v)); }},
      {__LINE__, esorNationality, -1, [](R& r, int v) { r.nationality(t(v)); }},
      {__LINE__, esorNationalityCode, -1, [](R& r, int v) { r.nationalityCode(t(v)); }},
      {__LINE__, esorCourseName, -1, [](R& r, int v) { r.courseName(t(v)); }},
      {__LINE__, esorRelayTeam, -1, [](R& r, int v) { r.relayTeam(t(v)); }},
      {__LINE__, esorBirthDate, -1, [](R& r, int v) { r.birthDate(Date{v * 1000.0}); }},
      {__LINE__, esorGender, -1, [](R& r, int v) { r.gender(static_cast<enmGender>(v)); }},
      {__LINE__, esorCourseLength, -1, [](R& r, int v) { r.courseLength(v * 100000); }},
      {__LINE__, esorResultPlace, -1,
       [](R& r, int v) { r.resultPlace(static_cast<std::int16_t>(v)); }},
      {__LINE__, esorStatus, -1, [](R& r, int v) { r.status(static_cast<enmStatus>(v)); }},
      {__LINE__, esorNoOfTimeLossLegs, -1, [](R& r, int v) { r.noOfTimeLossLegs(v); }},
      {__LINE__, esorRelayLeg, -1, [](R& r, int v) { r.relayLeg(static_cast<std::int16_t>(v)); }},
      {__LINE__, esorCoursePercentualTimeLoss, -1,
       [](R& r, int v) { r.coursePercentualTimeLoss(static_cast<float>(v)); }},
      {__LINE__, esorCoursePerformanceIndex, -1,
       [](R& r, int v) { r.coursePerformanceIndex(static_cast<float>(v)); }},
      {__LINE__, esorCoursePerformanceIndexWithoutTimeLoss, -1,
       [](R& r, int v) { r.coursePerformanceIndexWithoutTimeLoss(static_cast<float>(v)); }},
      {__LINE__, esorCoursePullIndex, -1,
       [](R& r, int v) { r.coursePullIndex(static_cast<float>(v)); }},
      {__LINE__, esorCourseFollowingIndex, -1,
       [](R& r, int v) { r.courseFollowingIndex(static_cast<float>(v)); }},
      {__LINE__, esorPullIndex, 0, [](R& r, int v) { r.pullIndex(0, static_cast<float>(v)); }},
      {__LINE__, esorFollowingIndex, -1,
       [](R& r, int v) { r.followingIndex(1, static_cast<float>(v)); }},
      {__LINE__, esorLegPerformanceIndex, 0,
       [](R& r, int v) { r.performanceIndex(0, elstLeg, static_cast<float>(v)); }},
      {__LINE__, esorTotalPerformanceIndex, -1,
       [](R& r, int v) { r.performanceIndex(1, elstTotal, static_cast<float>(v)); }},
      {__LINE__, esorStartTime, 1, [](R& r, int v) { setLeg(r, 0, v, 9000 - v); }},
      {__LINE__, esorFinishTime, 0, [](R& r, int v) { setLeg(r, 1, 6000, 9000 + v); }},
      {__LINE__, esorCourseTime, 0, [](R& r, int v) { setLeg(r, 1, 6000 - v, 9000); }},
      {__LINE__, esorResultTime, -1, [](R& r, int v) { r.finishTime(20000 + v); }},
      {__LINE__, esorResultTimeWithoutTimeLoss, 0,
       [](R& r, int v) { r.timeLoss(1, elstTotal, 500 - v); }},
      {__LINE__, esorCourseTimeLoss, 0, [](R& r, int v) { r.timeLoss(1, elstTotal, v); }},
      {__LINE__, esorTotalTimeLoss, 0, [](R& r, int v) { r.timeLoss(0, elstTotal, v); }},
      {__LINE__, esorLegTimeLoss, 1, [](R& r, int v) { r.timeLoss(0, elstTotal, 90 - v); }},
      {__LINE__, esorCourseFollowingBenefitTime, 0,
       [](R& r, int v) { r.followingBenefitTime(1, elstTotal, v); }},
      {__LINE__, esorTotalFollowingBenefitTime, 0,
       [](R& r, int v) { r.followingBenefitTime(0, elstTotal, v); }},
      {__LINE__, esorLegFollowingBenefitTime, -1,
       [](R& r, int v) { r.followingBenefitTime(0, elstTotal, 90 - v); }},
      {__LINE__, esorLegTime, 0, [](R& r, int v) { setLeg(r, 0, 100 - v, 5000); }},
      {__LINE__, esorTotalTime, 1, [](R& r, int v) { setLeg(r, 0, 100 - v, 5000); }},
      {__LINE__, esorPassingBeginTime, 0, [](R& r, int v) { setLeg(r, 0, v, 5000 - v); }},
      {__LINE__, esorPassingEndTime, 0, [](R& r, int v) { setLeg(r, 0, 0, 5000 + v); }},
      {__LINE__, esorTotalTimeAllowMissingPunches, 0,
       [](R& r, int v) { setLeg(r, 0, 0, 5000 + v); }},
      {__LINE__, esorPassingBeginTimeAllowMissingPunches, 1,
       [](R& r, int v) { setLeg(r, 1, 5000 + v, 9000 - v); }},
      {__LINE__, esorPassingEndTimeAllowMissingPunches, 0,
       [](R& r, int v) { setLeg(r, 0, v, 5000 + v); }},
  };
  EXPECT_EQ(std::size(rows), 44);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    LRKCourse course = courseOf("BAC");
    for (int r = 0; r < 3; ++r) row.set(course.runner(r), r == 0 ? 2 : r == 1 ? 1 : 3);
    // The order of the names of rows that change the name is by the last name.
    const auto names = [&course] {
      std::string text;
      for (int r = 0; r < 3; ++r) text += course.runner(r).storedName();
      return text;
    };
    TranslationTable tlt;
    course.sortRunnersAndCreateTLT(row.key, tlt, row.legNo);
    EXPECT_EQ(names(), "ABC");
    EXPECT_EQ(tlt, (TranslationTable{1, 0, 2}));
    EXPECT_EQ(sortPlaces(course), (std::vector<int>{1, 2, 3}));
    course.sortRunners(row.key, row.legNo, false);
    EXPECT_EQ(names(), "CBA");
    EXPECT_EQ(course.sortedBy(), row.key);
    EXPECT_EQ(course.sortedByLegNo(), row.legNo);
    EXPECT_FALSE(course.sortedAscending());
  }
}

TEST(SortTest, EqualKeysShareAPlace) {
  LRKCourse course = emptyCourse("S-F");
  course.addRunner(runner("S-F", {0, 100}, "A"));
  course.addRunner(runner("S-F", {0, 100}, "B"));
  course.addRunner(runner("S-F", {0, 90}, "C"));
  LRKRunner failed = runner("S-F", {0, 80}, "D");
  failed.status(estaMisPunch);
  course.addRunner(failed);

  course.sortRunners(esorResultTime);
  EXPECT_EQ(order(course), "CABD");
  EXPECT_EQ(sortPlaces(course), (std::vector<int>{1, 2, 2, 0}));
  course.sortRunners(esorName);
  EXPECT_EQ(order(course), "ABCD");
  course.sortRunners(esorResultTime, -1, false);  // those without a result time come first
  EXPECT_EQ(order(course), "DBAC");
  EXPECT_EQ(sortPlaces(course), (std::vector<int>{0, 1, 1, 3}));
}

TEST(SortTest, TheNameIsLastNameFirst) {
  LRKCourse course = courseOf("AB");
  course.runner(0).firstName("Zoe");
  course.runner(0).lastName("Berg");
  course.runner(1).lastName("Berg");
  LRKRunner c = runner("S-31-F", {}, "Berg Anna");
  course.addRunner(c);
  LRKRunner d = runner("S-31-F", {}, "Eva");
  d.firstName("Eva");  // alone
  course.addRunner(d);
  course.sortRunners(esorName);
  EXPECT_EQ(test::ofRunners(course, [](const LRKRunner& r) { return r.storedName()[0]; }),
            (std::vector<int>{'B', 'B', 'A', 'E'}));
  EXPECT_EQ(course.runner(1).storedName(), "Berg Anna");
  // By character code: capitals in front of small letters, Å behind all of them.
  course.sortRunnersByStringArray({"a", "Z", "\xC3\x85", "B"});
  EXPECT_EQ(course.runner(3).storedName(), "A");
}

TEST(SortTest, ValuesThatAreNotSetAreEmpty) {
  LRKCourse course = courseOf("ABC");
  course.runner(0).club("Club");
  course.runner(0).clubSet(false);
  course.runner(1).club("Alpha");
  course.runner(2).resultPlace(1);
  course.sortRunners(esorClub);
  EXPECT_EQ(order(course), "ACB");
  EXPECT_EQ(sortPlaces(course), (std::vector<int>{1, 1, 3}));
  course.sortRunners(esorResultPlace);
  EXPECT_EQ(order(course), "ABC");
  EXPECT_EQ(sortPlaces(course), (std::vector<int>{1, 1, 3}));
}

TEST(SortTest, NumericKeysKeepInvalidRunnersLast) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  struct Row {
    int line;
    std::vector<double> keys;
    std::vector<bool> valid;
    bool ascending;
    const char* order;
    std::vector<int> places;
  };
  const Row rows[] = {
      {__LINE__, {5, 7, 9, 5}, {true, false, true, true}, false, "CADB", {1, 2, 2, 0}},
      {__LINE__, {5, 7, 9, 5}, {true, false, true, true}, true, "ADCB", {1, 1, 3, 0}},
      {__LINE__, {nan, 1, 2, nan}, {true, true, true, true}, false, "CBAD", {1, 2, 0, 0}},
      {__LINE__,
       {0, infinity, -infinity, 1},
       {false, true, true, true},
       true,
       "CDBA",
       {1, 2, 3, 0}},
      {__LINE__, {3, 2}, {true, true, true, true}, true, "BACD", {1, 2, 0, 0}},  // too short
      {__LINE__, {}, {}, true, "ABCD", {0, 0, 0, 0}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    LRKCourse course = courseOf("ABCD");
    course.sortRunnersByNumericArray(row.keys, row.valid, row.ascending);
    EXPECT_EQ(order(course), row.order);
    EXPECT_EQ(sortPlaces(course), row.places);
    EXPECT_EQ(course.sortedBy(), esorCustom);
    EXPECT_EQ(course.sortedByLegNo(), 0);
    EXPECT_EQ(course.sortedAscending(), row.ascending);
  }
}

TEST(SortTest, WhateverNamesRunnersByIndexIsCarriedOver) {
  LRKCourse course = courseOf("CAB");
  course.referenceRunnerIndex(2);  // B
  course.runner(0).noOfPulledRunners(1, 2);
  course.runner(0).pulledRunnerIndex(1, 0, 1);  // C pulls A and B
  course.runner(0).pulledRunnerIndex(1, 1, 2);
  course.runner(1).noOfFollowedRunners(0, 1);
  course.runner(1).followedRunnerIndex(0, 0, 0);  // A follows C
  course.sortRunners(esorName);
  EXPECT_EQ(order(course), "ABC");
  EXPECT_EQ(course.referenceRunnerIndex(), 1);
  EXPECT_EQ(course.runner(2).pulledRunnerIndex(1, 0), 0);
  EXPECT_EQ(course.runner(2).pulledRunnerIndex(1, 1), 1);
  EXPECT_EQ(course.runner(0).followedRunnerIndex(0, 0), 2);
}

TEST(SortTest, SomeKeysSortNothing) {
  LRKCourse course = courseOf("CAB");
  TranslationTable tlt;
  course.sortRunnersAndCreateTLT(esorUnsorted, tlt);
  EXPECT_EQ(tlt, (TranslationTable{0, 1, 2}));
  course.sortRunners(esorName);
  for (const int key : {-1, 30, 31, 47}) {
    tlt = {7};
    course.sortRunnersAndCreateTLT(static_cast<enmSort>(key), tlt, 0, false);
    EXPECT_EQ(tlt, TranslationTable{7});
    EXPECT_EQ(course.sortedBy(), esorName);
  }
  EXPECT_EQ(order(course), "ABC");

  // No runners, and no legs for a key by leg.
  LRKCourse empty = emptyCourse("S");
  empty.sortRunnersAndCreateTLT(esorLegTime, tlt);
  EXPECT_TRUE(tlt.empty());
  empty.addRunner(runner("S", {}, "B"));
  empty.addRunner(runner("S", {}, "A"));
  for (int key = esorName; key <= esorTotalPerformanceIndex; ++key) {
    empty.sortRunners(static_cast<enmSort>(key), 3, key % 2 == 0);
  }
  EXPECT_EQ(empty.noOfRunners(), 2);
}

// The placement as it is defined: the first slot of a key in the sorted list, or the next free one.
TranslationTable naiveSlots(const std::vector<std::string>& keys, bool ascending) {
  std::vector<std::string> sorted = keys;
  std::sort(sorted.begin(), sorted.end());
  std::vector<bool> taken(keys.size());
  TranslationTable slots;
  for (const std::string& key : keys) {
    auto slot =
        static_cast<std::size_t>(std::find(sorted.begin(), sorted.end(), key) - sorted.begin());
    while (taken[slot]) ++slot;
    taken[slot] = true;
    slots.push_back(static_cast<std::int16_t>(ascending ? slot : keys.size() - 1 - slot));
  }
  return slots;
}

TEST(SortTest, AgreesWithTheDefinitionOnRandomKeys) {
  std::mt19937 random(99);
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(round);
    const std::size_t n = random() % 40;
    std::vector<std::string> keys;
    LRKCourse course = emptyCourse("S-31-F");
    for (std::size_t i = 0; i < n; ++i) {
      course.addRunner(runner("S-31-F", {}, std::to_string(i)));
      keys.push_back(std::to_string(random() % 15));
    }
    const bool ascending = round % 2 == 0;
    TranslationTable tlt;
    course.sortRunnersByStringArrayAndCreateTLT(keys, tlt, ascending);
    EXPECT_EQ(tlt, naiveSlots(keys, ascending));
    for (std::size_t i = 0; i < n; ++i) {
      const LRKRunner& moved = course.runner(tlt[i]);
      EXPECT_EQ(moved.name(), std::to_string(i));
      EXPECT_EQ(moved.sortPlace(), 1 + std::count_if(keys.begin(), keys.end(), [&](const auto& k) {
                                     return ascending ? k < keys[i] : k > keys[i];
                                   }));
    }
  }
}

}  // namespace
}  // namespace larkstone
