#pragma once

// Result codes and format identifiers of the importer; 0 is success.

#include <cstdint>
#include <string_view>

namespace larkstone {

/// 1 to 14 are results, the others name formats (and what detection found).
enum enmImportConstants : std::int32_t {
#define LRK_IMPORT_CONSTANT(number, name, text) name = number,
#include "larkstone/import/import_constants.def"
};

/// Added to an event-file error (enmErrorConstants) when the event is what failed: an event that is
/// not open or full, a converted file that cannot be written.
inline constexpr std::int32_t LRK_IMPORT_EVENT_FILE_ERROR = 256;

/// The constant's name, and what it means in a few words; for LRK_IMPORT_EVENT_FILE_ERROR and an
/// event-file error that error's. Empty for other numbers.
std::string_view importName(std::int32_t code);
std::string_view importText(std::int32_t code);

}  // namespace larkstone
