#include "larkstone/core/date.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace larkstone {

namespace {

constexpr Time dayLength = 24 * 360000;
constexpr std::chrono::sys_days dayZero{std::chrono::year{1899} / 12 / 30};
constexpr std::int64_t firstDay =
    (std::chrono::sys_days{std::chrono::year{1} / 1 / 1} - dayZero).count();
constexpr std::int64_t lastDay =
    (std::chrono::sys_days{std::chrono::year{9999} / 12 / 31} - dayZero).count();

// Whole day and time of day; a time that rounds up to midnight belongs to the next day.
struct Parts {
  std::int64_t day = 0;
  Time time = 0;
};

Parts partsOf(Date date) {
  if (!isDate(date)) return {};
  const double whole = std::trunc(date.day);
  Parts parts{static_cast<std::int64_t>(whole),
              static_cast<Time>(std::lround(std::abs(date.day - whole) * dayLength))};
  if (parts.time == dayLength) parts = {parts.day + 1, 0};
  return parts;
}

// The number that a text of a form like "00-00" says at a place, in its digits.
int numberAt(std::string_view text, std::size_t at, std::size_t digits) {
  int number = 0;
  for (const char c : text.substr(at, digits)) number = number * 10 + (c - '0');
  return number;
}

bool isOfForm(std::string_view text, std::string_view form) {
  return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                    [](char c, char of) { return of == '0' ? c >= '0' && c <= '9' : c == of; });
}

}  // namespace

bool isDate(Date date) {
  return date.day > static_cast<double>(firstDay - 1) &&
         date.day < static_cast<double>(lastDay + 1);
}

Date dateOf(const CalendarDate& calendar, Time timeOfDay) {
  using namespace std::chrono;
  if (calendar.year < 1 || calendar.year > 9999 || calendar.month < 1 || calendar.day < 1)
    return {};
  const year_month_day ymd = year{calendar.year} / month{static_cast<unsigned>(calendar.month)} /
                             day{static_cast<unsigned>(calendar.day)};
  if (!ymd.ok()) return {};
  const auto whole = static_cast<double>((sys_days{ymd} - dayZero).count());
  const double fraction = static_cast<double>(timeOfDay) / dayLength;
  return {whole < 0 ? whole - fraction : whole + fraction};
}

CalendarDate calendarOf(Date date) {
  using namespace std::chrono;
  const year_month_day ymd{dayZero + days{partsOf(date).day}};
  return {static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
          static_cast<int>(static_cast<unsigned>(ymd.day()))};
}

Time timeOfDay(Date date) { return partsOf(date).time; }

std::string toIsoText(Date date) {
  const CalendarDate calendar = calendarOf(date);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", calendar.year, calendar.month, calendar.day);
  const Time time = timeOfDay(date);
  if (time == 0) return text;
  char clock[32];
  std::snprintf(clock, sizeof clock, "T%02d:%02d:%02d", time / 360000, time / 6000 % 60,
                time / 100 % 60);
  return std::string(text) + clock;
}

std::optional<Date> dateFromIso(std::string_view text) {
  constexpr std::size_t calendarLength = 10;
  const std::string_view clock = text.substr(std::min(calendarLength, text.size()));
  const bool hasClock = isOfForm(clock, "T00:00:00") || isOfForm(clock, " 00:00:00");
  if (!isOfForm(text.substr(0, calendarLength), "0000-00-00") || !(clock.empty() || hasClock)) {
    return std::nullopt;
  }
  const CalendarDate calendar{numberAt(text, 0, 4), numberAt(text, 5, 2), numberAt(text, 8, 2)};
  Time time = 0;
  if (hasClock) {
    const int hour = numberAt(clock, 1, 2);
    const int minute = numberAt(clock, 4, 2);
    const int second = numberAt(clock, 7, 2);
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    time = hour * 360000 + minute * 6000 + second * 100;
  }
  const Date date = dateOf(calendar, time);
  return calendarOf(date) == calendar ? std::optional(date) : std::nullopt;
}

}  // namespace larkstone
