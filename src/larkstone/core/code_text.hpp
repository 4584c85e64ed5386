#pragma once

// Control codes as text.

#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

/// Start and finish codes by the given names ("S", "F3"), all others as prefix and number. With an
/// empty name the reserved codes are written as numbers too.
std::string codeToString(Code code, std::string_view startName, std::string_view finishName,
                         std::string_view codePrefix = "",
                         enmCodeStringConversion codeStringConversion = ecscDefault);

/// The inverse, without regard to case: "S" and "F2" by the names, else the leading number behind
/// the prefix, kept within 0 .. 32767. The conversion style does not change the reading.
Code stringToCode(std::string_view text, std::string_view startName, std::string_view finishName,
                  std::string_view codePrefix = "",
                  enmCodeStringConversion codeStringConversion = ecscDefault);

}  // namespace larkstone
