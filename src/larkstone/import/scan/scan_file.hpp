#pragma once

// Searching and reading large files block by block, without loading them.

#include <cstdint>
#include <string>
#include <string_view>

#include "larkstone/platform/file.hpp"

namespace larkstone {

/// An open file with a read position, counted in bytes from 1. What it returns are the bytes of the
/// file; searches disregard the case of windows-1252 letters.
class ScanFile {
 public:
  explicit ScanFile(const std::string& path) : file_(path, File::Mode::read), size_(file_.size()) {}

  std::int64_t size() const { return size_; }
  std::int64_t position() const { return position_; }
  void position(std::int64_t position) { position_ = position; }

  /// What stands before the next delimiter; the position is left behind the delimiter. Without one
  /// everything to the end. A delimiter of carriage return and line feed also ends at a line feed
  /// alone.
  std::string readUntil(std::string_view delimiter, int blockSize = 512);
  /// Leaves the position behind the next delimiter, or behind the end of the file.
  void skipPast(std::string_view delimiter, int blockSize = 512);
  /// Whether the text occurs. A block is read as long as no more than byteLimit bytes were read
  /// before it (0 or less: to the end of the file). Leaves the position one byte behind the start
  /// of the text, or byteLimit bytes further on (the end of the file without a limit).
  bool find(std::string_view text, int byteLimit, int blockSize);

  /// Up to `length` bytes from the position, without moving it.
  std::string peek(int length);

  /// The next line without its end (line feed, carriage returns before it, or a carriage return
  /// alone); false at the end of the file.
  bool readLine(std::string& line);

 private:
  /// Bytes from a position (at most `atMost`, at least one unless the file ends there). Valid until
  /// the next call.
  std::string_view bytesAt(std::int64_t position, std::size_t atMost);
  void skipLineEnd();

  File file_;
  std::int64_t size_ = 0;
  std::int64_t position_ = 1;
  std::string chunk_;
  std::int64_t chunkStart_ = 1;
};

}  // namespace larkstone
