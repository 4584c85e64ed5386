#include "larkstone/import/readers/split_list.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/import/csv_columns.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr std::string_view digits = "0123456789";
constexpr std::size_t resultWidth = 8;  // at least; a blank stands before it

bool allDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of(digits) == nowhere;
}

// A row of the list that only holds controls: where it would be a runner's there is nothing.
bool isControlRow(std::string_view line) {
  constexpr std::size_t leastIndent = 20;
  return line.find_first_not_of(' ') >= leastIndent && !controlsOf(line).empty();
}

// "12(212)", "2(212)" (cut off on its left), "12" or, for the finish, a word.
std::optional<ControlColumn> controlOf(const Word& word) {
  const auto bracket = word.text.find('(');
  const std::string_view number = word.text.substr(0, bracket);
  if (number.find_first_of("0123456789:.-*") == nowhere && bracket == nowhere) {
    return ControlColumn{word.end, 0, true};
  }
  if (!allDigits(number)) return std::nullopt;
  if (bracket == nowhere) return ControlColumn{word.end, 0, false};
  std::string_view code = word.text.substr(bracket + 1);
  if (!code.ends_with(')')) return std::nullopt;
  code.remove_suffix(1);
  if (!allDigits(code)) return std::nullopt;
  const auto value = leadingInteger(code);
  return ControlColumn{word.end, value < LRK_START_CODE ? static_cast<Code>(value) : Code{0},
                       false};
}

// The word of a line that stands below a header word, at least in part.
std::string_view wordBelow(std::string_view line, std::size_t begin, std::size_t end) {
  for (const Word& word : wordsOf(line)) {
    if (word.begin() >= end) break;
    if (word.end > begin) return word.text;
  }
  return {};
}

struct LengthText {
  std::size_t begin;
  Length length;
};

// The first number before the unit, behind the name and the count of runners.
std::optional<LengthText> lengthOf(const std::vector<Word>& words, std::string_view unit,
                                   double centimetres) {
  std::size_t from = 1;
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i].text.starts_with('(')) from = i + 1;
  }
  for (std::size_t i = from; i + 1 < words.size(); ++i) {
    const Word& number = words[i];
    const auto value = wholeNumber(number.text);
    if (!value || *value < 0 || lowered1252(words[i + 1].text) != unit) continue;
    return LengthText{number.begin(), roundHalfEven(*value * centimetres)};
  }
  return std::nullopt;
}

// Where the count of runners begins that ends the text: "(25)", cut off "(2" or "("; nowhere
// without one.
std::size_t countBegin(std::string_view text) {
  const auto bracket = text.rfind('(');
  if (bracket == nowhere) return nowhere;
  std::string_view count = text.substr(bracket + 1);
  if (count.ends_with(')')) count.remove_suffix(1);
  return count.empty() || allDigits(count) ? bracket : nowhere;
}

}  // namespace

const SplitListColumns::Column* SplitListColumns::find(Kind kind) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(),
                                  [&](const Column& column) { return column.kind == kind; });
  return found == columns_.end() ? nullptr : &*found;
}

const SplitListColumns::Column* SplitListColumns::behind(std::size_t begin) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(),
                                  [&](const Column& column) { return column.begin > begin; });
  return found == columns_.end() ? nullptr : &*found;
}

// Results are wider than their header; what stands before them may be, too.
std::size_t SplitListColumns::resultBegin(std::string_view line) const {
  std::size_t least = timeEnd < nameBegin ? 0 : nameBegin;
  for (const Column& column : columns_) {
    const bool isText = column.kind == Kind::name || column.kind == Kind::club;
    if (!isText && column.end < timeEnd) least = std::max(least, column.end);
  }
  const std::size_t usual = timeEnd - std::min(timeEnd, resultWidth);
  std::size_t begin = std::min(std::max(least, usual), line.size());
  while (begin > least && begin < line.size() && line[begin] != ' ' && line[begin - 1] != ' ') {
    --begin;
  }
  return begin;
}

std::string_view SplitListColumns::place(std::string_view line) const {
  for (const Word& word : wordsOf(line.substr(0, std::min(line.size(), placeEnd + 1)))) {
    if (word.end > placeEnd) break;
    if (word.end > placeBegin) return word.text;
  }
  return {};
}

std::string_view SplitListColumns::result(std::string_view line) const {
  return columnText(line, resultBegin(line), timeEnd);
}

