#include "larkstone/geometry/tools.hpp"

#include <gtest/gtest.h>

#include "support/build.hpp"

namespace larkstone {
namespace {

using test::codes;

// The codes that runners have where others have the start and the finish.
std::string codesFound(std::initializer_list<const char*> courses, int runners = -1) {
  std::vector<LRKCodes> all;
  for (const char* course : courses) all.push_back(codes(course));
  LRKCodes start = codes("1-2-3-4-5");
  LRKCodes finish = codes("2");
  if (runners < 0) {
    getCodesEqualToStartAndFinish(all, start, finish);
  } else {
    LRKTools::getCodesEqualToStartAndFinish(runners, all, start, finish);
  }
  return start.toString() + " " + finish.toString();
}

TEST(ToolsTest, ControlsThatStandForStartAndFinishAreFound) {
  const std::initializer_list<const char*> runners = {
      "S-31-32-F",         // first control 31, last 32
      "100-31-32-F",       // 100 stands where the start should
      "S-31-32-200",       // 200 stands where the finish should
      "31-40-32",          // 31 comes first, 32 last: nothing stands for anything
      "S-41-101-31-32-F",  // 101 comes before 31 too
  };
  EXPECT_EQ(codesFound(runners), "100-101 200");
  EXPECT_EQ(codesFound(runners, 2), "100 ");
  // Set order decides: first controls 32 then 31, so what precedes 32 comes first.
  EXPECT_EQ(codesFound({"S-32-F", "S-31-F", "7-31-8-32-9"}), "8-7 9-8");
  EXPECT_EQ(codesFound({}), " ");
}

}  // namespace
}  // namespace larkstone
