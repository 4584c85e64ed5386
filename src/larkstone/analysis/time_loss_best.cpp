#include <algorithm>
#include <cmath>

#include "larkstone/analysis/time_loss.hpp"

namespace larkstone {

namespace {

// The lower one of the two in the middle; 1 without values, or when it is 0.
float median(std::vector<float>& values) {
  if (values.empty()) return 1;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>((values.size() - 1) / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle == 0 ? 1 : *middle;
}

class BestTimeMethod {
 public:
  explicit BestTimeMethod(Calculation& calculation)
      : calculation_(calculation),
        times_(calculation.times(elstLeg)),
        legFactor_(static_cast<std::size_t>(calculation.noOfLegs)),
        deficit_(legFactor_.size()),
        isLoss_(legFactor_.size()),
        losses_(legFactor_.size()) {
    const float average = averageBestTime();
    for (int i = 0; i < calculation.noOfLegs; ++i) {
      if (best(i) == LRK_NO_TIME) continue;
      legFactor_[static_cast<std::size_t>(i)] =
          static_cast<float>(std::pow(static_cast<double>(best(i)) / average, 0.75));
    }
  }

  void estimate(int r) {
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      if (!counts(i, r)) continue;
      deficit_[static_cast<std::size_t>(i)] =
          static_cast<float>((static_cast<double>(times_.at(i, r)) - best(i)) / best(i));
    }
    std::fill(isLoss_.begin(), isLoss_.end(), false);
    findLossLegs(r, medianDeficit(r));
    const double undisturbed = medianDeficit(r);
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      const auto at = static_cast<std::size_t>(i);
      losses_[at] = isLoss_[at] ? storedLoss(times_.at(i, r) - expectedTime(i, undisturbed),
                                             calculation_.settings.timeAccuracy)
                                : 0;
    }
    storeLosses(calculation_, r, losses_);
  }

 private:
  Time best(int legNo) const { return calculation_.statistics(legNo, elstLeg).best; }
  bool counts(int legNo, int r) const {
    return best(legNo) != LRK_NO_TIME && !isDisq(times_.at(legNo, r));
  }

  float averageBestTime() const {
    double sum = 0;
    int legs = 0;
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      if (best(i) == LRK_NO_TIME) continue;
      sum += best(i);
      ++legs;
    }
    return legs == 0 ? 1 : static_cast<float>(sum / legs);
  }

  // The relative deficit to the best times that is normal for the runner, over the legs that are
  // not known as time-loss legs.
  float medianDeficit(int r) {
    undisturbed_.clear();
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      const auto at = static_cast<std::size_t>(i);
      if (counts(i, r) && !isLoss_[at]) undisturbed_.push_back(deficit_[at]);
    }
    return median(undisturbed_);
  }

  // A runner's deficit is larger on short legs.
  double normalDeficit(int legNo, double deficit) const {
    return deficit / legFactor_[static_cast<std::size_t>(legNo)];
  }
  double expectedTime(int legNo, double deficit) const {
    return (normalDeficit(legNo, deficit) + 1) * best(legNo);
  }

  void findLossLegs(int r, double deficit) {
    int count = 0;
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      const auto at = static_cast<std::size_t>(i);
      if (!counts(i, r)) continue;
      isLoss_[at] = isTimeLoss(calculation_.settings, times_.at(i, r) - expectedTime(i, deficit),
                               deficit_[at] - normalDeficit(i, deficit));
      if (isLoss_[at]) ++count;
    }
    calculation_.runner(r).noOfTimeLossLegs(count);
  }

  Calculation& calculation_;
  const LegMajorTable<Time>& times_;
  std::vector<float> legFactor_;
  std::vector<float> deficit_;
  std::vector<float> undisturbed_;
  std::vector<bool> isLoss_;
  std::vector<Time> losses_;
};

}  // namespace

void estimateAgainstBestTimes(Calculation& calculation) {
  estimateEveryRunner<BestTimeMethod>(calculation);
}

}  // namespace larkstone
