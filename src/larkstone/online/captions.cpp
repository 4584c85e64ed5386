#include "larkstone/online/captions.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

std::string decoded(const std::string& bytes) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(byteOrderMark)) return bytes.substr(byteOrderMark.size());
  return isUtf8(bytes) ? bytes : utf8FromWindows1252(bytes);
}

// Takes what stands before the first of the delimiters off the text, and the delimiter with it.
std::string_view takeUntil(std::string_view& text, std::string_view delimiters) {
  const std::size_t end = std::min(text.find_first_of(delimiters), text.size());
  const std::string_view piece = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return piece;
}

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view pair = text.substr(i, 2);
    if (pair == "\\n") {
      result += "\r\n";
      ++i;
    } else if (pair == "\\t") {
      result += '\t';
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace

const std::string& Captions::text(std::string_view key) const {
  static const std::string missing;
  const auto found = texts_.find(key);
  return found == texts_.end() ? missing : found->second;
}

void Captions::text(std::string_view key, std::string text) {
  texts_.insert_or_assign(std::string(key), std::move(text));
}

bool Captions::load(const std::string& fileName, int languageIndex) {
  std::string bytes;
  if (!readFile(fileName, bytes)) return false;
  const std::string content = decoded(bytes);

  texts_.clear();
  std::string_view rest = content;
  while (!rest.empty()) {
    std::string_view line = takeUntil(rest, "\r\n");
    if (line.empty()) continue;  // also between the CR and the LF of a line end
    const std::string_view key = takeUntil(line, "\t");
    for (int i = 0; i < languageIndex && !line.empty(); ++i) takeUntil(line, "\t");
    text(key, unescaped(takeUntil(line, "\t")));
  }
  return true;
}

}  // namespace larkstone
