// Split lists of Pekka Pirilä's programs: two blocks for each class, the state at the controls
// ("Tilanne rasteilla"), which is read, and the times of the legs ("Rastivälien ajat"), which
// follow from it; only the result of a line that lacks it above is taken from them.
//
//     <H3>H21   Tilanne rasteilla
//
//     </H3><PRE>
//     Sija  Nimi                          1.           2.      Tulos
//
//       1. Matti Malli                  2-26       1-1.03     12.50  Matti Malli
//       2. Pekka Pitkäniminen-Mall      1-25       2-1.04   1.00.13  Pekka Pitkäniminen-Malli
//      HYL Ville Virtanen                  -       3-1.10  Ville Virtanen
//       3. Kalle Keino               13.45
//
// A column holds the rank and the time from the start, the last one the result. Controls have no
// codes; they count from 31.

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/status_words.hpp"

namespace larkstone {

namespace {

constexpr std::string_view stateAtControls = "Tilanne rasteilla";
constexpr std::size_t nameStart = 5;
constexpr std::string_view legTimes = "Rastivälien ajat";
constexpr std::size_t nameWidth = 21;
constexpr std::size_t timesStart = 26;
constexpr std::size_t timeWidth = 13;
constexpr std::size_t resultWidth = 10;
constexpr int firstControl = 31;

constexpr StatusWord statusWords[] = {
    {"hyl", estaMisPunch},      {"virh", estaMisPunch},    {"miss", estaMisPunch},
    {"kesk", estaDidNotFinish}, {"dnf", estaDidNotFinish}, {"dq", estaDisqualified},
};

// The class whose block of that kind a heading is about; nothing for a heading of another kind.
// Pages of other programs write these words in small letters.
std::optional<std::string> classNameOf(const std::string& text, std::string_view kind) {
  const std::string_view name = textBefore(text, kind);
  if (name.size() == text.size()) return std::nullopt;
  return std::string(trimmed(name));
}

// The last column of times: what stands before the word for the result in the header of a block.
std::string_view lastColumnOf(std::string_view header) {
  header = trimmed(header);
  header = trimmed(header.substr(0, header.size() - std::min(header.size(), resultWidth)));
  return trimmed(header.substr(header.size() - std::min<std::size_t>(header.size(), 4)));
}

// The number of a column: of its control "12." or of the leg "12-M", which begins there. 0 when it
// is none.
int numberOf(std::string_view column, std::string_view end) {
  if (!column.ends_with(end)) return 0;
  const auto number = wholeNumber(column.substr(0, column.size() - end.size()));
  return number && *number > 0 ? static_cast<int>(*number) : 0;
}

// The name, and where it fills its column (some programs leave the last place blank) the whole one
// from the end of the line.
std::string nameOf(std::string_view line, std::size_t resultStart) {
  const std::string_view name = columnText(line, nameStart, nameStart + nameWidth);
  if (name.size() + 1 >= nameWidth) {
    for (const std::size_t start : {resultStart, resultStart + resultWidth}) {
      const std::string_view whole = columnText(line, start);
      if (whole.starts_with(name)) return utf8FromWindows1252(whole);
    }
  }
  return utf8FromWindows1252(name);
}

class PekkaPirilaReader {
 public:
  PekkaPirilaReader(ReadJob& job, int lineCount) : job_(job), run_(job), lineCount_(lineCount) {}

  std::int32_t read(std::string_view html);

 private:
  bool readClass(HtmlPage& page, std::string name);
  bool readRunner(const PageLine& pageLine, int controls);
  void readResults(HtmlPage& page);
  void readTimes(std::string_view line, int controls, const LineNotes& notes,
                 LRKRunner& runner) const;

