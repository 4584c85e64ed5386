#include "larkstone/import/readers/iof_values.hpp"

#include <algorithm>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/import/scan/date_text.hpp"

namespace larkstone {

namespace {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr auto nowhere = std::string_view::npos;

// The digits behind a decimal mark in hundredths, rounded half up; nothing for other characters.
std::optional<Time> hundredthsOf(std::string_view fraction) {
  if (fraction.empty() || !std::all_of(fraction.begin(), fraction.end(), isDigit)) {
    return std::nullopt;
  }
  const auto digit = [&](std::size_t i) { return i < fraction.size() ? fraction[i] - '0' : 0; };
  return digit(0) * 10 + digit(1) + (digit(2) >= 5 ? 1 : 0);
}

Time sumOf(Time time, Time hundredths) {
  return isDisq(time) || isDisq(time + hundredths) ? LRK_NO_TIME : time + hundredths;
}

// Where the fraction of a second begins: at the last full stop or comma, behind as many colons.
std::size_t fractionMark(std::string_view text, int colons) {
  const auto mark = text.find_last_of(".,");
  if (mark == nowhere || text.find(':', mark) != nowhere) return nowhere;
  const std::string_view before = text.substr(0, mark);
  return std::count(before.begin(), before.end(), ':') >= colons ? mark : nowhere;
}

// Two digits and their colon, of a time of day below the limit.
bool takeClockPart(std::string_view& text, int limit, Time unit, Time& time) {
  const Digits digits = takeDigits(text);
  if (digits.count == 0 || digits.count > 2 || digits.value > limit) return false;
  time += digits.value * unit;
  return true;
}

bool takeColon(std::string_view& text) {
  if (!text.starts_with(':')) return false;
  text.remove_prefix(1);
  return true;
}

std::string_view countryCode(XmlNode country) {
  std::string_view code = country.attribute("code");
  if (code.empty()) code = country.child("CountryId").attribute("value");
  return equalNoCase(code, "other") ? std::string_view() : code;
}

}  // namespace

std::optional<std::int32_t> integerOf(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > 10 || !std::all_of(text.begin(), text.end(), isDigit)) {
    return std::nullopt;
  }
  std::int64_t value = 0;
  for (const char c : text) value = value * 10 + (c - '0');
  if (negative) value = -value;
  if (value != saturated<std::int32_t>(value)) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

Code controlCodeOf(std::string_view text) {
  std::string_view rest = text;
  const Digits digits = takeDigits(rest);
  const std::int32_t code = digits.count > 0 ? digits.value : leadingInteger(text);
  return code >= 0 && code < LRK_START_CODE ? static_cast<Code>(code) : Code{0};
}

std::optional<Time> secondsOf(std::string_view text) {
  std::string_view rest = text;
  const Digits whole = takeDigits(rest);
  if (whole.count > 0 && rest.empty()) {
    return whole.value > LRK_NO_TIME / 100 ? LRK_NO_TIME : whole.value * 100;
  }
  const std::optional<double> seconds = wholeNumber(text);
  if (!seconds) return std::nullopt;
  return std::min(roundHalfEven(*seconds * 100), LRK_NO_TIME);
}

Time runningTimeOf(std::string_view text) {
  text = trimmed(text);
  const bool negative = text.starts_with('-');
  if (negative) text = trimmed(text.substr(1));
  if (text.starts_with('-')) return LRK_NO_TIME;
  Time time = LRK_NO_TIME;
  const auto mark = fractionMark(text, 1);
  const auto fraction =
      mark == nowhere ? std::optional<Time>() : hundredthsOf(text.substr(mark + 1));
  if (fraction) {
    time = sumOf(stringToTime(text.substr(0, mark), etacAuto), *fraction);
  } else {
    time = stringToTime(text, etacAuto, true);
  }
  return negative && !isDisq(time) ? -time : time;
}

Time clockTimeOf(std::string_view text) {
  // The missing minutes of a clock are zero; of no clock at all they are not.
  if (std::none_of(text.begin(), text.end(), isDigit)) return LRK_NO_TIME;
  if (const auto mark = fractionMark(text, 2); mark != nowhere) {
    const auto fraction = hundredthsOf(text.substr(mark + 1));
    if (fraction) return sumOf(stringToClockTime(text.substr(0, mark), etacAuto), *fraction);
  }
  return stringToClockTime(text, etacAuto, true);
}

Time timeOfDayOf(std::string_view text) {
  const auto separator = text.substr(0, text.find(':')).find_first_of("Tt ");
  if (separator != nowhere) text.remove_prefix(separator + 1);
  Time time = 0;
  if (!takeClockPart(text, 24, 360000, time) || !takeColon(text) ||
      !takeClockPart(text, 59, 6000, time)) {
    return LRK_NO_TIME;
  }
  if (takeColon(text)) {
    if (!takeClockPart(text, 60, 100, time)) return LRK_NO_TIME;
    if (text.starts_with('.') || text.starts_with(',')) {
      const auto end = std::min(text.find_first_not_of("0123456789", 1), text.size());
      time += hundredthsOf(text.substr(1, end - 1)).value_or(0);
      text.remove_prefix(end);
    }
  }
  text = trimmed(text);
  const bool complete = text.empty() || std::string_view("Zz+-").find(text.front()) != nowhere;
  return complete ? time : LRK_NO_TIME;
}

Country countryWithin(XmlNode element) {
  const XmlNode country = element.child("Country");
  std::string_view code = countryCode(country);
  if (code.empty()) code = countryCode(element);
  std::string name = country.textAt("Name");
  if (name.empty()) name = country.text();
  return {std::string(code), std::move(name)};
}

Country countryOf(XmlNode element) {
  Country country = countryWithin(element);
  if (country.name.empty()) country.name = element.textAt("Name");
  if (country.name.empty()) country.name = element.text();
  return country;
}

}  // namespace larkstone
