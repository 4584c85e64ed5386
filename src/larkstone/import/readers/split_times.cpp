#include "larkstone/import/readers/split_times.hpp"

#include <algorithm>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr Code firstUnknownCode = 31;

bool isCut(std::string_view time) { return time.starts_with(':'); }

// The hours that were cut off: at least one, and as many as the order of the times and the time of
// the leg ask for.
Time withHours(Time cut, Time before, std::string_view legTime) {
  constexpr Time hour = 360000;
  const Time leg = isMissingSplit(legTime) ? LRK_NO_TIME : splitTime(legTime);
  const Time least = before + (isDisq(leg) ? 0 : leg + (isCut(legTime) ? hour : 0));
  const Time missing = std::max(least - cut, hour);
  return cut + (missing + hour - 1) / hour * hour;
}

}  // namespace

// A row of times and what stands below them: leg times, or the controls "*100" of extra punches.
struct SplitRow {
  SplitRow(std::string_view timesLine, std::string_view legsLine, std::size_t from)
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

bool isMissingSplit(std::string_view text) {
  return text == "0.00" || text.find_first_not_of('-') == nowhere;
}

Time splitTime(std::string_view text) {
  if (isCut(text)) text.remove_prefix(1);
  return isTimeText(text) ? stringToTime(text, etacAuto, true) : LRK_NO_TIME;
}

void SplitReader::read(const std::vector<ControlColumn>& controls, std::string_view timesLine,
                       std::string_view legsLine) {
  SplitRow row(timesLine, legsLine, timeEnd_);
  std::size_t time = 0;
  std::size_t leg = 0;
  for (const ControlColumn& control : controls) {
    if (control.end > timesLine.size() + 1 && noOfControls_ >= mostControlsWithoutTimes) break;
    const auto found = SplitRow::find(row.times, control.end, time);
    const auto below = SplitRow::find(row.legs, control.end, leg);
    if (found != nowhere) row.used[found] = true;
    add(control, found == nowhere ? "-" : row.times[found].text,
        below == nowhere ? "-" : row.legs[below].text);
  }
  addExtraPunches(row);
  for (std::size_t i = 0; i < row.times.size(); ++i) {
    if (!row.used[i]) notes_("time without a control", utf8FromWindows1252(row.times[i].text));
  }
}

void SplitReader::finish(std::string_view result) {
  if (isDisq(finish_) && !isMissingSplit(result)) finish_ = splitTime(result);
  runner_.finishTime(finish_);
}

void SplitReader::add(const ControlColumn& control, std::string_view text, std::string_view leg) {
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

Time SplitReader::read(std::string_view text, Time before, std::string_view leg) {
  if (isMissingSplit(text)) return LRK_NO_TIME;
  const Time time = splitTime(text);
  if (isDisq(time) || time < 0) {
    notes_("unreadable time", utf8FromWindows1252(text));
    return LRK_NO_TIME;
  }
  return isCut(text) ? clampedTime(withHours(time, before, leg)) : time;
}

// What no control's column claims are extra punches, as many as there are controls below.
void SplitReader::addExtraPunches(SplitRow& row) {
  std::size_t at = 0;
  for (const Word& word : row.legs) {
    if (!word.text.starts_with('*')) continue;
    while (at < row.times.size() && row.used[at]) ++at;
    const auto code = wholeNumber(word.text.substr(1));
    if (at == row.times.size() || !code || *code < 0 || *code >= LRK_START_CODE) {
      notes_("unreadable extra punch", utf8FromWindows1252(word.text));
      continue;
    }
    const std::string_view text = row.times[at].text;
    row.used[at] = true;
    const Time time = read(text, lastExtra_, "-");
    if (!isDisq(time)) lastExtra_ = time;
    runner_.extraPunches().add(time, static_cast<Code>(*code));
  }
}

}  // namespace larkstone
