#pragma once

// What the two methods of finding followers have in common.

#include <memory>
#include <span>

#include "larkstone/analysis/calculation.hpp"
#include "larkstone/analysis/gap_weight.hpp"
#include "larkstone/analysis/leg_passings.hpp"

namespace larkstone {

/// A group of runners close to another group on a leg, and how much of the leg (0 to 1) each of
/// them spent following a runner of the other group and being followed by one.
struct CloseGroup {
  int group = 0;
  double gapAtBegin = 0;  ///< above 0: this group is behind
  double gapAtEnd = 0;
  float pulled = 0;    ///< this group followed the other
  float followed = 0;  ///< the other followed this group
};

/// The indices of a runner on a leg.
struct LegIndices {
  float pull = 0;
  float following = 0;
};

/// A method of finding followers. Every leg is begun, then every group on it that was close to
/// anybody is judged; each entry of `close` has a share above 0.
class FollowingMethod {
 public:
  virtual ~FollowingMethod() = default;
  virtual void beginLeg(int /*legNo*/, const LegPassings& /*passings*/) {}
  virtual LegIndices judge(int group, std::span<const CloseGroup> close) = 0;
  /// Hands a runner the partners of all legs.
  virtual void storePartners(int runner) = 0;
};

/// Only the closest partners count: the one who followed most and the one followed most. Who runs
/// between two others is not pulling for the part that is following.
std::unique_ptr<FollowingMethod> basicFollowing(Calculation& calculation);
/// All partners count: each moment of a leg with the closest of them. Stores who they were.
std::unique_ptr<FollowingMethod> extendedFollowing(Calculation& calculation,
                                                   const GapWeight& weight);

/// The time gained by following, from the following indices of all legs.
void computeFollowingBenefit(Calculation& calculation, const LegMajorTable<LegIndices>& indices);

}  // namespace larkstone
