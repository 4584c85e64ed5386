#pragma once

// A course put together by hand: its own legs, and runners picked from any categories.

#include <cstdint>
#include <string>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/index.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/core/ranking.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

/// The legs of a course, the codes that stand for its start and finish, the policy by which runners
/// were found to have run it, and who they are: at most 32767 references, each the index of a
/// category and the runner's number in it (LRKRunner::runnerIndex()). A derived course owns no
/// runners; when categories or runners of the event get other numbers, the references are
/// renumbered with a translation table.
///
/// It is a value. A new one has no legs, no codes, no runners and asks for exactly all legs.
/// Indices of references count from 0 and must lie below noOfRunners() (debug builds assert it).
class LRKDerivedCourse {
 public:
#define LRK_VALUE(name, type, tag) LRK_DECLARE_VALUE(name, type)
#define LRK_RECORD(tag)
#include "larkstone/model/derived_course_properties.def"

  /// Only the codes of the legs are kept in an event file.
  LRKLegs& legs() { return legs_; }
  const LRKLegs& legs() const { return legs_; }
  void legs(LRKLegs legs) { legs_ = std::move(legs); }
  LRKCodes& codesEqualToStart() { return codesEqualToStart_; }
  const LRKCodes& codesEqualToStart() const { return codesEqualToStart_; }
  void codesEqualToStart(LRKCodes codes) { codesEqualToStart_ = std::move(codes); }
  LRKCodes& codesEqualToFinish() { return codesEqualToFinish_; }
  const LRKCodes& codesEqualToFinish() const { return codesEqualToFinish_; }
  void codesEqualToFinish(LRKCodes codes) { codesEqualToFinish_ = std::move(codes); }

  int noOfRunners() const { return static_cast<int>(references_.size()); }
  /// Resizes the list within 0 .. 32767, keeping its references; new ones are runner 0 of category
  /// 0.
  void noOfRunners(int count);
  /// The two halves of a reference. A number that 16 bits cannot hold is stored as -1, which no
  /// runner has.
  int runnerCategoryIndex(int index) const { return at(index).categoryIndex; }
  void runnerCategoryIndex(int index, int categoryIndex);
  int runnerIndex(int index) const { return at(index).runnerIndex; }
  void runnerIndex(int index, int runnerIndex);

  /// Appends a reference; a full list stays as it is.
  void addRunner(int categoryIndex, int index);
  /// Replaces all references by those of the first noOfRunners of the list.
  void addRunnersFromArray(int noOfRunners, const std::vector<LRKRunner>& runners);
  /// Removes the first reference to that runner, if there is any.
  void deleteRunner(int categoryIndex, int index);
  /// Removes a reference by its place.
  void deleteRunnerByIndex(int index);

  /// Renumbers the categories: c becomes TLT[c]. References without a category (-1, or not in the
  /// table) are removed, the others keep their order.
  void changeCategoryIndices(const TranslationTable& TLT);
  /// Renumbers the runners of one category in the same way. References whose runner number is -1
  /// are removed.
  void changeRunnerIndices(int categoryIndex, const TranslationTable& TLT);

  /// Tags 96 to 103, all of them set. The last four give the number of legs, codes and runners.
  TagValue getPropertyByTag(enmFileTag tag, bool& isSet) const;
  /// Tags 96 to 99. A flag is on for numbers above 0; a value that cannot be converted changes
  /// nothing.
  void setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue);

  /// Hands every row of the property table to visit(row), in file order.
  template <class Visit>
  static void forEachRow(Visit&& visit) {
#define LRK_VALUE(name, type, tag) \
  visit(ValueRow<LRKDerivedCourse, type>{#name, tag, &LRKDerivedCourse::name##_});
#define LRK_RECORD(tag) visit(RecordRow{tag});
#include "larkstone/model/derived_course_properties.def"
  }

 private:
  struct Reference {
    std::int16_t categoryIndex = 0;
    std::int16_t runnerIndex = 0;
  };

  const Reference& at(int index) const {
    return references_[indexWithin(index, references_.size())];
  }
  Reference& at(int index) { return references_[indexWithin(index, references_.size())]; }

#define LRK_VALUE(name, type, tag) type name##_{};
#define LRK_RECORD(tag)
#include "larkstone/model/derived_course_properties.def"

  LRKLegs legs_;
  LRKCodes codesEqualToStart_;
  LRKCodes codesEqualToFinish_;
  std::vector<Reference> references_;
};

}  // namespace larkstone
