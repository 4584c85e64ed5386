#pragma once

// How much a runner counts as following another, by the time between them.

#include <array>

#include "larkstone/core/types.hpp"

namespace larkstone {

/// Weighs the gap to a runner ahead: in full up to the close gap, less and less up to the far gap,
/// not at all beyond it or when the other one is behind (a gap below 0). Along a leg a gap changes
/// evenly. Gaps are whole hundredths of a second.
class GapWeight {
 public:
  GapWeight(Time close, Time far);

  Time close() const { return close_; }
  Time far() const { return far_; }
  /// The gaps at which the weight changes its course, in either direction; ascending.
  const std::array<double, 5>& levels() const { return levels_; }

  /// One end's part, 0 to 0.5, in the weight of a stretch. `heads` has the sign of the gap's change
  /// from that end into the stretch: two runners side by side follow each other by halves, and one
  /// who just overtakes follows no longer.
  double atEnd(double gap, double heads) const {
    if (gap == 0) return heads == 0 ? 0.25 : heads > 0 ? 0.5 : 0;
    if (gap < 0) return 0;
    if (gap <= close_) return 0.5;
    return gap <= far_ ? 0.5 * (far_ - gap) / (static_cast<double>(far_) - close_) : 0;
  }

  /// The share of a leg spent following, 0 to 1, for the gaps at its two ends.
  double share(double gapAtBegin, double gapAtEnd) const;

 private:
  double ofStretch(double from, double to) const { return atEnd(from, to) + atEnd(to, from); }

  Time close_;
  Time far_;
  std::array<double, 5> levels_;
};

}  // namespace larkstone
