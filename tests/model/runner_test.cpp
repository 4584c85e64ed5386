#include "larkstone/model/runner.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::codes;
using test::punches;
using test::runner;
using test::textOf;
using test::timesOf;

// A runner on its own legs, with the time tables ready.
LRKRunner onItsLegs(std::string_view text, const std::vector<int>& seconds,
                    enmStatus status = estaMisPunch) {
  LRKRunner result = runner(text, seconds);
  result.status(status);
  result.legs(result.punches().toLegs());
  result.initializeTimes(false);
  return result;
}

std::vector<Time> timesOf(const LRKRunner& runner, enmLegStyle style) {
  std::vector<Time> times;
  for (int i = 0; i < runner.legs().count(); ++i) times.push_back(runner.time(i, style));
  return times;
}

using Times = std::vector<Time>;

// The totals over bridged gaps when the legs are changed.
Times bridged(LRKRunner runner, void (*change)(LRKLegs&)) {
  change(runner.legs());
  runner.initializeTimes(false);
  return timesOf(runner, elstTotalAllowMissingPunches);
}

constexpr Time none = LRK_NO_TIME;

TEST(RunnerTest, NamesComeFromTheirParts) {
  LRKRunner r;
  r.name("Åsa Öberg");
  r.lastName("Öberg-Ström");
  EXPECT_EQ(r.name(), "Öberg-Ström");
  r.firstName(" Åsa (junior)");
  EXPECT_EQ(r.name(), "Åsa (junior) Öberg-Ström");
  EXPECT_EQ(r.nameInitials(), "ÅjÖS");
  r.firstNameSet(false);
  r.lastNameSet(false);
  r.name("ab-cd ef");
  EXPECT_EQ(r.nameInitials(), "ace");
  r.name("");
  EXPECT_EQ(r.nameInitials(), "");
}

TEST(RunnerTest, ResultTimeNeedsBothEndsAndAnOkStatus) {
  LRKRunner r = runner("S-31-F", {0, 60, 300});
  EXPECT_EQ(r.resultTime(), 30000);
  r.status(estaMisPunch);
  EXPECT_EQ(r.resultTime(), none);
  r.status(estaOK);
  r.finishTime(none);
  EXPECT_EQ(r.resultTime(), none);
  EXPECT_EQ(runner("S-31", {0, 60}).resultTime(), 0);
  EXPECT_EQ(runner("31-F", {0, 60}).resultTime(), 0);
}

TEST(RunnerTest, StartAndFinishAreWrittenIntoThePunches) {
  LRKRunner r = runner("31-32", {10, 20});
  r.startTime(500);
  r.finishTime(9000);
  EXPECT_EQ(textOf(r.punches()), "S-31-32-F");
  EXPECT_EQ(timesOf(r.punches()), (Times{500, 1500, 2500, 9000}));
}

TEST(RunnerTest, TotalsEndAtTheFirstMissingTimeUntilTheGapIsBridged) {
  // 32 has no time: its two legs are missing, and the second one closes the gap.
  const LRKRunner r = onItsLegs("S-31-32-33-F", {0, 60, -1, 200, 260});
  EXPECT_EQ(timesOf(r, elstLeg), (Times{6000, none, none, 6000}));
  EXPECT_EQ(timesOf(r, elstTotalAllowMissingPunches), (Times{6000, none, 20000, 26000}));
  EXPECT_EQ(timesOf(r, elstTotal), (Times{6000, none, none, none}));
  EXPECT_EQ(timesOf(r, elstPassingBegin), (Times{0, 6000, none, none}));
  EXPECT_EQ(timesOf(r, elstPassingEnd), (Times{6000, none, none, none}));
  EXPECT_EQ(timesOf(r, elstPassingEndAllowMissingPunches), (Times{6000, none, 20000, 26000}));

  LRKRunner even = r;
  even.qualifyEvenIfDisqualified(true);
  EXPECT_EQ(timesOf(even, elstTotal), (Times{6000, none, 20000, 26000}));
  // An OK runner qualifies at every leg.
  const LRKRunner ok = onItsLegs("S-31-32-33-F", {0, 60, -1, 200, 260}, estaOK);
  EXPECT_EQ(timesOf(ok, elstTotal), (Times{6000, none, 20000, 26000}));
}

