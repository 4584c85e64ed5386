#pragma once

// The file that an export writes, and the writers of the formats.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "larkstone/platform/file.hpp"

namespace larkstone {

class LRKEvent;

/// A file written in large pieces that appears whole or not at all.
class ExportFile {
 public:
  explicit ExportFile(const std::string& path) : file_(path) {}

  bool isOpen() const { return file_.isOpen(); }
  void write(std::string_view bytes) {
    pending_ += bytes;
    if (pending_.size() >= pieceSize) flush();
  }
  bool commit() {
    flush();
    return file_.commit();
  }

 private:
  static constexpr std::size_t pieceSize = 1 << 16;

  void flush() {
    file_.write(pending_);  // commit() remembers a failure
    pending_.clear();
  }

  WholeFile file_;
  std::string pending_;
};

/// Each writes an open event and returns enmErrorConstants; failures of the file are left to its
/// commit().
std::int32_t writeLrk3(LRKEvent& event, ExportFile& file);
std::int32_t writeIofXml2(LRKEvent& event, ExportFile& file);
std::int32_t writeIofXml3(LRKEvent& event, ExportFile& file);

}  // namespace larkstone
