#pragma once

// Text lists, line by line.

#include <cstddef>
#include <string>
#include <string_view>

namespace larkstone {

/// The text of a list, read at once; its encoding is decided for the whole file. Lines end with a
/// line feed (carriage returns before it belong to the end) or a carriage return alone; the last
/// one may lack its end. A NUL byte of a damaged file counts as a blank.
///
///     TextLines lines;
///     if (!lines.read(job.fileName)) return LRK_IMPORT_...;
///     for (std::string_view line; lines.next(line);) { ... run.progress(lines.number(),
///     lines.count()) }
class TextLines {
 public:
  enum class Form {
    utf8,
    windows1252,  ///< one byte a character, for lists in fixed columns
  };

  /// False when the file cannot be read.
  bool read(const std::string& path, Form form = Form::utf8);

  /// The next line; false (and an empty line) behind the last one. Valid as long as the object.
  bool next(std::string_view& line);
  /// The number of the line last read, from 1.
  int number() const { return number_; }
  /// How many lines there are.
  int count() const { return count_; }
  /// Back to before the first line.
  void rewind();

  /// All lines, each ended by a line feed.
  std::string_view text() const { return text_; }

 private:
  std::string text_;
  std::size_t position_ = 0;
  int number_ = 0;
  int count_ = 0;
};

}  // namespace larkstone
