// Larkstone Standard Text: a header of four lines, then a block per category with the lengths of
// the legs and a line per runner with the times of the legs.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/date_text.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/text_lines.hpp"

namespace larkstone {

namespace {

constexpr std::string_view delimiter = "\t";

// The format has no control codes: they count from 31.
constexpr int firstControl = 31;
constexpr int mostLegs = LRK_START_CODE - firstControl + 1;

// So many legs that a line lacks at its end get a punch without a time. A few bytes of a file could
// ask for thousands otherwise.
constexpr int mostMissingLegs = 255;

// Tabs separate fields also at the ends of a line.
std::string_view withoutBlanks(std::string_view line) {
  const auto first = line.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(' ') - first + 1);
}

std::string_view nextLine(TextLines& lines) {
  std::string_view line;
  lines.next(line);
  return withoutBlanks(line);
}

std::string takeText(std::string_view& line) {
  return std::string(trimmed(popField(line, delimiter)));
}

// The course of a block. Its length is known when every leg's is.
struct Legs {
  int count = 0;
  bool lengthKnown = false;
  Length length = 0;
};

Code beginCode(int leg) {
  return leg == 0 ? LRK_START_CODE : static_cast<Code>(firstControl - 1 + leg);
}

Legs readLegs(std::string_view line, LRKCategory& category, const LineNotes& notes) {
  Legs legs;
  std::int64_t total = 0;
  bool allKnown = true;
  while (!line.empty() && legs.count < mostLegs) {
    const std::int32_t metres = roundHalfEven(textToNumber(popField(line, delimiter)));
    const bool last = line.empty() || legs.count == mostLegs - 1;
    category.legLength(beginCode(legs.count), last ? LRK_FINISH_CODE : beginCode(legs.count + 1),
                       metres);
    allKnown = allKnown && metres >= 1;
    total += std::int64_t{metres} * 100;
    ++legs.count;
  }
  if (!line.empty()) notes("too many legs");
  legs.lengthKnown = allKnown && legs.count > 0;
  legs.length = saturated<Length>(total);
  if (legs.lengthKnown) category.courseLength(legs.length);
  return legs;
}

Time takeTime(std::string_view& line, std::string_view what, const LineNotes& notes) {
  const std::string_view text = trimmed(popField(line, delimiter));
  const Time time = csvTime(text);
  if (isDisq(time) && !text.empty() && !text.starts_with('-')) notes(what, text);
  return time;
}

void readLegTimes(std::string_view line, int count, Time start, LRKRunner& runner,
                  const LineNotes& notes) {
  // Behind a missing leg no time is known.
  Time time = start;
  const auto takeLeg = [&] {
    const Time legTime = takeTime(line, "unreadable leg time", notes);
    time = isDisq(time) || isDisq(legTime) ? LRK_NO_TIME
                                           : saturated<Time>(std::int64_t{time} + legTime);
  };
  int control = 1;
  for (; control < count && !line.empty(); ++control) {
    takeLeg();
    runner.punches().add(time, beginCode(control));
  }
  const int end = std::min(count, control + mostMissingLegs);
  if (end < count) notes("most legs are missing");
  for (; control < end; ++control) runner.punches().add(LRK_NO_TIME, beginCode(control));
  if (count == 0) return;
  takeLeg();
  runner.finishTime(time);
  runner.status(isDisq(time) ? estaDidNotFinish : estaOK);
}

bool readRunner(std::string_view line, const Legs& legs, int number, ReadJob& job, ReaderRun& run) {
  LRKRunner runner;
  const LineNotes notes(job.session, number, &runner);
  runner.name(takeText(line));
  runner.club(takeText(line));
  const Time start = takeTime(line, "unreadable start time", notes);
  runner.startTime(start);
  readLegTimes(line, legs.count, start, runner, notes);
  if (legs.lengthKnown) runner.courseLength(legs.length);
  return run.addRunner(std::move(runner), notes);
}

void readHead(TextLines& lines, LRKEvent& event) {
  const std::string_view name = nextLine(lines);
  if (!name.empty()) event.name(std::string(name));
  const std::string_view date = nextLine(lines);
  const bool threeNumbers = date.find_first_not_of("0123456789.-/ ") == std::string_view::npos &&
                            date.find_first_of(".-/") != date.find_last_of(".-/");
  if (const auto day = threeNumbers ? dateOf(date) : std::nullopt) event.startDate(*day);
  nextLine(lines);
}

}  // namespace

std::int32_t readStandardText(ReadJob& job) {
  TextLines lines;
  lines.read(job.fileName);
  if (lowered(nextLine(lines)) != "larkstone standard text format") {
    return LRK_IMPORT_LARKSTONE_STANDARD_TEXT_INVALID_FORMAT;
  }
  readHead(lines, job.event);

  ReaderRun run(job, CourseLengthFrom::runners);
  Legs legs;
  for (std::string_view line; lines.next(line);) {
    line = withoutBlanks(line);
    if (line.empty()) {
      run.endCategory();
    } else if (!run.hasCategory()) {
      if (trimmed(line).empty()) continue;
      LRKCategory category;
      category.name(std::string(trimmed(line)));
      legs = readLegs(nextLine(lines), category, LineNotes(job.session, lines.number()));
      run.beginCategory(std::move(category));
    } else if (!readRunner(line, legs, lines.number(), job, run)) {
      break;
    }
    if (!run.progress(lines.number(), lines.count())) break;
  }
  return run.end("Larkstone Standard Text");
}

}  // namespace larkstone
