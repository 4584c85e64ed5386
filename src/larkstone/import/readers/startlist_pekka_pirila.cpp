// Start lists of Pekka Pirilä's programs: a heading and a preformatted block for each class.
//
//     <h3>H21 (25)</h3>
//     <pre>
//        12 Matti Malli           Rajamäen Malli          10.02.00    11.31.00
//        13 ________
//        14 vacant                                        10.04.00
//     </pre>
//
// The first words are the name, those behind two blanks or a number the club. Times of day belong
// to the stages of the event in their order: in lines that have fewer of them than others, to the
// stage in whose column they stand. "0.00" and "-" stand where there is none. Other numbers (start,
// card) are passed over.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "larkstone/core/text.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/startlist.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
// A line of more times is none of a list of stages.
constexpr std::size_t mostStages = 100;

struct ListLine {
  std::vector<std::string> texts;
  std::vector<Word> times;  // and what stands where there is none
};

bool isDashes(std::string_view word) { return word.find_first_not_of('-') == nowhere; }

// "10.02.00", "0.00" or "-"
bool isTimeOrNone(std::string_view word) {
  const bool isZero = word.find_first_not_of("0.") == nowhere && word.find('.') != nowhere;
  return isClockText(word) || isZero || isDashes(word);
}

ListLine listLineOf(std::string_view line) {
  ListLine result;
  std::size_t lastText = nowhere;  // where the last word of a text ended
  std::ptrdiff_t timesBefore = 0;  // the last text
  for (const Word& word : wordsOf(line)) {
    if (isTimeOrNone(word.text)) {
      result.times.push_back(word);
    } else if (word.text.find_first_not_of("0123456789.,:-") != nowhere) {
      if (lastText != nowhere && word.begin() == lastText + 1) {
        result.texts.back().append(" ").append(word.text);
      } else {
        result.texts.emplace_back(word.text);
      }
      lastText = word.end;
      // Dashes before it belong to the text.
      const auto dashes = [](const Word& time) { return isDashes(time.text); };
      result.times.erase(
          std::remove_if(result.times.begin() + timesBefore, result.times.end(), dashes),
          result.times.end());
      timesBefore = std::ssize(result.times);
    }
  }
  return result;
}

bool isVacant(std::string_view line) {
  return lowered1252(line).find(" vacant") != std::string::npos || line.find("__") != nowhere;
}

// Where the starts of the stages stand, as the lines show it that have all of them.
class StageColumns {
 public:
  void learn(const std::vector<Word>& times) {
    if (times.size() > mostStages) return;
    if (times.size() > columns_.size()) columns_.assign(times.size(), {nowhere, 0});
    if (times.size() < columns_.size()) return;
    for (std::size_t i = 0; i < times.size(); ++i) {
      Column& column = columns_[i];
      if (column.end != 0 && !isIn(column, times[i])) continue;
      column.begin = std::min(column.begin, times[i].begin());
      column.end = std::max(column.end, times[i].end);
    }
  }

  // The start of a stage; empty without one.
  std::string_view startOf(const std::vector<Word>& times, std::size_t stage) const {
    const auto isInAny = [&](const Word& time) {
      return std::any_of(columns_.begin(), columns_.end(),
                         [&](const Column& column) { return isIn(column, time); });
    };
    const bool byOrder =
        times.size() == columns_.size() || std::none_of(times.begin(), times.end(), isInAny);
    if (byOrder) return stage < times.size() ? times[stage].text : std::string_view();
    for (const Word& time : times) {
      if (stage < columns_.size() && isIn(columns_[stage], time)) return time.text;
    }
    return {};
  }

 private:
  struct Column {
    std::size_t begin;
    std::size_t end;
  };
  static bool isIn(const Column& column, const Word& time) {
    return time.begin() < column.end && time.end > column.begin;
  }

  std::vector<Column> columns_;
};

// Calls beginClass(heading) and block(lines) for what the page has of either.
template <class BeginClass, class Block>
void eachClass(std::string_view html, BeginClass beginClass, Block block) {
  HtmlPage page(html);
  page.readThrough({"h3"});
  while (!page.tag().empty()) {
    beginClass(lineText(page.readThrough({"/h3", "h3", "pre"})));
    if (page.tag() == "/h3") page.readThrough({"pre", "h3"});
    if (page.tag() == "pre") {
      const int line = page.line();
      block(linesOf(page.readThrough({"/pre", "h3"}), line));
    }
    if (page.tag() == "/pre") page.readThrough({"h3"});
  }
}

void addEntry(const PageLine& line, const StageColumns& columns, std::size_t stage,
              Startlist& list) {
  const ListLine read = listLineOf(line.text);
  const std::string_view start = columns.startOf(read.times, stage);
  const bool hasStart = isClockText(start);
  if (isVacant(line.text) || read.texts.empty()) return;
  if (!hasStart && !beginsWithNumber(line.text)) return;
  const std::string club = read.texts.size() > 1 ? utf8FromWindows1252(read.texts[1]) : "";
  list.add(utf8FromWindows1252(read.texts[0]), club, hasStart ? start : "", line.number);
}

void readClasses(std::string_view html, std::size_t stage, Startlist& list) {
  StageColumns columns;
  eachClass(
      html, [](const std::string&) {},
      [&](const std::vector<PageLine>& lines) {
        for (const PageLine& line : lines) columns.learn(listLineOf(line.text).times);
      });
  eachClass(
      html,
      [&](const std::string& heading) {
        list.beginClass(std::string(nameBeforeCount(heading).value_or(heading)));
      },
      [&](const std::vector<PageLine>& lines) {
        for (const PageLine& line : lines) addEntry(line, columns, stage, list);
      });
}

}  // namespace

std::int32_t readPekkaPirilaStartlist(ReadJob& job) {
  TextLines lines;
  if (!lines.read(job.fileName, TextLines::Form::windows1252)) return LRK_IMPORT_STARTLIST_UNKNOWN;
  Startlist list(job);
  const std::size_t stage = job.stageIndex > 0 ? static_cast<std::size_t>(job.stageIndex) : 0;
  readClasses(lines.text(), stage, list);
  if (!list.hasEntries() && detectPekkaPirilaStartlist({job.fileName}) == 0) {
    return LRK_IMPORT_STARTLIST_UNKNOWN;
  }
  return list.complete();
}

}  // namespace larkstone
