#include "larkstone/import/csv_file.hpp"

#include <algorithm>

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
  while (lines_.next(row_.text)) {
    row_.line = lines_.number();
    if (split()) return true;
  }
  return false;
}

void CsvFile::row(const CsvRow& row) {
  row_ = row;
  split();
}

// False for a row of nothing but delimiters, as spreadsheets leave them.
bool CsvFile::split() {
  fields_.clear();
  splitter_ = CsvFields(row_.text, header_.delimiter());
  bool any = false;
  while (!splitter_.atEnd() && noOfFields() < mostCsvFields) {
    fields_.push_back(trimmed(splitter_.next()));
    any = any || !fields_.back().empty();
  }
  return any;
}

void CsvRowGroups::add(std::string_view key, const CsvRow& row) {
  const auto [found, isNew] = index_.try_emplace(std::string(key), groups_.size());
  if (isNew) groups_.push_back({std::string(key), {}});
  groups_[found->second].rows.push_back(row);
  ++noOfRows_;
}

void CsvRowGroups::sortByKey() {
  std::sort(groups_.begin(), groups_.end(),
            [](const Group& a, const Group& b) { return a.key < b.key; });
  index_.clear();
}

}  // namespace larkstone
