// Pekka Pirilä's XML lists: individual results, and relays in three sets of element names.

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/relay_results.hpp"
#include "larkstone/import/status_words.hpp"
#include "larkstone/import/xml_preparation.hpp"
#include "larkstone/platform/xml.hpp"

namespace larkstone {

namespace {

constexpr const char* importedFrom = "Pekka Pirilä XML";

using Names = std::initializer_list<std::string_view>;

bool isOneOf(XmlNode node, Names names) {
  return std::any_of(names.begin(), names.end(),
                     [&](std::string_view name) { return equalNoCase(node.name(), name); });
}

// The first child with one of the names, whatever its case.
XmlNode childOf(XmlNode parent, Names names) {
  XmlNode child = parent.firstChild();
  while (child && !isOneOf(child, names)) child = child.next();
  return child;
}

// The text of such a child, or else of an attribute.
std::string textOf(XmlNode parent, Names names) {
  if (const XmlNode child = childOf(parent, names)) return child.text();
  for (const std::string_view name : names) {
    const std::string_view text = parent.attribute(name);
    if (!text.empty()) return std::string(text);
  }
  return {};
}

template <class Visit>
void forEachChild(XmlNode parent, Names names, Visit visit) {
  for (XmlNode child = parent.firstChild(); child; child = child.next()) {
    if (isOneOf(child, names)) visit(child);
  }
}

bool hasDigit(std::string_view text) {
  return text.find_first_of("0123456789") != std::string_view::npos;
}

// A failing runner has a word in the place of the time.
Time timeOf(std::string_view text) {
  return hasDigit(text) ? sexagesimalTextToTime(text) : LRK_NO_TIME;
}

Time clockOf(std::string_view text) {
  return hasDigit(text) ? stringToClockTime(text, etacAuto, true) : LRK_NO_TIME;
}

Time sumOf(Time start, Time time) {
  const bool valid = !isDisq(start) && !isDisq(time) && !isDisq(start + time);
  return valid ? start + time : LRK_NO_TIME;
}

constexpr StatusWord statusWords[] = {
    {"dq", estaDisqualified}, {"dnf", estaDidNotFinish},  {"dns", estaDidNotStart},
    {"mis", estaMisPunch},    {"hyl", estaDisqualified},  {"kesk", estaDidNotFinish},
    {"virh", estaMisPunch},   {"excl", estaDisqualified}, {"lap", estaDidNotFinish},
};

// Without a word the runner is OK.
template <class Notes>
enmStatus statusOf(std::string_view status, std::string_view time, const Notes& notes) {
  if (status.empty() && !hasDigit(time) && time != "-") status = time;
  if (status.empty() || equalNoCase(status, "ok")) return estaOK;
  for (const auto& [word, meaning] : statusWords) {
    if (equalNoCase(status.substr(0, word.size()), word)) return meaning;
  }
  notes("unknown status", status);
  return estaUnknown;
}

// One visit of a control, its time counted from the start.
struct Control {
  int number = 0;  // on the course, from 1
  Code code = 0;
  Time time = LRK_NO_TIME;
};

// A runner whose controls wait for those of the others.
struct Entry {
  LRKRunner runner;
  std::vector<Control> controls;
  std::string course;  // whose runners visit the same controls
  std::string place;   // where notes find the runner
};

void readControls(XmlNode parent, Entry& entry) {
  forEachChild(parent, {"Control"}, [&](XmlNode node) {
    const std::string number = textOf(node, {"ControlOrder", "cn", "ControlNro"});
    const std::string code = textOf(node, {"CCode", "cc", "ControlCode"});
    Control control;
    const int before = entry.controls.empty() ? 0 : entry.controls.back().number;
    control.number =
        std::clamp(hasDigit(number) ? leadingInteger(number) : before + 1, 0, LRK_MAX_LIST);
    const std::int32_t value = leadingInteger(code);
    if (value > 0 && value < LRK_START_CODE) control.code = static_cast<Code>(value);
    control.time = timeOf(textOf(node, {"ControlTime", "ct"}));
    entry.controls.push_back(control);
  });
  std::stable_sort(entry.controls.begin(), entry.controls.end(),
                   [](const Control& a, const Control& b) { return a.number < b.number; });
}

// Lists hold the controls that were punched. Which one a gap stands for is known from others on the
// same course, as long as all of them agree.
class Courses {
 public:
  void learn(const Entry& entry) {
    std::map<int, Code>& codes = courses_[entry.course];
    for (const Control& control : entry.controls) {
      const auto [known, isNew] = codes.try_emplace(control.number, control.code);
      if (!isNew && known->second != control.code) known->second = 0;
    }
  }

