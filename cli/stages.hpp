#pragma once

// Which results a calculation leaves behind.

#include "larkstone/analysis/course.hpp"

namespace larkstone::cli {

/// The stages that ran for a calculated course, by what they fill.
struct Stages {
  explicit Stages(const LRKCourse& course)
      : timeLoss((course.calculationFlags() & eccfTimeLoss) != 0),
        strictPlaces((course.calculationFlags() & eccfPlacesDontAllowMissingPunches) != 0),
        tolerantPlaces((course.calculationFlags() & eccfPlacesAllowMissingPunches) != 0),
        indices((course.calculationFlags() & eccfPerformanceIndices) != 0 ||
                course.timeLossCalculationMethod() == etlcCompareToTopTime),
        following((course.calculationFlags() & eccfLFIndices) != 0) {}

  /// Whether there are places and best times of the style.
  bool style(int style) const {
    if (style == elstLeg) return true;
    return style <= elstPassingEnd ? strictPlaces : tolerantPlaces;
  }

  bool timeLoss;
  bool strictPlaces;
  bool tolerantPlaces;
  bool indices;
  bool following;
};

}  // namespace larkstone::cli
