#include "larkstone/import/readers/iof_list.hpp"

#include <algorithm>
#include <span>
#include <unordered_map>

#include "larkstone/import/passing_order.hpp"
#include "larkstone/import/readers/iof_relay.hpp"
#include "larkstone/import/readers/iof_values.hpp"

namespace larkstone {

namespace {

constexpr int noRace = IofResult::noRace;

// The persons of one class after another, one category open at a time. The children of a class are
// walked once, however many races they belong to.
class ClassReader {
 public:
  ClassReader(const IofVersion& version, ReadJob& job, ReaderRun& run)
      : version_(version), job_(job), run_(run) {}

  void read(XmlNode classResult) {
    LRKCategory category;
    version_.readClass(classResult, category);
    if (!collect(classResult)) return;
    const bool severalRaces = sortByRace();
    std::span<const IofResult> rest(results_);
    do {
      const auto end = std::find_if(rest.begin(), rest.end(), [&](const IofResult& result) {
        return result.race != rest.front().race;
      });
      const auto count = static_cast<std::size_t>(end - rest.begin());
      readRace(category, rest.first(count), severalRaces);
      rest = rest.subspan(count);
    } while (!rest.empty() && !run_.stopped());
  }

 private:
  // False for a class that holds teams alone.
  bool collect(XmlNode classResult) {
    results_.clear();
    courses_.clear();
    int persons = 0;
    for (XmlNode child = classResult.firstChild(); child; child = child.next()) {
      if (child.is("PersonResult")) {
        collectPerson(child, ++persons);
      } else if (child.is("Course")) {
        courses_.try_emplace(integerOf(child.attribute("raceNumber")).value_or(noRace), child);
        courses_.try_emplace(noRace, child);  // the first one stands for every other race
      }
    }
    return persons > 0 || !classResult.child("TeamResult");
  }

  void collectPerson(XmlNode person, int number) {
    const std::size_t before = results_.size();
    version_.collectResults(person, results_);
    for (std::size_t i = before; i < results_.size(); ++i) results_[i].number = number;
  }

  // True when there are several races. Whoever has no result stands with the first.
  bool sortByRace() {
    const auto byRace = [](const IofResult& a, const IofResult& b) { return a.race < b.race; };
    int lowest = std::numeric_limits<int>::max();
    for (const IofResult& result : results_) {
      if (result.race != noRace) lowest = std::min(lowest, result.race);
    }
    bool several = false;
    for (IofResult& result : results_) {
      if (result.race == noRace) result.race = lowest;
      several = several || result.race != lowest;
    }
    if (several) std::stable_sort(results_.begin(), results_.end(), byRace);
    return several;
  }

  XmlNode courseOf(int race) const {
    const auto found = courses_.contains(race) ? courses_.find(race) : courses_.find(noRace);
    return found == courses_.end() ? XmlNode() : found->second;
  }

  void readRace(LRKCategory category, std::span<const IofResult> results, bool severalRaces) {
    const int race = results.empty() ? noRace : results.front().race;
    version_.readCourse(courseOf(race), category);
    if (severalRaces) category.name(category.name() + " (" + std::to_string(race) + ")");
    category.reserveRunners(static_cast<int>(results.size()));
    run_.beginCategory(std::move(category));
    for (const IofResult& result : results) {
      if (!addRunner(result)) return;
    }
    if (run_.category().noOfRunners() == 0) run_.dropCategory();
    orderRadioControls(job_, run_.category());
    run_.endCategory();
  }

  // False when the import has to stop.
  bool addRunner(const IofResult& result) {
    LRKRunner runner;
    const IofNotes notes(job_.session, run_.category().name(), {"PersonResult", result.number},
                         runner);
    if (!result.result) notes("no result");
    version_.readRunner(result, runner, notes);
    if (version_.onlyWithSplits && runner.punches().count() <= 2) {
      if (result.result) notes("no split times");
      return !run_.stopped();
    }
    return run_.addRunner(std::move(runner), notes);
  }

  const IofVersion& version_;
  ReadJob& job_;
  ReaderRun& run_;
  std::vector<IofResult> results_;
  std::unordered_map<int, XmlNode> courses_;
};

}  // namespace

void IofNotes::operator()(std::string_view what, std::string_view text) const {
  session_.note(what, text, [&] {
    return quoted("ClassResult", className_) + ", " +
           quoted(std::string(element_.name) + " " + std::to_string(element_.number),
                  nameInNotes(runner_));
  });
}

void orderRadioControls(ReadJob& job, LRKCategory& category) {
  if (!orderIfListedByCode(category)) return;
  job.session.note("controls listed by code, put in the order of their times", {},
                   [&] { return quoted("ClassResult", category.name()); });
}

void readIofClasses(const IofVersion& version, XmlNode list, ReadJob& job, ReaderRun& run) {
  const std::vector<std::vector<XmlNode>> relays = relaysOf(version, list);
  ClassReader reader(version, job, run);
  std::size_t index = 0;
  for (const XmlNode classResult : list.children("ClassResult")) {
    reader.read(classResult);
    if (!run.stopped() && !relays[index].empty()) {
      readIofRelay(version, relays[index], job, run);
    }
    ++index;
    const bool goesOn =
        !run.stopped() && run.progress(static_cast<int>(index), static_cast<int>(relays.size()));
    if (!goesOn) return;
  }
}

}  // namespace larkstone
