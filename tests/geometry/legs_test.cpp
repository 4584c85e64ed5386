#include "larkstone/geometry/legs.hpp"

#include <random>

#include <gtest/gtest.h>

#include "larkstone/geometry/leg_finder.hpp"

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::codes;
using test::legs;
using test::textOf;

// Legs of several fragments: "S-31,40-41".
LRKLegs fragments(std::string_view text) {
  LRKLegs all;
  while (!text.empty()) {
    const auto comma = text.find(',');
    const LRKLegs part = legs(text.substr(0, comma));
    for (int i = 0; i < part.count(); ++i) all.add(part.beginCode(i), part.endCode(i), 0, 0);
    text = comma == std::string_view::npos ? "" : text.substr(comma + 1);
  }
  return all;
}

TEST(LegsTest, TheFirstOccurrenceDecidesWhetherLegsAreTaken) {
  LRKLegs list = legs("30-31-32-33-31-32");
  EXPECT_EQ(list.legExistsAndMark(31, 32), 1);
  EXPECT_EQ(list.legExistsAndMark(31, 32), -1);
  EXPECT_EQ(list.legExistsAndMark(31, 32, 2), 4);

  // A sequence is marked as a whole.
  list = legs("31-32-33-34-35");
  int begin = 0;
  int end = 0;
  list.legSequenceExistsAndMark(begin, end, 31, 34);
  EXPECT_EQ(std::make_pair(begin, end), std::make_pair(0, 2));
  EXPECT_TRUE(list.marked(0) && list.marked(1) && list.marked(2) && !list.marked(3));
  list.legSequenceExistsAndMark(begin, end, 33, 35);  // part of it is taken
  EXPECT_EQ(std::make_pair(begin, end), std::make_pair(-1, -1));
  EXPECT_FALSE(list.marked(3));
  list.legSequenceExistsAndMark(begin, end, 35, 31);
  EXPECT_EQ(begin, -1);
}

TEST(LegsTest, FragmentsAndTexts) {
  const LRKLegs two = fragments("S-31,40-41-F");
  EXPECT_EQ(two.noOfCourseFragments(), 2);
  EXPECT_EQ(LRKLegs().noOfCourseFragments(), 1);
  EXPECT_TRUE(two.isSingleCourseFragment(1, 2));
  EXPECT_FALSE(two.isSingleCourseFragment(0, 1));
  EXPECT_EQ(textOf(two), "S-31,40-41-F");
  EXPECT_EQ(two.codeArray(), (std::vector<Code>{LRK_START_CODE, 31, 40, 41, LRK_FINISH_CODE}));
  EXPECT_EQ(two.ordinalString(0, "S", "F", "", "/"), "S-1");
  EXPECT_EQ(two.ordinalString(2, "S", "F"), "2-F");
  EXPECT_EQ(two.ordinalString(1, "S", "F", "no "), "no 1-no 2");
  EXPECT_EQ(two.beginAndEndCodeString(2, "S", "F", "#", ecscForceShowIndex, " to "), "#41 to F");
  EXPECT_EQ(two.beginAndEndPunchIndexString(1, "S", "F", "c"), "c1-c2");

  LRKLegs merged = fragments("31-34-F");
  merged.noOfSubCodes(0, 2);
  merged.subCode(0, 0, 32);
  merged.subCode(0, 1, 33);
  EXPECT_EQ(merged.codesToString("S", "F", "", ecscDefault, "-", ",", true), "31-(32-33)-34-F");
  EXPECT_EQ(merged.codesToString("S", "F"), "31-34-F");
}

TEST(LegsTest, AddingEndsContinuesTheLastLeg) {
  LRKLegs list;
  EXPECT_EQ(list.addEnd(1000, 31), 0);
  EXPECT_EQ(list.addEnd(-1, 32, 7, true), 1);
  EXPECT_EQ(list.beginPunchIndex(0), 0);
  EXPECT_EQ(list.endPunchIndex(0), 1);
  EXPECT_EQ(list.beginCode(1), 31);
  EXPECT_EQ(list.beginTime(1), 1000);
  EXPECT_EQ(list.beginPunchIndex(1), 1);
  EXPECT_EQ(list.endPunchIndex(1), 7);
  EXPECT_EQ(list.endTime(1), LRK_NO_TIME);
  EXPECT_TRUE(list.endTimeIsEstimated(1));
  list.insert(0, 5, 30, 1000, 31);
  EXPECT_EQ(list.beginPunchIndex(0), 3);  // the default counts the inserted leg
  EXPECT_EQ(list.endPunchIndex(0), 4);
}

