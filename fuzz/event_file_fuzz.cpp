// Any bytes as an event file: opened, read in every way, changed, saved.

#include <vector>

#include "larkstone/analysis/course.hpp"

#include "support.hpp"

namespace {

using namespace larkstone;
using fuzz::require;

void extractTags(LRKEvent& event) {
  for (int number = 0; number < 256; ++number) {
    const auto tag = static_cast<enmFileTag>(number);
    bool isSet = false;
    event.getPropertyByTag(tag, isSet);
    for (int i = -1; i < 2; ++i) {
      event.extractCategoryTag(event.noOfCategories() - 1 + i, tag);
      event.extractDerivedCourseTag(i, tag);
    }
    if (number == etagCategoryMaxNoOfLegs) require(event.openTempFile(), "records can be held");
  }
  event.closeTempFile();
}

// The lists over all runners, read from the stored bytes, say what the decoded categories say.
void askForRunners(LRKEvent& event) {
  std::vector<std::string> categories, names, clubs;
  std::vector<LRKRunner> found;
  std::vector<LRKCodes> codes;
  event.getAllRunnerCategoriesNamesAndClubs(categories, names, clubs);
  event.searchRunners(found, {}, {});
  require(found.size() == names.size(), "a search without conditions finds everybody");
  std::size_t next = 0;
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.category(i);
    require(event.getCategoryRunnerCodes(i, codes) == category->noOfRunners(), "all have codes");
    for (int k = 0; k < category->noOfRunners(); ++k, ++next) {
      const LRKRunner& runner = category->runner(k);
      require(next < names.size() && names[next] == runner.name() && clubs[next] == runner.club() &&
                  codes[static_cast<std::size_t>(k)].codes() == runner.punches().codeArray() &&
                  found[next].punches().codeArray() == runner.punches().codeArray(),
              "lists agree with the runners");
    }
    int noOfForkings = 0;
    event.getAllCategoryForkings(i, noOfForkings, codes);
  }
  require(next == names.size(), "nobody else is listed");
}

void askForValues(LRKEvent& event) {
  std::vector<TagValue> values;
  std::vector<bool> exist;
  for (int tag = etagRunnerID; tag <= etagRunnerCourseLength; ++tag) {
    event.getAllRunnerTagValues(static_cast<enmFileTag>(tag), values, exist);
  }
  std::vector<LRKRunner> found;
  event.searchRunners(found, {{etagRunnerName, "*[A-Z]?*"}, {etagRunnerPunches, 2}},
                      {{etagRunnerPunches, ecopMoreThanOrEqual}}, true);
  std::vector<int> indices, places, runners;
  std::vector<std::string> names, clubs, countries, formats;
  std::vector<Time> times, kmTimes, best, secondBest, bestKm, secondBestKm;
  std::vector<enmStatus> statuses;
  std::vector<Length> lengths;
  std::vector<Date> dates;
  event.getAllResults(indices, names, clubs, countries, places, times, statuses, lengths, kmTimes,
                      dates, formats, runners, best, secondBest, bestKm, secondBestKm);
}

std::string runnersOf(const LRKCategory& category) {
  std::string text;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    text += runner.name() + runner.punches().codesToString() + std::to_string(runner.finishTime());
  }
  return text;
}

void change(LRKEvent& event) {
  const int last = event.noOfCategories() - 1;
  if (last >= 0) {
    LRKCategory category = *event.category(last);
    const std::string runners = runnersOf(category);
    require(event.category(last, category) == 0, "a category can be stored");
    event.unsetCurrentCategory();
    require(runnersOf(*event.category(last)) == runners, "runners keep their punches");
    if (category.noOfRunners() > 0) category.moveRunner(0, category.noOfRunners() - 1);
    event.replaceCategoryByName(category);
    event.moveCategory(0, last);
  }
  if (const auto course = event.derivedCourse(0)) {
    event.derivedCourseAsCourse(0);
    event.addDerivedCourse(*course);
    event.moveDerivedCourse(event.noOfDerivedCourses() - 1, 0);
  }
  fuzz::checkSaving(event);
  event.deleteCategory(last);
  event.deleteDerivedCourse(0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Event event;
  const std::int32_t code = event.openEvent(fuzz::fileOf(data, size));
  require(event.isOpen() == (code == 0 || code == LRK_UNKNOWN_FILE_VERSION), "the code says it");
  if (!event.isOpen()) return 0;
  extractTags(event);
  askForRunners(event);
  askForValues(event);
  fuzz::checkSaving(event);
  change(event);
  fuzz::checkSaving(event);
  return 0;
}
