#pragma once

// What the stages of a calculation share, and the stages in their order.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "larkstone/analysis/calculation_progress.hpp"
#include "larkstone/analysis/course.hpp"
#include "larkstone/analysis/leg_tables.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

/// A value for every leg and runner; the values of one leg lie side by side.
template <class T>
class LegMajorTable {
 public:
  LegMajorTable(int legs, int runners)
      : runners_(static_cast<std::size_t>(runners)),
        values_(static_cast<std::size_t>(legs) * runners_) {}

  T& at(int legNo, int runner) { return values_[indexOf(legNo, runner)]; }
  const T& at(int legNo, int runner) const { return values_[indexOf(legNo, runner)]; }
  std::span<T> leg(int legNo) { return std::span(values_).subspan(indexOf(legNo, 0), runners_); }
  std::span<const T> leg(int legNo) const {
    return std::span(values_).subspan(indexOf(legNo, 0), runners_);
  }

 private:
  std::size_t indexOf(int legNo, int runner) const {
    return static_cast<std::size_t>(legNo) * runners_ + static_cast<std::size_t>(runner);
  }

  std::size_t runners_;
  std::vector<T> values_;
};

/// The runners and settings of a course while it is calculated, and the results by leg. Runners are
/// asked once for their times of a style, and get their places of a style back in one go: the
/// stages work on contiguous tables in between.
class Calculation {
 public:
  Calculation(std::vector<LRKRunner>& courseRunners, int legs, const CourseSettings& courseSettings,
              LegTables& legTables, const CalculationProgress& calculationProgress)
      : runners(courseRunners),
        settings(courseSettings),
        tables(legTables),
        progress(calculationProgress),
        noOfRunners(static_cast<int>(courseRunners.size())),
        noOfLegs(legs) {}

  LRKRunner& runner(int index) { return runners[static_cast<std::size_t>(index)]; }
  Time topTime(int legNo) const { return tables.topTime[static_cast<std::size_t>(legNo)]; }
  LegStatistics& statistics(int legNo, enmLegStyle style) {
    return tables.statistics[static_cast<std::size_t>(style)][static_cast<std::size_t>(legNo)];
  }

  /// Every runner's times in a style; the first call asks the runners for those of all styles.
  const LegMajorTable<Time>& times(enmLegStyle style);
  /// The runners' times are not what they were: the next call of times() asks again.
  void timesChanged();

  /// The places of a style, to be worked out.
  LegMajorTable<std::int16_t>& places(enmLegStyle style);
  /// Hands all places to the runners.
  void storePlaces();

  std::vector<LRKRunner>& runners;
  const CourseSettings& settings;
  LegTables& tables;
  const CalculationProgress& progress;
  const int noOfRunners;
  const int noOfLegs;

 private:
  std::vector<LegMajorTable<Time>> times_;  // by style; empty: to be asked for
  std::array<std::optional<LegMajorTable<std::int16_t>>, LRK_LEG_STYLES> places_;
};

/// Best times, counts, sorted times and places of the legs alone.
void computeLegStatistics(Calculation& calculation);
/// Leg top times and the normalized lengths that follow from them.
void computeTopTimes(Calculation& calculation);
/// Every runner's indices against the top times.
void computePerformance(Calculation& calculation);
/// The course index that leaves the time loss out; part of computePerformance(), and to be repeated
/// when the time loss is known.
void computePerformanceWithoutTimeLoss(Calculation& calculation);
/// Every runner's time loss by the method of the course.
void estimateTimeLoss(Calculation& calculation);
/// Takes the time loss out of the runners' times.
void subtractTimeLoss(Calculation& calculation);
/// Places and best times of the styles that the flags ask for, and the ideal times.
void computeStylePlaces(Calculation& calculation, enmCourseCalculationFlags flags);
/// Who followed and pulled whom on each leg, the course indices, and the time gained by it.
void computeFollowing(Calculation& calculation);

}  // namespace larkstone