TEST(RunnerTest, GapsAreOpenedByABeginAndClosedByAnEnd) {
  // 32 and 33 have no time: the way from 31 to 34 is one gap.
  const LRKRunner r = onItsLegs("S-31-32-33-34-F", {0, 60, -1, -1, 240, 300});
  EXPECT_EQ(timesOf(r, elstTotalAllowMissingPunches), (Times{6000, none, none, 24000, 30000}));
  // Without a time at the start no gap is open; what follows counts from 0.
  EXPECT_EQ(timesOf(onItsLegs("S-31-F", {-1, 60, 120}), elstTotalAllowMissingPunches),
            (Times{none, 6000}));
  // A leg that begins elsewhere is another fragment: the gap stays open, its time is not counted.
  EXPECT_EQ(bridged(r, [](LRKLegs& legs) { legs.beginCode(3, 40); }),
            (Times{6000, none, none, none, 12000}));
  // Closed is closed: a leg behind it that has lost its begin cannot be counted.
  const LRKRunner closed = onItsLegs("S-31-32-33-F", {0, 60, -1, 200, 260});
  EXPECT_EQ(bridged(closed, [](LRKLegs& legs) { legs.beginTime(3, none); }),
            (Times{6000, none, 20000, none}));
  // The second gap is bridged from its own begin.
  const LRKRunner twice = onItsLegs("S-31-32-33-34-F", {0, 60, -1, 180, -1, 330});
  EXPECT_EQ(timesOf(twice, elstTotalAllowMissingPunches), (Times{6000, none, 18000, none, 33000}));
}

TEST(RunnerTest, AGapIsNotBridgedOverForeignPunches) {
  LRKRunner r = onItsLegs("S-31-32-33-F", {0, 60, -1, 200, 260});
  r.legs().endPunchIndex(2, 4);  // the leg back into the course ends elsewhere
  const std::pair<int, Time> rows[] = {
      {3, 20000},  // punches 1 to 4 are all accounted for
      {4, none},   // punch 3 belongs to no leg
      {0, none},   // punch 0 lies before the gap
  };
  for (const auto& [begin, total] : rows) {
    r.legs().beginPunchIndex(2, begin);
    r.initializeTimes(false);
    EXPECT_EQ(r.time(2, elstTotalAllowMissingPunches), total) << begin;
  }
}

TEST(RunnerTest, NothingCountsBehindAControlThatWasNotPunched) {
  LRKRunner r = onItsLegs("S-31-32-F", {0, 60, 120, 180});
  r.legs().edit(1, 31, 32, none, none, -1, -1);
  r.initializeTimes(false);
  EXPECT_EQ(timesOf(r, elstTotalAllowMissingPunches), (Times{6000, none, none}));
  EXPECT_EQ(timesOf(r, elstLeg), (Times{6000, none, 6000}));
}

TEST(RunnerTest, AFailingStatusTakesTheQualificationOfAWholeCategoryAway) {
  LRKRunner r = onItsLegs("S-31-F", {0, 60, 120}, estaDidNotFinish);
  EXPECT_EQ(r.time(1, elstTotal), 12000);
  r.initializeTimes(true);
  EXPECT_EQ(r.time(0, elstTotal), none);
  EXPECT_EQ(r.time(0, elstPassingBegin), 0);  // the leg behind the last qualified one begins
  EXPECT_EQ(r.time(1, elstPassingBegin), none);
  for (int status = estaOK; status <= estaUnknown; ++status) {
    r.status(static_cast<enmStatus>(status));
    r.initializeTimes(true);
    const bool mayQualify = status <= estaActive || status == estaUnknown;
    EXPECT_EQ(r.time(1, elstTotal), mayQualify ? 12000 : none) << status;
  }
  // Only OK makes up for a missing time.
  LRKRunner finished = onItsLegs("S-31-32-F", {0, 60, -1, 180}, estaFinished);
  finished.initializeTimes(true);
  EXPECT_EQ(timesOf(finished, elstTotal), (Times{6000, none, none}));
}

