// What the exporter writes, byte by byte.

#include "larkstone/event/export.hpp"

#include <gmock/gmock.h>

#include "larkstone/core/text.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

class ExportTest : public EventTest {
 protected:
  ExportTest() { EXPECT_EQ(event_.createNewEvent(path_), 0); }

  LRKExport exporter_;
  std::string target_ = folder_ + "/target";
};

LRKRunner runnerNamed(const std::string& name) {
  LRKRunner runner;
  runner.name(name);
  return runner;
}

TEST_F(ExportTest, Lrk3HoldsNamesAndLegTimes) {
  event_.name("Vår");
  event_.organiser("OK");
  event_.startDate(Date{46145.75});                              // to the nearest day
  LRKRunner ann = runner("S-31-32-F", {10, 70, 60, 90}, "Ann");  // 32 before 31
  set(ann, {{etagRunnerClub, "A"}, {etagRunnerClubCountryCode, "SWE"}});
  LRKRunner bo = runner("S-F", {0, 1}, "Bo");
  set(bo, {{etagRunnerClubCountryCode, "NOR"}, {etagRunnerClubCountry, "Norge"}});
  LRKCategory men = categoryNamed("H", 0);
  for (const LRKRunner& who : {ann, bo, runnerNamed("Cid")}) men.addRunner(who);
  ASSERT_EQ(event_.addCategory(men), 0);
  ASSERT_EQ(event_.addCategory(categoryNamed(std::string(300, 'x'), 0)), 0);
  ASSERT_EQ(exporter_.exportEventToLRK3(event_, target_), 0);
  // A header of 28 bytes and a table of 16; the block of H is 18 + 24 + 22 + 16 bytes long.
  const std::string header = hex("0D") + "Larkstone 3.0" + hex("07") + "V\xE5r, OK";
  const std::string block = hex("01 48 0300 0300 00000000 00000000 00000000") + hex("0B") +
                            "Ann, A, SWE" + hex("E80300 701700 FFFFFF B80B00") + hex("09") +
                            "Bo, Norge" + hex("000000 640000 FFFFFF FFFFFF") + hex("03") + "Cid" +
                            hex("000000 FFFFFF FFFFFF FFFFFF");
  EXPECT_EQ(bytesOf(target_), header + little(46146, 4) + hex("0200") +
                                  hex("2D000000 50000000 7D000000 04010000") + block + hex("FF") +
                                  std::string(255, 'x') + hex("0000 0000"));
}

// Without an organiser the title is the name, and the event begins on day 0 without a date.
TEST_F(ExportTest, Lrk3OfAnEmptyEvent) {
  event_.name(std::string(300, 'y'));
  ASSERT_EQ(exporter_.exportEventToLRK3(event_, target_), 0);
  EXPECT_EQ(bytesOf(target_),
            hex("0D") + "Larkstone 3.0" + hex("FF") + std::string(255, 'y') + hex("00000000 0000"));
}

// What the host did to the category it was handed and has not stored is not written, and stays.
TEST_F(ExportTest, HoldsWhatIsStored) {
  for (const char* name : {"A", "B"}) ASSERT_EQ(event_.addCategory(categoryNamed(name, 2)), 0);
  for (const auto method : {&LRKExport::exportEventToLRK3, &LRKExport::exportEventToIOFXML,
                            &LRKExport::exportEventToIOFXML3}) {
    event_.unsetCurrentCategory();
    ASSERT_EQ((exporter_.*method)(event_, target_), 0);
    const std::string stored = bytesOf(target_);
    const std::shared_ptr<LRKCategory> changed = event_.category(0);
    changed->name("Changed");
    changed->addRunner(runnerOn({31, 32, 33}));
    ASSERT_EQ((exporter_.*method)(event_, target_), 0);
    EXPECT_TRUE(bytesOf(target_) == stored);
    EXPECT_EQ(event_.category(0), changed);
    EXPECT_EQ(changed->noOfRunners(), 3);
  }
}

// Without line ends and indentation.
std::string flat(const std::string& xml) {
  std::string text;
  for (const char c : xml) {
    if (c != '\r' && c != '\n' && !(c == ' ' && text.ends_with('>'))) text += c;
  }
  return text;
}

// Elements as they stand in a document, for the width of this page with several in a line.
std::string linesOf(const std::string& elements, const std::string& lineEnd) {
  std::string lines;
  for (const char c : elements) {
    const bool isBreak = (c == ' ' || c == '\n') && lines.ends_with('>');
    lines += isBreak ? lineEnd : std::string(1, c);
  }
  return lines;
}