  ReadJob& job_;
  ReaderRun run_;
  int lineCount_;
};

std::int32_t PekkaPirilaReader::read(std::string_view html) {
  bool known = false;
  HtmlPage page(html);
  page.readThrough({"h3"});
  while (!page.tag().empty()) {
    const std::string heading = lineText(page.readThrough({"/h3", "h3", "pre"}));
    auto name = classNameOf(heading, stateAtControls);
    const auto again = classNameOf(heading, legTimes);
    if (again && run_.hasCategory() && sharedName(*again) == run_.category().name()) {
      readResults(page);
    } else if (name) {
      std::string eventName = known ? "" : elementText(html, "title");
      if (!eventName.empty()) job_.event.name(std::move(eventName));
      known = true;
      if (!readClass(page, std::move(*name))) return run_.code();
    }
    if (page.tag() != "h3") page.readThrough({"h3"});
  }
  return known ? run_.end("Pekka Pirilä") : LRK_IMPORT_PEKKA_PIRILA_INVALID_FORMAT;
}

// Begins behind the heading and ends behind the block, or behind the next heading's tag where there
// is no block.
bool PekkaPirilaReader::readClass(HtmlPage& page, std::string name) {
  LRKCategory category;
  category.name(std::move(name));
  run_.beginCategory(std::move(category));
  if (page.tag() == "/h3") page.readThrough({"pre", "h3"});
  if (page.tag() == "pre") {
    const int firstLine = page.line();
    const std::vector<PageLine> lines = linesOf(page.readThrough({"/pre", "h3"}), firstLine);
    const PageLine header = lines.empty() ? PageLine{firstLine, {}} : lines[0];
    const int controls = numberOf(lastColumnOf(header.text), ".");
    if (controls == 0) {
      LineNotes(job_.session, header.number)("no controls in",
                                             utf8FromWindows1252(trimmed(header.text)));
    }
    for (std::size_t i = 1; controls > 0 && i < lines.size(); ++i) {
      if (!readRunner(lines[i], controls) || !run_.progress(lines[i].number, lineCount_))
        return false;
    }
  }
  return run_.progress(page.line(), lineCount_);
}

bool PekkaPirilaReader::readRunner(const PageLine& pageLine, int controls) {
  std::string_view line = pageLine.text;
  while (line.ends_with(' ')) line.remove_suffix(1);
  // A line without times has its result where they would begin.
  if (line.size() < timesStart + timeWidth) controls = 0;
  LRKRunner runner;
  const LineNotes notes(job_.session, pageLine.number, &runner);
  const std::size_t resultStart = timesStart + timeWidth * static_cast<std::size_t>(controls);
  runner.name(nameOf(line, resultStart));
  if (runner.name().empty()) {
    notes("no name in", utf8FromWindows1252(trimmed(line)));
    return true;
  }
  const auto place = wholeNumber(columnText(line, 0, 3));
  if (place) runner.resultPlace(static_cast<std::int16_t>(*place));
  const std::string word = lowered1252(columnText(line, 0, 4));
  const enmStatus status = place ? estaOK : statusOf(word, statusWords).value_or(estaUnknown);
  runner.status(statusByPlace(word, status));
  runner.startTime(0);
  readTimes(line, controls, notes, runner);
  const std::string_view result = columnText(line, resultStart, resultStart + resultWidth);
  if (isTimeText(result)) {
    runner.finishTime(sexagesimalTextToTime(result));
  } else if (place && !result.empty()) {
    notes("no result", utf8FromWindows1252(result));
  }
  return run_.addRunner(std::move(runner), notes);
}

// The block of leg times: results that the state at the controls does not have.
void PekkaPirilaReader::readResults(HtmlPage& page) {
  if (page.tag() == "/h3") page.readThrough({"pre", "h3"});
  if (page.tag() != "pre") return;
  const int firstLine = page.line();
  const std::vector<PageLine> lines = linesOf(page.readThrough({"/pre", "h3"}), firstLine);
  const std::string_view header = lines.empty() ? std::string_view() : lines.front().text;
  const auto legs = static_cast<std::size_t>(numberOf(lastColumnOf(header), "-M")) + 1;
  const std::size_t start = timesStart + timeWidth * legs;
  std::unordered_map<std::string, LRKRunner*> lacking;
  for (int i = 0; i < run_.category().noOfRunners(); ++i) {
    LRKRunner& runner = run_.category().runner(i);
    if (isDisq(runner.finishTime())) lacking.try_emplace(runner.name(), &runner);
  }
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const std::string_view line = lines[i].text;
    const std::string_view result = columnText(line, start, start + resultWidth);
    const auto found = lacking.find(nameOf(line, start));
    if (found == lacking.end() || !isTimeText(result)) continue;
    found->second->finishTime(sexagesimalTextToTime(result));
    lacking.erase(found);
  }
}

// Controls that a line cut short does not reach are left out.
void PekkaPirilaReader::readTimes(std::string_view line, int controls, const LineNotes& notes,
                                  LRKRunner& runner) const {
  std::size_t start = timesStart;
  for (int i = 0; i < controls && start < line.size(); ++i, start += timeWidth) {
    const std::string_view text = columnText(line, start, start + timeWidth);
    const bool missing = text.ends_with('-');
    const bool known = !missing && isTimeText(text.substr(text.find('-') + 1));
    if (!known && !missing) notes("time of a control", utf8FromWindows1252(text));
    const Time time = known ? sexagesimalTextToTime(text) : LRK_NO_TIME;
    runner.punches().add(time, static_cast<Code>(firstControl + i));
  }
}

}  // namespace

std::int32_t readPekkaPirilaHtml(ReadJob& job) {
  TextLines lines;
  if (!lines.read(job.fileName, TextLines::Form::windows1252)) {
    return LRK_IMPORT_PEKKA_PIRILA_INVALID_FORMAT;
  }
  return PekkaPirilaReader(job, lines.count()).read(lines.text());
}

}  // namespace larkstone
