#pragma once

// A class of competitors: its runners in list order and what is known about its courses.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/index.hpp"
#include "larkstone/core/ordered_map.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/core/ranking.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

class LRKCourse;

/// One entry of a category's leg-length table, in metres as result lists give them.
struct LegLength {
  Code beginCode = 0;
  Code endCode = 0;
  Length length = 0;

  friend bool operator==(const LegLength&, const LegLength&) = default;
};

/// A category owns its runners (at most 32767). It is a value: a category handed out by an event is
/// a copy, and a change reaches the event when it is stored back. Indices of runners count from 0
/// and must lie below noOfRunners() (debug builds assert it).
class LRKCategory {
 public:
#define LRK_PROPERTY(name, flag, type, tag) LRK_DECLARE_PROPERTY(name, flag, type)
#define LRK_VALUE(name, type, tag) LRK_DECLARE_VALUE(name, type)
#define LRK_RECORD(tag)
#include "larkstone/model/category_properties.def"

  /// The position in the event; -1 for a category that is in none.
  int categoryIndex() const { return categoryIndex_; }
  void categoryIndex(int index) { categoryIndex_ = index; }

  int noOfRunners() const { return static_cast<int>(runners_.size()); }
  /// Resizes the list, keeping its runners.
  void noOfRunners(int count);
  /// Makes room for that many runners, so that adding them moves none.
  void reserveRunners(int count);
  LRKRunner& runner(int index) { return runners_[indexWithin(index, runners_.size())]; }
  const LRKRunner& runner(int index) const { return runners_[indexWithin(index, runners_.size())]; }
  void runner(int index, LRKRunner runner) { this->runner(index) = std::move(runner); }

  /// Appends a runner and numbers it; numbers of deleted runners are not used again. The new
  /// position, or -1 when the list is full.
  int addRunner(LRKRunner runner);
  void moveRunner(int currentIndex, int newIndex);
  void deleteRunner(int index);

  /// The length of a leg in metres; 0 for one that is not in the table.
  Length legLength(Code beginCode, Code endCode) const;
  void legLength(Code beginCode, Code endCode, Length length) {
    legLengths_[legKey(beginCode, endCode)] = length;
  }
  bool legLengthSet(Code beginCode, Code endCode) const {
    return legLengths_.contains(legKey(beginCode, endCode));
  }
  /// False removes the leg, true adds it with length 0 unless it is there.
  void legLengthSet(Code beginCode, Code endCode, bool set);
  /// The whole table in the order of first addition.
  std::vector<LegLength> legLengthArray() const;
  void legLengthArray(const std::vector<LegLength>& legLengths);

  /// Sets the forking flag and the smallest and largest number of legs from the runners' punches.
  void updateForkingInfo();
  /// What kind of course the runners ran; never ectyCommonLegs.
  enmCourseType determineCourseType() const;
  /// The finest accuracy of any punch time, or of the last punch times only.
  enmTimeAccuracy getHighestTimeAccuracy(bool onlyCheckResultTimes = false) const;

  /// Fills TLT with the place of each runner of this category in the other one, matched by name and
  /// club; -1 for a runner who is not there.
  void createMatchingTLT(const LRKCategory& categoryToMatch, TranslationTable& TLT) const;
  /// Every distinct leg run, in order of first appearance, with lengths (in centimetres) where the
  /// table knows them.
  LRKLegs getAllRunnersLegs() const;
  /// Shifts all punches, or those with the code.
  void addTimeOffset(Time offset, int code = -1);

  /// An analysis course over the given legs (the first runner's when there are none) with every
  /// runner who fits; the legs used are handed back. How many did not fit, and why, the course
  /// tells (LRKCourse::noOfRefusedRunners()). The course's legs get the lengths that the table
  /// knows, in centimetres. Gender from the name where it is not set.
  LRKCourse toCourse(enmRequiredLegs requiredLegs, bool allowRearrangement,
                     bool allowMerging) const;
  LRKCourse toCourse(enmRequiredLegs requiredLegs, bool allowRearrangement, bool allowMerging,
                     std::optional<LRKLegs>& legs) const;

  LRKCategory clone() const;

  /// Tags 64 to 69 and 72 to 80.
  TagValue getPropertyByTag(enmFileTag tag, bool& isSet) const;
  void setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue);

  /// Hands every row of the property table to visit(row), in file order.
  template <class Visit>
  static void forEachRow(Visit&& visit) {
#define LRK_PROPERTY(name, flag, type, tag) \
  visit(PropertyRow<LRKCategory, type>{#name, tag, true, &LRKCategory::name##_});
#define LRK_VALUE(name, type, tag) \
  visit(ValueRow<LRKCategory, type>{#name, tag, &LRKCategory::name##_});
#define LRK_RECORD(tag) visit(RecordRow{tag});
#include "larkstone/model/category_properties.def"
  }

 private:
  using LegKey = std::uint32_t;
  static LegKey legKey(Code beginCode, Code endCode) {
    return static_cast<LegKey>(static_cast<std::uint16_t>(beginCode)) << 16 |
           static_cast<std::uint16_t>(endCode);
  }

  void setLengths(LRKLegs& legs) const;

#define LRK_PROPERTY(name, flag, type, tag) Property<type> name##_;
#define LRK_VALUE(name, type, tag) type name##_{};
#define LRK_RECORD(tag)
#include "larkstone/model/category_properties.def"

  int categoryIndex_ = -1;
  std::vector<LRKRunner> runners_;
  int noOfDeletedRunners_ = 0;
  OrderedMap<LegKey, Length> legLengths_;

 public:
  LRKCategory() : allRunnersHaveTheSameForking_(true), timeAccuracy_(etacSeconds) {}
};

}  // namespace larkstone
