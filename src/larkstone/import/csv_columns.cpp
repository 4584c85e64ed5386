#include "larkstone/import/csv_columns.hpp"

#include <algorithm>
#include <cctype>
#include <unordered_set>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/scan_file.hpp"

namespace larkstone {

namespace {

struct Column {
  std::string_view key;
  std::string_view headers;  // each entry between bars
};

// Headers of programs that run in other code pages stand as they read in the Western one. The
// order matters: of two columns with the same header the later one is meant.
constexpr Column columns[] = {
    {"Read at",
     "|Gelesen um|Read at|Läst|Heure lecture|Letto alle ore|Naèteno v|Leolvasva|Læst|ÔÚ...¶ÁÈ¡|"
     "Ïðî÷èòàíî â|Zczytany o:|Èitaj od|leído a las|Luettu|"},
    {"Combination",
     "|Kombination|Combination|Banalternativ|Gaffling|Combinaison|Combinazione|Kombinace|"
     "Kombináció||Gafling|Êîìáèíàöèÿ|Kombinacja|Kombinacija|Combinación|Hajontavaihtoehto|"},
    {"Long", "|Lang|Long|Lång|Lungo|Dlouhý|Hosszú|³¤|Äëèííûé|D³uga nazwa|Dugo|Largo|Pitkä|"},
    {"Leg", "|Strecke||"},
};

// Every header text with its key, once as it stands and once in lower case.
struct HeaderIndex {
  HeaderIndex() {
    for (const Column& column : columns) {
      std::string_view headers = column.headers.substr(1);
      while (!headers.empty()) {
        const std::string_view header = popField(headers, "|");
        exact[std::string(header)] = column.key;
        lowerCase[lowered(header)] = column.key;
      }
    }
  }
  std::unordered_map<std::string, std::string_view> exact;
  std::unordered_map<std::string, std::string_view> lowerCase;
};

bool isLetterOrDigit(char byte) {
  const auto c = static_cast<unsigned char>(byte);
  return std::isalnum(c) != 0 || c >= 0xC0;
}

std::string delimiterOf(std::string_view header, std::string_view firstRow) {
  if (!firstRow.empty()) {
    const char last = firstRow.back();
    const bool quote = last == '"' || last == '\'';
    if (!isLetterOrDigit(last) && !quote && header.find(last) != std::string_view::npos) {
      return std::string(1, last);
    }
  }
  char best = ';';
  for (const char candidate : {';', ',', '\t'}) {
    const auto count = [&](char c) { return std::count(header.begin(), header.end(), c); };
    if (count(candidate) > count(best)) best = candidate;
  }
  return std::string(1, best);
}

}  // namespace

std::string_view columnKey(std::string_view headerText) {
  static const HeaderIndex index;
  const auto exact = index.exact.find(std::string(headerText));
  if (exact != index.exact.end()) return exact->second;
  const auto similar = index.lowerCase.find(lowered(headerText));
  return similar == index.lowerCase.end() ? std::string_view() : similar->second;
}

bool CsvHeader::read(const std::string& path) {
  columns_.clear();
  firstField_.clear();
  ScanFile file(path);
  std::string line;
  std::string row;
  if (!file.readLine(line)) return false;
  hasRows_ = file.readLine(row);
  if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
  delimiter_ = delimiterOf(line, row);
  const std::string header = isUtf8(line) ? line : utf8FromWindows1252(line);

  CsvFields fields(header, delimiter_);
  std::unordered_set<std::string> seen;
  for (int position = 0; !fields.atEnd(); ++position) {
    std::string text = fields.next();
    if (position == 0) firstField_ = text;
    // A second column of one name is known with an asterisk, further ones not at all.
    if (!seen.insert(text).second && !seen.insert(text += '*').second) continue;
    const std::string_view key = columnKey(text);
    if (!key.empty()) columns_[key] = position;
  }
  return true;
}

int CsvHeader::column(std::string_view key) const {
  const auto found = columns_.find(key);
  return found == columns_.end() ? -1 : found->second;
}

}  // namespace larkstone
