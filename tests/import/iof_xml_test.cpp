
#include "larkstone/import/readers/iof_values.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

using namespace test;

const std::string punch = split("31", "1:00");

using IofXml2Test = ImportTest;
using IofXml3Test = ImportTest;

TEST_F(IofXml2Test, ReadsEveryField) {
  ASSERT_EQ(importXml(R"(<?xml version="1.0" encoding="UTF-8"?>
<ResultList status="snapshot"><IOFVersion version="2.0.3" /><Event eventForm="IndMultiDay">
<EventId type="nat" idManager="Fed">77</EventId><Name>Vår</Name><StartDate>
<Date dateFormat="MM/DD/YYYY">05/03/2026</Date></StartDate><FinishDate>
<Date>2026-05-04</Date></FinishDate><Organiser><Club><ClubId type="loc">5</ClubId><Name>OK Syd</Name><ShortName>Syd</ShortName>
<CountryId value="SWE"/></Club></Organiser></Event><ClassResult><EventClass sex="F">
<ClassId type="int">3</ClassId><Name>Damer 21</Name><ShortName>D21</ShortName></EventClass>
<PersonResult><Person sex="F"><PersonName><Family>Öberg</Family><Given sequence="2">Lisa</Given>
<Given sequence="1">Åsa</Given></PersonName><PersonId type="reg" idManager="M">99</PersonId>
<BirthDate><Date dateFormat="YYYY">1987</Date></BirthDate><Nationality><CountryId value="NOR"/>
</Nationality></Person><Club><ClubId>12</ClubId><ShortName>Syd</ShortName><Name>OK Syd</Name>
<Country><CountryId value="SWE"/><Name>Sweden</Name></Country></Club><Rank><Name>WRE</Name>
<OrganisationId type="other">8</OrganisationId><RankPosition>7</RankPosition>
<RankValue>12,5</RankValue></Rank><Result><CCard><CCardId>123456</CCardId>
<PunchingUnitType value="si"/></CCard><StartTime><Clock>10:00:00</Clock></StartTime><FinishTime>
<Clock>10:41:00</Clock></FinishTime><Time>39:59</Time><CompetitorStatus value="MisPunch"/>
<TeamSequence>2</TeamSequence><CourseVariation><CourseVariationId>1</CourseVariationId>
<Name>A</Name><CourseLength unit="km">5.2</CourseLength></CourseVariation><SplitTime sequence="1">
<ControlCode>31</ControlCode><Time>1:00</Time></SplitTime><SplitTime sequence="5">
<ControlCode>35</ControlCode><Time>5:30.5</Time></SplitTime></Result></PersonResult></ClassResult>
</ResultList>)"),
            0);
  EXPECT_EQ(described(event),
            "Vår|ID=77 idType=1 IDManager=Fed organiserId=5 organiserIdType=3 organiser=OK Syd "
            "organiserCountryCode=SWE startDate=2026-05-03 endDate=2026-05-04 eventForm=1 "
            "resultListStatus=1 importedFrom=IOF XML 2.0.3 \n"
            "Damer 21|ID=3 idType=0 shortName=D21 gender=2 courseLength=520000 \n"
            "ID=99 idType=2 IDManager=M cCardID=123456 punchingUnitType=SI firstName=Åsa Lisa "
            "lastName=Öberg clubID=12 club=OK Syd clubCountryCode=SWE clubCountry=Sweden "
            "nationalityCode=NOR rankingOrganisationID=8 rankingOrganisationIDType=4 "
            "rankingName=WRE rankingPosition=7 rankingValue=12.5 gender=2 birthDate=1987-01-01 "
            "birthDateFormat=YYYY relayLeg=2 courseName=A courseLength=520000 |"
            "S 3600000, 31 3606000, 35 3633050, F 3839900||6\n");
  EXPECT_TRUE(notes.empty());
}

