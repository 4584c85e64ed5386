#include "larkstone/event/event_file.hpp"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string_view>
#include <utility>

#include "larkstone/event/unheld_values.hpp"

namespace larkstone {

namespace {

constexpr std::string_view magic = "lrk4";
constexpr std::int64_t headerOffset = 9;  // behind the magic and the header's length
constexpr std::int64_t bytesPerPosition = 8;

struct Header {
  int version = 0;
  int noOfCategories = 0;
  int noOfDerivedCourses = 0;
  std::int64_t dataOffset = 0;      // counted from 1
  std::vector<std::string> unheld;  // what no property can hold
};

void readHeaderRecord(std::string_view bytes, ByteReader& reader, Header& header, LRKEvent& event) {
  const enmFileTag tag = readTag(reader);
  if (auto text = unheldValue<LRKEvent>(bytes.substr(reader.position()), tag);
      text && header.unheld.size() < mostUnheldValues) {
    header.unheld.push_back(std::move(*text));
  }
  switch (tag) {
    case etagLRKFileVersion:
      header.version = reader.integer();
      break;
    case etagEventNoOfCategories:
      header.noOfCategories = reader.integer();
      break;
    case etagEventNoOfDerivedCourses:
      header.noOfDerivedCourses = reader.integer();
      break;
    case etagEventCategoryOffset:
      header.dataOffset = reader.longInteger();
      break;
    default:
      readRecord(reader, tag, event);  // an unknown tag has no value
  }
}

// Reads the header records; the position behind them, or -1 when the file ends before.
std::int64_t readHeader(const File& file, std::int32_t headerLength, Header& header,
                        LRKEvent& event) {
  constexpr std::int64_t longestRecord = 3 + LRK_MAX_LIST;
  const std::int64_t last = std::int64_t{headerLength} + 8;  // where the last record may begin
  const std::string bytes = file.readAt(
      headerOffset, std::min(file.size(), std::max(last, headerOffset) + longestRecord));
  ByteReader reader(bytes);
  const auto position = [&] { return headerOffset + static_cast<std::int64_t>(reader.position()); };
  while (position() <= last && !reader.failed()) readHeaderRecord(bytes, reader, header, event);
  return reader.failed() ? -1 : position();
}

// Reads a position table at `position` and moves behind it.
bool readTable(const File& file, enmFileTag tag, int count, std::int64_t& position,
               std::vector<Record>& records) {
  if (count < 0 || position + 1 + count * bytesPerPosition > file.size()) return false;
  const std::string bytes = file.readAt(position, 1 + count * bytesPerPosition);
  position += static_cast<std::int64_t>(bytes.size());
  ByteReader reader(bytes);
  if (readTag(reader) != tag) return false;
  records.resize(static_cast<std::size_t>(count));
  for (Record& record : records) {
    record.offset = reader.longInteger();
    record.length = reader.longInteger();
  }
  return !reader.failed();
}

bool allWithin(const std::vector<Record>& records, std::int64_t dataLength) {
  return std::all_of(records.begin(), records.end(), [dataLength](const Record& record) {
    return record.offset >= 0 && record.length >= 0 && record.offset + record.length <= dataLength;
  });
}

// A record without bytes comes before the one that begins where it does.
void numberPlaces(std::vector<Record>& records) {
  std::vector<std::size_t> order(records.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&records](std::size_t a, std::size_t b) {
    return std::pair(records[a].offset, records[a].length) <
           std::pair(records[b].offset, records[b].length);
  });
  for (std::size_t place = 0; place < order.size(); ++place) {
    records[order[place]].place = static_cast<int>(place);
  }
}

void writeTable(ByteWriter& writer, enmFileTag tag, const std::vector<Record>& records,
                const std::vector<std::int64_t>& positions) {
  writer.byte(tag);
  for (std::size_t i = 0; i < records.size(); ++i) {
    writer.longInteger(positions[i]);
    writer.longInteger(records[i].length);
  }
}

}  // namespace

std::int32_t readEventFile(const File& file, LRKEvent& event, EventStore& store) {
  const std::string start = file.readAt(0, headerOffset);
  if (start.empty() && file.size() > 0) return LRK_COULD_NOT_OPEN_FILE;
  if (start.compare(0, magic.size(), magic) != 0) return LRK_NOT_A_LRK_FILE;
  ByteReader reader(start);
  reader.raw(magic.size());
  if (readTag(reader) != etagEvent) return LRK_INVALID_FILE_FORMAT;

  Header header;
  const std::int32_t headerLength = reader.longInteger();
  std::int64_t position = reader.failed() ? -1 : readHeader(file, headerLength, header, event);
  if (position < 0 ||
      !readTable(file, etagEventCategoryPositions, header.noOfCategories, position,
                 store.categories) ||
      !readTable(file, etagEventDerivedCoursePositions, header.noOfDerivedCourses, position,
                 store.derivedCourses)) {
    return LRK_INVALID_FILE_FORMAT;
  }

  const std::int64_t begin = header.dataOffset - 1;
  const std::int64_t length = store.dataLength();
  constexpr std::int64_t furthest = std::numeric_limits<std::int32_t>::max();
  if (begin < 0 || length > furthest || begin + length > file.size() ||
      !allWithin(store.categories, length) || !allWithin(store.derivedCourses, length)) {
    return LRK_INVALID_FILE_FORMAT;
  }
  store.unheldInHeader = std::move(header.unheld);
  numberPlaces(store.categories);
  numberPlaces(store.derivedCourses);
  const auto append = [&](std::string_view bytes) { return store.append(bytes); };
  if (!store.isOpen() || !transfer(file, begin, length, append)) {
    return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  }
  return header.version > 0 ? LRK_UNKNOWN_FILE_VERSION : 0;
}

std::string encodeHead(const LRKEvent& event, const EventStore& store) {
  const std::size_t categories = store.categories.size();
  const std::size_t derivedCourses = store.derivedCourses.size();
  ByteWriter writer;
  writer.raw(magic);
  writer.byte(etagEvent);
  const std::size_t headerLength = writer.placeholder();
  writer.byte(etagLRKFileVersion);
  writer.integer(0);
  writeRecords(writer, event, [&](enmFileTag tag) {
    writer.byte(tag);
    writer.integer(
        static_cast<std::int64_t>(tag == etagEventNoOfCategories ? categories : derivedCourses));
  });
  const std::size_t end = writer.size();
  writer.fill(headerLength, static_cast<std::int64_t>(end - magic.size()));
  writer.byte(etagEventCategoryOffset);
  writer.longInteger(static_cast<std::int64_t>(
      end + 8 + static_cast<std::size_t>(bytesPerPosition) * (categories + derivedCourses)));
  writeTable(writer, etagEventCategoryPositions, store.categories, store.categoryPositions());
  writeTable(writer, etagEventDerivedCoursePositions, store.derivedCourses,
             store.derivedCoursePositions());
  return writer.take();
}

}  // namespace larkstone
