// Places by total and passing times, and the ideal times.

#include <algorithm>

#include "larkstone/analysis/calculation.hpp"
#include "larkstone/analysis/leg_ranking.hpp"

namespace larkstone {

namespace {

constexpr enmLegStyle strictStyles[] = {elstTotal, elstPassingBegin, elstPassingEnd};

enmLegStyle allowingMissingPunches(enmLegStyle strict) {
  return static_cast<enmLegStyle>(strict + 3);
}

std::vector<enmLegStyle> stylesToRank(const Calculation& calculation,
                                      enmCourseCalculationFlags flags) {
  std::vector<enmLegStyle> styles;
  if (calculation.settings.timesWithoutTimeLoss && (flags & eccfTimeLoss) != 0) {
    styles.push_back(elstLeg);
  }
  for (const enmLegStyle strict : strictStyles) {
    if ((flags & eccfPlacesAllowMissingPunches) != 0) {
      styles.push_back(allowingMissingPunches(strict));
    } else if ((flags & eccfPlacesDontAllowMissingPunches) != 0) {
      styles.push_back(strict);
    }
  }
  return styles;
}

void computeIdealTime(Calculation& calculation, int legNo) {
  const auto at = static_cast<std::size_t>(legNo);
  std::vector<Time>& ideal = calculation.tables.idealTime;
  const Time before = legNo == 0 ? 0 : ideal[at - 1];
  ideal[at] = std::min(before + calculation.statistics(legNo, elstLeg).best, LRK_NO_TIME);
}

void rankStyles(Calculation& calculation, const std::vector<enmLegStyle>& styles) {
  LegRanking ranking;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    for (const enmLegStyle style : styles) {
      calculation.statistics(i, style) =
          ranking.rank(calculation.times(style).leg(i), LRKRunner::lowestRankedTime(style),
                       calculation.places(style).leg(i));
    }
    computeIdealTime(calculation, i);
    calculation.progress.report(6, i + 1, calculation.noOfLegs);
  }
}

// The places of one leg when runners who miss a punch before it do not count: everybody else moves
// up by the number of those who stood in front.
class StrictPlaces {
 public:
  LegStatistics derive(std::span<const Time> strict, std::span<const Time> allowing,
                       std::span<const std::int16_t> allowingPlaces,
                       std::span<std::int16_t> places) {
    const std::size_t n = strict.size();
    dropped_.assign(n + 1, 0);
    LegStatistics statistics;
    for (std::size_t r = 0; r < n; ++r) {
      if (strict[r] != allowing[r]) {
        ++dropped_[static_cast<std::size_t>(allowingPlaces[r])];
      } else if (!isDisq(allowing[r])) {
        ++statistics.qualified;
      }
    }
    // From here on: how many of that place or a better one.
    for (std::size_t place = 1; place <= n; ++place) dropped_[place] += dropped_[place - 1];

    for (std::size_t r = 0; r < n; ++r) {
      const auto before = static_cast<std::size_t>(allowingPlaces[r] - 1);
      const int place = strict[r] != allowing[r] ? statistics.qualified + 1
                                                 : allowingPlaces[r] - dropped_[before];
      places[r] = static_cast<std::int16_t>(place);
      if (place == 1 && statistics.best == LRK_NO_TIME) {
        statistics.best = strict[r];
      } else if (place <= 2) {
        statistics.secondBest = strict[r];
      }
    }
    return statistics;
  }

 private:
  std::vector<int> dropped_;  // by place
};

void deriveStrictPlaces(Calculation& calculation) {
  StrictPlaces strictPlaces;
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    for (const enmLegStyle strict : strictStyles) {
      const enmLegStyle allowing = allowingMissingPunches(strict);
      calculation.statistics(i, strict) = strictPlaces.derive(
          calculation.times(strict).leg(i), calculation.times(allowing).leg(i),
          calculation.places(allowing).leg(i), calculation.places(strict).leg(i));
    }
    calculation.progress.report(7, i + 1, calculation.noOfLegs);
  }
}

}  // namespace

void computeStylePlaces(Calculation& calculation, enmCourseCalculationFlags flags) {
  rankStyles(calculation, stylesToRank(calculation, flags));
  if ((flags & eccfPlacesDontAllowMissingPunches) != 0 &&
      (flags & eccfPlacesAllowMissingPunches) != 0) {
    deriveStrictPlaces(calculation);
  }
  calculation.storePlaces();
}

}  // namespace larkstone