LRKRunner runnerWithEverything() {
  LRKRunner runner;
  runner.gender(egndUnknown);
  runner.lastName("Öberg");
  runner.ID(99);
  runner.idType(eidtReg);
  runner.birthDate(dateOf({1987, 2, 3}));
  runner.birthDateFormat("D.M.YYYY");
  runner.nationalityCode("");
  runner.nationality("Norge");
  runner.club("A & B");
  runner.clubID(12);
  runner.clubIDManager("M");
  runner.clubCountryCode("SWE");
  runner.rankingName("WRE");
  runner.rankingOrganisationID(8);
  runner.rankingOrganisationIDType(eidtOther);
  runner.rankingPosition(7);
  runner.rankingValue(12.6F);
  runner.cCardID(123456);
  runner.punchingUnitType("EMIT");
  runner.status(estaOK);
  runner.courseLength(520050);
  runner.startTime(3600000);
  runner.punches().add(3606000, 31);
  runner.punches().add(LRK_NO_TIME, 32);
  runner.finishTime(3840099);  // hundredths are cut off
  return runner;
}

// Nobody knows her start, so that her result time is 0 and the best.
LRKRunner runnerWithoutStart() {
  LRKRunner runner = runnerNamed("Eva");
  runner.status(estaDidNotFinish);
  runner.punches().add(6000, 31);
  runner.finishTime(9000);
  return runner;
}

TEST_F(ExportTest, IofXml2HasItsOrderAndForms) {
  event_.eventForm(eefmIndSingleDay);
  event_.ID(7);
  event_.idType(eidtNat);
  event_.IDManager("\"F\" & <G>");
  event_.name("V\x01år <5> \xEF\xBF\xBF€");
  event_.classification(eclfNational);
  event_.startDate(dateOf({2016, 5, 31}));
  event_.endDate(dateOf({2016, 6, 1}));
  event_.organiser("OK Syd");
  event_.organiserId(5);
  event_.organiserCountry("Sverige");
  event_.setPropertyByTag(etagEventLastModified, dateOf({2016, 6, 1}, 3270000), true);
  LRKCategory category = categoryNamed("H<21", 0);
  category.addRunner(runnerWithEverything());
  category.addRunner(runnerWithoutStart());
  ASSERT_EQ(event_.addCategory(category), 0);
  ASSERT_EQ(exporter_.exportEventToIOFXML(event_, target_), 0);
  EXPECT_EQ(
      bytesOf(target_),
      windows1252FromUtf8(linesOf(
          R"(<?xml version="1.0" encoding="ISO-8859-1"?> <!DOCTYPE ResultList SYSTEM "IOFdata.dtd">
<ResultList status="complete"> <IOFVersion version="2.0.3" /> <Event eventForm="IndSingleDay">
<EventId type="nat" idManager="&quot;F&quot; &amp; &lt;G&gt;">7</EventId>
<Name>Vår &lt;5&gt; €</Name> <EventClassificationId>2</EventClassificationId>
<StartDate><Date dateFormat="YYYY-MM-DD">2016-05-31</Date></StartDate>
<FinishDate><Date dateFormat="YYYY-MM-DD">2016-06-01</Date></FinishDate> <Organiser> <Club>
<ClubId>5</ClubId> <Name>OK Syd</Name> <ShortName /> <Country> <CountryId value="other" />
<Name>Sverige</Name> </Country> </Club> </Organiser> </Event> <ClassResult>
<ClassShortName>H&lt;21</ClassShortName> <PersonResult> <Person sex="M"> <PersonName>
<Family>Öberg</Family> <Given sequence="1"></Given> </PersonName> <PersonId type="reg">99</PersonId>
<BirthDate> <Date dateFormat="D.M.YYYY">3.2.1987</Date> </BirthDate> <Nationality> <Country>
<CountryId value="other" /> <Name>Norge</Name> </Country> </Nationality> </Person> <Club>
<ClubId idManager="M">12</ClubId> <Name>A &amp; B</Name> <ShortName /> <Country>
<CountryId value="SWE" /> </Country> </Club> <Rank> <Name>WRE</Name>
<OrganisationId type="other">8</OrganisationId> <RankPosition>7</RankPosition>
<RankValue>12.6</RankValue> </Rank> <Result> <CCard> <CCardId>123456</CCardId>
<PunchingUnitType value="Emit" /> </CCard> <StartTime>
<Clock clockFormat="HH:MM:SS">10:00:00</Clock> </StartTime> <FinishTime>
<Clock clockFormat="HH:MM:SS">10:40:00</Clock> </FinishTime> <Time>
<Clock clockFormat="HH:MM:SS">00:40:00</Clock> </Time> <ResultPosition>2</ResultPosition>
<CompetitorStatus value="OK" /> <CourseLength unit="m">5200.50</CourseLength>
<SplitTime sequence="1"> <ControlCode>31</ControlCode> <Time timeFormat="HH:MM:SS">00:01:00</Time>
</SplitTime> <SplitTime sequence="2"> <ControlCode>32</ControlCode> </SplitTime> </Result>
</PersonResult> <PersonResult> <Person> <PersonName> <Family /> <Given sequence="1">Eva</Given>
</PersonName> </Person> <Result> <FinishTime> <Clock clockFormat="HH:MM:SS">00:01:30</Clock>
</FinishTime> <ResultPosition>1</ResultPosition> <CompetitorStatus value="DidNotFinish" />
<SplitTime sequence="1"> <ControlCode>31</ControlCode> <Time timeFormat="HH:MM:SS">00:01:00</Time>
</SplitTime> </Result> </PersonResult> </ClassResult> <ModifyDate>
<Date dateFormat="YYYY-MM-DD">2016-06-01</Date> <Clock clockFormat="HH:MM:SS">9:05:00</Clock>
</ModifyDate> </ResultList>
)",
          "\r\n")));
}

