#pragma once

// The lines that a reader of a fixed-column list sees on a page.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkstone {

/// Tells in which line of a page a text of it stands. Positions are asked for in ascending order;
/// an earlier one counts as the last.
class LineCounter {
 public:
  explicit LineCounter(std::string_view page) : counted_(page.data()) {}

  /// The line, from 1, of a text within the page.
  int lineOf(std::string_view text);

 private:
  const char* counted_;
  int line_ = 1;
};

/// A line without tags, its references decoded, and its number in the file.
struct PageLine {
  int number;
  std::string text;
};

/// The lines of the page's preformatted blocks, or all lines of a page without any (a plain text
/// list). A tag may run over a line end, as pages saved by a browser have it. Lines that are blank
/// are left out; hard blanks count as blanks. Texts are bytes of windows-1252.
std::vector<PageLine> pageLines(std::string_view page);

/// The lines of a part of a page, preformatted or not.
std::vector<PageLine> plainLines(std::string_view part);

/// Whether a text occurs on a page, in any case. The text is passed in lower case.
bool occursIn(std::string_view page, std::string_view lowerCase);

/// Whether a page has a preformatted block.
bool hasPreformattedBlock(std::string_view page);

/// An HTML fragment as one line of UTF-8 with single blanks, as a browser shows it.
std::string lineText(std::string_view html);

/// A word of a line; `end` is the column behind its last character.
struct Word {
  std::string_view text;
  std::size_t end;

  std::size_t begin() const { return end - text.size(); }
};

/// The words of a line from a column on. The line must outlive them.
std::vector<Word> wordsOf(std::string_view line, std::size_t from = 0);

/// The part of a line between two columns, trimmed; empty behind its end.
std::string_view columnText(std::string_view line, std::size_t from, std::size_t end);

}  // namespace larkstone
