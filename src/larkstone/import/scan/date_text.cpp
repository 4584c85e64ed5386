#include "larkstone/import/scan/date_text.hpp"

#include <algorithm>
#include <array>

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;

// The places of year, month and day among the numbers of a date.
using DateOrder = std::array<std::size_t, 3>;
constexpr DateOrder isoOrder = {0, 1, 2};
constexpr DateOrder dayFirst = {2, 1, 0};

std::optional<DateOrder> orderOf(std::string_view format) {
  constexpr std::array<std::string_view, 3> letters = {"yY", "mM", "dD"};
  std::array<std::size_t, 3> at{};
  for (std::size_t i = 0; i < 3; ++i) {
    at[i] = format.find_first_of(letters[i]);
    if (at[i] == nowhere) return std::nullopt;
  }
  DateOrder order{};
  for (std::size_t i = 0; i < 3; ++i) {
    order[i] = static_cast<std::size_t>(
        std::count_if(at.begin(), at.end(), [&](std::size_t other) { return other < at[i]; }));
  }
  return order;
}

}  // namespace

Digits takeDigits(std::string_view& text) {
  Digits digits;
  while (digits.count < 9 && !text.empty() && text.front() >= '0' && text.front() <= '9') {
    digits.value = digits.value * 10 + (text.front() - '0');
    ++digits.count;
    text.remove_prefix(1);
  }
  return digits;
}

std::optional<Date> dateOf(std::string_view text, std::string_view format) {
  std::array<Digits, 3> parts;
  std::size_t count = 0;
  while (count < 3 && !text.empty() && text.front() != 'T') {
    parts[count] = takeDigits(text);
    if (parts[count].count > 0) {
      ++count;
    } else {
      text.remove_prefix(1);
    }
  }
  if (count == 0) return std::nullopt;
  const bool yearFirst = count < 3 || parts[0].count == 4;
  const DateOrder order = yearFirst ? isoOrder : orderOf(format).value_or(dayFirst);
  const auto part = [&](std::size_t i) {
    return order[i] < count ? parts[order[i]] : Digits{1, 2};
  };
  if (part(0).count != 4) return std::nullopt;
  const Date date = dateOf(CalendarDate{part(0).value, part(1).value, part(2).value});
  if (date == Date{}) return std::nullopt;
  return date;
}

}  // namespace larkstone
