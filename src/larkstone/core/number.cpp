#include "larkstone/core/number.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The length of [sign] digits [. digits] at the start of the text; 0 without any digit.
std::size_t numberLength(std::string_view text) {
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  const std::size_t first = i;
  while (i < text.size() && isDigit(text[i])) ++i;
  std::size_t digits = i - first;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (i < text.size() && isDigit(text[i])) ++i, ++digits;
  }
  return digits == 0 ? 0 : i;
}

double parsed(std::string_view number) {
  if (!number.empty() && number.front() == '+') number.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    return number.front() == '-' ? -std::numeric_limits<double>::max()
                                 : std::numeric_limits<double>::max();
  }
  return value;
}

}  // namespace

double leadingNumber(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  const std::size_t length = numberLength(text);
  return length == 0 ? 0 : parsed(text.substr(0, length));
}

std::int32_t leadingInteger(std::string_view text) {
  const double value = leadingNumber(text);
  if (value <= std::numeric_limits<std::int32_t>::min()) {
    return std::numeric_limits<std::int32_t>::min();
  }
  if (value >= std::numeric_limits<std::int32_t>::max()) {
    return std::numeric_limits<std::int32_t>::max();
  }
  return static_cast<std::int32_t>(value);
}

std::optional<double> wholeNumber(std::string_view text) {
  std::string number(trimmed(text));
  for (char& c : number) {
    if (c == ',') c = '.';
  }
  const std::size_t length = numberLength(number);
  if (length == 0 || length != number.size()) return std::nullopt;
  return parsed(number);
}

double textToNumber(std::string_view text, double otherwise) {
  std::string digits;
  std::size_t stop = std::string::npos;
  for (const char c : trimmed(text)) {
    if (c == '\'' || c == '"') continue;
    if (c == '.' || c == ',' || c == ':') {
      if (stop == std::string::npos) stop = digits.size();
      continue;
    }
    digits += c;
  }
  if (!wholeNumber(digits)) return otherwise;
  if (stop != std::string::npos) digits.insert(stop, 1, '.');
  return wholeNumber(digits).value_or(otherwise);
}

}  // namespace larkstone
