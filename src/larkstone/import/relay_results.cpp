#include "larkstone/import/relay_results.hpp"

#include <charconv>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "larkstone/import/common_controls.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/import/reader_run.hpp"

namespace larkstone {

namespace {

constexpr std::string_view teamPrefix = "team_";
constexpr std::string_view memberPrefix = "runner_";
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

// Whether a list gave the clock time; 0 stands for one that it did not give.
bool isKnown(Time clock) { return clock > 0 && !isDisq(clock); }

struct Team {
  LRKRunner runner;
  std::string name;      // for its members
  Time listedStart = 0;  // what the list says about the team itself
  Time listedFinish = LRK_NO_TIME;
  Time start = 0;
  int startLeg = 0;  // the leg that tells the start
  LRKPunches punches;
  // The leg at hand and those before.
  Time handover = 0;  // the end of the leg before, 0 when it is not known
  const LRKRunner* counting = nullptr;
  bool complete = true;
  enmStatus status = estaOK;  // the first that is not OK
};

struct Member {
  LRKRunner runner;
  int team = -1;  // none for a team that is not listed
};

// The next member may have started, but for the team the leg has no end.
bool hasFailed(enmStatus status) {
  return status != estaOK && status != estaFinished && status != estaActive &&
         status != estaUnknown;
}

// The counting member is the fastest or the slowest. Who has no result is the slowest, and among
// those the last to finish.
bool countsRather(const LRKRunner& runner, const LRKRunner& other, enmRelayParallelMode mode) {
  const auto key = [](const LRKRunner& who) {
    return std::pair(who.resultTime(), who.finishTime());
  };
  return mode == erpmSlowestTime ? key(runner) > key(other) : key(runner) < key(other);
}

// The teams and members of a relay category with their times as clock times.
class RelayParts {
 public:
  RelayParts(LRKCategory& relay, const RelayRules& rules) : rules_(rules) {
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
    for (Member& member : members) category.addRunner(std::move(member.runner));
    members = {};
  }

 private:
  Team* teamOf(const Member& member) {
    return member.team < 0 ? nullptr : &teams_[static_cast<std::size_t>(member.team)];
  }

  void takeTeams(LRKCategory& relay) {
    for (int i = 0; i < relay.noOfRunners(); ++i) {
      LRKRunner& runner = relay.runner(i);
      const auto number = numberBehind(teamPrefix, runner.extraInfo());
      if (!number) continue;
      teamIndices_.try_emplace(*number, static_cast<int>(teams_.size()));
      Team& team = teams_.emplace_back();
      completePunches(runner);
      team.listedStart = runner.startTime();
      team.listedFinish = runner.finishTime();
      team.runner = std::move(runner);
      team.name = sharedName(team.runner.name());
      withdrawKey(team.runner);
    }
  }

  void takeMembers(LRKCategory& relay) {
    for (int i = 0; i < relay.noOfRunners(); ++i) {
      LRKRunner& runner = relay.runner(i);
      const auto number = numberBehind(memberPrefix, runner.extraInfo());
      const int leg = runner.relayLeg();
      if (!number || leg < 1 || leg > mostRelayLegs) continue;
      if (leg > noOfLegs()) legs_.resize(static_cast<std::size_t>(leg));
      if (rules_.ignoreDisqualifiedRunners && runner.status() != estaOK) continue;
      completePunches(runner);
      const auto found = teamIndices_.find(*number);
      Member member{std::move(runner), found == teamIndices_.end() ? -1 : found->second};
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
    for (Team& team : teams_) team.counting = nullptr;
    for (Member& member : members) {
      Team* const team = teamOf(member);
      if (team == nullptr) continue;
      placeInTime(member.runner, *team);
      if (team->counting == nullptr ||
          countsRather(member.runner, *team->counting, rules_.parallelMode)) {
        team->counting = &member.runner;
      }
    }
    const bool last = &members == &legs_.back();
    const auto leg = static_cast<Code>(&members - legs_.data() + 1);
    for (Team& team : teams_) {
      endLeg(team, last ? LRK_FINISH_CODE : static_cast<Code>(codeBeforeLegs + leg));
    }
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

  static void endLeg(Team& team, Code code) {
    const LRKRunner* const member = team.counting;
    const Time finish = clockAtFinish(team);
    team.handover = isDisq(finish) ? 0 : finish;
    if (member == nullptr) {
      team.complete = false;
    } else if (team.status == estaOK) {
      team.status = member->status();
    }
    Time end = LRK_NO_TIME;
    if (member == nullptr || !hasFailed(member->status())) {
      end = isDisq(finish) && isFinishCode(code) ? team.listedFinish : finish;
    }
    team.punches.add(end, code);
  }

  // Times that count from an unknown handover say nothing about the team.
  static Time clockAtFinish(const Team& team) {
    const bool firstLeg = team.punches.count() == 1;
    const bool isPlaced =
        team.counting != nullptr && (firstLeg || isKnown(team.counting->startTime()));
    return isPlaced ? team.counting->finishTime() : LRK_NO_TIME;
  }

  void finish(Team& team) const {
    if (!team.punches.finishExists()) team.punches.add(team.listedFinish, LRK_FINISH_CODE);
    team.runner.punches(std::move(team.punches));
    team.runner.extraPunches({});
    const bool derived = team.status != estaOK || (team.complete && !legs_.empty());
    if (team.runner.status() == estaUnknown && derived) team.runner.status(team.status);
  }

  const RelayRules& rules_;
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

std::vector<LRKCategory> relayCategories(LRKCategory relay, const RelayRules& rules) {
  RelayParts parts(relay, rules);
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
