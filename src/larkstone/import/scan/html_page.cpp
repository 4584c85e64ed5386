#include "larkstone/import/scan/html_page.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/html_text.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;

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

// Finds where lines end: at line feeds outside of tags.
class LineEnds {
 public:
  // The end of the text's first line. A "<" that nothing closes is looked for once only.
  std::size_t next(std::string_view text) {
    within_ = 0;
    for (std::size_t at = 0;;) {
      at = text.find_first_of("<\n", at);
      if (at == nowhere) return text.size();
      if (text[at] == '\n') return at;
      const auto close = closable_ ? text.find('>', at) : nowhere;
      closable_ = close != nowhere;
      const std::size_t behind = closable_ ? close : at + 1;
      within_ += static_cast<int>(std::count(text.begin() + std::ptrdiff_t(at),
                                             text.begin() + std::ptrdiff_t(behind), '\n'));
      at = behind;
    }
  }
  // How many line feeds its tags hold.
  int within() const { return within_; }

 private:
  bool closable_ = true;
  int within_ = 0;
};

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

bool hasTag(std::string_view page, std::string_view name) {
  HtmlPage html(page);
  html.readThrough({name});
  return !html.tag().empty();
}

std::string elementText(std::string_view page, std::string_view name) {
  HtmlPage html(page);
  html.readThrough({name});
  const std::string end = "/" + std::string(name);
  return lineText(html.readThrough({end}));
}

std::vector<std::string_view> cellsOf(std::string_view row) {
  std::vector<std::string_view> cells;
  HtmlPage page(row);
  page.readThrough({"td"});
  while (page.tag() == "td") {
    cells.push_back(page.readThrough({"/td", "td"}));
    if (page.tag() == "/td") page.readThrough({"td"});
  }
  return cells;
}

std::string pageText(std::string_view html) {
  std::string text = htmlToText(html);
  std::replace(text.begin(), text.end(), '\xA0', ' ');
  return text;
}

std::string lineText(std::string_view html) {
  std::string plain = pageText(html);
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  std::string text;
  for (const Word& word : wordsOf(plain)) text.append(text.empty() ? "" : " ").append(word.text);
  return utf8FromWindows1252(text);
}

std::vector<PageLine> allLinesOf(std::string_view html, int firstLine) {
  std::vector<PageLine> lines;
  LineEnds ends;
  for (int number = firstLine; !html.empty();) {
    const std::size_t end = ends.next(html);
    lines.push_back({number, pageText(html.substr(0, end))});
    html = html.substr(std::min(html.size(), end + 1));
    number += 1 + ends.within();
  }
  return lines;
}

std::vector<PageLine> linesOf(std::string_view html, int firstLine) {
  std::vector<PageLine> lines = allLinesOf(html, firstLine);
  std::erase_if(lines, [](const PageLine& line) { return trimmed(line.text).empty(); });
  return lines;
}

std::vector<PageLine> preformattedLines(std::string_view page) {
  HtmlPage html(page);
  html.readThrough({"pre"});
  if (html.tag().empty()) return linesOf(page, 1);
  std::vector<PageLine> lines;
  while (!html.tag().empty()) {
    const int firstLine = html.line();
    std::vector<PageLine> block = linesOf(html.readThrough({"/pre"}), firstLine);
    std::move(block.begin(), block.end(), std::back_inserter(lines));
    html.readThrough({"pre"});
  }
  return lines;
}

std::vector<Word> wordsOf(std::string_view line, std::size_t from) {
  std::vector<Word> words;
  for (std::size_t at = line.find_first_not_of(' ', from); at != nowhere;) {
    const std::size_t end = std::min(line.find(' ', at), line.size());
    words.push_back({line.substr(at, end - at), end});
    at = line.find_first_not_of(' ', end);
  }
  return words;
}

std::string_view columnText(std::string_view line, std::size_t from, std::size_t end) {
  if (from >= line.size() || from >= end) return {};
  return trimmed(line.substr(from, end - from));
}

}  // namespace larkstone
