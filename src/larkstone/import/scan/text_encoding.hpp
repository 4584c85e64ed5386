#pragma once

// The bytes of a list as text, whatever its encoding is or claims to be. Bytes with a byte-order
// mark, and those that form more characters of UTF-8 than they leave over, are UTF-8; each byte
// left over is read as its letter in windows-1252. All other bytes are windows-1252. What a file
// declares about itself is not believed.

#include <string>
#include <string_view>

namespace larkstone {

/// Whether the bytes are UTF-16: with a byte-order mark, or beginning with "<" in two bytes.
bool isUtf16(std::string_view bytes);
std::string utf8FromUtf16(std::string_view bytes);

/// UTF-8 without byte-order mark.
std::string utf8Text(std::string bytes);

/// Bytes of windows-1252 without byte-order mark, for lists whose columns are counted in them.
std::string windows1252Text(std::string bytes);

}  // namespace larkstone
