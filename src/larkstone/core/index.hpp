#pragma once

// Indices that a caller must keep within a list.

#include <cassert>
#include <cstddef>

namespace larkstone {

/// The index as a container takes it. Debug builds stop at one outside 0 .. count - 1: it is the
/// caller's fault. Indices that come out of a file are compared with the count before they are
/// used.
constexpr std::size_t indexWithin(int index, [[maybe_unused]] std::size_t count) {
  assert(index >= 0 && static_cast<std::size_t>(index) < count);
  return static_cast<std::size_t>(index);
}

}  // namespace larkstone
