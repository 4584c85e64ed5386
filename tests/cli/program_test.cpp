// The program as a user runs it: arguments, exit code, what it prints and what it writes.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

#include "larkstone/event/event.hpp"

#include "cli/analysis_summary.hpp"
#include "import/lists.hpp"
#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

using test::bytesOf;
using test::TempFolder;
using Json = nlohmann::json;

struct Result {
  int exitCode = -1;
  std::string out;
  std::string err;
};

class ProgramTest : public testing::Test {
 protected:
  // Paths and names in the arguments hold no quotes.
  Result run(const std::string& arguments) const {
    const std::string err = folder_ / "stderr";
    const std::string command = std::string(LARKSTONE_PROGRAM) + " " + arguments + " 2>" + err;
    Result result;
    std::FILE* pipe = ::popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) {
      result.out.append(buffer.data(), count);
    }
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.err = bytesOf(err);
    return result;
  }

  TempFolder folder_;
  std::string example_ = std::string(LARKSTONE_EXAMPLES) + "/club-race.xml";

  // Three runners on S-31-32-F. Legs: Ann 60 50 40, Bea 60 60 30, and Cid without a time at 32.
  std::string race_ = folder_.write("race.xml", R"(<?xml version="1.0"?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0" creator="test">
 <Event><Name>R &amp; D</Name><StartTime><Date>2026-05-03</Date></StartTime></Event>
 <ClassResult><Class><Name>H21</Name></Class>
  <PersonResult><Person><Name><Family>A &lt;x&gt;</Family><Given>Ann</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:00:00</StartTime><Time>150</Time><Status>OK</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>60</Time></SplitTime>
    <SplitTime><ControlCode>32</ControlCode><Time>110</Time></SplitTime></Result></PersonResult>
  <PersonResult><Person><Name><Family>B</Family><Given>Bea</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:02:00</StartTime><Time>150</Time><Status>OK</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>60</Time></SplitTime>
    <SplitTime><ControlCode>32</ControlCode><Time>120</Time></SplitTime></Result></PersonResult>
  <PersonResult><Person><Name><Family>C</Family><Given>Cid</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:04:00</StartTime><Time>170</Time><Status>MissingPunch</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>70</Time></SplitTime>
    <SplitTime status="Missing"><ControlCode>32</ControlCode></SplitTime></Result></PersonResult>
 </ClassResult>
</ResultList>
)");
};

TEST_F(ProgramTest, EveryCommandExplainsItself) {
  for (const char* command : {"detect", "import", "startlist", "info", "courses", "analyse",
                              "table", "export", "search"}) {
    for (const std::string& arguments :
         {std::string(command) + " --help", "help " + std::string(command)}) {
      const Result result = run(arguments);
      EXPECT_EQ(result.exitCode, 0) << arguments;
      EXPECT_NE(result.out.find("FILE"), std::string::npos) << arguments;
      EXPECT_EQ(result.err, "");
    }
  }
  EXPECT_EQ(run("--version").out.rfind("larkstone ", 0), 0U);
  EXPECT_EQ(run("--help").exitCode, 0);
}

TEST_F(ProgramTest, WrongUsageSaysHowToGetHelp) {
  for (const std::string& arguments :
       {std::string(),
        std::string("run"),
        std::string("info"),
        "info --fast " + race_,
        "analyse --sort speed " + race_,
        "analyse --sort legTime:0 " + race_,
        "analyse --sort legTime:1.5 " + race_,
        "analyse --sort legTime:desc:1 " + race_,
        "analyse --breakpoints 7 " + race_,
        "analyse --breakpoints 7,x " + race_,
        "analyse --breakpoints 7,20,30 " + race_,
        "analyse --breakpoints=-1,20 " + race_,
        "analyse --breakpoints 20,7 " + race_,
        "analyse --csv --summary " + race_,
        "analyse --following-method near " + race_,
        "analyse --course-legs S-x-F " + race_,
        "analyse --flags 32 " + race_,
        "analyse --time-loss-percent 20 " + race_,
        "analyse --time-loss-percent nan " + race_,
        "table --text --base-url /t " + race_,
        "import -o x.lrk4 " + race_ + " " + folder_.path() + "/./race.xml",
        "import --zero-time soon " + race_ + " -o x.lrk4",
        "import " + race_}) {
    const Result result = run(arguments);
    EXPECT_EQ(result.exitCode, 2) << arguments;
    EXPECT_NE(result.err.find("--help"), std::string::npos) << arguments;
    EXPECT_EQ(result.out, "") << arguments;
  }
}

