#pragma once

// A delimited result list, row by row.

#include <string>
#include <string_view>
#include <vector>

#include "larkstone/import/csv_columns.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/text_lines.hpp"

namespace larkstone {

/// A list with its header and the fields of the row last read. Texts are UTF-8 and valid until the
/// next row; a field beyond the end of its row is empty.
class CsvFile {
 public:
  /// False for a file without a line.
  bool read(const std::string& path);

  const CsvHeader& header() const { return header_; }
  /// Reads the next row that holds anything; false behind the last one.
  bool next();
  /// The line of the row, and how many lines there are.
  int line() const { return lines_.number(); }
  int noOfLines() const { return lines_.count(); }

  int noOfFields() const { return static_cast<int>(fields_.size()); }
  std::string_view field(int position) const {
    if (position < 0 || position >= noOfFields()) return {};
    return fields_[static_cast<std::size_t>(position)];
  }

 private:
  bool split(std::string_view line);

  TextLines lines_;
  CsvHeader header_;
  std::vector<std::string_view> fields_;
  CsvFields splitter_{{}, {}};
};

}  // namespace larkstone
