#include "larkstone/import/relay_results.hpp"

#include <charconv>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/import/common_controls.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/import/reader_run.hpp"

namespace larkstone {

namespace {

constexpr std::string_view teamPrefix = "team_";
constexpr std::string_view memberPrefix = "runner_";
constexpr std::string_view parallelMemberPrefix = "runner_0_";  // the same in another form
constexpr Code codeBeforeLegs = 30;
constexpr Time wholeDay = 24 * 360000;

std::optional<std::int32_t> numberBehind(std::string_view prefix, std::string_view key) {
  if (!key.starts_with(prefix)) return std::nullopt;
  key.remove_prefix(prefix.size());
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
  if (error != std::errc{} || end != key.data() + key.size()) return std::nullopt;
  return number;
}

std::optional<std::int32_t> teamOfMember(std::string_view key) {
  const auto number = numberBehind(parallelMemberPrefix, key);
  return number ? number : numberBehind(memberPrefix, key);
}

// Whether a list gave the clock time or the time of a team; 0 stands for one that it did not give.
bool isKnown(Time time) { return time > 0 && !isDisq(time); }

Time sumOf(Time a, Time b) { return isDisq(a) || isDisq(b) ? LRK_NO_TIME : clampedTime(a + b); }

struct Member {
  LRKRunner runner;
  int team = -1;  // none for a team that is not listed
  RelayStanding standing;
  bool leftOut = false;  // by the rules
};

struct Team {
  LRKRunner runner;
  std::string name;      // for its members
  Time listedStart = 0;  // what the list says about the team itself
  Time listedFinish = LRK_NO_TIME;
  RelayStanding standing;  // the last one that is told
  Time start = 0;
  int startLeg = 0;  // the leg that tells the start
  LRKPunches punches;
  // The leg at hand and those before.
  Time time = 0;      // from the start to the end of the leg before
  Time handover = 0;  // by the clock, 0 when it is not known
  const Member* counting = nullptr;
  const Member* leftOut = nullptr;
  bool complete = true;
  enmStatus status = estaOK;  // the first that is not OK
};

// The next member may have started, but for the team the leg has no end.
bool hasFailed(enmStatus status) {
  return status != estaOK && status != estaFinished && status != estaActive &&
         status != estaNotCompeting && status != estaUnknown;
}

// The counting member is the fastest or the slowest. Who has no result is the slowest, and among
// those the last to finish.
bool countsRather(const LRKRunner& runner, const LRKRunner& other, enmRelayParallelMode mode) {
  const auto key = [](const LRKRunner& who) {
    return std::pair(who.resultTime(), who.finishTime());
  };
  return mode == erpmSlowestTime ? key(runner) > key(other) : key(runner) < key(other);
}

Time runningTimeOf(const LRKRunner& runner) {
  const bool known = !isDisq(runner.startTime()) && !isDisq(runner.finishTime()) &&
                     runner.finishTime() >= runner.startTime();
  return known ? runner.finishTime() - runner.startTime() : LRK_NO_TIME;
}

// The teams and members of a relay category, those with running times, these with clock times.
class RelayParts {
 public:
  RelayParts(LRKCategory& relay, const RelayRules& rules,
             const std::vector<RelayStanding>& standings)
      : rules_(rules), standings_(standings) {
    takeTeams(relay);
    takeMembers(relay);
    findStarts();
    for (std::vector<Member>& members : legs_) run(members);
    for (Team& team : teams_) finish(team);
  }

  int noOfLegs() const { return static_cast<int>(legs_.size()); }
  bool empty() const { return teams_.empty() && legs_.empty(); }

  void moveTeams(LRKCategory& category) {
    category.reserveRunners(static_cast<int>(teams_.size()));
    for (Team& team : teams_) category.addRunner(std::move(team.runner));
  }

  void moveMembers(int leg, LRKCategory& category) {
    std::vector<Member>& members = legs_[static_cast<std::size_t>(leg - 1)];
    category.reserveRunners(static_cast<int>(members.size()));
    for (Member& member : members) {
      if (!member.leftOut) category.addRunner(std::move(member.runner));
    }
    members = {};
  }