TEST_F(ProgramTest, WhatTheOptionsAskForInVainIsSaid) {
  struct Row {
    int line;
    std::string arguments;
    int exitCode;
    const char* said;
  };
  const std::string captions = folder_.write("captions.txt", "name\tNamn\n");
  const std::string event = folder_ / "race.lrk4";
  const std::string empty = folder_.write("empty.xml", test::list3(test::class3("")));
  const std::string starts =
      folder_.write("starts.html",
                    "<hr><b>H21</b><table><tr><td>Dan<td>-<td>9:00:00</tr></table>med OLA version");
  ASSERT_EQ(run("import -o " + event + " " + race_).exitCode, 0);
  const Row rows[] = {
      {__LINE__, "analyse --csv --sort legTime:3 " + race_, 0, ""},
      {__LINE__, "analyse --csv --sort legTime:4 " + race_, 3, "H21: there is no leg 4 to sort by"},
      {__LINE__, "table --sort legTime:99:desc " + race_, 3, "H21: there is no leg 99 to sort by"},
      {__LINE__, "table --sort legTime:99 " + race_, 3, "H21: there is no leg 99 to sort by"},
      {__LINE__, "analyse --course-legs S-41-F " + race_, 3,
       "H21: no runner fits the course S-41-F"},
      {__LINE__, "table --course-legs S-41-F " + race_, 3, "H21: no runner fits the course S-41-F"},
      {__LINE__, "analyse --summary --course-legs S-31-F --required-legs exactly-all " + race_, 3,
       "H21: no runner fits the course S-31-F"},
      {__LINE__, "report --course-legs S-41-F " + race_, 3, "H21: no runner fits the course"},
      {__LINE__, "table --language " + captions + ":0 " + race_, 0, ""},
      {__LINE__, "table --language " + captions + ":1 " + race_, 1, "no captions in column 1"},
      {__LINE__, "table --language " + captions + ":-1 " + race_, 1, "could not be read"},
      // A list without runners.
      {__LINE__, "info " + empty, 3, "empty.xml: there is no runner in it, and no class"},
      {__LINE__, "analyse " + empty, 3, "there is no runner in it"},
      {__LINE__, "table " + empty, 3, "there is no runner in it"},
      {__LINE__, "report " + empty, 3, "there is no runner in it"},
      {__LINE__, "courses " + empty, 3, "there is no runner in it"},
      {__LINE__, "search " + empty + " name = x", 3, "there is no runner in it"},
      {__LINE__, "export --to json " + empty, 3, "there is no runner in it"},
      {__LINE__, "import -o " + (folder_ / "out.lrk4") + " " + race_ + " " + empty, 3,
       "empty.xml: there is no runner in it"},
      {__LINE__, "startlist " + event + " " + starts, 3, "starts.html: no start time was set"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const Result result = run(row.arguments);
    EXPECT_EQ(result.exitCode, row.exitCode);
    EXPECT_NE(result.err.find(row.said), std::string::npos) << result.err;
    EXPECT_EQ(result.err.empty(), row.exitCode == 0) << result.err;
  }
}

TEST_F(ProgramTest, WhatCannotBeReadIsSaidInOneLine) {
  const std::string other = folder_.write("other.txt", "no result list");
  const Result missing = run("info " + (folder_ / "none.xml"));
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.err.find("none.xml: "), std::string::npos);
  EXPECT_NE(missing.err.find("(LRK_IMPORT_FILE_DOES_NOT_EXIST)"), std::string::npos);
  const Result unknown = run("analyse " + other);
  EXPECT_EQ(unknown.exitCode, 1);
  EXPECT_NE(unknown.err.find("(LRK_IMPORT_UNKNOWN)"), std::string::npos);
  const Result broken = run("info " + folder_.write("broken.lrk4", "lrk4!"));
  EXPECT_EQ(broken.exitCode, 1);
  EXPECT_NE(broken.err.find("(LRK_INVALID_FILE_FORMAT)"), std::string::npos);
  EXPECT_EQ(run("analyse -c D21 " + race_).exitCode, 1);
}

