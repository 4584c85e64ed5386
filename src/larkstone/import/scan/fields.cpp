#include "larkstone/import/scan/fields.hpp"

#include <algorithm>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;

std::size_t find(std::string_view text, std::string_view delimiter) {
  if (delimiter.size() == 1) return text.find(delimiter.front());
  return delimiter.empty() ? nowhere : text.find(delimiter);
}

std::size_t findNoCase(std::string_view text, std::string_view delimiter) {
  if (delimiter.empty()) return nowhere;
  const auto* const found =
      std::search(text.begin(), text.end(), delimiter.begin(), delimiter.end(),
                  [](char a, char b) { return lowered1252(a) == b; });
  return found == text.end() ? nowhere : static_cast<std::size_t>(found - text.begin());
}

using Find = std::size_t (*)(std::string_view, std::string_view);

template <Find find>
std::string_view before(std::string_view text, std::string_view delimiter) {
  return text.substr(0, find(text, delimiter));
}

template <Find find>
void removed(std::string_view& text, std::string_view delimiter) {
  const auto at = find(text, delimiter);
  text = at == nowhere ? text.substr(text.size()) : text.substr(at + delimiter.size());
}

template <Find find>
std::string_view popped(std::string_view& text, std::string_view delimiter) {
  const auto at = find(text, delimiter);
  const std::string_view field = text.substr(0, at);
  text.remove_prefix(at == nowhere ? text.size() : at + delimiter.size());
  return field;
}

template <Find find>
int counted(std::string_view text, std::string_view delimiter) {
  int count = 0;
  for (auto at = find(text, delimiter); at != nowhere; at = find(text, delimiter)) {
    text.remove_prefix(at + delimiter.size());
    ++count;
  }
  return count;
}

// The end of the quoted field that the line begins with: the position behind the closing quote,
// where the delimiter or the end of the line must follow. Nowhere when nothing closes it.
std::size_t quotedEnd(std::string_view line, std::string_view delimiter) {
  const char quote = line.front();
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] != quote) continue;
    const std::string_view rest = line.substr(i + 1);
    if (rest.empty() || rest.starts_with(delimiter)) return i + 1;
    if (rest.front() == quote) ++i;
  }
  return nowhere;
}

}  // namespace

std::string_view textBefore(std::string_view text, std::string_view delimiter) {
  return before<find>(text, delimiter);
}
void removeThrough(std::string_view& text, std::string_view delimiter) {
  removed<find>(text, delimiter);
}
std::string_view popField(std::string_view& text, std::string_view delimiter) {
  return popped<find>(text, delimiter);
}
int countOccurrences(std::string_view text, std::string_view delimiter) {
  return counted<find>(text, delimiter);
}

std::string_view textBeforeNoCase(std::string_view text, std::string_view delimiter) {
  return before<findNoCase>(text, delimiter);
}
void removeThroughNoCase(std::string_view& text, std::string_view delimiter) {
  removed<findNoCase>(text, delimiter);
}
std::string_view popFieldNoCase(std::string_view& text, std::string_view delimiter) {
  return popped<findNoCase>(text, delimiter);
}
int countOccurrencesNoCase(std::string_view text, std::string_view delimiter) {
  return counted<findNoCase>(text, delimiter);
}

bool containsNoCase(std::string_view text, std::string_view lowerCase) {
  return findNoCase(text, lowerCase) != nowhere;
}

std::string_view nthFieldNoCase(std::string_view& text, std::string_view delimiter, int n) {
  for (int i = 1; i < n && !text.empty(); ++i) removeThroughNoCase(text, delimiter);
  return popFieldNoCase(text, delimiter);
}

std::string_view lastFieldBefore(std::string_view text, std::string_view delimiter, int endPos) {
  text = text.substr(0, static_cast<std::size_t>(std::max(endPos, 0)));
  const auto at = delimiter.empty() ? nowhere : text.rfind(delimiter);
  return at == nowhere ? text : text.substr(at + delimiter.size());
}

bool isPrefixNoCase(std::string_view a, std::string_view b) {
  const std::size_t length = std::min(a.size(), b.size());
  return std::equal(a.begin(), a.begin() + length, b.begin(),
                    [](char x, char y) { return lowered1252(x) == lowered1252(y); });
}

std::string_view CsvFields::next() {
  constexpr std::string_view quotes = "\"'";
  const auto quote = rest_.empty() ? nowhere : quotes.find(rest_.front());
  const bool quoted = quote != nowhere && closes_[quote];
  const auto end = quoted ? quotedEnd(rest_, delimiter_) : nowhere;
  if (end == nowhere) {
    // Looked for once a line, or a line of opening quotes would be read again for each of them.
    if (quoted) closes_[quote] = false;
    return popField(rest_, delimiter_);
  }
  const std::string_view field = unquoted(rest_.substr(0, end));
  rest_.remove_prefix(std::min(rest_.size(), end + delimiter_.size()));
  return field;
}

std::string_view CsvFields::unquoted(std::string_view field) {
  const char quote = field.front();
  const std::string_view inside = field.substr(1, field.size() - 2);
  const char doubled[] = {quote, quote, '\0'};
  if (inside.find(doubled) == nowhere) return inside;
  // No more than the rest of the line comes behind, so that what was handed out stays in place.
  if (texts_.empty()) texts_.reserve(rest_.size());
  const std::size_t begin = texts_.size();
  for (std::size_t i = 0; i < inside.size(); ++i) {
    texts_ += inside[i];
    if (inside.substr(i).starts_with(doubled)) ++i;
  }
  return std::string_view(texts_).substr(begin);
}

}  // namespace larkstone
