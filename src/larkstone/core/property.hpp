#pragma once

// What a table of properties (model/runner_properties.def and its siblings) turns into.
//
// Each persistent class includes its table twice: once for accessors and storage, once for
// forEachRow(), which hands every row to a visitor in file order. Everything that works on all
// properties (clone, access by tag, the event file's reader and writer, JSON) is a visitor, so a
// property is listed once.
//
// A class defines, before it includes its table:
//   LRK_PROPERTY(name, flag, type, tag)        optional: a value and a flag, stored when set
//   LRK_PROPERTY_STORED(name, flag, type, tag) the same, with a reader that the class writes itself
//   LRK_PROPERTY_UNSAVED(name, flag, type)     the same, never stored
//   LRK_VALUE(name, type, tag)                 no flag, always stored
//   LRK_RECORD(tag)                            a record with a structure of its own

#include <string_view>
#include <type_traits>
#include <utility>

#include "larkstone/core/file_tags.hpp"
#include "larkstone/core/tag_value.hpp"

namespace larkstone {

/// A value that may be unknown.
template <class T>
struct Property {
  T value{};
  bool set = false;

  friend bool operator==(const Property&, const Property&) = default;
};

template <class Owner, class T>
struct PropertyRow {
  using Type = T;
  std::string_view name;
  enmFileTag tag;
  bool stored;  ///< false: the property has no tag and is in no file
  Property<T> Owner::*member;
};

template <class Owner, class T>
struct ValueRow {
  using Type = T;
  std::string_view name;
  enmFileTag tag;
  T Owner::*member;
};

struct RecordRow {
  enmFileTag tag;
};

template <class Row>
inline constexpr bool isPropertyRow = false;
template <class Owner, class T>
inline constexpr bool isPropertyRow<PropertyRow<Owner, T>> = true;
template <class Row>
inline constexpr bool isValueRow = false;
template <class Owner, class T>
inline constexpr bool isValueRow<ValueRow<Owner, T>> = true;
template <class Row>
inline constexpr bool isRecordRow = std::is_same_v<Row, RecordRow>;

/// Calls visit(row) with the stored property or value of that tag; false when the table has none.
template <class Owner, class Visit>
bool visitRow(enmFileTag tag, Visit&& visit) {
  bool found = false;
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      if (row.stored && row.tag == tag) found = true, visit(row);
    } else if constexpr (isValueRow<Row>) {
      if (row.tag == tag) found = true, visit(row);
    }
  });
  return found;
}

/// The property of that tag with its flag (true for one without a flag); nothing for other tags.
template <class Owner>
TagValue propertyByTag(const Owner& owner, enmFileTag tag, bool& isSet) {
  TagValue value;
  isSet = false;
  visitRow<Owner>(tag, [&](const auto& row) {
    if constexpr (isPropertyRow<std::decay_t<decltype(row)>>) {
      value = toTagValue((owner.*row.member).value);
      isSet = (owner.*row.member).set;
    } else {
      value = toTagValue(owner.*row.member);
      isSet = true;
    }
  });
  return value;
}

/// Converts and stores; a value that cannot be converted, or an unknown tag, changes nothing.
template <class Owner>
void setPropertyByTag(Owner& owner, enmFileTag tag, const TagValue& value, bool setValue) {
  visitRow<Owner>(tag, [&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    auto converted = fromTagValue<typename Row::Type>(value);
    if (!converted) return;
    if constexpr (isPropertyRow<Row>) {
      owner.*row.member = {std::move(*converted), setValue};
    } else {
      owner.*row.member = std::move(*converted);
    }
  });
}

/// Copies every value and every property that is set.
template <class Owner>
void copySetProperties(const Owner& from, Owner& to) {
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      if ((from.*row.member).set) to.*row.member = from.*row.member;
    } else if constexpr (isValueRow<Row>) {
      to.*row.member = from.*row.member;
    }
  });
}

}  // namespace larkstone

// The accessors and the storage of one row, for the first inclusion of a table.
#define LRK_DECLARE_FLAG(name, flag)        \
  bool flag() const { return name##_.set; } \
  void flag(bool set) { name##_.set = set; }
#define LRK_DECLARE_WRITER(name, type) \
  void name(type value) { name##_ = {std::move(value), true}; }
#define LRK_DECLARE_PROPERTY(name, flag, type)       \
  const type& name() const { return name##_.value; } \
  LRK_DECLARE_WRITER(name, type)                     \
  LRK_DECLARE_FLAG(name, flag)
#define LRK_DECLARE_VALUE(name, type)          \
  const type& name() const { return name##_; } \
  void name(type value) { name##_ = std::move(value); }
