#pragma once

// The formats that can be imported: how each is recognised and who reads it.

#include <cstdint>
#include <span>

#include "larkstone/import/detection.hpp"
#include "larkstone/import/session.hpp"

namespace larkstone {

struct Format {
  enmImportConstants code;
  Detector detect;            ///< none: chosen by name only
  Reader read;                ///< none: not read
  bool isWordSearch = false;  ///< the detector looks for words anywhere at the start of a file
};

/// Split-time formats that import() takes, in the order of detection.
std::span<const Format> splitTimeFormats();
/// Start lists, in the order of detection.
std::span<const Format> startlistFormats();

/// The reader of any format, also of those with a method of their own only.
Reader readerOf(enmImportConstants code);

}  // namespace larkstone
