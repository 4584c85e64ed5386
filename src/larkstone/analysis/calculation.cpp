#include "larkstone/analysis/calculation.hpp"

namespace larkstone {

const LegMajorTable<Time>& Calculation::times(enmLegStyle style) {
  if (times_.empty()) {
    times_.assign(LRK_LEG_STYLES, LegMajorTable<Time>(noOfLegs, noOfRunners));
    for (int r = 0; r < noOfRunners; ++r) {
      for (int i = 0; i < noOfLegs; ++i) {
        const auto ofStyles = runner(r).times(i);
        for (std::size_t s = 0; s < times_.size(); ++s) times_[s].at(i, r) = ofStyles[s];
      }
    }
  }
  return times_[static_cast<std::size_t>(style)];
}

void Calculation::timesChanged() { times_.clear(); }

LegMajorTable<std::int16_t>& Calculation::places(enmLegStyle style) {
  auto& table = places_[static_cast<std::size_t>(style)];
  if (!table) table.emplace(noOfLegs, noOfRunners);
  return *table;
}

void Calculation::storePlaces() {
  for (int r = 0; r < noOfRunners; ++r) {
    for (int style = 0; style < LRK_LEG_STYLES; ++style) {
      const auto& table = places_[static_cast<std::size_t>(style)];
      for (int i = 0; i < noOfLegs && table; ++i) {
        runner(r).place(i, static_cast<enmLegStyle>(style), table->at(i, r));
      }
    }
  }
}

}  // namespace larkstone
