#include "larkstone/event/reference_renumbering.hpp"

#include <algorithm>

#include "larkstone/core/text.hpp"
#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/derived_course_codec.hpp"
#include "larkstone/event/error_constants.hpp"
#include "larkstone/event/runner_block.hpp"

namespace larkstone {

namespace {

// The categories that a derived course refers to, out of the table or into it.
bool findReferences(const EventStore& store, Record& record) {
  if (record.categoriesReferredTo) return true;
  std::string bytes;
  if (!store.read(record, bytes)) return false;
  const LRKDerivedCourse course = decodeDerivedCourse(bytes);
  std::vector<int> categories;
  categories.reserve(static_cast<std::size_t>(course.noOfRunners()));
  for (int i = 0; i < course.noOfRunners(); ++i) {
    categories.push_back(course.runnerCategoryIndex(i));
  }
  std::sort(categories.begin(), categories.end());
  categories.erase(std::unique(categories.begin(), categories.end()), categories.end());
  categories.shrink_to_fit();
  record.categoriesReferredTo = std::move(categories);
  return true;
}

bool sameReferences(const LRKDerivedCourse& a, const LRKDerivedCourse& b) {
  if (a.noOfRunners() != b.noOfRunners()) return false;
  for (int i = 0; i < a.noOfRunners(); ++i) {
    if (a.runnerCategoryIndex(i) != b.runnerCategoryIndex(i)) return false;
    if (a.runnerIndex(i) != b.runnerIndex(i)) return false;
  }
  return true;
}

template <class Renumber>
bool renumber(const EventStore& store, Record& record, Renumber&& renumberCourse,
              std::vector<RecordBytes>& changes) {
  std::string bytes;
  if (!store.read(record, bytes)) return false;
  const LRKDerivedCourse before = decodeDerivedCourse(bytes);
  LRKDerivedCourse after = before;
  renumberCourse(after);
  if (!sameReferences(before, after)) changes.push_back({&record, encodeDerivedCourse(after)});
  return true;
}

bool refersTo(const Record& course, int fileIndex) {
  return std::binary_search(course.categoriesReferredTo->begin(),
                            course.categoriesReferredTo->end(), fileIndex);
}

bool sameRunner(std::string_view a, std::string_view b) {
  const RunnerBlock first(a);
  const RunnerBlock second(b);
  return equalNoCase(first.name(), second.name()) &&
         equalNoCase(first.text(etagRunnerClub), second.text(etagRunnerClub));
}

bool sameRunners(std::string_view a, std::string_view b) {
  const std::vector<std::string_view> first = runnerBlocks(a);
  const std::vector<std::string_view> second = runnerBlocks(b);
  return std::equal(first.begin(), first.end(), second.begin(), second.end(), sameRunner);
}

}  // namespace

std::int32_t renumberCategories(EventStore& store, const TranslationTable& newIndices) {
  const auto isChanged = [&newIndices](int index) {
    const bool known = index >= 0 && static_cast<std::size_t>(index) < newIndices.size();
    return !known || newIndices[static_cast<std::size_t>(index)] != index;
  };
  const auto byCategory = [&](LRKDerivedCourse& c) { c.changeCategoryIndices(newIndices); };
  std::vector<RecordBytes> changes;
  for (Record& course : store.derivedCourses) {
    if (!findReferences(store, course)) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    const std::vector<int>& categories = *course.categoriesReferredTo;
    if (std::none_of(categories.begin(), categories.end(), isChanged)) continue;
    if (!renumber(store, course, byCategory, changes)) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  }
  return changes.empty() ? 0 : store.write(changes);
}

bool renumberRunners(EventStore& store, int fileIndex, std::string_view newRecord,
                     std::vector<RecordBytes>& changes) {
  std::vector<Record*> referring;
  for (Record& course : store.derivedCourses) {
    if (!findReferences(store, course)) return false;
    if (refersTo(course, fileIndex)) referring.push_back(&course);
  }
  if (referring.empty()) return true;

  std::string bytes;
  if (!store.read(store.categories[static_cast<std::size_t>(fileIndex)], bytes)) return false;
  if (sameRunners(bytes, newRecord)) return true;
  TranslationTable newNumbers;
  decodeCategory(bytes, fileIndex)
      .createMatchingTLT(decodeCategory(newRecord, fileIndex), newNumbers);
  const auto byRunner = [&](LRKDerivedCourse& c) { c.changeRunnerIndices(fileIndex, newNumbers); };
  return std::all_of(referring.begin(), referring.end(),
                     [&](Record* course) { return renumber(store, *course, byRunner, changes); });
}

}  // namespace larkstone
