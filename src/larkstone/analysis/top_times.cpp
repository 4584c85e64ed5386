// What a fast runner needs for each leg, and how much of the course each leg is.

#include <algorithm>
#include <cmath>

#include "larkstone/analysis/calculation.hpp"
#include "larkstone/core/number.hpp"

namespace larkstone {

namespace {

constexpr double noTopTime = -1;

// Mean of the fastest times: `share` of them, the last one only by the fraction that is left.
double meanOfFastest(std::span<const Time> sortedTimes, float share) {
  double sum = 0;
  double weights = 0;
  for (std::size_t k = 0; k < sortedTimes.size() && static_cast<float>(k) <= share; ++k) {
    const float weight = std::clamp(share - static_cast<float>(k), 0.0F, 1.0F);
    sum += static_cast<double>(sortedTimes[k]) * weight;
    weights += weight;
  }
  return weights == 0 ? noTopTime : sum / weights;
}

// A leg that nobody finished counts as a leg of mean length.
void fillMissingLengths(std::vector<double>& lengths) {
  double sum = 0;
  int known = 0;
  for (const double length : lengths) {
    if (length == noTopTime) continue;
    sum += length;
    ++known;
  }
  std::replace(lengths.begin(), lengths.end(), noTopTime, known == 0 ? 1 : sum / known);
}

}  // namespace

void computeTopTimes(Calculation& calculation) {
  LegTables& tables = calculation.tables;
  const LegMajorTable<Time>& times = calculation.times(elstLeg);
  std::vector<double>& lengths = tables.normalizedLength;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const auto leg = times.leg(i);
    const auto withTime =
        std::count_if(leg.begin(), leg.end(), [](Time time) { return !isDisq(time); });
    const float share = static_cast<float>(withTime) * calculation.settings.topPercentile;
    lengths[at] = meanOfFastest(tables.sortedTimes[at], share);
    if (lengths[at] != noTopTime) tables.topTime[at] = roundHalfEven(lengths[at]);
  }
  fillMissingLengths(lengths);

  double all = 0;
  for (const double length : lengths) all += length;
  double accumulated = 0;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (all > 0) lengths[i] /= all;
    accumulated += lengths[i];
    tables.accumulatedNormalizedLength[i] = accumulated;
  }
  calculation.progress.report(2, 1, 1);
}

}  // namespace larkstone
