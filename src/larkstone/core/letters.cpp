#include "larkstone/core/letters.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace larkstone {

namespace {

struct CaseRange {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t way;

  constexpr char32_t of(char32_t c) const {
    return c > last || (c - first) % step != 0 ? c : c + static_cast<char32_t>(way);
  }
};

constexpr CaseRange lowerRanges[] = {
#define LRK_LOWER(first, last, step, way) {first, last, step, way},
#include "larkstone/core/letters.def"
};

constexpr CaseRange upperRanges[] = {
#define LRK_UPPER(first, last, step, way) {first, last, step, way},
#include "larkstone/core/letters.def"
};

struct Relatives {
  char32_t first;
  std::string_view plain;
};

constexpr Relatives relatives[] = {
#define LRK_RELATIVES(first, plain) {first, plain},
#include "larkstone/core/letters.def"
};

// The last row that begins at a character or before it; null before the first row.
template <class Row, std::size_t n>
const Row* rowOf(const Row (&rows)[n], char32_t c) {
  const Row* const behind =
      std::upper_bound(std::begin(rows), std::end(rows), c,
                       [](char32_t sought, const Row& row) { return sought < row.first; });
  return behind == std::begin(rows) ? nullptr : behind - 1;
}

// Latin, Greek and Cyrillic, where names mostly are, letter by letter.
using Nearby = std::array<char16_t, 0x530>;

template <std::size_t n>
constexpr Nearby nearbyOf(const CaseRange (&ranges)[n]) {
  Nearby nearby{};
  for (std::size_t c = 0; c < nearby.size(); ++c) nearby[c] = static_cast<char16_t>(c);
  for (const CaseRange& range : ranges) {
    for (char32_t c = range.first; c <= range.last && c < nearby.size(); ++c) {
      nearby[c] = static_cast<char16_t>(range.of(c));
    }
  }
  return nearby;
}

constexpr Nearby nearbyLower = nearbyOf(lowerRanges);
constexpr Nearby nearbyUpper = nearbyOf(upperRanges);

template <std::size_t n>
char32_t changed(char32_t c, const Nearby& nearby, const CaseRange (&ranges)[n]) {
  if (c < nearby.size()) return nearby[c];
  const CaseRange* const range = rowOf(ranges, c);
  return range == nullptr ? c : range->of(c);
}

}  // namespace

char32_t lowerOf(char32_t c) { return changed(c, nearbyLower, lowerRanges); }
char32_t upperOf(char32_t c) { return changed(c, nearbyUpper, upperRanges); }

char plainestRelative(char32_t c) {
  const Relatives* const row = rowOf(relatives, c);
  return row == nullptr || c - row->first >= row->plain.size() ? '?' : row->plain[c - row->first];
}

}  // namespace larkstone
