#pragma once

// A relay as its categories: the teams over whole legs, and the runners of each leg.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
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
/// count from 1. A member's key may also read "runner_0_1".
std::string relayTeamKey(std::int32_t team);
std::string relayMemberKey(std::int32_t team);

/// The most legs of a relay; the event file has one byte for a leg.
inline constexpr int mostRelayLegs = 255;

/// What a list says about a team: in the end, or after the leg of one of its members.
struct RelayStanding {
  Time time = LRK_NO_TIME;  ///< the team's, from its start; 0 and no time: not told
  std::optional<enmStatus> status;
  int place = 0;  ///< 0: none
};

/// Takes a relay category apart into the category of the teams and, behind it, one for each leg
/// that somebody ran; nothing for a category without teams and members. Runners who are neither,
/// and members without a leg from 1 to mostRelayLegs, are left out.
///
/// The times of members are clock times. A member whose start is not known (0) starts when the
/// team's previous leg ended, one who starts before the team did so on the next day. Which member
/// of several on a leg counts, the rules say.
///
/// Those of teams are running times, laid from the start of the team. After each leg it has the
/// time that is listed (the standings go with the runners of the category, in their order), else
/// the time after the leg before and the counting member's own: so a restart or a penalty counts as
/// the list counts it. A leg whose counting member mispunched or gave up has no end for the team; a
/// listed total is its finish all the same. The listed status counts, else the first of its members
/// that is not OK, and OK when all legs are. A team without a name is called after its club.
std::vector<LRKCategory> relayCategories(LRKCategory relay, const RelayRules& rules,
                                         const std::vector<RelayStanding>& standings = {});

/// Adds all categories or none: 0, or the event-file error.
std::int32_t addCategories(LRKEvent& event, std::vector<LRKCategory>& categories);

}  // namespace larkstone
