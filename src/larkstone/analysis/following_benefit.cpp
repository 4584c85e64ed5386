// The time that a runner gained by following: what the followed parts of the legs took, against
// what they would have taken at the runner's own speed.

#include "larkstone/analysis/following.hpp"
#include "larkstone/core/number.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

namespace {

// The runner's own speed as the ratio of top time to own time, over what was run alone; over the
// whole legs when all of it was run behind others.
double ownSpeed(const Calculation& calculation, const LegMajorTable<Time>& times,
                const LegMajorTable<LegIndices>& indices, int r) {
  double aloneOwn = 0;
  double aloneTop = 0;
  double own = 0;
  double top = 0;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    const Time time = times.at(i, r);
    if (isDisq(time)) continue;
    const double alone = 1 - static_cast<double>(indices.at(i, r).following);
    aloneOwn = roundedHalfEven(aloneOwn + alone * time);
    aloneTop = roundedHalfEven(aloneTop + alone * calculation.topTime(i));
    own += time;
    top += calculation.topTime(i);
  }
  if (aloneOwn != 0) return aloneTop / aloneOwn;
  return own != 0 ? top / own : 1;
}

}  // namespace

void computeFollowingBenefit(Calculation& calculation, const LegMajorTable<LegIndices>& indices) {
  const LegMajorTable<Time>& times = calculation.times(elstLeg);
  const enmTimeAccuracy accuracy = calculation.settings.timeAccuracy;
  for (int r = 0; r < calculation.noOfRunners; ++r) {
    const double speed = ownSpeed(calculation, times, indices, r);
    std::int64_t gained = 0;
    for (int i = 0; i < calculation.noOfLegs; ++i) {
      const Time time = times.at(i, r);
      const double share = indices.at(i, r).following;
      if (share > 0 && speed > 0 && !isDisq(time)) {
        gained += roundTime(roundHalfEven(share * calculation.topTime(i) / speed - share * time),
                            accuracy);
      }
      calculation.runner(r).followingBenefitTime(i, elstTotal, saturated<Time>(gained));
    }
  }
}

}  // namespace larkstone