// A clock that passes midnight, and what is known by other words only.
TEST_F(ExportTest, IofXml3CountsFromTheStart) {
  event_.name("\"V\xE5r\"");  // not UTF-8
  event_.eventDate(dateOf({2026, 12, 31}));
  event_.eventForm(eefmRelay);
  event_.resultListStatus(erlsDelta);
  LRKRunner ann = runnerNamed("Ann");
  set(ann, {{etagRunnerStatus, estaOK}, {etagRunnerClubCountry, "Norge"}});
  ann.courseName("A");
  ann.startTime(8637050);
  ann.punches().add(8638050, 31);
  ann.finishTime(8643075);
  ann.extraPunches().add(8640000, 77);
  LRKRunner bo = runner("S-31-F", {0, -1, 60}, "Bo");
  bo.finishTime(6005);
  set(bo, {{etagRunnerCourseName, "B"}, {etagRunnerCourseLength, 520050}});
  LRKRunner cid = runnerNamed("Cid");
  cid.startTime(0);
  cid.finishTime(LRK_NO_TIME);
  LRKCategory category = categoryNamed("H", 0);
  category.gender(egndMixed);
  category.timeAccuracy(etacHundredthsSeconds);
  for (const LRKRunner& who : {ann, bo, cid}) category.addRunner(who);
  ASSERT_EQ(event_.addCategory(category), 0);
  ASSERT_EQ(exporter_.exportEventToIOFXML3(event_, target_), 0);
  std::string unindented;
  for (const char c : bytesOf(target_)) {
    if (c != ' ' || !unindented.ends_with('\n')) unindented += c;
  }
  EXPECT_EQ(unindented, linesOf(R"(<?xml version="1.0" encoding="UTF-8"?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0" creator="Larkstone" status="Delta">
<Event> <Name>"Vår"</Name> <StartTime> <Date>2026-12-31</Date> </StartTime> <EndTime>
<Date>2026-12-31</Date> </EndTime> <Form>Relay</Form> </Event>
<ClassResult timeResolution="0.01"> <Class sex="B"> <Name>H</Name> </Class> <PersonResult>
<Person> <Name> <Family></Family> <Given>Ann</Given> </Name> </Person> <Organisation> <Name></Name>
<Country code="">Norge</Country> </Organisation> <Result>
<StartTime>2026-12-31T23:59:30.50</StartTime> <FinishTime>2027-01-01T00:00:30.75</FinishTime>
<Time>60.25</Time> <TimeBehind>0.2</TimeBehind> <Position>2</Position> <Status>OK</Status> <Course>
<Name>A</Name> </Course> <SplitTime> <ControlCode>31</ControlCode> <Time>10</Time> </SplitTime>
<SplitTime status="Additional"> <ControlCode>77</ControlCode> <Time>29.5</Time> </SplitTime>
</Result> </PersonResult> <PersonResult> <Person> <Name> <Family></Family> <Given>Bo</Given> </Name>
</Person> <Result> <Time>60.05</Time> <TimeBehind>0</TimeBehind> <Position>1</Position>
<Status>OK</Status> <Course> <Name>B</Name> <Length>5200.5</Length> </Course>
<SplitTime status="Missing"> <ControlCode>31</ControlCode> </SplitTime> </Result> </PersonResult>
<PersonResult> <Person> <Name> <Family></Family> <Given>Cid</Given> </Name> </Person>
</PersonResult> </ClassResult> </ResultList>
)",
                                "\n"));
}

