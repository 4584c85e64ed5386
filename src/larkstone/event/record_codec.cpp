#include "larkstone/event/record_codec.hpp"

#include "larkstone/model/category.hpp"
#include "larkstone/model/derived_course.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

namespace {

// The count of a list of entries, which are passed over.
TagValue readListCount(ByteReader& reader, std::int64_t bytesPerEntry) {
  const std::int32_t count = reader.integer();
  reader.raw(count * bytesPerEntry);
  return count;
}

// The value as a property of that tag holds it.
template <class Owner>
TagValue held(enmFileTag tag, TagValue value) {
  const TagEncoding encoding = encodingOf(tag);
  if (encoding != TagEncoding::byte && encoding != TagEncoding::single &&
      encoding != TagEncoding::date) {
    return value;
  }
  visitRow<Owner>(tag, [&value](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if (fromTagValue<typename Row::Type>(value)) return;
    value = {};
    if constexpr (isValueRow<Row>) value = toTagValue(Owner().*row.member);
  });
  return value;
}

}  // namespace

TagValue readRawValue(ByteReader& reader, const TagRange& range, enmFileTag tag) {
  if (!isIn(range, tag)) {
    reader.skipText();
    return {};
  }
  switch (encodingOf(tag)) {
    case TagEncoding::byte:
    case TagEncoding::flag1:
      return reader.byte();
    case TagEncoding::flag255:
      return reader.byte() != 0;
    case TagEncoding::integer:
      return std::int32_t{reader.integer()};
    case TagEncoding::longInteger:
      return reader.longInteger();
    case TagEncoding::single:
      return reader.single();
    case TagEncoding::date:
      return Date{reader.real()};
    case TagEncoding::punchList:
      return readListCount(reader, 5);
    case TagEncoding::pairList:
      return readListCount(reader, 4);
    case TagEncoding::codeList:
      return readListCount(reader, 2);
    case TagEncoding::block:
      reader.raw(reader.longInteger());
      return {};
    case TagEncoding::text:
      return reader.text();
    case TagEncoding::unknown:
    case TagEncoding::none:
      break;
  }
  return {};
}

TagValue readTagValue(ByteReader& reader, const TagRange& range, enmFileTag tag) {
  TagValue value = readRawValue(reader, range, tag);
  if (!isIn(range, tag)) return value;
  if (range.first == runnerTags.first) return held<LRKRunner>(tag, std::move(value));
  if (range.first == categoryTags.first) return held<LRKCategory>(tag, std::move(value));
  return held<LRKDerivedCourse>(tag, std::move(value));
}

void skipTagValue(ByteReader& reader, const TagRange& range, enmFileTag tag) {
  if (encodingOf(tag) == TagEncoding::text) {
    reader.skipText();
  } else {
    readRawValue(reader, range, tag);
  }
}

TagValue findTagValue(std::string_view bytes, const TagRange& range, enmFileTag tag) {
  ByteReader reader(bytes);
  while (!reader.atEnd()) {
    const enmFileTag found = readTag(reader);
    if (found != tag) {
      skipTagValue(reader, range, found);
      continue;
    }
    TagValue value = readTagValue(reader, range, found);
    if (!reader.failed()) return value;
  }
  return {};
}

}  // namespace larkstone
