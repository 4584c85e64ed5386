#include "larkstone/import/readers/iof_values.hpp"

#include <gtest/gtest.h>

namespace larkstone {
namespace {

struct TimeRow {
  int line;
  std::string_view text;
  Time time;
};

TEST(IofValuesTest, RunningTimes) {
  const TimeRow rows[] = {
      {__LINE__, "12:34", 75400},
      {__LINE__, "1:02:03", 372300},
      {__LINE__, "1:02:03.4", 372340},
      {__LINE__, "27:52.5", 167250},
      {__LINE__, "0:48,1", 4810},
      {__LINE__, "13:12.345", 79235},
      {__LINE__, "0:59.999", 6000},
      {__LINE__, "62.03", 372300},  // without a colon: minutes and seconds
      {__LINE__, "-0:10", -1000},
      {__LINE__, "- 1:00", -6000},
      {__LINE__, "--", LRK_NO_TIME},
      {__LINE__, "-----", LRK_NO_TIME},
      {__LINE__, "- -5", LRK_NO_TIME},
      {__LINE__, "--:--:--", LRK_NO_TIME},
      {__LINE__, "99:99:99", LRK_NO_TIME},
      {__LINE__, "", LRK_NO_TIME},
      {__LINE__, "mp", LRK_NO_TIME},
  };
  for (const TimeRow& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(runningTimeOf(row.text), row.time);
  }
}

TEST(IofValuesTest, ClockTimes) {
  const TimeRow rows[] = {
      {__LINE__, "10:00:00", 3600000},     {__LINE__, "9", 3240000},
      {__LINE__, "9:30", 3420000},         {__LINE__, "10:00:00.5", 3600050},
      {__LINE__, "10:00:00,25", 3600025},  {__LINE__, "10:00:00.128", 3600013},
      {__LINE__, "24:10:00", 8700000},     {__LINE__, "--:--:--", LRK_NO_TIME},
      {__LINE__, "99:99:99", LRK_NO_TIME}, {__LINE__, "", LRK_NO_TIME},
      {__LINE__, "soon", LRK_NO_TIME},
  };
  for (const TimeRow& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(clockTimeOf(row.text), row.time);
  }
}

TEST(IofValuesTest, TimesOfDay) {
  const TimeRow rows[] = {
      {__LINE__, "2026-05-03T10:00:00", 3600000},
      {__LINE__, "2026-05-03T10:00:00+02:00", 3600000},
      {__LINE__, "2026-05-03T10:00:00.256Z", 3600026},
      {__LINE__, "2026-05-03t10:00:00,5-11:30", 3600050},
      {__LINE__, "2026-05-03 23:59:59.996", 8640000},
      {__LINE__, "2026-05-03T11:21", 4086000},
      {__LINE__, "2026-05-03T11:21Z", 4086000},
      {__LINE__, "11:21:30", 4089000},
      {__LINE__, "2026-05-03", LRK_NO_TIME},
      {__LINE__, "2026-05-03T25:00:00", LRK_NO_TIME},
      {__LINE__, "2026-05-03T10:60:00", LRK_NO_TIME},
      {__LINE__, "2026-05-03T10:00:00 a.m.", LRK_NO_TIME},
      {__LINE__, "T", LRK_NO_TIME},
      {__LINE__, "", LRK_NO_TIME},
  };
  for (const TimeRow& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(timeOfDayOf(row.text), row.time);
  }
}

TEST(IofValuesTest, Seconds) {
  struct Row {
    int line;
    std::string_view text;
    std::optional<Time> time;
  };
  const Row rows[] = {
      {__LINE__, "3723.4", 372340},
      {__LINE__, "519,2", 51920},
      {__LINE__, "32.0", 3200},
      {__LINE__, "0.29", 29},
      {__LINE__, "0.125", 12},
      {__LINE__, "0.375", 38},  // halves to the even neighbour
      {__LINE__, "-5", -500},
      {__LINE__, "167772", 16777200},
      {__LINE__, "167773", LRK_NO_TIME},
      {__LINE__, "99999999999999", LRK_NO_TIME},
      {__LINE__, "", std::nullopt},
      {__LINE__, "1:00", std::nullopt},
      {__LINE__, "12s", std::nullopt},
      {__LINE__, "-----", std::nullopt},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(secondsOf(row.text), row.time);
  }
}

TEST(IofValuesTest, ControlCodes) {
  struct Row {
    int line;
    std::string_view text;
    Code code;
  };
  const Row rows[] = {
      {__LINE__, "31", 31},   {__LINE__, "100-2", 100},     {__LINE__, "1\"", 1},
      {__LINE__, "F1", 0},    {__LINE__, "S1", 0},          {__LINE__, "", 0},
      {__LINE__, "-5", 0},    {__LINE__, "32735", 32735},   {__LINE__, "32736", 0},
      {__LINE__, "65567", 0}, {__LINE__, "99999999999", 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(controlCodeOf(row.text), row.code);
  }
}

TEST(IofValuesTest, Dates) {
  struct Row {
    int line;
    std::string_view text;
    std::string_view format;
    std::string_view iso;  // empty: no date
  };
  const Row rows[] = {
      {__LINE__, "2026-05-03", "", "2026-05-03"},
      {__LINE__, "2026-05-03+02:00", "", "2026-05-03"},
      {__LINE__, "2026-05-03T10:00:00", "", "2026-05-03"},
      {__LINE__, "1998", "YYYY-MM-DD", "1998-01-01"},
      {__LINE__, "1998-07", "", "1998-07-01"},
      {__LINE__, "03.05.1998", "DD.MM.YYYY", "1998-05-03"},
      {__LINE__, "05/03/1998", "MM/DD/YYYY", "1998-05-03"},
      {__LINE__, "3.5.1998", "", "1998-05-03"},
      {__LINE__, "1998-05-03", "DD.MM.YYYY", "1998-05-03"},
      {__LINE__, "1998-02-30", "", ""},
      {__LINE__, "98", "", ""},
      {__LINE__, "unknown", "", ""},
      {__LINE__, "", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const auto date = dateOf(row.text, row.format);
    EXPECT_EQ(date ? toIsoText(*date) : "", row.iso);
  }
}

TEST(IofValuesTest, NumbersAreWholeAndFitThirtyTwoBits) {
  EXPECT_EQ(integerOf("7607"), 7607);
  EXPECT_EQ(integerOf("-2147483648"), std::numeric_limits<std::int32_t>::min());
  for (const std::string_view text : {"", "-", "2147483648", "12345678901", "1.0", "a1f1", " 5"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(integerOf(text), std::nullopt);
  }
}

}  // namespace
}  // namespace larkstone
