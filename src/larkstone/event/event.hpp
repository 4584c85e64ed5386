#pragma once

// One competition, bound to its event file.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/date.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/event/error_constants.hpp"
#include "larkstone/model/category.hpp"
#include "larkstone/model/derived_course.hpp"

namespace larkstone {

class EventStore;
class LRKCourse;
struct Record;

/// The root of the data model. Categories are not held as objects: they stay in a private working
/// file, are decoded when asked for and encoded again when handed back. A category handed out is a
/// copy; a change to it reaches the event when it is stored with category(index, category), and the
/// event file with saveEvent().
///
/// Paths are the system's own: "\" separates folders in tempFilePath() only, and where the system
/// has it so.
///
/// Categories have a file index (their place in the file) and a display index (their place in the
/// sorted list); arguments are display indices except where said. File operations return
/// enmErrorConstants, 0 on success; nothing throws. One event is used from one thread; any number
/// of events may be open at once.
///
///     LRKEvent event;
///     if (event.openEvent("spring.lrk4") == 0) {
///       LRKCourse course = event.category(0)->toCourse(erqlAtLeastOne, false, false);
///     }
class LRKEvent {
 public:
  LRKEvent();
  ~LRKEvent();  ///< closes the event; what was not saved is lost
  LRKEvent(const LRKEvent&) = delete;
  LRKEvent& operator=(const LRKEvent&) = delete;

#define LRK_PROPERTY(name, flag, type, tag) LRK_DECLARE_PROPERTY(name, flag, type)
#define LRK_VALUE(name, type, tag) LRK_DECLARE_VALUE(name, type)
#define LRK_READ_ONLY_VALUE(name, type, tag) \
  const type& name() const { return name##_; }
#define LRK_RECORD(tag)
#include "larkstone/event/event_properties.def"

  /// Sets start and end date.
  void eventDate(Date date) {
    startDate(date);
    endDate(date);
  }

  /// The property that a header tag (17 to 43) names, with its flag. The counts can only be read.
  TagValue getPropertyByTag(enmFileTag tag, bool& isSet) const;
  void setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue);

  /// How categories are sorted for display when an event is opened; all flags at first.
  enmCategorySortFlags categorySortFlags() const { return categorySortFlags_; }
  void categorySortFlags(enmCategorySortFlags flags) { categorySortFlags_ = flags; }

  /// The folder for working files, always with a backslash at its end; "" means the current one.
  /// An open event stays where it is.
  const std::string& tempFilePath() const { return tempFilePath_; }
  void tempFilePath(std::string path);
  const std::string& filename() const { return filename_; }
  void filename(std::string name) { filename_ = std::move(name); }
  /// Bytes of the file last opened or saved; 0 for a new event.
  std::int32_t fileSize() const { return fileSize_; }
  bool isOpen() const { return store_ != nullptr; }

  /// Begins an empty event under that name; nothing is written there before saveEvent(). An event
  /// that was open is closed, unless the name is taken (LRK_FILE_ALREADY_EXISTS).
  std::int32_t createNewEvent(const std::string& fileName, bool overwrite = false);
  /// Closes what was open and opens a file. LRK_UNKNOWN_FILE_VERSION is a warning: the event is
  /// open. After any other code it is closed.
  std::int32_t openEvent(const std::string& fileName);
  /// Writes the event to that file, or to filename(). The old file stays whole until the new one is
  /// complete and on the disk; LRK_FILE_READONLY when this user may not replace it. Whatever
  /// happens, the event stays open and keeps its filename(), and can be saved elsewhere. Of several
  /// events that are saved to one file the last one wins.
  std::int32_t saveEvent(const std::string& fileName = {});
  /// Closes the working file, and with it what was not saved is lost. Nothing happens to a closed
  /// event.
  std::int32_t closeEvent();

