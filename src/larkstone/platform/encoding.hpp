#pragma once

// Text in encodings that the system knows.

#include <optional>
#include <string>
#include <string_view>

namespace larkstone {

/// Bytes of the encoding ("windows-1250", "ISO-8859-2", "KOI8-R", "GBK") as UTF-8. Nothing for an
/// encoding that is unknown or has no bytes of ASCII for ASCII, and for bytes that it cannot mean.
std::optional<std::string> utf8From(std::string_view encoding, std::string_view bytes);

}  // namespace larkstone
