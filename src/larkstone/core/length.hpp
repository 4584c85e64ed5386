#pragma once

// Lengths as text.

#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

/// Writes a length in metres or kilometres. noOfDecimals -1 takes as many as the value needs; fewer
/// decimals round halves away from zero. The suffix "[suffix]" stands for " m" or " km".
///
///     lengthToString(1250000)            // "12 500 m"
///     lengthToString(420000, elstkM, 2)  // "4.20 km"
std::string lengthToString(Length length, enmLengthStyle style = elstM, int noOfDecimals = -1,
                           std::string_view thousandSeparator = " ",
                           std::string_view decimalDelimiter = ".",
                           std::string_view suffix = "[suffix]");

/// Reads a length: metres, or kilometres when the text holds a decimal mark or "km". 0 without a
/// number; kept within 0 .. 2147483647.
Length stringToLength(std::string_view text);

}  // namespace larkstone
