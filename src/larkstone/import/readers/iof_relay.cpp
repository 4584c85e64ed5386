#include "larkstone/import/readers/iof_relay.hpp"

#include <algorithm>
#include <bitset>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "larkstone/import/readers/iof_values.hpp"
#include "larkstone/import/relay_results.hpp"

namespace larkstone {

namespace {

constexpr Time wholeDay = 24 * 360000;

struct Member {
  IofResult result;
  int leg = 0;
};

// The members of a team; who has no leg of his own comes after the one before. Legs beyond those of
// any relay are 0 or one too many.
void collectMembers(const IofVersion& version, XmlNode team, std::vector<Member>& members) {
  std::vector<IofResult> results;
  for (const XmlNode member : team.children(version.memberElement)) {
    version.collectResults(member, results);
  }
  int leg = 0;
  for (const IofResult& result : results) {
    leg = integerOf(result.result.textAt(version.legElement)).value_or(leg + 1);
    leg = std::clamp(leg, 0, mostRelayLegs + 1);
    members.push_back({result, leg});
  }
}

// Tells teams of one class result apart, and finds them again in another.
class TeamNames {
 public:
  std::string of(XmlNode team) {
    const XmlNode name = team.child("TeamName");
    std::string text = name ? name.text() : team.textAt("Name");
    text.append("\n").append(team.textAt("BibNumber"));
    const int sameBefore = times_[text]++;
    return text.append("\n").append(std::to_string(sameBefore));
  }

 private:
  std::unordered_map<std::string, int> times_;
};

// Whose legs class results hold.
struct LegsOfTeams {
  LegsOfTeams(const IofVersion& version, XmlNode classResult) {
    TeamNames names;
    std::vector<Member> members;
    for (const XmlNode team : classResult.children("TeamResult")) {
      teams.insert(names.of(team));
      members.clear();
      collectMembers(version, team, members);
      for (const Member& member : members) {
        if (member.leg >= 1 && member.leg <= mostRelayLegs) {
          legs.set(static_cast<std::size_t>(member.leg));
        }
      }
    }
  }

  // Teams that have dropped out, or have not got that far, are missing on a leg.
  bool holdsOtherLegsThan(const LegsOfTeams& other) const {
    if ((legs & other.legs).any()) return false;
    const bool less = teams.size() < other.teams.size();
    const auto& few = less ? teams : other.teams;
    const auto& many = less ? other.teams : teams;
    return !few.empty() && std::all_of(few.begin(), few.end(), [&](const std::string& team) {
      return many.contains(team);
    });
  }

  void join(LegsOfTeams&& other) {
    legs |= other.legs;
    teams.merge(other.teams);
  }

  std::bitset<mostRelayLegs + 1> legs;
  std::unordered_set<std::string> teams;
};

std::string nameAndNumber(const IofVersion& version, XmlNode classResult) {
  LRKCategory category;
  version.readClass(classResult, category);
  return category.name() + "\n" + std::to_string(category.ID());
}

// Lists exist that count the splits of every leg from the start of the relay. A runner's splits
// tell so when they lie behind the finish, and tell otherwise when they lie before the leg's start
// once they are counted that way.
class SplitOrigin {
 public:
  void look(const LRKRunner& runner, Time relayStart) {
    const auto [first, last] = rangeOf(runner);
    const Time offset = runner.startTime() - relayStart;
    if (offset <= 0 || isDisq(first) || isDisq(runner.finishTime())) return;
    const bool fits = first - offset >= runner.startTime() && last - offset <= runner.finishTime();
    if (last > runner.finishTime() && fits) relay_ = true;
    if (last <= runner.finishTime() && !fits) leg_ = true;
  }

  bool isRelayStart() const { return relay_ && !leg_; }

