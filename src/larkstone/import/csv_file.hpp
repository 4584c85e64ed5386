#pragma once

// A delimited result list, row by row.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "larkstone/import/csv_columns.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/text_lines.hpp"

namespace larkstone {

/// A row to come back to.
struct CsvRow {
  std::string_view text;
  int line = 0;
};

/// A list with its header and the fields of the row last read. Texts are UTF-8 and valid until the
/// next row; a field beyond the end of its row is empty.
class CsvFile {
 public:
  /// False for a file without a line.
  bool read(const std::string& path);

  const CsvHeader& header() const { return header_; }
  /// Reads the next row that holds anything; false behind the last one.
  bool next();
  /// The row last read, valid as long as the file; reads it again.
  CsvRow row() const { return row_; }
  void row(const CsvRow& row);
  /// The line of the row, and how many lines there are.
  int line() const { return row_.line; }
  int noOfLines() const { return lines_.count(); }

  int noOfFields() const { return static_cast<int>(fields_.size()); }
  std::string_view field(int position) const {
    if (position < 0 || position >= noOfFields()) return {};
    return fields_[static_cast<std::size_t>(position)];
  }

 private:
  bool split();

  TextLines lines_;
  CsvHeader header_;
  CsvRow row_;
  std::vector<std::string_view> fields_;
  CsvFields splitter_{{}, {}};
};

/// Rows that belong together wherever they stand in the list, for reading one group after another:
/// what was read of a whole list could take far more room than the list.
class CsvRowGroups {
 public:
  struct Group {
    std::string key;
    std::vector<CsvRow> rows;
  };

  void add(std::string_view key, const CsvRow& row);
  /// In the order of their first rows.
  const std::vector<Group>& groups() const { return groups_; }
  void sortByKey();
  int noOfRows() const { return noOfRows_; }

 private:
  std::vector<Group> groups_;
  std::unordered_map<std::string, std::size_t> index_;
  int noOfRows_ = 0;
};

}  // namespace larkstone
