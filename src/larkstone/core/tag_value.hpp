#pragma once

// The value of any property, as getPropertyByTag() and the event file's tag extraction hand it out.

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>

#include "larkstone/core/date.hpp"
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

/// The number a value stands for; a text must be a decimal number as a whole.
std::optional<double> numberOf(const TagValue& value);

/// The text form of a value; dates in ISO form, nothing for an absent value.
std::optional<std::string> textOf(const TagValue& value);

/// The value as a property of type T; nothing when it cannot be converted or is out of range.
template <class T>
std::optional<T> fromTagValue(const TagValue& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    return textOf(value);
  } else if constexpr (std::is_same_v<T, Date>) {
    if (const Date* date = std::get_if<Date>(&value)) return *date;
    const std::optional<double> number = numberOf(value);
    return number ? std::optional<Date>(Date{*number}) : std::nullopt;
  } else {
    const std::optional<double> number = numberOf(value);
    if (!number) return std::nullopt;
    if constexpr (std::is_same_v<T, bool>) {
      return *number != 0;
    } else if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(*number);
    } else {
      const std::int32_t whole = roundHalfEven(*number);
      const auto narrow = static_cast<T>(whole);
      if (static_cast<std::int32_t>(narrow) != whole) return std::nullopt;
      return narrow;
    }
  }
}

}  // namespace larkstone
