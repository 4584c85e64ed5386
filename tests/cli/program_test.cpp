// The program as a user runs it: arguments, exit code, what it prints and what it writes.

#include "program_test.hpp"

#include <cstdlib>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "larkstone/event/event.hpp"

#include "import/lists.hpp"
#include "support/build.hpp"

namespace larkstone {
namespace {

using test::bytesOf;
using test::ProgramTest;
using test::Result;
using Json = nlohmann::json;
using ::testing::HasSubstr;

TEST_F(ProgramTest, EveryCommandExplainsItself) {
  for (const char* command : {"detect", "import", "startlist", "info", "courses", "analyse",
                              "table", "export", "search"}) {
    for (const std::string& arguments :
         {std::string(command) + " --help", "help " + std::string(command)}) {
      const Result result = run(arguments);
      EXPECT_EQ(result.exitCode, 0) << arguments;
      EXPECT_THAT(result.out, HasSubstr("FILE")) << arguments;
      EXPECT_EQ(result.err, "");
    }
  }
  EXPECT_EQ(run("--version").out.rfind("larkstone ", 0), 0U);
  EXPECT_EQ(run("--help").exitCode, 0);
}

TEST_F(ProgramTest, WrongUsageSaysHowToGetHelp) {
  std::vector<std::string> wrong = {
      "",
      "run",
      "info",
      "import " + race_,
      "import -o x.lrk4 " + race_ + " " + folder_.path() + "/./race.xml",
      "table --text --tooltips " + race_};
  for (const char* options :
       {"info --fast", "import -o x.lrk4 --zero-time soon", "analyse --sort speed",
        "analyse --sort legTime:0", "analyse --sort legTime:1.5", "analyse --sort legTime:desc:1",
        "analyse --breakpoints 7", "analyse --breakpoints 7,x", "analyse --breakpoints 7,20,30",
        "analyse --breakpoints=-1,20", "analyse --breakpoints 20,7", "analyse --csv --summary",
        "analyse --following-method near", "analyse --course-legs S-x-F", "analyse --flags 32",
        "analyse --time-loss-percent 20", "analyse --time-loss-percent nan",
        "table --text --base-url /t", "table --text --top 3"}) {
    wrong.push_back(options + (" " + race_));
  }
  for (const std::string& arguments : wrong) {
    const Result result = run(arguments);
    EXPECT_EQ(result.exitCode, 2) << arguments;
    EXPECT_THAT(result.err, HasSubstr("--help")) << arguments;
    EXPECT_EQ(result.out, "") << arguments;
  }
}

TEST_F(ProgramTest, WhatTheOptionsAskForInVainIsSaid) {
  const std::string captions = "table --language " + folder_.write("captions.txt", "name\tNamn\n");
  const std::string event = folder_ / "race.lrk4";
  const std::string empty = folder_.write("empty.xml", test::list3(test::class3("")));
  const std::string starts =
      folder_.write("starts.html",
                    "<hr><b>H21</b><table><tr><td>Dan<td>-<td>9:00:00</tr></table>med OLA version");
  ASSERT_EQ(run("import -o " + event + " " + race_).exitCode, 0);
  const std::string noLeg99 = "H21: there is no leg 99 to sort by";
  const std::string noneFits = "H21: no runner fits the course S-41-F";
  const std::string noRunner = "empty.xml: there is no runner in it";
  // The arguments, the exit code and what is said.
  const std::tuple<std::string, int, std::string> rows[] = {
      {"analyse --csv --sort legTime:3 " + race_, 0, ""},
      {"analyse --csv --sort legTime:4 " + race_, 3, "H21: there is no leg 4 to sort by"},
      {"table --sort legTime:99:desc " + race_, 3, noLeg99},
      {"table --sort legTime:99 " + race_, 3, noLeg99},
      {"analyse --course-legs S-41-F " + race_, 3, noneFits},
      {"table --course-legs S-41-F " + race_, 3, noneFits},
      {"analyse --summary --course-legs S-31-F --required-legs exactly-all " + race_, 3,
       "H21: no runner fits the course S-31-F"},
      {"report --course-legs S-41-F " + race_, 3, "H21: no runner fits the course"},
      {captions + ":0 " + race_, 0, ""},
      {captions + ":1 " + race_, 1, "no captions in column 1"},
      {captions + ":-1 " + race_, 1, "could not be read"},
      {"info " + empty, 3, noRunner + ", and no class"},
      {"analyse " + empty, 3, noRunner},
      {"table " + empty, 3, noRunner},
      {"report " + empty, 3, noRunner},
      {"courses " + empty, 3, noRunner},
      {"search " + empty + " name = x", 3, noRunner},
      {"export --to json " + empty, 3, noRunner},
      {"import -o " + (folder_ / "out.lrk4") + " " + race_ + " " + empty, 3, noRunner},
      {"startlist " + event + " " + starts, 3, "starts.html: no start time was set"},
      // What cannot be read.
      {"info " + (folder_ / "none.xml"), 1, "none.xml: "},
      {"info " + (folder_ / "none.xml"), 1, "(LRK_IMPORT_FILE_DOES_NOT_EXIST)"},
      {"analyse " + folder_.write("other.txt", "no result list"), 1, "(LRK_IMPORT_UNKNOWN)"},
      {"info " + folder_.write("broken.lrk4", "lrk4!"), 1, "(LRK_INVALID_FILE_FORMAT)"},
      {"detect " + (folder_ / "none"), 1, ""},
      {"analyse -c D21 " + race_, 1, ""},
  };
  for (const auto& [arguments, exitCode, said] : rows) {
    const Result result = run(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << arguments;
    EXPECT_THAT(result.err, HasSubstr(said)) << arguments;
    EXPECT_EQ(result.err.empty(), exitCode == 0) << arguments;
  }
}

TEST_F(ProgramTest, AnEventFileHoldsWhatTheListSays) {
  const std::string event = folder_ / "race.lrk4";
  ASSERT_EQ(run("import --master Mia -o " + event + " " + race_ + " " + example_).exitCode, 0);
  const Result formats = run("detect " + race_ + " " + event);
  EXPECT_EQ(formats.exitCode, 0);
  EXPECT_EQ(formats.out, race_ + ": LRK_IMPORT_XML 40\n" + event + ": LRK_IMPORT_LRK_LRK4 34\n");
  const Json info = Json::parse(run("info --json " + event).out);
  EXPECT_EQ(info["event"]["createdBy"], "Mia");
  EXPECT_EQ(info["event"]["startDate"], "2026-05-03");
  EXPECT_EQ(info["event"]["noOfCategories"], 5);
  std::map<std::string, int> runners;
  for (const Json& category : info["categories"])
    runners[category["name"]] += category["noOfRunners"].get<int>();
  EXPECT_EQ(runners,
            (std::map<std::string, int>{{"D21", 9}, {"H21", 16}, {"H45", 8}, {"Sprint", 8}}));
}

TEST_F(ProgramTest, InfoGivesEveryThingALine) {
  LRKEvent event;
  event.tempFilePath(folder_ / "");
  ASSERT_EQ(event.createNewEvent(folder_ / "event.lrk4"), 0);
  event.name("Night\nrace");
  LRKDerivedCourse course;
  course.name("Long\nloop");
  course.legs(test::legs("31-32-33"));
  course.noOfRunners(1);
  ASSERT_EQ(event.addDerivedCourse(course), 0);
  ASSERT_EQ(event.saveEvent(), 0);
  const std::string out = run("info " + event.filename()).out;
  EXPECT_EQ(out.substr(0, out.find('\n')), "name: Night race");
  EXPECT_EQ(out.substr(out.find("\nderived")), "\nderived courses\nLong loop: 1 runner, 2 legs\n");
}

TEST_F(ProgramTest, OutputsAppearWholeOrNotAtAll) {
  const std::string target = folder_.write("event.lrk4", "something else");
  EXPECT_EQ(run("import -o " + target + " " + race_ + " " + (folder_ / "none.xml")).exitCode, 1);
  EXPECT_EQ(bytesOf(target), "something else");
  EXPECT_EQ(run("analyse -o " + (folder_ / "no/such/out.json") + " " + race_).exitCode, 1);
  EXPECT_EQ(run("import -o " + target + " " + race_).exitCode, 0);
  EXPECT_EQ(bytesOf(target).substr(0, 4), "lrk4");
  EXPECT_EQ(run("info " + race_ + " > /dev/full").exitCode, 1);
}

// Whatever an input is called, nothing is written over it, not even on request.
TEST_F(ProgramTest, NoOutputGoesOverItsInput) {
  const std::string event = folder_ / "event.lrk4";
  const std::string captions = folder_.write("captions.txt", "name\tNamn\n");
  ASSERT_EQ(run("import -o " + event + " " + race_).exitCode, 0);
  std::filesystem::create_symlink("event.lrk4", folder_ / "soft");
  std::filesystem::create_hard_link(race_, folder_ / "hard");
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"import " + example_ + " " + race_, race_, folder_ / "hard"},
      {"import", race_, folder_ / "/.//race.xml"},
      {"detect", race_, race_},
      {"info", event, event},
      {"courses", event, folder_ / "soft"},
      {"analyse --csv", race_, race_},
      {"table", event, event},
      {"table --language " + captions + ":0 " + race_, captions, captions},
      {"report", event, event},
      {"search --json", event, event},
      {"export --to lrk3", event, folder_ / "./event.lrk4"},
      {"export --to iofxml3", race_, race_},
      {"export --to json", event, event},
  };
  for (const auto& [command, input, output] : rows) {
    const std::string before = bytesOf(input);
    const std::string file = command.find(input) == std::string::npos ? " " + input : "";
    const std::string condition = command.starts_with("search") ? " status = 0" : "";
    for (const char* option : {"", " --overwrite"}) {
      const Result result = run(command + file + condition + " -o " + output + option);
      EXPECT_EQ(result.exitCode, 2) << command;
      EXPECT_THAT(result.err, HasSubstr(output + ": ")) << command;
      EXPECT_TRUE(bytesOf(input) == before) << command;
    }
  }
  EXPECT_EQ(run("startlist " + event + " " + (folder_ / "soft")).exitCode, 2);
  EXPECT_EQ(folder_.noOfFiles(), 6);
}

TEST_F(ProgramTest, EventFilesAndListsAreReplacedOnRequest) {
  // What makes the file that is there, what would replace it, and whether it does so by itself.
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"import", "import", true},
      {"import", "report", false},
      {"import", "export --to lrk3", false},
      {"import", "export --to iofxml3", false},
      {"export --to lrk3", "export --to lrk3", true},
      {"export --to lrk3", "import", false},
      {"export --to iofxml2", "import", false},
      {"export --to iofxml3", "export --to iofxml3", false},
      {"report", "report", true},
      {"report", "import", true},
      {"table", "analyse", true},
      {"table --text", "table --text", true},
      {"analyse", "analyse --csv", true},
      {"analyse --csv", "analyse --csv", true},
  };
  // The words by which pages of other programs are known may stand in ours as well.
  std::string list = bytesOf(race_);
  list.replace(list.find("R &amp; D"), 9, "OLA-, SOLV- and eTiming Cup");
  const std::string race = folder_.write("other.xml", list);
  const std::string target = folder_ / "target";
  for (const auto& [first, second, free] : rows) {
    std::filesystem::remove(target);
    ASSERT_EQ(run(first + (" -o " + target + " " + race)).exitCode, 0) << first;
    const std::string before = bytesOf(target);
    std::ofstream(target, std::ios::app) << "\n";
    const std::string command = second + (" -o " + target + " " + race);
    const Result result = run(command);
    EXPECT_EQ(result.exitCode, free ? 0 : 2) << first << ", " << second;
    EXPECT_EQ(result.err.find("--overwrite") == std::string::npos, free) << first;
    EXPECT_EQ(bytesOf(target) != before + "\n", free) << first;
    EXPECT_EQ(run(command + " --overwrite").exitCode, 0);
    EXPECT_NE(bytesOf(target), before + "\n");
  }
}

