#include "larkstone/geometry/punches.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::punches;
using test::textOf;
using test::timesOf;
using Times = std::vector<Time>;

TEST(PunchesTest, ListKeepsItsFormWhateverTheOrderOfAdditions) {
  LRKPunches list;
  EXPECT_EQ(list.add(1000, 31), 0);
  EXPECT_EQ(list.add(5000, LRK_FINISH_CODE), 1);
  EXPECT_EQ(list.add(3000, 32), 2);  // the finish's index
  EXPECT_EQ(textOf(list), "31-32-F");
  EXPECT_EQ(list.add(6000, LRK_FINISH_CODE + 1), 2);
  EXPECT_EQ(textOf(list), "31-32-F2");
  EXPECT_EQ(list.add(500, LRK_START_CODE), 0);
  EXPECT_EQ(textOf(list), "S-31-32-F2");
  EXPECT_EQ(timesOf(list), (Times{500, 1500, 3500, 6500}));
  EXPECT_EQ(list.add(100, LRK_START_CODE + 1), 0);  // the start moves, and all others with it
  EXPECT_EQ(timesOf(list), (Times{100, 1100, 3100, 6100}));
  EXPECT_EQ(list.add(LRK_NO_TIME + 1, 33), 4);
  EXPECT_EQ(list.time(3), LRK_NO_TIME);
}

TEST(PunchesTest, SettersKeepTimesInRangeAndReservedCodesAtTheEnds) {
  LRKPunches list = punches("31-32-33");
  list.time(0, -5);
  list.time(1, 20000000);
  EXPECT_EQ(timesOf(list), (Times{LRK_NO_TIME, LRK_NO_TIME, 12000}));
  list.code(2, LRK_START_CODE);
  list.code(0, LRK_FINISH_CODE);
  EXPECT_EQ(textOf(list), "31-32-33");
  list.code(0, LRK_START_CODE);
  list.code(2, LRK_FINISH_CODE);
  EXPECT_EQ(textOf(list), "S-32-F");
}

TEST(PunchesTest, OffsetsShiftWithinTheRange) {
  LRKPunches list = punches("S-31-32-31-F", {0, 10, 20, 30, 40});
  list.addTimeOffset(-1500, 31);
  EXPECT_EQ(timesOf(list), (Times{0, 0, 2000, 1500, 4000}));
  list.addTimeOffset(LRK_NO_TIME - 2000);
  EXPECT_EQ(timesOf(list), (Times{LRK_NO_TIME - 2000, LRK_NO_TIME - 2000, LRK_NO_TIME,
                                  LRK_NO_TIME - 500, LRK_NO_TIME}));
}

TEST(PunchesTest, DeletingACodeClearsTheRange) {
  LRKPunches list = punches("31-31-32-31-33-31");
  EXPECT_TRUE(list.deleteCode(31, 1, 3));  // 32 and 33 move into the range, the last 31 too
  EXPECT_EQ(textOf(list), "31-32-33");
  EXPECT_FALSE(list.deleteCode(34));
  EXPECT_TRUE(list.deleteCode(31));
  EXPECT_EQ(textOf(list), "32-33");
}

TEST(PunchesTest, ARepeatedLegIsMarkedOncePerOccurrence) {
  LRKPunches list = punches("31-32-31-32");
  EXPECT_FALSE(list.allLegsMarked());
  list.unmarkLegs();
  EXPECT_EQ(list.legExistsAndMark(31, 32), 0);
  EXPECT_EQ(list.legExistsAndMark(31, 32), 2);
  EXPECT_EQ(list.legExistsAndMark(31, 32), -1);
  EXPECT_FALSE(list.allLegsMarked());
  EXPECT_EQ(list.legExistsAndMark(32, 31), 1);
  EXPECT_TRUE(list.allLegsMarked());
  EXPECT_EQ(list.legIndex(31, 32, 1), 2);
  list.add(0, 33);
  EXPECT_FALSE(list.allLegsMarked());
  list.count(1);
  EXPECT_TRUE(list.allLegsMarked());
}

TEST(PunchesTest, CommonControlsTreatRepeatedOnesAsFixedPoints) {
  EXPECT_EQ(textOf(punches("S-31-32-33-F").commonControlPunches(punches("S-31-33-F"))),
            "S-31-33-F");
  // 40 lies behind the second 50 of the other list, which must not be passed over for it.
  EXPECT_EQ(textOf(punches("S-50-40-50-F").commonControlPunches(punches("S-50-50-40-F"))),
            "S-50-50-F");
  const LRKPunches common = punches("S-31-F").commonControlPunches(punches("S-31-F"));
  EXPECT_EQ(timesOf(common), (Times{0, 0, 0}));
}

TEST(PunchesTest, ConversionsTextsAndSearches) {
  EXPECT_EQ(LRKPunches().toLegs().count(), 0);
  EXPECT_EQ(punches("31").toLegs().count(), 0);
  const LRKPunches list = punches("S2-31-32-31-F");
  EXPECT_EQ(list.toCodes().runnerCount(), 1);
  EXPECT_EQ(list.codesToString("Start", "Ziel", "#", ecscForceHideIndex, " "),
            "Start #31 #32 #31 Ziel");
  EXPECT_EQ(list.name(0, "S", "F"), "S");
  EXPECT_EQ(list.name(2, "S", "F", "leg "), "leg 2");
  EXPECT_EQ(list.timeFromCode(31, 1), 18000);
  EXPECT_EQ(list.timeFromCode(31, 2), 0);
  EXPECT_EQ(list.punchIndex(31, 2), 3);
  EXPECT_FALSE(list.punchExists(33));
}

TEST(PunchesTest, AFullListRefusesMore) {
  LRKPunches list;
  list.count(LRK_MAX_LIST);
  EXPECT_EQ(list.add(1, 31), -1);
  list.insert(0, 1, 31);
  EXPECT_EQ(list.count(), LRK_MAX_LIST);
  list.count(-3);
  EXPECT_EQ(list.count(), 0);
}

}  // namespace
}  // namespace larkstone
