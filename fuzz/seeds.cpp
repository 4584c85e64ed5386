// Writes the files that fuzzing begins with: small events in every form we write, and the
// beginnings of every format we read.

#include "larkstone/analysis/course.hpp"
#include "larkstone/event/export.hpp"

#include "support.hpp"

namespace larkstone::fuzz {
namespace {

// Result lists of the formats that are not XML; one row is all a further format needs.
constexpr struct {
  std::string_view name;
  std::string_view text;
} texts[] = {
    {"oe.csv",
     "Stno;Chip;Surname;First name;YB;S;nc;Start;Finish;Time;Classifier;Club no.;Cl.name;City;"
     "Short;km;Course controls;Pl;Start punch;Finish punch;Control1;Punch1;Control2;Punch2;\n"
     "1;500;Berg;\"Ann; B\";88;W;0;10:00:00;10:31:02;31:02;0;7;OK;Lund;W21;4,5;2;1;;;"
     "31;05:00;32;-----;\n"},
    {"os.csv",
     "OS0014;Stno;Leg;Chip;Surname;First name;Start;Finish;Time;Classifier;Short;Team;Punch1;\n"
     ";1;1;500;Berg;Ann;10:00:00;10:31:02;31:02;0;W21;OK 1;05:00;\n"},
    {"standard.txt",
     "Larkstone standard text format\nSpring\t2026-05-03\nH21\t4500\n100\t200\t300\n"
     "Ann\tOK\t10:00:00\t31\t5:00\t32\t12:30\t31:02\n"},
    {"splits.html",
     "<html><title>Split time results</title><pre>\nPl Stno Name            Time\n"
     "H21 (2)   4.5 km  90 Hm  2 C\n 1   12 Ann Berg       31:02   5:00 31:02\n</pre></html>\n"},
    {"ola.html",
     "<html><h2>H21</h2><table><tr><td>1</td><td>Ann Berg</td><td>OK</td><td>31.02</td></tr>"
     "</table>med OLA version 5.1</html>\n"},
    {"etiming.html",
     "<html><h1>Spring</h1><h3>OK</h3><h2>H21  4,5 km</h2><pre><b>  1 Berg, Ann</b>  OK  31:02"
     "</pre>eTiming</html>\n"},
    {"pirila.html",
     "<html><title>Spring Tilanne rasteilla</title>\n<h3>H21 Tilanne rasteilla</h3>\n<pre>\n"
     "1. 2. 3. Maali\n  1 Ann Berg OK  1-5.00  1-31.02\n</pre></html>\n"},
    {"solv.html", "<html>SOLV<pre>H21 ( 2) 4.5 km 90 m 2 Po.\n  1 Ann Berg 88 Lund OK 31:02\n"},
    {"pirila.xml",
     "<Event><EventName>Spring</EventName><EventClass><ClassName>H21</ClassName><Competitor><Name>"
     "<Family>Berg</Family></Name><StartTime>10:00:00</StartTime><Time>31:02</Time><SplitTimes>"
     "<Control><ControlOrder>1</ControlOrder><CCode>31</CCode><ControlTime>5:00</ControlTime>"
     "</Control></SplitTimes></Competitor></EventClass></Event>"},
    {"starts.html", "<html>LUETTELO<pre>\nH21\n  1 Ann Berg OK 10.00.00\n</pre></html>\n"},
};

LRKRunner runnerOn(const std::string& name, const std::vector<Code>& codes) {
  LRKRunner runner;
  runner.name(name);
  runner.status(estaOK);
  runner.startTime(360000);
  Time time = 360000;
  for (const Code code : codes) runner.punches().add(time += 6050, code);
  runner.finishTime(time + 3000);
  return runner;
}

LRKCategory categoryNamed(const std::string& name) {
  LRKCategory category;
  category.name(name);
  category.addRunner(runnerOn("Ann", {31, 32, 33}));
  category.addRunner(runnerOn("Bo", {32, 31, 33}));
  return category;
}

// Every property, with a value that all types take.
template <class Owner>
void setAll(Owner& owner, enmFileTag first, enmFileTag last) {
  for (int tag = first; tag <= last; ++tag) {
    owner.setPropertyByTag(static_cast<enmFileTag>(tag), TagValue(std::int32_t{1}), true);
  }
}

void addEverything(LRKEvent& event) {
  setAll(event, etagEventID, etagEventExtraInfo);
  LRKCategory category;
  setAll(category, etagCategoryID, etagCategoryMaxNoOfLegs);  // among them one runner
  category.addRunner(runnerOn("Bo", {32, 31, 33}));
  category.runner(0) = runnerOn("Ann", {31, 32, 33});
  category.legLength(31, 32, 400);
  setAll(category.runner(0), etagRunnerID, etagRunnerCourseLength);
  category.runner(0).extraPunches().add(365000, 77);
  category.runner(1).punches().time(2, LRK_NO_TIME);
  event.addCategory(category);
  LRKDerivedCourse course = event.category(0)
                                ->toCourse(erqlAtLeastOne, true, true)
                                .toDerivedCourse({true, false, true}, {true, true});
  course.codesEqualToStart().add(31);
  course.codesEqualToFinish().add(33);
  event.addDerivedCourse(course);
}

void addCategories(LRKEvent& event) {
  for (const std::string name : {"H21", "D21 E", "H10", "D 65", ""}) {
    event.addCategory(categoryNamed(name));
  }
  event.addDerivedCourse(LRKDerivedCourse());
  for (const int first : {4, 0}) {
    LRKDerivedCourse course;
    course.name("Both");
    course.legs(event.category(0)->runner(0).punches().toLegs());
    for (int i = 0; i < 5; ++i) course.addRunner(std::abs(first - i), i % 3);
    event.addDerivedCourse(course);
  }
}

void write(const std::string& root, const std::string& name, void (*fill)(LRKEvent&)) {
  Event event;
  fill(event);
  LRKExport exporter;
  require(event.saveEvent(root + "/event_file/" + name) == 0 &&
              event.saveEvent(root + "/exports/" + name) == 0 &&
              exporter.exportEventToLRK3(event, root + "/lrk3/" + name) == 0 &&
              exporter.exportEventToIOFXML(event, root + "/import/" + name + "2.xml") == 0 &&
              exporter.exportEventToIOFXML3(event, root + "/import/" + name + "3.xml") == 0,
          "seeds can be written");
}

}  // namespace
}  // namespace larkstone::fuzz

// The folder of the seeds, and a folder with lists to take along.
int main(int argc, char** argv) {
  using namespace larkstone::fuzz;
  require(argc == 3, "two folders are named");
  const std::string root = argv[1];
  for (const char* target : {"event_file", "exports", "lrk3", "import"}) {
    std::filesystem::create_directories(root + "/" + target);
  }
  write(root, "empty", [](larkstone::LRKEvent&) {});
  write(root, "everything", addEverything);
  write(root, "categories", addCategories);
  for (const auto& [name, text] : texts) {
    std::ofstream(root + "/import/" + std::string(name), std::ios::binary) << text;
  }
  for (const auto& example : std::filesystem::directory_iterator(argv[2])) {
    if (example.path().extension() != ".xml") continue;
    std::filesystem::copy_file(example.path(),
                               root + "/import/" + example.path().filename().string(),
                               std::filesystem::copy_options::overwrite_existing);
  }
}
