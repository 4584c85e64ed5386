#include "larkstone/import/readers/split_list.hpp"

#include <algorithm>
#include <array>

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

// "Name", "Name/Club"
bool isNameHeader(std::string_view word) {
  constexpr std::array<std::string_view, 3> keys = {"Name", "Surname", "First name"};
  const std::string text = utf8FromWindows1252(word.substr(0, word.find('/')));
  return std::find(keys.begin(), keys.end(), columnKey(text)) != keys.end();
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

std::size_t SplitListColumns::resultBegin(std::string_view line) const {
  std::size_t begin = std::min(timeEnd - resultWidth, line.size());
  while (begin > nameBegin && begin < line.size() && line[begin] != ' ' && line[begin - 1] != ' ') {
    --begin;
  }
  return begin;
}

std::string_view SplitListColumns::place(std::string_view line) const {
  const auto begin = line.find_first_not_of(' ');
  const auto end = std::min(line.find(' ', begin), line.size());
  return end <= placeEnd ? line.substr(begin, end - begin) : std::string_view();
}

std::string_view SplitListColumns::result(std::string_view line) const {
  return columnText(line, resultBegin(line), timeEnd);
}

std::string_view SplitListColumns::name(std::string_view line) const {
  return columnText(line, nameBegin, result(line).empty() ? timeEnd : resultBegin(line));
}

bool SplitListColumns::isRunner(std::string_view line) const {
  if (isFirst(line)) return true;
  const std::vector<Word> words = wordsOf(line, timeEnd);
  return !name(line).empty() && !words.empty() && isTimeText(words.front().text);
}

std::optional<SplitListColumns> columnsOfHeader(std::string_view header) {
  const std::vector<Word> words = wordsOf(header);
  const std::size_t count = words.size();
  const bool plain = header.find_first_of("0123456789:()") == nowhere;
  if (count < 2 || count > 5 || !plain) return std::nullopt;
  const std::size_t name = count - 2;
  SplitListColumns columns;
  columns.nameBegin = words[name].begin();
  columns.timeEnd = words[count - 1].end;
  // Places and start numbers end where their headers do, or begin there.
  columns.placeEnd = name > 1 ? (words[0].end + words[name - 1].end) / 2 : columns.nameBegin;
  if (columns.timeEnd < columns.nameBegin + 2 * resultWidth) return std::nullopt;
  return columns;
}

bool isKnownHeader(std::string_view header) {
  const std::vector<Word> words = wordsOf(header);
  return columnsOfHeader(header) && isNameHeader(words[words.size() - 2].text);
}

SplitListColumns columnsOfRunner(std::string_view first, std::string_view second,
                                 std::size_t firstTimeEnd) {
  constexpr std::size_t leastGap = 2;
  SplitListColumns columns{10, 15, 46};
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
  columns.timeEnd = timeEnd;
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
