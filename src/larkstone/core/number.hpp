#pragma once

// Rounding and the reading of numbers from text, the same for every part of the library.

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace larkstone {

/// The nearest whole number, halves to the even neighbour, for values within 51 bits: the addition
/// rounds.
inline double roundedHalfEven(double value) {
  constexpr double lastBitIsOne = 0x1.8p52;
  return value + lastBitIsOne - lastBitIsOne;
}

/// The same as an integer; beyond 32 bits the nearest limit, 0 for NaN.
inline std::int32_t roundHalfEven(double value) {
  constexpr auto low = std::numeric_limits<std::int32_t>::min();
  constexpr auto high = std::numeric_limits<std::int32_t>::max();
  if (value <= low) return low;
  if (value >= high) return high;
  return value != value ? 0 : static_cast<std::int32_t>(roundedHalfEven(value));
}

/// The decimal number that a text begins with, after leading blanks: sign, digits, one full stop,
/// digits. 0 when there is none. Reading stops at the first character that cannot go on.
double leadingNumber(std::string_view text);

/// The same, truncated towards zero and kept within 32 bits.
std::int32_t leadingInteger(std::string_view text);

/// The value of a text that is a decimal number and nothing else (blanks around it are ignored; a
/// decimal comma counts as a full stop). Nothing for any other text.
std::optional<double> wholeNumber(std::string_view text);

/// A length or rank as result lists write it: commas and colons count as full stops, apostrophes
/// and quotes are dropped, every full stop after the first only joins digits ("1.2.5" is 1.25).
/// `otherwise` for text that is not numeric.
double textToNumber(std::string_view text, double otherwise = 0);

/// Keeps a value within the range of a narrower integer.
template <class T>
constexpr T saturated(std::int64_t value) {
  constexpr auto low =
      static_cast<std::int64_t>(static_cast<T>(-1) > 0 ? 0 : -(1LL << (sizeof(T) * 8 - 1)));
  constexpr auto high = static_cast<std::int64_t>(
      static_cast<T>(-1) > 0 ? (1LL << (sizeof(T) * 8)) - 1 : (1LL << (sizeof(T) * 8 - 1)) - 1);
  return static_cast<T>(value < low ? low : value > high ? high : value);
}

}  // namespace larkstone