TEST_F(ProgramTest, NobodyFindsWhatABrokenPipeLeft) {
  const std::string temporary = folder_ / "tmp";
  std::filesystem::create_directory(temporary);
  ::setenv("TMPDIR", temporary.c_str(), 1);
  for (const std::string command : {"analyse ", "export --to lrk3 ", "export --to iofxml2 "}) {
    run(command + example_ + " | head -c 1");
    run(command + example_ + " -o " + folder_.path());  // no file can be there
  }
  ::unsetenv("TMPDIR");
  EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(ProgramTest, ExportsAreOfTheirFormat) {
  using Row = std::pair<const char*, const char*>;
  for (const auto& [name, format] :
       {Row("iofxml2", "XML 40"), Row("iofxml3", "XML 40"), Row("lrk3", "LRK_LRK3 33")}) {
    const std::string target = folder_ / name;
    const std::string command = std::string("export ") + race_ + " --to " + name;
    ASSERT_EQ(run(command + " -o " + target).exitCode, 0);
    EXPECT_EQ(run("detect " + target).out, target + ": LRK_IMPORT_" + format + "\n");
    EXPECT_EQ(run(command).out, bytesOf(target));
    EXPECT_THAT(run("info " + target).out, HasSubstr("H21: 3 runners")) << name;
    EXPECT_EQ(run(command + " > /dev/full").exitCode, 1);
  }
  EXPECT_EQ(run("export --to lrk3 -o " + (folder_ / "no/out") + " " + race_).exitCode, 1);
  EXPECT_EQ(run("export --to pdf " + race_).exitCode, 2);
  // Of the list of version 3 only the creator is another.
  const Json first = Json::parse(run("export --to json " + race_).out);
  Json again = Json::parse(run("export --to json " + (folder_ / "iofxml3")).out);
  EXPECT_EQ(again["event"]["importedFrom"], "IOFXML3 / Larkstone");
  again["event"]["importedFrom"] = first["event"]["importedFrom"];
  EXPECT_EQ(first, again);
  const Json& category = first["categories"][0];
  EXPECT_EQ(category["legLengths"], Json::parse(R"({"S-31": 0, "31-32": 0, "32-F": 0})"));
  EXPECT_EQ(category["runners"][2], Json::parse(R"({
      "firstName": "Cid", "lastName": "C", "status": 6, "extraPunches": [],
      "punches": [[32736, 3624000], [31, 3631000], [32, null], [32752, 3641000]]})"));
}

TEST_F(ProgramTest, ATableIsAPageOfItsOwn) {
  const std::string page = folder_ / "page.html";
  ASSERT_EQ(run("table -c h21 --places --tooltips -o " + page + " " + race_).exitCode, 0);
  const std::string html = bytesOf(page);
  EXPECT_EQ(html.rfind("<!DOCTYPE html>", 0), 0U);
  for (const char* part :
       {"<title>R &amp; D - H21</title>", "Ann A &lt;x&gt;", "var hc = new Array(", ">mp<"}) {
    EXPECT_THAT(html, HasSubstr(part));
  }
  EXPECT_THAT(run("table --base-url /t " + race_).out, HasSubstr("href=\"/t?&sortBy=1\""));
  EXPECT_THAT(run("table --base-url /t?a=1 " + race_).out, HasSubstr("\"/t?a=1&sortBy=1\""));
  EXPECT_EQ(run("table " + example_).exitCode, 2);
  EXPECT_EQ(run("table --language " + (folder_ / "none.txt") + ":1 " + race_).exitCode, 1);
  const std::string captions = folder_.write("captions.txt", "name\tNamn\tJm\xE9no\n");
  EXPECT_THAT(run("table --language " + captions + ":1 " + race_).out, HasSubstr("Jméno"));
}

TEST_F(ProgramTest, RunnersAreFoundByTheirProperties) {
  const std::pair<const char*, const char*> rows[] = {
      {"name = '[A-B]*'", "H21\tAnn A <x>\t\t2:30\tOK\nH21\tBea B\t\t2:30\tOK\n"},
      {"LastName '!=' b STATUS = mispunch", "H21\tCid C\t\t-\tMisPunch\n"},
      {"152 = 0 firstName '>' Ann", "H21\tBea B\t\t2:30\tOK\n"},
      {"--any 151 '<' 4 firstName = c#d status = 6", "H21\tCid C\t\t-\tMisPunch\n"},
      {"birthDate '<' 2026-05-03", ""},
      {"name = 'Bea*' --json",
       "[\n{\"category\": \"H21\", \"runnerIndex\": 1, \"name\": \"Bea B\", \"club\": \"\", "
       "\"status\": \"OK\", \"resultTime\": 15000}]\n"},
  };
  for (const auto& [conditions, lines] : rows) {
    const Result result = run("search " + race_ + " " + conditions);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, lines) << conditions;
    EXPECT_EQ(result.err, "");
  }
  for (const char* wrong : {"club =", "sortPlace = 1", "164 = 1", "club == x", "ID = x",
                            "status = fast", "birthDate = 1990-02-30", "ID = 1 129 = 2"}) {
    EXPECT_EQ(run("search " + race_ + " " + wrong).exitCode, 2) << wrong;
  }
}