TEST(LegsTest, DeletingByCodesPassesOverTheLegBehind) {
  LRKLegs list = fragments("31-32,31-32,31-32,33-34");
  EXPECT_TRUE(list.deleteLegByCodes(31, 32));
  EXPECT_EQ(list.count(), 2);  // the second of the three moved into the first's place
  EXPECT_EQ(list.beginCode(0), 31);
  EXPECT_FALSE(list.deleteLegByCodes(31, 32, 1));
}

TEST(LegsTest, TimesByOccurrenceOfACode) {
  LRKLegs list;
  list.add(LRK_START_CODE, 31, 0, 1000);
  list.add(31, 32, 1000, 2000);
  list.add(31, 33, 5000, 6000);  // a new fragment begins at 31 again
  EXPECT_EQ(list.timeFromCode(31), 1000);
  EXPECT_EQ(list.timeFromCode(31, 1), 5000);
  EXPECT_EQ(list.timeFromCode(31, 2), 0);
  EXPECT_EQ(list.timeFromCode(33), 6000);
}

TEST(LegsTest, ClonesLeaveBehindWhatBelongsToThePlace) {
  LRKLegs list = legs("31-32");
  list.length(0, 25000);
  list.marked(0, true);
  list.noOfSubCodes(0, 1);
  list.subCode(0, 0, 40);
  const LRKLegs copy = list.clone();
  EXPECT_EQ(copy.length(0), 0);
  EXPECT_FALSE(copy.marked(0));
  EXPECT_EQ(copy.endPunchIndex(0), 0);
  EXPECT_EQ(copy.subCode(0, 0), 40);
}

TEST(LegsTest, CommonLegs) {
  LRKLegs other = legs("S-32-33-31-F");
  EXPECT_EQ(textOf(legs("S-31-32-33-F").commonLegs(other)), "32-33");
  LRKLegs swapped = fragments("33-34,31-32");
  EXPECT_EQ(textOf(fragments("31-32,33-34").commonLegs(swapped)), "31-32");
  EXPECT_EQ(textOf(fragments("31-32,33-34").commonLegs(swapped, true)), "31-32,33-34");
  LRKLegs longer = legs("S-31-32-33-F");
  EXPECT_EQ(textOf(legs("S-31-33-F").commonLegs(longer, false, true)), "S-31-33-F");
}

TEST(LegsTest, RunnersLegsMatchACourseUnderThePolicy) {
  struct Row {
    std::string_view runner, course;
    bool merging, rearrangement;
    int fits;  // bits: exactly all, all, at least one
  };
  constexpr Row rows[] = {
      {"S-31-32-F", "S-31-32-F", false, false, 0b111},
      {"S-31-32-F", "S-31-32-33-F", false, false, 0b001},
      {"S-31-32-F", "S-31-32-33-F", true, false, 0b011},  // 32-F stands for 32-33-F
      {"S-31", "S-31-32-F", false, false, 0b011},
      {"S-40-F", "S-31-32-F", false, false, 0},
      {"S-50-2-50-1-50-F", "S-50-1-50-2-50-F", false, false, 0b001},
      {"S-50-2-50-1-50-F", "S-50-1-50-2-50-F", false, true, 0b111},
      {"S-31-F", "99-31-98", false, true, 0b111},  // under codes acting as start, finish
      {"S-31-F", "99-31-98", false, false, 0},
      // A leg that stands for several, wherever they were run.
      {"32-F", "S-31-32-33-F", false, true, 0},
      {"32-F", "S-31-32-33-F", true, true, 0b011},
      {"32-33,S-32", "S-31-32-33-F", true, false, 0b001},
      {"32-33,S-32", "S-31-32-33-F", false, true, 0b001},
      {"32-33,S-32", "S-31-32-33-F", true, true, 0b011},
      {"31-32,S-33", "S-31-32-33-F", true, true, 0b001},  // part of it is taken
      // The loops one after the other; from the beginning only the first one is met.
      {"S-50-50-50-F", "S-50-1-50-2-50-F", true, false, 0b011},
      {"S-50-50-50-F", "S-50-1-50-2-50-F", true, true, 0b001},
  };
  const LRKCodes start = codes("99");
  const LRKCodes finish = codes("98");
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    const LRKLegs runner = fragments(row.runner);
    LRKLegs course = legs(row.course);
    int fits = 0;
    for (const auto required : {erqlExactlyAll, erqlAll, erqlAtLeastOne, erqlNone}) {
      fits = 2 * fits +
             runner.legsMatch(course, required, row.merging, row.rearrangement, start, finish);
    }
    EXPECT_EQ(fits, 2 * row.fits + 1);  // without required legs everybody fits
  }
}

