#include "larkstone/import/readers/iof_list.hpp"

#include <algorithm>
#include <limits>
#include <span>
#include <unordered_map>

#include "larkstone/import/readers/iof_values.hpp"

namespace larkstone {

namespace {

constexpr int noRace = std::numeric_limits<int>::min();

std::string quoted(std::string_view element, std::string_view name) {
  return std::string(element).append(" \"").append(name).append("\"");
}

std::string teamName(XmlNode team) {
  const XmlNode name = team.child("TeamName");
  return name ? name.text() : team.textAt("Name");
}

// One class after another, one category open at a time. The children of a class are walked once,
// however many races they belong to.
class ClassReader {
 public:
  ClassReader(const IofVersion& version, ReadJob& job) : version_(version), job_(job) {}

  std::int32_t read(XmlNode classResult) {
    LRKCategory category;
    version_.readClass(classResult, category);
    collect(classResult, category.name());
    const bool severalRaces = sortByRace();
    std::span<const IofResult> rest(results_);
    do {
      const auto end = std::find_if(rest.begin(), rest.end(), [&](const IofResult& result) {
        return result.race != rest.front().race;
      });
      const auto count = static_cast<std::size_t>(end - rest.begin());
      if (const auto code = readRace(category, rest.first(count), severalRaces)) return code;
      rest = rest.subspan(count);
    } while (!rest.empty());
    return 0;
  }

 private:
  void collect(XmlNode classResult, const std::string& className) {
    results_.clear();
    courses_.clear();
    int persons = 0;
    int teams = 0;
    for (XmlNode child = classResult.firstChild(); child; child = child.next()) {
      if (child.is("PersonResult")) {
        collectPerson(child, ++persons);
      } else if (child.is("Course")) {
        courses_.try_emplace(integerOf(child.attribute("raceNumber")).value_or(noRace), child);
        courses_.try_emplace(noRace, child);  // the first one stands for every other race
      } else if (child.is("TeamResult")) {
        ++teams;
        job_.session.note("team result skipped", [&] {
          return quoted("ClassResult", className) + ", " +
                 quoted("TeamResult " + std::to_string(teams), teamName(child));
        });
      }
    }
  }

  void collectPerson(XmlNode person, int number) {
    const std::size_t before = results_.size();
    version_.collectResults(person, results_);
    if (results_.size() == before) results_.push_back({person, {}, noRace, 0});
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

  std::int32_t readRace(LRKCategory category, std::span<const IofResult> results,
                        bool severalRaces) {
    const int race = results.empty() ? noRace : results.front().race;
    version_.readCourse(courseOf(race), category);
    if (severalRaces) category.name(category.name() + " (" + std::to_string(race) + ")");
    job_.session.newCategory(category.name());
    category.reserveRunners(static_cast<int>(results.size()));
    for (const IofResult& result : results) {
      if (!addRunner(result, category)) return LRK_IMPORT_CANCELLED;
    }
    if (category.noOfRunners() == 0) return 0;
    version_.finishCategory(category);
    return ImportSession::addCategory(job_.event, std::move(category));
  }

  // False when the import has to stop.
  bool addRunner(const IofResult& result, LRKCategory& category) {
    LRKRunner runner;
    const IofNotes notes(job_.session, category.name(), result, runner);
    if (!result.result) notes("no result");
    if (version_.readRunner(result, runner, notes)) {
      if (category.noOfRunners() < LRK_MAX_LIST) {
        category.addRunner(std::move(runner));
      } else {
        notes("the category is full");
      }
    }
    return !job_.session.cancelled();
  }

  const IofVersion& version_;
  ReadJob& job_;
  std::vector<IofResult> results_;
  std::unordered_map<int, XmlNode> courses_;
};

}  // namespace

void IofNotes::operator()(std::string_view what) const {
  session_.note(what, [&] {
    return quoted("ClassResult", className_) + ", " +
           quoted("PersonResult " + std::to_string(result_.number), runner_.name());
  });
}

void IofNotes::operator()(std::string_view what, std::string_view text) const {
  if (session_.notesWanted()) operator()(quoted(what, text));
}

std::int32_t readIofClasses(const IofVersion& version, XmlNode list, ReadJob& job) {
  int classes = 0;
  for ([[maybe_unused]] const XmlNode classResult : list.children("ClassResult")) ++classes;
  ClassReader reader(version, job);
  int done = 0;
  for (const XmlNode classResult : list.children("ClassResult")) {
    if (const std::int32_t code = reader.read(classResult)) return code;
    ++done;
    if (!job.session.progress(static_cast<float>(done) / static_cast<float>(classes))) {
      return LRK_IMPORT_CANCELLED;
    }
  }
  return 0;
}

}  // namespace larkstone
