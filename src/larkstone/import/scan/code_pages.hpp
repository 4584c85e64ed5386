#pragma once

// Code pages of other languages than those of windows-1252.

#include <string>
#include <string_view>

namespace larkstone {

/// How a text reads when its bytes in windows-1250 (Central European) or windows-1251 (Cyrillic)
/// are taken for windows-1252: "Číslo" reads "Èíslo". A text that windows-1252 can hold, and one
/// that none of the pages can, stays as it is.
std::string westernReading(std::string_view utf8);

}  // namespace larkstone
