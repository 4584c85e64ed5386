#include "larkstone/import/scan/html_page.hpp"

#include <algorithm>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/html_text.hpp"

namespace larkstone {

namespace {

bool isNamePart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Whether the text that follows a "<" is the tag of that name.
bool isTag(std::string_view text, std::string_view name) {
  if (text.size() < name.size()) return false;
  if (text.size() > name.size() && isNamePart(text[name.size()])) return false;
  const auto sameLetter = [](char a, char b) { return a == lowered1252(b); };
  return std::equal(name.begin(), name.end(), text.begin(), sameLetter);
}

}  // namespace

std::string_view HtmlPage::readThrough(std::initializer_list<std::string_view> tags) {
  const std::string_view all = rest_;
  std::size_t start = all.find('<');
  std::size_t end = all.size();
  tag_ = {};
  for (; start < all.size() && tag_.empty(); start = all.find('<', start + 1)) {
    const std::string_view behind = all.substr(start + 1);
    const auto found = std::find_if(tags.begin(), tags.end(),
                                    [&](std::string_view name) { return isTag(behind, name); });
    if (found == tags.end()) continue;
    tag_ = *found;
    end = std::min(all.find('>', start), all.size() - 1) + 1;
    break;
  }
  line_ += static_cast<int>(std::count(all.begin(), all.begin() + end, '\n'));
  rest_ = all.substr(end);
  return all.substr(0, start);
}

std::string pageText(std::string_view html) {
  std::string text = htmlToText(html);
  std::replace(text.begin(), text.end(), '\xA0', ' ');
  return text;
}

std::string headingText(std::string_view html) {
  const std::string text = pageText(html);
  std::string line;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view part = trimmed(rest.substr(0, end));
    if (!line.empty() && !part.empty()) line += ' ';
    line += part;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return utf8FromWindows1252(line);
}

bool PageLines::next(std::string_view& line) {
  line = {};
  if (position_ >= text_.size()) return false;
  const std::size_t end = std::min(text_.find('\n', position_), text_.size());
  line = std::string_view(text_).substr(position_, end - position_);
  position_ = end + 1;
  ++number_;
  return true;
}

bool PageLines::nextWithText(std::string_view& line) {
  while (next(line)) {
    if (!trimmed(line).empty()) return true;
  }
  return false;
}

std::string_view columnOf(std::string_view line, std::size_t first, std::size_t width) {
  return first > line.size() ? std::string_view() : trimmed(line.substr(first - 1, width));
}

}  // namespace larkstone
