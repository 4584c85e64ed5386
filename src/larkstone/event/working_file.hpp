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

/// A file of a random name, readable by the user alone, that disappears with this
/// object. It stays open, so that nobody can exchange it.
class WorkingFile {
 public:
  /// The folder in native form, with a separator at its end.
  explicit WorkingFile(const std::string& folder);
  ~WorkingFile() { remove(); }
  WorkingFile(const WorkingFile&) = delete;
  WorkingFile& operator=(const WorkingFile&) = delete;

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

  /// Moves the other file over this one, whose bytes are gone then.
  bool replaceBy(WorkingFile& other);
  /// False when the file is still there afterwards.
  bool remove();

 private:
  std::string path_;
  File file_;
  std::int64_t size_ = 0;
};

}  // namespace larkstone
