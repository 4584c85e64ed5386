#pragma once

// Tagged records: a tag byte and a value in the encoding that the tag fixes. The rows of the
// property tables to and from records, and single values out of records without an object.

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "larkstone/core/date.hpp"
#include "larkstone/core/file_tags.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/core/tag_value.hpp"
#include "larkstone/event/byte_buffer.hpp"

namespace larkstone {

/// The kinds of records by what they describe. A tag means something only in its own kind;
/// everywhere but in the header, a foreign tag is taken for a text and passed over.
struct TagRange {
  enmFileTag first;
  enmFileTag last;
  enmFileTag block;  ///< a nested block besides the range
};
inline constexpr TagRange categoryTags{etagCategoryID, etagCategoryMaxNoOfLegs, etagRunner};
inline constexpr TagRange derivedCourseTags{etagDerivedCourseName, etagDerivedCourseNoOfRunners,
                                            etagDerivedCourseName};
inline constexpr TagRange runnerTags{etagRunnerID, etagRunnerCourseLength, etagRunnerID};

constexpr bool isIn(const TagRange& range, enmFileTag tag) {
  return (tag >= range.first && tag <= range.last) || tag == range.block;
}

inline enmFileTag readTag(ByteReader& reader) { return static_cast<enmFileTag>(reader.byte()); }

/// Reads past a record's value and hands it out where it is a single one. A list gives its count,
/// a block and a foreign tag nothing. A value that the property cannot hold reads as readRecord()
/// leaves it: as its default, or as nothing where it has none.
TagValue readTagValue(ByteReader& reader, const TagRange& range, enmFileTag tag);
/// The same as it stands in the file.
TagValue readRawValue(ByteReader& reader, const TagRange& range, enmFileTag tag);
/// Only reads past it; a text is not converted.
void skipTagValue(ByteReader& reader, const TagRange& range, enmFileTag tag);

/// The value of the first record with that tag; nothing when the bytes end before it is complete.
TagValue findTagValue(std::string_view bytes, const TagRange& range, enmFileTag tag);

template <class T>
void writeValue(ByteWriter& writer, TagEncoding encoding, const T& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    writer.text(value);
  } else if constexpr (std::is_same_v<T, Date>) {
    writer.real(value.day);
  } else if constexpr (std::is_same_v<T, float>) {
    writer.single(value);
  } else if constexpr (std::is_same_v<T, bool>) {
    writer.byte(value ? (encoding == TagEncoding::flag255 ? 255 : 1) : 0);
  } else if (encoding == TagEncoding::byte) {
    writer.byte(value);
  } else if (encoding == TagEncoding::integer) {
    writer.integer(value);
  } else {
    writer.longInteger(value);
  }
}

template <class T>
T readValue(ByteReader& reader, TagEncoding encoding) {
  if constexpr (std::is_same_v<T, std::string>) {
    return reader.text();
  } else if constexpr (std::is_same_v<T, Date>) {
    return Date{reader.real()};
  } else if constexpr (std::is_same_v<T, float>) {
    return reader.single();
  } else if constexpr (std::is_same_v<T, bool>) {
    return reader.byte() != 0;
  } else {
    const std::int32_t value = encoding == TagEncoding::byte      ? reader.byte()
                               : encoding == TagEncoding::integer ? reader.integer()
                                                                  : reader.longInteger();
    if constexpr (std::is_enum_v<T>) {
      return static_cast<T>(saturated<std::underlying_type_t<T>>(value));
    } else {
      return saturated<T>(value);
    }
  }
}

/// Writes the rows of an object in file order: values always, properties when they are set. The
/// records with a structure of their own are the visitor's: writeOwn(tag).
template <class Owner, class WriteOwn>
void writeRecords(ByteWriter& writer, const Owner& owner, WriteOwn&& writeOwn) {
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      if (!row.stored || !(owner.*row.member).set) return;
      writer.byte(row.tag);
      writeValue(writer, encodingOf(row.tag), (owner.*row.member).value);
    } else if constexpr (isValueRow<Row>) {
      writer.byte(row.tag);
      writeValue(writer, encodingOf(row.tag), owner.*row.member);
    } else {
      writeOwn(row.tag);
    }
  });
}

/// Gives a property or value its default back.
template <class Owner, class Row>
void resetRow(Owner& owner, const Row& row) {
  if constexpr (isPropertyRow<Row>) {
    owner.*row.member = {};
  } else if constexpr (std::is_enum_v<typename Row::Type>) {
    owner.*row.member = Owner().*row.member;
  } else {
    owner.*row.member = typename Row::Type();
  }
}

/// Reads the value behind a tag into its property, whose flag is set then; an incomplete value
/// leaves the property, one that the property cannot hold (an enumeration beyond its list, a number
/// that is not finite, a date that is none) gives it its default. False when the table has no such
/// tag; nothing is read then.
template <class Owner>
bool readRecord(ByteReader& reader, enmFileTag tag, Owner& owner) {
  return visitRow<Owner>(tag, [&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    auto value = readValue<typename Row::Type>(reader, encodingOf(tag));
    if (reader.failed()) return;
    if (!isValid(value)) {
      resetRow(owner, row);
    } else if constexpr (isPropertyRow<Row>) {
      owner.*row.member = {std::move(value), true};
    } else {
      owner.*row.member = std::move(value);
    }
  });
}

}  // namespace larkstone