TEST_F(IofXml2Test, ResultsWithHolesGiveARunnerOrNone) {
  const ResultRow rows[] = {
      {punch, "S 0, 31 6000, F -"},
      {element("StartTime", "10:00") + element("Time", "2:00") + punch,
       "S 3600000, 31 3606000, F 3612000"},
      {clock2("StartTime", "23:50:00") + clock2("FinishTime", "00:20:00") + punch,
       "S 8580000, 31 8586000, F 8760000"},
      {clock2("StartTime", "99:99:99") + clock2("FinishTime", "--:--:--") +
           element("Time", "--:--:--") + punch,
       "S 0, 31 6000, F -"},
      {clock2("FinishTime", "00:03:00") + element("Time", "-----") + punch,
       "S 0, 31 6000, F 18000"},
      {clock2("Time", "00:02:00") + punch, "S 0, 31 6000, F 12000"},
      {element("SplitTime", element("Control", element("ControlCode", "40"))), "S 0, 40 -, F -"},
      {element("SplitTime", element("ControlCode", "31") + clock2("Time", "00:01:00")),
       "S 0, 31 6000, F -"},
      {split("100-2", "0:48,1") + split("F1", "13:12.1"), "S 0, 100 4810, 0 79210, F -"},
      {element("StartTime", "10:00") + split("32", "") + split("33", "--") + split("34", "-0:10"),
       "S 3600000, 32 -, 33 -, 34 3599000, F -"},
      {split("S1", "1<!-- -->:0<![CDATA[0]]>"), "S 0, 0 6000, F -"},
      {"<CompetitorStatus Value='didnotfinish'/>" + punch, "S 0, 31 6000, F -", estaDidNotFinish},
      {"<CompetitorStatus value='Gone'/>" + punch, "S 0, 31 6000, F -", estaOK},
      {"<CompetitorStatus value='OK'/>" + element("Time", "1:00"), ""},
      {"", ""},
  };
  checkResults(rows, [](std::string_view result) { return list2(class2(person2(result))); });
}

TEST_F(IofXml2Test, EmptyAndAbsentElementsSetNothing) {
  const std::string result =
      element("Result", "<CCardId>0</CCardId><CourseLength>0</CourseLength>" + punch);
  const std::string club =
      "<ClubId type='nat'> </ClubId><ShortName/><Name> </Name>"
      "<CountryId value='other'/>";
  const std::string empty = "<PersonId>x5</PersonId>" + element("Person", element("Club", club));
  ASSERT_EQ(importXml(list2("<Event><EventId type='int'/></Event>" +
                            class2(element("PersonResult", empty + result)))),
            0);
  EXPECT_EQ(setProperties(runner(0, 0)), "cCardID=0 ");
  EXPECT_EQ(setProperties(*event.category(0)), "shortName=H21 ");
  EXPECT_EQ(setProperties(event), "importedFrom=IOF XML 2.0.3 ");
}

TEST_F(IofXml2Test, CourseLengthsHaveUnitsAndRacesTheirCategories) {
  std::string runners = person2(punch);
  for (const auto& [unit, length] :
       {std::pair{"", "5320"}, {" unit='m'", "5'250"}, {" unit='km'", "5,31"}}) {
    runners += person2(element(std::string("CourseLength") + unit, length) + punch);
  }
  const std::string race = element("RaceResult", element("Result", punch));
  runners += element("PersonResult", element("Result", element("Time", "9:00")) + race + race);
  ASSERT_EQ(importXml(list2(class2(runners))), 0);
  EXPECT_THAT(categoryNames(event), ElementsAre("H21 (1)", "H21 (2)"));
  EXPECT_EQ(event.category(0)->noOfRunners(), 5);
  EXPECT_EQ(event.category(1)->noOfRunners(), 1);
  EXPECT_EQ(runner(0, 1).courseLength(), 532000);
  EXPECT_EQ(runner(0, 2).courseLength(), 525000);
  EXPECT_EQ(runner(0, 3).courseLength(), 531000);
  EXPECT_EQ(event.category(0)->courseLength(), 529000);  // of 529333
}

