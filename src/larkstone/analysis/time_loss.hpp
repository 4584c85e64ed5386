#pragma once

// What the two methods of estimating time loss have in common.

#include <vector>

#include "larkstone/analysis/calculation.hpp"

namespace larkstone {

/// A loss on a leg of so much time, and of such a share of the expected time.
bool isTimeLoss(const CourseSettings& settings, double loss, double share);

/// A loss as it is stored: whole, in units of the accuracy, not negative.
Time storedLoss(double loss, enmTimeAccuracy accuracy);

/// Stores the time that a runner lost on each leg and the share in the course, and counts the
/// runner on the legs. `losses` has an entry for every leg.
void storeLosses(Calculation& calculation, int runner, const std::vector<Time>& losses);

template <class Method>
void estimateEveryRunner(Calculation& calculation) {
  Method method(calculation);
  for (int r = 0; r < calculation.noOfRunners; ++r) {
    method.estimate(r);
    calculation.progress.report(4, r + 1, calculation.noOfRunners);
  }
}

/// Each runner's normal speed is a percentile of the runner's own leg indices.
void estimateAgainstTopTimes(Calculation& calculation);
/// Each runner's normal speed is the median deficit to the best times, less on short legs.
void estimateAgainstBestTimes(Calculation& calculation);

}  // namespace larkstone
