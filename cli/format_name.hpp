#pragma once

// Formats as the command line names them.

#include <cstdint>
#include <string>

namespace larkstone::cli {

/// A format by its number, its name, or its name without the prefix of all names from `first` to
/// `last`: 40, LRK_IMPORT_XML, xml. An error of usage for any other text.
std::int32_t formatNamed(const std::string& text, std::int32_t first, std::int32_t last);

}  // namespace larkstone::cli