TEST_F(IofXml2Test, WhatIsLeftOutIsTold) {
  const std::string holes =
      "<CCardId>S-12</CCardId><CompetitorStatus value='Gone'/>" + clock2("StartTime", "99:99:99");
  EXPECT_EQ(importXml(list2(class2(person2(holes + split("F1", "1:00") + split("31", "x"), "Ada") +
                                   person2("", "Bea") + "<PersonResult/>"))),
            0);
  EXPECT_THAT(categoryNames(event), ElementsAre("H21"));
  EXPECT_THAT(told, ElementsAre("unreadable card number \"S-12\"", "unknown status \"Gone\"",
                                "no number in control code \"F1\"", "unreadable split time \"x\"",
                                "unreadable clock \"99:99:99\"", "no split times", "no result"));
  EXPECT_EQ(notes[5].where, "ClassResult \"H21\", PersonResult 2 \"Bea\"");
}

TEST_F(IofXml2Test, MoreThanHalfOfTheNamesBlankIsTold) {
  const std::string runner = person2(punch);
  importer.master("Ann");
  EXPECT_EQ(importXml(list2(class2(runner, "A") + class2(runner, ""))), 0);
  EXPECT_EQ(importXml(list2(class2(runner, "") + class2(runner, ""))),
            LRK_IMPORT_IOF_XML_BLANK_NAMES);  // three of four
  EXPECT_THAT(categoryNames(event), ElementsAre("A", "", "", ""));
  EXPECT_EQ(event.lastModifiedBy(), "Ann");
  newEvent();
  // The later version has no such code, and a short name that does as well.
  EXPECT_EQ(importXml(list3(
                class3("<PersonResult/>", "") +
                element("ClassResult", "<Class><ShortName>K</ShortName></Class>" + person3("")))),
            0);
  EXPECT_THAT(categoryNames(event), ElementsAre("", "K"));
  newEvent();
  const std::string relay = class2(element("TeamResult", runner), "");
  EXPECT_EQ(importXml(list2(class2(runner, "A") + relay)), 0);  // one of two
  EXPECT_EQ(event.noOfCategories(), 3);
}

TEST_F(IofXml2Test, TheVersionChoosesTheReader) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"<ResultList><IOFVersion version=\"1.0\"/>", "IOF XML 1.0"},
      {"<ResultList><iofversion  VERSION='2.0' />", "IOF XML 2.0"},
      {"<ResultList IOFVERSION='3.0' creator='C'>", "IOFXML3 / C"},
      {"<ResultList iofVersion='3.1' creator='C'>", "IOFXML3 / C"},
      {"<ResultList version='2.0.3'>", ""},  // no version: refused
  };
  for (const auto& [start, importedFrom] : rows) {
    event.importedFrom("");
    EXPECT_EQ(importXml(std::string(start) + "<ClassResult/></ResultList>"),
              importedFrom.empty() ? LRK_IMPORT_IOF_XML_INVALID_FORMAT : 0);
    EXPECT_EQ(event.importedFrom(), importedFrom) << start;
  }
}