 private:
  Team* teamOf(const Member& member) {
    return member.team < 0 ? nullptr : &teams_[static_cast<std::size_t>(member.team)];
  }

  RelayStanding standingOf(int runner) const {
    const auto i = static_cast<std::size_t>(runner);
    return i < standings_.size() ? standings_[i] : RelayStanding();
  }

  void takeTeams(LRKCategory& relay) {
    for (int i = 0; i < relay.noOfRunners(); ++i) {
      LRKRunner& runner = relay.runner(i);
      const auto number = numberBehind(teamPrefix, runner.extraInfo());
      if (!number) continue;
      teamIndices_.try_emplace(*number, static_cast<int>(teams_.size()));
      Team& team = teams_.emplace_back();
      completePunches(runner);
      team.standing = standingOf(i);
      team.listedStart = runner.startTime();
      team.listedFinish = runner.finishTime();
      if (runner.name().empty() && !runner.club().empty()) {
        runner.name(std::string(sharedName(runner.club())));
      }
      team.runner = std::move(runner);
      team.name = sharedName(team.runner.name());
      withdrawKey(team.runner);
    }
  }

  void takeMembers(LRKCategory& relay) {
    for (int i = 0; i < relay.noOfRunners(); ++i) {
      LRKRunner& runner = relay.runner(i);
      const auto number = teamOfMember(runner.extraInfo());
      const int leg = runner.relayLeg();
      if (!number || leg < 1 || leg > mostRelayLegs) continue;
      if (leg > noOfLegs()) legs_.resize(static_cast<std::size_t>(leg));
      completePunches(runner);
      const auto found = teamIndices_.find(*number);
      const bool leftOut = rules_.ignoreDisqualifiedRunners && runner.status() != estaOK;
      Member member{std::move(runner), found == teamIndices_.end() ? -1 : found->second,
                    standingOf(i), leftOut};
      withdrawKey(member.runner);
      member.runner.relayTeamID(*number);
      if (const Team* team = teamOf(member)) member.runner.relayTeam(team->name);
      legs_[static_cast<std::size_t>(leg - 1)].push_back(std::move(member));
    }
  }

  // The numbers in the keys have a meaning within the relay category only.
  static void withdrawKey(LRKRunner& runner) {
    runner.extraInfo({});
    runner.extraInfoSet(false);
  }

  // A team starts with the runners of its first leg, else when the list says so, else with whoever
  // of it starts first.
  void findStarts() {
    int leg = 0;
    for (const std::vector<Member>& members : legs_) {
      ++leg;
      for (const Member& member : members) {
        if (Team* const team = teamOf(member)) lookAtStart(member.runner, leg, *team);
      }
      if (leg == 1) useListedStarts();
    }
    if (leg == 0) useListedStarts();
    for (Team& team : teams_) {
      team.handover = team.start;
      team.punches.add(team.start, LRK_START_CODE);
    }
  }

  // Clocks of many lists begin with the first start: a first leg that ended began at 0.
  static void lookAtStart(const LRKRunner& runner, int leg, Team& team) {
    const Time start = runner.startTime();
    const bool beganAtZero = leg == 1 && start == 0 && !isDisq(runner.finishTime());
    if (!isKnown(start) && !beganAtZero) return;
    if (team.startLeg != 0 && team.startLeg != leg) return;
    team.startLeg = leg;
    if (isKnown(start) && (!isKnown(team.start) || start < team.start)) team.start = start;
  }

  void useListedStarts() {
    for (Team& team : teams_) {
      if (isKnown(team.start) || !isKnown(team.listedStart)) continue;
      team.start = team.listedStart;
      team.startLeg = 1;
    }
  }

