// What the program says of races: the analysis in its forms, and the courses that were run.

#include <map>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/analysis_summary.hpp"
#include "program_test.hpp"

namespace larkstone {
namespace {

using test::bytesOf;
using test::listOf;
using test::Result;
using Json = nlohmann::json;

class AnalyseTest : public test::ProgramTest {};

TEST_F(AnalyseTest, AnalysisIsTheSameBeforeAndAfterSaving) {
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

TEST_F(AnalyseTest, AnalysisOfAHandWorkedRace) {
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

TEST_F(AnalyseTest, OptionsReachTheCourse) {
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

TEST_F(AnalyseTest, FollowingIsNullUntilItIsCalculated) {
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

TEST_F(AnalyseTest, CsvHasALineForEveryRunnerAndLeg) {
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

TEST_F(AnalyseTest, TheReportHasNoPlaceWithoutATimeAndNoStartThatIsNotKnown) {
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

TEST_F(AnalyseTest, ASummaryHasALineForEveryCategory) {
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
            "3: 2 no controls, 1 no leg of the course\n"
            "Open            5   5   8:04   7:59       0:20  1-2 (31-32)          0:20  -\n");
  EXPECT_EQ(run("analyse --summary --time-loss-method best --accuracy tenths " + evening).out,
            "Category  Runners  OK    Best   Ideal  Mean loss  Costliest leg  Loss there  "
            "Not on the course\n"
            "Open            5   5  8:04.0  7:59.0     0:21.3  1-2 (31-32)        0:21.3  -\n");
}

TEST_F(AnalyseTest, ACategoryWithoutRunnersIsSummarisedByDashes) {
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

TEST_F(AnalyseTest, EverySortKeyHasItsName) {
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

TEST_F(AnalyseTest, CoursesRunAndCoursesThatFit) {
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

TEST_F(AnalyseTest, LoopsInAnyOrderKeepAllTheirLegs) {
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

}  // namespace
}  // namespace larkstone