TEST_F(ProgramTest, FormatsAreNamed) {
  run("import -o " + (folder_ / "race.lrk4") + " " + race_);
  const Result result = run("detect " + race_ + " " + (folder_ / "race.lrk4"));
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, race_ + ": LRK_IMPORT_XML 40\n" + (folder_ / "race.lrk4") +
                            ": LRK_IMPORT_LRK_LRK4 34\n");
  EXPECT_EQ(run("detect " + (folder_ / "none")).exitCode, 1);
}

TEST_F(ProgramTest, AnEventFileHoldsWhatTheListSays) {
  const std::string event = folder_ / "race.lrk4";
  ASSERT_EQ(run("import --master Mia -o " + event + " " + race_ + " " + example_).exitCode, 0);
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
  LRKLegs legs;
  legs.add(31, 32, 0, 0);
  legs.add(32, 33, 0, 0);
  course.legs(legs);
  course.noOfRunners(1);
  ASSERT_EQ(event.addDerivedCourse(course), 0);
  ASSERT_EQ(event.saveEvent(), 0);
  const std::string out = run("info " + event.filename()).out;
  EXPECT_EQ(out.substr(0, out.find('\n')), "name: Night race");
  EXPECT_EQ(out.substr(out.find("\nderived")), "\nderived courses\nLong loop: 1 runner, 2 legs\n");
}

TEST_F(ProgramTest, AnalysisIsTheSameBeforeAndAfterSaving) {
  const std::string event = folder_ / "race.lrk4";
  ASSERT_EQ(run("import -o " + event + " " + example_).exitCode, 0);
  const Result direct = run("analyse " + example_);
  EXPECT_EQ(direct.exitCode, 0);
  EXPECT_EQ(direct.err, "");
  // Only the order of the categories may differ: an opened event sorts them.
  const auto byName = [](const std::string& text) {
    std::map<std::string, Json> courses;
    const Json analysis = Json::parse(text);
    for (Json course : analysis["courses"]) {
      course.erase("categoryIndex");
      for (Json& runner : course["runners"]) runner.erase("categoryIndex");
      courses[course["name"]] = course;
    }
    return courses;
  };
  EXPECT_EQ(byName(direct.out), byName(run("analyse " + event).out));
}

TEST_F(ProgramTest, AnalysisOfAHandWorkedRace) {
  const Json analysis = Json::parse(run("analyse " + race_).out);
  EXPECT_EQ(analysis["event"]["name"], "R & D");
  EXPECT_EQ(analysis["event"]["startDate"], "2026-05-03");
  const Json& course = analysis["courses"][0];
  EXPECT_EQ(course["refused"], Json::array());
  const Json& legs = course["legs"];
  EXPECT_EQ(legs[1]["ordinal"], "1-2");
  EXPECT_EQ(legs[1]["bestTime"][0], 5000);
  EXPECT_EQ(legs[1]["noOfQualifiedRunners"][0], 2);
  EXPECT_EQ(legs[2]["idealTime"], 6000 + 5000 + 3000);
  // Ann and Bea share the first place, and lose 10 s each to the other on one leg.
  const Json& runners = course["runners"];
  EXPECT_EQ(runners[0]["name"], "Ann A <x>");
  EXPECT_EQ(runners[0]["sortPlace"], 1);
  EXPECT_EQ(runners[1]["sortPlace"], 1);
  EXPECT_EQ(runners[1]["legs"][1]["place"][0], 2);
  EXPECT_EQ(runners[2]["status"], "MisPunch");
  EXPECT_EQ(runners[2]["resultTime"], nullptr);
  EXPECT_EQ(runners[2]["sortPlace"], nullptr);
  EXPECT_EQ(runners[2]["legs"][1]["time"][0], nullptr);
  EXPECT_EQ(runners[2]["punches"][2], Json::parse("[32, null, false]"));
}

