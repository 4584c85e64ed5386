#include "larkstone/import/scan/scan_file.hpp"

#include <algorithm>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr std::int64_t chunkSize = 65536;
constexpr auto nowhere = std::string_view::npos;

bool isLineEnd(std::string_view delimiter) { return delimiter == "\r\n"; }

std::size_t blockLength(int blockSize) { return static_cast<std::size_t>(std::max(blockSize, 1)); }

// A search over blocks: what was read last is kept as far as a text could straddle two blocks.
class Window {
 public:
  explicit Window(std::string_view text) : text_(lowered1252(text)) {}

  /// Takes the next block. How many of the bytes seen so far stand behind the text's first byte, or
  /// nowhere while it was not met.
  std::size_t add(std::string_view block) {
    const std::size_t keep = std::min(window_.size(), text_.empty() ? 0 : text_.size() - 1);
    window_.erase(0, window_.size() - keep);
    window_ += lowered1252(block);
    const auto found = window_.find(text_);
    return found == nowhere ? nowhere : window_.size() - found;
  }
  std::size_t length() const { return text_.size(); }

 private:
  std::string text_;
  std::string window_;
};

}  // namespace

std::string_view ScanFile::bytesAt(std::int64_t position, std::size_t atMost) {
  const std::int64_t offset = position - chunkStart_;
  if (offset < 0 || offset >= static_cast<std::int64_t>(chunk_.size())) {
    chunk_ = file_.readAt(position - 1, chunkSize);
    chunkStart_ = position;
  }
  return std::string_view(chunk_).substr(static_cast<std::size_t>(position - chunkStart_), atMost);
}

std::string ScanFile::readUntil(std::string_view delimiter, int blockSize) {
  const bool wholeLineEnd = isLineEnd(delimiter);
  if (wholeLineEnd) delimiter = "\n";
  const std::size_t block = blockLength(blockSize);
  const std::int64_t start = position_;
  Window window(delimiter);
  std::string text;
  while (position_ <= size_) {
    const std::string_view bytes = bytesAt(position_, block);
    if (bytes.empty()) break;
    text += bytes;
    position_ += static_cast<std::int64_t>(bytes.size());
    const auto behind = window.add(bytes);
    if (behind == nowhere) continue;
    text.resize(text.size() - behind);
    position_ = start + static_cast<std::int64_t>(text.size() + delimiter.size());
    if (wholeLineEnd && text.ends_with('\r')) text.pop_back();
    return text;
  }
  position_ = std::max(position_, size_ + 1);
  return text;
}

void ScanFile::skipPast(std::string_view delimiter, int blockSize) {
  if (isLineEnd(delimiter)) delimiter = "\n";
  Window window(delimiter);
  while (position_ <= size_) {
    const std::string_view bytes = bytesAt(position_, blockLength(blockSize));
    if (bytes.empty()) break;
    position_ += static_cast<std::int64_t>(bytes.size());
    const auto behind = window.add(bytes);
    if (behind == nowhere) continue;
    position_ -= static_cast<std::int64_t>(behind) - static_cast<std::int64_t>(delimiter.size());
    return;
  }
  position_ = std::max(position_, size_ + 1);
}

bool ScanFile::find(std::string_view text, int byteLimit, int blockSize) {
  const std::size_t block = blockLength(blockSize);
  const std::int64_t start = position_;
  Window window(text);
  std::int64_t blockStart = start;
  for (; position_ <= size_ && (byteLimit <= 0 || blockStart - start <= byteLimit);
       blockStart = position_) {
    // A block is whole for the limit's sake, however the bytes arrive.
    const std::int64_t blockEnd = blockStart + static_cast<std::int64_t>(block);
    while (position_ < blockEnd) {
      const auto bytes = bytesAt(position_, static_cast<std::size_t>(blockEnd - position_));
      if (bytes.empty()) break;
      position_ += static_cast<std::int64_t>(bytes.size());
      const auto behind = window.add(bytes);
      if (behind == nowhere) continue;
      position_ -= static_cast<std::int64_t>(behind) - 1;
      return true;
    }
    if (position_ == blockStart) break;
  }
  position_ = byteLimit > 0 ? start + byteLimit : std::max(position_, size_ + 1);
  return false;
}

std::string ScanFile::peek(int length) {
  std::string bytes;
  const auto wanted = static_cast<std::size_t>(std::max(length, 0));
  while (bytes.size() < wanted) {
    const auto next =
        bytesAt(position_ + static_cast<std::int64_t>(bytes.size()), wanted - bytes.size());
    if (next.empty()) break;
    bytes += next;
  }
  return bytes;
}

bool ScanFile::readLine(std::string& line) {
  line.clear();
  bool any = false;
  for (;;) {
    const std::string_view bytes = bytesAt(position_, nowhere);
    if (bytes.empty()) return any;
    any = true;
    const auto end = bytes.find_first_of("\r\n");
    line += bytes.substr(0, end);
    if (end != nowhere) {
      position_ += static_cast<std::int64_t>(end);
      skipLineEnd();
      return true;
    }
    position_ += static_cast<std::int64_t>(bytes.size());
  }
}

void ScanFile::skipLineEnd() {
  // Some pages were stored with two carriage returns before each line feed.
  const std::string end = peek(3);
  const std::string_view text(end);
  if (text.starts_with("\r\r\n")) {
    position_ += 3;
  } else if (text.starts_with("\r\n")) {
    position_ += 2;
  } else {
    position_ += 1;
  }
}

}  // namespace larkstone