  /// Loads all records into memory for a series of extractions, until closeTempFile() or the next
  /// change of a record. Extractions work without it too.
  bool openTempFile();
  void closeTempFile();
  /// One value out of a stored record, without decoding the category: nothing (std::monostate) when
  /// the record does not hold it. Lists give their count.
  TagValue extractCategoryTag(int categoryIndex, enmFileTag tag) const;
  TagValue extractDerivedCourseTag(int derivedCourseIndex, enmFileTag tag) const;
  /// What the properties of the file that was opened, and of the categories and derived courses as
  /// they are stored now, cannot hold, so that it reads as their defaults: enumerations beyond
  /// their lists, numbers that are not finite, dates that are none. The first 10,000, each in
  /// words: `category "H21": runner 3: status 99`. Reads all records.
  std::vector<std::string> warnings() const;

  /// 0 for a closed event.
  int noOfCategories() const;
  int noOfDerivedCourses() const;

  /// The category shown at that place, decoded; nothing for an index out of range, a closed event
  /// or an unreadable working file. The last one handed out is kept: asking again gives the same
  /// object.
  std::shared_ptr<LRKCategory> category(int index);
  /// The category as it is stored, decoded on every call, whatever became of the object that
  /// category() handed out. Nothing where category() gives nothing.
  std::optional<LRKCategory> storedCategory(int index) const;
  /// Stores a category at that place, or changes nothing in the event and gives
  /// LRK_COULD_NOT_OPEN_TEMPORARY_FILE when the disk is full. What the file needs is worked out on
  /// the object first: forking information, entries for all legs run, course names and type,
  /// places. Its runners are numbered anew, and derived courses follow them: by name and club, of
  /// several who have these in common each by runnerIndex(), and whoever was corrected by the
  /// runnerIndex() that the object handed out for this place carries. They lose those who are gone.
  /// An index out of range changes nothing.
  ///
  /// The object may have been handed out for another place: it belongs to this one then. Nothing,
  /// as category() gives for a category that there is not, is a failure too.
  std::int32_t category(int index, LRKCategory& category);
  std::int32_t category(int index, const std::shared_ptr<LRKCategory>& category) {
    return category ? this->category(index, *category) : LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  }
  /// Forgets the category that category() keeps.
  void unsetCurrentCategory();

  /// Empty text and -1 for an index out of range.
  std::string categoryName(int displayIndex) const;
  int categoryFileIndex(int displayIndex) const;
  int categoryDisplayIndex(int fileIndex) const;

  /// Adds a category behind the others, as category() stores it, and tells it its index. Only this
  /// category is written. LRK_COULD_NOT_OPEN_TEMPORARY_FILE for a closed event, and for more than
  /// 4095 categories and derived courses together; nothing is changed then.
  std::int32_t addCategory(LRKCategory& category);
  std::int32_t addCategory(LRKCategory&& category) { return addCategory(category); }
  std::int32_t addCategory(const std::shared_ptr<LRKCategory>& category) {
    return category ? addCategory(*category) : LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  }
  /// Moves a category in the list, those between shifting by one place; without ecsfSorted among
  /// the sort flags also in the file. Derived courses keep to their runners. Nothing is moved when
  /// the working file cannot hold the change.
  void moveCategory(int currentIndex, int newIndex);
  /// Derived courses lose the runners of the category.
  std::int32_t deleteCategory(int index);
  /// Stores in the place of the first category with the same name, whatever its case, and tells so;
  /// adds the category when there is none. False, and the event as it was, when storing fails.
  bool replaceCategoryByName(LRKCategory& category);

  /// Stores every category again, with what is worked out on the way, and saves the event.
  std::int32_t updateForkingInfo();

  /// The text by which categories are sorted for display. The index keeps keys apart.
  static std::string createCategorySortKey(std::string_view categoryName, int categoryIndex,
                                           enmCategorySortFlags categorySortFlags);

  // Derived courses. A reference to a runner holds the category's display index and the runner's
  // number in it, as the runners of an event carry them (LRKRunner::categoryIndex(),
  // runnerIndex()), so that LRKCourse::toDerivedCourse() makes what is added here. The file names
  // categories by file index: what derivedCourse() gives keeps to its runners in whatever order
  // categories are shown, while an object that was handed out before categories were moved does not
  // follow.

