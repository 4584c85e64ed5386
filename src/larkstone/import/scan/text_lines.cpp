#include "larkstone/import/scan/text_lines.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/import/scan/text_encoding.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

// How many bytes end the line at a carriage return. Some pages were stored with two of them before
// each line feed.
std::size_t lineEndLength(std::string_view rest) {
  if (rest.starts_with("\r\r\n")) return 3;
  return rest.starts_with("\r\n") ? 2 : 1;
}

// Ends every line by one line feed, in place.
void unifyLineEnds(std::string& text) {
  const std::string_view all(text);
  std::size_t to = all.find('\r');
  for (std::size_t from = to; from < all.size();) {
    from += lineEndLength(all.substr(from));
    text[to++] = '\n';
    const std::size_t next = std::min(all.find('\r', from), all.size());
    std::copy(all.begin() + from, all.begin() + next,
              text.begin() + static_cast<std::ptrdiff_t>(to));
    to += next - from;
    from = next;
  }
  if (to < text.size()) text.resize(to);
  if (!text.empty() && text.back() != '\n') text += '\n';
}

}  // namespace

bool TextLines::read(const std::string& path, Form form) {
  text_.clear();
  count_ = 0;
  rewind();
  std::string bytes;
  if (!readFile(path, bytes)) return false;
  text_ = form == Form::utf8 ? utf8Text(std::move(bytes)) : windows1252Text(std::move(bytes));
  std::replace(text_.begin(), text_.end(), '\0', ' ');
  unifyLineEnds(text_);
  count_ = static_cast<int>(std::count(text_.begin(), text_.end(), '\n'));
  return true;
}

bool TextLines::next(std::string_view& line) {
  line = {};
  if (position_ >= text_.size()) return false;
  const std::size_t end = text_.find('\n', position_);
  line = std::string_view(text_).substr(position_, end - position_);
  position_ = end + 1;
  ++number_;
  return true;
}

void TextLines::rewind() {
  position_ = 0;
  number_ = 0;
}

}  // namespace larkstone
