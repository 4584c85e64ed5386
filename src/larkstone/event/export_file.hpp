#pragma once

// Where an export goes, and the writers of the formats.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "larkstone/event/export.hpp"

namespace larkstone {

class LRKEvent;

/// Hands on what is written in large pieces.
class ExportFile {
 public:
  explicit ExportFile(ExportSink sink) : sink_(std::move(sink)) {}

  void write(std::string_view bytes) {
    pending_ += bytes;
    if (pending_.size() >= pieceSize) flush();
  }
  /// Hands on the rest; false when not everything was taken.
  bool flush() {
    taken_ = taken_ && sink_(pending_);
    pending_.clear();
    return taken_;
  }

 private:
  static constexpr std::size_t pieceSize = 1 << 16;

  ExportSink sink_;
  std::string pending_;
  bool taken_ = true;
};

/// Each writes what an open event has stored and returns enmErrorConstants; failures of the file
/// are left to its flush().
std::int32_t writeLrk3(const LRKEvent& event, ExportFile& file);
std::int32_t writeIofXml2(const LRKEvent& event, ExportFile& file);
std::int32_t writeIofXml3(const LRKEvent& event, ExportFile& file);

}  // namespace larkstone
