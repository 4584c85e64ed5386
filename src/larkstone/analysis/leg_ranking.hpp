#pragma once

// The order of the runners on one leg.

#include <cstdint>
#include <span>
#include <vector>

#include "larkstone/analysis/leg_tables.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

/// Sorts the valid times of a leg. One object serves leg after leg and keeps its memory.
class LegRanking {
 public:
  /// Gives a place to every runner: equal times share one (1, 1, 3), and runners without a valid
  /// time (below lowestTime, which is not negative, or missing) all stand behind the last.
  LegStatistics rank(std::span<const Time> times, Time lowestTime, std::span<std::int16_t> places);

  /// The valid times of the last rank(), ascending.
  std::vector<Time> sortedTimes() const;

 private:
  // Time above, runner below: sorts as one number.
  using Entry = std::uint64_t;
  static Time timeOf(Entry entry) { return static_cast<Time>(entry >> 32); }
  static std::size_t runnerOf(Entry entry) { return static_cast<std::uint32_t>(entry); }

  void sortEntries();

  std::vector<Entry> entries_;
  std::vector<Entry> sorted_;
};

}  // namespace larkstone
