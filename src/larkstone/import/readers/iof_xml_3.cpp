// IOF XML 3.0: running times in seconds, starts as date-times.

#include <utility>

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
  if (list.hasAttribute("status")) {
    event.resultListStatus(listStatusOf(list.attribute("status")).value_or(erlsComplete));
  }
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

// The course of a race; the first one where none is numbered so.
XmlNode courseOfRace(XmlNode classResult, int race) {
  for (const XmlNode course : classResult.children("Course")) {
    if (integerOf(course.attribute("raceNumber")) == race) return course;
  }
  return classResult.child("Course");
}

void readClass(XmlNode classResult, int race, LRKCategory& category) {
  category.timeAccuracy(accuracyOf(classResult.attribute("timeResolution")));
  const XmlNode node = classResult.child("Class");
  if (node.hasAttribute("sex")) category.gender(genderOf(node.attribute("sex")));
  readFirstNumber(node, [&](std::int32_t id) { category.ID(id); });
  ifText(node.child("Name"), [&](std::string text) { category.name(std::move(text)); });
  ifText(node.child("ShortName"), [&](std::string text) { category.shortName(std::move(text)); });
  readLength(courseOfRace(classResult, race).child("Length"),
             [&](Length length) { category.courseLength(length); });
}

// A result without a race number belongs to the race of its place among the person's results.
void collectResults(XmlNode personResult, std::vector<IofResult>& results) {
  int place = 0;
  for (const XmlNode result : personResult.children("Result")) {
    ++place;
    const int race = integerOf(result.attribute("raceNumber")).value_or(place);
    results.push_back({personResult, result, race, 0});
  }
}

void readPerson(XmlNode person, LRKRunner& runner, const IofNotes& notes) {
  if (person.hasAttribute("sex")) runner.gender(genderOf(person.attribute("sex")));
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

void readCourse(XmlNode course, LRKRunner& runner) {
  std::string name = course.textAt("Name");
  if (name.empty()) name = course.textAt("Id");
  if (!name.empty()) runner.courseName(std::move(name));
  readLength(course.child("Length"), [&](Length length) { runner.courseLength(length); });
}

// Of several cards the first with a number.
void readCard(XmlNode card, LRKRunner& runner) {
  if (runner.cCardIDSet()) return;
  if (const auto number = integerOf(card.text())) runner.cCardID(*number);
  if (card.hasAttribute("punchingSystem")) {
    runner.punchingUnitType(punchingUnitOf(card.attribute("punchingSystem")));
  }
}

struct ResultFields {
  Time start = LRK_NO_TIME;
  Time time = LRK_NO_TIME;
  XmlNode firstSplit;
};

Time startOf(XmlNode element, const IofNotes& notes) {
  const std::string text = element.text();
  if (text.empty()) return LRK_NO_TIME;
  const Time start = timeOfDayOf(text);
  if (isDisq(start)) notes("unreadable start time", text);
  return start;
}

ResultFields readFields(XmlNode result, LRKRunner& runner, const IofNotes& notes) {
  ResultFields fields;
  std::string pieces;
  for (XmlNode field = result.firstChild(); field; field = field.next()) {
    const std::string_view name = field.name();
    if (name == "SplitTime") {
      if (!fields.firstSplit) fields.firstSplit = field;
    } else if (name == "StartTime") {
      fields.start = startOf(field, notes);
    } else if (name == "Time") {
      fields.time = secondsOf(field.text(pieces)).value_or(LRK_NO_TIME);
    } else if (name == "Status") {
      const std::string_view text = field.text(pieces);
      if (!text.empty()) readStatus(text, runner, notes);
    } else if (name == "Course") {
      readCourse(field, runner);
    } else if (name == "ControlCard") {
      readCard(field, runner);
    }
  }
  if (fields.time < 0) fields.time = LRK_NO_TIME;
  return fields;
}

void readSplit(XmlNode split, Time start, LRKRunner& runner, const IofNotes& notes) {
  std::string pieces;
  Code code = 0;
  Time time = LRK_NO_TIME;
  for (XmlNode field = split.firstChild(); field; field = field.next()) {
    const std::string_view name = field.name();
    if (name == "ControlCode") {
      const std::string_view text = field.text(pieces);
      code = controlCodeOf(text);
      if (code == 0) notes("no number in control code", text);
    } else if (name == "Time") {
      const std::string_view text = field.text(pieces);
      const auto seconds = secondsOf(text);
      time = seconds.value_or(LRK_NO_TIME);
      if (!seconds && !text.empty()) notes("unreadable split time", text);
    }
  }
  const std::string_view status = split.attribute("status");
  const bool valid = status != "Missing" && !isDisq(time) && !isDisq(start + time);
  LRKPunches& punches = status == "Additional" ? runner.extraPunches() : runner.punches();
  if (punches.add(valid ? start + time : LRK_NO_TIME, code) < 0) notes("too many punches");
}

bool readRunner(const IofResult& result, LRKRunner& runner, const IofNotes& notes) {
  readPerson(result.person.child("Person"), runner, notes);
  XmlNode organisation = organisationIn(result.person);
  if (!organisation) organisation = organisationIn(result.person.child("Person"));
  readOrganisation(organisation, runner);

  const ResultFields fields = readFields(result.result, runner, notes);
  const Time start = isDisq(fields.start) ? 0 : fields.start;
  runner.startTime(start);
  runner.finishTime(isDisq(fields.time) ? LRK_NO_TIME : start + fields.time);
  for (XmlNode split = fields.firstSplit; split; split = split.next("SplitTime")) {
    readSplit(split, start, runner, notes);
  }
  return true;
}

void finishCategory(LRKCategory&) {}

}  // namespace

const IofVersion iofVersion3 = {importedFrom,   readEvent,  readClass,
                                collectResults, readRunner, finishCategory};

}  // namespace larkstone
