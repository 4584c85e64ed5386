#pragma once

// The private file in which an open event keeps its records.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "larkstone/platform/file.hpp"

namespace larkstone {

/// Takes the next bytes; false ends the transfer.
using ByteSink = std::function<bool(std::string_view)>;

/// Hands a range of a file to the sink, piece by piece. False when the range is not all there or
/// the sink refuses.
bool transfer(const File& source, std::int64_t offset, std::int64_t length, const ByteSink& sink);

/// A file without a name, for this object alone. It is gone with it, also when the program is
/// killed: what competitors' data it holds nobody finds afterwards.
class WorkingFile {
 public:
  /// The folder in native form, with a separator at its end.
  explicit WorkingFile(const std::string& folder)
      : file_(freshFileName(folder), File::Mode::vanishing) {}

  bool isOpen() const { return file_.isOpen(); }
  std::int64_t size() const { return size_; }

  /// Writes behind the last byte; false when not all of it could be written.
  bool append(std::string_view bytes);
  /// Takes away what stands behind that size, so that it does not fill the disk.
  void cutTo(std::int64_t size);
  bool read(std::int64_t offset, std::int64_t length, std::string& bytes) const;
  bool transferTo(std::int64_t offset, std::int64_t length, const ByteSink& sink) const {
    return transfer(file_, offset, length, sink);
  }

 private:
  File file_;
  std::int64_t size_ = 0;
};

}  // namespace larkstone
