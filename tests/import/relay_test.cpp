// Relays: the categories they are taken apart into, and the lists they come from.

#include "larkstone/core/text.hpp"

#include "imported.hpp"
#include "treated_pages.hpp"

namespace larkstone {
namespace {

using namespace test;

class RelayTest : public ImportTest {
 protected:
  // "A 0 1: S 0, 31 6000, F -": name, status, place and punches of every runner.
  std::vector<std::string> runnersOf(int category) {
    std::vector<std::string> texts;
    for (int i = 0; i < event.category(category)->noOfRunners(); ++i) {
      const LRKRunner& who = runner(category, i);
      texts.push_back(who.name() + ' ' + std::to_string(who.status()) + ' ' +
                      std::to_string(who.resultPlace()) + ": " + textOf(who.punches()));
    }
    return texts;
  }
};

// Member of an IOF XML 3.0 team; the splits are pairs "31 100".
std::string member(std::string_view name, int leg, std::string_view start, std::string_view time,
                   std::string_view status = "OK", std::string_view splits = {},
                   const std::string& overall = {}) {
  std::string result = element("Leg", std::to_string(leg)) + element("Status", status);
  if (!start.empty()) result += element("StartTime", start);
  if (!time.empty()) result += element("Time", time);
  for (std::size_t at = 0; at + 6 <= splits.size(); at += 7) {
    result += split(splits.substr(at, 2), splits.substr(at + 3, 3));
  }
  if (!overall.empty()) result += element("OverallResult", overall);
  return element("TeamMemberResult", element("Person", element("Name", element("Given", name))) +
                                         element("Result", result));
}

std::string overall(std::string_view time, std::string_view status, std::string_view place = "") {
  return element("Time", time) + element("Position", place) + element("Status", status);
}

std::string team(std::string_view name, std::string_view members) {
  const std::string club = element("Organisation", element("Name", "OK " + std::string(name)));
  return element("TeamResult", element("Name", name) + club + std::string(members));
}

// Two persons with their results in one element.
std::string together(std::string first, std::string_view second) {
  constexpr std::string_view end = "</TeamMemberResult>";
  constexpr std::string_view begin = "<TeamMemberResult>";
  first.resize(first.size() - end.size());
  return first.append(second.substr(begin.size()));
}

// A has two runners on the second leg, B's second runner mispunches, C has none.
const std::string threeTeams =
    team("A", member("Ada", 1, "10:00:00", "600", "OK", "31 100 32 200 33 300") +
                  member("Aga", 3, "10:20:50", "600", "OK", "", overall("", "OK")) +
                  together(member("Ann", 2, "10:10:00", "700", "OK", "41 100"),
                           member("Asa", 2, "10:10:00", "650", "OK", "41 120"))) +
    team("B", member("Bea", 1, "10:00:00", "610", "OK", "31 110 34 210 33 310") +
                  member("Bo", 2, "10:10:10", "640", "MissingPunch") +
                  member("Bri", 3, "10:20:50", "500", "OK", "", overall("0", "MissingPunch"))) +
    team("C", member("Cia", 1, "10:00:00", "590", "OK", "31 120 32 220 33 320") +
                  member("Cleo", 3, "10:22:00", "660"));

TEST_F(RelayTest, BecomesTeamsAndLegs) {
  ASSERT_EQ(importXml(list3(class3(threeTeams + person3("", "Eva"), "Open"))), 0);
  EXPECT_THAT(categoryNames(event),
              ElementsAre("Open", "Open whole legs", "Open 1 common controls",
                          "Open 2 common controls", "Open 3 common controls"));
  // 10:00:00 is 3600000. The mispunched leg ends for the runner alone, and no time of the team
  // follows from it.
  EXPECT_THAT(runnersOf(1), ElementsAre("A 0 1: S 3600000, 31 3660000, 32 3725000, F 3785000",
                                        "B 6 0: S 3600000, 31 3661000, 32 -, F -",
                                        "C 14 0: S 3600000, 31 3659000, 32 -, F -"));
  EXPECT_THAT(runnersOf(2), ElementsAre("Ada 0 2: S 3600000, 31 3610000, 33 3630000, F 3660000",
                                        "Bea 0 3: S 3600000, 31 3611000, 33 3631000, F 3661000",
                                        "Cia 0 1: S 3600000, 31 3612000, 33 3632000, F 3659000"));
  EXPECT_EQ(textOf(runner(2, 1).extraPunches()), "34 3621000");
  EXPECT_THAT(runnersOf(3), ElementsAre("Ann 0 2: S 3660000, 41 3670000, F 3730000",
                                        "Asa 0 1: S 3660000, 41 3672000, F 3725000",
                                        "Bo 6 0: S 3661000, F 3725000"));
  EXPECT_EQ(setProperties(runner(4, 2)),
            "firstName=Cleo club=OK C relayLeg=3 relayTeamID=3 relayTeam=C ");
  EXPECT_EQ(event.category(1)->noOfRelayLegs(), 3);

  importer.setLocalizedStrings("Staffel", "gemeinsam");
  const std::string list = folder.write("list.xml", list3(class3(threeTeams, "Open")));
  ASSERT_EQ(importer.import_parallel(LRK_IMPORT_XML, event, list, 0, erpmSlowestTime), 0);
  EXPECT_EQ(event.categoryName(5) + ", " + event.categoryName(6), "Open Staffel, Open 1 gemeinsam");
  EXPECT_EQ(runnersOf(5)[0], "A 0 1: S 3600000, 31 3660000, 32 3730000, F 3790000");
}

TEST_F(RelayTest, TeamsHaveTheTimesOfTheList) {
  const auto legs = [](std::string_view time, const std::string& after, std::string_view start,
                       std::string_view last, const std::string& total) {
    return member("One", 1, "10:00:00", time, "OK", "", after) +
           member("Two", 2, start, last, "OK", "", total);
  };
  const std::string unnamed =
      element("TeamResult",
              "<Organisation><Name>OK C</Name></Organisation>" +
                  member("One", 1, "10:00:00", "", "DidNotFinish") +
                  member("Two", 2, "10:50:00", "1600", "OK", "", overall("6000", "DidNotFinish")));
  const std::string teams =
      // A restart, and a penalty of a minute.
      team("A",
           legs("3600", overall("3600", "OK"), "10:50:00", "1500", overall("5160", "OK", "2"))) +
      // Half a minute of penalty on the first leg, a minute of waiting that does not count.
      team("B",
           legs("1800", overall("1830", "OK"), "10:31:00", "3000", overall("4800", "OK", "1"))) +
      unnamed + team("D", member("Two", 2, "10:40:00", "1500", "OK", "", overall("3900", "OK"))) +
      // Nothing is told: the members' own times.
      team("E", legs("2000", "", "10:50:00", "1000", ""));
  ASSERT_EQ(importXml(list3(class3(teams, "Open"))), 0);
  EXPECT_THAT(
      runnersOf(0),
      ElementsAre("A 0 4: S 3600000, 31 3960000, F 4116000",
                  "B 0 3: S 3600000, 31 3783000, F 4080000", "OK C 7 0: S 3600000, 31 -, F 4200000",
                  "D 0 2: S 3840000, 31 -, F 4230000", "E 0 1: S 3600000, 31 3800000, F 3900000"));
  EXPECT_EQ(runner(2, 2).relayTeam() + ' ' + textOf(runner(2, 0).punches()),
            "OK C S 3900000, F 4050000");
  EXPECT_THAT(told, ElementsAre("the list places teams otherwise than their times \"A\""));
}

TEST_F(RelayTest, LegsInClassResultsOfTheirOwnAreOneRelay) {
  // Splits of later legs count from the start of the relay, as the runner who has finished shows.
  const auto leg = [](int number, std::string_view start, std::string_view splits,
                      const std::string& more = "") {
    return class3(more + team("A", member("Ada", number, start, "600", "OK", splits)) +
                      team("B", member("Bea", number, start, "", "OK", splits)),
                  "Open");
  };
  const std::string first = leg(1, "2026-05-03T23:50:00Z", "31 100");
  const std::string second =
      leg(2, "2026-05-04T00:00:00Z", "32 700",
          team("C", member("Cia", 2, "2026-05-04T00:00:00Z", "600", "OK", "32 800")));
  ASSERT_EQ(importXml(list3(first + second)), 0);
  EXPECT_THAT(categoryNames(event),
              ElementsAre("Open whole legs", "Open 1 common controls", "Open 2 common controls"));
  EXPECT_THAT(runnersOf(0),
              ElementsAre("A 0 1: S 8580000, 31 8640000, F 8700000", "B 0 0: S 8580000, 31 -, F -",
                          "C 14 0: S 8640000, 31 -, F -"));
  EXPECT_THAT(runnersOf(2), ElementsAre("Ada 0 1: S 8640000, 32 8650000, F 8700000",
                                        "Bea 0 0: S 8640000, 32 8650000, F -",
                                        "Cia 0 1: S 8640000, 32 8660000, F 8700000"));
  // The same leg twice, or other teams, are relays of their own.
  ASSERT_EQ(importXml(list3(first + first + class3(team("D", member("Di", 2, "", "9")), "Open"))),
            0);
  EXPECT_EQ(event.noOfCategories(), 3 + 2 + 2 + 2);
}

TEST_F(RelayTest, VersionTwoTellsOfLegsByOrder) {
  const std::string ok = "<CompetitorStatus value='OK'/>";
  const std::string start = clock2("StartTime", "10:00:00");
  const std::string members =
      person2(ok + element("Time", "27:00") + split("31", "2:00"), "Ada") +
      person2(ok + element("Time", "28:00"), "Aga") +
      person2(ok + "<TeamSequence>2</TeamSequence><Time>29:00</Time>", "Ann");
  const std::string teams =
      element("TeamResult", "<TeamName>A</TeamName><CountryId value='SUI'/>" + start +
                                "<Time>56:30</Time><ResultPosition>1</ResultPosition>"
                                "<TeamStatus value='OK'/>" +
                                members) +
      // The total is that between the clocks, though nobody finished.
      element("TeamResult",
              start + clock2("FinishTime", "11:10:00") + "<Club><Name>C</Name></Club>" +
                  person2("<CompetitorStatus value='MisPunch'/><Time>27:00</Time>", "Cia")) +
      element("TeamResult", "<TeamName>B</TeamName>" + clock2("FinishTime", "11:00:00"));
  ASSERT_EQ(importXml(list2(class2(teams, "Men"))), 0);
  // Starts that are not told follow from the team's start and the leg before.
  EXPECT_THAT(runnersOf(0),
              ElementsAre("A 0 1: S 3600000, 31 3762000, F 3939000",
                          "C 6 0: S 3600000, 31 -, F 4020000", "B 14 0: S 0, 31 -, F 3960000"));
  EXPECT_EQ(runner(0, 0).clubCountryCode(), "SUI");
  EXPECT_EQ(runnersOf(1)[0], "Ada 0 1: S 3600000, 31 3612000, F 3762000");
  EXPECT_TRUE(told.empty());
  EXPECT_THAT(runnersOf(2),
              ElementsAre("Aga 0 1: S 3762000, F 3930000", "Ann 0 2: S 3762000, F 3936000"));
}

TEST_F(RelayTest, LegsBeyondAnyRelayAreToldOf) {
  const std::string members =
      member("Ada", 2147483647, "", "9") + "<TeamMemberResult><Result/></TeamMemberResult>";
  ASSERT_EQ(importXml(list3(class3(team("A", members)))), 0);
  EXPECT_THAT(categoryNames(event), ElementsAre("H21 whole legs"));
  EXPECT_THAT(told, ElementsAre("no relay leg \"2147483647\"", "no relay leg"));
}

// A relay category that a host has put together.
LRKCategory relayOf(
    std::initializer_list<std::tuple<const char*, int, Time, Time, enmStatus>> runners) {
  LRKCategory category;
  category.name("Open");
  category.extraInfo("teamResults");
  for (const auto& [key, leg, start, finish, status] : runners) {
    LRKRunner runner;
    runner.name(key);
    runner.extraInfo(key);
    if (leg != 0) runner.relayLeg(static_cast<std::int16_t>(leg));
    runner.startTime(start);
    runner.finishTime(finish);
    runner.status(status);
    category.addRunner(runner);
  }
  return category;
}

TEST_F(RelayTest, HostsHandOverCategories) {
  for (const char* const name : {"A", "B", "C"}) {
    LRKCategory category;
    category.name(name);
    event.addCategory(category);
  }
  // Nobody's teams, keys that are none, legs that are none; a leg before the start is on the next
  // day, leg 255 the last there is.
  LRKCategory relay = relayOf({{"runner_7", 1, 8000000, 8100000, estaOK},
                               {"team_7", 0, 0, 0, estaOK},
                               {"runner_7", 2, 100000, 200000, estaOK},
                               {"runner_7", 2, 100000, 150000, estaDisqualified},
                               {"runner_8", 255, 100, 200, estaOK},
                               {"team_9", 0, 0, 0, estaUnknown},
                               {"runner_9", 1, 7000000, 7100000, estaMisPunch},
                               {"runner_0_9", 2, 7200000, 7300000, estaOK},
                               {"runner_7", 256, 100, 200, estaOK},
                               {"runner_7", 0, 100, 200, estaOK},
                               {"team_", 0, 0, 0, estaOK},
                               {"runner_7x", 1, 0, 0, estaOK},
                               {"Eva", 1, 0, 0, estaOK}});
  event.category(1, relay);
  event.moveCategory(1, 0);
  relay = *event.category(0);
  ASSERT_EQ(importer.createRelayResults(event, relay, true, erpmSlowestTime), 0);
  EXPECT_THAT(categoryNames(event),
              ElementsAre("Open whole legs", "Open 1 common controls", "Open 2 common controls",
                          "Open 255 common controls", "A", "C"));
  EXPECT_EQ(relay.name(), "Open whole legs");
  EXPECT_EQ(relay.categoryIndex(), 0);
  const LRKPunches& punches = runner(0, 0).punches();
  EXPECT_EQ(punches.count(), 256);
  EXPECT_EQ(punches.time(2), 8200000);  // each leg took 100000
  EXPECT_EQ(punches.code(254), 30 + 254);
  // Who is not OK is left out, but his team started with him.
  EXPECT_THAT(runnersOf(2), ElementsAre("runner_7 0 1: S 8740000, F 8840000",
                                        "runner_0_9 0 1: S 7200000, F 7300000"));
  EXPECT_EQ(runner(0, 1).startTime(), 7000000);
  EXPECT_EQ(runner(0, 1).status(), estaMisPunch);
  EXPECT_EQ(setProperties(runner(3, 0)), "name=runner_8 relayLeg=255 relayTeamID=8 ");

  LRKCategory none = relayOf({{"Eva", 1, 0, 0, estaOK}});
  EXPECT_EQ(importer.createRelayResults(event, none, false, erpmFastestTime), 0);
  EXPECT_EQ(event.noOfCategories(), 6);
}

TEST_F(RelayTest, AnEventThatTakesNoMoreStaysAsItWas) {
  LRKCategory relay = relayOf({{"team_1", 0, 0, 0, estaOK}, {"runner_1", 1, 0, 9, estaOK}});
  LRKCategory filler;
  filler.name("F");
  while (event.addCategory(filler) == 0) {
  }
  event.deleteCategory(0);
  const int full = event.noOfCategories();
  EXPECT_EQ(importer.createRelayResults(event, relay, false, erpmFastestTime),
            256 + LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(relay.name(), "Open");
  EXPECT_EQ(importXml(list3(class3(threeTeams, "Open"))), 256 + LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event.noOfCategories(), full);
  const std::int32_t code = importXml(list3(class3(person3("")) + class3(person3(""))));
  EXPECT_NE(importText(code).find("4095"), std::string::npos);
  EXPECT_EQ(event.noOfCategories(), 4095);  // with the first of the two
}

TEST_F(RelayTest, CommonControlsAreThoseOfAllForkings) {
  struct Row {
    // Of the runners, "-" before who mispunched, "+" before who has no finish.
    std::initializer_list<std::string_view> courses;
    std::string_view reduced;  // of each
  };
  const Row rows[] = {
      {{"31 32", "31 32"}, "31 32|31 32|"},
      {{"31 32 33", "31 34 33", "-35 33 36"}, "31 33|31 33|33|"},
      {{"-31 32", "-33 32"}, "32|32|"},
      {{"50 11 50 12 50", "50 12 50 11 50"}, "50 50 50|50 50 50|"},
      // Loops that all run alike are no forking.
      {{"31 40 41 40 42 43 33", "32 40 41 40 42 43 33"}, "40 41 40 42 43 33|40 41 40 42 43 33|"},
      {{"31", "32"}, "||"},
      // Without controls or without a finish a runner says nothing.
      {{"31 32", "", "+31", "31 32"}, "31 32||31|31 32|"},
      {{"-31 32", "", "+32"}, "32||32|"},
  };
  for (const Row& row : rows) {
    std::string teams;
    for (std::string_view course : row.courses) {
      const bool mispunched = course.starts_with('-');
      const bool running = course.starts_with('+');
      if (mispunched || running) course.remove_prefix(1);
      std::string splits;
      for (; !course.empty(); course.remove_prefix(std::min<std::size_t>(3, course.size()))) {
        splits += std::string(course.substr(0, 2)) + " 100 ";
      }
      teams += team("T", member("M", 1, "", running ? "" : "900",
                                mispunched ? "MissingPunch" : "OK", splits));
    }
    const int leg = event.noOfCategories() + 1;
    ASSERT_EQ(importXml(list3(class3(teams))), 0);
    std::string reduced;
    for (int i = 0; i < event.category(leg)->noOfRunners(); ++i) {
      const LRKPunches& punches = runner(leg, i).punches();
      for (int k = 1; k < punches.count() - 1; ++k) {
        reduced += (k > 1 ? " " : "") + std::to_string(punches.code(k));
      }
      reduced += '|';
    }
    EXPECT_EQ(reduced, row.reduced);
  }
}

TEST_F(RelayTest, PekkaPirilaIndividual) {
  const auto control = [](int order, std::string_view code, std::string_view time) {
    return element("Control", element("ControlOrder", std::to_string(order)) +
                                  element("CCode", code) + element("ControlTime", time));
  };
  const auto competitor = [](std::string_view name, std::string_view time, std::string_view status,
                             std::string_view controls, std::string_view start = "12:00:00") {
    return element("Competitor",
                   "<ClubID>4</ClubID><ClubName>RR</ClubName><Nationality>FIN</Nationality>" +
                       element("StartTime", start) + std::string(name) + element("Time", time) +
                       element("Status", status) + element("SplitTimes", controls));
  };
  const std::string list = element(
      "Event",
      "<EventName>Kisa</EventName>" +
          element("EventClass",
                  "<ClassName>H21</ClassName><ClassDist>5.2</ClassDist>" +
                      competitor("<Name><Family>Åkk</Family><Given>Ö</Given></Name>", "10.30", "",
                                 control(1, "31", "1.00") + control(3, "33", "3.00") +
                                     control(4, "", "10.30")) +
                      competitor("<Name>B C</Name>", "DNF", "DNF",
                                 control(2, "32", "2.00") + control(1, "31", "1.10")) +
                      competitor("<Name>D</Name>", "11.00", "", control(1, "31", "1.10"), "") +
                      competitor("<Name>E</Name>", "9.00", "", control(1, "31", "1.10"), "-")) +
          "<EventClass><ClassName>D21</ClassName></EventClass>");
  EXPECT_EQ(importAny(list), 0);
  EXPECT_EQ(event.name() + "|" + event.importedFrom(), "Kisa|Pekka Pirilä XML");
  EXPECT_EQ(event.category(0)->courseLength(), 520000);
  EXPECT_EQ(setProperties(runner(0, 0)), "firstName=Ö lastName=Åkk club=RR nationality=FIN ");
  // Gaps are filled from others on the same course; the finish is no control.
  EXPECT_THAT(
      runnersOf(0),
      ElementsAre("Ö Åkk 0 1: S 4320000, 31 4326000, 32 -, 33 4338000, F 4383000",
                  "B C 7 0: S 4320000, 31 4327000, 32 4332000, 33 -, F -",
                  "D 0 2: S 0, 31 7000, 32 -, 33 -, F 66000", "E 0 0: S -, 31 -, 32 -, 33 -, F -"));
  EXPECT_THAT(categoryNames(event), ElementsAre("H21", "D21"));
  const auto classWith = [&](const std::string& content) {
    const std::string one = element("Event", element("EventClass", content));
    EXPECT_EQ(importer.importPekkaPirilaXML(event, folder.write("1.xml", one)), 0);
    return lastCategory();
  };
  const std::pair<std::string_view, Length> lengths[] = {
      {"5200", 520000},   {"7", 700000},     {"7.2km", 720000},   {"6,05", 605000}, {"80 m", 8000},
      {"5200.0", 520000}, {"5'200", 520000}, {"5 200 m", 520000}, {"x", 0},         {"", 0}};
  for (const auto& [text, length] : lengths) {
    EXPECT_EQ(classWith(element("ClassDist", text))->courseLength(), length) << text;
  }
  const std::pair<std::string_view, enmStatus> words[] = {
      {"dq", estaDisqualified},
      {"Dns", estaDidNotStart},
      {"MIS", estaMisPunch},
      {"Kesk", estaDidNotFinish},
      {"", estaOK},
      {"??", estaUnknown},
  };
  for (const auto& [word, status] : words) {
    EXPECT_EQ(classWith(competitor("", "", word, ""))->runner(0).status(), status) << word;
  }
}

TEST_F(RelayTest, PekkaPirilaRelayInItsThreeSetsOfNames) {
  const auto leg = [](std::string_view number, std::string_view name, std::string_view result) {
    return element("Leg crs='A'",
                   element("LegNro", number) + element("nm", name) + "<emit>123</emit>" +
                       element("result", result) +
                       "<control><Order>1</Order><Code>31</Code><Time>1.00</Time></control>");
  };
  const auto team = [](std::string_view result, const std::string& legs) {
    return element("Team", "<TeamName>RR</TeamName><TeamNro>2</TeamNro>" +
                               element("result", result) + "<placement>9</placement>" + legs);
  };
  const std::string list = element(
      "Event Type=\"Relay\"",
      element("Class", "<ClassName>Men</ClassName>" +
                           team("30.00", leg("1", "Ada", "10.00") + leg("2", "Aga", "25.00") +
                                             leg("2", "Asa", "20.00")) +
                           team("DNF", leg("1", "Bea", "11.00") + leg("2", "Bo", "DNF"))));
  const std::string names[][3] = {{"ControlOrder", "CCode", "ControlTime"},
                                  {"cn", "cc", "ct"},
                                  {"controlnro", "controlcode", "controltime"}};
  for (const auto& [order, code, time] : names) {
    std::string relay = list;
    if (order != "ControlOrder") {
      for (const std::string name : {"Event", "Class", "Team", "Leg", "Name", "Nro"}) {
        relay = replaced(relay, name, lowered(name));
      }
    }
    relay = replaced(replaced(replaced(relay, "Order", order), "Code", code), "Time", time);
    const int at = event.noOfCategories();
    const std::string file = folder.write("list.xml", relay);
    EXPECT_EQ(importer.import_parallel(LRK_IMPORT_AUTO, event, file, 0, erpmSlowestTime), 0);
    EXPECT_THAT(runnersOf(at),
                ElementsAre("RR 2 0 1: S 0, 31 60000, F 180000", "RR 2 7 9: S 0, 31 66000, F -"));
    EXPECT_EQ(runnersOf(at + 2)[1], "Asa 0 1: S 60000, 31 66000, F 180000");
    EXPECT_EQ(setProperties(runner(at + 2, 0)),
              "cCardID=123 name=Aga club=RR relayLeg=2 relayTeamID=1 relayTeam=RR 2 courseName=A ");
    // The relay reader itself takes the mode at its word.
    EXPECT_EQ(importer.importPekkaPirilaRelayXML(event, file, erpmSlowestTime), 0);
    EXPECT_EQ(runner(at + 4, 0).name() + runnersOf(at + 3)[0],
              "AdaRR 2 0 1: S 0, 31 60000, F 180000");
  }
  const std::string other = folder.write("other.xml", "<Event><EventClass/></Event>");
  EXPECT_EQ(importer.importPekkaPirilaRelayXML(event, other),
            LRK_IMPORT_PEKKA_PIRILA_XML_INVALID_FORMAT);
  EXPECT_EQ(importer.importPekkaPirilaXML(event, folder.write("other.xml", "<Event/>")),
            LRK_IMPORT_PEKKA_PIRILA_XML_INVALID_FORMAT);
}

}  // namespace
}  // namespace larkstone
