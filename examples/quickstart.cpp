// Imports a result list and prints, for every category, the winner and the leg that cost the field
// the most time. Usage: quickstart [RESULT-LIST]

#include <iostream>

#include "larkstone/analysis/course.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/import.hpp"

using namespace larkstone;

namespace {

int costliestLeg(const LRKCourse& course) {
  int costliest = 0;
  for (int leg = 1; leg < course.noOfLegs(); ++leg) {
    if (course.noOfTimeLossRunners(leg) > course.noOfTimeLossRunners(costliest)) costliest = leg;
  }
  return costliest;
}

void printCategory(LRKCategory& category) {
  LRKCourse course = category.toCourse(erqlAtLeastOne, false, false);
  course.calculate();
  course.sortRunners(esorResultTime);
  if (course.noOfRunners() == 0 || course.noOfLegs() == 0) return;

  const LRKRunner& winner = course.runner(0);
  const int leg = costliestLeg(course);
  std::cout << course.name() << ": " << winner.name() << ", " << timeToString(winner.resultTime())
            << "; " << course.noOfTimeLossRunners(leg) << " lost time on the way "
            << course.legs().ordinalString(leg, "start", "finish") << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  LRKEvent event;
  event.createNewEvent("race.lrk4", true);
  LRKImport importer;
  const int result =
      importer.import(LRK_IMPORT_AUTO, event, argc > 1 ? argv[1] : "examples/club-race.xml");
  if (result != 0) {
    std::cerr << importText(result) << '\n';
    return 1;
  }
  for (int i = 0; i < event.noOfCategories(); ++i) printCategory(*event.category(i));
  return 0;
}
