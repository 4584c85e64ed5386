#pragma once

// Numbers and dates as lists write them.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "larkstone/core/date.hpp"

namespace larkstone {

/// Digits taken off the front of a text, at most nine of them.
struct Digits {
  std::int32_t value = 0;
  std::size_t count = 0;
};
Digits takeDigits(std::string_view& text);

/// A date in the order of its format ("DD.MM.YYYY"), without one in ISO order or, where the year
/// stands last, with the day first. A year alone is its first of January. Nothing for other texts.
std::optional<Date> dateOf(std::string_view text, std::string_view format = {});

}  // namespace larkstone