  /// Empty text for an index out of range.
  std::string derivedCourseName(int index) const;
  /// Decoded on every call; nothing for an index out of range, a closed event or an unreadable
  /// working file.
  std::optional<LRKDerivedCourse> derivedCourse(int index) const;
  /// Stores a derived course at that place. An index out of range changes nothing.
  std::int32_t derivedCourse(int index, const LRKDerivedCourse& derivedCourse);
  /// Adds a derived course behind the others. LRK_COULD_NOT_OPEN_TEMPORARY_FILE for a closed event,
  /// and for more than 4095 categories and derived courses together; nothing is changed then.
  std::int32_t addDerivedCourse(const LRKDerivedCourse& derivedCourse);
  void moveDerivedCourse(int currentIndex, int newIndex);
  std::int32_t deleteDerivedCourse(int index);
  /// The derived course as a course for analysis; nothing where derivedCourse() gives nothing.
  std::optional<LRKCourse> derivedCourseAsCourse(int index) const;
  /// A course with the legs, codes and addition style of the derived course and, in the order of
  /// its references, every runner referred to who fits, once. References to runners whom the event
  /// has not got are passed over.
  LRKCourse convertDerivedCourseToCourse(const LRKDerivedCourse& derivedCourse) const;

  /// Questions to all runners at once, answered from the stored records without decoding
  /// categories: what was not stored with category() is not seen. Runners come category by category
  /// in display order, within one in the order of the list. What an output held before is replaced;
  /// counts are the number of runners. A category that cannot be read has no runners.

  /// Three lists over all runners. The names are full names, as LRKRunner::name() gives them.
  int getAllRunnerCategoriesNamesAndClubs(std::vector<std::string>& runnerCategories,
                                          std::vector<std::string>& runnerNames,
                                          std::vector<std::string>& runnerClubs) const;
  /// The codes that every runner punched. Those of a category are its first runner's (the course
  /// that LRKCategory::toCourse() takes by itself), with its name and number of runners, so that
  /// runnerCodes can be divided among the categories.
  void getAllCategoryAndRunnerCodes(std::vector<LRKCodes>& categoryCodes, int& noOfRunners,
                                    std::vector<LRKCodes>& runnerCodes) const;
  /// The codes of the runners of one category; none for an index out of range.
  int getCategoryRunnerCodes(int categoryIndex, std::vector<LRKCodes>& codes) const;
  /// One property of all runners as LRKRunner::getPropertyByTag() gives it, nothing
  /// (std::monostate) where it is not stored. For etagRunnerName that is the name made of its
  /// parts, though valueExists, which tells of the record alone, is false then.
  int getAllRunnerTagValues(enmFileTag tag, std::vector<TagValue>& values,
                            std::vector<bool>& valueExists) const;
  /// The result list as one table, and its figures by category (display index) in the last five
  /// lists.
  ///
  /// Countries are those of the clubs. Places and lengths are 0, texts empty and dates day 0 where
  /// they are not known; result times are those of LRKRunner::resultTime(). A course length is the
  /// runner's own, else the category's. Times per kilometre are rounded half to even, LRK_NO_TIME
  /// without a result or a length. The best and second-best times are among the results (runners
  /// with status OK, a start and a finish), LRK_NO_TIME where there are not so many; two equal best
  /// times are both.
  int getAllResults(std::vector<int>& categoryIndices, std::vector<std::string>& names,
                    std::vector<std::string>& clubs, std::vector<std::string>& countries,
                    std::vector<int>& resultPlaces, std::vector<Time>& resultTimes,
                    std::vector<enmStatus>& statuses, std::vector<Length>& courseLengths,
                    std::vector<Time>& kmTimes, std::vector<Date>& birthDates,
                    std::vector<std::string>& birthDateFormats,
                    std::vector<int>& categoryNoOfRunners, std::vector<Time>& bestResultTimes,
                    std::vector<Time>& secondBestResultTimes, std::vector<Time>& bestKmTimes,
                    std::vector<Time>& secondBestKmTimes) const;
  /// The distinct code lists that runners of a category punched, in the order of first appearance,
  /// each with the number of its runners and the first course name among them. Runners without
  /// punches have a list of no codes.
  void getAllCategoryForkings(int categoryIndex, int& noOfForkings,
                              std::vector<LRKCodes>& forkings) const;

