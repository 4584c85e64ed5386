// Every runner against the top times.

#include "larkstone/analysis/calculation.hpp"

namespace larkstone {

namespace {

float ratio(std::int64_t top, std::int64_t own) {
  return static_cast<float>(static_cast<double>(top) / static_cast<double>(own));
}

void computeWithoutTimeLoss(Calculation& calculation, int r, const LegMajorTable<Time>& legTimes) {
  std::int64_t top = 0;
  std::int64_t own = 0;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    const Time time = legTimes.at(i, r);
    if (time <= 0 || isDisq(time)) continue;
    top += calculation.topTime(i);
    own += time;
  }
  LRKRunner& runner = calculation.runner(r);
  if (calculation.noOfLegs > 0) own -= runner.timeLoss(calculation.noOfLegs - 1, elstTotal);
  const bool none = runner.coursePerformanceIndex() == 0 || own == 0;
  runner.coursePerformanceIndexWithoutTimeLoss(none ? 0 : ratio(top, own));
}

}  // namespace

void computePerformance(Calculation& calculation) {
  const LegMajorTable<Time>& legTimes = calculation.times(elstLeg);
  const LegMajorTable<Time>& totals = calculation.times(elstTotal);
  for (int r = 0; r < calculation.noOfRunners; ++r) {
    LRKRunner& runner = calculation.runner(r);
    std::int64_t top = 0;  // over the legs so far that have a time
    std::int64_t own = 0;
    float running = 0;
    for (int i = 0; i < calculation.noOfLegs; ++i) {
      const Time time = legTimes.at(i, r);
      float index = 0;
      if (time == 0) {
        index = 1;
      } else if (time > 0 && !isDisq(time)) {
        index = ratio(calculation.topTime(i), time);
        top += calculation.topTime(i);
        own += time;
      }
      runner.performanceIndex(i, elstLeg, index);

      const Time total = totals.at(i, r);
      running = 0;
      if (total >= 1 && !isDisq(total)) running = own == 0 ? 1 : ratio(top, own);
      runner.performanceIndex(i, elstTotal, running);
    }
    runner.coursePerformanceIndex(running);
    computeWithoutTimeLoss(calculation, r, legTimes);
    calculation.progress.report(3, r + 1, calculation.noOfRunners);
  }
}

void computePerformanceWithoutTimeLoss(Calculation& calculation) {
  const LegMajorTable<Time>& legTimes = calculation.times(elstLeg);
  for (int r = 0; r < calculation.noOfRunners; ++r) {
    computeWithoutTimeLoss(calculation, r, legTimes);
  }
}

}  // namespace larkstone
