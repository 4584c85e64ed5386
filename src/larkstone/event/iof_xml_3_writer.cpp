// IOF XML 3.0: running times in seconds, clock times as dates with a time, elements in the order of
// the schema.

#include <algorithm>
#include <array>

#include "larkstone/core/iof_texts.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/export_file.hpp"
#include "larkstone/event/xml_lines.hpp"

namespace larkstone {

namespace {

constexpr XmlForm form = {.codePage = false, .lineEnd = "\n", .indentation = 1};

template <std::size_t n>
std::string_view textAt(const std::array<std::string_view, n>& texts, int index) {
  return index >= 0 && index < static_cast<int>(n) ? texts[static_cast<std::size_t>(index)] : "";
}

// Centimetres as metres and hundredths as seconds: "4200", "12.5", "-0.05".
std::string inUnits(std::int32_t hundredths) {
  const std::int64_t size = std::abs(std::int64_t{hundredths});
  std::string text = (hundredths < 0 ? "-" : "") + std::to_string(size / 100);
  if (size % 100 != 0) text += "." + std::to_string(100 + size % 100).substr(1);
  if (size % 100 != 0 && text.back() == '0') text.pop_back();
  return text;
}

// A clock time on the day of the event; times of 24 hours and more are on the next day.
std::string dateTimeText(Date day, Time time) {
  const Time days = time / (24 * 360000);
  const Date midnight = {dateOf(calendarOf(day)).day + days};
  const enmTimeAccuracy accuracy = time % 100 == 0 ? etacSeconds : etacHundredthsSeconds;
  return toIsoText(midnight) + "T" +
         timeToString(time, etstClockTimeForceTwoHourDigits, accuracy, true, "::.");
}

// From start to finish, whatever the status.
Time runningTime(const LRKRunner& runner) {
  const LRKPunches& punches = runner.punches();
  if (!punches.startExists() || !punches.finishExists()) return LRK_NO_TIME;
  const Time start = runner.startTime();
  const Time finish = runner.finishTime();
  return isDisq(start) || isDisq(finish) || finish < start ? LRK_NO_TIME : finish - start;
}

// A start at 0 is the start that nobody knows.
bool startIsKnown(const LRKRunner& runner) {
  return runner.startTime() > 0 && !isDisq(runner.startTime());
}

bool isControl(Code code) { return !isStartCode(code) && !isFinishCode(code); }

int noOfControls(const LRKPunches& punches, bool onlyWithTime) {
  int controls = 0;
  for (int i = 0; i < punches.count(); ++i) {
    if (isControl(punches.code(i)) && !(onlyWithTime && isDisq(punches.time(i)))) ++controls;
  }
  return controls;
}

std::string_view statusText(const LRKRunner& runner) {
  const enmStatus status = runner.status();
  if (status == estaSportWithdr) return "SportingWithdrawal";
  if (status == estaMisPunch) return "MissingPunch";
  if (status != estaUnknown && !iofStatusText(status).empty()) return iofStatusText(status);
  if (!isDisq(runningTime(runner))) return "Finished";
  return noOfControls(runner.punches(), true) > 0 ? "Active" : "Inactive";
}

void writeId(XmlLines& xml, bool isSet, std::int32_t id, const std::string& issuer) {
  if (!isSet) return;
  XmlTag tag("Id");
  if (!issuer.empty()) tag.with("type", issuer);
  xml.element(tag, std::to_string(id));
}

struct CountryValue {
  bool codeSet;
  const std::string& code;
  bool nameSet;
  const std::string& name;

