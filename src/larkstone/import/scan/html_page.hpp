#pragma once

// Cutting web pages with preformatted lists into blocks, lines and columns. Texts are bytes of
// windows-1252 with line feeds, as TextLines gives them.

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace larkstone {

/// A page or a part of it, read from tag to tag. Tags are known by their names, in any letter case
/// and whatever attributes follow.
///
///     page.readThrough({"h3"});
///     const std::string name = headingText(page.readThrough({"/h3"}));
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

/// The text of a piece of a page: without tags, entities and no-break spaces.
std::string pageText(std::string_view html);
/// The same in one line, trimmed, as UTF-8.
std::string headingText(std::string_view html);

/// The lines of a preformatted piece, as text.
class PageLines {
 public:
  PageLines(std::string_view html, int firstLine) : text_(pageText(html)), number_(firstLine - 1) {}

  /// The next line, empty and false behind the last one. Valid as long as the object.
  bool next(std::string_view& line);
  /// The same without blank lines.
  bool nextWithText(std::string_view& line);
  /// The number of the line last read.
  int number() const { return number_; }

 private:
  std::string text_;
  std::size_t position_ = 0;
  int number_;
};

/// The column that begins at a position from 1, trimmed; what the line has of it.
std::string_view columnOf(std::string_view line, std::size_t first,
                          std::size_t width = std::string_view::npos);

}  // namespace larkstone
