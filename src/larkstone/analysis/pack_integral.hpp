#pragma once

// The time spent following when there were several runners to follow.

#include <span>
#include <vector>

#include "larkstone/analysis/gap_weight.hpp"

namespace larkstone {

/// The gap to one runner along a leg: at its begin, and how much it grows up to its end. Above 0
/// the other one is behind.
struct GapLine {
  double begin = 0;
  double change = 0;
};

/// Shares of a leg, 0 to 1, with anybody close behind and with anybody close ahead.
struct LegShares {
  double pulling = 0;
  double following = 0;
};

/// Cuts a leg wherever a gap to any of the runners passes a level of the weight; every stretch
/// counts with the largest weight of all. One object serves runner after runner.
class PackIntegral {
 public:
  explicit PackIntegral(const GapWeight& weight) : weight_(weight) {}

  LegShares shares(std::span<const GapLine> lines);

 private:
  bool isFullAllAlong(std::span<const GapLine> lines) const;
  void cut(std::span<const GapLine> lines);
  double share(std::span<const GapLine> lines);
  void cover(const GapLine& line);
  double largestWeight(std::span<const GapLine> lines, std::size_t stretch);

  const GapWeight& weight_;
  std::vector<double> cuts_;            // 0, the places of the cuts, 1
  std::vector<std::size_t> fullUntil_;  // per stretch: the first one behind that is not full
  std::vector<GapLine> mirrored_;
  std::size_t largest_ = 0;  // the line with the largest weight on the stretch before
};

}  // namespace larkstone
