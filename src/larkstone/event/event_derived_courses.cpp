// The derived courses of an event: reading, storing, their order, and courses made of them.

#include <algorithm>
#include <map>
#include <tuple>

#include "larkstone/analysis/course.hpp"
#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/derived_course_codec.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/event_store.hpp"
#include "larkstone/event/move_entry.hpp"
#include "larkstone/model/runner_origin.hpp"

namespace larkstone {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// Puts other indices on the categories referred to; those that the event has not got stay.
void translateCategories(LRKDerivedCourse& course, const std::vector<int>& indices) {
  for (int i = 0; i < course.noOfRunners(); ++i) {
    const int index = course.runnerCategoryIndex(i);
    if (index >= 0 && at(index) < indices.size()) course.runnerCategoryIndex(i, indices[at(index)]);
  }
}

struct Reference {
  int categoryIndex;
  int runnerIndex;
  int place;  // in the derived course

  friend bool operator<(const Reference& a, const Reference& b) {
    return std::tie(a.categoryIndex, a.runnerIndex, a.place) <
           std::tie(b.categoryIndex, b.runnerIndex, b.place);
  }
};

// Category by category, and each runner once, where the derived course names it first.
std::vector<Reference> referencesByCategory(const LRKDerivedCourse& course) {
  std::vector<Reference> references;
  references.reserve(at(course.noOfRunners()));
  for (int i = 0; i < course.noOfRunners(); ++i) {
    references.push_back({course.runnerCategoryIndex(i), course.runnerIndex(i), i});
  }
  std::sort(references.begin(), references.end());
  const auto repeated =
      std::unique(references.begin(), references.end(), [](const Reference& a, const Reference& b) {
        return a.categoryIndex == b.categoryIndex && a.runnerIndex == b.runnerIndex;
      });
  references.erase(repeated, references.end());
  return references;
}

// The runners referred to, by their place in the derived course, out of the record of their
// category. A number that the category has not got gives none.
void decodeRunners(std::string_view record, const std::string& categoryName,
                   std::vector<Reference>::const_iterator begin,
                   std::vector<Reference>::const_iterator end, std::map<int, LRKRunner>& runners) {
  const std::vector<std::string_view> blocks = runnerBlocks(record);
  for (auto reference = begin; reference != end; ++reference) {
    const int number = reference->runnerIndex;
    if (number < 0 || at(number) >= blocks.size()) continue;
    LRKRunner& runner = runners[reference->place];
    decodeRunner(blocks[at(number)], runner);
    RunnerOrigin::set(runner, reference->categoryIndex, categoryName, number);
  }
}

}  // namespace

bool LRKEvent::isDerivedCourse(int index) const {
  return index >= 0 && index < noOfDerivedCourses();
}

int LRKEvent::noOfDerivedCourses() const {
  return isOpen() ? static_cast<int>(store_->derivedCourses.size()) : 0;
}

std::string LRKEvent::derivedCourseName(int index) const {
  return isDerivedCourse(index) ? store_->derivedCourses[at(index)].name : std::string();
}

std::optional<LRKDerivedCourse> LRKEvent::derivedCourse(int index) const {
  std::string record;
  if (!isDerivedCourse(index) || !store_->read(store_->derivedCourses[at(index)], record)) {
    return std::nullopt;
  }
  LRKDerivedCourse course = decodeDerivedCourse(record);
  translateCategories(course, fileToDisplay_);
  return course;
}

std::int32_t LRKEvent::derivedCourse(int index, const LRKDerivedCourse& derivedCourse) {
  if (!isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  return isDerivedCourse(index) ? storeDerived(store_->derivedCourses[at(index)], derivedCourse)
                                : 0;
}

std::int32_t LRKEvent::storeDerived(Record& record, LRKDerivedCourse derivedCourse) {
  translateCategories(derivedCourse, displayToFile_);
  const std::int32_t result = store_->write(record, encodeDerivedCourse(derivedCourse));
  if (result == 0) record.name = derivedCourse.name();
  return result;
}

std::int32_t LRKEvent::addDerivedCourse(const LRKDerivedCourse& derivedCourse) {
  if (!isOpen() || store_->isFull()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  Record record;
  record.place = noOfDerivedCourses();
  const std::int32_t result = storeDerived(record, derivedCourse);
  if (result == 0) store_->derivedCourses.push_back(std::move(record));
  return result;
}

void LRKEvent::moveDerivedCourse(int currentIndex, int newIndex) {
  if (!isDerivedCourse(currentIndex) || !isDerivedCourse(newIndex)) return;
  moveEntry(store_->derivedCourses, currentIndex, newIndex);
}

std::int32_t LRKEvent::deleteDerivedCourse(int index) {
  if (!isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  if (!isDerivedCourse(index)) return 0;
  const int place = store_->derivedCourses[at(index)].place;
  store_->derivedCourses.erase(store_->derivedCourses.begin() + index);
  for (Record& other : store_->derivedCourses) other.place -= other.place > place ? 1 : 0;
  return 0;
}

std::optional<LRKCourse> LRKEvent::derivedCourseAsCourse(int index) const {
  const std::optional<LRKDerivedCourse> derived = derivedCourse(index);
  if (!derived) return std::nullopt;
  return convertDerivedCourseToCourse(*derived);
}

LRKCourse LRKEvent::convertDerivedCourseToCourse(const LRKDerivedCourse& derivedCourse) const {
  LRKCourse course;
  course.name(derivedCourse.name());
  course.setCourseLegsEx(derivedCourse.legs(), derivedCourse.codesEqualToStart(),
                         derivedCourse.codesEqualToFinish());
  course.setRunnerAdditionStyle(derivedCourse.requiredLegs(), derivedCourse.allowRearrangement(),
                                derivedCourse.allowMerging());

  std::map<int, LRKRunner> runners;
  const std::vector<Reference> references = referencesByCategory(derivedCourse);
  for (auto begin = references.begin(); begin != references.end();) {
    const int index = begin->categoryIndex;
    const auto end = std::find_if(begin, references.end(),
                                  [index](const Reference& r) { return r.categoryIndex != index; });
    std::string bytes;
    if (isCategory(index)) {
      const Record& category = store_->categories[at(categoryFileIndex(index))];
      if (store_->read(category, bytes)) decodeRunners(bytes, category.name, begin, end, runners);
    }
    begin = end;
  }
  for (const auto& [place, runner] : runners) course.addRunner(runner);
  return course;
}

}  // namespace larkstone