TEST_F(ProgramTest, OptionsReachTheCourse) {
  const Json analysis =
      Json::parse(run("analyse --course-legs S-31-F --merge --flags 0 --time-loss-method best "
                      "--accuracy tenths --sort legTime:2:desc " +
                      race_)
                      .out);
  const Json& course = analysis["courses"][0];
  EXPECT_EQ(course["timeAccuracy"], 1);
  EXPECT_EQ(course["calculationFlags"], 0);
  ASSERT_EQ(course["legs"].size(), 2U);
  EXPECT_EQ(course["legs"][1]["bestTime"], Json::parse("[9000,null,null,null,null,null,null]"));
  EXPECT_EQ(course["runners"][0]["name"], "Cid C");  // 100 s from 31 to the finish
  EXPECT_EQ(course["runners"][0]["mergingValueUsed"], true);
  EXPECT_EQ(course["runners"][0]["legs"][0]["timeLoss"], Json::parse("[null,null]"));
  const Json exact =
      Json::parse(run("analyse --course-legs S-31-33-F --required-legs all " + race_).out);
  EXPECT_EQ(exact["courses"][0]["refused"].size(), 3U);
}

// Everything that is said about following, for the runners in their order.
Json followingOf(const Json& course) {
  Json found = Json::array();
  for (const Json& runner : course["runners"]) {
    found.push_back(runner["courseFollowingIndex"]);
    found.push_back(runner["coursePullIndex"]);
    for (const Json& leg : runner["legs"]) {
      for (const char* key :
           {"followingIndex", "pullIndex", "followingBenefitTime", "followed", "pulled"}) {
        found.push_back(leg[key]);
      }
    }
  }
  return found;
}

TEST_F(ProgramTest, FollowingIsNullUntilItIsCalculated) {
  const Json without = Json::parse(run("analyse --flags 23 " + race_).out);
  for (const Json& value : followingOf(without["courses"][0])) {
    EXPECT_TRUE(value.is_null() || value == Json::parse("[null,null]")) << value;
  }
  for (const std::string method : {"basic", "extended"}) {
    const Json with = Json::parse(
        run("analyse --flags 8 --breakpoints 5.5,5.5 --following-method " + method + " " + race_)
            .out);
    for (const Json& value : followingOf(with["courses"][0])) {
      EXPECT_TRUE(value.is_number() || (value.is_array() && value != Json::parse("[null,null]")))
          << value;
    }
  }
}

TEST_F(ProgramTest, CsvHasALineForEveryRunnerAndLeg) {
  // Ann: 60 and 90 s. Bea: 96 s to 31, and no finish.
  const std::string list = folder_.write("two.xml", R"(<?xml version="1.0"?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0" creator="test">
 <Event><Name>Two</Name></Event>
 <ClassResult><Class><Name>@H,21</Name></Class>
  <PersonResult><Person><Name><Family>B</Family><Given>=Ann</Given></Name></Person>
   <Organisation><Name>OK "Å", Syd</Name></Organisation>
   <Result><StartTime>2026-05-03T10:00:00</StartTime><Time>150</Time><Status>OK</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>60</Time></SplitTime></Result></PersonResult>
  <PersonResult><Person><Name><Family>C-D</Family><Given>Bea</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:02:00</StartTime><Status>DidNotFinish</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>96</Time></SplitTime></Result></PersonResult>
 </ClassResult>
</ResultList>)");
  const std::string header =
      "category,sortPlace,runnerIndex,name,club,status,resultTime,leg,ordinal,beginCode,endCode,"
      "time,place,timeBehind,totalTime,totalPlace,timeLoss,performanceIndex,followingIndex,"
      "pullIndex,followingBenefitTime\n";
  const std::string ann = R"("'@H,21",1,0,'=Ann B,"OK ""Å"", Syd",OK,15000,)";
  const std::string bea = R"("'@H,21",,1,Bea C-D,,DidNotFinish,,)";
  EXPECT_EQ(run("analyse --csv --flags 23 " + list).out,
            header + ann + "1,S-1,S,31,6000,1,0,6000,1,0,1,,,\n" + ann +
                "2,1-F,31,F,9000,1,0,15000,1,0,1,,,\n" + bea +
                "1,S-1,S,31,9600,2,3600,9600,2,0,0.625,,,\n" + bea + "2,1-F,31,F,,,,,,,,,,\n");
  const Result others = run("analyse --csv --flags 8 --time-loss-method best " + list);
  EXPECT_NE(others.out.find(ann + "2,1-F,31,F,9000,1,0,15000,,,,0,0,0\n"), std::string::npos);
}

