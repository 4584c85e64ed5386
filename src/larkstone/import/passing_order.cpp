#include "larkstone/import/passing_order.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace larkstone {

namespace {

struct Passing {
  Code code = 0;
  Time time = LRK_NO_TIME;
};

// The punches between start and finish.
std::vector<Passing> controlsOf(const LRKPunches& punches) {
  std::vector<Passing> controls;
  for (int i = 0; i < punches.count(); ++i) {
    if (isStartCode(punches.code(i)) || isFinishCode(punches.code(i))) continue;
    controls.push_back({punches.code(i), punches.time(i)});
  }
  return controls;
}

// The runners of one leg, or of a class that is no relay.
class Leg {
 public:
  void add(LRKRunner& runner) {
    runners_.push_back(&runner);
    const std::vector<Passing> controls = controlsOf(runner.punches());
    const Passing* before = nullptr;  // the last one with a time
    for (std::size_t i = 0; i < controls.size(); ++i) {
      const Passing& control = controls[i];
      if (i > 0 && control.code <= controls[i - 1].code) byCode_ = false;
      if (isDisq(control.time)) continue;
      Times& times = times_[control.code];
      times.sum += control.time - (isDisq(runner.startTime()) ? 0 : runner.startTime());
      ++times.count;
      if (before != nullptr) {
        Pair& pair = pairs_[{before->code, control.code}];
        ++pair.count;
        if (control.time < before->time) ++pair.reversed;
      }
      before = &control;
    }
  }

  // One runner's clock may be wrong; a pair that half of the runners reverse is listed so.
  bool isListedByCode() const {
    return byCode_ && std::any_of(pairs_.begin(), pairs_.end(), [](const auto& entry) {
             return entry.second.reversed > 0 && 2 * entry.second.reversed >= entry.second.count;
           });
  }

  void order() const {
    for (LRKRunner* const runner : runners_) order(runner->punches());
  }

 private:
  struct Times {
    std::int64_t sum = 0;
    std::int64_t count = 0;
  };
  // How many runners have a time for two controls that are listed one behind the other.
  struct Pair {
    int count = 0;
    int reversed = 0;
  };

  // On average, from the start; last for a control that nobody has a time for.
  double usualTime(Code code) const {
    const auto found = times_.find(code);
    if (found == times_.end()) return std::numeric_limits<double>::infinity();
    return static_cast<double>(found->second.sum) / static_cast<double>(found->second.count);
  }

  void order(LRKPunches& punches) const {
    std::vector<Passing> timed;
    std::vector<Passing> untimed;
    for (const Passing& control : controlsOf(punches)) {
      (isDisq(control.time) ? untimed : timed).push_back(control);
    }
    const auto earlier = [](const Passing& a, const Passing& b) { return a.time < b.time; };
    const auto usuallyEarlier = [&](const Passing& a, const Passing& b) {
      return usualTime(a.code) < usualTime(b.code);
    };
    std::stable_sort(timed.begin(), timed.end(), earlier);
    std::stable_sort(untimed.begin(), untimed.end(), usuallyEarlier);

    std::vector<Passing> ordered;
    auto next = untimed.begin();
    for (const Passing& control : timed) {
      while (next != untimed.end() && usuallyEarlier(*next, control)) ordered.push_back(*next++);
      ordered.push_back(control);
    }
    ordered.insert(ordered.end(), next, untimed.end());
    for (int i = 0, k = 0; i < punches.count(); ++i) {
      if (isStartCode(punches.code(i)) || isFinishCode(punches.code(i))) continue;
      const Passing& control = ordered[static_cast<std::size_t>(k++)];
      punches.edit(i, control.time, control.code);
    }
  }

  std::vector<LRKRunner*> runners_;
  std::unordered_map<Code, Times> times_;
  std::map<std::pair<Code, Code>, Pair> pairs_;
  bool byCode_ = true;
};

std::map<int, Leg> legsOf(LRKCategory& category) {
  std::map<int, Leg> legs;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    LRKRunner& runner = category.runner(i);
    legs[runner.relayLeg()].add(runner);
  }
  return legs;
}

}  // namespace

void orderByTimes(LRKCategory& category) {
  for (const auto& [number, leg] : legsOf(category)) leg.order();
}

bool orderIfListedByCode(LRKCategory& category) {
  bool found = false;
  for (const auto& [number, leg] : legsOf(category)) {
    if (!leg.isListedByCode()) continue;
    leg.order();
    found = true;
  }
  return found;
}

}  // namespace larkstone