TEST_F(IofXml3Test, ReadsEveryField) {
  ASSERT_EQ(importXml(R"(<?xml version='1.0' encoding='UTF-8' standalone='yes' ?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0"
creator="Timer 1" status="Delta"><Event><Id>1</Id><Name>Vår</Name><StartTime>
<Date>2026-05-03</Date></StartTime><EndTime><Date>2026-05-04+02:00</Date></EndTime><Organiser>
<Id type="A">x</Id><Id type="B">5</Id><Name>OK Syd</Name><Country code="SWE">Sweden</Country>
</Organiser></Event><ClassResult timeResolution="0.1"><Class sex="M"><Id>3</Id>
<Name>Herrar 21</Name><ShortName>H21</ShortName></Class><Course><Length>5200.4</Length></Course>
<PersonResult><EntryId>9</EntryId><Person sex="F"><Id type="IOF">u-1</Id>
<Id type="QuickEvent">99</Id><Id>7</Id><Name><Family>Öberg</Family><Given>Åsa</Given></Name>
<BirthDate>1987</BirthDate><Nationality code="NOR">Norway</Nationality></Person><Organization>
<Id>12</Id><Name>OK Syd</Name><ShortName>Syd</ShortName><Country code="SWE">Sweden</Country>
</Organization><Result><BibNumber>3</BibNumber>
<StartTime>2026-05-03T10:00:00.000+02:00</StartTime>
<FinishTime>2026-05-03T11:59:59+02:00</FinishTime><Time>3723.4</Time><Position>1</Position>
<Status>MissingPunch</Status><OverallResult><Time>1</Time><Status>OK</Status></OverallResult>
<Course><Id>4</Id><Name>A</Name><Length>5100</Length></Course><SplitTime>
<ControlCode>31</ControlCode><Time>60,5</Time></SplitTime><SplitTime status="Missing">
<ControlCode>32</ControlCode></SplitTime><SplitTime status="Missing"><ControlCode>33</ControlCode>
<Time>90</Time></SplitTime><SplitTime status="Additional"><ControlCode>34</ControlCode>
<Time>100</Time></SplitTime><SplitTime><ControlCode>35</ControlCode></SplitTime><SplitTime>
<ControlCode>36</ControlCode><Time>3600</Time></SplitTime>
<ControlCard punchingSystem="emit">none</ControlCard><ControlCard>123456</ControlCard></Result>
</PersonResult></ClassResult></ResultList>)"),
            0);
  EXPECT_EQ(described(event),
            "Vår|organiserId=5 organiser=OK Syd organiserCountryCode=SWE organiserCountry=Sweden "
            "startDate=2026-05-03 endDate=2026-05-04 resultListStatus=2 "
            "importedFrom=IOFXML3 / Timer 1 \n"
            "Herrar 21|ID=3 shortName=H21 gender=1 courseLength=520040 \n"
            "ID=99 cCardID=123456 punchingUnitType=Emit firstName=Åsa lastName=Öberg clubID=12 "
            "club=OK Syd clubCountryCode=SWE clubCountry=Sweden nationalityCode=NOR "
            "nationality=Norway gender=2 birthDate=1987-01-01 birthDateFormat=YYYY courseName=A "
            "courseLength=510000 |S 3600000, 31 3606050, 32 -, 33 -, 35 -, 36 3960000, F 3972340|"
            "34 3610000|6\n");
  EXPECT_EQ(event.category(0)->timeAccuracy(), etacTenthsSeconds);
}

TEST_F(IofXml3Test, ResultsWithHolesGiveARunner) {
  const std::string start = element("StartTime", "2026-05-03T10:00:00Z");
  const ResultRow rows[] = {
      {"", "S -, F -"},
      {split("31", "60"), "S -, 31 -, F -"},
      {element("Time", "600") + element("Status", "OK"), "S 0, F 60000", estaOK},
      {element("StartTime", "2026-05-03T23:50") + element("Time", "1800"), "S 8580000, F 8760000"},
      {split("31", "60") + element("Time", "90") + start, "S 3600000, 31 3606000, F 3609000"},
      {element("StartTime", "soon") + element("Time", "x") + split("x", "-5"), "S -, 0 -, F -"},
      {element("Time", "-5") + element("Status", "sportingwithdrawal"), "S -, F -",
       estaSportWithdr},
      {element("Time", "9999999") + "<Status/>", "S -, F -"},
      {start + split("31", "150000"), "S 3600000, 31 -, F -"},  // beyond the last time of all
      {element("Time", "9") + split("32740", "5") + split("32760", "6"),
       "S 0, 0 500, 0 600, F 900"},
  };
  checkResults(rows, [](std::string_view result) {
    return list3(class3(person3(element("Result", result))));
  });
}

