#pragma once

// Re-times punches that cannot be right.

#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

/// Finds the runners who took no time at all, or less, from one punch to the next. Punches that are
/// out of order with the others get an estimated time, in proportion to the fastest times that
/// anybody took between the same controls; all times of such a runner are cut to the accuracy, and
/// the legs follow. In a category course the OK runners' missing times are estimated too.
void correctZeroAndNegativeTimes(std::vector<LRKRunner>& runners, bool isCategoryCourse,
                                 enmTimeAccuracy accuracy);

}  // namespace larkstone
