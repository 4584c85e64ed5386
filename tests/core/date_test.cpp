#include "larkstone/core/date.hpp"

#include <cmath>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(DateTest, DaysCountFromTheEndOf1899) {
  EXPECT_EQ(dateOf({1899, 12, 30}).day, 0);
  EXPECT_EQ(dateOf({1900, 1, 1}).day, 2);
  EXPECT_EQ(dateOf({2000, 1, 1}).day, 36526);
  EXPECT_EQ(dateOf({2026, 5, 3}, 6 * 360000).day, 46145.25);
  EXPECT_EQ(dateOf({1899, 12, 29}, 6 * 360000).day, -1.25);  // the fraction counts up from midnight
}

TEST(DateTest, EveryPartComesBack) {
  for (const CalendarDate day :
       {CalendarDate{1, 1, 1}, {1899, 12, 29}, {2024, 2, 29}, {9999, 12, 31}}) {
    for (const Time time : {0, 1, 360000 * 12, 8639999}) {
      const Date date = dateOf(day, time);
      EXPECT_EQ(calendarOf(date), day);
      EXPECT_EQ(timeOfDay(date), time);
    }
  }
  // Almost midnight is the next day.
  const Date date{std::nextafter(46146.0, 0.0)};
  EXPECT_EQ(calendarOf(date), (CalendarDate{2026, 5, 4}));
  EXPECT_EQ(timeOfDay(date), 0);
}

TEST(DateTest, WhatIsNoDateIsDayZero) {
  for (const CalendarDate day :
       {CalendarDate{2026, 2, 29}, {2026, 13, 1}, {0, 1, 1}, {2026, -1, 1}}) {
    EXPECT_EQ(dateOf(day).day, 0);
  }
  for (const double number : {1e300, -1e300, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(calendarOf(Date{number}), (CalendarDate{1899, 12, 30}));
    EXPECT_EQ(timeOfDay(Date{number}), 0);
  }
}

TEST(DateTest, IsoText) {
  EXPECT_EQ(toIsoText(dateOf({2026, 5, 3})), "2026-05-03");
  EXPECT_EQ(toIsoText(dateOf({2026, 5, 3}, 3723 * 100)), "2026-05-03T01:02:03");
  EXPECT_EQ(dateFromIso("2026-05-03"), dateOf({2026, 5, 3}));
  EXPECT_EQ(dateFromIso("0001-01-01 23:59:59"), dateOf({1, 1, 1}, 8639900));
  EXPECT_EQ(dateFromIso("1899-12-30"), Date{0});
  for (const char* text : {"", "2026-5-3", "2026-05-3x", "2026-02-29", "2026-00-01", "0000-01-01",
                           "2026-05-03T", "2026-05-03T24:00:00", "2026-05-03T12:60:00",
                           "2026-05-03T12:00", "2026-05-03T12:00:00Z", "x2026-05-03"}) {
    EXPECT_FALSE(dateFromIso(text)) << text;
  }
}

}  // namespace
}  // namespace larkstone
