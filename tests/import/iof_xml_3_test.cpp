#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "imported.hpp"

namespace larkstone {
namespace {

using test::categoryNames;
using test::setProperties;
using test::textOf;
using testing::ElementsAre;

std::string list(std::string_view content) {
  return "<ResultList xmlns=\"http://www.orienteering.org/datastandard/3.0\" iofVersion=\"3.0\">" +
         std::string(content) + "</ResultList>";
}

std::string classOf(std::string_view persons, std::string_view name = "H21") {
  return "<ClassResult><Class><Name>" + std::string(name) + "</Name></Class>" +
         std::string(persons) + "</ClassResult>";
}

std::string person(std::string_view results, std::string_view name = "Eva") {
  return "<PersonResult><Person><Name><Given>" + std::string(name) + "</Given></Name></Person>" +
         std::string(results) + "</PersonResult>";
}

std::string split(std::string_view code, std::string_view time) {
  return "<SplitTime><ControlCode>" + std::string(code) + "</ControlCode><Time>" +
         std::string(time) + "</Time></SplitTime>";
}

using IofXml3Test = test::ImportTest;

TEST_F(IofXml3Test, ReadsEveryField) {
  ASSERT_EQ(importXml(R"(<?xml version='1.0' encoding='UTF-8' standalone='yes' ?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0"
  creator="Timer 1" status="Delta">
<Event><Id>1</Id><Name>Vår</Name><StartTime><Date>2026-05-03</Date></StartTime>
<EndTime><Date>2026-05-04+02:00</Date></EndTime>
<Organiser><Id type="A">x</Id><Id type="B">5</Id><Name>OK Syd</Name>
<Country code="SWE">Sweden</Country></Organiser></Event>
<ClassResult timeResolution="0.1"><Class sex="M"><Id>3</Id><Name>Herrar 21</Name>
<ShortName>H21</ShortName></Class><Course><Length>5200.4</Length></Course>
<PersonResult><EntryId>9</EntryId>
<Person sex="F"><Id type="IOF">u-1</Id><Id type="QuickEvent">99</Id><Id>7</Id>
<Name><Family>Öberg</Family><Given>Åsa</Given></Name><BirthDate>1987</BirthDate>
<Nationality code="NOR">Norway</Nationality></Person>
<Organisation><Id>12</Id><Name>OK Syd</Name><ShortName>Syd</ShortName>
<Country code="SWE">Sweden</Country></Organisation>
<Result><BibNumber>3</BibNumber><StartTime>2026-05-03T10:00:00.000+02:00</StartTime>
<FinishTime>2026-05-03T11:59:59+02:00</FinishTime><Time>3723.4</Time><Position>1</Position>
<Status>MissingPunch</Status><OverallResult><Time>1</Time><Status>OK</Status></OverallResult>
<Course><Id>4</Id><Name>A</Name><Length>5100</Length></Course>
<SplitTime><ControlCode>31</ControlCode><Time>60,5</Time></SplitTime>
<SplitTime status="Missing"><ControlCode>32</ControlCode></SplitTime>
<SplitTime status="Missing"><ControlCode>33</ControlCode><Time>90</Time></SplitTime>
<SplitTime status="Additional"><ControlCode>34</ControlCode><Time>100</Time></SplitTime>
<SplitTime><ControlCode>35</ControlCode></SplitTime>
<SplitTime><ControlCode>36</ControlCode><Time>3600</Time></SplitTime>
<ControlCard punchingSystem="emit">none</ControlCard><ControlCard>123456</ControlCard>
</Result></PersonResult></ClassResult></ResultList>)"),
            0);
  EXPECT_EQ(event.name(), "Vår");
  EXPECT_EQ(setProperties(event),
            "organiserId=5 organiser=OK Syd organiserCountryCode=SWE organiserCountry=Sweden "
            "startDate=2026-05-03 endDate=2026-05-04 resultListStatus=2 "
            "importedFrom=IOFXML3 / Timer 1 ");
  const auto category = event.category(0);
  EXPECT_EQ(category->name(), "Herrar 21");
  EXPECT_EQ(category->timeAccuracy(), etacTenthsSeconds);
  EXPECT_EQ(setProperties(*category), "ID=3 shortName=H21 gender=1 courseLength=520040 ");
  const LRKRunner& runner = category->runner(0);
  EXPECT_EQ(setProperties(runner),
            "ID=99 cCardID=123456 punchingUnitType=Emit firstName=Åsa lastName=Öberg clubID=12 "
            "club=OK Syd clubCountryCode=SWE clubCountry=Sweden nationalityCode=NOR "
            "nationality=Norway gender=2 birthDate=1987-01-01 birthDateFormat=YYYY courseName=A "
            "courseLength=510000 ");
  EXPECT_EQ(runner.status(), estaMisPunch);
  EXPECT_EQ(textOf(runner.punches()),
            "S 3600000, 31 3606050, 32 -, 33 -, 35 -, 36 3960000, F 3972340");
  EXPECT_EQ(textOf(runner.extraPunches()), "34 3610000");
}

TEST_F(IofXml3Test, ResultsWithHolesGiveARunner) {
  struct Row {
    int line;
    std::string result;  // the Result element
    std::string_view punches;
    enmStatus status;
  };
  const Row rows[] = {
      {__LINE__, "", "S 0, F -", estaUnknown},
      {__LINE__, "<Result/>", "S 0, F -", estaUnknown},
      {__LINE__, "<Result><Time>600</Time><Status>OK</Status></Result>", "S 0, F 60000", estaOK},
      {__LINE__, "<Result><Time>600</Time>" + split("31", "9") + "</Result>",
       "S 0, 31 900, F 60000", estaUnknown},
      {__LINE__, "<Result><StartTime>2026-05-03T23:50</StartTime><Time>1800</Time></Result>",
       "S 8580000, F 8760000", estaUnknown},
      {__LINE__, "<Result><StartTime>10:00:00</StartTime>" + split("31", "60") + "</Result>",
       "S 3600000, 31 3606000, F -", estaUnknown},
      {__LINE__,
       "<Result>" + split("31", "60") +
           "<Time>90</Time>"
           "<StartTime>2026-05-03T10:00:00Z</StartTime></Result>",
       "S 3600000, 31 3606000, F 3609000", estaUnknown},
      {__LINE__,
       "<Result><StartTime>soon</StartTime><Time>x</Time>" + split("x", "y") + "</Result>",
       "S 0, 0 -, F -", estaUnknown},
      {__LINE__, "<Result><Time>-5</Time><Status/></Result>", "S 0, F -", estaUnknown},
      {__LINE__, "<Result><Time>9999999</Time><Status>sportingwithdrawal</Status></Result>",
       "S 0, F -", estaSportWithdr},
      {__LINE__,
       "<Result><StartTime>2026-05-03T10:00:00</StartTime>" + split("31", "150000") + "</Result>",
       "S 3600000, 31 -, F -", estaUnknown},  // beyond the last time of all
      {__LINE__, "<Result>" + split("32740", "5") + split("32760", "6") + "</Result>",
       "S 0, 0 500, 0 600, F -", estaUnknown},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const int index = event.noOfCategories();
    EXPECT_EQ(importXml(list(classOf(person(row.result)))), 0);
    ASSERT_EQ(event.noOfCategories(), index + 1);
    EXPECT_EQ(textOf(runner(index, 0).punches()), row.punches);
    EXPECT_EQ(runner(index, 0).status(), row.status);
  }
}

TEST_F(IofXml3Test, EveryRaceIsACategory) {
  const std::string first = "<Result raceNumber=\"1\"><Time>60</Time></Result>";
  const std::string second = "<Result raceNumber=\"2\"><Time>90</Time></Result>";
  EXPECT_EQ(importXml(list("<ClassResult><Class><Name>D16</Name></Class>"
                           "<Course raceNumber=\"2\"><Length>4000</Length></Course>"
                           "<Course raceNumber=\"1\"><Length>3000</Length></Course>" +
                           person(first + second, "Ada") + person(second, "Bea") +
                           person("", "Cia") + person("<Result/><Result/>", "Dea") +
                           "</ClassResult>" + classOf(person(second)))),
            0);
  EXPECT_THAT(categoryNames(event), ElementsAre("D16 (1)", "D16 (2)", "H21"));
  const auto namesAndFinish = [&](int category) {
    std::string text;
    for (int i = 0; i < event.category(category)->noOfRunners(); ++i) {
      const Time finish = runner(category, i).finishTime();
      text += runner(category, i).name() + (isDisq(finish) ? "- " : std::to_string(finish) + " ");
    }
    return text;
  };
  EXPECT_EQ(namesAndFinish(0), "Ada6000 Cia- Dea- ");
  EXPECT_EQ(namesAndFinish(1), "Ada9000 Bea9000 Dea- ");
  EXPECT_EQ(event.category(0)->courseLength(), 300000);
  EXPECT_EQ(event.category(1)->courseLength(), 400000);
}

TEST_F(IofXml3Test, LegsOfOneNameAreClassesOfTheirOwn) {
  const std::string leg = classOf(person("<Result><Time>60</Time></Result>"), "Men");
  EXPECT_EQ(importXml(list(leg + leg + leg)), 0);
  EXPECT_THAT(categoryNames(event), ElementsAre("Men", "Men", "Men"));
}

TEST_F(IofXml3Test, TimeResolution) {
  const std::pair<std::string, enmTimeAccuracy> rows[] = {
      {"", etacSeconds},
      {"timeResolution='x'", etacSeconds},
      {"timeResolution='0.01'", etacHundredthsSeconds},
      {"timeResolution='0,1'", etacTenthsSeconds},
      {"timeResolution='0.02'", etacTenthsSeconds},
      {"timeResolution='1.0'", etacSeconds},
      {"timeResolution='60'", etacMinutes},
      {"TimeResolution='61'", etacHours},
  };
  for (const auto& [attribute, accuracy] : rows) {
    const int index = event.noOfCategories();
    EXPECT_EQ(importXml(list("<ClassResult " + attribute + "><Class><Name>A</Name></Class>" +
                             person("") + "</ClassResult>")),
              0);
    EXPECT_EQ(event.category(index)->timeAccuracy(), accuracy) << attribute;
  }
}

TEST_F(IofXml3Test, OtherSpellingsOfTheClub) {
  EXPECT_EQ(importXml(list(
                classOf("<PersonResult><Organization><Name>A</Name></Organization></PersonResult>"
                        "<PersonResult><Person><Organisation><Name>B</Name></Organisation></Person>"
                        "</PersonResult><PersonResult><Organisation><Id/><Name/></Organisation>"
                        "</PersonResult>"))),
            0);
  EXPECT_EQ(setProperties(runner(0, 0)) + setProperties(runner(0, 1)), "club=A club=B ");
  EXPECT_EQ(setProperties(runner(0, 2)), "");
}

TEST_F(IofXml3Test, UnreadableFieldsAreTold) {
  EXPECT_EQ(importXml(list(classOf(person("<Result><StartTime>soon</StartTime><Time>x</Time>" +
                                          split("F1", "y") + "</Result>") +
                                   "<TeamResult><Name>Syd 1</Name></TeamResult>"))),
            0);
  EXPECT_THAT(told(), ElementsAre("team result skipped", "unreadable start time \"soon\"",
                                  "unreadable time \"x\"", "no number in control code \"F1\"",
                                  "unreadable split time \"y\""));
  EXPECT_EQ(notes[0].where, "ClassResult \"H21\", TeamResult 1 \"Syd 1\"");
}

}  // namespace
}  // namespace larkstone
