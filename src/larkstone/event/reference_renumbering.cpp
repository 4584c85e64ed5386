#include "larkstone/event/reference_renumbering.hpp"

#include <algorithm>
#include <unordered_map>

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

// Pairs the runners of a category before and after a change.
class RunnerPairing {
 public:
  RunnerPairing(int displayIndex, std::string_view before, const LRKCategory& category,
                std::string_view after)
      : oldKeys_(keysOf(before)), newKeys_(keysOf(after)), newNumbers_(oldKeys_.size(), -1) {
    taken_.resize(newKeys_.size());
    findNumbers(displayIndex, category);
    pairByNumber([this](std::size_t i, std::size_t k) { return oldKeys_[i] == newKeys_[k]; });
    pairByKey();
    pairByNumber([](std::size_t, std::size_t) { return true; });
  }

  /// The new number by the old one, -1 for a runner who is gone.
  const TranslationTable& newNumbers() const { return newNumbers_; }

 private:
  static std::vector<std::string> keysOf(std::string_view record) {
    std::vector<std::string> keys;
    for (const std::string_view block : runnerBlocks(record)) {
      const RunnerBlock runner(block);
      keys.push_back(lowered(runner.name()) + '\n' + lowered(runner.text(etagRunnerClub)));
    }
    return keys;
  }

  // Who says to have had a number of this category. In a category from elsewhere, or for a runner
  // from another one, the numbers mean nothing.
  void findNumbers(int displayIndex, const LRKCategory& category) {
    for (std::size_t k = 0; k < newKeys_.size(); ++k) {
      const LRKRunner& runner = category.runner(static_cast<int>(k));
      const bool known = runner.runnerIndex() >= 0 &&
                         static_cast<std::size_t>(runner.runnerIndex()) < oldKeys_.size();
      if (known && runner.categoryIndex() == displayIndex) {
        numbered_.emplace_back(static_cast<std::size_t>(runner.runnerIndex()), k);
      }
    }
  }

  template <class Accept>
  void pairByNumber(Accept accept) {
    for (const auto& [i, k] : numbered_) {
      if (newNumbers_[i] < 0 && !taken_[k] && accept(i, k)) pair(i, k);
    }
  }

  void pairByKey() {
    std::unordered_map<std::string_view, std::vector<std::size_t>>
        left;  // the first one at the end
    for (std::size_t k = newKeys_.size(); k-- > 0;) {
      if (!taken_[k]) left[newKeys_[k]].push_back(k);
    }
    for (std::size_t i = 0; i < oldKeys_.size(); ++i) {
      const auto found = left.find(oldKeys_[i]);
      if (newNumbers_[i] >= 0 || found == left.end() || found->second.empty()) continue;
      pair(i, found->second.back());
      found->second.pop_back();
    }
  }

  void pair(std::size_t i, std::size_t k) {
    newNumbers_[i] = static_cast<std::int16_t>(k);
    taken_[k] = true;
  }

  std::vector<std::string> oldKeys_;  // name and club
  std::vector<std::string> newKeys_;
  std::vector<std::pair<std::size_t, std::size_t>> numbered_;  // old and new number
  std::vector<bool> taken_;
  TranslationTable newNumbers_;
};

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

bool renumberRunners(EventStore& store, int fileIndex, int displayIndex,
                     const LRKCategory& category, std::string_view newRecord,
                     std::vector<RecordBytes>& changes) {
  std::vector<Record*> referring;
  for (Record& course : store.derivedCourses) {
    if (!findReferences(store, course)) return false;
    if (refersTo(course, fileIndex)) referring.push_back(&course);
  }
  if (referring.empty()) return true;

  std::string bytes;
  if (!store.read(store.categories[static_cast<std::size_t>(fileIndex)], bytes)) return false;
  const RunnerPairing pairing(displayIndex, bytes, category, newRecord);
  const auto byRunner = [&](LRKDerivedCourse& c) {
    c.changeRunnerIndices(fileIndex, pairing.newNumbers());
  };
  return std::all_of(referring.begin(), referring.end(),
                     [&](Record* course) { return renumber(store, *course, byRunner, changes); });
}

}  // namespace larkstone
