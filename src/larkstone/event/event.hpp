#pragma once

// One competition, bound to its event file.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "larkstone/core/date.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/event/error_constants.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone {

/// The root of the data model. Categories are not held as objects: they stay in a private working
/// file, are decoded when asked for and encoded again when handed back. A category handed out is a
/// copy; a change to it reaches the event when it is stored with category(index, category), and the
/// event file with saveEvent().
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

  enmCategorySortFlags categorySortFlags() const { return categorySortFlags_; }
  void categorySortFlags(enmCategorySortFlags flags) { categorySortFlags_ = flags; }
  int noOfCategories() const;
  int noOfDerivedCourses() const;

  /// The folder for working files, always with a backslash at its end; "" means the current one.
  const std::string& tempFilePath() const { return tempFilePath_; }
  void tempFilePath(std::string path);
  const std::string& filename() const { return filename_; }
  void filename(std::string name) { filename_ = std::move(name); }
  /// Bytes of the file last opened or saved; 0 for a new event.
  std::int32_t fileSize() const { return fileSize_; }
  bool isOpen() const { return open_; }

  // ... file operations and categories ...
};

}  // namespace larkstone
