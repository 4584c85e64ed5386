#include "larkstone/analysis/time_correction.hpp"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "larkstone/core/number.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

namespace {

// The shortest time anybody took from one control to another.
class ShortestTimes {
 public:
  void add(Code from, Code to, Time time) {
    const auto [entry, added] = times_.try_emplace(keyOf(from, to), time);
    if (!added) entry->second = std::min(entry->second, time);
  }
  /// Controls that nobody connected in a time that counts.
  void addUnknown(Code from, Code to) { times_.try_emplace(keyOf(from, to), LRK_NO_TIME); }

  /// Unknown times become the mean of the known ones.
  void fillUnknown() {
    std::int64_t sum = 0;
    std::int64_t known = 0;
    for (const auto& [key, time] : times_) {
      if (time == LRK_NO_TIME) continue;
      sum += time;
      ++known;
    }
    const Time mean =
        known == 0 ? 1 : roundHalfEven(static_cast<double>(sum) / static_cast<double>(known));
    for (auto& [key, time] : times_) {
      if (time == LRK_NO_TIME) time = mean;
    }
  }
  Time of(Code from, Code to) const { return times_.at(keyOf(from, to)); }

 private:
  static std::uint32_t keyOf(Code from, Code to) {
    return static_cast<std::uint32_t>(static_cast<std::uint16_t>(from)) << 16 |
           static_cast<std::uint16_t>(to);
  }

  std::unordered_map<std::uint32_t, Time> times_;
};

// Adds the runner's times between punches; true when some of them cannot be right.
bool collectTimes(const LRKPunches& punches, bool allTimesMustExist, ShortestTimes& shortest) {
  bool wrong = false;
  for (int k = 0; k + 1 < punches.count(); ++k) {
    const Time begin = punches.time(k);
    const Time end = punches.time(k + 1);
    const bool missing = isDisq(begin) || isDisq(end);
    if (missing && !allTimesMustExist) continue;
    if (missing || end <= begin) {
      wrong = true;
      shortest.addUnknown(punches.code(k), punches.code(k + 1));
    } else {
      shortest.add(punches.code(k), punches.code(k + 1), end - begin);
    }
  }
  return wrong;
}

// The controls between start and finish of one runner.
class PunchRepair {
 public:
  PunchRepair(LRKPunches& punches, bool allTimesMustExist, const ShortestTimes& shortest)
      : punches_(punches),
        shortest_(shortest),
        last_(punches.count() - 1),
        wrong_(static_cast<std::size_t>(punches.count()), false) {
    for (int k = 1; k < last_; ++k) {
      const Time time = punches.time(k);
      if (isDisq(time) && !allTimesMustExist) continue;
      if (time < punches.time(0) || time > punches.time(last_) || isDisq(time)) mark(k);
    }
  }

  void run() {
    const std::vector<bool> none(wrong_.size(), false);
    const std::size_t forward = outOfOrder(true, none).size();
    const std::size_t backward = outOfOrder(false, none).size();
    if (backward < forward) {
      for (const int k : outOfOrder(true, wrong_)) mark(k);
    } else if (backward >= 1) {
      for (const int k : outOfOrder(false, wrong_)) mark(k);
    }
    for (int k = 1; k < last_; ++k) {
      if (!isWrong(k)) continue;
      int end = k;
      while (isWrong(end + 1)) ++end;
      retime(k, end);
      k = end;
    }
  }

 private:
  void mark(int k) { wrong_[static_cast<std::size_t>(k)] = true; }
  bool isWrong(int k) const { return wrong_[static_cast<std::size_t>(k)]; }

  // The controls that a walk from the start (or back from the finish) finds not later (not earlier)
  // than the last one in order.
  std::vector<int> outOfOrder(bool forward, const std::vector<bool>& skipped) const {
    std::vector<int> found;
    int inOrder = forward ? 0 : last_;
    for (int step = 1; step < last_; ++step) {
      const int k = forward ? step : last_ - step;
      const Time time = punches_.time(k);
      if (isDisq(time) || skipped[static_cast<std::size_t>(k)]) continue;
      const Time reached = punches_.time(inOrder);
      if (forward ? time > reached : time < reached) {
        inOrder = k;
      } else {
        found.push_back(k);
      }
    }
    return found;
  }

  Time shortestTo(int k) const { return shortest_.of(punches_.code(k - 1), punches_.code(k)); }

  // Spreads the wrong punches over the time between their neighbours.
  void retime(int first, int last) {
    const Time before = punches_.time(first - 1);
    const Time after = punches_.time(last + 1);
    if (isDisq(before) || isDisq(after)) return;
    std::int64_t expected = 0;
    for (int k = first; k <= last + 1; ++k) expected += shortestTo(k);
    const double stretch = after - before;
    for (int k = first; k <= last; ++k) {
      const double share = shortestTo(k) * stretch / static_cast<double>(expected);
      punches_.time(k, roundHalfEven(punches_.time(k - 1) + share));
      punches_.isEstimated(k, true);
    }
  }

  LRKPunches& punches_;
  const ShortestTimes& shortest_;
  const int last_;
  std::vector<bool> wrong_;
};

void takeLegTimesFromPunches(LRKRunner& runner) {
  const LRKPunches& punches = runner.punches();
  LRKLegs& legs = runner.legs();
  for (int i = 0; i < legs.count(); ++i) {
    const int begin = legs.beginPunchIndex(i);
    const int end = legs.endPunchIndex(i);
    if (begin < 0 || end < 0 || begin >= punches.count() || end >= punches.count()) continue;
    legs.beginTime(i, punches.time(begin));
    legs.endTime(i, punches.time(end));
    legs.beginTimeIsEstimated(i, punches.isEstimated(begin));
    legs.endTimeIsEstimated(i, punches.isEstimated(end));
  }
}

}  // namespace

void correctZeroAndNegativeTimes(std::vector<LRKRunner>& runners, bool isCategoryCourse,
                                 enmTimeAccuracy accuracy) {
  const auto allTimesMustExist = [isCategoryCourse](const LRKRunner& runner) {
    return isCategoryCourse && runner.status() == estaOK;
  };
  ShortestTimes shortest;
  std::vector<LRKRunner*> wrong;
  for (LRKRunner& runner : runners) {
    if (collectTimes(runner.punches(), allTimesMustExist(runner), shortest)) {
      wrong.push_back(&runner);
    }
  }
  shortest.fillUnknown();
  for (LRKRunner* runner : wrong) {
    LRKPunches& punches = runner->punches();
    PunchRepair(punches, allTimesMustExist(*runner), shortest).run();
    for (int k = 0; k < punches.count(); ++k) {
      punches.time(k, truncateTime(punches.time(k), accuracy));
    }
    takeLegTimesFromPunches(*runner);
  }
}

}  // namespace larkstone