  static void countFromLegStart(LRKRunner& runner, Time relayStart) {
    const Time offset = runner.startTime() - relayStart;
    const Time first = rangeOf(runner).first;
    if (offset <= 0 || isDisq(first) || first - offset < runner.startTime()) return;
    const auto shift = [offset](LRKPunches& punches) {
      for (int i = 0; i < punches.count(); ++i) {
        if (isControl(punches, i)) punches.time(i, punches.time(i) - offset);
      }
    };
    shift(runner.punches());
    shift(runner.extraPunches());
  }

 private:
  static bool isControl(const LRKPunches& punches, int i) {
    return !isStartCode(punches.code(i)) && !isFinishCode(punches.code(i)) &&
           !isDisq(punches.time(i));
  }

  static std::pair<Time, Time> rangeOf(const LRKRunner& runner) {
    std::pair<Time, Time> range(LRK_NO_TIME, 0);
    const LRKPunches& punches = runner.punches();
    for (int i = 0; i < punches.count(); ++i) {
      if (!isControl(punches, i)) continue;
      range.first = std::min(range.first, punches.time(i));
      range.second = std::max(range.second, punches.time(i));
    }
    return range;
  }

  bool relay_ = false;
  bool leg_ = false;
};

class RelayReader {
 public:
  RelayReader(const IofVersion& version, ReadJob& job, ReaderRun& run)
      : version_(version), job_(job), run_(run) {}

  void read(const std::vector<XmlNode>& classResults) {
    for (const XmlNode classResult : classResults) collect(classResult);
    LRKCategory category;
    version_.readClass(classResults.front(), category);
    version_.readCourse(classResults.front().child("Course"), category);
    run_.beginCategory(std::move(category));
    for (std::size_t i = 0; i < teams_.size(); ++i) {
      if (!readTeam(static_cast<int>(i))) return;
    }
    setSplitOrigin();
    orderRadioControls(job_, run_.category());
    run_.endRelay();
  }

 private:
  struct Team {
    XmlNode node;
    std::vector<Member> members;
    std::optional<Time> start;  // unless the list tells of no first leg
  };

  void collect(XmlNode classResult) {
    TeamNames names;
    for (const XmlNode node : classResult.children("TeamResult")) {
      const auto [found, isNew] = teamIndices_.try_emplace(names.of(node), teams_.size());
      if (isNew) teams_.push_back({node, {}, {}});
      std::vector<Member>& members = teams_[found->second].members;
      const std::size_t before = members.size();
      collectMembers(version_, node, members);
      for (std::size_t i = before; i < members.size(); ++i) lookAt(members[i]);
    }
  }

  void lookAt(const Member& member) {
    const auto date = startDate(member);
    if (date && (!firstDate_ || date->day < firstDate_->day)) firstDate_ = date;
  }

  static std::optional<Date> startDate(const Member& member) {
    return dateOf(member.result.result.textAt("StartTime"));
  }

  // False when the import has to stop.
  bool readTeam(int index) {
    Team& team = teams_[static_cast<std::size_t>(index)];
    LRKRunner runner;
    const IofNotes notes(job_.session, run_.category().name(), {"TeamResult", index + 1}, runner);
    IofTeam listed;
    version_.readTeam(team.node, runner, listed, notes);
    std::vector<LRKRunner> members;
    bool startIsTold = listed.start > 0;
    for (const Member& member : team.members) {
      members.push_back(readMember(member, index, runner));
      if (member.leg != 1) continue;
      startIsTold = true;
      useStart(members.back().startTime(), listed.start);
    }
    if (startIsTold) {
      team.start = listed.start;
      firstStart_ = std::min(firstStart_.value_or(listed.start), listed.start);
    }
    runner.startTime(listed.start);
    runner.finishTime(listed.finish);
    runner.extraInfo(relayTeamKey(index + 1));
    if (!run_.addToRelay(std::move(runner), listed.standing, notes)) return false;
    for (std::size_t i = 0; i < members.size(); ++i) {
      const RelayStanding standing = version_.readStanding(team.members[i].result.result, notes);
      if (!run_.addToRelay(std::move(members[i]), standing, notes)) return false;
    }
    return true;
  }

