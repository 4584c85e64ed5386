#pragma once

// The kernel under every sort of runners: keys to order, places and a translation table.

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

namespace larkstone {

/// A translation table: the new index of each old one, -1 for an entry that no longer exists.
using TranslationTable = std::vector<std::int16_t>;

/// Ranks of a list by key, counted from the old index.
struct Ranking {
  TranslationTable newIndex;        ///< where each entry goes
  std::vector<std::int16_t> place;  ///< 1, 2, 2, 4 ...; 0 for an entry without a valid key
};

/// Orders stably by key. Equal keys share the place of the first of them. An entry whose key is
/// not valid takes part with its key and gets no place. Descending reverses the whole list (so
/// entries with equal keys swap) and counts each place as 1 + the number of larger valid keys.
template <class Key>
Ranking ranked(const std::vector<Key>& keys, const std::vector<bool>& isValid, bool ascending) {
  const std::size_t n = keys.size();
  std::vector<std::size_t> order(n);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });

  Ranking ranking{TranslationTable(n), std::vector<std::int16_t>(n, 0)};
  const auto valid = static_cast<std::size_t>(std::count(isValid.begin(), isValid.end(), true));
  std::size_t first = 0;        // the first slot of the current group of equal keys
  std::size_t validBefore = 0;  // valid entries in the groups before it
  while (first < n) {
    std::size_t end = first;
    std::size_t validHere = 0;
    while (end < n && !(keys[order[first]] < keys[order[end]])) {
      if (isValid[order[end]]) ++validHere;
      ++end;
    }
    const std::size_t place = ascending ? first + 1 : valid - validBefore - validHere + 1;
    for (std::size_t slot = first; slot < end; ++slot) {
      const std::size_t entry = order[slot];
      ranking.newIndex[entry] = static_cast<std::int16_t>(ascending ? slot : n - 1 - slot);
      if (isValid[entry]) ranking.place[entry] = static_cast<std::int16_t>(place);
    }
    validBefore += validHere;
    first = end;
  }
  return ranking;
}

/// Moves every entry of a list to its new index.
template <class T>
void applyOrder(std::vector<T>& list, const TranslationTable& newIndex) {
  std::vector<T> ordered(list.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    ordered[static_cast<std::size_t>(newIndex[i])] = std::move(list[i]);
  }
  list = std::move(ordered);
}

}  // namespace larkstone