TEST(LegFinderTest, TriesOwnCodesThenTheSubstitutesInTwoPasses) {
  const LRKLegs course = legs("S-31-32-F");
  LRKLegs runner = legs("97-31-40-99-31-32");
  const LRKCodes start = codes("99-97");
  const LRKCodes finish = codes("98");
  LegFinder finder(course, runner, start, finish, TakenLegs::endTheSearch);
  // Behind leg 1 the first substitute is met at leg 3, ahead of the one at the beginning.
  const LegMatch behind = finder.findLeg(0, 1, true);
  EXPECT_EQ(behind.first, 3);
  EXPECT_FALSE(behind.fromBeginning);
  EXPECT_FALSE(runner.marked(3));
  // With leg 3 taken only the second substitute is left, from the beginning.
  finder.take(behind);
  EXPECT_TRUE(runner.marked(3));
  const LegMatch beginning = finder.findLeg(0, 3, true);
  EXPECT_EQ(beginning.first, 0);
  EXPECT_TRUE(beginning.fromBeginning);
  EXPECT_FALSE(finder.findLeg(0, -1, false));
}

// The run of legs that a walk over the list finds.
LegMatch walk(const LRKLegs& run, Code begin, Code end, int offset, bool isSingle,
              TakenLegs takenLegs) {
  for (int first = offset; first < run.count(); ++first) {
    if (run.beginCode(first) != begin || (isSingle && run.endCode(first) != end)) continue;
    const int last = isSingle ? first : run.endCodeIndex(end, first);
    bool isTaken = false;
    for (int i = first; i <= last; ++i) isTaken = isTaken || run.marked(i);
    if (last >= 0 && !isTaken) return {first, last, false};
    if (takenLegs == TakenLegs::endTheSearch) break;
  }
  return {};
}

TEST(LegFinderTest, FindsInLongListsWhatAWalkFinds) {
  std::mt19937 random(7);
  const auto randomLegs = [&random](int count) {
    LRKCodes list;
    for (int i = 0; i <= count; ++i) list.add(static_cast<Code>(31 + random() % 9));
    return list.toLegs();
  };
  const LRKCodes none;
  for (const auto takenLegs : {TakenLegs::endTheSearch, TakenLegs::arePassedOver}) {
    for (const int length : {30, 99, 100, 400}) {
      SCOPED_TRACE(length);
      LRKLegs wanted = randomLegs(300);
      LRKLegs run = randomLegs(length);
      for (const int i : {0, 4}) wanted.edit(i, run.beginCode(0), run.endCode(0), 0, 0);
      LegFinder finder(wanted, run, none, none, takenLegs);
      for (int i = 0; i < wanted.count(); ++i) {
        const int behind =
            i % 4 == 0 ? -1 : static_cast<int>(random() % static_cast<unsigned>(length)) - 1;
        const LegMatch found[] = {finder.findLeg(i, behind, false),
                                  finder.findRun(i, behind, false)};
        for (const bool isSingle : {true, false}) {
          const LegMatch expected =
              walk(run, wanted.beginCode(i), wanted.endCode(i), behind + 1, isSingle, takenLegs);
          EXPECT_EQ(found[isSingle ? 0 : 1].first, expected.first);
          EXPECT_EQ(found[isSingle ? 0 : 1].last, expected.last);
        }
        if (i % 3 == 0) finder.take(found[i % 2]);
      }
    }
  }
}

}  // namespace
}  // namespace larkstone
