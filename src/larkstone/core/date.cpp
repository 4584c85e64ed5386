#include "larkstone/core/date.hpp"

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
  if (!(date.day > static_cast<double>(firstDay - 1) &&
        date.day < static_cast<double>(lastDay + 1))) {
    return {};
  }
  const double whole = std::trunc(date.day);
  Parts parts{static_cast<std::int64_t>(whole),
              static_cast<Time>(std::lround(std::abs(date.day - whole) * dayLength))};
  if (parts.time == dayLength) parts = {parts.day + 1, 0};
  return parts;
}

}  // namespace

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

}  // namespace larkstone
