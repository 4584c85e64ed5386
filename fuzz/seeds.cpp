// Writes the files that fuzzing begins with, a folder for each target: an empty event and a full
// one in every form we write, and lists that are there as they are.

#include "larkstone/event/export.hpp"

#include "support.hpp"
#include "support/build.hpp"

namespace larkstone::fuzz {
namespace {

// Every property, with a value that all types take.
template <class Owner>
void setAll(Owner& owner, int first, int last) {
  for (int tag = first; tag <= last; ++tag) {
    owner.setPropertyByTag(static_cast<enmFileTag>(tag), TagValue(std::int32_t{1}), true);
  }
}

void fill(LRKEvent& event) {
  setAll(event, etagEventID, etagEventExtraInfo);
  LRKDerivedCourse course;
  for (const std::string name : {"H21", "D 65", ""}) {
    LRKCategory category;
    if (name.empty()) setAll(category, etagCategoryID, etagCategoryMaxNoOfLegs);  // with a runner
    category.name(name);
    category.legLength(31, 32, 400);
    category.addRunner(test::runner("S-32-31-33-F", {36007, 36099, -1, 36300, 36406}, "Bo"));
    LRKRunner ann = test::runner("S-31-32-33-F", {}, "Ann");
    if (name.empty()) setAll(ann, etagRunnerID, etagRunnerCourseLength);
    ann.extraPunches().add(365000, 77);
    category.addRunner(ann);
    event.addCategory(category);
    course.addRunner(category.categoryIndex(), 1);
    course.legs(ann.punches().toLegs());
    event.addDerivedCourse(course);
    course.codesEqualToStart().add(31);
    course.codesEqualToFinish().add(33);
  }
}

void write(LRKEvent& event, const std::string& root, const std::string& name) {
  LRKExport exporter;
  for (const char* target : {"/event_file/", "/exports/", "/analysis/"}) {
    require(event.saveEvent(root + target + name) == 0, "seeds can be written");
  }
  require(exporter.exportEventToLRK3(event, root + "/import/" + name + ".lrk3") == 0 &&
              exporter.exportEventToIOFXML(event, root + "/import/" + name + "2.xml") == 0 &&
              exporter.exportEventToIOFXML3(event, root + "/import/" + name + "3.xml") == 0,
          "seeds can be written");
}

}  // namespace
}  // namespace larkstone::fuzz

int main(int, char** argv) {
  const std::string root = *++argv;
  for (const char* target : {"/event_file", "/exports", "/analysis", "/import"}) {
    std::filesystem::create_directories(root + target);
  }
  larkstone::fuzz::Event event;
  larkstone::fuzz::write(event, root, "empty");
  larkstone::fuzz::fill(event);
  larkstone::fuzz::write(event, root, "full");
  while (*++argv != nullptr) {
    std::filesystem::copy(*argv, root + "/import",
                          std::filesystem::copy_options::overwrite_existing);
  }
}