TEST_F(ProgramTest, AStartListGivesStartTimes) {
  const std::string list = folder_.write(
      "starts.html",
      "<hr><b>H21</b><table><tr><td>Bea B<td>-<td>11:00:00</tr><tr><td>Dan<td>-<td>9:00:00</tr>"
      "</table>med OLA version");
  const std::string event = folder_ / "race.lrk4";
  ASSERT_EQ(run("import -o " + event + " " + race_).exitCode, 0);
  EXPECT_THAT(run("detect " + list).out, HasSubstr("LRK_IMPORT_OLA_HTML"));
  EXPECT_EQ(run("detect " + folder_.write("l.html", "LUETTELO")).out,
            (folder_ / "l.html") + ": LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML 131\n");
  const Result result = run("startlist " + event + " " + list);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.err, HasSubstr("starts.html: 1 item left out"));
  const Json runners =
      Json::parse(run("export --to json " + event).out)["categories"][0]["runners"];
  EXPECT_EQ(runners[1]["punches"][0][1], 3960000);
  EXPECT_EQ(runners[0]["punches"][0][1], 3600000);

  for (const std::string& wrong :
       {event + " " + list + " --stage 0", event + " " + list + " --format csv", event}) {
    EXPECT_EQ(run("startlist " + wrong).exitCode, 2) << wrong;
  }
  for (const std::string& unreadable :
       {race_ + " " + list, event + " " + race_, event + " --format pekka-pirila-html " + race_,
        event + " " + (folder_ / "none")}) {
    EXPECT_EQ(run("startlist " + unreadable).exitCode, 1) << unreadable;
  }
}

