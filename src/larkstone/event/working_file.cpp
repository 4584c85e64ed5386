#include "larkstone/event/working_file.hpp"

#include <algorithm>

namespace larkstone {

bool transfer(const File& source, std::int64_t offset, std::int64_t length, const ByteSink& sink) {
  constexpr std::int64_t piece = std::int64_t{1} << 20;
  while (length > 0) {
    const std::string bytes = source.readAt(offset, std::min(length, piece));
    if (bytes.empty() || !sink(bytes)) return false;
    offset += static_cast<std::int64_t>(bytes.size());
    length -= static_cast<std::int64_t>(bytes.size());
  }
  return true;
}

bool WorkingFile::append(std::string_view bytes) {
  if (!file_.isOpen() || !file_.writeAt(size_, bytes)) return false;
  size_ += static_cast<std::int64_t>(bytes.size());
  return true;
}

void WorkingFile::cutTo(std::int64_t size) {
  file_.truncate(size);
  size_ = size;
}

bool WorkingFile::read(std::int64_t offset, std::int64_t length, std::string& bytes) const {
  bytes = file_.readAt(offset, length);
  return static_cast<std::int64_t>(bytes.size()) == length;
}

}  // namespace larkstone
