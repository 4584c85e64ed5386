// IOF XML 3.0: running times in seconds, starts as date-times.

#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/readers/iof_list.hpp"
#include "larkstone/import/readers/iof_person.hpp"
#include "larkstone/import/readers/iof_values.hpp"

namespace larkstone {

namespace {

std::string importedFrom(XmlNode list, const std::string&) {
  return std::string("IOFXML3 / ").append(list.attribute("creator"));
}

// Of several ids (national, of the program, ...) the first that is a number.
template <class Use>
void readFirstNumber(XmlNode parent, Use use) {
  for (const XmlNode id : parent.children("Id")) {
    if (const auto number = integerOf(id.text())) {
      use(*number);
      return;
    }
  }
}

// Metres as centimetres; nothing for a length that is not known.
template <class Use>
void readLength(XmlNode element, Use use) {
  const Length length = roundHalfEven(textToNumber(element.text()) * 100);
  if (length > 0) use(length);
}

XmlNode organisationIn(XmlNode parent) {
  const XmlNode organisation = parent.child("Organisation");
  return organisation ? organisation : parent.child("Organization");
}

void readEvent(XmlNode list, LRKEvent& event) {
  ifAttribute(list, "status", [&](std::string_view text) {
    event.resultListStatus(resultListStatusFromIof(text));
  });
  const XmlNode node = list.child("Event");
  ifText(node.child("Name"), [&](std::string text) { event.name(std::move(text)); });
  if (const auto date = dateOf(node.textAt("StartTime/Date"))) event.eventDate(*date);
  if (const auto date = dateOf(node.textAt("EndTime/Date"))) event.endDate(*date);
  const XmlNode organiser = node.child("Organiser");
  readFirstNumber(organiser, [&](std::int32_t id) { event.organiserId(id); });
  ifText(organiser.child("Name"), [&](std::string text) { event.organiser(std::move(text)); });
  Country country = countryWithin(organiser);
  if (!country.code.empty()) event.organiserCountryCode(std::move(country.code));
  if (!country.name.empty()) event.organiserCountry(std::move(country.name));
}

enmTimeAccuracy accuracyOf(std::string_view resolution) {
  const auto seconds = wholeNumber(resolution);
  if (!seconds) return etacSeconds;
  constexpr std::pair<double, enmTimeAccuracy> limits[] = {
      {0.01, etacHundredthsSeconds}, {0.1, etacTenthsSeconds}, {1, etacSeconds}, {60, etacMinutes}};
  for (const auto& [limit, accuracy] : limits) {
    if (*seconds <= limit) return accuracy;
  }
  return etacHours;
}

void readClass(XmlNode classResult, LRKCategory& category) {
  category.timeAccuracy(accuracyOf(classResult.attribute("timeResolution")));
  const XmlNode node = classResult.child("Class");
  ifAttribute(node, "sex", [&](std::string_view sex) { category.gender(genderFromIof(sex)); });
  readFirstNumber(node, [&](std::int32_t id) { category.ID(id); });
  ifText(node.child("Name"), [&](std::string text) { category.name(std::move(text)); });
  ifText(node.child("ShortName"), [&](std::string text) { category.shortName(std::move(text)); });
  if (category.name().empty()) category.name(category.shortName());
}

void readCourse(XmlNode course, LRKCategory& category) {
  readLength(course.child("Length"), [&](Length length) { category.courseLength(length); });
}

// The results of one person among the children of a holder.
struct PersonsResults {
  XmlNode person;
  XmlNode organisation;
  XmlNode following;  // a second club, which is the next person's
  std::vector<IofResult> results;
};

// In a team several persons may stand side by side, each before or behind his results; a person's
// club stands anywhere, and is the one before where he has none. A result without a race number
// belongs to the race of its place.
class ResultCollector {
 public:
  explicit ResultCollector(std::vector<IofResult>& results) : results_(results) {}

  void collect(XmlNode holder) {
    const std::size_t before = results_.size();
    for (XmlNode child = holder.firstChild(); child; child = child.next()) take(holder, child);
    endPerson();
    if (results_.size() == before) results_.push_back({holder, now_.person, club_, {}});
  }

 private:
  void take(XmlNode holder, XmlNode child) {
    if (child.is("Person")) {
      if (now_.person) beginNext();
      now_.person = child;
    } else if (child.is("Organisation") || child.is("Organization")) {
      (now_.organisation ? now_.following : now_.organisation) = child;
    } else if (child.is("Result")) {
      if (++place_ == 1) resultsFirst_ = !now_.person;
      if (resultsFirst_ && now_.person) beginNext();
      const int race = integerOf(child.attribute("raceNumber")).value_or(place_);
      now_.results.push_back({holder, {}, {}, child, race});
    }
  }

  void endPerson() {
    if (now_.organisation) club_ = now_.organisation;
    for (IofResult& result : now_.results) {
      result.person = now_.person;
      result.organisation = club_;
      results_.push_back(result);
    }
  }

  void beginNext() {
    endPerson();
    now_ = {{}, now_.following, {}, {}};
  }

