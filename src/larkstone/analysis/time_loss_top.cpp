#include <algorithm>
#include <limits>
#include <optional>

#include "larkstone/analysis/time_loss.hpp"
#include "larkstone/core/number.hpp"

namespace larkstone {

namespace {

class TopTimeMethod {
 public:
  explicit TopTimeMethod(Calculation& calculation)
      : calculation_(calculation),
        times_(calculation.times(elstLeg)),
        isLoss_(static_cast<std::size_t>(calculation.noOfLegs)),
        losses_(isLoss_.size()) {}

  void estimate(int r) {
    sortIndices(r);
    findLossLegs(r);
    const auto undisturbed = percentile(
        [this](const LegIndex& entry) { return !isLoss_[static_cast<std::size_t>(entry.leg)]; });
    const double speed = undisturbed.value_or(0) == 0 ? 1 : *undisturbed;
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      const auto at = static_cast<std::size_t>(i);
      losses_[at] = isLoss_[at] ? storedLoss(times_.at(i, r) - calculation_.topTime(i) / speed,
                                             calculation_.settings.timeAccuracy)
                                : 0;
    }
    storeLosses(calculation_, r, losses_);
  }

 private:
  struct LegIndex {
    float index;
    int leg;
  };

  // The runner's indices on the legs with a time, ascending.
  void sortIndices(int r) {
    indices_.clear();
    for (int i = 0; i < calculation_.noOfLegs; ++i) {
      if (isDisq(times_.at(i, r))) continue;
      indices_.push_back({calculation_.runner(r).performanceIndex(i, elstLeg), i});
    }
    std::sort(indices_.begin(), indices_.end(),
              [](const LegIndex& a, const LegIndex& b) { return a.index < b.index; });
  }

  // The index below which the runner ran a part of the course, by length, on the legs that count.
  template <class Counts>
  std::optional<float> percentile(Counts counts) const {
    const auto lengthOf = [this](const LegIndex& entry) {
      return calculation_.tables.normalizedLength[static_cast<std::size_t>(entry.leg)];
    };
    double all = 0;
    for (const LegIndex& entry : indices_) {
      if (counts(entry)) all += lengthOf(entry);
    }
    const double wanted = calculation_.settings.timeLossPercentile * all;
    std::optional<float> value;
    double reached = 0;
    for (const LegIndex& entry : indices_) {
      if (!counts(entry)) continue;
      value = entry.index;
      reached += lengthOf(entry);
      if (reached >= wanted) break;
    }
    return value;
  }

  // Any loss is more than every share of nothing.
  static double shareOf(double expected, double loss) {
    if (expected != 0) return loss / expected;
    return loss > 0 ? std::numeric_limits<double>::infinity() : 0;
  }

  void findLossLegs(int r) {
    const double speed =
        percentile([](const LegIndex& entry) { return entry.index > 0; }).value_or(0);
    std::fill(isLoss_.begin(), isLoss_.end(), false);
    int count = 0;
    for (const LegIndex& entry : indices_) {
      if (speed <= 0) break;
      const double expected = roundHalfEven(calculation_.topTime(entry.leg) / speed);
      const double loss = times_.at(entry.leg, r) - expected;
      if (!isTimeLoss(calculation_.settings, loss, shareOf(expected, loss))) continue;
      isLoss_[static_cast<std::size_t>(entry.leg)] = true;
      ++count;
    }
    calculation_.runner(r).noOfTimeLossLegs(count);
  }

  Calculation& calculation_;
  const LegMajorTable<Time>& times_;
  std::vector<LegIndex> indices_;
  std::vector<bool> isLoss_;
  std::vector<Time> losses_;
};

}  // namespace

void estimateAgainstTopTimes(Calculation& calculation) {
  estimateEveryRunner<TopTimeMethod>(calculation);
}

}  // namespace larkstone
