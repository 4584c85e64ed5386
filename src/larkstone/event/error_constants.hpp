#pragma once

// Result codes of the event-file operations; 0 is success.

#include <cstdint>
#include <string_view>

namespace larkstone {

enum enmErrorConstants : std::int32_t {
  LRK_NOT_A_LRK_FILE = 1,
  LRK_INVALID_FILE_FORMAT = 2,
  LRK_FILE_DOES_NOT_EXIST = 3,
  LRK_FILE_READONLY = 4,
  LRK_FILE_ALREADY_EXISTS = 5,  ///< also: an output would replace the file it is made from
  LRK_COULD_NOT_CREATE_FILE = 6,
  LRK_UNKNOWN_FILE_VERSION = 7,           ///< a warning: the event is open all the same
  LRK_COULD_NOT_OPEN_TEMPORARY_FILE = 8,  ///< also: the event is closed, or full
  LRK_COULD_NOT_DELETE_TEMPORARY_FILE = 9,
  LRK_COULD_NOT_COPY_TEMPORARY_FILE = 10,
  LRK_COULD_NOT_OPEN_FILE = 11,
};

/// The constant's name, and what it means in a few words; empty for other numbers.
std::string_view errorName(std::int32_t code);
std::string_view errorText(std::int32_t code);

}  // namespace larkstone
