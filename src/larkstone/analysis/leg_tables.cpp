#include "larkstone/analysis/leg_tables.hpp"

namespace larkstone {

void LegTables::reset(int legs) {
  const auto n = static_cast<std::size_t>(legs);
  for (auto& style : statistics) style.assign(n, {});
  sortedTimes.assign(n, {});
  existingRunners.assign(n, 0);
  topTime.assign(n, LRK_NO_TIME);
  idealTime.assign(n, LRK_NO_TIME);
  normalizedLength.assign(n, 0);
  accumulatedNormalizedLength.assign(n, 0);
  timeLossRunners.assign(n, 0);
}

}  // namespace larkstone