TEST_F(IofXml3Test, PersonsAndClubsStandBeforeOrBehindTheirResults) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"PpOoR1", "p o 1"},
      {"R1OoPp", "p o 1"},
      {"PpR1Oo", "p o 1"},
      {"OoPpR1PqR2", "p o 1, q o 2"},
      {"PpR1OoPqR2Ou", "p o 1, q u 2"},
      {"PpOoR1OuPqR2", "p o 1, q u 2"},
      {"R1PpOoR2R3PqOu", "p o 1, q u 2, q u 3"},
  };
  for (const auto& [order, read] : rows) {
    std::string content;
    for (std::size_t i = 0; i < order.size(); i += 2) {
      const std::string_view text = order.substr(i + 1, 1);
      const std::string name = element("Name", order[i] == 'P' ? element("Given", text) : text);
      content += order[i] == 'P'   ? element("Person", name)
                 : order[i] == 'O' ? element("Organisation", name)
                                   : element("Result raceNumber='1'", element("Time", text));
    }
    newEvent();
    ASSERT_EQ(importXml(list3(class3(element("PersonResult", content)))), 0);
    std::string found;
    for (int i = 0; i < event.category(0)->noOfRunners(); ++i) {
      found += (i > 0 ? ", " : "") + runner(0, i).name() + ' ' + runner(0, i).club() + ' ' +
               std::to_string(runner(0, i).finishTime() / 100);
    }
    EXPECT_EQ(found, read) << order;
  }
}

TEST_F(IofXml3Test, ControlsListedByCodeStandInTheOrderOfTheirTimes) {
  // Of each runner, times of the controls from 31 on; "---" for none.
  const auto orders = [&](std::initializer_list<std::string_view> runners) {
    std::string persons;
    for (std::string_view times : runners) {
      std::string result = element("Time", "900");
      for (int code = 31; times.size() >= 3; ++code) {
        const std::string_view time = times.substr(0, 3);
        result += split(std::to_string(code), time == "---" ? "" : time);
        times.remove_prefix(std::min<std::size_t>(4, times.size()));
      }
      persons += person3(element("Result", result));
    }
    newEvent();
    EXPECT_EQ(importXml(list3(class3(persons))), 0);
    std::string text;
    for (int i = 0; i < event.category(0)->noOfRunners(); ++i) {
      text += runner(0, i).punches().codesToString("S", "F", "", ecscDefault, " ") + ';';
    }
    return text;
  };
  // On average 31 is passed after 275 seconds, 32 after 95, 33 after 150 and 34 after 200; nobody
  // has a time for 35.
  EXPECT_EQ(orders({"300 100 --- 200 ---", "250 090 150 ---"}),
            "S 32 33 34 31 35 F;S 32 33 34 31 F;");
  EXPECT_EQ(textOf(runner(0, 0).punches()),
            "S 0, 32 10000, 33 -, 34 20000, 31 30000, 35 -, F 90000");
  EXPECT_THAT(told, ElementsAre("controls listed by code, put in the order of their times"));
  // Half of those who passed both; one clock of three may be wrong.
  EXPECT_EQ(orders({"200 100", "100 300", "---"}), "S 32 31 F;S 31 32 F;S 31 F;");
  EXPECT_EQ(orders({"200 100", "100 300", "100 200"}), "S 31 32 F;S 31 32 F;S 31 32 F;");
  EXPECT_EQ(orders({"100 --- 100", "--- 100"}), "S 31 32 33 F;S 31 32 F;");
  EXPECT_EQ(told.size(), 2U);
  newEvent();
  const std::string byTime = split("31", "2:00") + split("32", "1:00");
  EXPECT_EQ(importXml(list2(class2(person2(byTime), "A") +
                            class2(person2(byTime) + person2(byTime + punch), "B"))),
            0);
  EXPECT_EQ(textOf(runner(0, 0).punches()), "S 0, 32 6000, 31 12000, F -");
  EXPECT_EQ(textOf(runner(1, 0).punches()), "S 0, 31 12000, 32 6000, F -");  // a course of its own
}

