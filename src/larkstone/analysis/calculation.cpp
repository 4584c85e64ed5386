#include "larkstone/analysis/calculation.hpp"

namespace larkstone {

const LegMajorTable<Time>& Calculation::times(enmLegStyle style) {
  auto& table = times_[static_cast<std::size_t>(style)];
  if (!table) {
    table.emplace(noOfLegs, noOfRunners);
    for (int r = 0; r < noOfRunners; ++r) {
      for (int i = 0; i < noOfLegs; ++i) table->at(i, r) = runner(r).time(i, style);
    }
  }
  return *table;
}

void Calculation::timesChanged() {
  for (auto& table : times_) table.reset();
}

LegMajorTable<std::int16_t>& Calculation::places(enmLegStyle style) {
  auto& table = places_[static_cast<std::size_t>(style)];
  if (!table) table.emplace(noOfLegs, noOfRunners);
  return *table;
}

void Calculation::storePlaces(enmLegStyle style) {
  const LegMajorTable<std::int16_t>& table = places(style);
  for (int r = 0; r < noOfRunners; ++r) {
    for (int i = 0; i < noOfLegs; ++i) runner(r).place(i, style, table.at(i, r));
  }
}

}  // namespace larkstone
