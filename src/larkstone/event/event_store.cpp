#include "larkstone/event/event_store.hpp"

#include <algorithm>
#include <limits>
#include <utility>

#include "larkstone/event/error_constants.hpp"

namespace larkstone {

namespace {

using Records = std::vector<Record>;

std::vector<const Record*> byPlace(const Records& records) {
  std::vector<const Record*> ordered(records.size());
  for (const Record& record : records) ordered[static_cast<std::size_t>(record.place)] = &record;
  return ordered;
}

std::int64_t lengthOf(const Records& records) {
  std::int64_t length = 0;
  for (const Record& record : records) length += record.length;
  return length;
}

std::vector<std::int64_t> positionsOf(const Records& records, std::int64_t begin) {
  std::vector<std::int64_t> positions(records.size());
  for (const Record* record : byPlace(records)) {
    positions[static_cast<std::size_t>(record - records.data())] = begin;
    begin += record->length;
  }
  return positions;
}

}  // namespace

void EventStore::straighten() {
  int place = 0;
  for (Record& category : categories) category.place = place++;
}

std::int64_t EventStore::dataLength() const {
  return lengthOf(categories) + lengthOf(derivedCourses);
}

std::vector<std::int64_t> EventStore::categoryPositions() const {
  return positionsOf(categories, 0);
}

std::vector<std::int64_t> EventStore::derivedCoursePositions() const {
  return positionsOf(derivedCourses, lengthOf(categories));
}

// Neighbours in the working file are handed on together.
bool EventStore::transferData(const ByteSink& sink) const {
  std::int64_t begin = 0;
  std::int64_t end = 0;
  for (const Records* records : {&categories, &derivedCourses}) {
    for (const Record* record : byPlace(*records)) {
      if (record->offset != end) {
        if (!file_.transferTo(begin, end - begin, sink)) return false;
        begin = end = record->offset;
      }
      end += record->length;
    }
  }
  return file_.transferTo(begin, end - begin, sink);
}

std::int32_t EventStore::write(std::span<const RecordBytes> changes) {
  std::int64_t added = 0;
  for (const RecordBytes& change : changes) {
    added += static_cast<std::int64_t>(change.bytes.size());
  }
  // The records are at most as long as the working file, so a small one needs no adding up.
  constexpr std::int64_t tolerated = std::int64_t{4} << 20;
  if (file_.size() + added > tolerated) {
    const std::int64_t used = dataLength();
    if (used + added > std::numeric_limits<std::int32_t>::max()) {
      return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    }
    if (file_.size() > 2 * used + tolerated) clearUnused();
  }
  std::int64_t offset = file_.size();
  for (const RecordBytes& change : changes) {
    if (file_.append(change.bytes)) continue;
    file_.cutTo(offset);
    return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  }
  release();
  for (const RecordBytes& change : changes) {
    change.record->offset = offset;
    change.record->length = static_cast<std::int32_t>(change.bytes.size());
    change.record->categoriesReferredTo.reset();
    offset += change.record->length;
  }
  return 0;
}

void EventStore::clearUnused() {
  WorkingFile scratch(folder_);
  if (!transferData([&](std::string_view bytes) { return scratch.append(bytes); })) return;
  const std::vector<std::int64_t> ofCategories = categoryPositions();
  const std::vector<std::int64_t> ofDerivedCourses = derivedCoursePositions();
  if (!scratch.isOpen()) return;
  file_ = std::move(scratch);
  release();
  for (std::size_t i = 0; i < categories.size(); ++i) categories[i].offset = ofCategories[i];
  for (std::size_t k = 0; k < derivedCourses.size(); ++k) {
    derivedCourses[k].offset = ofDerivedCourses[k];
  }
}

bool EventStore::hold() {
  std::string bytes;
  if (!file_.read(0, file_.size(), bytes)) return false;
  held_ = std::move(bytes);
  return true;
}

TagValue EventStore::find(const Record& record, const TagRange& range, enmFileTag tag) const {
  if (held_) {
    return findTagValue(std::string_view(*held_).substr(static_cast<std::size_t>(record.offset),
                                                        static_cast<std::size_t>(record.length)),
                        range, tag);
  }
  // Most values stand at the beginning; behind it are the runners.
  constexpr std::int32_t beginning = 1024;
  std::string bytes;
  for (const std::int32_t length : {std::min(record.length, beginning), record.length}) {
    if (!file_.read(record.offset, length, bytes)) break;
    TagValue value = findTagValue(bytes, range, tag);
    if (!std::holds_alternative<std::monostate>(value) || length == record.length) return value;
  }
  return {};
}

}  // namespace larkstone
