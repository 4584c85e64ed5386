#pragma once

// What each format is recognised by. A detector returns the code of its format (or of a variant of
// it), 0 for a file of another kind.

#include <cstdint>
#include <string>

namespace larkstone {

/// A file in question. All detectors look at it strictly first; a file that none of them knows gets
/// a tolerant second look, past byte-order marks, quotes and newer headers.
struct FileProbe {
  std::string path;
  bool tolerant = false;
};

using Detector = std::int32_t (*)(const FileProbe&);

std::int32_t detectCsv(const FileProbe& probe);
std::int32_t detectIofXml(const FileProbe& probe);
std::int32_t detectSportSoftwareSplits(const FileProbe& probe);
std::int32_t detectOla(const FileProbe& probe);
std::int32_t detectETiming(const FileProbe& probe);
std::int32_t detectPekkaPirilaHtml(const FileProbe& probe);
std::int32_t detectStandardText(const FileProbe& probe);
std::int32_t detectSolv(const FileProbe& probe);
std::int32_t detectPekkaPirilaXml(const FileProbe& probe);

/// The line by which SportSoftware names itself on its pages: "OE2002 ©".
std::int32_t detectSportSoftwareCredit(const FileProbe& probe);
std::int32_t detectPekkaPirilaStartlist(const FileProbe& probe);

}  // namespace larkstone
