// The categories of an event: reading, storing, and their order.

#include <algorithm>
#include <numeric>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/event_store.hpp"
#include "larkstone/event/move_entry.hpp"
#include "larkstone/event/reference_renumbering.hpp"

namespace larkstone {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

std::vector<int> inverse(const std::vector<int>& permutation) {
  std::vector<int> result(permutation.size());
  for (std::size_t i = 0; i < permutation.size(); ++i) {
    result[at(permutation[i])] = static_cast<int>(i);
  }
  return result;
}

std::vector<int> identity(std::size_t count) {
  std::vector<int> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0);
  return numbers;
}

}  // namespace

void LRKEvent::sortForDisplay() {
  std::vector<std::string> keys;
  keys.reserve(store_->categories.size());
  for (const Record& category : store_->categories) {
    keys.push_back(
        createCategorySortKey(category.name, static_cast<int>(keys.size()), categorySortFlags_));
  }
  displayToFile_ = identity(keys.size());
  std::sort(displayToFile_.begin(), displayToFile_.end(),
            [&keys](int a, int b) { return keys[at(a)] < keys[at(b)]; });
  fileToDisplay_ = inverse(displayToFile_);
}

int LRKEvent::noOfCategories() const {
  return isOpen() ? static_cast<int>(store_->categories.size()) : 0;
}

int LRKEvent::categoryFileIndex(int displayIndex) const {
  return isCategory(displayIndex) ? displayToFile_[at(displayIndex)] : -1;
}

int LRKEvent::categoryDisplayIndex(int fileIndex) const {
  return isCategory(fileIndex) ? fileToDisplay_[at(fileIndex)] : -1;
}

std::string LRKEvent::categoryName(int displayIndex) const {
  if (!isCategory(displayIndex)) return {};
  return store_->categories[at(categoryFileIndex(displayIndex))].name;
}

std::shared_ptr<LRKCategory> LRKEvent::category(int index) {
  if (!isCategory(index)) return nullptr;
  if (index != currentIndex_) {
    unsetCurrentCategory();
    std::optional<LRKCategory> stored = storedCategory(index);
    if (!stored) return nullptr;
    current_ = std::make_shared<LRKCategory>(*std::move(stored));
    currentIndex_ = index;
  }
  return current_;
}

std::optional<LRKCategory> LRKEvent::storedCategory(int index) const {
  std::string record;
  if (!isCategory(index) ||
      !store_->read(store_->categories[at(categoryFileIndex(index))], record)) {
    return std::nullopt;
  }
  return decodeCategory(record, index);
}

void LRKEvent::unsetCurrentCategory() {
  current_.reset();
  currentIndex_ = -1;
}

std::int32_t LRKEvent::category(int index, LRKCategory& category) {
  if (!isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  return isCategory(index) ? storeAt(categoryFileIndex(index), category) : 0;
}

std::int32_t LRKEvent::storeAt(int fileIndex, LRKCategory& category) {
  const int displayIndex = categoryDisplayIndex(fileIndex);
  deriveStoredValues(category);
  Record& record = store_->categories[at(fileIndex)];
  std::string bytes = encodeCategory(category);
  std::vector<RecordBytes> changes;
  if (!renumberRunners(*store_, fileIndex, displayIndex, category, bytes, changes)) {
    return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  }
  changes.push_back({&record, std::move(bytes)});
  const std::int32_t result = store_->write(changes);
  if (result != 0) return result;
  record.name = category.name();
  store_->straighten();
  settle(category, displayIndex);
  return 0;
}

// The category was stored at that place. The object that was handed out may come from another one.
void LRKEvent::settle(LRKCategory& category, int displayIndex) {
  category.categoryIndex(displayIndex);
  numberRunners(category);
  if (current_.get() == &category) {
    currentIndex_ = displayIndex;
  } else if (currentIndex_ == displayIndex) {
    unsetCurrentCategory();
  }
}

std::int32_t LRKEvent::addCategory(LRKCategory& category) {
  if (!isOpen() || store_->isFull()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  const int index = noOfCategories();
  deriveStoredValues(category);
  Record record;
  record.place = index;
  record.name = category.name();
  const std::int32_t result = store_->write(record, encodeCategory(category));
  if (result != 0) return result;
  store_->categories.push_back(std::move(record));
  displayToFile_.push_back(index);
  fileToDisplay_.push_back(index);
  settle(category, index);
  return 0;
}

void LRKEvent::moveCategory(int currentIndex, int newIndex) {
  if (!isCategory(currentIndex) || !isCategory(newIndex) || currentIndex == newIndex) return;
  const bool inFile = (categorySortFlags_ & ecsfSorted) == 0;
  if (inFile && !moveInFile(displayToFile_[at(currentIndex)], displayToFile_[at(newIndex)])) return;
  unsetCurrentCategory();
  moveEntry(displayToFile_, currentIndex, newIndex);
  fileToDisplay_ = inverse(displayToFile_);
}

bool LRKEvent::moveInFile(int from, int to) {
  std::vector<int> oldIndices = identity(displayToFile_.size());
  moveEntry(oldIndices, from, to);
  const std::vector<int> newIndices = inverse(oldIndices);
  if (renumberCategories(*store_, {newIndices.begin(), newIndices.end()}) != 0) return false;
  moveEntry(store_->categories, from, to);
  for (int& fileIndex : displayToFile_) fileIndex = newIndices[at(fileIndex)];
  return true;
}

std::int32_t LRKEvent::deleteCategory(int index) {
  if (!isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  if (!isCategory(index)) return 0;
  const int deleted = displayToFile_[at(index)];
  std::vector<int> newIndices = identity(displayToFile_.size());
  for (int& fileIndex : newIndices) fileIndex -= fileIndex > deleted ? 1 : 0;
  newIndices[at(deleted)] = -1;
  const std::int32_t result = renumberCategories(*store_, {newIndices.begin(), newIndices.end()});
  if (result != 0) return result;

  unsetCurrentCategory();
  store_->categories.erase(store_->categories.begin() + deleted);
  store_->straighten();
  displayToFile_.erase(displayToFile_.begin() + index);
  for (int& fileIndex : displayToFile_) fileIndex = newIndices[at(fileIndex)];
  fileToDisplay_ = inverse(displayToFile_);
  return 0;
}

bool LRKEvent::replaceCategoryByName(LRKCategory& category) {
  for (int i = 0; i < noOfCategories(); ++i) {
    if (!equalNoCase(store_->categories[at(i)].name, category.name())) continue;
    return storeAt(i, category) == 0;
  }
  addCategory(category);
  return false;
}

std::int32_t LRKEvent::updateForkingInfo() {
  if (!isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  unsetCurrentCategory();
  // The runners stay who and where they are, so derived courses need no renumbering.
  for (int i = 0; i < noOfCategories(); ++i) {
    std::optional<LRKCategory> category = storedCategory(categoryDisplayIndex(i));
    if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
    deriveStoredValues(*category);
    Record& record = store_->categories[at(i)];
    const std::int32_t result = store_->write(record, encodeCategory(*category));
    if (result != 0) return result;
    record.name = category->name();
  }
  store_->straighten();
  return saveEvent();
}

}  // namespace larkstone
