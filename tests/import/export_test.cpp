// Lists of version 3 through the exporter and back.

#include "larkstone/event/export.hpp"

#include <cstdlib>
#include <filesystem>

#include "imported.hpp"

namespace larkstone {
namespace {

using namespace test;

// What individual results do not tell: who ran in which team. Their names are in parts.
void forgetTeams(LRKEvent& event) {
  for (int i = 0; i < event.noOfCategories(); ++i) {
    LRKCategory category = *event.category(i);
    category.noOfRelayLegsSet(false);
    for (int k = 0; k < category.noOfRunners(); ++k) {
      LRKRunner& runner = category.runner(k);
      runner.relayLegSet(false);
      runner.relayTeamSet(false);
      runner.relayTeamIDSet(false);
      if (runner.nameSet()) runner.firstName(runner.name());
    }
    event.category(i, category);
  }
}

class ExportRoundTripTest : public ImportTest {
 protected:
  // Imports what an export of the event gives.
  void roundTrip(LRKEvent& back) {
    const std::string list = folder / "exported.xml";
    ASSERT_EQ(LRKExport().exportEventToIOFXML3(event, list), 0);
    back.tempFilePath(folder.path());
    ASSERT_EQ(back.createNewEvent(folder / "back.lrk4", true), 0);
    EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, back, list), 0);
    back.importedFrom(event.importedFrom());
    // Valid by the schema, where a machine has it.
    const char* const data = std::getenv("LARKSTONE_SHARED_DATA");
    const std::string schema = data == nullptr ? "" : std::string(data) + "/schema/IOF.xsd";
    const std::string check = "xmllint --noout --schema '" + schema + "' " + list + " 2>/dev/null";
    if (!std::filesystem::exists(schema) || std::system("xmllint --version 2>/dev/null") != 0)
      return;
    EXPECT_EQ(std::system(check.c_str()), 0);
  }
};

TEST_F(ExportRoundTripTest, EveryFieldComesBack) {
  const std::string full = R"(<PersonResult><Person sex="F"><Id type="x">99</Id>
<Name><Family>Öberg &lt;&amp;&gt; "x"</Family><Given>Åsa</Given></Name><BirthDate>1987-02-03</BirthDate>
<Nationality code="NOR">Norge</Nationality></Person><Organisation><Id>12</Id><Name>A &amp; 'B'</Name>
<Country code="SWE">Sverige</Country></Organisation><Result><BibNumber>5</BibNumber>
<StartTime>2026-05-03T10:00:00.25</StartTime><Time>2400.75</Time><Status>SportingWithdrawal</Status>
<Course><Name>B</Name><Length>5200.5</Length></Course>
<SplitTime><ControlCode>31</ControlCode><Time>60.07</Time></SplitTime>
<SplitTime status="Missing"><ControlCode>32</ControlCode></SplitTime>
<SplitTime><ControlCode>0</ControlCode><Time>-5</Time></SplitTime>
<SplitTime status="Additional"><ControlCode>77</ControlCode><Time>80</Time></SplitTime>
<SplitTime status="Additional"><ControlCode>78</ControlCode></SplitTime>
<ControlCard punchingSystem="SI">123456</ControlCard></Result></PersonResult>)";
  const std::string scarce = R"(<PersonResult><Person><Name><Given>Bo</Given></Name>
<Nationality code="">Norge</Nationality></Person><Organisation><Id>3</Id></Organisation><Result>
<Status>MissingPunch</Status><SplitTime><ControlCode>31</ControlCode><Time>9</Time></SplitTime>
<ControlCard punchingSystem="Emit"/></Result></PersonResult>)";
  ASSERT_EQ(importXml(R"(<ResultList iofVersion="3.0" status="Snapshot"><Event><Name>Vår</Name>
<StartTime><Date>2026-05-03</Date></StartTime><EndTime><Date>2026-05-04</Date></EndTime>
<Organiser><Id>5</Id><Name>OK</Name><Country code="SWE">Sverige</Country></Organiser></Event>
<ClassResult timeResolution="0.1"><Class sex="B"><Id>3</Id><Name>Damer</Name><ShortName>D</ShortName></Class>
<Course><Length>4200.25</Length></Course>)" +
                      full + scarce + "</ClassResult>" +
                      class3(person3(element("Result raceNumber='2'", element("Time", "61")) +
                                     element("Result raceNumber='1'", ""))) +
                      "</ResultList>"),
            0);
  // Whose status is not known, and yet has a result.
  LRKCategory second = *event.category(2);
  ASSERT_EQ(second.name(), "H21 (2)");
  second.runner(0).status(estaFinished);
  event.category(2, second);
  LRKEvent back;
  roundTrip(back);
  EXPECT_EQ(described(back), described(event));
  EXPECT_EQ(event.noOfCategories(), 3);
}

TEST_F(ExportRoundTripTest, EveryStatusHasItsWord) {
  LRKCategory category;
  category.name("H21");
  for (int status = estaOK; status <= estaUnknown; ++status) {
    LRKRunner runner;
    runner.firstName("Eva");
    runner.status(static_cast<enmStatus>(status));
    runner.startTime(0);
    runner.finishTime(LRK_NO_TIME);
    category.addRunner(runner);
  }
  LRKRunner runner = category.runner(estaUnknown);
  runner.cCardID(5);
  category.addRunner(runner);
  runner.punches().add(6000, 31);
  category.addRunner(runner);
  runner.finishTime(9000);
  category.addRunner(runner);
  event.addCategory(category);
  LRKEvent back;
  roundTrip(back);
  const auto statuses = back.category(0);
  ASSERT_EQ(statuses->noOfRunners(), estaUnknown + 4);
  for (int i = estaOK; i <= estaUnknown; ++i) EXPECT_EQ(statuses->runner(i).status(), i);
  EXPECT_EQ(statuses->runner(estaUnknown + 1).status(), estaInactive);
  EXPECT_EQ(statuses->runner(estaUnknown + 2).status(), estaActive);
  EXPECT_EQ(statuses->runner(estaUnknown + 3).status(), estaFinished);
}

TEST_F(ExportRoundTripTest, RealListsComeBackUnchanged) {
  const char* const data = std::getenv("LARKSTONE_SHARED_DATA");
  if (data == nullptr) GTEST_SKIP() << "no shared data";
  for (const auto& file : std::filesystem::directory_iterator(std::string(data) + "/iof_xml_3")) {
    SCOPED_TRACE(file.path());
    newEvent();
    EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, file.path().string()), 0);
    forgetTeams(event);
    LRKEvent back;
    roundTrip(back);
    EXPECT_EQ(described(back), described(event));
  }
}

}  // namespace
}  // namespace larkstone
