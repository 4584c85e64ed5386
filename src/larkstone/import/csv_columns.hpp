#pragma once

// The columns of a delimited result list, whatever language its header is in.

#include <string>
#include <string_view>
#include <unordered_map>

namespace larkstone {

/// The key (the English column name) of a header text; empty for a text that is not known. Of
/// several columns with that text the last one of the table counts. A text that differs in letter
/// case only is known too.
std::string_view columnKey(std::string_view headerText);

/// The first line of a delimited file.
class CsvHeader {
 public:
  /// Reads the header; false when the file has no line.
  bool read(const std::string& path);

  /// The last character of line 2; where that is none of line 1, the most frequent of ";", "," and
  /// tab there.
  const std::string& delimiter() const { return delimiter_; }
  /// Whether a second line follows.
  bool hasRows() const { return hasRows_; }
  /// The first header text, without quotes.
  const std::string& firstField() const { return firstField_; }
  bool has(std::string_view key) const { return columns_.contains(key); }
  /// The position of a column from 0; -1 for one that is not present.
  int column(std::string_view key) const;

 private:
  bool hasRows_ = false;
  std::string delimiter_;
  std::string firstField_;
  std::unordered_map<std::string_view, int> columns_;
};

}  // namespace larkstone