  // Who punched little of the course keeps to that.
  void fillGaps(Entry& entry) const {
    const std::map<int, Code>& codes = courses_.at(entry.course);
    constexpr std::size_t fewControls = 16;
    if (codes.size() > 2 * entry.controls.size() + fewControls) return;
    std::vector<Control> controls;
    auto next = entry.controls.begin();
    for (const auto& [number, code] : codes) {
      if (next == entry.controls.end() || next->number > number) {
        if (code != 0) controls.push_back({number, code, LRK_NO_TIME});
      }
      for (; next != entry.controls.end() && next->number == number; ++next) {
        controls.push_back(*next);
      }
    }
    entry.controls = std::move(controls);
  }

 private:
  std::unordered_map<std::string, std::map<int, Code>> courses_;
};

// A control without a code that was reached with the finish, or not at all, is the finish itself.
void addPunches(Entry& entry) {
  const Time start = entry.runner.startTime();
  for (const Control& control : entry.controls) {
    const Time time = sumOf(start, control.time);
    if (control.code == 0 && (isDisq(time) || time == entry.runner.finishTime())) continue;
    entry.runner.punches().add(time, control.code);
  }
}

class ListReader {
 public:
  explicit ListReader(ReadJob& job) : job_(job), run_(job) {}

  std::int32_t read(XmlNode root, bool isRelay) {
    std::string name = textOf(root, {"EventName"});
    if (!name.empty()) job_.event.name(std::move(name));
    int classes = 0;
    forEachClass(root, [&](XmlNode) { ++classes; });
    int done = 0;
    forEachClass(root, [&](XmlNode node) {
      if (run_.stopped()) return;
      beginClass(node);
      if (isRelay) {
        readTeams(node);
      } else {
        readCompetitors(node);
      }
      if (!run_.stopped()) run_.progress(++done, classes);
    });
    return run_.end(importedFrom);
  }

 private:
  template <class Visit>
  static void forEachClass(XmlNode root, Visit visit) {
    forEachChild(root, {"EventClass", "class"}, visit);
  }

  // Organisers write "5200", "5'200", "5200.0", "5,2", "5.2 km" or, of a length that is even, "5":
  // without a unit a number below 100 is kilometres.
  static Length lengthOf(const std::string& text) {
    const auto behind = text.find_first_not_of("0123456789.,' ");
    const std::string unit = behind == std::string::npos ? "" : lowered(text.substr(behind));
    std::string digits = text.substr(0, behind);
    std::erase(digits, ' ');
    const double number = textToNumber(digits);
    const bool kilometres = unit.empty() ? number < 100 : unit.starts_with('k');
    return std::max(0, roundHalfEven(number * (kilometres ? 100000 : 100)));
  }

  void beginClass(XmlNode node) {
    LRKCategory category;
    category.name(textOf(node, {"ClassName"}));
    const Length length = lengthOf(textOf(node, {"ClassDist"}));
    if (length > 0) category.courseLength(length);
    run_.beginCategory(std::move(category));
  }

  auto notesFor(const std::string& place) {
    return [this, &place](std::string_view what, std::string_view text = {}) {
      job_.session.note(what, text,
                        [&] { return quoted("class", run_.category().name()) + ", " + place; });
    };
  }

  static void readName(XmlNode node, LRKRunner& runner) {
    const XmlNode name = childOf(node, {"Name", "nm"});
    const XmlNode parts = name.firstChild() ? name : node;
    std::string family = textOf(parts, {"Family"});
    std::string given = textOf(parts, {"Given"});
    if (family.empty() && given.empty()) {
      runner.name(name.text());
      return;
    }
    if (!family.empty()) runner.lastName(std::move(family));
    if (!given.empty()) runner.firstName(std::move(given));
  }

  void readCompetitors(XmlNode eventClass) {
    std::vector<Entry> entries;
    forEachChild(eventClass, {"Competitor"}, [&](XmlNode node) {
      entries.push_back(readCompetitor(node, static_cast<int>(entries.size()) + 1));
    });
    addEntries(entries);
    run_.endCategory();
  }

  Entry readCompetitor(XmlNode node, int number) {
    Entry entry;
    LRKRunner& runner = entry.runner;
    readName(node, runner);
    entry.place = quoted("Competitor " + std::to_string(number), runner.name());
    for (const char* const element : {"ClubID", "ClubName"}) {
      std::string club = textOf(node, {element});
      if (!club.empty()) runner.club(std::move(club));
    }
    std::string nationality = textOf(node, {"Nationality"});
    if (!nationality.empty()) runner.nationality(std::move(nationality));
    const std::string start = textOf(node, {"StartTime"});
    runner.startTime(start.empty() ? 0 : clockOf(start));
    const std::string time = textOf(node, {"Time"});
    runner.finishTime(sumOf(runner.startTime(), timeOf(time)));
    runner.status(statusOf(textOf(node, {"Status"}), time, notesFor(entry.place)));
    entry.course = textOf(node, {"Course"});
    readControls(childOf(node, {"SplitTimes"}), entry);
    return entry;
  }

