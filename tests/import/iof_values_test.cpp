#include "larkstone/import/readers/iof_values.hpp"

#include <gtest/gtest.h>

namespace larkstone {
namespace {

constexpr Time none = LRK_NO_TIME;
Time seconds(std::string_view text) { return secondsOf(text).value_or(-1); }
Time code(std::string_view text) { return controlCodeOf(text); }

TEST(IofValuesTest, TimesAndCodes) {
  struct Row {
    Time (*read)(std::string_view);
    std::string_view text;
    Time value;
  };
  // 62.03 is minutes and seconds; halves of hundredths of seconds go to the even neighbour.
  const Row rows[] = {
      {runningTimeOf, "1:02:03.4", 372340},
      {runningTimeOf, "13:12.345", 79235},
      {runningTimeOf, "0:59.999", 6000},
      {runningTimeOf, "62.03", 372300},
      {runningTimeOf, "- 1:00", -6000},
      {runningTimeOf, "- -5", none},
      {runningTimeOf, "mp", none},
      {clockTimeOf, "9", 3240000},
      {clockTimeOf, "10:00:00,25", 3600025},
      {clockTimeOf, "10:00:00.128", 3600013},
      {clockTimeOf, "24:10:00", 8700000},
      {clockTimeOf, "soon", none},
      {timeOfDayOf, "T10:00:00.256Z", 3600026},
      {timeOfDayOf, "t10:00:00,5-11:30", 3600050},
      {timeOfDayOf, "3 23:59:59.996", 8640000},
      {timeOfDayOf, "T11:21Z", 4086000},
      {timeOfDayOf, "2026-05-03", none},
      {timeOfDayOf, "T25:00:00", none},
      {timeOfDayOf, "T10:60:00", none},
      {timeOfDayOf, "T10:00:00 a.m.", none},
      {seconds, "0.29", 29},
      {seconds, "0.125", 12},
      {seconds, "0.375", 38},
      {seconds, "167772", 16777200},
      {seconds, "167773", none},
      {seconds, "99999999999999", none},
      {seconds, "1:00", -1},
      {seconds, "12s", -1},
      {code, "1\"", 1},
      {code, "-5", 0},
      {code, "32735", 32735},
      {code, "32736", 0},
      {code, "65567", 0},
      {code, "99999999999", 0},
  };
  for (const Row& row : rows) EXPECT_EQ(row.read(row.text), row.value) << row.text;
}

TEST(IofValuesTest, Dates) {
  struct Row {
    std::string_view text;
    std::string_view format;
    std::string_view iso;  // empty: no date
  };
  const Row rows[] = {
      {"2026-05-03T10:00:00", "", "2026-05-03"},
      {"03.05.1998", "DD.MM.YYYY", "1998-05-03"},
      {"05/03/1998", "MM/DD/YYYY", "1998-05-03"},
      {"3.5.1998", "", "1998-05-03"},
      {"1998-05-03", "DD.MM.YYYY", "1998-05-03"},
      {"1998-02-30", "", ""},
      {"98", "", ""},
      {"unknown", "", ""},
  };
  for (const Row& row : rows) {
    const auto date = dateOf(row.text, row.format);
    EXPECT_EQ(date ? toIsoText(*date) : "", row.iso) << row.text;
  }
}

TEST(IofValuesTest, NumbersAreWholeAndFitThirtyTwoBits) {
  EXPECT_EQ(integerOf("-2147483648"), std::numeric_limits<std::int32_t>::min());
  for (const std::string_view text : {"", "-", "2147483648", "12345678901", "1.0", "a1f1", " 5"}) {
    EXPECT_EQ(integerOf(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace larkstone
