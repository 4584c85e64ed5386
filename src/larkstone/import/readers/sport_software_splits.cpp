// SportSoftware's list of split times, as a web page or as plain text. Its layout stands in
// split_list.hpp.

#include <algorithm>
#include <array>
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
#include "larkstone/import/readers/split_list.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/text_lines.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr Code firstUnknownCode = 31;

struct StatusWord {
  std::string_view word;
  enmStatus status;
};

// The keys of the table of columns, then the words that only these lists have.
constexpr StatusWord statusWords[] = {
    {"dns", estaDidNotStart},
    {"dnf", estaDidNotFinish},
    {"mp", estaMisPunch},
    {"disq", estaDisqualified},
    {"n ang", estaDidNotStart},
    {"aufg", estaDidNotFinish},
    {"fehlst", estaMisPunch},
    {"pm", estaMisPunch},
    {"disqu", estaDisqualified},
    {"disk", estaDisqualified},
    {"zeit\xFC"
     "b",
     estaOverTime},
    {"zeit\xFC", estaOverTime},
};

std::optional<enmStatus> statusOf(std::string_view word) {
  for (const StatusWord& row : statusWords) {
    if (row.word == word) return row.status;
  }
  return std::nullopt;
}

// "-----" where a punch is missing; "0.00" where a control was counted without a time.
bool isMissing(std::string_view time) {
  return time == "0.00" || time.find_first_not_of('-') == nowhere;
}

// "05:11" of ":05:11": the list has cut off the hour.
bool isCut(std::string_view time) { return time.starts_with(':'); }

Time timeOf(std::string_view text) {
  if (isCut(text)) text.remove_prefix(1);
  return isTimeText(text) ? stringToTime(text, etacAuto, true) : LRK_NO_TIME;
}

// The hours that were cut off: at least one, and as many as the order of the times and the time of
// the leg ask for.
Time withHours(Time cut, Time before, std::string_view legTime) {
  constexpr Time hour = 360000;
  const Time leg = isMissing(legTime) ? LRK_NO_TIME : timeOf(legTime);
  const Time least = before + (isDisq(leg) ? 0 : leg + (isCut(legTime) ? hour : 0));
  const Time missing = std::max(least - cut, hour);
  return cut + (missing + hour - 1) / hour * hour;
}

// A row of times and what stands below them: leg times, or the controls "*100" of extra punches.
struct TimesRow {
  TimesRow(std::string_view timesLine, std::string_view legsLine, std::size_t from)
      : times(wordsOf(timesLine, from)), legs(wordsOf(legsLine, from)), used(times.size()) {
    for (std::size_t i = 1; i < times.size(); ++i) {  // time behind and rank "0:09 (3)"
      if (times[i].text.starts_with('(')) used[i - 1] = used[i] = true;
    }
  }

  // The first word at or behind position `at` that ends at the column, or one beside it.
  static std::size_t find(const std::vector<Word>& words, std::size_t column, std::size_t& at) {
    while (at < words.size() && words[at].end + 1 < column) ++at;
    return at < words.size() && words[at].end <= column + 1 ? at : nowhere;
  }

  std::vector<Word> times;
  std::vector<Word> legs;
  std::vector<bool> used;
};

// Reads a runner's rows.
class SplitsReader {
 public:
  SplitsReader(LRKRunner& runner, const LineNotes& notes, std::size_t timeEnd)
      : runner_(runner), notes_(notes), timeEnd_(timeEnd) {}

  void read(const std::vector<ControlColumn>& controls, std::string_view timesLine,
            std::string_view legsLine) {
    TimesRow row(timesLine, legsLine, timeEnd_);
    std::size_t time = 0;
    std::size_t leg = 0;
    for (const ControlColumn& control : controls) {
      if (control.end > timesLine.size() + 1 && noOfControls_ >= mostControlsWithoutTimes) break;
      const auto found = TimesRow::find(row.times, control.end, time);
      const auto below = TimesRow::find(row.legs, control.end, leg);
      if (found != nowhere) row.used[found] = true;
      add(control, found == nowhere ? "-" : row.times[found].text,
          below == nowhere ? "-" : row.legs[below].text);
    }
    readExtraPunches(row);
    for (std::size_t i = 0; i < row.times.size(); ++i) {
      if (!row.used[i]) notes_("time without a control", row.times[i].text);
    }
  }

  // The finish; a list without its column has the result only.
  void finish(std::string_view result) {
    if (isDisq(finish_) && !isMissing(result)) finish_ = timeOf(result);
    runner_.finishTime(finish_);
  }

 private:
  void add(const ControlColumn& control, std::string_view text, std::string_view leg) {
    const Time time = read(text, last_, leg);
    if (!isDisq(time)) last_ = time;
    if (control.isFinish) {
      finish_ = time;
      return;
    }
    ++noOfControls_;
    const int unknown = std::min(firstUnknownCode + noOfControls_ - 1, LRK_START_CODE - 1);
    runner_.punches().add(time, control.code == 0 ? static_cast<Code>(unknown) : control.code);
  }

