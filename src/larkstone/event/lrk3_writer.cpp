// The event file of the previous generation: names and leg times behind a table of categories.

#include <algorithm>
#include <limits>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/export_file.hpp"

namespace larkstone {

namespace {

// The low bytes of a number; a negative one counts as 0.
std::string little(std::int64_t value, std::size_t width) {
  std::string bytes(width, '\0');
  value = std::max<std::int64_t>(value, 0);
  for (char& byte : bytes) {
    byte = static_cast<char>(value & 0xFF);
    value >>= 8;
  }
  return bytes;
}

std::string shortText(std::string_view utf8) {
  const std::string bytes = windows1252FromUtf8(utf8).substr(0, 255);
  return little(static_cast<std::int64_t>(bytes.size()), 1) + bytes;
}

std::string headerOf(const LRKEvent& event) {
  std::string title = event.name();
  if (event.organiserSet()) title += ", " + event.organiser();
  return "\x0DLarkstone 3.0" + shortText(title) + little(roundHalfEven(event.startDate().day), 4) +
         little(event.noOfCategories(), 2);
}

std::string nameWithClub(const LRKRunner& runner) {
  std::string name = runner.name();
  if (runner.clubSet()) name += ", " + runner.club();
  if (runner.clubCountrySet()) {
    name += ", " + runner.clubCountry();
  } else if (runner.clubCountryCodeSet()) {
    name += ", " + runner.clubCountryCode();
  }
  return name;
}

// The time to the punch from the one before it.
Time legTime(const LRKPunches& punches, int punch) {
  if (punch >= punches.count()) return LRK_NO_TIME;
  const Time begin = punches.time(punch - 1);
  const Time end = punches.time(punch);
  return isDisq(begin) || isDisq(end) || end < begin ? LRK_NO_TIME : end - begin;
}

std::string runnerRecord(const LRKRunner& runner, int noOfLegs) {
  const LRKPunches& punches = runner.punches();
  std::string record = shortText(nameWithClub(runner));
  record += little(punches.count() > 0 ? punches.time(0) : 0, 3);
  for (int leg = 1; leg <= noOfLegs; ++leg) record += little(legTime(punches, leg), 3);
  return record;
}

// Every runner gets as many legs as the longest one has, so a block can be much larger than the
// category: it is handed on in pieces.
template <class Sink>
void encode(const LRKCategory& category, Sink sink) {
  int noOfLegs = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    noOfLegs = std::max(noOfLegs, category.runner(i).punches().count() - 1);
  }
  sink(shortText(category.name()) + little(category.noOfRunners(), 2) + little(noOfLegs, 2));
  sink(std::string(4 * static_cast<std::size_t>(noOfLegs), '\0'));
  for (int i = 0; i < category.noOfRunners(); ++i) sink(runnerRecord(category.runner(i), noOfLegs));
}

}  // namespace

// The table in front needs the lengths of all blocks: every category is encoded twice, first to be
// measured.
std::int32_t writeLrk3(LRKEvent& event, ExportFile& file) {
  const std::string header = headerOf(event);
  std::string table;
  std::int64_t offset =
      static_cast<std::int64_t>(header.size()) + std::int64_t{8} * event.noOfCategories() + 1;
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.category(i);
    if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    std::int64_t length = 0;
    encode(*category, [&length](std::string_view piece) {
      length += static_cast<std::int64_t>(piece.size());
    });
    table += little(offset, 4) + little(length, 4);
    offset += length;
  }
  // Offsets of 4 bytes do not reach further.
  if (offset > std::numeric_limits<std::uint32_t>::max()) return LRK_COULD_NOT_OPEN_FILE;

  file.write(header + table);
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.category(i);
    if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    encode(*category, [&file](std::string_view piece) { file.write(piece); });
  }
  return 0;
}

}  // namespace larkstone
