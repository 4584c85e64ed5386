#pragma once

// An event as JSON: its properties, and those of its categories and derived courses.

#include <string_view>
#include <type_traits>

#include "larkstone/core/property.hpp"
#include "larkstone/core/tag_value.hpp"

#include "cli/output.hpp"

namespace larkstone {
class LRKEvent;
}

namespace larkstone::cli {

/// Hands every stored property that is set to put(name, value).
template <class Owner, class Put>
void forEachSetProperty(const Owner& owner, Put put) {
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      bool isSet = false;
      const TagValue value = propertyByTag(owner, row.tag, isSet);
      if (row.stored && isSet) put(row.name, value);
    }
  });
}

/// The whole document; on request with the runners and leg lengths of each category.
void writeEventJson(TextSink& output, LRKEvent& event, bool withRunners);

}  // namespace larkstone::cli