TEST_F(IofXml3Test, EveryRaceIsACategory) {
  const std::string first = element("Result raceNumber='1'", element("Time", "60"));
  const std::string second = element("Result raceNumber='2'", element("Time", "90"));
  const std::string courses = element("Course raceNumber='2'", element("Length", "4000")) +
                              element("Course raceNumber='1'", element("Length", "3000"));
  const std::string other = class3(person3(second));
  EXPECT_EQ(
      importXml(list3(class3(courses + person3(first + second, "Ada") + person3(second, "Bea") +
                                 person3("", "Cia") + person3("<Result/><Result/>", "Dea"),
                             "D16") +
                      other + other)),
      0);
  // Classes of one name stand on their own: legs of a relay.
  EXPECT_THAT(categoryNames(event), ElementsAre("D16 (1)", "D16 (2)", "H21", "H21"));
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

TEST_F(IofXml3Test, TimeResolution) {
  const std::pair<std::string, enmTimeAccuracy> rows[] = {
      {"x", etacSeconds},          {"0.01", etacHundredthsSeconds},
      {"0.02", etacTenthsSeconds}, {"1.0", etacSeconds},
      {"60", etacMinutes},         {"61", etacHours},
  };
  const std::string content = element("Class", element("Name", "A")) + person3("");
  for (const auto& [text, accuracy] : rows) {
    const std::string name = "ClassResult timeResolution='" + text + "'";
    EXPECT_EQ(importXml(list3(element(name, content))), 0);
    EXPECT_EQ(lastCategory()->timeAccuracy(), accuracy) << text;
  }
}

constexpr Time none = LRK_NO_TIME;

struct ValueRow {
  std::string_view text;
  Time value;
};
template <std::size_t n>
void check(Time (*read)(std::string_view), const ValueRow (&rows)[n]) {
  for (const ValueRow& row : rows) EXPECT_EQ(read(row.text), row.value) << row.text;
}

TEST(IofValuesTest, TimesAndCodes) {
  const ValueRow running[] = {
      {"1:02:03.4", 372340}, {"13:12.345", 79235}, {"0:59.999", 6000}, {"62.03", 372300},
      {"- 1:00", -6000},     {"- -5", none},       {"mp", none},
  };
  check(runningTimeOf, running);
  const ValueRow clocks[] = {
      {"9", 3240000},        {"10:00:00,25", 3600025}, {"10:00:00.128", 3600013},
      {"24:10:00", 8700000}, {"soon", none},
  };
  check(clockTimeOf, clocks);
  const ValueRow timesOfDay[] = {
      {"T10:00:00.256Z", 3600026}, {"t10:00:00,5-11:30", 3600050}, {"3 23:59:59.996", 8640000},
      {"T11:21Z", 4086000},        {"2026-05-03", none},           {"T25:00:00", none},
      {"T10:60:00", none},         {"T10:00:00 a.m.", none},
  };
  check(timeOfDayOf, timesOfDay);
  // Halves of hundredths go to the even neighbour.
  const ValueRow seconds[] = {
      {"0.29", 29},         {"0.125", 12},    {"0.375", 38},
      {"167772", 16777200}, {"167773", none}, {"99999999999999", none},
      {"1:00", -1},         {"12s", -1},
  };
  check([](std::string_view text) { return secondsOf(text).value_or(-1); }, seconds);
  const ValueRow codes[] = {
      {"1\"", 1}, {"-5", 0}, {"32735", 32735}, {"32736", 0}, {"65567", 0}, {"99999999999", 0},
  };
  check([](std::string_view text) { return Time{controlCodeOf(text)}; }, codes);
}

TEST(IofValuesTest, Dates) {
  const std::string_view rows[][3] = {
      {"2026-05-03T10:00:00", "", "2026-05-03"},  {"03.05.1998", "DD.MM.YYYY", "1998-05-03"},
      {"05/03/1998", "MM/DD/YYYY", "1998-05-03"}, {"3.5.1998", "", "1998-05-03"},
      {"1998-05-03", "DD.MM.YYYY", "1998-05-03"}, {"1998-02-30", "", ""},
  };
  for (const auto& [text, format, iso] : rows) {
    const auto date = dateOf(text, format);
    EXPECT_EQ(date ? toIsoText(*date) : "", iso) << text;
  }
}

TEST(IofValuesTest, NumbersAreWholeAndFitThirtyTwoBits) {
  EXPECT_EQ(integerOf("-2147483648"), std::numeric_limits<std::int32_t>::min());
  for (const std::string_view text : {"", "-", "2147483648", "12345678901", "1.0", "a1f1", " 5"}) {
    EXPECT_EQ(integerOf(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace larkstone
