// SportSoftware's list of split times, as a web page or as plain text. Its layout stands in
// split_list.hpp.

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/csv_columns.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/csv_values.hpp"
#include "larkstone/import/readers/split_list.hpp"
#include "larkstone/import/readers/split_times.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/status_words.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;

// The keys of the table of columns, then the words that only these lists have.
constexpr StatusWord statusWords[] = {
    {"dns", estaDidNotStart},   {"dnf", estaDidNotFinish},  {"mp", estaMisPunch},
    {"disq", estaDisqualified}, {"n ang", estaDidNotStart}, {"aufg", estaDidNotFinish},
    {"fehlst", estaMisPunch},   {"pm", estaMisPunch},       {"disqu", estaDisqualified},
    {"disk", estaDisqualified}, {"zeitüb", estaOverTime},   {"zeitü", estaOverTime},
};

class SplitList {
 public:
  // The header line of a page is its first; above that of a plain list stand the event and the
  // program.
  SplitList(ReadJob& job, const TextLines& file, bool isHtml)
      : job_(job), run_(job), fileLines_(file.count()), lines_(preformattedLines(file.text())) {
    constexpr std::size_t mostLinesAbove = 10;
    std::size_t at = 0;
    while (at < mostLinesAbove && at < lines_.size() && !isKnownHeader(lineAt(at))) ++at;
    hasKnownHeader_ = isKnownHeader(lineAt(at));
    if (!hasKnownHeader_) at = 0;
    if (hasKnownHeader_ || isHtml) columns_ = columnsOfHeader(lineAt(at));
    if (columns_) header_ = trimmed(lineAt(at));
  }

  bool hasKnownHeader() const { return hasKnownHeader_; }

  std::int32_t read(const std::string& importedFrom) {
    for (std::size_t done = 0; at_ < lines_.size(); ++done) {
      if (done > 0 && !run_.progress(lines_[at_ - 1].number, fileLines_)) return run_.code();
      if (const auto classLine = classLineOf(lineAt(at_), lineAt(at_ + 1))) {
        readClass(*classLine);
      } else if (run_.hasCategory() && columns_ && trimmed(lineAt(at_)) != header_ &&
                 columns_->isRunner(lineAt(at_))) {
        readRunner();
      } else {
        skipLine();
      }
    }
    return run_.end(importedFrom);
  }

 private:
  std::string_view lineAt(std::size_t i) const {
    return i < lines_.size() ? std::string_view(lines_[i].text) : std::string_view();
  }

  void skipLine() {
    const std::string_view line = trimmed(lineAt(at_));
    if (run_.hasCategory() && line != header_) {
      LineNotes(job_.session, lines_[at_].number)("line skipped", utf8FromWindows1252(line));
    }
    ++at_;
  }

  void readClass(const ClassLine& classLine) {
    LRKCategory category;
    category.name(classLine.name);
    if (classLine.courseLength) category.courseLength(*classLine.courseLength);
    controls_.clear();
    for (++at_; at_ < lines_.size(); ++at_) {
      std::vector<ControlColumn> row = controlsOf(lineAt(at_));
      if (row.empty()) break;
      controls_.push_back(std::move(row));
    }
    if (columns_ && !controls_.empty()) columns_->endBefore(controls_[0][0].end);
    if (!columns_ && !controls_.empty() && at_ + 1 < lines_.size()) {
      columns_ = columnsOfRunner(lineAt(at_), lineAt(at_ + 1), controls_[0][0].end);
    }
    run_.beginCategory(std::move(category));
  }

  void readRunner() {
    const std::string_view first = lineAt(at_);
    LRKRunner runner;
    const LineNotes notes(job_.session, lines_[at_].number, &runner);
    readPerson(runner, first, notes);
    SplitReader splits(runner, notes, columns_->timesBegin);
    runner.startTime(0);
    const std::vector<ControlColumn> ownControls = controlsOf(first, columns_->timesBegin);
    if (ownControls.empty()) {
      readRows(first, splits);
    } else {
      readOwnCourse(ownControls, splits);
    }
    splits.finish(columns_->result(first));
    run_.addRunner(std::move(runner), notes);
  }

  void readPerson(LRKRunner& runner, std::string_view first, const LineNotes& notes) {
    const std::string_view second = lineAt(at_ + 1);
    runner.name(utf8FromWindows1252(columns_->name(first)));
    std::string_view club = columns_->club(first);
    if (club.empty() && isSecond(second)) club = columns_->below(second);
    if (!club.empty()) runner.club(utf8FromWindows1252(club));
    readBirthYear(columns_->birthYear(first), runner, notes);
    if (run_.category().courseLengthSet()) runner.courseLength(run_.category().courseLength());
    const std::string_view place = columns_->place(first);
    if (const auto number = wholeNumber(place)) {
      runner.resultPlace(saturated<std::int16_t>(leadingInteger(place)));
    } else if (!place.empty() && !isNotCompetingWord(place)) {
      notes("unreadable place", utf8FromWindows1252(place));
    }
    readStatus(columns_->result(first), runner, notes);
    runner.status(statusByPlace(place, runner.status()));
  }

