#include "larkstone/analysis/calculation_progress.hpp"

#include <algorithm>
#include <cmath>

namespace larkstone {

CalculationProgress::CalculationProgress(Handler handler, int runners, int legs,
                                         bool timesWithoutTimeLoss, enmCourseCalculationFlags flags)
    : handler_(std::move(handler)) {
  const double ln = std::log(std::max(runners, 1));
  const double perRunnerAndLeg[stages] = {
      0.496,
      timesWithoutTimeLoss ? 0.0405 * ln + 0.197 : 0.087 * ln + 0.139,
      0.00332,
      0.2,
      timesWithoutTimeLoss ? 0.1 : 0,
      1.33,
      timesWithoutTimeLoss ? 0.965 - 0.0923 * ln : 0.0922 * ln + 0.537,
      0.121 * ln + 0.278,
      0.335 * ln + 0.222,
  };
  const bool timeLoss = (flags & eccfTimeLoss) != 0;
  const bool bothPlaces = (flags & eccfPlacesDontAllowMissingPunches) != 0 &&
                          (flags & eccfPlacesAllowMissingPunches) != 0;
  const bool counts[stages] = {
      true,     true, true,       (flags & eccfPerformanceIndices) != 0, timeLoss,
      timeLoss, true, bothPlaces, (flags & eccfLFIndices) != 0};
  const double work = static_cast<double>(runners) * legs;
  float done = 0;
  for (std::size_t stage = 0; stage < stages; ++stage) {
    weight_[stage] = static_cast<float>(work * perRunnerAndLeg[stage]);
    before_[stage] = done;
    if (counts[stage]) done += weight_[stage];
  }
  if (done != 0) total_ = done;
}

void CalculationProgress::report(int stage, int done, int of) const {
  const auto at = static_cast<std::size_t>(stage);
  const float part = weight_[at] * static_cast<float>(done) / static_cast<float>(of);
  raise(std::string_view("012345678").substr(at, 1), (before_[at] + part) / total_);
}

}  // namespace larkstone
