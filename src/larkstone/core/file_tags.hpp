#pragma once

// The tag vocabulary of the event file. The same numbers are the keys of getPropertyByTag() and
// setPropertyByTag() on events, categories, runners and derived courses.

#include <cstdint>

namespace larkstone {

enum enmFileTag : std::uint8_t {
#define LRK_TAG(number, name, encoding) name = number,
#include "larkstone/core/file_tags.def"
};

/// How the value behind a tag byte is laid out in the event file.
enum class TagEncoding : std::uint8_t {
  unknown,      ///< not a tag of the vocabulary
  none,         ///< no value
  byte,         ///< one byte
  flag255,      ///< a Boolean byte, written as 255 or 0
  flag1,        ///< a Boolean byte, written as 1 or 0
  integer,      ///< 16-bit signed
  longInteger,  ///< 32-bit signed
  single,       ///< IEEE-754 single
  date,         ///< IEEE-754 double, a day number
  text,         ///< integer byte count, then windows-1252 bytes
  block,        ///< long byte count, then that many bytes
  punchList,    ///< integer count, then (integer code, 3-byte time) each
  pairList,     ///< integer count, then two integers each
  codeList,     ///< integer count, then one integer each
};

constexpr TagEncoding encodingOf(enmFileTag tag) {
  switch (tag) {
#define LRK_TAG(number, name, encoding) \
  case name:                            \
    return TagEncoding::encoding;
#include "larkstone/core/file_tags.def"
  }
  return TagEncoding::unknown;
}

}  // namespace larkstone