  bool isSet() const { return codeSet || nameSet; }
};

void writeCountry(XmlLines& xml, std::string_view element, const CountryValue& country) {
  if (!country.isSet()) return;
  XmlTag tag(element);
  tag.with("code", country.codeSet ? country.code : "");
  xml.element(tag, country.nameSet ? country.name : "");
}

void writeEventDate(XmlLines& xml, std::string_view element, bool isSet, Date date) {
  if (!isSet || date == Date{}) return;
  xml.open(element);
  xml.element("Date", toIsoText(dateOf(calendarOf(date))));
  if (const Time time = timeOfDay(date)) {
    xml.element("Time",
                timeToString(time, etstClockTimeForceTwoHourDigits, etacSeconds, true, "::."));
  }
  xml.close(element);
}

void writeOrganiser(XmlLines& xml, const LRKEvent& event) {
  const CountryValue country = {event.organiserCountryCodeSet(), event.organiserCountryCode(),
                                event.organiserCountrySet(), event.organiserCountry()};
  if (!event.organiserSet() && !event.organiserIdSet() && !country.isSet()) return;
  xml.open("Organiser");
  writeId(xml, event.organiserIdSet(), event.organiserId(), event.organiserIdManager());
  xml.element("Name", event.organiserSet() ? event.organiser() : "");
  writeCountry(xml, "Country", country);
  xml.close("Organiser");
}

void writeEvent(XmlLines& xml, const LRKEvent& event) {
  constexpr std::array<std::string_view, 6> classifications = {
      "", "International", "National", "Regional", "Local", "Club"};
  constexpr std::array<std::string_view, 5> forms = {"Individual", "Individual", "Team", "Team",
                                                     "Relay"};
  xml.open("Event");
  writeId(xml, event.IDSet(), event.ID(), event.IDManager());
  xml.element("Name", event.name());
  writeEventDate(xml, "StartTime", event.startDateSet(), event.startDate());
  writeEventDate(xml, "EndTime", event.endDateSet(), event.endDate());
  const std::string_view classification = textAt(classifications, event.classification());
  if (event.classificationSet() && !classification.empty()) {
    xml.element("Classification", classification);
  }
  const std::string_view eventForm = textAt(forms, event.eventForm());
  if (event.eventFormSet() && !eventForm.empty()) xml.element("Form", eventForm);
  writeOrganiser(xml, event);
  xml.close("Event");
}

void writePerson(XmlLines& xml, const LRKRunner& runner) {
  XmlTag tag("Person");
  if (runner.genderSet() && runner.gender() == egndMale) tag.with("sex", "M");
  if (runner.genderSet() && runner.gender() == egndFemale) tag.with("sex", "F");
  const bool inParts = runner.firstNameSet() || runner.lastNameSet();
  xml.open(tag);
  writeId(xml, runner.IDSet(), runner.ID(), runner.IDManager());
  xml.open("Name");
  xml.element("Family", inParts ? runner.lastName() : "");
  xml.element("Given", inParts ? runner.firstName() : runner.name());
  xml.close("Name");
  if (runner.birthDateSet()) {
    xml.element("BirthDate", toIsoText(dateOf(calendarOf(runner.birthDate()))));
  }
  writeCountry(xml, "Nationality",
               {runner.nationalityCodeSet(), runner.nationalityCode(), runner.nationalitySet(),
                runner.nationality()});
  xml.close("Person");
}

void writeOrganisation(XmlLines& xml, const LRKRunner& runner) {
  const CountryValue country = {runner.clubCountryCodeSet(), runner.clubCountryCode(),
                                runner.clubCountrySet(), runner.clubCountry()};
  if (!runner.clubSet() && !runner.clubIDSet() && !country.isSet()) return;
  xml.open("Organisation");
  writeId(xml, runner.clubIDSet(), runner.clubID(), runner.clubIDManager());
  xml.element("Name", runner.clubSet() ? runner.club() : "");
  writeCountry(xml, "Country", country);
  xml.close("Organisation");
}

void writeCourse(XmlLines& xml, bool nameSet, const std::string& name, bool lengthSet,
                 Length length) {
  if (!nameSet && !lengthSet) return;
  xml.open("Course");
  if (nameSet) xml.element("Name", name);
  if (lengthSet) xml.element("Length", inUnits(length));
  xml.close("Course");
}

// Times count from the start. A control on the course without a time was missed.
void writeSplits(XmlLines& xml, const LRKPunches& punches, Time start, bool additional) {
  for (int i = 0; i < punches.count(); ++i) {
    if (!isControl(punches.code(i))) continue;
    const bool hasTime = !isDisq(punches.time(i));
    XmlTag tag("SplitTime");
    if (additional) {
      tag.with("status", "Additional");
    } else if (!hasTime) {
      tag.with("status", "Missing");
    }
    xml.open(tag);
    xml.element("ControlCode", std::to_string(punches.code(i)));
    if (hasTime) xml.element("Time", inUnits(punches.time(i) - start));
    xml.close("SplitTime");
  }
}

void writeCard(XmlLines& xml, const LRKRunner& runner) {
  if (!runner.cCardIDSet() && !runner.punchingUnitTypeSet()) return;
  XmlTag tag("ControlCard");
  if (runner.punchingUnitTypeSet()) tag.with("punchingSystem", runner.punchingUnitType());
  xml.element(tag, runner.cCardIDSet() ? std::to_string(runner.cCardID()) : "");
}

// Whether there is more to tell than that nothing is known. A course name alone does not count: a
// forked category gives one to everybody.
bool hasResult(const LRKRunner& runner) {
  return runner.status() != estaUnknown || startIsKnown(runner) || !isDisq(runningTime(runner)) ||
         noOfControls(runner.punches(), false) > 0 ||
         noOfControls(runner.extraPunches(), false) > 0 || runner.cCardIDSet() ||
         runner.punchingUnitTypeSet() || runner.courseLengthSet();
}

void writeResult(XmlLines& xml, const LRKRunner& runner, Date eventDay, Time bestTime) {
  const bool isOK = runner.status() == estaOK;
  const Time start = isDisq(runner.startTime()) ? 0 : runner.startTime();
  const Time time = runningTime(runner);
  xml.open("Result");
  if (startIsKnown(runner)) {
    xml.element("StartTime", dateTimeText(eventDay, start));
    if (!isDisq(time)) xml.element("FinishTime", dateTimeText(eventDay, start + time));
  }
  if (!isDisq(time)) xml.element("Time", inUnits(time));
  if (isOK && !isDisq(time)) xml.element("TimeBehind", inUnits(time - bestTime));
  if (isOK && runner.resultPlaceSet() && runner.resultPlace() > 0) {
    xml.element("Position", std::to_string(runner.resultPlace()));
  }
  xml.element("Status", statusText(runner));
  writeCourse(xml, runner.courseNameSet(), runner.courseName(), runner.courseLengthSet(),
              runner.courseLength());
  writeSplits(xml, runner.punches(), start, false);
  writeSplits(xml, runner.extraPunches(), start, true);
  writeCard(xml, runner);
  xml.close("Result");
}

Time bestTimeOf(const LRKCategory& category) {
  Time best = LRK_NO_TIME;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    if (runner.status() == estaOK) best = std::min(best, runningTime(runner));
  }
  return best;
}

// A list of one second says nothing about it.
XmlTag classResultTag(enmTimeAccuracy accuracy) {
  constexpr std::array<std::string_view, 5> resolutions = {"0.01", "0.1", "", "60", "3600"};
  XmlTag tag("ClassResult");
  const std::string_view resolution = textAt(resolutions, accuracy);
  if (!resolution.empty()) tag.with("timeResolution", resolution);
  return tag;
}

void writeClass(XmlLines& xml, const LRKCategory& category) {
  XmlTag tag("Class");
  if (category.genderSet()) {
    const enmGender gender = category.gender();
    tag.with("sex", gender == egndMale ? "M" : gender == egndFemale ? "F" : "B");
  }
  xml.open(tag);
  writeId(xml, category.IDSet(), category.ID(), category.IDManager());
  xml.element("Name", category.name());
  if (category.shortNameSet()) xml.element("ShortName", category.shortName());
  xml.close("Class");
}

void writeCategory(XmlLines& xml, const LRKCategory& category, Date eventDay) {
  const Time bestTime = bestTimeOf(category);
  xml.open(classResultTag(category.timeAccuracy()));
  writeClass(xml, category);
  writeCourse(xml, false, {}, category.courseLengthSet(), category.courseLength());
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    xml.open("PersonResult");
    writePerson(xml, runner);
    writeOrganisation(xml, runner);
    if (hasResult(runner)) writeResult(xml, runner, eventDay, bestTime);
    xml.close("PersonResult");
  }
  xml.close("ClassResult");
}

