// eTiming's page of split times. The runners of a class stand in preformatted text, each in bold,
// with the family name first or the given name first. Below are the times at the controls and, in
// lines of their own, those of the legs. A row of controls may stand above the runners or above the
// times of one of them; without it the codes are counted from 31.
//
//   <h1>Spring Sprint</h1>  <h3>OK North</h3>
//   <h2>D21  4.2 km</h2>
//   <table> ... </table>
//   <pre>
//                          1(101)   2(102)   F
//   <b>  1 Bell, Ann                   32:01       OK North</b>      the club from column 45 on
//                            3:38    5:57  32:01
//                            3:38    2:19  26:04
//   </pre>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/length.hpp"
#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/split_list.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/status_words.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr std::size_t clubColumn = 44;  // counted from 0
constexpr int firstUnknownCode = 31;

bool isMissing(std::string_view time) { return time.find_first_not_of("-.") == nowhere; }

// "3:38", "3.38" or "1.05.41": a number alone and "1." are no times.
bool hasSeconds(std::string_view text) {
  const auto stop = text.rfind('.');
  return text.find(':') != nowhere ||
         (stop != nowhere && stop > 0 && text.size() == stop + 3 && text.front() != '.');
}

// A time, or what stands in for a missing one.
bool isTimeWord(const Word& word) {
  return isMissing(word.text) || (isTimeText(word.text) && hasSeconds(word.text));
}

bool hasLetter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c & 0x80) != 0;
  });
}

// Cuts preformatted text where runners begin: at a bold text with letters in it. Bold times are the
// fastest ones. The first piece is what stands before.
std::vector<std::string_view> runnersOf(std::string_view text) {
  std::vector<std::string_view> pieces;
  const char* begin = text.data();
  HtmlPage page(text);
  for (;;) {
    const std::string_view before = page.readThrough({"b"});
    if (page.tag().empty()) break;
    HtmlPage ahead = page;
    if (!hasLetter(pageText(ahead.readThrough({"/b", "b"})))) continue;
    const char* const end = before.data() + before.size();
    pieces.emplace_back(begin, static_cast<std::size_t>(end - begin));
    begin = end;
  }
  pieces.emplace_back(begin, static_cast<std::size_t>(text.data() + text.size() - begin));
  return pieces;
}

// "Bell, Ann" as "Ann Bell".
std::string turnedAround(std::string_view name) {
  const auto comma = name.find(',');
  if (comma == nowhere) return std::string(name);
  std::string turned(trimmed(name.substr(comma + 1)));
  return turned.append(" ").append(trimmed(name.substr(0, comma)));
}

// The times of one runner, line by line.
class PassingTimes {
 public:
  // The line goes on with the course, or its times begin anew: then they are those of the legs.
  void add(const std::vector<Word>& words, std::size_t noOfControls) {
    const auto first = std::find_if(words.begin(), words.end(), [](const Word& word) {
      return isTimeWord(word) && !isMissing(word.text);
    });
    const bool goesOn =
        first == words.end() ? times_.size() < noOfControls : timeOf(first->text) > last_;
    if (!times_.empty() && !goesOn) return;
    for (const Word& word : words) {
      if (!isTimeWord(word)) continue;
      times_.push_back(timeOf(word.text));
      if (!isDisq(times_.back())) last_ = times_.back();
    }
  }

  const std::vector<Time>& times() const { return times_; }

  static Time timeOf(std::string_view text) {
    return isMissing(text) ? LRK_NO_TIME : stringToTime(text, etacSeconds, true);
  }

 private:
  std::vector<Time> times_;
  Time last_ = 0;
};

class ETimingReader {
 public:
  ETimingReader(ReadJob& job, std::string_view page, int lines)
      : job_(job), run_(job), page_(page), lines_(lines) {}

  std::int32_t read() {
    page_.readThrough({"h2"});
    while (!page_.tag().empty() && !run_.stopped()) {
      const int line = page_.line();
      readClass(HtmlPage(page_.readThrough({"h2"}), line));
    }
    return run_.end("eTiming");
  }

 private:
  void readClass(HtmlPage part) {
    LRKCategory category;
    std::string_view heading = trimmed(part.readThrough({"/h2"}));
    while (heading.starts_with('<')) removeThrough(heading, ">");
    const std::string_view html = textBefore(heading, "<");
    const std::string name = pageText(html);
    const auto gap = std::min(name.find("  "), name.size());
    const std::string length = lineText(name.substr(gap)) + lineText(heading.substr(html.size()));
    category.name(utf8FromWindows1252(trimmed(name.substr(0, gap))));
    if (length.ends_with('m') && stringToLength(length) > 0) {
      category.courseLength(stringToLength(length));
    }
    run_.beginCategory(std::move(category));
    controls_.clear();
    HtmlPage list = part;
    list.readThrough({"pre"});
    if (list.tag().empty()) {
      list = part;
      list.readThrough({"/table"});
    }
    const int line = list.line();
    readRunners(list.readThrough({"/pre"}), line);
  }

  void readRunners(std::string_view text, int line) {
    bool isRunner = false;  // the first piece is none
    for (const std::string_view piece : runnersOf(text)) {
      if (isRunner) {
        readRunner(piece, line);
      } else {
        for (const PageLine& above : linesOf(piece, line)) readControls(above.text);
      }
      line += static_cast<int>(std::count(piece.begin(), piece.end(), '\n'));
      if (isRunner && !run_.progress(line, lines_)) return;
      isRunner = true;
    }
  }

