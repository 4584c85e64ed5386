#pragma once

// A relay as its categories: the teams over whole legs, and the runners of each leg.

#include <cstdint>
#include <string>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone {

struct RelayRules {
  std::string wholeLegsText = "whole legs";
  std::string commonControlsText = "common controls";
  bool ignoreDisqualifiedRunners = false;
  enmRelayParallelMode parallelMode = erpmFastestTime;
};

/// What a reader writes into the extraInfo of a team, and of its members with their relayLeg. Teams
/// count from 1.
std::string relayTeamKey(std::int32_t team);
std::string relayMemberKey(std::int32_t team);

/// The most legs of a relay; the event file has one byte for a leg.
inline constexpr int mostRelayLegs = 255;

/// Takes a relay category apart into the category of the teams and, behind it, one for each leg
/// that somebody ran; nothing for a category without teams and members. Runners who are neither,
/// and members without a leg from 1 to mostRelayLegs, are left out.
///
/// The times are clock times. A member whose start is not known (0) starts when the team's previous
/// leg ended, one who starts before the team did so on the next day. A leg whose counting member
/// mispunched or gave up has no end for the team, as in the lists. A team without a status gets
/// that of its members: the first that is not OK, and OK when all legs are.
std::vector<LRKCategory> relayCategories(LRKCategory relay, const RelayRules& rules);

/// Adds all categories or none: 0, or the event-file error.
std::int32_t addCategories(LRKEvent& event, std::vector<LRKCategory>& categories);

}  // namespace larkstone
