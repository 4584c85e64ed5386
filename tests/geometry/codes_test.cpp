#include "larkstone/geometry/codes.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::codes;
using test::textOf;

TEST(CodesTest, AControlThatActsAsStartEqualsTheStart) {
  const LRKCodes course = codes("S-31-32-F");
  const LRKCodes recorded = codes("100-31-32-F");
  const LRKCodes actingAsStart = codes("99-100");
  EXPECT_FALSE(course.isEqualTo(recorded));
  EXPECT_TRUE(course.isEqualTo(recorded, &actingAsStart));
  EXPECT_TRUE(recorded.isEqualTo(course, &actingAsStart));
  EXPECT_FALSE(codes("S2-31").isEqualTo(codes("S-31"), &actingAsStart));
  EXPECT_FALSE(course.isEqualTo(codes("S-31-32"), &actingAsStart));
}

TEST(CodesTest, CommonCodes) {
  struct Row {
    std::string_view a, b, common, byEarlierRule;
  };
  constexpr Row rows[] = {
      {"S-31-32-33-F", "S-31-33-F", "S-31-33-F", "S-31-33-F"},
      {"S-31-32-F", "S-32-31-F", "S-31-F", "S-31-F"},
      // Butterfly: within the loops only the centre counts.
      {"S-1-50-2-3-50-4-5-50-F", "S-1-50-4-5-50-2-3-50-F", "S-1-50-50-50-F", "S-1-50-50-50-F"},
      // One loop, multiplicity 2 and nothing repeated behind: no section, the loop counts too.
      {"S-50-2-3-50-F", "S-50-2-3-50-F", "S-50-2-3-50-F", "S-50-2-3-50-F"},
      // Two centres: the section reaches the last of the repeated codes behind the first's loops.
      {"S-50-1-50-2-60-3-60-F", "S-50-1-50-2-60-3-60-F", "S-50-50-60-60-F",
       "S-50-1-50-2-60-3-60-F"},
      {"", "S-F", "", ""},
      // The other has fewer laps: from the first 50 to the last one only the centre counts.
      {"S-50-1-50-2-50-F", "S-50-2-50-F", "S-50-50-F", "S-50-50-F"},
      // It has more: one lap is no section, and 1 may be looked for behind the other's first lap.
      {"S-50-1-50-F", "S-50-2-50-1-50-F", "S-50-1-50-F", "S-50-50"},
      // 60 makes no section, since nothing repeated comes behind it; the one of 50 ends at 60.
      {"60-50-1-50-2-60-F", "60-50-1-50-2-60-F", "60-50-50-60-F", "60-50-1-50-2-60-F"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    EXPECT_EQ(textOf(codes(row.a).commonCodes(codes(row.b))), row.common);
    EXPECT_EQ(textOf(codes(row.a).commonCodes_old(codes(row.b))), row.byEarlierRule);
  }
}

TEST(CodesTest, Searches) {
  const LRKCodes list = codes("S-31-32-31-F");
  EXPECT_EQ(list.codeIndex(31, 2), 3);
  EXPECT_EQ(list.codeIndex(31, 9), -1);
  EXPECT_EQ(list.codeCount(31), 2);
  EXPECT_EQ(list.toLegs().endPunchIndex(3), 4);
}

TEST(CodesTest, TheFrameIsPutOnAndTakenOffOnce) {
  LRKCodes list = codes("31-32");
  for (int time = 0; time < 2; ++time) list.addSuperStartAndFinish();
  EXPECT_EQ(list.toString(), "-2-31-32--1");
  for (int time = 0; time < 2; ++time) list.stripSuperStartAndFinish();
  EXPECT_EQ(list.toString(","), "31,32");
  EXPECT_EQ(codes("S-31-F").toString(), "32736-31-32752");
  list.count(LRK_MAX_LIST - 1);  // no room for two
  list.addSuperStartAndFinish();
  EXPECT_EQ(list.count(), LRK_MAX_LIST - 1);
  EXPECT_FALSE(list.superStartAndFinishExist());
  list.count(LRK_MAX_LIST - 2);
  list.addSuperStartAndFinish();
  EXPECT_TRUE(list.superStartAndFinishExist());
  EXPECT_EQ(list.toPunches().count(), LRK_MAX_LIST);
}

}  // namespace
}  // namespace larkstone
