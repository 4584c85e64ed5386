#pragma once

// Taking web pages with result lists apart: elements, lines, columns and words. Texts are bytes of
// windows-1252 with line feeds, as TextLines gives them.

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace larkstone {

/// A page or a part of it, read from tag to tag. Tags are known by their names, in any letter case
/// and whatever attributes follow.
///
///     page.readThrough({"h3"});
///     const std::string name = lineText(page.readThrough({"/h3"}));
class HtmlPage {
 public:
  /// The number of the first line.
  explicit HtmlPage(std::string_view html, int line = 1) : rest_(html), line_(line) {}

  /// What stands before the next of the tags (lower-case names: "pre", "/pre"); goes on behind it.
  /// Without one, everything to the end.
  std::string_view readThrough(std::initializer_list<std::string_view> tags);
  /// The name of the tag it is behind; empty at the start and at the end.
  std::string_view tag() const { return tag_; }
  /// The number of the line it is in.
  int line() const { return line_; }

 private:
  std::string_view rest_;
  std::string_view tag_;
  int line_;
};

/// Whether a page has a tag of that name.
bool hasTag(std::string_view page, std::string_view name);

/// The text of the first such element ("h1"); empty without one.
std::string elementText(std::string_view page, std::string_view name);

/// The cells of a table row. Their end tags may be missing.
std::vector<std::string_view> cellsOf(std::string_view row);

/// The text of a piece of a page: without tags, entities and no-break spaces.
std::string pageText(std::string_view html);
/// The same as one line of UTF-8 with single blanks, as a browser shows it.
std::string lineText(std::string_view html);

/// The text of a line and its number in the file.
struct PageLine {
  int number;
  std::string text;
};

/// The lines of a piece of a page. A tag may run over a line end, as pages saved by a browser have
/// it.
std::vector<PageLine> allLinesOf(std::string_view html, int firstLine);
/// The same without blank lines.
std::vector<PageLine> linesOf(std::string_view html, int firstLine);
/// Such lines of the page's preformatted blocks, or of the whole page where it has none (a plain
/// text list).
std::vector<PageLine> preformattedLines(std::string_view page);

/// A word of a line; `end` is the column behind its last character.
struct Word {
  std::string_view text;
  std::size_t end;

  std::size_t begin() const { return end - text.size(); }
};

/// The words of a line from a column on. The line must outlive them.
std::vector<Word> wordsOf(std::string_view line, std::size_t from = 0);

/// The part of a line between two columns, trimmed; empty behind its end.
std::string_view columnText(std::string_view line, std::size_t from,
                            std::size_t end = std::string_view::npos);

}  // namespace larkstone