TEST_F(ProgramTest, TheReportHasNoPlaceWithoutATimeAndNoStartThatIsNotKnown) {
  const auto courseOf = [&](const std::string& list) {
    const std::string page = run("report " + list).out;
    const std::string begin = "id=\"data-course-0\">";
    const auto at = page.find(begin) + begin.size();
    return Json::parse(page.substr(at, page.find("</script>", at) - at));
  };
  const Json course = courseOf(race_);
  const Json& cid = course["runners"][2];  // without a time at 32
  EXPECT_EQ(cid["leg"], Json::parse("[7000, null, null]"));
  EXPECT_EQ(cid["legPlace"], Json::parse("[3, 0, 0]"));
  EXPECT_EQ(cid["totalPlace"], Json::parse("[3, 0, 0]"));
  EXPECT_EQ(course["runners"][1]["legPlace"], Json::parse("[1, 2, 1]"));
  EXPECT_EQ(cid["start"], 3624000);
  const std::string result = "<Time>90</Time><Status>OK</Status>" + test::split("31", "60");
  const std::string list = folder_.write(
      "list.xml", test::list3(test::class3(test::person3(test::element("Result", result)))));
  EXPECT_EQ(courseOf(list)["runners"][0]["start"], nullptr);
}

std::string listOf(const std::string& name, std::initializer_list<std::vector<int>> runners) {
  std::string persons;
  for (const std::vector<int>& controls : runners) {
    std::string result =
        "<StartTime>2026-05-03T10:00:00</StartTime><Time>900</Time><Status>OK</Status>";
    for (std::size_t i = 0; i < controls.size(); ++i) {
      result += test::split(std::to_string(controls[i]), std::to_string(60 * (i + 1)));
    }
    persons += test::person3(test::element("Result", result));
  }
  return test::class3(persons, name);
}

TEST_F(ProgramTest, ASummaryHasALineForEveryCategory) {
  // The legs' lost times are worked out in docs/analysis.md: Bob alone loses 100 s on one leg.
  const std::string evening = std::string(LARKSTONE_EXAMPLES) + "/evening-race.xml";
  const std::string event = folder_ / "race.lrk4";
  const std::string others = folder_.write(
      "others.xml",
      test::list3(listOf(
          "W", {{31}, {31}, {31}, {31}, {31}, {31}, {31}, {31}, {31}, {31}, {40, 41}, {}, {}})));
  ASSERT_EQ(run("import -o " + event + " " + evening + " " + race_ + " " + others).exitCode, 0);
  EXPECT_EQ(run("analyse --summary " + event).out,
            "Category  Runners  OK   Best  Ideal  Mean loss  Costliest leg  Loss there  "
            "Not on the course\n"
            "H21             3   2   2:30   2:20       0:00  -                       -  -\n"
            "W              13  13  15:00  15:00       0:00  -                       -  "
            "3: 2 no controls, 1 other legs\n"
            "Open            5   5   8:04   7:59       0:20  1-2 (31-32)          0:20  -\n");
  EXPECT_EQ(run("analyse --summary --time-loss-method best --accuracy tenths " + evening).out,
            "Category  Runners  OK    Best   Ideal  Mean loss  Costliest leg  Loss there  "
            "Not on the course\n"
            "Open            5   5  8:04.0  7:59.0     0:21.3  1-2 (31-32)        0:21.3  -\n");
}