  static void useStart(Time start, Time& teamStart) {
    const bool isKnown = start > 0 && !isDisq(start);
    if (isKnown && (teamStart == 0 || start < teamStart)) teamStart = start;
  }

  LRKRunner readMember(const Member& member, int team, const LRKRunner& teamRunner) {
    LRKRunner runner;
    const IofNotes notes(job_.session, run_.category().name(), {"TeamResult", team + 1}, runner);
    version_.readRunner(member.result, runner, notes);
    if (!runner.clubSet() && !runner.clubIDSet()) useClub(teamRunner, runner);
    const auto date = startDate(member);
    if (date && date->day - firstDate_->day == 1) {  // after midnight
      runner.punches().addTimeOffset(wholeDay);
      runner.extraPunches().addTimeOffset(wholeDay);
    }
    if (member.leg < 1 || member.leg > mostRelayLegs) {
      notes("no relay leg", member.result.result.textAt(version_.legElement));
    }
    runner.relayLeg(static_cast<std::int16_t>(member.leg));
    runner.extraInfo(relayMemberKey(team + 1));
    return runner;
  }

  // Whoever runs for nobody else runs for the club of the team.
  static void useClub(const LRKRunner& team, LRKRunner& runner) {
    if (team.clubSet()) runner.club(std::string(sharedName(team.club())));
    if (team.clubIDSet()) runner.clubID(team.clubID());
    if (team.clubCountryCodeSet())
      runner.clubCountryCode(std::string(sharedName(team.clubCountryCode())));
    if (team.clubCountrySet()) runner.clubCountry(std::string(sharedName(team.clubCountry())));
  }

  void setSplitOrigin() {
    SplitOrigin origin;
    forEachMember([&](const LRKRunner& runner, Time start) { origin.look(runner, start); });
    if (!origin.isRelayStart()) return;
    forEachMember(
        [](LRKRunner& runner, Time start) { SplitOrigin::countFromLegStart(runner, start); });
  }

  template <class Visit>
  void forEachMember(Visit visit) {
    LRKCategory& category = run_.category();
    int next = 0;
    for (const Team& team : teams_) {
      ++next;  // the team itself
      for (std::size_t i = 0; i < team.members.size() && next < category.noOfRunners(); ++i) {
        visit(category.runner(next++), team.start.value_or(firstStart_.value_or(0)));
      }
    }
  }

  const IofVersion& version_;
  ReadJob& job_;
  ReaderRun& run_;
  std::vector<Team> teams_;
  std::unordered_map<std::string, std::size_t> teamIndices_;
  std::optional<Date> firstDate_;
  std::optional<Time> firstStart_;  // of a team
};

}  // namespace

std::vector<std::vector<XmlNode>> relaysOf(const IofVersion& version, XmlNode list) {
  std::vector<std::vector<XmlNode>> relays;
  std::unordered_map<std::string, std::vector<std::pair<std::size_t, XmlNode>>> byName;
  for (const XmlNode classResult : list.children("ClassResult")) {
    if (classResult.child("TeamResult")) {
      byName[nameAndNumber(version, classResult)].emplace_back(relays.size(), classResult);
    }
    relays.emplace_back();
  }
  for (const auto& [name, classResults] : byName) {
    std::optional<LegsOfTeams> relay;
    std::size_t begin = 0;
    for (const auto& [index, classResult] : classResults) {
      if (classResults.size() > 1) {
        LegsOfTeams next(version, classResult);
        if (relay && next.holdsOtherLegsThan(*relay)) {
          relay->join(std::move(next));
          relays[begin].push_back(classResult);
          continue;
        }
        relay = std::move(next);
      }
      begin = index;
      relays[begin].push_back(classResult);
    }
  }
  return relays;
}

void readIofRelay(const IofVersion& version, const std::vector<XmlNode>& classResults, ReadJob& job,
                  ReaderRun& run) {
  RelayReader(version, job, run).read(classResults);
}

}  // namespace larkstone
