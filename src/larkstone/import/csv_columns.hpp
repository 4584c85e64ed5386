#pragma once

// The columns of a delimited result list, whatever language its header is in.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "larkstone/core/types.hpp"

namespace larkstone {

/// What a line may have; further fields are not read. More than the punches of any runner ask for.
inline constexpr int mostCsvFields = 8 * LRK_MAX_LIST;

/// The key (the English column name) of a header text; empty for a text that is not known. Of
/// several columns with that text the last one of the table counts. A text that differs in letter
/// case only is known too, as long as no column has it as it stands.
std::string_view columnKey(std::string_view headerText);

/// The first line of a delimited file.
class CsvHeader {
 public:
  /// Reads the header of a file without reading more than it needs; false when it has no line.
  bool read(const std::string& path);
  /// Takes the header and the line behind it.
  void set(std::string_view header, std::string_view firstRow);

  /// The last character of line 2; where that is none of line 1, the most frequent of ";", "," and
  /// tab there.
  const std::string& delimiter() const { return delimiter_; }
  /// Whether a second line follows.
  bool hasRows() const { return hasRows_; }
  /// The first header text, without quotes.
  std::string_view firstField() const { return text(0); }
  /// "OE0012", "OS0016a", "OE0014_V12": newer exports name their layout in the first field. Empty
  /// for others.
  std::string_view layout() const;
  /// Whether rows are those of a relay: of runners with a combination of courses or, where the
  /// layout is one of the relay programs, of teams with a block of columns for each runner.
  bool isOfRelay() const;
  /// Whether a column is known only by a word of the programs that imitate these lists.
  bool isImitation() const { return isImitation_; }
  bool has(std::string_view key) const { return columns_.contains(key); }
  /// The position of a column from 0; -1 for one that is not present.
  int column(std::string_view key) const;
  /// The header text of a position; empty beyond the last one.
  std::string_view text(int position) const;
  int noOfColumns() const { return static_cast<int>(texts_.size()); }

 private:
  bool hasRows_ = false;
  bool isImitation_ = false;
  std::string delimiter_;
  std::vector<std::string> texts_;
  std::unordered_map<std::string_view, int> columns_;
};

}  // namespace larkstone
