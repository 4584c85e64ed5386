#pragma once

// A point in time as the event file counts it.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "larkstone/core/types.hpp"

namespace larkstone {

/// Days since midnight of 30 December 1899; the fraction is the time of day. Before that day the
/// whole part counts down and the fraction still counts up from midnight (-1.25 is 29 December
/// 1899, 6:00). Day 0 stands for a date that is not set.
struct Date {
  double day = 0;

  friend bool operator==(Date a, Date b) { return a.day == b.day; }
};

struct CalendarDate {
  int year = 1899;
  int month = 12;  ///< 1 to 12
  int day = 30;    ///< 1 to 31

  friend bool operator==(const CalendarDate&, const CalendarDate&) = default;
};

/// The date of a calendar day and a time of day in hundredths of a second. Day 0 for a day that
/// does not exist or a year outside 1 .. 9999.
Date dateOf(const CalendarDate& calendar, Time timeOfDay = 0);

/// Whether the number is a date of the years 1 .. 9999.
bool isDate(Date date);

/// The calendar day; 30 December 1899 for a number that is no date of the years 1 .. 9999.
CalendarDate calendarOf(Date date);

/// The time of day, rounded to hundredths of a second; 0 for a number that is no date.
Time timeOfDay(Date date);

/// "YYYY-MM-DD", or "YYYY-MM-DDThh:mm:ss" when the date has a time of day.
std::string toIsoText(Date date);

/// The date of such a text, in which a blank may stand for the T; nothing for any other text and
/// for days and times that do not exist.
std::optional<Date> dateFromIso(std::string_view text);

}  // namespace larkstone
