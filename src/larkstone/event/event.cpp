#include "larkstone/event/event.hpp"

#include "larkstone/event/event_file.hpp"
#include "larkstone/event/event_store.hpp"
#include "larkstone/platform/clock.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

LRKEvent::LRKEvent() = default;

LRKEvent::~LRKEvent() { closeEvent(); }

void LRKEvent::reset() {
  closeEvent();
  forEachRow([this](const auto& row) {
    if constexpr (!isRecordRow<std::decay_t<decltype(row)>>) this->*row.member = {};
  });
  filename_.clear();
  fileSize_ = 0;
  isNew_ = false;
}

void LRKEvent::tempFilePath(std::string path) { tempFilePath_ = folderPath(std::move(path)); }

TagValue LRKEvent::getPropertyByTag(enmFileTag tag, bool& isSet) const {
  if (tag == etagEventNoOfCategories || tag == etagEventNoOfDerivedCourses) {
    isSet = true;
    return tag == etagEventNoOfCategories ? noOfCategories() : noOfDerivedCourses();
  }
  return propertyByTag(*this, tag, isSet);
}

void LRKEvent::setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue) {
  larkstone::setPropertyByTag(*this, tag, value, setValue);
}

std::int32_t LRKEvent::createNewEvent(const std::string& fileName, bool overwrite) {
  if (!overwrite && fileExists(fileName)) return LRK_FILE_ALREADY_EXISTS;
  std::string name = fileName;  // may be our own filename(), which is cleared
  reset();
  filename_ = std::move(name);
  isNew_ = true;
  auto store = std::make_unique<EventStore>(nativeFolder(tempFilePath_));
  if (!store->isOpen()) return LRK_COULD_NOT_CREATE_FILE;
  store_ = std::move(store);
  return 0;
}

std::int32_t LRKEvent::openEvent(const std::string& fileName) {
  std::string name = fileName;
  reset();
  if (!fileExists(name)) return LRK_FILE_DOES_NOT_EXIST;
  if (isReadOnlyFile(name)) return LRK_FILE_READONLY;
  filename_ = std::move(name);
  return load();
}

std::int32_t LRKEvent::load() {
  const File file = isRegularFile(filename_) ? File(filename_, File::Mode::read) : File();
  if (!file.isOpen()) return LRK_COULD_NOT_OPEN_FILE;
  auto store = std::make_unique<EventStore>(nativeFolder(tempFilePath_));
  const std::int32_t result = readEventFile(file, *this, *store);
  if (result != 0 && result != LRK_UNKNOWN_FILE_VERSION) return result;
  fileSize_ = saturated<std::int32_t>(file.size());

  const auto nameIn = [&store](const Record& record, const TagRange& range, enmFileTag tag) {
    return textOf(store->find(record, range, tag)).value_or("");
  };
  for (Record& category : store->categories) {
    category.name = nameIn(category, categoryTags, etagCategoryName);
  }
  for (Record& course : store->derivedCourses) {
    course.name = nameIn(course, derivedCourseTags, etagDerivedCourseName);
  }
  store_ = std::move(store);
  sortForDisplay();
  return result;
}

void LRKEvent::stampForSaving() {
  lastModified_ = currentDate();
  if (!isNew_) return;
  created_ = lastModified_;
  createdBy_ = lastModifiedBy_;
}

std::int32_t LRKEvent::saveEvent(const std::string& fileName) {
  if (!isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  const std::string& path = fileName.empty() ? filename_ : fileName;
  if (!mayReplaceFile(path)) return LRK_FILE_READONLY;
  WholeFile file(path);
  if (!file.isOpen()) return LRK_COULD_NOT_OPEN_FILE;

  stampForSaving();
  const std::string head = encodeHead(*this, *store_);
  bool written = file.write(head);
  const bool read = store_->transferData(
      [&](std::string_view bytes) { return written = written && file.write(bytes); });
  if (written && !read) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  if (!written || !file.commit()) return LRK_COULD_NOT_OPEN_FILE;
  fileSize_ =
      saturated<std::int32_t>(static_cast<std::int64_t>(head.size()) + store_->dataLength());
  return 0;
}

std::int32_t LRKEvent::closeEvent() {
  unsetCurrentCategory();
  displayToFile_.clear();
  fileToDisplay_.clear();
  store_.reset();
  return 0;
}

bool LRKEvent::openTempFile() { return isOpen() && store_->hold(); }

void LRKEvent::closeTempFile() {
  if (isOpen()) store_->release();
}

TagValue LRKEvent::extractCategoryTag(int categoryIndex, enmFileTag tag) const {
  if (!isCategory(categoryIndex)) return {};
  const auto fileIndex = static_cast<std::size_t>(categoryFileIndex(categoryIndex));
  return store_->find(store_->categories[fileIndex], categoryTags, tag);
}

TagValue LRKEvent::extractDerivedCourseTag(int derivedCourseIndex, enmFileTag tag) const {
  if (!isDerivedCourse(derivedCourseIndex)) return {};
  return store_->find(store_->derivedCourses[static_cast<std::size_t>(derivedCourseIndex)],
                      derivedCourseTags, tag);
}

}  // namespace larkstone