// What is not set is not written, and each thing that is set is written alone.
TEST_F(ExportTest, ElementsOfWhatIsSet) {
  struct Row {
    Properties set;
    const char* of2;
    const char* of3;
  };
  const auto date = dateOf({2026, 5, 3}, 4320000);
  const Row rows[] = {
      {{},
       R"(<ResultList status="complete"><IOFVersion version="2.0.3" /><Event><Name>E</Name>)"
       R"(<EventClassificationId>0</EventClassificationId><StartDate>)"
       R"(<Date dateFormat="YYYY-MM-DD">1899-12-30</Date></StartDate></Event><ClassResult>)"
       R"(<ClassShortName>C</ClassShortName><PersonResult><Person><PersonName><Family />)"
       R"(<Given sequence="1">Eva</Given></PersonName></Person><Result>)"
       R"(<CompetitorStatus value="Unknown" /></Result></PersonResult></ClassResult><ModifyDate>)",
       R"( creator="Larkstone"><Event><Name>E</Name></Event><ClassResult><Class><Name>C</Name>)"
       R"(</Class><PersonResult><Person><Name><Family></Family><Given>Eva</Given></Name></Person>)"
       R"(</PersonResult></ClassResult></ResultList>)"},
      {{{etagRunnerGender, egndFemale}}, R"(<Person sex="F">)", R"(<Person sex="F">)"},
      {{{etagRunnerGender, egndUnknown}}, R"(<Person sex="M">)", "<Person><Name>"},
      {{{etagRunnerFirstName, "Ida"},
        {etagRunnerID, 5},
        {etagRunnerIDManager, "M&"},
        {etagRunnerBirthDate, dateOf({1987, 2, 3})}},
       R"(<Family></Family><Given sequence="1">Ida</Given></PersonName>)"
       R"(<PersonId idManager="M&amp;">5</PersonId><BirthDate><Date>1987-02-03</Date></BirthDate>)",
       R"(<Id type="M&amp;">5</Id><Name><Family></Family><Given>Ida</Given></Name>)"
       "<BirthDate>1987-02-03</BirthDate>"},
      {{{etagRunnerNationalityCode, "NOR"}},
       R"(<Nationality><Country><CountryId value="NOR" /></Country></Nationality></Person>)",
       R"(<Nationality code="NOR"></Nationality></Person>)"},
      {{{etagRunnerNationality, "Norge"}},
       "</PersonName></Person>",
       R"(<Nationality code="">Norge</Nationality>)"},
      {{{etagRunnerClub, "OK"}},
       R"(<Club><Name>OK</Name><ShortName /><Country><CountryId value="other" /></Country></Club>)",
       "<Organisation><Name>OK</Name></Organisation>"},
      {{{etagRunnerClubID, 3}},
       "</Person><Result>",
       "<Organisation><Id>3</Id><Name></Name></Organisation>"},
      {{{etagRunnerRankingName, "W"}}, "<Rank><Name>W</Name></Rank>", "</Person></PersonResult>"},
      {{{etagRunnerRankingOrganisationID, 8}, {etagRunnerRankingPosition, 4}},
       "<Rank><OrganisationId>8</OrganisationId><RankPosition>4</RankPosition></Rank>",
       "</Person></PersonResult>"},
      {{{etagRunnerRankingPosition, 4}, {etagRunnerRankingValue, 1}},
       "</Person><Result>",
       "</Person></PersonResult>"},
      {{{etagRunnerCCardID, 9}},
       "<Result><CCardId>9</CCardId><Comp",
       "<Result><Status>Inactive</Status><ControlCard>9</ControlCard></Result>"},
      {{{etagRunnerPunchingUnitType, "SI"}},
       "<Result><Comp",
       R"(<ControlCard punchingSystem="SI"></ControlCard>)"},
      {{{etagRunnerCourseLength, 4200}},
       R"(<CourseLength unit="m">42</CourseLength></Result>)",
       "<Course><Length>42</Length></Course></Result>"},
      {{{etagCategoryGender, egndFemale}, {etagCategoryID, 4}, {etagCategoryShortName, "c"}},
       "<ClassResult><ClassShortName>C<",
       R"(<Class sex="F"><Id>4</Id><Name>C</Name><ShortName>c</ShortName></Class>)"},
      {{{etagCategoryCourseLength, 420000}},
       "</ClassShortName><PersonResult>",
       "</Class><Course><Length>4200</Length></Course><PersonResult>"},
      {{{etagEventID, 7}, {etagEventClassification, eclfClub}},
       R"(<EventId>7</EventId><Name>E</Name><EventClassificationId>5<)",
       "<Event><Id>7</Id><Name>E</Name><Classification>Club</Classification></Event>"},
      {{{etagEventStartDate, date},
        {etagEventEndDate, date},
        {etagEventOrganiser, "O"},
        {etagEventOrganiserCountryCode, "SWE"}},
       R"(<FinishDate><Date dateFormat="YYYY-MM-DD">2026-05-03</Date></FinishDate><Organiser>)"
       R"(<Club><Name>O</Name><ShortName /><Country><CountryId value="SWE" /></Country></Club>)",
       "<EndTime><Date>2026-05-03</Date><Time>12:00:00</Time></EndTime>"
       R"(<Organiser><Name>O</Name><Country code="SWE"></Country></Organiser></Event>)"},
      {{{etagEventOrganiserId, 5}},
       "</StartDate></Event>",
       "<Organiser><Id>5</Id><Name></Name></Organiser></Event>"},
  };
  for (const Row& row : rows) {
    ASSERT_EQ(event_.createNewEvent(path_, true), 0);
    event_.name("E");
    LRKCategory category = categoryNamed("C", 0);
    category.addRunner(runnerNamed("Eva"));
    category.runner(0).startTime(LRK_NO_TIME);
    category.runner(0).finishTime(LRK_NO_TIME);
    set(event_, row.set);
    set(category, row.set);
    set(category.runner(0), row.set);
    ASSERT_EQ(event_.addCategory(category), 0);
    ASSERT_EQ(exporter_.exportEventToIOFXML(event_, target_), 0);
    EXPECT_THAT(flat(bytesOf(target_)), testing::HasSubstr(row.of2)) << &row - rows;
    ASSERT_EQ(exporter_.exportEventToIOFXML3(event_, target_), 0);
    EXPECT_THAT(flat(bytesOf(target_)), testing::HasSubstr(row.of3)) << &row - rows;
  }
}

