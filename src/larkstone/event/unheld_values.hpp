#pragma once

// What a file says that no property can hold: an enumeration beyond its list, a number that is not
// finite, a date that is none. It reads as the property's default.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/property.hpp"
#include "larkstone/event/record_codec.hpp"

namespace larkstone {

/// So many are told of, of a file that is damaged all over.
inline constexpr std::size_t mostUnheldValues = 10000;

/// The property with that tag and what the bytes behind the tag say of it, "timeAccuracy 77", when
/// it cannot hold that.
template <class Owner>
std::optional<std::string> unheldValue(std::string_view bytes, enmFileTag tag) {
  std::optional<std::string> text;
  visitRow<Owner>(tag, [&](const auto& row) {
    using Type = typename std::decay_t<decltype(row)>::Type;
    if constexpr (!std::is_same_v<Type, std::string>) {
      ByteReader reader(bytes);
      const Type value = readValue<Type>(reader, encodingOf(tag));
      if (reader.failed() || isValid(value)) return;
      text = std::string(row.name);
      if constexpr (std::is_enum_v<Type>) *text += " " + std::to_string(value);
    }
  });
  return text;
}

/// Those of a category's record and of a derived course's, in the order of the record.
std::vector<std::string> unheldValuesOfCategory(std::string_view record);
std::vector<std::string> unheldValuesOfDerivedCourse(std::string_view record);

}  // namespace larkstone