TEST(RunnerTest, TimeLossAccumulates) {
  LRKRunner r = onItsLegs("S-31-32-F", {0, 60, 120, 180});
  for (int i = 0; i < 3; ++i) r.timeLoss(i, elstTotal, (i + 1) * 100);
  r.timeLoss(1, elstLeg, 250);
  EXPECT_EQ(r.timeLoss(0, elstTotal), 100);
  EXPECT_EQ(r.timeLoss(1, elstTotal), 350);
  EXPECT_EQ(r.timeLoss(2, elstTotalAllowMissingPunches), 450);
  EXPECT_EQ(r.timeLoss(2, elstLeg), 100);
  EXPECT_EQ(r.timeLoss(1, elstPassingEnd), 0);
}

TEST(RunnerTest, TimeLossIsTakenOutOfTimesThatCount) {
  // Qualified to 31 only: behind it totals and ends stay, the begin of the last leg does not.
  LRKRunner r = onItsLegs("S-31-32-33-F", {0, 60, -1, 200, 260});
  LRKRunner even = r;
  even.qualifyEvenIfDisqualified(true);
  for (LRKRunner* runner : {&r, &even}) {
    for (int i = 0; i < 4; ++i) runner->timeLoss(i, elstTotal, (i + 1) * 100);
    runner->subtractTimeLoss();
    EXPECT_EQ(timesOf(*runner, elstPassingBeginAllowMissingPunches), (Times{0, 5900, none, 19700}));
    EXPECT_EQ(runner->timeLoss(3, elstTotal), 0);
  }
  for (const auto style : {elstTotalAllowMissingPunches, elstPassingEndAllowMissingPunches}) {
    EXPECT_EQ(timesOf(r, style), (Times{5900, none, 20000, 26000}));
    EXPECT_EQ(timesOf(even, style), (Times{5900, none, 19700, 25600}));
  }
}

TEST(RunnerTest, LegsThatAreNotThereHaveNoValues) {
  const LRKRunner ofCategory = runner("S-31-F");
  LRKRunner r = onItsLegs("S-31-F", {0, 60, 120});
  r.timeLoss(1, elstTotal, 500);
  r.followingBenefitTime(1, elstTotal, 500);
  const std::pair<const LRKRunner*, int> rows[] = {
      {&ofCategory, 0}, {&ofCategory, 1}, {&r, 2}, {&r, -1}};
  for (const auto& [runner, legNo] : rows) {
    for (int number = -1; number <= LRK_LEG_STYLES; ++number) {
      const auto style = static_cast<enmLegStyle>(number);
      const bool isStyle = number >= 0 && number < LRK_LEG_STYLES;
      EXPECT_EQ(runner->time(legNo, style), isStyle ? none : 0) << number;
      EXPECT_EQ(runner->place(legNo, style), 0);
      EXPECT_FALSE(runner->hasPlace(legNo, style));
      EXPECT_EQ(runner->timeLoss(legNo, style), 0);
      EXPECT_EQ(runner->followingBenefitTime(legNo, style), 0);
      EXPECT_EQ(runner->performanceIndex(legNo, style), 0);
      EXPECT_FALSE(runner->timeIsEstimated(legNo, style));
    }
    EXPECT_EQ(runner->followingIndex(legNo) + runner->pullIndex(legNo), 0);
    EXPECT_EQ(runner->noOfFollowedRunners(legNo), 0);
    EXPECT_EQ(runner->pulledRunnerIndex(legNo, 0), -1);
    EXPECT_EQ(runner->pulledRunnerIndexValue(legNo, 0), 0);
  }
}

// A leg's own benefit counts from there on: 70 and -300.
TEST(RunnerTest, WhatWasWrittenForAStyleCanBeRead) {
  for (int number = 0; number < LRK_LEG_STYLES; ++number) {
    const auto style = static_cast<enmLegStyle>(number);
    LRKRunner r = onItsLegs("S-31-32-F", {0, 60, 120, 180});
    r.performanceIndex(1, style, 0.5F);
    r.followingBenefitTime(0, elstTotal, 70);
    r.followingBenefitTime(1, style, -300);
    EXPECT_EQ(r.performanceIndex(1, style), 0.5F) << number;
    EXPECT_EQ(r.performanceIndex(0, style), 0.0F) << number;
    EXPECT_EQ(r.followingBenefitTime(1, style), -300) << number;
    const Time total = style == elstTotal ? -300 : style == elstLeg ? -230 : 0;
    EXPECT_EQ(r.followingBenefitTime(1, elstTotal), total) << number;
  }
}

