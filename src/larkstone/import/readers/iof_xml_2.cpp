// IOF XML 2.0.3 and before: clock times and running times as texts.

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/readers/iof_list.hpp"
#include "larkstone/import/readers/iof_person.hpp"
#include "larkstone/import/readers/iof_values.hpp"

namespace larkstone {

namespace {

std::string importedFrom(XmlNode, const std::string& version) { return "IOF XML " + version; }

void readOrganiser(XmlNode club, LRKEvent& event) {
  readId(
      club.child("ClubId"), [&](std::int32_t id) { event.organiserId(id); },
      [&](enmIDType type) { event.organiserIdType(type); },
      [&](std::string manager) { event.organiserIdManager(std::move(manager)); });
  for (const char* const name : {"ShortName", "Name"}) {
    ifText(club.child(name), [&](std::string text) { event.organiser(std::move(text)); });
  }
  Country country = countryWithin(club);
  if (!country.code.empty()) event.organiserCountryCode(std::move(country.code));
  if (!country.name.empty()) event.organiserCountry(std::move(country.name));
}

std::optional<Date> eventDateOf(XmlNode date) {
  return dateOf(date.text(), date.attribute("dateFormat"));
}

void readEvent(XmlNode list, LRKEvent& event) {
  ifAttribute(list, "status", [&](std::string_view text) {
    event.resultListStatus(resultListStatusFromIof(text));
  });
  const XmlNode node = list.child("Event");
  ifAttribute(node, "eventForm",
              [&](std::string_view text) { event.eventForm(eventFormFromIof(text)); });
  readId((node ? node : list).child("EventId"), [&](std::int32_t id) { event.ID(id); },
         [&](enmIDType type) { event.idType(type); },
         [&](std::string manager) { event.IDManager(std::move(manager)); });
  ifText(node.child("Name"), [&](std::string text) { event.name(std::move(text)); });
  if (const auto date = eventDateOf(node.at("StartDate/Date"))) event.eventDate(*date);
  if (const auto date = eventDateOf(node.at("FinishDate/Date"))) event.endDate(*date);
  readOrganiser(node.at("Organiser/Club"), event);
}

void readCategoryId(XmlNode element, LRKCategory& category) {
  readId(
      element, [&](std::int32_t id) { category.ID(id); },
      [&](enmIDType type) { category.idType(type); },
      [&](std::string manager) { category.IDManager(std::move(manager)); });
}

// Names stand in the EventClass, or in the Class within it.
void readClassNames(XmlNode element, LRKCategory& category) {
  ifAttribute(element, "sex", [&](std::string_view sex) { category.gender(genderFromIof(sex)); });
  readCategoryId(element.child("ClassId"), category);
  for (const char* const name : {"ClassShortName", "ShortName"}) {
    ifText(element.child(name), [&](std::string text) { category.shortName(std::move(text)); });
  }
  ifText(element.child("Name"), [&](std::string text) { category.name(std::move(text)); });
}

void readClass(XmlNode classResult, LRKCategory& category) {
  readCategoryId(classResult.child("ClassId"), category);
  ifText(classResult.child("ClassShortName"), [&](const std::string& text) {
    category.name(text);
    category.shortName(text);
  });
  const XmlNode eventClass = classResult.child("EventClass");
  readClassNames(eventClass.child("Class"), category);
  readClassNames(eventClass, category);
  if (category.name().empty()) category.name(category.shortName());
}

void readCourse(XmlNode, LRKCategory&) {}  // its length follows from the runners

// In an event of several races a person has a result of each race, and one that is their sum.
void collectResults(XmlNode holder, std::vector<IofResult>& results) {
  IofResult found{holder, holder.child("Person"), {}, {}};
  const auto collectFrom = [&](XmlNode parent, int& race) {
    for (const XmlNode result : parent.children("Result")) {
      found.result = result;
      found.race = ++race;
      results.push_back(found);
    }
  };
  int race = 0;
  for (const XmlNode raceResult : holder.children("RaceResult")) collectFrom(raceResult, race);
  if (race == 0) collectFrom(holder, race);
  if (race == 0) results.push_back(found);
}

// Given names in the order of their sequence numbers; those without one come first.
std::string givenNames(XmlNode personName) {
  std::vector<std::pair<std::int32_t, std::string>> names;
  for (const XmlNode given : personName.children("Given")) {
    names.emplace_back(integerOf(given.attribute("sequence")).value_or(0), given.text());
  }
  std::stable_sort(names.begin(), names.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::string joined;
  for (const auto& [sequence, name] : names) {
    if (!joined.empty() && !name.empty()) joined += ' ';
    joined += name;
  }
  return joined;
}

void readPersonId(XmlNode element, LRKRunner& runner) {
  readId(
      element, [&](std::int32_t id) { runner.ID(id); },
      [&](enmIDType type) { runner.idType(type); },
      [&](std::string manager) { runner.IDManager(std::move(manager)); });
}

void readPerson(XmlNode person, LRKRunner& runner, const IofNotes& notes) {
  ifText(person.at("PersonName/Family"),
         [&](std::string text) { runner.lastName(std::move(text)); });
  std::string given = givenNames(person.child("PersonName"));
  if (!given.empty()) runner.firstName(std::move(given));
  readPersonId(person.child("PersonId"), runner);
  const XmlNode date = person.at("BirthDate/Date");
  readBirthDate(date.text(), date.attribute("dateFormat"), runner, notes);
  readNationality(person.child("Nationality"), runner);
  ifAttribute(person, "sex", [&](std::string_view sex) { runner.gender(genderFromIof(sex)); });
}

void readClubId(XmlNode element, LRKRunner& runner) {
  readId(
      element, [&](std::int32_t id) { runner.clubID(id); },
      [&](enmIDType type) { runner.clubIDType(type); },
      [&](std::string manager) { runner.clubIDManager(std::move(manager)); });
}

// The club stands beside the person, in some lists within; a country may stand for it.
void readClub(XmlNode personResult, LRKRunner& runner) {
  readClubId(personResult.child("ClubId"), runner);
  XmlNode club = personResult.child("Club");
  if (!club) club = personResult.at("Person/Club");
  readClubId(club.child("ClubId"), runner);
  for (const char* const name : {"ShortName", "Name"}) {
    ifText(club.child(name), [&](std::string text) { runner.club(std::move(text)); });
  }
  readClubCountry(countryWithin(personResult), runner);
  readClubCountry(countryWithin(club), runner);
}

void readRank(XmlNode rank, LRKRunner& runner) {
  ifText(rank.child("Name"), [&](std::string text) { runner.rankingName(std::move(text)); });
  readId(
      rank.child("OrganisationId"), [&](std::int32_t id) { runner.rankingOrganisationID(id); },
      [&](enmIDType type) { runner.rankingOrganisationIDType(type); },
      [&](std::string manager) { runner.rankingOrganisationIDManager(std::move(manager)); });
  for (const char* const name : {"Organisation/ShortName", "Organisation/Name"}) {
    ifText(rank.at(name), [&](std::string text) { runner.rankingName(std::move(text)); });
  }
  if (const auto position = integerOf(rank.textAt("RankPosition"))) {
    runner.rankingPosition(saturated<std::int16_t>(*position));
  }
  ifText(rank.child("RankValue"), [&](const std::string& text) {
    const double value = textToNumber(text);
    if (std::abs(value) <= std::numeric_limits<float>::max()) {
      runner.rankingValue(static_cast<float>(value));
    }
  });
}

void readCourseLength(XmlNode element, LRKRunner& runner) {
  const std::string text = element.text();
  const std::string_view unit = element.attribute("unit");
  double centimetres = 100;
  if (equalNoCase(unit, "km")) centimetres = 100000;
  if (equalNoCase(unit, "ft")) centimetres = 30.48;
  const Length length = roundHalfEven(textToNumber(text) * centimetres);
  if (length > 0) runner.courseLength(length);
}

void readCard(XmlNode card, LRKRunner& runner, const IofNotes& notes) {
  const XmlNode id = card.child("CCardId");
  readCardNumber(id ? id.text() : card.text(), runner, notes);
  const XmlNode unit = card.child("PunchingUnitType");
  if (unit.hasAttribute("value")) {
    runner.punchingUnitType(std::string(punchingUnitFromIof(unit.attribute("value"))));
  }
}

void readVariation(XmlNode variation, LRKRunner& runner) {
  for (const char* const name : {"CourseVariationId", "Name"}) {
    ifText(variation.child(name), [&](std::string text) { runner.courseName(std::move(text)); });
  }
}

// The parts of a result that are not times.
void readResultField(XmlNode field, LRKRunner& runner, const IofNotes& notes) {
  if (field.is("CCard") || field.is("CCardId")) {
    readCard(field, runner, notes);
  } else if (field.is("CompetitorStatus")) {
    ifAttribute(field, "value",
                [&](std::string_view text) { runner.status(readStatus(text, notes)); });
  } else if (field.is("TeamSequence")) {
    const auto leg = integerOf(field.text()).value_or(0);
    if (leg > 0 && leg <= 255) runner.relayLeg(static_cast<std::int16_t>(leg));
  } else if (field.is("CourseVariationId")) {
    ifText(field, [&](std::string text) { runner.courseName(std::move(text)); });
  } else if (field.is("CourseVariation")) {
    readVariation(field, runner);
    readCourseLength(field.child("CourseLength"), runner);
  } else if (field.is("CourseLength")) {
    if (!runner.courseLengthSet()) readCourseLength(field, runner);
  }
}

// Text within the element or within its Clock: lists differ, also our own.
std::string clockText(XmlNode element) {
  const XmlNode clock = element.child("Clock");
  return clock ? clock.text() : element.text();
}

// A time that is written as dashes is none, and nothing that could not be read.
void noteTime(const IofNotes& notes, std::string_view what, Time time, std::string_view text) {
  if (isDisq(time) && !text.empty() && !text.starts_with('-')) notes(what, text);
}

Time clockOf(XmlNode element, const IofNotes& notes) {
  const std::string text = clockText(element);
  const Time time = text.find('T') == std::string::npos ? clockTimeOf(text) : timeOfDayOf(text);
  noteTime(notes, "unreadable clock", time, text);
  return time;
}

Time timeOf(XmlNode element, const IofNotes& notes) {
  const std::string text = clockText(element);
  const Time time = runningTimeOf(text);
  noteTime(notes, "unreadable time", time, text);
  return time;
}

struct TimeFields {
  XmlNode start;
  XmlNode finish;
  XmlNode time;
  std::vector<IofSplit> splits;
};

IofSplit readSplit(XmlNode element, const IofNotes& notes) {
  std::string pieces;
  IofSplit split;
  for (XmlNode field = element.firstChild(); field; field = field.next()) {
    if (field.is("Time")) {
      const XmlNode clock = field.child("Clock");
      const std::string_view text = (clock ? clock : field).text(pieces);
      split.time = runningTimeOf(text);
      noteTime(notes, "unreadable split time", split.time, text);
    } else if (field.is("ControlCode") || field.is("Control")) {
      const XmlNode code = field.is("Control") ? field.child("ControlCode") : field;
      split.code = readControlCode(code.text(pieces), notes);
    }
  }
  return split;
}

// Lists order the parts of a result in their own ways.
TimeFields readFields(XmlNode result, LRKRunner& runner, const IofNotes& notes) {
  TimeFields fields;
  fields.splits.reserve(32);
  for (XmlNode field = result.firstChild(); field; field = field.next()) {
    if (field.is("SplitTime")) {
      fields.splits.push_back(readSplit(field, notes));
    } else if (field.is("StartTime")) {
      fields.start = field;
    } else if (field.is("FinishTime")) {
      fields.finish = field;
    } else if (field.is("Time")) {
      fields.time = field;
    } else {
      readResultField(field, runner, notes);
    }
  }
  return fields;
}

void readTimes(const TimeFields& fields, LRKRunner& runner, const IofNotes& notes) {
  const Time startClock = clockOf(fields.start, notes);
  if (!isDisq(startClock)) runner.startTime(startClock);
  const Time finishClock = clockOf(fields.finish, notes);
  if (!isDisq(finishClock)) runner.finishTime(finishClock);
  const Time time = timeOf(fields.time, notes);
  if (!isDisq(time)) runner.finishTime(runner.startTime() + time);

  const Time start = runner.startTime();
  for (const IofSplit& split : fields.splits) addSplit(split, start, runner, notes);
  completePunches(runner);
  if (runner.startTime() > runner.finishTime()) {
    runner.finishTime(runner.finishTime() + 24 * 360000);
  }
}

void readRunner(const IofResult& result, LRKRunner& runner, const IofNotes& notes) {
  readPersonId(result.holder.child("PersonId"), runner);
  readPerson(result.person, runner, notes);
  readClub(result.holder, runner);
  readRank(result.holder.child("Rank"), runner);
  readTimes(readFields(result.result, runner, notes), runner, notes);
}

void readTeam(XmlNode team, LRKRunner& runner, IofTeam& listed, const IofNotes& notes) {
  ifText(team.child("TeamName"), [&](std::string text) { runner.name(std::move(text)); });
  readClub(team, runner);
  const Time start = clockOf(team.child("StartTime"), notes);
  if (!isDisq(start)) listed.start = start;
  listed.finish = clockOf(team.child("FinishTime"), notes);
  listed.standing.time = timeOf(team.child("Time"), notes);
  listed.standing.place = integerOf(team.textAt("ResultPosition")).value_or(0);
  ifAttribute(team.child("TeamStatus"), "value",
              [&](std::string_view text) { runner.status(readStatus(text, notes)); });
}

RelayStanding readStanding(XmlNode, const IofNotes&) { return {}; }  // never told

}  // namespace

const IofVersion iofVersion2 = {importedFrom,
                                readEvent,
                                readClass,
                                readCourse,
                                collectResults,
                                readRunner,
                                readTeam,
                                readStanding,
                                "PersonResult",
                                "TeamSequence",
                                /*onlyWithSplits=*/true,
                                CourseLengthFrom::runners};

}  // namespace larkstone