  static void readStatus(std::string_view result, LRKRunner& runner, const LineNotes& notes) {
    runner.status(estaUnknown);
    if (isTimeText(result) && !isDisq(splitTime(result))) {
      runner.status(estaOK);
      return;
    }
    const std::string text = utf8FromWindows1252(result);
    auto status = statusOf(lowered(text), statusWords);
    if (!status) status = statusOf(columnKey(text), statusWords);
    if (status) {
      runner.status(*status);
    } else {
      notes("unknown status", text);
    }
  }

  // The club stands in it. A runner may lack it at the end of a page that was cut off.
  bool isSecond(std::string_view line) const {
    return !line.empty() && !columns_->isFirst(line) && line.front() == ' ';
  }

  // The line with the leg times; it is blank, and so not there, when the times above it are all
  // missing and no club stands beside it.
  std::string_view takeLegs(std::string_view times, bool withClub) {
    const std::string_view line = lineAt(at_);
    if (withClub ? !isSecond(line) : line.empty() || !columns_->isContinuation(line)) return {};
    const std::vector<Word> words = wordsOf(times, columns_->timesBegin);
    const auto missing = [](const Word& word) { return isMissingSplit(word.text); };
    const bool blank = std::all_of(words.begin(), words.end(), missing);
    if (blank && columns_->isContinuation(line)) return {};
    ++at_;
    return line;
  }

  bool atContinuation() const {
    const std::string_view line = lineAt(at_);
    return !line.empty() && columns_->isContinuation(line);
  }

  void readRows(std::string_view times, SplitReader& splits) {
    static const std::vector<ControlColumn> none;
    ++at_;
    std::string_view legs = takeLegs(times, true);
    for (std::size_t row = 0;; ++row) {
      splits.read(row < controls_.size() ? controls_[row] : none, times, legs);
      if (!atContinuation()) return;
      times = lineAt(at_++);
      legs = takeLegs(times, false);
    }
  }

  // A course of the runner's own: the controls stand beside the name, the times beside the club.
  void readOwnCourse(std::vector<ControlColumn> controls, SplitReader& splits) {
    ++at_;
    bool withClub = true;
    do {
      std::string_view times;
      if (withClub ? isSecond(lineAt(at_)) : controls.empty() || atContinuation()) {
        times = lineAt(at_++);
      }
      withClub = false;
      splits.read(controls, times, takeLegs(times, false));
      if (!atContinuation()) return;
      controls = controlsOf(lineAt(at_), columns_->timesBegin);
      if (!controls.empty()) ++at_;
    } while (at_ < lines_.size());
  }

  ReadJob& job_;
  ReaderRun run_;
  int fileLines_;
  std::vector<PageLine> lines_;
  std::size_t at_ = 0;
  std::string_view header_;
  bool hasKnownHeader_ = false;
  std::optional<SplitListColumns> columns_;
  std::vector<std::vector<ControlColumn>> controls_;
};

// The program's name in "created by <a href="http://www.sportsoftware.de">OE2002 © ...", of a plain
// list in "created by OE2002 © ...".
std::string programOf(std::string_view page, bool isHtml) {
  std::string_view credit = page;
  if (isHtml) {
    removeThroughNoCase(credit, "sportsoftware.de");
    removeThrough(credit, ">");
    credit = trimmed(textBefore(credit, "<"));
  } else {
    const auto sign = page.find('\xA9');
    const std::string_view before = trimmed(page.substr(0, sign == nowhere ? 0 : sign));
    credit = page.substr(before.find_last_of(" :\t\n") + 1);
  }
  const std::string_view program = textBefore(credit, " ");
  constexpr std::size_t longest = 20;
  const bool found = program.size() < credit.size() && program.size() <= longest;
  return (found ? utf8FromWindows1252(program) : "SportSoftware") + (isHtml ? " HTML" : " text");
}

// The title is "Event - Split times" or the other way round; the event alone is the first bold
// text. A plain list begins with it, at the same height as the date.
std::string eventNameOf(std::string_view page, bool isHtml) {
  if (!isHtml) {
    const std::string_view first = trimmed(textBefore(trimmed(page), "\n"));
    return utf8FromWindows1252(trimmed(textBefore(first, "   ")));
  }
  HtmlPage html(page);
  html.readThrough({"title"});
  const std::string title = lineText(html.readThrough({"/title"}));
  html.readThrough({"b"});
  const std::string bold = lineText(html.readThrough({"/b"}));
  const bool isPart = !bold.empty() && title.find(bold) != nowhere;
  return isPart ? bold : title.substr(0, title.rfind(" - "));
}

}  // namespace

std::int32_t readSportSoftwareSplits(ReadJob& job) {
  TextLines file;
  if (!file.read(job.fileName, TextLines::Form::windows1252)) {
    return LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT_INVALID_FORMAT;
  }
  const std::string_view page = file.text();
  const bool isHtml = hasTag(page, "pre");
  const bool isTable = !isHtml && hasTag(page, "table");
  const bool isNamed = detectSportSoftwareSplits({job.fileName, true}) != 0 && !isTable;
  SplitList list(job, file, isHtml);
  if (!isNamed && !list.hasKnownHeader()) return LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT_INVALID_FORMAT;
  if (std::string name = eventNameOf(page, isHtml); !name.empty()) job.event.name(std::move(name));
  return list.read(programOf(page, isHtml));
}

}  // namespace larkstone