TEST(RunnerTest, PunchesAreRebuiltAlongACourse) {
  LRKRunner r = runner("S-31-33-35-F", {0, 10, 20, 30, 40});
  r.extraPunches(punches("36-37", {15, -1}));
  r.transformPunches(codes("S-31-32-33-F"));
  EXPECT_EQ(textOf(r.punches()), "S-31-32-33-F");
  EXPECT_EQ(timesOf(r.punches()), (Times{0, 1000, none, 2000, 4000}));
  EXPECT_EQ(textOf(r.extraPunches()), "36-35");  // in the order of their times
  EXPECT_EQ(r.status(), estaDisqualified);

  LRKRunner failed = runner("S-F", {0, 10});
  failed.status(estaDidNotFinish);
  failed.transformPunches(codes("S-31-F"));
  EXPECT_EQ(failed.status(), estaDidNotFinish);
}

TEST(RunnerTest, ClonesCarryWhatIsSetAndNoResults) {
  LRKCategory category;
  category.name("H21");
  category.categoryIndex(4);
  category.addRunner({});
  category.addRunner(onItsLegs("S-31-F", {0, 60, 120}));
  LRKRunner& r = category.runner(1);
  r.extraPunches(punches("35-36", {70, 80}));
  r.requiredLegsValueUsed(erqlAll);
  r.rearrangementValueUsed(true);
  r.club("OK Syd");
  r.relayLeg(2);
  r.relayLegSet(false);
  r.sortPlace(3);
  r.courseFollowingIndex(0.5F);
  r.mergingValueUsed(true);
  r.qualifyEvenIfDisqualified(true);
  const LRKRunner copy = r.clone();
  EXPECT_EQ(copy.club(), "OK Syd");
  EXPECT_FALSE(copy.relayLegSet());
  EXPECT_EQ(copy.relayLeg(), 0);
  EXPECT_EQ(copy.sortPlace(), 3);
  EXPECT_TRUE(copy.mergingValueUsed());
  EXPECT_EQ(copy.courseFollowingIndex(), 0);
  EXPECT_FALSE(copy.qualifyEvenIfDisqualified());
  EXPECT_EQ(textOf(copy.punches()), "S-31-F");
  EXPECT_EQ(textOf(copy.extraPunches()), "35-36");
  EXPECT_EQ(textOf(copy.legs()), "S-31-F");
  EXPECT_EQ(copy.categoryIndex(), 4);
  EXPECT_EQ(copy.runnerIndex(), 1);
  EXPECT_EQ(copy.categoryName(), "H21");
  EXPECT_EQ(copy.requiredLegsValueUsed(), erqlAll);
  EXPECT_TRUE(copy.rearrangementValueUsed());
}

TEST(RunnerTest, PropertiesByTag) {
  LRKRunner r = runner("S-31-F");
  struct Row {
    enmFileTag tag;
    TagValue value;
    bool set;
  };
  const Row rows[] = {
      {etagRunnerPunches, 3, true},
      {etagRunnerStatus, int{estaOK}, true},
      {etagRunnerClub, "", false},
      {etagCategoryName, {}, false},
  };
  bool isSet = true;
  for (const auto& [tag, value, set] : rows) {
    EXPECT_EQ(r.getPropertyByTag(tag, isSet), value) << tag;
    EXPECT_EQ(isSet, set) << tag;
  }
  r.setPropertyByTag(etagRunnerRelayLeg, std::string("3"), true);
  EXPECT_EQ(r.relayLeg(), 3);
  EXPECT_TRUE(r.relayLegSet());
  r.setPropertyByTag(etagRunnerRelayLeg, std::string("third"), false);  // changes nothing
  EXPECT_TRUE(r.relayLegSet());
  r.setPropertyByTag(etagRunnerRelayLeg, std::int32_t{4}, false);
  EXPECT_EQ(r.relayLeg(), 4);
  EXPECT_FALSE(r.relayLegSet());
  r.firstName("Eva");
  r.lastName("Lind");
  EXPECT_EQ(r.getPropertyByTag(etagRunnerName, isSet), TagValue(std::string("Eva Lind")));
}

}  // namespace
}  // namespace larkstone