// The list is as old as the event's last change, so the same event gives the same bytes.
XmlTag listTag(const LRKEvent& event) {
  constexpr std::array<std::string_view, 3> statuses = {"Complete", "Snapshot", "Delta"};
  XmlTag tag("ResultList");
  tag.with("xmlns", "http://www.orienteering.org/datastandard/3.0").with("iofVersion", "3.0");
  if (const Date modified = event.lastModified(); modified.day != 0) {
    tag.with("createTime", dateTimeText(modified, timeOfDay(modified) / 100 * 100));
  }
  tag.with("creator", "Larkstone");
  const std::string_view status = textAt(statuses, event.resultListStatus());
  if (event.resultListStatusSet() && !status.empty()) tag.with("status", status);
  return tag;
}

}  // namespace

std::int32_t writeIofXml3(const LRKEvent& event, ExportFile& file) {
  const Date eventDay = event.startDateSet() ? event.startDate() : Date{};
  XmlLines xml(file, form);
  xml.line(R"(<?xml version="1.0" encoding="UTF-8"?>)");
  xml.open(listTag(event));
  writeEvent(xml, event);
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.storedCategory(i);
    if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    writeCategory(xml, *category, eventDay);
  }
  xml.close("ResultList");
  return 0;
}

}  // namespace larkstone
