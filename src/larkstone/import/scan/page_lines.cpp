#include "larkstone/import/scan/page_lines.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_text.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr char hardBlank = '\xA0';

// Takes lines off a page, whose line ends count only outside of tags.
class LineCutter {
 public:
  explicit LineCutter(std::string_view page) : counter_(page) {}

  // The lines of a block of the page.
  void cut(std::string_view block, std::vector<PageLine>& lines) {
    closable_ = true;
    while (!block.empty()) {
      const std::size_t end = lineEnd(block);
      const int number = counter_.lineOf(block);
      std::string text = htmlToText(block.substr(0, end));
      std::replace(text.begin(), text.end(), hardBlank, ' ');
      if (!trimmed(text).empty()) lines.push_back({number, std::move(text)});
      block.remove_prefix(std::min(block.size(), end + 1));
    }
  }

 private:
  // Where the first line of the text ends: at a line feed outside of a tag. A "<" that nothing
  // closes is looked for once only.
  std::size_t lineEnd(std::string_view text) {
    for (std::size_t at = 0;;) {
      at = text.find_first_of("<\n", at);
      if (at == nowhere) return text.size();
      if (text[at] == '\n') return at;
      const auto close = closable_ ? text.find('>', at) : nowhere;
      closable_ = close != nowhere;
      at = closable_ ? close : at + 1;
    }
  }

  LineCounter counter_;
  bool closable_ = true;
};

}  // namespace

int LineCounter::lineOf(std::string_view text) {
  if (text.data() > counted_) {
    line_ += static_cast<int>(std::count(counted_, text.data(), '\n'));
    counted_ = text.data();
  }
  return line_;
}

std::vector<PageLine> pageLines(std::string_view page) {
  if (!hasPreformattedBlock(page)) return plainLines(page);
  std::vector<PageLine> lines;
  LineCutter cutter(page);
  for (std::string_view rest = page; !rest.empty();) {
    removeThroughNoCase(rest, "<pre");
    std::string_view block = popFieldNoCase(rest, "</pre");
    removeThrough(block, ">");
    cutter.cut(block, lines);
  }
  return lines;
}

std::vector<PageLine> plainLines(std::string_view part) {
  std::vector<PageLine> lines;
  LineCutter(part).cut(part, lines);
  return lines;
}

bool occursIn(std::string_view page, std::string_view lowerCase) {
  return textBeforeNoCase(page, lowerCase).size() < page.size();
}

bool hasPreformattedBlock(std::string_view page) { return occursIn(page, "<pre"); }

std::string lineText(std::string_view html) {
  std::string plain = htmlToText(html);
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c == '\n' || c == '\t' || c == hardBlank; },
      ' ');
  std::string text;
  for (const Word& word : wordsOf(plain)) text.append(text.empty() ? "" : " ").append(word.text);
  return utf8FromWindows1252(text);
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
