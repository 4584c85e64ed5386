#include "larkstone/import/csv_file.hpp"

#include "larkstone/core/text.hpp"

namespace larkstone {

bool CsvFile::read(const std::string& path) {
  fields_.clear();
  std::string_view header;
  std::string_view row;
  if (!lines_.read(path) || !lines_.next(header)) return false;
  lines_.next(row);
  header_.set(header, row);
  lines_.rewind();
  return lines_.next(header);
}

bool CsvFile::next() {
  std::string_view line;
  while (lines_.next(line)) {
    if (split(line)) return true;
  }
  return false;
}

// False for a row of nothing but delimiters, as spreadsheets leave them.
bool CsvFile::split(std::string_view line) {
  fields_.clear();
  splitter_ = CsvFields(line, header_.delimiter());
  bool any = false;
  while (!splitter_.atEnd()) {
    fields_.push_back(trimmed(splitter_.next()));
    any = any || !fields_.back().empty();
  }
  return any;
}

}  // namespace larkstone