  Time read(std::string_view text, Time before, std::string_view leg) {
    if (isMissing(text)) return LRK_NO_TIME;
    const Time time = timeOf(text);
    if (isDisq(time) || time < 0) {
      notes_("unreadable time", text);
      return LRK_NO_TIME;
    }
    return isCut(text) ? clampedTime(withHours(time, before, leg)) : time;
  }

  // What no control's column claims are extra punches, as many as there are controls below.
  void readExtraPunches(TimesRow& row) {
    std::size_t at = 0;
    for (const Word& word : row.legs) {
      if (!word.text.starts_with('*')) continue;
      while (at < row.times.size() && row.used[at]) ++at;
      const auto code = wholeNumber(word.text.substr(1));
      if (at == row.times.size() || !code || *code < 0 || *code >= LRK_START_CODE) {
        notes_("unreadable extra punch", word.text);
        continue;
      }
      const std::string_view text = row.times[at].text;
      row.used[at] = true;
      const Time time = read(text, lastExtra_, "-");
      if (!isDisq(time)) lastExtra_ = time;
      runner_.extraPunches().add(time, static_cast<Code>(*code));
    }
  }

  LRKRunner& runner_;
  const LineNotes& notes_;
  std::size_t timeEnd_;
  Time last_ = 0;
  Time lastExtra_ = 0;
  Time finish_ = LRK_NO_TIME;
  int noOfControls_ = 0;
};

class SplitList {
 public:
  SplitList(ReadJob& job, const TextLines& file, bool isNamed)
      : job_(job), run_(job), fileLines_(file.count()), lines_(pageLines(file.text())) {
    const std::string_view first = lineAt(0);
    columns_ = columnsOfHeader(first);
    valid_ = isNamed || isKnownHeader(first);
    if (columns_) header_ = trimmed(first);
  }

  bool valid() const { return valid_; }

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
    SplitsReader splits(runner, notes, columns_->timeEnd);
    runner.startTime(0);
    const std::vector<ControlColumn> ownControls = controlsOf(first, columns_->timeEnd);
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
    if (isSecond(second)) {
      const std::string_view club = columns_->name(second);
      if (!club.empty()) runner.club(utf8FromWindows1252(club));
    }
    if (run_.category().courseLengthSet()) runner.courseLength(run_.category().courseLength());
    const std::string_view place = columns_->place(first);
    if (const auto number = wholeNumber(place)) {
      runner.resultPlace(saturated<std::int16_t>(leadingInteger(place)));
    } else if (!place.empty()) {
      notes("unreadable place", utf8FromWindows1252(place));
    }
    readStatus(columns_->result(first), runner, notes);
  }

  static void readStatus(std::string_view result, LRKRunner& runner, const LineNotes& notes) {
    runner.status(estaUnknown);
    if (isTimeText(result) && !isDisq(timeOf(result))) {
      runner.status(estaOK);
      return;
    }
    const std::string text = utf8FromWindows1252(result);
    auto status = statusOf(lowered1252(result));
    if (!status) status = statusOf(columnKey(text));
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
    const std::vector<Word> words = wordsOf(times, columns_->timeEnd);
    const auto missing = [](const Word& word) { return isMissing(word.text); };
    const bool blank = std::all_of(words.begin(), words.end(), missing);
    if (blank && columns_->isContinuation(line)) return {};
    ++at_;
    return line;
  }

  bool atContinuation() const {
    const std::string_view line = lineAt(at_);
    return !line.empty() && columns_->isContinuation(line);
  }

  void readRows(std::string_view times, SplitsReader& splits) {
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
  void readOwnCourse(std::vector<ControlColumn> controls, SplitsReader& splits) {
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
      controls = controlsOf(lineAt(at_), columns_->timeEnd);
      if (!controls.empty()) ++at_;
    } while (at_ < lines_.size());
  }

  ReadJob& job_;
  ReaderRun run_;
  int fileLines_;
  std::vector<PageLine> lines_;
  std::size_t at_ = 0;
  std::string_view header_;
  bool valid_ = false;
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
  std::string_view rest = page;
  removeThroughNoCase(rest, "<title>");
  const std::string title = lineText(popFieldNoCase(rest, "</title>"));
  removeThroughNoCase(rest, "<b>");
  const std::string bold = lineText(popFieldNoCase(rest, "</b>"));
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
  const bool isHtml = hasPreformattedBlock(page);
  const bool isTable = !isHtml && occursIn(page, "<table");
  const bool isNamed = detectSportSoftwareSplits({job.fileName, true}) != 0 && !isTable;
  SplitList list(job, file, isNamed);
  if (!list.valid()) return LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT_INVALID_FORMAT;
  job.event.name(eventNameOf(page, isHtml));
  return list.read(programOf(page, isHtml));
}

}  // namespace larkstone
