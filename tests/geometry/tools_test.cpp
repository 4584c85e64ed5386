#include "larkstone/geometry/tools.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::codes;

TEST(ToolsTest, ControlsThatStandForStartAndFinishAreFound) {
  const std::vector<LRKCodes> runners = {
      codes("S-31-32-F"),         // first control 31, last 32
      codes("100-31-32-F"),       // 100 stands where the start should
      codes("S-31-32-200"),       // 200 stands where the finish should
      codes("31-40-32"),          // 31 comes first, 32 last: nothing stands for anything
      codes("S-41-101-31-32-F"),  // 101 comes before 31 too
  };
  LRKCodes start = codes("1-2-3-4-5");
  LRKCodes finish;
  getCodesEqualToStartAndFinish(runners, start, finish);
  EXPECT_EQ(start.toString(), "100-101");
  EXPECT_EQ(finish.toString(), "200");
  LRKTools::getCodesEqualToStartAndFinish(2, runners, start, finish);
  EXPECT_EQ(start.toString(), "100");
  EXPECT_EQ(finish.count(), 0);
}

TEST(ToolsTest, CodesOfOrder) {
  // Set order decides: first controls 32 then 31, so what precedes 32 comes first.
  const std::vector<LRKCodes> runners = {codes("S-32-F"), codes("S-31-F"), codes("7-31-8-32-9")};
  LRKCodes start;
  LRKCodes finish;
  getCodesEqualToStartAndFinish(runners, start, finish);
  EXPECT_EQ(start.toString(), "8-7");
  EXPECT_EQ(finish.toString(), "9-8");
}

TEST(ToolsTest, EmptyInputGivesEmptyLists) {
  LRKCodes start = codes("1");
  LRKCodes finish = codes("2");
  getCodesEqualToStartAndFinish({}, start, finish);
  EXPECT_EQ(start.count() + finish.count(), 0);
}

}  // namespace
}  // namespace larkstone