  void readTeams(XmlNode relay) {
    std::vector<Entry> entries;
    int teams = 0;
    forEachChild(relay, {"Team"}, [&](XmlNode team) { readTeam(team, teams++, entries); });
    addEntries(entries);
    if (run_.category().noOfRunners() == 0) run_.endCategory();  // nobody has entered
    run_.endRelay();
  }

  void readTeam(XmlNode node, int index, std::vector<Entry>& entries) {
    Entry team;
    LRKRunner& runner = team.runner;
    const std::string club(sharedName(textOf(node, {"TeamName"})));
    const std::string number = textOf(node, {"TeamNro"});
    runner.name(number.empty() ? club : club + " " + number);
    team.place = quoted("team " + std::to_string(index + 1), runner.name());
    if (!club.empty()) runner.club(club);
    std::string country = textOf(node, {"Country", "Nationality"});
    if (!country.empty()) runner.clubCountry(std::move(country));
    const std::string result = textOf(node, {"Result"});
    const Time time = timeOf(result);
    runner.startTime(0);
    runner.finishTime(time);
    if (!result.empty()) runner.status(statusOf({}, result, notesFor(team.place)));
    const std::int32_t place = leadingInteger(textOf(node, {"Placement"}));
    if (place > 0) runner.resultPlace(saturated<std::int16_t>(place));
    runner.extraInfo(relayTeamKey(index + 1));
    const std::string name = runner.name();
    const std::string where = team.place;
    entries.push_back(std::move(team));
    int leg = 0;
    forEachChild(node, {"Leg"}, [&](XmlNode member) {
      const std::string nro = textOf(member, {"LegNro"});
      leg = std::clamp(hasDigit(nro) ? leadingInteger(nro) : leg + 1, 0, mostRelayLegs + 1);
      entries.push_back(readLeg(member, leg, index, where, club));
    });
  }

  // The clock is not told: the times of every leg count from its start.
  Entry readLeg(XmlNode node, int leg, int team, const std::string& teamPlace,
                const std::string& club) {
    Entry entry;
    LRKRunner& runner = entry.runner;
    readName(node, runner);
    entry.place = teamPlace + ", " + quoted("leg " + std::to_string(leg), runner.name());
    if (!club.empty()) runner.club(club);
    const auto notes = notesFor(entry.place);
    if (leg < 1 || leg > mostRelayLegs) notes("no relay leg", std::to_string(leg));
    runner.relayLeg(static_cast<std::int16_t>(leg));
    runner.extraInfo(relayMemberKey(team + 1));
    std::string course = textOf(node, {"crs", "Course"});
    const std::string card = textOf(node, {"emit"});
    if (const std::int32_t number = leadingInteger(card); number > 0) runner.cCardID(number);
    const std::string result = textOf(node, {"Result"});
    runner.startTime(0);
    runner.finishTime(timeOf(result));
    runner.status(statusOf({}, result, notes));
    entry.course = std::to_string(leg) + " " + course;
    if (!course.empty()) runner.courseName(std::move(course));
    readControls(node, entry);
    return entry;
  }

  void addEntries(std::vector<Entry>& entries) {
    Courses courses;
    for (const Entry& entry : entries) courses.learn(entry);
    for (Entry& entry : entries) {
      courses.fillGaps(entry);
      addPunches(entry);
      if (!run_.addRunner(std::move(entry.runner), notesFor(entry.place))) return;
    }
  }

  ReadJob& job_;
  ReaderRun run_;
};

bool isRelay(XmlNode root) { return equalNoCase(root.attribute("Type"), "Relay"); }

bool load(const std::string& path, XmlDocument& document) {
  return loadXml(path, document) && isOneOf(document.root(), {"Event"});
}

}  // namespace

std::int32_t readPekkaPirilaXml(ReadJob& job) {
  XmlDocument document;
  if (!load(job.fileName, document)) return LRK_IMPORT_PEKKA_PIRILA_XML_INVALID_FORMAT;
  const XmlNode root = document.root();
  if (isRelay(root)) {
    job.parallelMode = erpmFastestTime;
    return ListReader(job).read(root, true);
  }
  if (!childOf(root, {"EventClass"})) return LRK_IMPORT_PEKKA_PIRILA_XML_INVALID_FORMAT;
  return ListReader(job).read(root, false);
}

std::int32_t readPekkaPirilaRelayXml(ReadJob& job) {
  XmlDocument document;
  if (!load(job.fileName, document) || !isRelay(document.root())) {
    return LRK_IMPORT_PEKKA_PIRILA_XML_INVALID_FORMAT;
  }
  return ListReader(job).read(document.root(), true);
}

}  // namespace larkstone