// Where the text of a column ends: where the next one has its own.
std::size_t SplitListColumns::textEnd(std::string_view line, std::size_t begin) const {
  const Column* const next = behind(begin);
  if (next == nullptr && timeEnd < begin) return timesBegin;
  if (next == nullptr || next->kind == Kind::time) {
    return result(line).empty() ? timeEnd : resultBegin(line);
  }
  const std::string_view below = wordBelow(line, next->begin, next->end);
  const auto at = static_cast<std::size_t>(below.data() - line.data());
  return below.empty() || at <= begin ? next->begin : std::min(next->begin, at);
}

std::string_view SplitListColumns::name(std::string_view line) const {
  return columnText(line, nameBegin, textEnd(line, nameBegin));
}

std::string_view SplitListColumns::club(std::string_view line) const {
  const Column* const column = find(Kind::club);
  if (column == nullptr) return {};
  return columnText(line, column->begin, textEnd(line, column->begin));
}

std::string_view SplitListColumns::birthYear(std::string_view line) const {
  const Column* const column = find(Kind::birthYear);
  return column == nullptr ? std::string_view() : wordBelow(line, column->begin, column->end);
}

std::string_view SplitListColumns::below(std::string_view line) const {
  const bool hasResult = timeEnd > nameBegin && !result(line).empty();
  return columnText(line, nameBegin, hasResult ? resultBegin(line) : timesBegin);
}

bool SplitListColumns::isRunner(std::string_view line) const {
  if (isFirst(line)) return true;
  const std::vector<Word> words = wordsOf(line, timesBegin);
  return !name(line).empty() && !words.empty() && isTimeText(words.front().text);
}

void SplitListColumns::endBefore(std::size_t firstTimeEnd) {
  if (columns_.empty() || columns_.back().kind == Kind::time) return;
  timesBegin = columns_.back().end;
  if (firstTimeEnd > timesBegin + resultWidth) timesBegin = firstTimeEnd - resultWidth;
}

// Reads the words of a header line.
class SplitListHeader {
 public:
  using Kind = SplitListColumns::Kind;

  explicit SplitListHeader(std::string_view header) : words_(wordsOf(header)) {
    constexpr std::size_t mostWords = 12;
    const bool plain = header.find_first_of("0123456789:()") == nowhere;
    if (!plain || words_.size() < 2 || words_.size() > mostWords) return;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      Word word = words_[i];
      // "Club no." is one header.
      if (i + 1 < words_.size() && words_[i + 1].begin() == word.end + 1) {
        const std::string_view both = header.substr(word.begin(), words_[i + 1].end - word.begin());
        if (!columnKey(utf8FromWindows1252(both)).empty()) word = {both, words_[++i].end};
      }
      columns_.push_back({kindOf(word.text), word.begin(), word.end});
    }
  }

  std::optional<SplitListColumns> read() const {
    if (std::optional<SplitListColumns> columns = named()) return columns;
    constexpr std::size_t mostWords = 5;
    const std::size_t count = words_.size();
    if (columns_.empty() || count > mostWords) return std::nullopt;
    return columnsWith(words_[count - 2].begin(), words_[count - 1].end);
  }

 private:
  static Kind kindOf(std::string_view word) {
    constexpr std::pair<std::string_view, Kind> kinds[] = {
        {"Pl", Kind::place},     {"Stno", Kind::startNumber}, {"Name", Kind::name},
        {"Surname", Kind::name}, {"First name", Kind::name},  {"Club", Kind::club},
        {"YB", Kind::birthYear}, {"Time", Kind::time},
    };
    const std::string_view key = columnKey(utf8FromWindows1252(word.substr(0, word.find('/'))));
    for (const auto& [known, kind] : kinds) {
      if (known == key) return kind;
    }
    return Kind::other;
  }

  std::size_t indexOf(Kind kind) const {
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [&](const auto& column) { return column.kind == kind; });
    return static_cast<std::size_t>(found - columns_.begin());
  }

  // By the known words. The result may have another one when it stands behind the name.
  std::optional<SplitListColumns> named() const {
    const std::size_t name = indexOf(Kind::name);
    std::size_t time = indexOf(Kind::time);
    if (name >= columns_.size()) return std::nullopt;
    if (time == columns_.size()) time = name + 1;
    if (time >= columns_.size() ||
        (columns_[time].kind != Kind::time && time + 1 < columns_.size()))
      return std::nullopt;
    std::optional<SplitListColumns> columns = columnsWith(columns_[name].begin, columns_[time].end);
    if (!columns) return std::nullopt;
    columns->isNamed = true;
    columns->columns_ = columns_;
    columns->columns_[time].kind = Kind::time;
    columns->timesBegin = columns_.back().end;
    readPlace(name, *columns);
    return columns;
  }

  // Places and start numbers end where their headers do, or begin there.
  std::optional<SplitListColumns> columnsWith(std::size_t nameBegin, std::size_t timeEnd) const {
    if (timeEnd > nameBegin && timeEnd < nameBegin + 2 * resultWidth) return std::nullopt;
    SplitListColumns columns;
    columns.nameBegin = nameBegin;
    columns.timeEnd = columns.timesBegin = timeEnd;
    std::size_t name = 0;
    while (words_[name].begin() < nameBegin) ++name;
    columns.placeEnd = name > 1 ? (words_[0].end + words_[name - 1].end) / 2 : nameBegin;
    return columns;
  }

  // Where its header stands in another place than the first.
  void readPlace(std::size_t name, SplitListColumns& columns) const {
    const std::size_t place = indexOf(Kind::place);
    const bool startNumberOnly = name == 1 && columns_[0].kind == Kind::startNumber;
    if (place == columns_.size()) {
      if (startNumberOnly) columns.placeEnd = 0;
    } else if (place > 0) {
      const SplitListColumns::Column& before = columns_[place - 1];
      const bool isNumber = before.kind == Kind::startNumber || before.kind == Kind::other;
      columns.placeBegin =
          isNumber ? (before.end + columns_[place].end) / 2 : columns_[place].begin;
      const bool isLast = place + 1 == columns_.size();
      columns.placeEnd = isLast ? columns_[place].end : columns_[place + 1].begin;
    } else if (name != 0) {
      const std::size_t next = std::min<std::size_t>(1, columns_.size() - 1);
      const bool isAlone =
          columns_[next].kind != Kind::startNumber && columns_[next].kind != Kind::other;
      if (isAlone) columns.placeEnd = columns_[next].begin;
    }
  }

  std::vector<Word> words_;
  std::vector<SplitListColumns::Column> columns_;
};

