#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "imported.hpp"

namespace larkstone {
namespace {

using test::categoryNames;
using test::setProperties;
using test::textOf;
using testing::ElementsAre;

std::string list(std::string_view content, std::string_view version = "2.0.3") {
  return "<ResultList><IOFVersion version=\"" + std::string(version) + "\"/>" +
         std::string(content) + "</ResultList>";
}

std::string person(std::string_view result, std::string_view name = "Eva") {
  return "<PersonResult><Person><PersonName><Given>" + std::string(name) +
         "</Given></PersonName></Person><Result>" + std::string(result) +
         "</Result></PersonResult>";
}

std::string split(std::string_view code, std::string_view time) {
  return "<SplitTime><ControlCode>" + std::string(code) + "</ControlCode><Time>" +
         std::string(time) + "</Time></SplitTime>";
}

std::string classOf(std::string_view persons, std::string_view name = "H21") {
  return "<ClassResult><ClassShortName>" + std::string(name) + "</ClassShortName>" +
         std::string(persons) + "</ClassResult>";
}

using IofXml2Test = test::ImportTest;

TEST_F(IofXml2Test, ReadsEveryField) {
  ASSERT_EQ(importXml(R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- a list -->
<!DOCTYPE ResultList SYSTEM "IOFdata.dtd">
<ResultList status="snapshot"><IOFVersion version="2.0.3" />
<Event eventForm="IndMultiDay"><EventId type="nat" idManager="Fed">77</EventId><Name>Vår</Name>
<StartDate><Date>2026-05-03</Date></StartDate><FinishDate><Date>2026-05-04</Date></FinishDate>
<Organiser><Club><ClubId type="loc">5</ClubId><Name>OK Syd</Name><ShortName>Syd</ShortName>
<CountryId value="SWE"/></Club></Organiser></Event>
<ClassResult><EventClass sex="F"><ClassId type="int">3</ClassId><Name>Damer 21</Name>
<ShortName>D21</ShortName></EventClass>
<PersonResult>
<Person sex="F"><PersonName><Family>Öberg</Family><Given sequence="2">Lisa</Given>
<Given sequence="1">Åsa</Given></PersonName><PersonId type="reg" idManager="M">99</PersonId>
<BirthDate><Date dateFormat="YYYY">1987</Date></BirthDate>
<Nationality><CountryId value="NOR"/></Nationality></Person>
<Club><ClubId>12</ClubId><ShortName>Syd</ShortName><Name>OK Syd</Name>
<Country><CountryId value="SWE"/><Name>Sweden</Name></Country></Club>
<Rank><Name>WRE</Name><OrganisationId type="other">8</OrganisationId>
<RankPosition>7</RankPosition><RankValue>12,5</RankValue></Rank>
<Result><CCard><CCardId>123456</CCardId><PunchingUnitType value="si"/></CCard>
<StartTime><Clock>10:00:00</Clock></StartTime><FinishTime><Clock>10:41:00</Clock></FinishTime>
<Time>39:59</Time><CompetitorStatus value="MisPunch"/><TeamSequence>2</TeamSequence>
<CourseVariation><CourseVariationId>1</CourseVariationId><Name>A</Name>
<CourseLength unit="km">5.2</CourseLength></CourseVariation>
<SplitTime sequence="1"><ControlCode>31</ControlCode><Time>1:00</Time></SplitTime>
<SplitTime sequence="2"><ControlCode>32</ControlCode><Time/></SplitTime>
<SplitTime sequence="3"><ControlCode>33</ControlCode><Time>--</Time></SplitTime>
<SplitTime sequence="4"><ControlCode>34</ControlCode><Time>-0:10</Time></SplitTime>
<SplitTime sequence="5"><ControlCode>35</ControlCode><Time>5:30.5</Time></SplitTime>
</Result></PersonResult></ClassResult></ResultList>)"),
            0);
  EXPECT_EQ(event.name(), "Vår");
  EXPECT_EQ(setProperties(event),
            "ID=77 idType=1 IDManager=Fed organiserId=5 organiserIdType=3 organiser=OK Syd "
            "organiserCountryCode=SWE startDate=2026-05-03 endDate=2026-05-04 eventForm=1 "
            "resultListStatus=1 importedFrom=IOF XML 2.0.3 ");
  const auto category = event.category(0);
  EXPECT_EQ(category->name(), "Damer 21");
  EXPECT_EQ(setProperties(*category), "ID=3 idType=0 shortName=D21 gender=2 courseLength=520000 ");
  const LRKRunner& runner = category->runner(0);
  EXPECT_EQ(setProperties(runner),
            "ID=99 idType=2 IDManager=M cCardID=123456 punchingUnitType=SI firstName=Åsa Lisa "
            "lastName=Öberg clubID=12 club=OK Syd clubCountryCode=SWE clubCountry=Sweden "
            "nationalityCode=NOR rankingOrganisationID=8 rankingOrganisationIDType=4 "
            "rankingName=WRE rankingPosition=7 rankingValue=12.5 gender=2 birthDate=1987-01-01 "
            "birthDateFormat=YYYY relayLeg=2 courseName=A courseLength=520000 ");
  EXPECT_EQ(runner.status(), estaMisPunch);
  EXPECT_EQ(textOf(runner.punches()),
            "S 3600000, 31 3606000, 32 -, 33 -, 34 3599000, 35 3633050, F 3839900");
  EXPECT_TRUE(notes.empty());
}

TEST_F(IofXml2Test, ResultsWithHolesGiveARunnerOrNone) {
  const std::string punch = split("31", "1:00");
  struct Row {
    int line;
    std::string result;
    std::string_view punches;  // empty: no runner
    enmStatus status;
  };
  const Row rows[] = {
      {__LINE__, punch, "S 0, 31 6000, F -", estaUnknown},
      {__LINE__, punch + "<StartTime><Clock>10:00:00</Clock></StartTime><Time>2:00</Time>",
       "S 3600000, 31 3606000, F 3612000", estaUnknown},
      {__LINE__, "<StartTime>10:00</StartTime><Time>2:00</Time>" + punch,
       "S 3600000, 31 3606000, F 3612000", estaUnknown},
      {__LINE__,
       "<StartTime><Clock>23:50:00</Clock></StartTime>"
       "<FinishTime><Clock>00:20:00</Clock></FinishTime>" +
           punch,
       "S 8580000, 31 8586000, F 8760000", estaUnknown},
      {__LINE__,
       "<StartTime><Clock>99:99:99</Clock></StartTime>"
       "<FinishTime><Clock>--:--:--</Clock></FinishTime><Time>--:--:--</Time>" +
           punch,
       "S 0, 31 6000, F -", estaUnknown},
      {__LINE__, "<FinishTime><Clock>00:03:00</Clock></FinishTime><Time>-----</Time>" + punch,
       "S 0, 31 6000, F 18000", estaUnknown},
      {__LINE__, "<Time><Clock>00:02:00</Clock></Time>" + punch, "S 0, 31 6000, F 12000",
       estaUnknown},
      {__LINE__, "<SplitTime><Control><ControlCode>40</ControlCode></Control></SplitTime>",
       "S 0, 40 -, F -", estaUnknown},
      {__LINE__, split("100-2", "0:48,1") + split("F1", "13:12.1"), "S 0, 100 4810, 0 79210, F -",
       estaUnknown},
      {__LINE__, split("S1", "1<!-- -->:0<![CDATA[0]]>"), "S 0, 0 6000, F -", estaUnknown},
      {__LINE__, "<CompetitorStatus Value=\"didnotfinish\"/>" + punch, "S 0, 31 6000, F -",
       estaDidNotFinish},
      {__LINE__, "<CompetitorStatus value=\"Gone\"/>" + punch, "S 0, 31 6000, F -", estaOK},
      {__LINE__, "<CompetitorStatus value=\"OK\"/><Time>1:00</Time>", "", estaOK},
      {__LINE__, "", "", estaOK},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const int before = event.noOfCategories();
    EXPECT_EQ(importXml(list(classOf(person(row.result)))), 0);
    if (row.punches.empty()) {
      EXPECT_EQ(event.noOfCategories(), before);
      continue;
    }
    ASSERT_EQ(event.noOfCategories(), before + 1);
    EXPECT_EQ(textOf(runner(before, 0).punches()), row.punches);
    EXPECT_EQ(runner(before, 0).status(), row.status);
  }
}

TEST_F(IofXml2Test, EmptyAndAbsentElementsSetNothing) {
  ASSERT_EQ(importXml(list("<Event><EventId type=\"int\"/></Event>" +
                           classOf("<PersonResult><PersonId>x5</PersonId><Person><Club>"
                                   "<ClubId type=\"nat\"> </ClubId><ShortName/><Name> </Name>"
                                   "<CountryId value=\"other\"/></Club></Person><Result>"
                                   "<CCardId>0</CCardId><CourseLength>0</CourseLength>" +
                                   split("31", "1:00") + "</Result></PersonResult>"))),
            0);
  EXPECT_EQ(setProperties(runner(0, 0)), "cCardID=0 ");
  EXPECT_EQ(setProperties(*event.category(0)), "shortName=H21 ");
  EXPECT_EQ(setProperties(event), "importedFrom=IOF XML 2.0.3 ");
}

TEST_F(IofXml2Test, CourseLengthsHaveUnits) {
  const auto runnerWith = [](std::string_view length) {
    return person(std::string(length) + split("31", "1:00"));
  };
  ASSERT_EQ(importXml(list(classOf(runnerWith("<CourseLength>5320</CourseLength>") +
                                   runnerWith("<CourseLength unit=\"m\">5'250</CourseLength>") +
                                   runnerWith("<CourseLength unit=\"km\">5,31</CourseLength>") +
                                   runnerWith("")))),
            0);
  const auto category = event.category(0);
  EXPECT_EQ(category->runner(0).courseLength(), 532000);
  EXPECT_EQ(category->runner(1).courseLength(), 525000);
  EXPECT_EQ(category->runner(2).courseLength(), 531000);
  EXPECT_EQ(category->courseLength(), 529000);  // of 529333
}

TEST_F(IofXml2Test, OurOwnListsComeBack) {
  ASSERT_EQ(importXml(list(classOf(
                "<PersonResult><Person sex=\"M\"><PersonName><Family /><Given sequence=\"1\">"
                "Ib Ås</Given></PersonName></Person><Club><Name>OK Syd</Name><ShortName />"
                "<Country><CountryId value=\"other\" /></Country></Club><Result>"
                "<StartTime><Clock clockFormat=\"HH:MM:SS\">10:00:00</Clock></StartTime>"
                "<FinishTime><Clock clockFormat=\"HH:MM:SS\">10:05:00</Clock></FinishTime>"
                "<Time><Clock clockFormat=\"HH:MM:SS\">00:05:00</Clock></Time>"
                "<CompetitorStatus value=\"OK\" />"
                "<SplitTime sequence=\"1\"><ControlCode>31</ControlCode>"
                "<Time timeFormat=\"HH:MM:SS\">00:01:00</Time></SplitTime></Result>"
                "</PersonResult>"))),
            0);
  EXPECT_EQ(setProperties(runner(0, 0)), "firstName=Ib Ås club=OK Syd gender=1 ");
  EXPECT_EQ(textOf(runner(0, 0).punches()), "S 3600000, 31 3606000, F 3630000");
}

TEST_F(IofXml2Test, RacesOfAPersonBecomeCategories) {
  const std::string race = "<RaceResult><Result>" + split("31", "1:00") + "</Result></RaceResult>";
  EXPECT_EQ(importXml(list(classOf("<PersonResult><Result><Time>9:00</Time></Result>" + race +
                                   race + "</PersonResult>" + person(split("32", "1:00"))))),
            0);
  EXPECT_THAT(categoryNames(event), ElementsAre("H21 (1)", "H21 (2)"));
  EXPECT_EQ(event.category(0)->noOfRunners(), 2);
  EXPECT_EQ(event.category(1)->noOfRunners(), 1);
}

TEST_F(IofXml2Test, TeamsAreSkippedAndTold) {
  const std::string team = "<TeamResult><TeamName>Syd 1</TeamName></TeamResult>";
  EXPECT_EQ(
      importXml(list(classOf(team + team, "Relay") + classOf(team + person(split("31", "1:00"))))),
      0);
  EXPECT_THAT(categoryNames(event), ElementsAre("H21"));
  ASSERT_EQ(notes.size(), 3U);
  EXPECT_EQ(notes[1].what, "team result skipped");
  EXPECT_EQ(notes[1].where, "ClassResult \"Relay\", TeamResult 2 \"Syd 1\"");
}

TEST_F(IofXml2Test, UnreadableFieldsAreTold) {
  EXPECT_EQ(
      importXml(list(classOf(person("<CCardId>S-12</CCardId><CompetitorStatus value=\"Gone\"/>"
                                    "<StartTime><Clock>99:99:99</Clock></StartTime>" +
                                        split("F1", "1:00") + split("31", "x"),
                                    "Ada") +
                             person("", "Bea") + "<PersonResult/>"))),
      0);
  EXPECT_THAT(told(), ElementsAre("unreadable card number \"S-12\"", "unknown status \"Gone\"",
                                  "no number in control code \"F1\"", "unreadable split time \"x\"",
                                  "unreadable clock \"99:99:99\"", "no split times", "no result"));
  EXPECT_EQ(notes[0].where, "ClassResult \"H21\", PersonResult 1 \"Ada\"");
  EXPECT_EQ(notes[5].where, "ClassResult \"H21\", PersonResult 2 \"Bea\"");
}

TEST_F(IofXml2Test, MoreThanHalfOfTheNamesBlankIsTold) {
  const std::string runner = person(split("31", "1:00"));
  importer.master("Ann");
  EXPECT_EQ(importXml(list(classOf(runner, "A") + classOf(runner, ""))), 0);
  EXPECT_EQ(importXml(list(classOf(runner, "") + classOf(runner, ""))),
            LRK_IMPORT_IOF_XML_BLANK_NAMES);  // three of four
  EXPECT_THAT(categoryNames(event), ElementsAre("A", "", "", ""));
  EXPECT_EQ(event.lastModifiedBy(), "Ann");
}

TEST_F(IofXml2Test, TheVersionChoosesTheReader) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"<ResultList><IOFVersion version=\"1.0\"/>", "IOF XML 1.0"},
      {"<ResultList><IOFVersion  VERSION='2.0' />", "IOF XML 2.0"},
      {"<ResultList iofVersion='3.1' creator='C'>", "IOFXML3 / C"},
      {"<ResultList IOFVERSION=\"3.0\">", "IOFXML3 / "},
      {"<ResultList version='2.0.3'>", ""},  // no version: refused
      {"<ResultList><IOFVersion/>", ""},
  };
  for (const auto& [start, importedFrom] : rows) {
    SCOPED_TRACE(start);
    event.importedFrom("");
    EXPECT_EQ(importXml(std::string(start) + "<ClassResult/></ResultList>"),
              importedFrom.empty() ? LRK_IMPORT_IOF_XML_INVALID_FORMAT : 0);
    EXPECT_EQ(event.importedFrom(), importedFrom);
  }
}

}  // namespace
}  // namespace larkstone
