// Any bytes as an event file: opened, read in every way, changed, saved.

#include <algorithm>
#include <map>
#include <vector>

#include "larkstone/analysis/course.hpp"

#include "support.hpp"

namespace larkstone::fuzz {
namespace {

// A first and a last category and derived course stand for those between.
std::vector<int> ends(int count) {
  if (count == 0) return {-1, 0};
  return count == 1 ? std::vector<int>{0, 1} : std::vector<int>{0, count - 1, count};
}

void extractTags(LRKEvent& event) {
  for (int number = 0; number < 256; ++number) {
    const auto tag = static_cast<enmFileTag>(number);
    bool isSet = false;
    event.getPropertyByTag(tag, isSet);
    for (const int i : ends(event.noOfCategories())) event.extractCategoryTag(i, tag);
    for (const int i : ends(event.noOfDerivedCourses())) event.extractDerivedCourseTag(i, tag);
    if (number == 80) require(event.openTempFile(), "the records can be held");
  }
  event.closeTempFile();
}

// The lists over all runners say what the decoded categories say.
void askForRunners(LRKEvent& event) {
  std::vector<std::string> categories;
  std::vector<std::string> names;
  std::vector<std::string> clubs;
  const int count = event.getAllRunnerCategoriesNamesAndClubs(categories, names, clubs);
  std::vector<LRKRunner> found;
  require(event.searchRunners(found, {}, {}) == count, "a search without conditions finds all");
  std::vector<LRKCodes> categoryCodes;
  std::vector<LRKCodes> codes;
  int noOfCodes = 0;
  event.getAllCategoryAndRunnerCodes(categoryCodes, noOfCodes, codes);
  require(noOfCodes == count, "every runner has codes");
  std::size_t next = 0;
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.category(i);
    for (int k = 0; k < category->noOfRunners(); ++k, ++next) {
      const LRKRunner& runner = category->runner(k);
      require(next < names.size() && names[next] == runner.name() && clubs[next] == runner.club(),
              "names and clubs are those of the runners");
      require(described(found[next]) == described(runner), "runners found are those decoded");
      require(codes[next].codes() == runner.punches().codeArray(), "codes are those punched");
    }
    int noOfForkings = 0;
    event.getAllCategoryForkings(i, noOfForkings, categoryCodes);
    event.getCategoryRunnerCodes(i, codes);
    event.getAllCategoryAndRunnerCodes(categoryCodes, noOfCodes, codes);
  }
  require(next == names.size(), "nobody else is listed");
}

void askForValues(LRKEvent& event) {
  std::vector<TagValue> values;
  std::vector<bool> exist;
  std::vector<LRKRunner> found;
  for (int tag = etagRunnerID; tag <= etagRunnerCourseLength; ++tag) {
    event.getAllRunnerTagValues(static_cast<enmFileTag>(tag), values, exist);
  }
  event.searchRunners(found, {{etagRunnerName, "*[A-Z]?*"}, {etagRunnerPunches, 2}},
                      {{etagRunnerPunches, ecopMoreThanOrEqual}}, true);
  std::vector<int> indices, places, noOfRunners;
  std::vector<std::string> names, clubs, countries, formats;
  std::vector<Time> times, kmTimes, best, secondBest, bestKm, secondBestKm;
  std::vector<enmStatus> statuses;
  std::vector<Length> lengths;
  std::vector<Date> dates;
  event.getAllResults(indices, names, clubs, countries, places, times, statuses, lengths, kmTimes,
                      dates, formats, noOfRunners, best, secondBest, bestKm, secondBestKm);
}

void change(LRKEvent& event) {
  const int last = event.noOfCategories() - 1;
  if (last >= 0) {
    LRKCategory category = *event.category(last);
    std::vector<std::string> punches;
    for (int i = 0; i < category.noOfRunners(); ++i) {
      punches.push_back(category.runner(i).name() + described(category.runner(i).punches()));
    }
    require(event.category(last, category) == 0, "a category can be stored");
    event.unsetCurrentCategory();
    const auto stored = event.category(last);
    require(stored->noOfRunners() == category.noOfRunners(), "a category keeps its runners");
    for (int i = 0; i < stored->noOfRunners(); ++i) {
      const LRKRunner& runner = stored->runner(i);
      require(runner.name() + described(runner.punches()) == punches[static_cast<std::size_t>(i)],
              "runners keep their punches");
    }
    if (category.noOfRunners() > 0) category.moveRunner(0, category.noOfRunners() - 1);
    event.replaceCategoryByName(category);
    event.moveCategory(0, event.noOfCategories() - 1);
  }
  for (int i = 0; i < std::min(event.noOfDerivedCourses(), 2); ++i) {
    event.derivedCourseAsCourse(i);
    event.addDerivedCourse(*event.derivedCourse(i));
    event.moveDerivedCourse(event.noOfDerivedCourses() - 1, 0);
  }
  checkSaving(event);
  event.deleteCategory(last);
  event.deleteDerivedCourse(0);
}

}  // namespace
}  // namespace larkstone::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace larkstone;
  fuzz::Event event;
  const std::int32_t code = event.openEvent(fuzz::fileOf(data, size));
  fuzz::require(event.isOpen() == (code == 0 || code == LRK_UNKNOWN_FILE_VERSION),
                "an event is open or its code says why not");
  if (!event.isOpen()) return 0;
  fuzz::extractTags(event);
  fuzz::askForRunners(event);
  fuzz::askForValues(event);
  fuzz::checkSaving(event);
  fuzz::change(event);
  fuzz::checkSaving(event);
  return 0;
}