  void run(std::vector<Member>& members) {
    for (Team& team : teams_) team.counting = team.leftOut = nullptr;
    for (Member& member : members) {
      Team* const team = teamOf(member);
      if (team == nullptr) continue;
      placeInTime(member.runner, *team);
      const Member*& place = member.leftOut ? team->leftOut : team->counting;
      if (place == nullptr || countsRather(member.runner, place->runner, rules_.parallelMode)) {
        place = &member;
      }
    }
    for (Team& team : teams_) endLeg(team, static_cast<int>(&members - legs_.data()) + 1);
  }

  static void placeInTime(LRKRunner& runner, const Team& team) {
    const Time start = runner.startTime();
    Time offset = 0;
    if (start == 0) {
      offset = team.handover;
    } else if (start < team.start) {
      offset = wholeDay;
    }
    if (offset == 0) return;
    runner.punches().addTimeOffset(offset);
    runner.extraPunches().addTimeOffset(offset);
  }

  void endLeg(Team& team, int leg) const {
    const bool isLast = leg == noOfLegs();
    const Member* const member = team.counting != nullptr ? team.counting : team.leftOut;
    if (team.counting == nullptr) team.complete = false;
    if (member != nullptr) {
      if (team.status == estaOK) team.status = member->runner.status();
      takeStanding(member->standing, isLast, team.standing);
    }
    team.time = timeAfterLeg(team);
    team.handover = clockAtHandover(team, leg);
    if (isLast) {
      if (const Time total = listedTotal(team); !isDisq(total)) team.time = total;
    }
    const auto code = static_cast<Code>(codeBeforeLegs + leg);
    team.punches.add(sumOf(team.start, team.time), isLast ? LRK_FINISH_CODE : code);
  }

  // What is told before the end counts in the end when the team has dropped out.
  static void takeStanding(const RelayStanding& told, bool isLast, RelayStanding& standing) {
    if (isLast && isKnown(told.time)) standing.time = told.time;
    if (isLast && told.place > 0) standing.place = told.place;
    if (told.status && (isLast || *told.status != estaOK)) standing.status = told.status;
  }

  static Time timeAfterLeg(const Team& team) {
    if (team.counting == nullptr || hasFailed(team.counting->runner.status())) return LRK_NO_TIME;
    const Time listed = team.counting->standing.time;
    return isKnown(listed) ? listed : sumOf(team.time, runningTimeOf(team.counting->runner));
  }

  // Times that count from an unknown handover do not tell the next.
  static Time clockAtHandover(const Team& team, int leg) {
    const Member* const member = team.counting != nullptr ? team.counting : team.leftOut;
    const bool isPlaced = member != nullptr && (leg == 1 || isKnown(member->runner.startTime()));
    const Time clock = isPlaced ? member->runner.finishTime() : LRK_NO_TIME;
    const Time end = isDisq(clock) ? sumOf(team.start, team.time) : clock;
    return isDisq(end) ? 0 : end;
  }

  // As a time, or between two clocks.
  static Time listedTotal(const Team& team) {
    if (isKnown(team.standing.time)) return team.standing.time;
    const Time start = isKnown(team.listedStart) ? team.listedStart : team.start;
    return isKnown(team.listedFinish) && team.listedFinish > start ? team.listedFinish - start
                                                                   : LRK_NO_TIME;
  }

  void finish(Team& team) const {
    if (!team.punches.finishExists()) {
      team.punches.add(sumOf(team.start, listedTotal(team)), LRK_FINISH_CODE);
    }
    team.runner.punches(std::move(team.punches));
    team.runner.extraPunches({});
    if (team.standing.place > 0) {
      team.runner.resultPlace(saturated<std::int16_t>(team.standing.place));
    }
    const bool derived = team.status != estaOK || (team.complete && !legs_.empty());
    if (team.standing.status) {
      team.runner.status(*team.standing.status);
    } else if (team.runner.status() == estaUnknown && derived) {
      team.runner.status(team.status);
    }
  }

