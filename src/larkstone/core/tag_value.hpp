#pragma once

// The value of any property, as getPropertyByTag() and the event file's tag extraction hand it out.

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>

#include "larkstone/core/date.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/number.hpp"

namespace larkstone {

/// Nothing (std::monostate) where a property or record is absent. Enumerations and integers of any
/// width are std::int32_t, Booleans are bool.
using TagValue = std::variant<std::monostate, bool, std::int32_t, float, Date, std::string>;

template <class T>
TagValue toTagValue(const T& value) {
  if constexpr (std::is_enum_v<T> || (std::is_integral_v<T> && !std::is_same_v<T, bool>)) {
    return static_cast<std::int32_t>(value);
  } else {
    return value;
  }
}

/// The number a value stands for; a text must be a decimal number as a whole. Nothing for a number
/// that is not finite.
std::optional<double> numberOf(const TagValue& value);

/// The Boolean a value stands for: false for the number 0, true for any other; of a text also in
/// these words.
std::optional<bool> flagFrom(const TagValue& value);

/// The date a value stands for: a day number or, of a text, also the ISO form.
std::optional<Date> dateFrom(const TagValue& value);

/// The text form of a value; dates in ISO form, nothing for an absent value.
std::optional<std::string> textOf(const TagValue& value);

/// Whether a property can hold the value: an enumerator, a finite number, a date that there is.
template <class T>
bool isValid(const T& value) {
  if constexpr (std::is_enum_v<T>) {
    static_assert(lastEnumerator<T> >= 0, "its enumerators are listed");
    return value >= 0 && value <= lastEnumerator<T>;
  } else if constexpr (std::is_same_v<T, Date>) {
    return isDate(value);
  } else if constexpr (std::is_floating_point_v<T>) {
    return std::isfinite(value);
  } else {
    return true;
  }
}

/// A number as a whole number of type T, rounded half to even; nothing when it is out of range.
template <class T>
std::optional<T> wholeFrom(double number) {
  using Whole = std::numeric_limits<T>;
  constexpr double beyond = 1;
  if (!(number > Whole::min() - beyond && number < Whole::max() + beyond)) return std::nullopt;
  const double rounded = roundedHalfEven(number);
  if (rounded < Whole::min() || rounded > Whole::max()) return std::nullopt;
  return static_cast<T>(rounded);
}

/// The value as a property of type T: texts as numbers, a Boolean also as true or false, a date
/// also in ISO form. Nothing when it cannot be converted or is out of range.
template <class T>
std::optional<T> fromTagValue(const TagValue& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    return textOf(value);
  } else if constexpr (std::is_same_v<T, Date>) {
    const std::optional<Date> date = dateFrom(value);
    return date && isValid(*date) ? date : std::nullopt;
  } else if constexpr (std::is_same_v<T, bool>) {
    return flagFrom(value);
  } else {
    const std::optional<double> number = numberOf(value);
    if (!number) return std::nullopt;
    if constexpr (std::is_floating_point_v<T>) {
      if (std::abs(*number) > std::numeric_limits<T>::max()) return std::nullopt;
      return static_cast<T>(*number);
    } else if constexpr (std::is_enum_v<T>) {
      const auto whole = wholeFrom<std::underlying_type_t<T>>(*number);
      if (!whole || !isValid(static_cast<T>(*whole))) return std::nullopt;
      return static_cast<T>(*whole);
    } else {
      return wholeFrom<T>(*number);
    }
  }
}

}  // namespace larkstone
