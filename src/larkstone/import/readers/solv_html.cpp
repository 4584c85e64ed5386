// Result pages of the Swiss federation: a bold heading and a preformatted block for each class.
//
//     <b><a href="...">H10</a></b>
//     <pre>( 1.6 km,  10 m, 17 Po.)  14 Teilnehmer
//
//     <b>  1. Jan Muster             08  Adorf              OLG Beispiel           9:14</b>
//         1.   0.38 (2)  2.   1.07 (3)  3.   1.34 (2)  4.   1.35 (2)  5.   1.54 (2)
//        131   0.38 (2) 164   0.29 (3) 140   0.27 (1) 145   0.01 (1) 180   0.19 (1)
//              0.04           0.05           0.00           0.00           0.00
//         6.   2.30 (2)         9.14 (1)
//        185   0.36 (2)  Zi     6.44 (1)
//              0.03           0.00
//
// A group has the times from the start, then the codes with the times of the legs, then the time
// behind. Minutes go on above 59, "89" are 89 minutes; "--" stands for a time that is not known.
// Who runs outside of the competition ("a.K.") or is not classed ("n.kl.") is not competing.

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/status_words.hpp"
#include "larkstone/platform/clock.hpp"

namespace larkstone {

namespace {

constexpr std::size_t lineWidth = 78;
constexpr std::size_t resultWidth = 7;
constexpr std::size_t groupsInALine = 5;
constexpr std::size_t groupWidth = 15;

constexpr StatusWord statusWords[] = {
    {"po.f.", estaMisPunch},       {"po.fal.", estaMisPunch},    {"p.fehl.", estaMisPunch},
    {"aufgeg.", estaDidNotFinish}, {"n.gest.", estaDidNotStart}, {"n. gest.", estaDidNotStart},
    {"disq.", estaDisqualified},   {"disqu.", estaDisqualified}, {"a.k.", estaNotCompeting},
    {"n.kl.", estaNotCompeting},   {"n. kl.", estaNotCompeting},
};

std::optional<enmStatus> statusOf(std::string_view result) {
  return statusOf(lowered1252(result), statusWords);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A number alone counts minutes, as before the point of the others.
Time timeOf(std::string_view text) {
  const bool isMinutes =
      !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
  return stringToTime(isMinutes ? std::string(text) + ".00" : std::string(text), etacAuto);
}

// The first line of an entry. Its last two columns are counted from its end.
struct RunnerLine {
  std::string_view text;
  std::string_view result;
  std::string_view club;
};

RunnerLine runnerLineOf(std::string_view text) {
  while (text.size() > lineWidth && text.back() == ' ') text.remove_suffix(1);
  const auto fromEnd = [&](std::size_t count) {
    return columnText(text, text.size() - std::min(text.size(), count));
  };
  std::string_view result = fromEnd(resultWidth);
  // One word is as wide as the result and the blank before it.
  if (statusOf(fromEnd(resultWidth + 1))) result = fromEnd(resultWidth + 1);
  std::size_t end = text.size();
  const bool isResult = (!result.empty() && isDigit(result.front()) && isTimeText(result)) ||
                        statusOf(result).has_value();
  if (end < lineWidth && !isResult) {  // it lost the blanks of an empty result
    end = lineWidth;
    result = {};
  }
  const std::size_t clubStart = end - std::min<std::size_t>(end, 27);
  const std::size_t clubWidth = result.size() > resultWidth ? 19 : 20;
  return {text, result, columnText(text, clubStart, clubStart + clubWidth)};
}

class SolvReader {
 public:
  SolvReader(ReadJob& job, int lineCount) : job_(job), run_(job), lineCount_(lineCount) {}

  std::int32_t read(std::string_view html);

 private:
  bool readClass(std::string_view heading, std::string_view block, int line);
  bool readRunner(std::string_view entry, int line);
  void readPerson(const RunnerLine& line, const LineNotes& notes, LRKRunner& runner) const;
  static void readStatus(const RunnerLine& line, const LineNotes& notes, LRKRunner& runner);
  void readSplits(const std::vector<PageLine>& lines, LRKRunner& runner) const;

  ReadJob& job_;
  ReaderRun run_;
  int lineCount_;
  int thisYear_ = calendarOf(currentDate()).year;
};

// The heading of the page; the older ones begin with a block that has the event's name, place and
// date in bold.
std::string eventNameOf(std::string_view html) {
  HtmlPage page(html);
  page.readThrough({"h2"});
  if (!page.tag().empty()) {
    return lineText(HtmlPage(page.readThrough({"/h2"})).readThrough({"a"}));
  }
  page = HtmlPage(html);
  page.readThrough({"pre"});
  HtmlPage block(page.readThrough({"/pre"}));
  if (!trimmed(block.readThrough({"b"})).empty()) return {};
  const std::string text = pageText(block.readThrough({"/b"}));
  return utf8FromWindows1252(trimmed(textBefore(textBefore(trimmed(text), "\n"), "  ")));
}

// The block of a class begins with what its course is; blocks before the first class hold notes.
bool isClassBlock(std::string_view block) {
  HtmlPage page(block);
  const std::string_view header = page.readThrough({"b"});
  return header.find('(') != std::string_view::npos || !page.tag().empty();
}

std::int32_t SolvReader::read(std::string_view html) {
  if (std::string name = eventNameOf(html); !name.empty()) job_.event.name(std::move(name));
  HtmlPage page(html);
  std::string_view heading;
  for (;;) {
    page.readThrough({"b", "pre"});
    if (page.tag() == "b") heading = page.readThrough({"/b", "pre"});
    if (page.tag().empty()) break;
    if (page.tag() != "pre") continue;
    const int line = page.line();
    const std::string_view block = page.readThrough({"/pre"});
    if (heading.empty() || !isClassBlock(block)) continue;
    if (!readClass(std::exchange(heading, {}), block, line)) return run_.code();
  }
  return run_.end("SOLV HTML");
}

bool SolvReader::readClass(std::string_view heading, std::string_view block, int line) {
  HtmlPage entries(block, line);
  const std::string header = pageText(entries.readThrough({"b"}));
  std::string_view course = header;
  removeThrough(course, "(");
  LRKCategory category;
  category.name(lineText(heading));
  if (const auto kilometres = wholeNumber(textBefore(course, " km"))) {
    category.courseLength(roundHalfEven(*kilometres * 100000));
  }
  run_.beginCategory(std::move(category));
  while (!entries.tag().empty()) {
    const int entryLine = entries.line();
    if (!readRunner(entries.readThrough({"b"}), entryLine)) return false;
    if (!run_.progress(entries.line(), lineCount_)) return false;
  }
  return run_.progress(entries.line(), lineCount_);
}

bool SolvReader::readRunner(std::string_view entry, int line) {
  const std::vector<PageLine> lines = allLinesOf(entry, line);
  const std::string_view first = lines.empty() ? std::string_view() : lines[0].text;
  const RunnerLine runnerLine = runnerLineOf(first);
  LRKRunner runner;
  const LineNotes notes(job_.session, line, &runner);
  readPerson(runnerLine, notes, runner);
  if (runner.name().empty()) {
    notes("no name in", utf8FromWindows1252(trimmed(first)));
    return true;
  }
  runner.startTime(0);
  readSplits(lines, runner);
  const bool isTime = !runnerLine.result.empty() && isDigit(runnerLine.result.front());
  if (isTime && !runner.punches().finishExists()) {
    runner.finishTime(timeOf(runnerLine.result));
  }
  return run_.addRunner(std::move(runner), notes);
}

void SolvReader::readPerson(const RunnerLine& line, const LineNotes& notes,
                            LRKRunner& runner) const {
  runner.name(utf8FromWindows1252(columnText(line.text, 5, 28)));
  if (!line.club.empty()) runner.club(utf8FromWindows1252(line.club));
  if (const auto place = wholeNumber(columnText(line.text, 0, 3))) {
    runner.resultPlace(static_cast<std::int16_t>(*place));
  }
  const std::string_view year = columnText(line.text, 28, 30);
  if (year.size() == 2 && isDigit(year[0]) && isDigit(year[1])) {
    const int before2000 = 1900 + leadingInteger(year);
    const int born = thisYear_ - before2000 >= 100 ? before2000 + 100 : before2000;
    runner.birthDate(dateOf({born, 1, 1}));
    runner.birthDateFormat("yyyy");
  }
  readStatus(line, notes, runner);
}

void SolvReader::readStatus(const RunnerLine& line, const LineNotes& notes, LRKRunner& runner) {
  if (!line.result.empty() && isDigit(line.result.front())) {
    runner.status(estaOK);
  } else if (const auto status = statusOf(line.result)) {
    runner.status(*status);
  } else if (!line.result.empty()) {
    notes("result", utf8FromWindows1252(line.result));
  }
  const std::string_view place = columnText(line.text, 0, 4);
  if (isNotCompetingWord(place)) runner.status(statusByPlace(place, runner.status()));
}

void SolvReader::readSplits(const std::vector<PageLine>& lines, LRKRunner& runner) const {
  constexpr std::size_t linesOfAGroup = 3;
  for (std::size_t i = 1; i + 1 < lines.size(); i += linesOfAGroup) {
    const PageLine& times = lines[i];
    const PageLine& codes = lines[i + 1];
    for (std::size_t group = 0; group < groupsInALine; ++group) {
      const std::size_t start = group * groupWidth;
      const std::string_view code = columnText(codes.text, start + 2, start + 6);
      if (code.empty()) break;
      const std::string_view text = columnText(times.text, start + 6, start + 13);
      const Time time = timeOf(text);
      if (isDisq(time) && !text.empty() && text != "--") {
        LineNotes(job_.session, times.number, &runner)("time of a control",
                                                       utf8FromWindows1252(text));
      }
      if (code == "Zi") {
        runner.finishTime(time);
        continue;
      }
      const auto number = wholeNumber(code);
      const bool isCode = number && *number >= 0;
      if (!isCode) {
        LineNotes(job_.session, codes.number, &runner)("code of a control",
                                                       utf8FromWindows1252(code));
      }
      runner.punches().add(time, isCode ? static_cast<Code>(*number) : Code{0});
    }
  }
}

}  // namespace

std::int32_t readSolvHtml(ReadJob& job) {
  TextLines lines;
  if (detectSolv({job.fileName}) == 0 || !lines.read(job.fileName, TextLines::Form::windows1252)) {
    return LRK_IMPORT_SOLV_HTML_INVALID_FORMAT;
  }
  return SolvReader(job, lines.count()).read(lines.text());
}

}  // namespace larkstone
