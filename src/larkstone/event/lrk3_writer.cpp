// The event file of the previous generation: names and leg times behind a table of categories.

#include <algorithm>
#include <limits>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/export_file.hpp"
#include "larkstone/event/working_file.hpp"

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
void writeBlock(const LRKCategory& category, ExportFile& blocks) {
  int noOfLegs = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    noOfLegs = std::max(noOfLegs, category.runner(i).punches().count() - 1);
  }
  blocks.write(shortText(category.name()) + little(category.noOfRunners(), 2) +
               little(noOfLegs, 2));
  blocks.write(std::string(4 * static_cast<std::size_t>(noOfLegs), '\0'));
  for (int i = 0; i < category.noOfRunners(); ++i) {
    blocks.write(runnerRecord(category.runner(i), noOfLegs));
  }
}

// Writes the block of every category behind the one before and gives their ends.
std::int32_t writeBlocks(const LRKEvent& event, WorkingFile& file,
                         std::vector<std::int64_t>& ends) {
  ExportFile blocks([&file](std::string_view bytes) { return file.append(bytes); });
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.storedCategory(i);
    if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    writeBlock(*category, blocks);
    if (!blocks.flush()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    // Offsets of 4 bytes do not reach further.
    if (file.size() > std::numeric_limits<std::uint32_t>::max()) return LRK_COULD_NOT_OPEN_FILE;
    ends.push_back(file.size());
  }
  return 0;
}

}  // namespace

// The table in front needs the lengths of all blocks, so these are set aside first.
std::int32_t writeLrk3(const LRKEvent& event, ExportFile& file) {
  WorkingFile blocks(nativeFolder(event.tempFilePath()));
  std::vector<std::int64_t> ends;
  if (const std::int32_t code = writeBlocks(event, blocks, ends)) return code;

  const std::string header = headerOf(event);
  const std::int64_t begin = static_cast<std::int64_t>(header.size() + 8 * ends.size()) + 1;
  if (begin + blocks.size() > std::numeric_limits<std::uint32_t>::max()) {
    return LRK_COULD_NOT_OPEN_FILE;
  }
  file.write(header);
  std::int64_t end = 0;
  for (const std::int64_t next : ends) {
    file.write(little(begin + end, 4) + little(next - end, 4));
    end = next;
  }
  const auto write = [&file](std::string_view bytes) {
    file.write(bytes);
    return true;
  };
  return blocks.transferTo(0, end, write) ? 0 : LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
}

}  // namespace larkstone