TEST_F(ProgramTest, ACategoryWithoutRunnersIsSummarisedByDashes) {
  LRKCategory category;
  category.name("Å\nh");
  cli::SummaryTable table;
  table.add(LRKCourse(), category);
  cli::Output output(folder_ / "summary.txt");
  table.write(output);
  ASSERT_TRUE(output.close());
  EXPECT_EQ(bytesOf(folder_ / "summary.txt"),
            "Category  Runners  OK  Best  Ideal  Mean loss  Costliest leg  Loss there  "
            "Not on the course\n"
            "Å h             0   0     -      -          -  -                       -  -\n");
}

TEST_F(ProgramTest, EverySortKeyHasItsName) {
  const std::string_view keys[] = {
#define LRK_SORT_KEY(number, name) #name,
#include "larkstone/core/sort_keys.def"
  };
  for (const std::string_view key : keys) {
    const std::string name(key.substr(4));
    const bool isKey = name != "Custom";
    EXPECT_EQ(run("analyse --flags 0 --sort " + name + ":2:desc " + race_).exitCode, isKey ? 0 : 2)
        << name;
  }
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
      EXPECT_NE(result.err.find(output + ": "), std::string::npos) << command;
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
    EXPECT_NE(run("info " + target).out.find("H21: 3 runners"), std::string::npos) << name;
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
  EXPECT_NE(html.find("<title>R &amp; D - H21</title>"), std::string::npos);
  EXPECT_NE(html.find("Ann A &lt;x&gt;"), std::string::npos);
  EXPECT_NE(html.find("var hc = new Array("), std::string::npos);
  EXPECT_NE(html.find(">mp<"), std::string::npos);
  EXPECT_NE(run("table --base-url /t " + race_).out.find("href=\"/t?&sortBy=1\""),
            std::string::npos);
  EXPECT_NE(run("table --base-url /t?a=1 " + race_).out.find("\"/t?a=1&sortBy=1\""),
            std::string::npos);
  EXPECT_EQ(run("table " + example_).exitCode, 2);
  EXPECT_EQ(run("table --language " + (folder_ / "none.txt") + ":1 " + race_).exitCode, 1);
  const std::string captions = folder_.write("captions.txt", "name\tNamn\tJm\xE9no\n");
  EXPECT_NE(run("table --language " + captions + ":1 " + race_).out.find("Jméno"),
            std::string::npos);
}

TEST_F(ProgramTest, CoursesRunAndCoursesThatFit) {
  const std::string list = folder_.write(
      "courses.xml",
      test::list3(listOf("Relay", {{31, 42, 33}, {31, 41, 33}, {}, {}, {}, {31, 41, 33}}) +
                  listOf("Loops", {{50, 1, 50, 2, 50}, {50, 2, 50, 1, 50}})));
  const Json courses = Json::parse(run("courses --json -c Relay " + list).out)["categories"];
  ASSERT_EQ(courses.size(), 1U);
  EXPECT_EQ(courses[0]["name"], "Relay");
  EXPECT_EQ(courses[0]["forkings"], Json::parse(R"([{"codes": "S-F", "noOfRunners": 3},
                            {"codes": "S-31-41-33-F", "noOfRunners": 2},
                            {"codes": "S-31-42-33-F", "noOfRunners": 1}])"));
  EXPECT_EQ(courses[0]["courses"], Json::parse(R"([
      {"courseType": 0, "noOfLegs": 0, "legs": "", "noOfRunners": 0},
      {"courseType": 1, "noOfLegs": 3, "legs": "S-31-33-F", "noOfRunners": 3},
      {"courseType": 2, "noOfLegs": 0, "legs": "", "noOfRunners": 0},
      {"courseType": 3, "noOfLegs": 2, "legs": "S-31,33-F", "noOfRunners": 3},
      {"courseType": 4, "noOfLegs": 6, "legs": "S-31-41,31-42,33-F,41-33,42-33",
       "noOfRunners": 3}])"));
  const Result loops = run("courses -c loops " + list);
  EXPECT_EQ(loops.exitCode, 0);
  EXPECT_EQ(loops.out.substr(loops.out.find('\n')), R"(
  1 runner: S-50-1-50-2-50-F
  1 runner: S-50-2-50-1-50-F
  normal: none
  relay: 2 runners, 4 legs: S-50-50-50-F
  one-man relay: 2 runners, 6 legs: S-50-1-50-2-50-F
  common legs: 2 runners, 6 legs: S-50-1-50-2-50-F
  rogaining: 2 runners, 6 legs: S-50,1-50,2-50-1,50-2,50-F
)");
  EXPECT_EQ(run("courses -c None " + list).exitCode, 1);
}

