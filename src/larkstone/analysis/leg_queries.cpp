// What a calculated course answers about its legs.

#include <algorithm>
#include <numeric>

#include "larkstone/analysis/course.hpp"
#include "larkstone/core/number.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

namespace {

// A table's entry, or what a leg without results reads as.
template <class T>
T entryOf(const std::vector<T>& table, int legNo, T otherwise) {
  const auto at = static_cast<std::size_t>(legNo);
  return legNo >= 0 && at < table.size() ? table[at] : otherwise;
}

// Slots that fill up one by one: each entry takes the first free one from its place on.
class FreeSlots {
 public:
  explicit FreeSlots(std::size_t count) : next_(count + 1) {
    std::iota(next_.begin(), next_.end(), std::size_t{0});
  }
  std::size_t take(std::size_t from) {
    std::size_t slot = firstFree(std::min(from, next_.size() - 1));
    if (slot + 1 == next_.size()) slot = firstFree(0);  // full behind: any other
    next_[slot] = slot + 1;
    return slot;
  }

 private:
  std::size_t firstFree(std::size_t slot) {
    while (next_[slot] != slot) slot = next_[slot] = next_[next_[slot]];
    return slot;
  }

  std::vector<std::size_t> next_;  // itself for a free slot
};

}  // namespace

LegStatistics LRKCourse::statistics(int legNo, enmLegStyle style) const {
  if (style < 0 || style >= LRK_LEG_STYLES) return {};
  return entryOf(tables_.statistics[static_cast<std::size_t>(style)], legNo, LegStatistics{});
}

Time LRKCourse::rounded(Time time, enmTimeAccuracy accuracy) const {
  if (accuracy == etacAuto) accuracy = settings_.timeAccuracy;
  return roundTime(time, accuracy == etacAuto ? etacHundredthsSeconds : accuracy);
}

Time LRKCourse::bestTime(int legNo, enmLegStyle style) const {
  if (style == elstTotalAllowMissingPunches) style = elstTotal;
  if (style == elstPassingEndAllowMissingPunches) style = elstPassingEnd;
  return statistics(legNo, style).best;
}

Time LRKCourse::bestFinishTime() const { return bestTime(noOfLegs() - 1, elstTotal); }

Time LRKCourse::legTopTime(int legNo, enmTimeAccuracy accuracy) const {
  return rounded(entryOf(tables_.topTime, legNo, LRK_NO_TIME), accuracy);
}

Time LRKCourse::averageTime(int legNo, enmLegStyle style, enmTimeAccuracy accuracy) const {
  if (legNo < 0 || legNo >= noOfLegs()) return LRK_NO_TIME;
  std::int64_t sum = 0;
  std::int64_t count = 0;
  for (const LRKRunner& runner : runners_) {
    const Time time = runner.time(legNo, style);
    if (isDisq(time)) continue;
    sum += time;
    ++count;
  }
  if (count == 0) return LRK_NO_TIME;
  return rounded(roundHalfEven(static_cast<double>(sum) / static_cast<double>(count)), accuracy);
}

Time LRKCourse::idealTime(int legNo) const {
  return entryOf(tables_.idealTime, legNo, LRK_NO_TIME);
}

double LRKCourse::normalizedLength(int legNo) const {
  return entryOf(tables_.normalizedLength, legNo, 0.0);
}

double LRKCourse::accumulatedNormalizedLength(int legNo) const {
  return entryOf(tables_.accumulatedNormalizedLength, legNo, 0.0);
}

int LRKCourse::noOfExistingRunners(int legNo) const {
  return entryOf(tables_.existingRunners, legNo, 0);
}

int LRKCourse::noOfQualifiedRunners(int legNo, enmLegStyle style) const {
  return statistics(legNo, style).qualified;
}

int LRKCourse::noOfTimeLossRunners(int legNo) const {
  return entryOf(tables_.timeLossRunners, legNo, 0);
}

float LRKCourse::timeLossFrequency(int legNo) const {
  const int qualified = noOfQualifiedRunners(legNo, elstLeg);
  if (qualified == 0) return 0;
  return static_cast<float>(noOfTimeLossRunners(legNo)) / static_cast<float>(qualified);
}

Time LRKCourse::runnerTimeDifference(int runnerIndex, int legNo, enmLegStyle legStyle,
                                     bool excludeThisRunner) const {
  if (legNo < 0 || legNo >= noOfLegs()) return LRK_NO_TIME;
  const Time time = runner(runnerIndex).time(legNo, legStyle);
  if (isDisq(time)) return LRK_NO_TIME;
  const LegStatistics leg = statistics(legNo, legStyle);
  const Time other = excludeThisRunner && time == leg.best ? leg.secondBest : leg.best;
  return isDisq(other) ? LRK_NO_TIME : saturated<Time>(std::int64_t{time} - other);
}

void LRKCourse::getSortedTimes(int legNo, enmLegStyle style, std::vector<Time>& times,
                               std::vector<int>& runnerIndices) const {
  if (runners_.empty() || legNo < 0 || legNo >= noOfLegs()) return;
  times.resize(runners_.size());
  runnerIndices.assign(runners_.size(), -1);
  FreeSlots slots(runners_.size());
  for (int r = 0; r < noOfRunners(); ++r) {
    const int place = runner(r).place(legNo, style);
    const std::size_t slot = slots.take(static_cast<std::size_t>(std::max(place - 1, 0)));
    times[slot] = runner(r).time(legNo, style);
    runnerIndices[slot] = r;
  }
}

}  // namespace larkstone
