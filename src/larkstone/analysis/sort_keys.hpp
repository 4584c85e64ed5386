#pragma once

// The value of a runner that each sort key compares.

#include <string>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

enum class SortKeyKind {
  none,  ///< nothing to sort by
  text,
  number,  ///< a 16-bit or 32-bit integer
  time,    ///< not valid when it is LRK_NO_TIME
  single,
};

SortKeyKind kindOf(enmSort sortBy);

/// Descriptive values that are not set are empty or 0. A leg number of -1, or a key that knows no
/// leg, means the last leg; a leg that the runner has not got reads as no time or 0.
std::string textKey(const LRKRunner& runner, enmSort sortBy);
std::int32_t numberKey(const LRKRunner& runner, enmSort sortBy);
Time timeKey(const LRKRunner& runner, enmSort sortBy, int legNo);
float singleKey(const LRKRunner& runner, enmSort sortBy, int legNo);

}  // namespace larkstone
