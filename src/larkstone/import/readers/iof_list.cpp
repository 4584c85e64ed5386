#include "larkstone/import/readers/iof_list.hpp"

#include <algorithm>
#include <limits>
#include <span>

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

// One class after another, one category open at a time.
class ClassReader {
 public:
  ClassReader(const IofVersion& version, ReadJob& job) : version_(version), job_(job) {}

  std::int32_t read(XmlNode classResult) {
    const bool severalRaces = collect(classResult);
    std::span<const IofResult> rest(results_);
    do {
      const auto end = std::find_if(rest.begin(), rest.end(), [&](const IofResult& result) {
        return result.race != rest.front().race;
      });
      const auto count = static_cast<std::size_t>(end - rest.begin());
      if (const auto code = readRace(classResult, rest.first(count), severalRaces)) return code;
      rest = rest.subspan(count);
    } while (!rest.empty());
    return 0;
  }

 private:
  // The results of the class in the order of races; true when there are several.
  bool collect(XmlNode classResult) {
    results_.clear();
    int lowest = std::numeric_limits<int>::max();
    int highest = noRace;
    int persons = 0;
    for (const XmlNode person : classResult.children("PersonResult")) {
      const std::size_t before = results_.size();
      version_.collectResults(person, results_);
      if (results_.size() == before) results_.push_back({person, {}, noRace, 0});
      ++persons;
      for (std::size_t i = before; i < results_.size(); ++i) {
        results_[i].number = persons;
        if (results_[i].race == noRace) continue;
        lowest = std::min(lowest, results_[i].race);
        highest = std::max(highest, results_[i].race);
      }
    }
    // Whoever has no result stands with the first race.
    for (IofResult& result : results_) {
      if (result.race == noRace) result.race = lowest;
    }
    if (lowest >= highest) return false;
    std::stable_sort(results_.begin(), results_.end(),
                     [](const IofResult& a, const IofResult& b) { return a.race < b.race; });
    return true;
  }

  std::int32_t readRace(XmlNode classResult, std::span<const IofResult> results,
                        bool severalRaces) {
    LRKCategory category;
    const int race = results.empty() || results.front().race == std::numeric_limits<int>::max()
                         ? 1
                         : results.front().race;
    version_.readClass(classResult, race, category);
    if (severalRaces) category.name(category.name() + " (" + std::to_string(race) + ")");
    job_.session.newCategory(category.name());
    category.reserveRunners(static_cast<int>(results.size()));
    for (const IofResult& result : results) {
      if (!addRunner(result, category)) return LRK_IMPORT_CANCELLED;
    }
    skipTeams(classResult, category.name());
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

  void skipTeams(XmlNode classResult, const std::string& className) {
    int number = 0;
    for (const XmlNode team : classResult.children("TeamResult")) {
      ++number;
      job_.session.note("team result skipped", [&] {
        return quoted("ClassResult", className) + ", " +
               quoted("TeamResult " + std::to_string(number), teamName(team));
      });
    }
  }

  const IofVersion& version_;
  ReadJob& job_;
  std::vector<IofResult> results_;
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
