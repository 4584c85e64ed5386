// Any bytes as an event file, analysed: every course with all stages, asked about every leg, sorted
// by every key, written as split tables.

#include "larkstone/analysis/course.hpp"
#include "larkstone/online/table.hpp"

#include "support.hpp"
#include "support/defined.hpp"

namespace {

using namespace larkstone;
using fuzz::require;

void sortByAll(LRKCourse& course) {
  for (int key = esorCustom; key <= esorTotalPerformanceIndex; ++key) {
    TranslationTable moved;
    course.sortRunnersAndCreateTLT(static_cast<enmSort>(key), moved, key % 3 - 1, key % 2 == 0);
  }
}

void write(LRKCourse& course) {
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.showPlaces(true);
  table.showStartTimes(true);
  table.showFinishTimes(true);
  table.showTooltips(true);
  table.relativeLegTimes(true);
  table.relativeTotalTimes(true);
  table.sort(esorResultTime);
  table.createHTMLTable();
  table.createTextTable();
  const std::string& text = table.textTableString();
  require(std::count(text.begin(), text.end(), '\n') == 2 + 2 * course.noOfRunners(),
          "every runner has two lines");
}

void analyse(LRKCourse& course, int way) {
  course.correctZeroAndNegativeTimes(way % 2 == 0);
  course.timesWithoutTimeLoss(way % 3 == 0);
  course.timeLossCalculationMethod(way % 4 < 2 ? etlcCompareToTopTime : etlcCompareToBestTime);
  course.pfIndexCalculationMethod(way % 8 < 4 ? elfiExtended : elfiBasic);
  if (way % 5 == 0) course.timeAccuracy(etacAuto);
  for (int calculation = 0; calculation < 2; ++calculation) {  // the second on corrected times
    course.calculate();
    test::checkDefined(course, require);
    sortByAll(course);
  }
  write(course);
  course.toCategory();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Event event;
  event.openEvent(fuzz::fileOf(data, size));
  if (!event.isOpen()) return 0;
  int way = static_cast<int>(size % 60);
  for (int i = 0; i < event.noOfCategories(); ++i, ++way) {
    const enmRequiredLegs required = way % 2 == 0 ? erqlAtLeastOne : erqlNone;
    LRKCourse course = event.category(i)->toCourse(required, way % 3 == 0, way % 4 == 0);
    analyse(course, way);
  }
  for (int i = 0; i < event.noOfDerivedCourses(); ++i, ++way) {
    if (auto course = event.derivedCourseAsCourse(i)) analyse(*course, way);
  }
  return 0;
}
