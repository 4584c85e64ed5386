#include "larkstone/import/readers/csv_relay_teams.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/import/readers/csv_values.hpp"
#include "larkstone/import/relay_results.hpp"

namespace larkstone {

namespace {

bool byLeg(const RelayMember& a, const RelayMember& b) {
  return a.runner.relayLeg() < b.runner.relayLeg();
}

// Splits count from the start of the team, that of its first leg, also behind a mass start. Where
// nobody is listed for that leg, the time of the team after a later one tells it.
Time startOf(const RelayTeam& team) {
  for (const RelayMember& member : team.members) {
    if (!member.startKnown) continue;
    if (member.runner.relayLeg() == 1) return member.runner.startTime();
    const Time time = member.standing.time;
    const Time finish = member.runner.finishTime();
    if (time > 0 && !isDisq(finish) && finish >= time) return finish - time;
  }
  return LRK_NO_TIME;
}

// Lists give the time since the team's start; some the time of day.
Time clockOf(Time time, Time teamStart, const LRKRunner& runner) {
  for (const Time clock : {sumOfTimes(teamStart, time), time}) {
    if (clock >= runner.startTime() && clock <= runner.finishTime()) return clock;
  }
  return LRK_NO_TIME;
}

// A control without a time was listed but not passed, or its time is of no use.
void addSplits(RelayMember& member, Time teamStart, const LineNotes& notes) {
  LRKRunner& runner = member.runner;
  for (const RelaySplit& split : member.splits) {
    const Time clock = isDisq(split.time) ? LRK_NO_TIME : clockOf(split.time, teamStart, runner);
    if (isDisq(clock) && !isDisq(split.time)) {
      notes("punch outside the leg at control", std::to_string(split.code));
    }
    if (runner.punches().add(clock, split.code) < 0) notes("too many punches");
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
  setClub(team, runner);
  const Time start = isDisq(team.start) ? startOf(team) : team.start;
  if (!isDisq(start)) runner.startTime(start);
  return runner;
}

bool addTeam(RelayTeam& team, ReaderRun& run, ImportSession& session) {
  std::stable_sort(team.members.begin(), team.members.end(), byLeg);
  if (!run.addToRelay(teamRunner(team), team.standing, LineNotes(session, team.line))) return false;
  const Time teamStart = startOf(team);
  for (RelayMember& member : team.members) {
    LRKRunner& runner = member.runner;
    runner.extraInfo(relayMemberKey(team.number));
    runner.relayTeam(team.name);
    runner.relayTeamID(team.number);
    setClub(team, runner);
    addSplits(member, teamStart, LineNotes(session, member.line, &runner));
    if (!run.addToRelay(std::move(runner), member.standing, LineNotes(session, member.line))) {
      return false;
    }
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

void RelayClass::add(RelayMember member, RelayTeam& team) {
  ++noOfMembers_;
  team.members.push_back(std::move(member));
}

bool RelayClass::addTo(ReaderRun& run, ImportSession& session) {
  return std::all_of(teams_.begin(), teams_.end(),
                     [&](RelayTeam& team) { return addTeam(team, run, session); });
}

}  // namespace larkstone