std::optional<SplitListColumns> columnsOfHeader(std::string_view header) {
  return SplitListHeader(header).read();
}

bool isKnownHeader(std::string_view header) {
  const std::optional<SplitListColumns> columns = columnsOfHeader(header);
  return columns && columns->isNamed;
}

SplitListColumns columnsOfRunner(std::string_view first, std::string_view second,
                                 std::size_t firstTimeEnd) {
  constexpr std::size_t leastGap = 2;
  SplitListColumns columns;
  columns.placeEnd = 10;
  columns.nameBegin = 15;
  columns.timeEnd = columns.timesBegin = 46;
  std::size_t timeEnd = 0;
  for (const Word& word : wordsOf(first)) {
    if (word.end + leastGap > firstTimeEnd) break;
    timeEnd = word.end;
  }
  const auto nameBegin = second.find_first_not_of(' ');
  if (timeEnd < resultWidth || nameBegin > timeEnd - resultWidth) return columns;
  // Place and start number are of about the same width.
  constexpr std::size_t widestPlace = 7;
  columns.nameBegin = nameBegin;
  columns.placeEnd = nameBegin > widestPlace ? 2 * nameBegin / 3 : nameBegin;
  columns.timeEnd = columns.timesBegin = timeEnd;
  return columns;
}

std::vector<ControlColumn> controlsOf(std::string_view line, std::size_t from) {
  std::vector<ControlColumn> controls;
  for (const Word& word : wordsOf(line, from)) {
    const auto control = controlOf(word);
    const bool behindFinish = !controls.empty() && controls.back().isFinish;
    if (!control || behindFinish) return {};
    controls.push_back(*control);
  }
  return controls;
}

std::optional<ClassLine> classLineOf(std::string_view line, std::string_view nextLine) {
  if (line.empty() || line.front() == ' ') return std::nullopt;
  const std::vector<Word> words = wordsOf(line);
  auto length = lengthOf(words, "km", 100000);
  if (!length && !isControlRow(nextLine)) {
    const auto isTime = [](const Word& word) {
      return word.text.find(':') != nowhere && isTimeText(word.text);
    };
    const bool hasCount = countBegin(trimmed(line)) != nowhere;
    if (!hasCount || std::any_of(words.begin(), words.end(), isTime)) return std::nullopt;
  }
  if (!length) length = lengthOf(words, "m", 100);
  const std::string_view name = trimmed(line.substr(0, length ? length->begin : nowhere));
  ClassLine result;
  result.name = utf8FromWindows1252(trimmed(name.substr(0, countBegin(name))));
  if (length) result.courseLength = length->length;
  return result;
}

}  // namespace larkstone