TEST_F(ProgramTest, ADamagedValueIsSaidAndDoesNotSpoilTheAnalysis) {
  const std::string event = folder_ / "race.lrk4";
  ASSERT_EQ(run("import -o " + event + " " + race_).exitCode, 0);
  const Result whole = run("analyse " + event);
  std::string bytes = bytesOf(event);
  const auto accuracy = bytes.find("\x48\x02\x49");  // seconds, before the course type
  ASSERT_NE(accuracy, std::string::npos);
  bytes[accuracy + 1] = 77;
  folder_.write("race.lrk4", bytes);
  const Result damaged = run("analyse -v " + event);
  EXPECT_EQ(damaged.exitCode, 3);
  EXPECT_EQ(damaged.out, whole.out);
  EXPECT_EQ(damaged.err, event + ": category \"H21\": timeAccuracy 77\n" + event +
                             ": 1 value is damaged, the default is taken\n");
}

TEST_F(ProgramTest, WhatAnImportLeavesOutIsCounted) {
  const std::string list = folder_.write("list.xml", test::list3(test::class3("<PersonResult/>")));
  const Result counted = run("info " + list);
  EXPECT_EQ(counted.exitCode, 0);
  EXPECT_THAT(counted.err, HasSubstr("list.xml: 1 item left out"));
  EXPECT_EQ(run("info -q " + list).err, "");
  EXPECT_GT(run("info -v " + list).err.size(), counted.err.size());
}

}  // namespace
}  // namespace larkstone
