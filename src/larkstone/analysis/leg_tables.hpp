#pragma once

// What a calculation knows about the legs of a course, apart from its runners.

#include <array>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

/// Statistics of one leg in one style.
struct LegStatistics {
  Time best = LRK_NO_TIME;
  Time secondBest = LRK_NO_TIME;
  int qualified = 0;  ///< runners with a valid time
};

/// One entry per leg in every table.
struct LegTables {
  std::array<std::vector<LegStatistics>, LRK_LEG_STYLES> statistics;
  std::vector<std::vector<Time>> sortedTimes;  ///< valid leg times, ascending
  std::vector<int> existingRunners;            ///< runners who have the leg at all
  std::vector<Time> topTime;
  std::vector<Time> idealTime;
  std::vector<double> normalizedLength;
  std::vector<double> accumulatedNormalizedLength;
  std::vector<int> timeLossRunners;  ///< runners with a positive loss

  /// Empties all tables to that number of legs.
  void reset(int legs);
};

}  // namespace larkstone
