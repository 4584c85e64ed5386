// IOF XML 2.0.3: clock times as HH:MM:SS, lengths in metres.

#include <algorithm>
#include <array>
#include <charconv>

#include "larkstone/core/iof_texts.hpp"
#include "larkstone/core/length.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/export_file.hpp"
#include "larkstone/event/xml_lines.hpp"

namespace larkstone {

namespace {

constexpr XmlForm form = {.codePage = true, .lineEnd = "\r\n"};

std::string padded(int value, std::size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

// A date by a pattern such as YYYY-MM-DD or D.M.YY: single letters give a number as it is, longer
// runs a padded one; anything but Y, M and D in either case stays.
std::string dateText(Date date, std::string_view pattern = "YYYY-MM-DD") {
  const CalendarDate calendar = calendarOf(date);
  std::string text;
  while (!pattern.empty()) {
    const char c = pattern.front();
    const std::size_t run = std::min(pattern.find_first_not_of(c), pattern.size());
    const std::size_t width = run == 1 ? 1 : 2;
    if (c == 'Y' || c == 'y') {
      text += run > 2 ? padded(calendar.year, 4) : padded(calendar.year % 100, 2);
    } else if (c == 'M' || c == 'm') {
      text += padded(calendar.month, width);
    } else if (c == 'D' || c == 'd') {
      text += padded(calendar.day, width);
    } else {
      text += pattern.substr(0, run);
    }
    pattern.remove_prefix(run);
  }
  return text;
}

std::string clockText(Time time, enmTimeStyle style = etstClockTimeForceTwoHourDigits) {
  return timeToString(time, style, etacSeconds, true, "::.");
}

// Seven digits, as a single-precision number has them.
std::string numberText(float value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, 7);
  return {text.begin(), end.ptr};
}

std::string_view punchingUnitText(std::string_view unit) {
  for (const std::string_view known : {"SI", "Emit", "manual"}) {
    if (equalNoCase(known, unit)) return known;
  }
  return "other";
}

struct Identity {
  bool isSet;
  std::int32_t number;
  bool typeSet;
  enmIDType type;
  bool managerSet;
  const std::string& manager;
};

void writeIdentity(XmlLines& xml, std::string_view element, const Identity& id) {
  if (!id.isSet) return;
  XmlTag tag(element);
  if (id.typeSet) tag.with("type", iofIDTypeText(id.type));
  if (id.managerSet) tag.with("idManager", id.manager);
  xml.element(tag, std::to_string(id.number));
}

void writeCountry(XmlLines& xml, std::string_view code, bool nameSet, std::string_view name) {
  xml.open("Country");
  xml.empty(XmlTag("CountryId").with("value", code));
  if (nameSet) xml.element("Name", name);
  xml.close("Country");
}

XmlTag dateTag() { return XmlTag("Date").with("dateFormat", "YYYY-MM-DD"); }
XmlTag clockTag() { return XmlTag("Clock").with("clockFormat", "HH:MM:SS"); }

void writeClock(XmlLines& xml, std::string_view element, Time time) {
  xml.open(element);
  xml.element(clockTag(), clockText(time));
  xml.close(element);
}

void writeDate(XmlLines& xml, const std::string& element, Date date) {
  xml.line("<" + element + ">" + dateTag().element(dateText(date)) + "</" + element + ">");
}

void writeOrganiser(XmlLines& xml, const LRKEvent& event) {
  xml.open("Organiser");
  xml.open("Club");
  writeIdentity(
      xml, "ClubId",
      {event.organiserIdSet(), event.organiserId(), event.organiserIdTypeSet(),
       event.organiserIdType(), event.organiserIdManagerSet(), event.organiserIdManager()});
  xml.element("Name", event.organiser());
  xml.empty("ShortName");
  writeCountry(xml, event.organiserCountryCodeSet() ? event.organiserCountryCode() : "other",
               event.organiserCountrySet(), event.organiserCountry());
  xml.close("Club");
  xml.close("Organiser");
}

void writeEvent(XmlLines& xml, const LRKEvent& event) {
  XmlTag tag("Event");
  if (event.eventFormSet()) tag.with("eventForm", iofEventFormText(event.eventForm()));
  xml.open(tag);
  writeIdentity(xml, "EventId",
                {event.IDSet(), event.ID(), event.IDTypeSet(), event.idType(), event.IDManagerSet(),
                 event.IDManager()});
  xml.element("Name", event.name());
  xml.element("EventClassificationId", std::to_string(event.classification()));
  writeDate(xml, "StartDate", event.startDate());
  if (event.endDateSet()) writeDate(xml, "FinishDate", event.endDate());
  if (event.organiserSet()) writeOrganiser(xml, event);
  xml.close("Event");
}

void writePersonName(XmlLines& xml, const LRKRunner& runner) {
  const bool inParts = runner.firstNameSet() || runner.lastNameSet();
  xml.open("PersonName");
  if (inParts) {
    xml.element("Family", runner.lastName());
  } else {
    xml.empty("Family");
  }
  xml.element(XmlTag("Given").with("sequence", "1"), inParts ? runner.firstName() : runner.name());
  xml.close("PersonName");
}

void writeBirthDate(XmlLines& xml, const LRKRunner& runner) {
  XmlTag tag("Date");
  if (runner.birthDateFormatSet()) tag.with("dateFormat", runner.birthDateFormat());
  const bool formatted = runner.birthDateFormatSet() && !runner.birthDateFormat().empty();
  xml.open("BirthDate");
  xml.element(tag, formatted ? dateText(runner.birthDate(), runner.birthDateFormat())
                             : dateText(runner.birthDate()));
  xml.close("BirthDate");
}

void writePerson(XmlLines& xml, const LRKRunner& runner) {
  XmlTag tag("Person");
  if (runner.genderSet()) tag.with("sex", runner.gender() == egndFemale ? "F" : "M");
  xml.open(tag);
  writePersonName(xml, runner);
  writeIdentity(xml, "PersonId",
                {runner.IDSet(), runner.ID(), runner.IDTypeSet(), runner.idType(),
                 runner.IDManagerSet(), runner.IDManager()});
  if (runner.birthDateSet()) writeBirthDate(xml, runner);
  if (runner.nationalityCodeSet()) {
    const std::string& code = runner.nationalityCode();
    xml.open("Nationality");
    writeCountry(xml, code.empty() ? "other" : code, runner.nationalitySet(), runner.nationality());
    xml.close("Nationality");
  }
  xml.close("Person");
}

void writeClub(XmlLines& xml, const LRKRunner& runner) {
  xml.open("Club");
  writeIdentity(xml, "ClubId",
                {runner.clubIDSet(), runner.clubID(), runner.clubIDTypeSet(), runner.clubIDType(),
                 runner.clubIDManagerSet(), runner.clubIDManager()});
  xml.element("Name", runner.club());
  xml.empty("ShortName");
  writeCountry(xml, runner.clubCountryCodeSet() ? runner.clubCountryCode() : "other",
               runner.clubCountrySet(), runner.clubCountry());
  xml.close("Club");
}

void writeRank(XmlLines& xml, const LRKRunner& runner) {
  xml.open("Rank");
  if (runner.rankingNameSet()) xml.element("Name", runner.rankingName());
  writeIdentity(xml, "OrganisationId",
                {runner.rankingOrganisationIDSet(), runner.rankingOrganisationID(),
                 runner.rankingOrganisationIDTypeSet(), runner.rankingOrganisationIDType(),
                 runner.rankingOrganisationIDManagerSet(), runner.rankingOrganisationIDManager()});
  if (runner.rankingPositionSet()) {
    xml.element("RankPosition", std::to_string(runner.rankingPosition()));
  }
  if (runner.rankingValueSet()) xml.element("RankValue", numberText(runner.rankingValue()));
  xml.close("Rank");
}

void writeCard(XmlLines& xml, const LRKRunner& runner) {
  const std::string number = std::to_string(runner.cCardID());
  if (!runner.punchingUnitTypeSet()) {
    xml.element("CCardId", number);
    return;
  }
  xml.open("CCard");
  xml.element("CCardId", number);
  xml.empty(XmlTag("PunchingUnitType").with("value", punchingUnitText(runner.punchingUnitType())));
  xml.close("CCard");
}

void writeSplits(XmlLines& xml, const LRKPunches& punches, Time base) {
  int sequence = 0;
  for (int i = 0; i < punches.count(); ++i) {
    const Code code = punches.code(i);
    if (isStartCode(code) || isFinishCode(code)) continue;
    xml.open(XmlTag("SplitTime").with("sequence", std::to_string(++sequence)));
    xml.element("ControlCode", std::to_string(code));
    if (!isDisq(punches.time(i))) {
      xml.element(XmlTag("Time").with("timeFormat", "HH:MM:SS"), clockText(punches.time(i) - base));
    }
    xml.close("SplitTime");
  }
}

std::string metresText(Length length) {
  return lengthToString(length, elstM, length % 100 == 0 ? 0 : 2, "", ".", "");
}

void writeResult(XmlLines& xml, const LRKRunner& runner) {
  const bool started = runner.punches().startExists() && !isDisq(runner.startTime());
  const bool finished = runner.punches().finishExists() && !isDisq(runner.finishTime());
  xml.open("Result");
  if (runner.cCardIDSet()) writeCard(xml, runner);
  if (started) writeClock(xml, "StartTime", runner.startTime());
  if (finished) writeClock(xml, "FinishTime", runner.finishTime());
  if (started && finished) writeClock(xml, "Time", runner.finishTime() - runner.startTime());
  if (runner.resultPlaceSet()) {
    xml.element("ResultPosition", std::to_string(runner.resultPlace()));
  }
  xml.empty(XmlTag("CompetitorStatus").with("value", iofStatusText(runner.status())));
  if (runner.courseLengthSet()) {
    xml.element(XmlTag("CourseLength").with("unit", "m"), metresText(runner.courseLength()));
  }
  writeSplits(xml, runner.punches(), started ? runner.startTime() : 0);
  xml.close("Result");
}

void writePersonResult(XmlLines& xml, const LRKRunner& runner) {
  xml.open("PersonResult");
  writePerson(xml, runner);
  if (runner.clubSet()) writeClub(xml, runner);
  if (runner.rankingNameSet() || runner.rankingOrganisationIDSet()) writeRank(xml, runner);
  writeResult(xml, runner);
  xml.close("PersonResult");
}

void writeModifyDate(XmlLines& xml, Date modified) {
  xml.open("ModifyDate");
  xml.element(dateTag(), dateText(modified));
  xml.element(clockTag(), clockText(timeOfDay(modified), etstClockTime));
  xml.close("ModifyDate");
}

}  // namespace

std::int32_t writeIofXml2(const LRKEvent& event, ExportFile& file) {
  XmlLines xml(file, form);
  xml.line(R"(<?xml version="1.0" encoding="ISO-8859-1"?>)");
  xml.line(R"(<!DOCTYPE ResultList SYSTEM "IOFdata.dtd">)");
  xml.open(XmlTag("ResultList").with("status", "complete"));
  xml.empty(XmlTag("IOFVersion").with("version", "2.0.3"));
  writeEvent(xml, event);
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.storedCategory(i);
    if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    xml.open("ClassResult");
    xml.element("ClassShortName", category->name());
    for (int k = 0; k < category->noOfRunners(); ++k) writePersonResult(xml, category->runner(k));
    xml.close("ClassResult");
  }
  writeModifyDate(xml, event.lastModified());
  xml.close("ResultList");
  return 0;
}

}  // namespace larkstone