// An event file is not written over, whatever it is called.
TEST_F(ExportTest, NoOutputGoesOverItsInput) {
  exporter_.tempFilePath(work_);
  ASSERT_EQ(event_.addCategory(categoryNamed("A")), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  const std::string saved = bytesOf(path_);
  std::filesystem::create_symlink("event.lrk4", folder_ + "/link");
  for (const std::string& name : {path_, folder_ + "/link"}) {
    EXPECT_EQ(exporter_.exportLRK3(path_, name), LRK_FILE_ALREADY_EXISTS) << name;
    EXPECT_EQ(exporter_.exportIOFXML(name, path_), LRK_FILE_ALREADY_EXISTS) << name;
    EXPECT_EQ(exporter_.exportEventToIOFXML3(event_, name), LRK_FILE_ALREADY_EXISTS) << name;
    EXPECT_TRUE(bytesOf(path_) == saved && bytesOf(name) == saved) << name;
  }
}

TEST_F(ExportTest, FailuresLeaveTheTargetAsItIs) {
  std::ofstream(target_) << "before";
  exporter_.tempFilePath(work_);
  EXPECT_EQ(exporter_.exportIOFXML(folder_ + "/none.lrk4", target_), LRK_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(exporter_.exportIOFXML3(target_, target_), LRK_NOT_A_LRK_FILE);
  EXPECT_EQ(exporter_.exportEventToIOFXML3(event_, folder_ + "/no/such"), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(exporter_.exportEventToIOFXML3(event_, "/dev/full"), LRK_COULD_NOT_OPEN_FILE);
  std::filesystem::permissions(target_, std::filesystem::perms::owner_read);
  EXPECT_EQ(exporter_.exportEventToLRK3(event_, target_), LRK_FILE_READONLY);
  EXPECT_EQ(bytesOf(target_), "before");
  std::filesystem::permissions(target_, std::filesystem::perms::owner_all);
  for (const char* name : {"A", "B"}) ASSERT_EQ(event_.addCategory(categoryNamed(name)), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  for (const auto& file : workingFiles()) std::filesystem::resize_file(file, 0);
  EXPECT_EQ(exporter_.exportEventToLRK3(event_, target_), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(exporter_.exportEventToIOFXML(event_, target_), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  event_.closeEvent();
  EXPECT_EQ(exporter_.exportEventToIOFXML(event_, target_), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(bytesOf(target_), "before");
  EXPECT_EQ(filesIn(folder_).size(), 3U);  // event, target, folder for working files
  EXPECT_EQ(exporter_.exportLRK3(path_, target_), 0);
  EXPECT_TRUE(bytesOf(target_).starts_with(hex("0D") + "Larkstone 3.0"));
}

}  // namespace
}  // namespace larkstone::test
