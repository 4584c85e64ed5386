// The legs alone: who has them, how fast they were run, and everybody's place.

#include "larkstone/analysis/calculation.hpp"
#include "larkstone/analysis/leg_ranking.hpp"

namespace larkstone {

namespace {

void countExistingRunners(Calculation& calculation) {
  for (const LRKRunner& runner : calculation.runners) {
    for (int i = 0; i < calculation.noOfLegs; ++i) {
      if (runner.legs().beginPunchIndex(i) < 0) continue;
      ++calculation.tables.existingRunners[static_cast<std::size_t>(i)];
    }
  }
}

}  // namespace

void computeLegStatistics(Calculation& calculation) {
  countExistingRunners(calculation);
  const LegMajorTable<Time>& times = calculation.times(elstLeg);
  LegMajorTable<std::int16_t>& places = calculation.places(elstLeg);
  LegRanking ranking;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    calculation.statistics(i, elstLeg) =
        ranking.rank(times.leg(i), LRKRunner::lowestRankedTime(elstLeg), places.leg(i));
    calculation.tables.sortedTimes[static_cast<std::size_t>(i)] = ranking.sortedTimes();
    calculation.progress.report(1, i + 1, calculation.noOfLegs);
  }
}

}  // namespace larkstone
