#pragma once

// The formats that can be imported: how each is recognised and who reads it.

#include <cstdint>
#include <span>

#include "larkstone/import/detection.hpp"
#include "larkstone/import/session.hpp"

namespace larkstone {

/// What a detector goes by: the form that a file has in certain places, or words anywhere at its
/// start, which may as well stand in the rows of another list.
enum class Evidence : std::uint8_t { form, words };

struct Format {
  enmImportConstants code;
  Evidence evidence;
  Detector detect;  ///< none: chosen by name only
  Reader read;      ///< none: not read
};

/// Split-time formats that import() takes, in the order of detection.
std::span<const Format> splitTimeFormats();
/// Start lists, in the order of detection.
std::span<const Format> startlistFormats();

/// The reader of any format, also of those with a method of their own only.
Reader readerOf(enmImportConstants code);

}  // namespace larkstone
