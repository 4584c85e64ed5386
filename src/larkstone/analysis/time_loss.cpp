#include "larkstone/analysis/time_loss.hpp"

#include <algorithm>

#include "larkstone/core/number.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

bool isTimeLoss(const CourseSettings& settings, double loss, double share) {
  const bool byTime = loss > settings.timeLossConditionTime;
  const bool byShare = static_cast<float>(share) > settings.timeLossConditionPercent;
  return settings.timeLossConditionBoth ? byTime && byShare : byTime || byShare;
}

Time storedLoss(double loss, enmTimeAccuracy accuracy) {
  const Time whole = roundHalfEven(loss);
  return whole <= 0 ? 0 : roundTime(whole, accuracy);
}

void storeLosses(Calculation& calculation, int runnerIndex, const std::vector<Time>& losses) {
  LRKRunner& runner = calculation.runner(runnerIndex);
  const LegMajorTable<Time>& times = calculation.times(elstLeg);
  std::int64_t lost = 0;
  std::int64_t run = 0;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (losses[at] > 0) ++calculation.tables.timeLossRunners[at];
    lost += losses[at];
    runner.timeLoss(i, elstTotal, static_cast<Time>(std::min<std::int64_t>(lost, LRK_NO_TIME)));
    if (const Time time = times.at(i, runnerIndex); !isDisq(time)) run += time;
  }
  const auto withoutLoss = static_cast<double>(run - lost);
  runner.coursePercentualTimeLoss(
      withoutLoss > 0 ? static_cast<float>(static_cast<double>(lost) / withoutLoss) : 0);
}

void estimateTimeLoss(Calculation& calculation) {
  switch (calculation.settings.timeLossCalculationMethod) {
    case etlcCompareToTopTime:
      return estimateAgainstTopTimes(calculation);
    case etlcCompareToBestTime:
      return estimateAgainstBestTimes(calculation);
  }
}

void subtractTimeLoss(Calculation& calculation) {
  for (int r = 0; r < calculation.noOfRunners; ++r) {
    calculation.runner(r).subtractTimeLoss();
    calculation.progress.report(5, r + 1, calculation.noOfRunners);
  }
  calculation.timesChanged();
}

}  // namespace larkstone