  std::vector<IofResult>& results_;
  PersonsResults now_;
  XmlNode club_;
  int place_ = 0;
  bool resultsFirst_ = false;
};

void collectResults(XmlNode holder, std::vector<IofResult>& results) {
  ResultCollector(results).collect(holder);
}

void readPerson(XmlNode person, LRKRunner& runner, const IofNotes& notes) {
  ifAttribute(person, "sex", [&](std::string_view sex) { runner.gender(genderFromIof(sex)); });
  readFirstNumber(person, [&](std::int32_t id) { runner.ID(id); });
  const XmlNode name = person.child("Name");
  ifText(name.child("Family"), [&](std::string text) { runner.lastName(std::move(text)); });
  ifText(name.child("Given"), [&](std::string text) { runner.firstName(std::move(text)); });
  readBirthDate(person.textAt("BirthDate"), {}, runner, notes);
  readNationality(person.child("Nationality"), runner);
}

void readOrganisation(XmlNode organisation, LRKRunner& runner) {
  readFirstNumber(organisation, [&](std::int32_t id) { runner.clubID(id); });
  ifText(organisation.child("Name"), [&](std::string text) { runner.club(std::move(text)); });
  readClubCountry(countryWithin(organisation), runner);
}

void readRunnersCourse(XmlNode course, LRKRunner& runner) {
  std::string name = course.textAt("Name");
  if (name.empty()) name = course.textAt("Id");
  if (!name.empty()) runner.courseName(std::move(name));
  readLength(course.child("Length"), [&](Length length) { runner.courseLength(length); });
}

// Of several cards the first with a number.
void readCard(XmlNode card, LRKRunner& runner, const IofNotes& notes) {
  if (runner.cCardIDSet()) return;
  readCardNumber(card.text(), runner, notes);
  if (card.hasAttribute("punchingSystem")) {
    runner.punchingUnitType(std::string(punchingUnitFromIof(card.attribute("punchingSystem"))));
  }
}

struct ResultFields {
  Time start = LRK_NO_TIME;
  Time time = LRK_NO_TIME;
  std::vector<IofSplit> splits;
};

Time startOf(XmlNode element, const IofNotes& notes) {
  const std::string text = element.text();
  if (text.empty()) return LRK_NO_TIME;
  const Time start = timeOfDayOf(text);
  if (isDisq(start)) notes("unreadable start time", text);
  return start;
}

// Dashes stand for no time.
Time timeOf(std::string_view text, std::string_view what, const IofNotes& notes) {
  const auto seconds = secondsOf(text);
  if (!seconds && !text.empty() && !text.starts_with("--")) notes(what, text);
  return seconds.value_or(LRK_NO_TIME);
}

IofSplit readSplit(XmlNode element, const IofNotes& notes) {
  std::string pieces;
  IofSplit split;
  for (XmlNode field = element.firstChild(); field; field = field.next()) {
    if (field.is("ControlCode")) {
      split.code = readControlCode(field.text(pieces), notes);
    } else if (field.is("Time")) {
      split.time = timeOf(field.text(pieces), "unreadable split time", notes);
    }
  }
  const std::string_view status = element.attribute("status");
  if (status == "Missing") split.time = LRK_NO_TIME;
  split.additional = status == "Additional";
  return split;
}

ResultFields readFields(XmlNode result, LRKRunner& runner, const IofNotes& notes) {
  ResultFields fields;
  fields.splits.reserve(32);
  std::string pieces;
  for (XmlNode field = result.firstChild(); field; field = field.next()) {
    if (field.is("SplitTime")) {
      fields.splits.push_back(readSplit(field, notes));
    } else if (field.is("StartTime")) {
      fields.start = startOf(field, notes);
    } else if (field.is("Time")) {
      fields.time = timeOf(field.text(pieces), "unreadable time", notes);
    } else if (field.is("Status")) {
      const std::string_view text = field.text(pieces);
      if (!text.empty()) runner.status(readStatus(text, notes));
    } else if (field.is("Course")) {
      readRunnersCourse(field, runner);
    } else if (field.is("ControlCard")) {
      readCard(field, runner, notes);
    }
  }
  if (fields.time < 0) fields.time = LRK_NO_TIME;
  return fields;
}

void readRunner(const IofResult& result, LRKRunner& runner, const IofNotes& notes) {
  readPerson(result.person, runner, notes);
  readOrganisation(result.organisation ? result.organisation : organisationIn(result.person),
                   runner);

  const ResultFields fields = readFields(result.result, runner, notes);
  const bool hasTime = !isDisq(fields.time);
  const Time start = isDisq(fields.start) && hasTime ? 0 : fields.start;
  runner.startTime(start);
  runner.finishTime(hasTime && !isDisq(start) ? start + fields.time : LRK_NO_TIME);
  for (const IofSplit& split : fields.splits) addSplit(split, start, runner, notes);
}

void readTeam(XmlNode team, LRKRunner& runner, IofTeam&, const IofNotes&) {
  ifText(team.child("Name"), [&](std::string text) { runner.name(std::move(text)); });
  readOrganisation(organisationIn(team), runner);
}

RelayStanding readStanding(XmlNode result, const IofNotes& notes) {
  const XmlNode overall = result.child("OverallResult");
  RelayStanding standing;
  standing.time = timeOf(overall.textAt("Time"), "unreadable time", notes);
  standing.place = integerOf(overall.textAt("Position")).value_or(0);
  ifText(overall.child("Status"),
         [&](const std::string& text) { standing.status = readStatus(text, notes); });
  return standing;
}

}  // namespace

const IofVersion iofVersion3 = {importedFrom,
                                readEvent,
                                readClass,
                                readCourse,
                                collectResults,
                                readRunner,
                                readTeam,
                                readStanding,
                                "TeamMemberResult",
                                "Leg",
                                /*onlyWithSplits=*/false,
                                CourseLengthFrom::list};

}  // namespace larkstone
