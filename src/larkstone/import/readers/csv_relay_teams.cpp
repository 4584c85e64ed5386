#include "larkstone/import/readers/csv_relay_teams.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/import/readers/csv_values.hpp"
#include "larkstone/import/relay_results.hpp"

namespace larkstone {

namespace {

bool byLeg(const RelayMember& a, const RelayMember& b) {
  return a.runner.relayLeg() < b.runner.relayLeg();
}

// Splits count from the start of the team, that of its first leg, also behind a mass start.
Time startOf(const RelayTeam& team) {
  if (team.members.empty() || !team.members.front().startKnown) return LRK_NO_TIME;
  return team.members.front().runner.startTime();
}

// Lists give the time since the team's start; some the time of day.
Time clockOf(Time time, Time teamStart, const LRKRunner& runner) {
  for (const Time clock : {sumOfTimes(teamStart, time), time}) {
    if (clock >= runner.startTime() && clock <= runner.finishTime()) return clock;
  }
  return LRK_NO_TIME;
}

// Controls whose order the list does not tell stand in the order of their times. Without a time a
// control was not passed, or does not belong to the leg.
void addSplits(RelayMember& member, Time teamStart, const LineNotes& notes) {
  LRKRunner& runner = member.runner;
  std::vector<RelaySplit> passed;
  for (const RelaySplit& split : member.splits) {
    if (isDisq(split.time)) continue;
    const Time clock = clockOf(split.time, teamStart, runner);
    if (isDisq(clock)) {
      notes("punch outside the leg at control", std::to_string(split.code));
    } else {
      passed.push_back({split.code, clock});
    }
  }
  std::stable_sort(passed.begin(), passed.end(),
                   [](const RelaySplit& a, const RelaySplit& b) { return a.time < b.time; });
  for (const RelaySplit& split : passed) {
    if (runner.punches().add(split.time, split.code) < 0) notes("too many punches");
  }
}

void setClub(const RelayTeam& team, LRKRunner& runner) {
  if (!team.club.empty()) runner.club(team.club);
  if (team.clubId) runner.clubID(*team.clubId);
}

LRKRunner teamRunner(const RelayTeam& team) {
  LRKRunner runner;
  runner.name(team.name);
  runner.extraInfo(relayTeamKey(team.number));
  runner.relayTeam(team.name);
  runner.relayTeamID(team.number);
  runner.status(team.status);
  if (team.place > 0) runner.resultPlace(saturated<std::int16_t>(team.place));
  setClub(team, runner);
  if (!team.members.empty()) {
    runner.startTime(team.members.front().runner.startTime());
    runner.finishTime(team.members.back().runner.finishTime());
  }
  return runner;
}

bool addTeam(RelayTeam& team, ReaderRun& run, ImportSession& session) {
  std::stable_sort(team.members.begin(), team.members.end(), byLeg);
  if (!run.addRunner(teamRunner(team), LineNotes(session, team.line))) return false;
  const Time teamStart = startOf(team);
  for (RelayMember& member : team.members) {
    LRKRunner& runner = member.runner;
    runner.extraInfo(relayMemberKey(team.number));
    runner.relayTeam(team.name);
    runner.relayTeamID(team.number);
    setClub(team, runner);
    addSplits(member, teamStart, LineNotes(session, member.line, &runner));
    if (!run.addRunner(std::move(runner), LineNotes(session, member.line))) return false;
  }
  return true;
}

}  // namespace

RelayTeam& RelayClass::team(std::optional<std::int32_t> number, std::string_view name) {
  // Names begin with a letter here that no number has.
  std::string key = number ? std::to_string(*number) : 'n' + std::string(name);
  const auto [found, isNew] = index_.try_emplace(std::move(key), teams_.size());
  if (isNew) {
    RelayTeam& team = teams_.emplace_back();
    // No list counts below 0.
    team.number = number.value_or(-static_cast<std::int32_t>(teams_.size()));
  }
  return teams_[found->second];
}

void RelayClass::add(RelayMember member, RelayTeam& team, const LineNotes& notes) {
  if (noOfMembers_ >= LRK_MAX_LIST) {
    notes("the category is full");
    return;
  }
  ++noOfMembers_;
  team.lastLeg = std::max<int>(team.lastLeg, member.runner.relayLeg());
  team.members.push_back(std::move(member));
}

bool RelayClass::addTo(ReaderRun& run, ImportSession& session) {
  return std::all_of(teams_.begin(), teams_.end(),
                     [&](RelayTeam& team) { return addTeam(team, run, session); });
}

}  // namespace larkstone
