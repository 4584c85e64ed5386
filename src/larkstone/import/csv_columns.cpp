#include "larkstone/import/csv_columns.hpp"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/code_pages.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/scan_file.hpp"
#include "larkstone/import/scan/text_encoding.hpp"

namespace larkstone {

namespace {

struct Column {
  std::string_view key;
  std::string_view headers;  // with bars between
};

constexpr Column columns[] = {
#define LRK_COLUMN(key, headers) {key, headers},
#define LRK_OTHER_COLUMN(key, headers)
#include "larkstone/import/csv_columns.def"
};

constexpr Column otherColumns[] = {
#define LRK_COLUMN(key, headers)
#define LRK_OTHER_COLUMN(key, headers) {key, headers},
#include "larkstone/import/csv_columns.def"
};

// Header texts with their keys: as they stand, in lower case, and, in lower case, the words of
// other programs. What comes later wins.
class HeaderIndex {
 public:
  HeaderIndex() {
    for (const Column& column : columns) {
      for (const std::string& header : readings(column.headers)) {
        exact_[header] = column.key;
        lowerCase_[lowered(header)] = column.key;
      }
    }
    for (const Column& column : otherColumns) {
      for (const std::string& header : readings(column.headers)) {
        other_[lowered(header)] = column.key;
      }
    }
  }

  std::string_view keyOf(std::string_view headerText) const {
    const std::string_view key = ownKeyOf(headerText);
    if (!key.empty()) return key;
    const auto found = other_.find(lowered(trimmed(headerText)));
    return found == other_.end() ? std::string_view() : found->second;
  }
  bool isOther(std::string_view headerText) const {
    return ownKeyOf(headerText).empty() && !keyOf(headerText).empty();
  }

 private:
  using Index = std::unordered_map<std::string, std::string_view>;

  std::string_view ownKeyOf(std::string_view headerText) const {
    const auto exact = exact_.find(std::string(headerText));
    if (exact != exact_.end()) return exact->second;
    const auto found = lowerCase_.find(lowered(trimmed(headerText)));
    return found == lowerCase_.end() ? std::string_view() : found->second;
  }

  static std::vector<std::string> readings(std::string_view headers) {
    std::vector<std::string> texts;
    const int count = countOccurrences(headers, "|") + 1;
    for (int i = 0; i < count; ++i) {
      const std::string_view header = popField(headers, "|");
      texts.emplace_back(header);
      texts.push_back(westernReading(header));
    }
    return texts;
  }

  Index exact_;
  Index lowerCase_;
  Index other_;
};

const HeaderIndex& headerIndex() {
  static const HeaderIndex index;
  return index;
}

// Neither a letter, a digit nor a quote.
bool isSign(char c) {
  constexpr std::string_view signs = "!#$%&()*+,-./:;<=>?@[\\]^_`{|}~";
  return signs.find(c) != std::string_view::npos;
}

// Rows end with the delimiter, unless a spreadsheet wrote them.
std::string delimiterOf(std::string_view header, std::string_view firstRow) {
  const auto count = [&](char c) { return std::count(header.begin(), header.end(), c); };
  constexpr std::string_view usual = ";,\t";
  char best = usual.front();
  for (const char candidate : usual) {
    if (count(candidate) > count(best)) best = candidate;
  }
  const char last = firstRow.empty() ? best : firstRow.back();
  const bool isUsual = usual.find(last) != std::string_view::npos && count(last) > 0;
  return std::string(1, isUsual || (isSign(last) && count(last) > count(best)) ? last : best);
}

}  // namespace

std::string_view columnKey(std::string_view headerText) { return headerIndex().keyOf(headerText); }

bool CsvHeader::read(const std::string& path) {
  ScanFile file(path);
  std::string line;
  std::string row;
  if (!file.readLine(line)) {
    set({}, {});
    return false;
  }
  const bool hasRows = file.readLine(row);
  set(utf8Text(std::move(line)), row);
  hasRows_ = hasRows;
  return true;
}

void CsvHeader::set(std::string_view header, std::string_view firstRow) {
  columns_.clear();
  texts_.clear();
  isImitation_ = false;
  hasRows_ = !firstRow.empty();
  delimiter_ = delimiterOf(header, firstRow);
  CsvFields fields(header, delimiter_);
  std::unordered_set<std::string> seen;
  while (!fields.atEnd() && noOfColumns() < mostCsvFields) {
    texts_.emplace_back(fields.next());
    std::string text = texts_.back();
    // A second column of one name is known with an asterisk, further ones not at all.
    if (!seen.insert(text).second && !seen.insert(text += '*').second) continue;
    const std::string_view key = columnKey(text);
    if (!key.empty()) columns_[key] = noOfColumns() - 1;
    isImitation_ = isImitation_ || headerIndex().isOther(text);
  }
}

std::string_view CsvHeader::layout() const {
  const std::string_view first = firstField();
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isPart = [&](char c) {
    return isDigit(c) || c == '_' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  };
  const bool named = first.size() > 2 && (first.starts_with("OE") || first.starts_with("OS")) &&
                     isDigit(first[2]) && std::all_of(first.begin(), first.end(), isPart);
  return named ? first : std::string_view();
}

bool CsvHeader::isOfRelay() const {
  if (has("Combination")) return true;
  const auto beginsTeam = [](const std::string& text) { return lowered(text) == "xtra1"; };
  return layout().starts_with("OS") && std::any_of(texts_.begin(), texts_.end(), beginsTeam);
}

int CsvHeader::column(std::string_view key) const {
  const auto found = columns_.find(key);
  return found == columns_.end() ? -1 : found->second;
}

std::string_view CsvHeader::text(int position) const {
  if (position < 0 || position >= noOfColumns()) return {};
  return texts_[static_cast<std::size_t>(position)];
}

}  // namespace larkstone