  const RelayRules& rules_;
  const std::vector<RelayStanding>& standings_;
  std::vector<Team> teams_;
  std::unordered_map<std::int32_t, int> teamIndices_;  // by number
  std::vector<std::vector<Member>> legs_;
};

// What the new categories have from the relay category.
LRKCategory partOf(const LRKCategory& relay, const std::string& name, int noOfLegs) {
  LRKCategory part = relay.clone();
  part.categoryIndex(-1);
  part.name(relay.name() + " " + name);
  part.shortName({});
  part.shortNameSet(false);
  part.extraInfo({});
  part.extraInfoSet(false);
  part.courseType(ectyNormal);
  part.noOfRelayLegs(static_cast<std::int16_t>(noOfLegs));
  return part;
}

// Where the event shows the category, or -1.
int placeOf(const LRKCategory& category, const LRKEvent& event) {
  const int index = category.categoryIndex();
  const bool isThere =
      index >= 0 && index < event.noOfCategories() && event.categoryName(index) == category.name();
  return isThere ? index : -1;
}

void deleteFrom(int index, LRKEvent& event) {
  while (event.noOfCategories() > index && event.deleteCategory(event.noOfCategories() - 1) == 0) {
  }
}

std::int32_t replaceCategory(LRKEvent& event, int place, std::vector<LRKCategory>& categories) {
  const int first = event.noOfCategories();
  if (const std::int32_t error = addCategories(event, categories)) return error;
  if (place < 0) return 0;
  if (const std::int32_t error = event.deleteCategory(place)) {
    deleteFrom(first, event);
    return error;
  }
  for (int i = 0; i < static_cast<int>(categories.size()); ++i) {
    event.moveCategory(first - 1 + i, place + i);
  }
  return 0;
}

}  // namespace

std::string relayTeamKey(std::int32_t team) {
  return std::string(teamPrefix) + std::to_string(team);
}
std::string relayMemberKey(std::int32_t team) {
  return std::string(memberPrefix) + std::to_string(team);
}

std::vector<LRKCategory> relayCategories(LRKCategory relay, const RelayRules& rules,
                                         const std::vector<RelayStanding>& standings) {
  RelayParts parts(relay, rules, standings);
  relay.noOfRunners(0);
  std::vector<LRKCategory> categories;
  if (parts.empty()) return categories;
  LRKCategory teams = partOf(relay, rules.wholeLegsText, parts.noOfLegs());
  teams.courseLengthSet(false);
  teams.legLengthArray({});
  parts.moveTeams(teams);
  categories.push_back(std::move(teams));
  for (int leg = 1; leg <= parts.noOfLegs(); ++leg) {
    LRKCategory category =
        partOf(relay, std::to_string(leg) + " " + rules.commonControlsText, parts.noOfLegs());
    parts.moveMembers(leg, category);
    if (category.noOfRunners() == 0) continue;
    reduceToCommonControls(category);
    categories.push_back(std::move(category));
  }
  return categories;
}

std::int32_t addCategories(LRKEvent& event, std::vector<LRKCategory>& categories) {
  const int first = event.noOfCategories();
  for (LRKCategory& category : categories) {
    const std::int32_t error = event.addCategory(category);
    if (error == 0) continue;
    deleteFrom(first, event);
    return error;
  }
  return 0;
}

std::int32_t LRKImport::createRelayResults(LRKEvent& ev, LRKCategory& category,
                                           bool ignoreDisqualifiedRunners,
                                           enmRelayParallelMode parallelMode) {
  const RelayRules rules{session_->wholeLegsText, session_->commonControlsText,
                         ignoreDisqualifiedRunners, parallelMode};
  std::vector<LRKCategory> categories = relayCategories(category.clone(), rules);
  if (categories.empty()) return 0;
  const int place = placeOf(category, ev);
  const int index = place < 0 ? ev.noOfCategories() : place;
  if (const std::int32_t error = replaceCategory(ev, place, categories)) {
    return LRK_IMPORT_EVENT_FILE_ERROR + error;
  }
  if (const auto stored = ev.category(index)) category = *stored;
  return 0;
}

}  // namespace larkstone
