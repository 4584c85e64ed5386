// The event file of the previous generation: per category leg lengths, names and leg times.
//
// It knows no control codes: the controls of every runner are 31, 32, ... in the order of the run.
// Nor does it know a status. A runner with a time on every leg is OK; one who has a leg time behind
// a missing one went on without a punch that counts. For all others the status is unknown: whoever
// left the course, never started or ran a shorter course looks the same.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/event/byte_buffer.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

constexpr std::string_view magic =
    "\x0D"
    "Larkstone 3.0";
constexpr Code firstControl = 31;
// Controls beyond would have the code of a start.
constexpr int mostLegs = LRK_START_CODE - firstControl + 1;

int count16(ByteReader& reader) { return static_cast<std::uint16_t>(reader.integer()); }
std::int64_t count32(ByteReader& reader) {
  return static_cast<std::uint32_t>(reader.longInteger());
}
std::string shortText(ByteReader& reader) { return utf8FromWindows1252(reader.raw(reader.byte())); }

// The code at the end of a leg, counted from 1.
Code codeBehind(int leg, int noOfLegs) {
  return leg == noOfLegs ? LRK_FINISH_CODE : static_cast<Code>(firstControl + leg - 1);
}

// Lengths count only when every leg has one.
void readLegLengths(ByteReader& reader, int noOfLegs, LRKCategory& category) {
  std::vector<LegLength> legs;
  std::int64_t sum = 0;
  bool complete = noOfLegs > 0;
  Code begin = LRK_START_CODE;
  for (int leg = 1; leg <= noOfLegs; ++leg) {
    const Code end = codeBehind(leg, noOfLegs);
    const Length length = reader.longInteger();
    complete = complete && length >= 1;
    sum += length;
    legs.push_back({begin, end, length});
    begin = end;
  }
  if (!complete) return;
  category.legLengthArray(legs);
  category.courseLength(saturated<Length>(sum));
}

void readName(ByteReader& reader, LRKRunner& runner) {
  const std::string text = shortText(reader);
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos) {
    runner.name(text);
    return;
  }
  runner.name(std::string(trimmed(text.substr(0, comma))));
  const std::string_view club = trimmed(std::string_view(text).substr(comma + 1));
  if (!club.empty()) runner.club(std::string(club));
}

// Behind a leg without a time nobody knows when the runner was where.
void readTimes(ByteReader& reader, int noOfLegs, LRKRunner& runner) {
  const Time start = reader.int24();
  Time time = isDisq(start) ? 0 : start;
  runner.startTime(time);
  bool missing = isDisq(start);
  bool wentOn = false;
  for (int leg = 1; leg <= noOfLegs; ++leg) {
    const Time legTime = reader.int24();
    wentOn = wentOn || (missing && !isDisq(legTime));
    missing = missing || isDisq(time + legTime);
    time = missing ? LRK_NO_TIME : time + legTime;
    runner.punches().add(time, codeBehind(leg, noOfLegs));
  }
  if (wentOn) {
    runner.status(estaMisPunch);
  } else if (!missing && noOfLegs > 0) {
    runner.status(estaOK);
  }
}

class Lrk3Reader {
 public:
  Lrk3Reader(ReadJob& job, std::string_view file)
      : job_(job), run_(job), file_(file), toRead_(static_cast<std::int64_t>(file.size())) {}

  std::int32_t read() {
    ByteReader header(file_);
    header.raw(static_cast<std::int64_t>(magic.size()));
    job_.event.name(shortText(header));
    const Date date{static_cast<double>(count32(header))};
    if (date.day > 0 && isDate(date)) job_.event.eventDate(date);
    const int noOfCategories = count16(header);
    for (int i = 0; i < noOfCategories; ++i) {
      const std::int64_t offset = count32(header) - 1;
      const std::int64_t length = count32(header);
      if (header.failed()) break;
      readBlock(blockAt(offset, length));
      if (!run_.progress(i + 1, noOfCategories)) break;
    }
    return run_.end("LRK3");
  }

 private:
  // What is there of a block.
  std::string_view blockAt(std::int64_t offset, std::int64_t length) const {
    if (offset < 0 || offset >= static_cast<std::int64_t>(file_.size())) return {};
    return file_.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
  }

  // A block that ends too early keeps its first runners. Blocks that overlap may not make more of
  // the file than is in it.
  void readBlock(std::string_view block) {
    ByteReader reader(block);
    LRKCategory category;
    category.name(shortText(reader));
    const int noOfRunners = count16(reader);
    const int noOfLegs = count16(reader);
    if (reader.failed() || noOfLegs > mostLegs || toRead_ < 0) {
      return note("category cannot be read", category);
    }
    if (reader.has(std::int64_t{4} * noOfLegs)) readLegLengths(reader, noOfLegs, category);
    run_.beginCategory(std::move(category));
    readRunners(reader, noOfRunners, noOfLegs);
    toRead_ -= static_cast<std::int64_t>(reader.position());
    run_.endCategory();
  }

  void readRunners(ByteReader& reader, int noOfRunners, int noOfLegs) {
    const std::int64_t smallest = 4 + std::int64_t{3} * noOfLegs;
    const auto most =
        static_cast<int>(std::min<std::int64_t>(noOfRunners, reader.remaining() / smallest));
    LRKCategory& category = run_.category();
    category.reserveRunners(std::min(most, LRK_MAX_LIST));
    const auto notes = [&](std::string_view what) { note(what, category); };
    for (int i = 0; i < most; ++i) {
      LRKRunner runner;
      readName(reader, runner);
      if (!reader.has(smallest - 1)) break;
      readTimes(reader, noOfLegs, runner);
      if (!run_.addRunner(std::move(runner), notes)) return;
    }
    if (category.noOfRunners() < noOfRunners) notes("runners are missing");
    // Seconds, or finer where a time is.
    category.timeAccuracy(std::min(category.timeAccuracy(), category.getHighestTimeAccuracy()));
  }

  void note(std::string_view what, const LRKCategory& category) const {
    job_.session.note(what, {}, [&] { return quoted("category", category.name()); });
  }

  ReadJob& job_;
  ReaderRun run_;
  std::string_view file_;
  std::int64_t toRead_;
};

}  // namespace

std::int32_t readLrk3(ReadJob& job) {
  if (File(job.fileName, File::Mode::read).readAt(0, std::ssize(magic)) != magic) {
    return LRK_IMPORT_LRK3_INVALID_FORMAT;
  }
  std::string bytes;
  if (!readFile(job.fileName, bytes)) return LRK_IMPORT_LRK3_INVALID_FORMAT;
  return Lrk3Reader(job, bytes).read();
}

}  // namespace larkstone
