#include "bench/sorting_floor.hpp"

#include <algorithm>

#include <benchmark/benchmark.h>

namespace larkstone::bench {

SortingFloor::SortingFloor(const LRKCourse& calculated) {
  for (const enmLegStyle style :
       {elstLeg, elstTotalAllowMissingPunches, elstPassingBeginAllowMissingPunches,
        elstPassingEndAllowMissingPunches}) {
    for (int i = 0; i < calculated.noOfLegs(); ++i) {
      auto& leg = unsorted_.emplace_back();
      for (int r = 0; r < calculated.noOfRunners(); ++r) {
        leg.push_back({calculated.runner(r).time(i, style), r});
      }
    }
  }
}

void SortingFloor::operator()() {
  for (const auto& leg : unsorted_) {
    entries_ = leg;
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry& a, const Entry& b) { return a.time < b.time; });
    benchmark::DoNotOptimize(entries_.data());
  }
}

}  // namespace larkstone::bench