  // Rows follow each other when a course has more controls than one holds; the last may hold the
  // finish alone.
  bool readControls(std::string_view line) {
    const std::vector<ControlColumn> row = controlsOf(line);
    const bool isComplete = !controls_.empty() && controls_.back().isFinish;
    if (row.empty() || isComplete || (row.front().isFinish && controls_.empty())) return false;
    controls_.insert(controls_.end(), row.begin(), row.end());
    return true;
  }

  void readRunner(std::string_view text, int line) {
    LRKRunner runner;
    const LineNotes notes(job_.session, line, &runner);
    const std::vector<PageLine> lines = linesOf(text, line);
    if (lines.empty()) return;
    const Time result = readPerson(lines.front().text, runner);
    const std::vector<Word> words = wordsOf(lines.front().text);
    const std::string_view place = words.empty() ? std::string_view() : words.front().text;
    runner.status(statusByPlace(place, estaOK));
    runner.startTime(0);
    if (run_.category().courseLengthSet()) runner.courseLength(run_.category().courseLength());
    const PassingTimes passings = readPassings(lines, notes);
    addPunches(passings.times(), result, runner, notes);
    run_.addRunner(std::move(runner), notes);
  }

  PassingTimes readPassings(const std::vector<PageLine>& lines, const LineNotes& notes) {
    PassingTimes passings;
    bool hasOwnControls = false;
    for (std::size_t i = 1; i < lines.size(); ++i) {
      const std::string_view line = lines[i].text;
      const std::vector<Word> words = wordsOf(line);
      if (!hasOwnControls && !controlsOf(line).empty() && !controlsOf(line).front().isFinish) {
        controls_.clear();
        hasOwnControls = true;
      }
      if (readControls(line)) continue;
      if (std::none_of(words.begin(), words.end(), isTimeWord)) {
        notes("line skipped", utf8FromWindows1252(trimmed(line)));
      }
      passings.add(words, controls_.size());
    }
    return passings;
  }

  // The runner's place, name and club; the result.
  static Time readPerson(std::string_view line, LRKRunner& runner) {
    const std::string_view person = line.substr(0, clubColumn);
    const std::string_view club = columnText(line, clubColumn);
    if (!club.empty()) runner.club(utf8FromWindows1252(club));
    std::vector<Word> words = wordsOf(person);
    std::size_t begin = 0;
    const std::string_view place = words.empty() ? std::string_view() : words.front().text;
    if (const auto number = wholeNumber(place.substr(0, place.find('.')))) {
      runner.resultPlace(saturated<std::int16_t>(leadingInteger(place)));
      begin = words.front().end;
    } else if (isNotCompetingWord(place)) {
      begin = words.front().end;
    }
    Time result = LRK_NO_TIME;
    std::size_t end = person.size();
    if (words.size() > 1 && isTimeWord(words.back())) {
      result = PassingTimes::timeOf(words.back().text);
      end = words.back().begin();
    }
    const std::string_view name = columnText(person, begin, end);
    runner.name(turnedAround(utf8FromWindows1252(name.substr(0, name.find("  ")))));
    return result;
  }

  void addPunches(std::vector<Time> times, Time result, LRKRunner& runner,
                  const LineNotes& notes) const {
    // With its column the last time is the finish; without it when nothing comes later.
    const bool finishColumn = !controls_.empty() && controls_.back().isFinish;
    const bool finishIsListed =
        finishColumn || (!times.empty() && (isDisq(result) || times.back() >= result));
    const std::size_t most = std::max<std::size_t>(times.size(), mostControlsWithoutTimes);
    const std::size_t noOfControls =
        controls_.empty() ? times.size() - (finishIsListed ? 1 : 0)
                          : std::min(controls_.size() - (finishColumn ? 1 : 0), most);
    if (times.size() > noOfControls + (finishIsListed ? 1 : 0)) notes("more times than controls");
    times.resize(std::max(times.size(), noOfControls + 1), LRK_NO_TIME);
    for (std::size_t i = 0; i < noOfControls; ++i) {
      const int counted =
          firstUnknownCode + static_cast<int>(std::min<std::size_t>(i, LRK_MAX_LIST));
      const Code printed = i < controls_.size() ? controls_[i].code : Code{0};
      const int code = printed != 0 ? printed : std::min<int>(counted, LRK_START_CODE - 1);
      runner.punches().add(times[i], static_cast<Code>(code));
    }
    const Time listed = finishIsListed ? times[noOfControls] : LRK_NO_TIME;
    runner.finishTime(isDisq(listed) ? result : listed);
  }

  ReadJob& job_;
  ReaderRun run_;
  HtmlPage page_;
  int lines_;
  std::vector<ControlColumn> controls_;
};

}  // namespace

std::int32_t readETimingHtml(ReadJob& job) {
  TextLines file;
  const bool isRead = file.read(job.fileName, TextLines::Form::windows1252);
  const std::string_view page = file.text();
  const bool hasHeading = hasTag(page, "h1") || hasTag(page, "h2");
  if (!isRead || !hasHeading || !containsNoCase(page, "etiming")) {
    return LRK_IMPORT_ETIMING_HTML_INVALID_FORMAT;
  }
  if (std::string name = elementText(page, "h1"); !name.empty()) job.event.name(std::move(name));
  if (std::string organiser = elementText(page, "h3"); !organiser.empty()) {
    job.event.organiser(std::move(organiser));
  }
  return ETimingReader(job, page, file.count()).read();
}

}  // namespace larkstone
