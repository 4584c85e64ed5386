#include "larkstone/import/readers/iof_values.hpp"

#include <gtest/gtest.h>

namespace larkstone {
namespace {

constexpr Time none = LRK_NO_TIME;
Time seconds(std::string_view text) { return secondsOf(text).value_or(-1); }
Time code(std::string_view text) { return controlCodeOf(text); }

struct Row {
  int line;
  std::string_view text;
  Time value;
};

template <std::size_t n>
void check(Time (*read)(std::string_view), const Row (&rows)[n]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(read(row.text), row.value);
  }
}

TEST(IofValuesTest, RunningTimes) {
  const Row rows[] = {
      {__LINE__, "12:34", 75400},    {__LINE__, "1:02:03", 372300}, {__LINE__, "1:02:03.4", 372340},
      {__LINE__, "27:52.5", 167250}, {__LINE__, "0:48,1", 4810},    {__LINE__, "13:12.345", 79235},
      {__LINE__, "0:59.999", 6000},  {__LINE__, "62.03", 372300},  // minutes and seconds
      {__LINE__, "-0:10", -1000},    {__LINE__, "- 1:00", -6000},   {__LINE__, "-----", none},
      {__LINE__, "- -5", none},      {__LINE__, "--:--:--", none},  {__LINE__, "99:99:99", none},
      {__LINE__, "", none},          {__LINE__, "mp", none},
  };
  check(runningTimeOf, rows);
}

TEST(IofValuesTest, ClockTimes) {
  const Row rows[] = {
      {__LINE__, "10:00:00", 3600000},    {__LINE__, "9", 3240000},
      {__LINE__, "9:30", 3420000},        {__LINE__, "10:00:00.5", 3600050},
      {__LINE__, "10:00:00,25", 3600025}, {__LINE__, "10:00:00.128", 3600013},
      {__LINE__, "24:10:00", 8700000},    {__LINE__, "--:--:--", none},
      {__LINE__, "99:99:99", none},       {__LINE__, "", none},
      {__LINE__, "soon", none},
  };
  check(clockTimeOf, rows);
}

TEST(IofValuesTest, TimesOfDay) {
  const Row rows[] = {
      {__LINE__, "2026-05-03T10:00:00", 3600000},
      {__LINE__, "2026-05-03T10:00:00+02:00", 3600000},
      {__LINE__, "2026-05-03T10:00:00.256Z", 3600026},
      {__LINE__, "2026-05-03t10:00:00,5-11:30", 3600050},
      {__LINE__, "2026-05-03 23:59:59.996", 8640000},
      {__LINE__, "2026-05-03T11:21Z", 4086000},
      {__LINE__, "11:21:30", 4089000},
      {__LINE__, "2026-05-03", none},
      {__LINE__, "2026-05-03T25:00:00", none},
      {__LINE__, "2026-05-03T10:60:00", none},
      {__LINE__, "2026-05-03T10:00:00 a.m.", none},
      {__LINE__, "T", none},
  };
  check(timeOfDayOf, rows);
}

TEST(IofValuesTest, Seconds) {
  const Row rows[] = {
      {__LINE__, "3723.4", 372340},
      {__LINE__, "519,2", 51920},
      {__LINE__, "0.29", 29},
      {__LINE__, "0.125", 12},  // halves to the even neighbour
      {__LINE__, "0.375", 38},
      {__LINE__, "-5", -500},
      {__LINE__, "167772", 16777200},
      {__LINE__, "167773", none},
      {__LINE__, "99999999999999", none},
      {__LINE__, "", -1},
      {__LINE__, "1:00", -1},
      {__LINE__, "12s", -1},
      {__LINE__, "-----", -1},
  };
  check(seconds, rows);
}

TEST(IofValuesTest, ControlCodes) {
  const Row rows[] = {
      {__LINE__, "31", 31},   {__LINE__, "100-2", 100},     {__LINE__, "1\"", 1},
      {__LINE__, "F1", 0},    {__LINE__, "S1", 0},          {__LINE__, "", 0},
      {__LINE__, "-5", 0},    {__LINE__, "32735", 32735},   {__LINE__, "32736", 0},
      {__LINE__, "65567", 0}, {__LINE__, "99999999999", 0},
  };
  check(code, rows);
}

TEST(IofValuesTest, Dates) {
  struct DateRow {
    int line;
    std::string_view text;
    std::string_view format;
    std::string_view iso;  // empty: no date
  };
  const DateRow rows[] = {
      {__LINE__, "2026-05-03+02:00", "", "2026-05-03"},
      {__LINE__, "2026-05-03T10:00:00", "", "2026-05-03"},
      {__LINE__, "1998", "YYYY-MM-DD", "1998-01-01"},
      {__LINE__, "03.05.1998", "DD.MM.YYYY", "1998-05-03"},
      {__LINE__, "05/03/1998", "MM/DD/YYYY", "1998-05-03"},
      {__LINE__, "3.5.1998", "", "1998-05-03"},
      {__LINE__, "1998-05-03", "DD.MM.YYYY", "1998-05-03"},
      {__LINE__, "1998-02-30", "", ""},
      {__LINE__, "98", "", ""},
      {__LINE__, "unknown", "", ""},
  };
  for (const DateRow& row : rows) {
    SCOPED_TRACE(row.line);
    const auto date = dateOf(row.text, row.format);
    EXPECT_EQ(date ? toIsoText(*date) : "", row.iso);
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