  /// Finds runners by their properties: `find` has the value sought for each tag (129 to 163),
  /// comparisonOperator how the runner's value is compared with it (ecopEqual where it says
  /// nothing). All conditions must hold, or one with oneMatchIsEnough.
  ///
  /// Texts are compared in lower case. Equal means like a pattern with the wildcards * ? # [list]
  /// and [!list] (see core/wildcard.hpp), the order is that of the characters' numbers. Anything
  /// else is compared as a number; etagRunnerName is the full name also of a runner who has it in
  /// parts, the punch tags are the number of punches. A runner without the property meets no
  /// condition on it, not even ecopNotEqual, and nobody meets one whose value cannot be converted
  /// to the property's type.
  ///
  /// The runners found are decoded, with their category's index and name and their own number. A
  /// search without conditions finds everybody, or nobody with oneMatchIsEnough.
  ///
  ///     std::vector<LRKRunner> runners;
  ///     event.searchRunners(runners, {{etagRunnerClub, "OK *"}, {etagRunnerStatus, estaOK}}, {});
  int searchRunners(std::vector<LRKRunner>& runners, const std::map<enmFileTag, TagValue>& find,
                    const std::map<enmFileTag, enmComparisonOperator>& comparisonOperator,
                    bool oneMatchIsEnough = false) const;

  /// Hands every row of the property table to visit(row), in file order.
  template <class Visit>
  static void forEachRow(Visit&& visit) {
#define LRK_PROPERTY(name, flag, type, tag) \
  visit(PropertyRow<LRKEvent, type>{#name, tag, true, &LRKEvent::name##_});
#define LRK_VALUE(name, type, tag) visit(ValueRow<LRKEvent, type>{#name, tag, &LRKEvent::name##_});
#define LRK_READ_ONLY_VALUE(name, type, tag) LRK_VALUE(name, type, tag)
#define LRK_RECORD(tag) visit(RecordRow{tag});
#include "larkstone/event/event_properties.def"
  }

 private:
  void reset();
  std::int32_t load();
  void sortForDisplay();
  /// The stored bytes of a category; empty when they cannot be read.
  std::string categoryRecord(int displayIndex) const;
  bool isCategory(int index) const { return index >= 0 && index < noOfCategories(); }
  bool isDerivedCourse(int index) const;
  std::int32_t storeAt(int fileIndex, LRKCategory& category);
  void settle(LRKCategory& category, int displayIndex);
  bool moveInFile(int from, int to);
  std::int32_t storeDerived(Record& record, LRKDerivedCourse derivedCourse);
  void stampForSaving();

#define LRK_PROPERTY(name, flag, type, tag) Property<type> name##_;
#define LRK_VALUE(name, type, tag) type name##_{};
#define LRK_READ_ONLY_VALUE(name, type, tag) type name##_{};
#define LRK_RECORD(tag)
#include "larkstone/event/event_properties.def"

  enmCategorySortFlags categorySortFlags_ =
      ecsfSorted | ecsfYoungstersBeforeOldboys | ecsfTreatGendersAsEqual;
  std::string tempFilePath_ = ".\\";
  std::string filename_;
  std::int32_t fileSize_ = 0;
  bool isNew_ = false;  // made by createNewEvent(): saving stamps the creation

  std::unique_ptr<EventStore> store_;  // while the event is open
  std::vector<int> displayToFile_;
  std::vector<int> fileToDisplay_;
  std::shared_ptr<LRKCategory> current_;
  int currentIndex_ = -1;
};

}  // namespace larkstone