TEST_F(ProgramTest, LoopsInAnyOrderKeepAllTheirLegs) {
  // A control a minute, then the rest of the quarter of an hour to the finish: in either order.
  const std::string list = folder_.write(
      "loops.xml",
      test::list3(
          listOf("Shared leg", {{50, 1, 2, 50, 1, 3, 50, 9}, {50, 1, 3, 50, 1, 2, 50, 9}}) +
          listOf("Hub last", {{50, 1, 2, 50, 1, 3, 50}, {50, 1, 3, 50, 1, 2, 50}}) +
          listOf("Two laps", {{50, 1, 50, 2, 50, 1, 50, 9}, {50, 1, 50, 1, 50, 2, 50, 9}})));
  const std::pair<const char*, const char*> rows[] = {
      {"'Shared leg'", "1\tEva\t+0\t1\t1\t1\t1\t1\t1\t1\t1\t7\tEva"},
      {"'Hub last'", "1\tEva\t+0\t1\t1\t1\t1\t1\t1\t1\t8\tEva"},
      {"'Two laps'", "1\tEva\t+0\t1\t1\t1\t1\t1\t1\t1\t1\t7\tEva"},
  };
  for (const auto& [category, line] : rows) {
    const std::string table = run("table --text -c " + std::string(category) + " " + list).out;
    const auto first = table.find(line);
    EXPECT_NE(first, std::string::npos) << category;
    EXPECT_NE(table.find(line, first + 1), std::string::npos) << category;
  }
}

TEST_F(ProgramTest, RunnersAreFoundByTheirProperties) {
  struct Row {
    int line;
    const char* conditions;
    const char* lines;
  };
  constexpr Row rows[] = {
      {__LINE__, "name = '[A-B]*'", "H21\tAnn A <x>\t\t2:30\tOK\nH21\tBea B\t\t2:30\tOK\n"},
      {__LINE__, "LastName '!=' b STATUS = mispunch", "H21\tCid C\t\t-\tMisPunch\n"},
      {__LINE__, "152 = 0 firstName '>' Ann", "H21\tBea B\t\t2:30\tOK\n"},
      {__LINE__, "--any 151 '<' 4 firstName = c#d status = 6", "H21\tCid C\t\t-\tMisPunch\n"},
      {__LINE__, "birthDate '<' 2026-05-03", ""},
      {__LINE__, "name = 'Bea*' --json",
       "[\n{\"category\": \"H21\", \"runnerIndex\": 1, \"name\": \"Bea B\", \"club\": \"\", "
       "\"status\": \"OK\", \"resultTime\": 15000}]\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const Result result = run("search " + race_ + " " + row.conditions);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, row.lines);
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
  EXPECT_NE(run("detect " + list).out.find("LRK_IMPORT_OLA_HTML"), std::string::npos);
  EXPECT_EQ(run("detect " + folder_.write("l.html", "LUETTELO")).out,
            (folder_ / "l.html") + ": LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML 131\n");
  const Result result = run("startlist " + event + " " + list);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.err.find("starts.html: 1 item left out"), std::string::npos);
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
  EXPECT_NE(counted.err.find("list.xml: 1 item left out"), std::string::npos);
  EXPECT_EQ(run("info -q " + list).err, "");
  EXPECT_GT(run("info -v " + list).err.size(), counted.err.size());
}

}  // namespace
}  // namespace larkstone
