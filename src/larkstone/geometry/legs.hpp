#pragma once

// A course or a runner's race seen as legs.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/index.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

class LRKCodes;

/// An ordered list of legs, each from a begin code to an end code with the times at both ends, the
/// indices of the two punches it came from, its length in centimetres, and the codes of controls
/// inside it when it stands for several legs. Where a leg does not begin at the code where the
/// previous one ended, a new course fragment starts. At most 32767 legs. Indices count from 0 and
/// must lie below count() (debug builds assert it), offsets of searches may lie beyond.
class LRKLegs {
 public:
  /// Stands for "the place of the leg" where a punch index is asked for.
  static constexpr int defaultPunchIndex = -2;

  int count() const { return static_cast<int>(legs_.size()); }
  /// Keeps what is there. 0 or less empties the list.
  void count(int count);

  Code beginCode(int index) const { return at(index).beginCode; }
  void beginCode(int index, Code code) { at(index).beginCode = code; }
  Code endCode(int index) const { return at(index).endCode; }
  void endCode(int index, Code code) { at(index).endCode = code; }
  /// Times are stored as given here; add(), addEnd(), edit() and insert() clamp them.
  Time beginTime(int index) const { return at(index).beginTime; }
  void beginTime(int index, Time time) { at(index).beginTime = time; }
  Time endTime(int index) const { return at(index).endTime; }
  void endTime(int index, Time time) { at(index).endTime = time; }
  int beginPunchIndex(int index) const { return at(index).beginPunchIndex; }
  void beginPunchIndex(int index, int punch) { at(index).beginPunchIndex = punch; }
  int endPunchIndex(int index) const { return at(index).endPunchIndex; }
  void endPunchIndex(int index, int punch) { at(index).endPunchIndex = punch; }
  bool beginTimeIsEstimated(int index) const { return at(index).beginTimeIsEstimated; }
  void beginTimeIsEstimated(int index, bool is) { at(index).beginTimeIsEstimated = is; }
  bool endTimeIsEstimated(int index) const { return at(index).endTimeIsEstimated; }
  void endTimeIsEstimated(int index, bool is) { at(index).endTimeIsEstimated = is; }
  Length length(int index) const { return at(index).length; }
  void length(int index, Length length) { at(index).length = length; }
  bool marked(int index) const { return at(index).marked; }
  void marked(int index, bool marked) { at(index).marked = marked; }

  int noOfSubCodes(int index) const { return static_cast<int>(at(index).subCodes.size()); }
  /// All sub-codes become 0.
  void noOfSubCodes(int index, int count);
  Code subCode(int index, int subIndex) const {
    const std::vector<Code>& codes = at(index).subCodes;
    return codes[indexWithin(subIndex, codes.size())];
  }
  void subCode(int index, int subIndex, Code code) {
    std::vector<Code>& codes = at(index).subCodes;
    codes[indexWithin(subIndex, codes.size())] = code;
  }

  /// The sum of the lengths of legs 0 to index.
  Length totalLength(int index) const;
  bool newCourseFragmentStarts(int index) const {
    return index == 0 || beginCode(index) != endCode(index - 1);
  }
  /// 1 also for an empty list.
  int noOfCourseFragments() const;
  /// True when no new fragment starts behind firstLegNo up to lastLegNo.
  bool isSingleCourseFragment(int firstLegNo, int lastLegNo) const;

  /// Texts by the place on the course: leg 0 of S-31-32-F goes from "S" to "1", "S-1" in all.
  std::string beginOrdinalString(int index, std::string_view startName, std::string_view finishName,
                                 std::string_view legPrefix = "") const;
  std::string endOrdinalString(int index, std::string_view startName, std::string_view finishName,
                               std::string_view legPrefix = "") const;
  /// The two are always joined by "-", whatever the delimiter.
  std::string ordinalString(int index, std::string_view startName, std::string_view finishName,
                            std::string_view legPrefix = "",
                            std::string_view delimiter = "-") const;

  /// Texts by the codes.
  std::string beginCodeString(int index, std::string_view startName, std::string_view finishName,
                              std::string_view codePrefix = "",
                              enmCodeStringConversion codeStringConversion = ecscDefault) const;
  std::string endCodeString(int index, std::string_view startName, std::string_view finishName,
                            std::string_view codePrefix = "",
                            enmCodeStringConversion codeStringConversion = ecscDefault) const;
  /// Start and finish always without their number here, whatever the conversion.
  std::string beginAndEndCodeString(int index, std::string_view startName,
                                    std::string_view finishName, std::string_view codePrefix = "",
                                    enmCodeStringConversion codeStringConversion = ecscDefault,
                                    std::string_view delimiter = "-") const;

  /// Texts by the punch indices.
  std::string beginPunchIndexString(int index, std::string_view startName,
                                    std::string_view finishName,
                                    std::string_view controlPrefix = "") const;
  std::string endPunchIndexString(int index, std::string_view startName,
                                  std::string_view finishName,
                                  std::string_view controlPrefix = "") const;
  std::string beginAndEndPunchIndexString(int index, std::string_view startName,
                                          std::string_view finishName,
                                          std::string_view controlPrefix = "",
                                          std::string_view delimiter = "-") const;

  /// Appends a leg; the default punch indices are the leg's index and the next. The new index, or
  /// -1 when the list is full.
  int add(Code beginCode, Code endCode, Time beginTime, Time endTime,
          int beginPunchIndex = defaultPunchIndex, int endPunchIndex = defaultPunchIndex);
  /// Appends a leg that goes on where the last one ended.
  int addEnd(Time endTime, Code endCode, int endPunchIndex = defaultPunchIndex,
             bool endTimeIsEstimated = false);
  /// The default punch indices are the number of legs and one more.
  void edit(int index, Code beginCode, Code endCode, Time beginTime, Time endTime,
            int beginPunchIndex = defaultPunchIndex, int endPunchIndex = defaultPunchIndex,
            bool beginTimeIsEstimated = false, bool endTimeIsEstimated = false);
  void erase(int index);
  /// Shifts all times, which stay within 0 .. LRK_NO_TIME.
  void addTimeOffset(Time offset);
  /// Deletes the legs with both codes from firstIndex to lastIndex (-1: the last); the leg behind a
  /// deleted one is passed over. True if any was deleted.
  bool deleteLegByCodes(Code beginCode, Code endCode, int firstIndex = 0, int lastIndex = -1);
  void insert(int index, Time beginTime, Code beginCode, Time endTime, Code endCode,
              int beginPunchIndex = defaultPunchIndex, int endPunchIndex = defaultPunchIndex,
              bool beginTimeIsEstimated = false, bool endTimeIsEstimated = false);

  /// Searches: the first index at or behind offset, or -1.
  int legIndex(Code beginCode, Code endCode, int offset = 0) const;
  bool legExists(Code beginCode, Code endCode, int offset = 0) const {
    return legIndex(beginCode, endCode, offset) >= 0;
  }
  int beginCodeIndex(Code beginCode, int offset = 0) const;
  int endCodeIndex(Code endCode, int offset = 0) const;

  void unmarkLegs();
  /// Marks the first leg with these codes at or behind offset and returns it; -1 when there is none
  /// or it is marked already (a later leg with the same codes is not looked for).
  int legExistsAndMark(Code beginCode, Code endCode, int offset = 0);
  /// Finds and marks the run of legs from the first one that begins at beginCode to the first one
  /// from there that ends at endCode. Both indices are -1 when there is none or part is marked.
  void legSequenceExistsAndMark(int& beginIndex, int& endIndex, Code beginCode, Code endCode,
                                int offset = 0);
  bool allLegsMarked() const;

  /// The legs present in the other list, in this list's order, each taken once. With merging a leg
  /// may stand for a run of legs there. Marks legs of the other list.
  LRKLegs commonLegs(LRKLegs& legsToCompare, bool allowRearrangement = false,
                     bool allowMerging = false) const;

  /// Whether this list (a runner's) fits legsToMatch (a course's) under the policy. Marks the legs
  /// of legsToMatch that were used.
  bool legsMatch(LRKLegs& legsToMatch, enmRequiredLegs requiredLegs, bool allowMerging,
                 bool allowRearrangement, const LRKCodes& codesEqualToStart,
                 const LRKCodes& codesEqualToFinish) const;
  /// The same as legsMatch(), kept for hosts that call it by this name.
  bool legsMatch_old(LRKLegs& legsToMatch, enmRequiredLegs requiredLegs, bool allowMerging,
                     bool allowRearrangement, const LRKCodes& codesEqualToStart,
                     const LRKCodes& codesEqualToFinish) const;

  /// "S-31-32-F", fragments apart by delimiter2, sub-codes on request as "31-(32-33)-34".
  std::string codesToString(std::string_view startName, std::string_view finishName,
                            std::string_view codePrefix = "",
                            enmCodeStringConversion codeStringConversion = ecscDefault,
                            std::string_view delimiter1 = "-", std::string_view delimiter2 = ",",
                            bool showSubCodes = false,
                            std::string_view subCodeStartDelimiter = "-(",
                            std::string_view subCodeEndDelimiter = ")-") const;
  std::vector<Code> codeArray() const;
  /// The time at the occurrence (from 0) of the code on the course; 0 if there is none.
  Time timeFromCode(Code code, int occurenceIndex = 0) const;
  /// Whether a leg at or behind offset begins or ends with the code.
  bool codeExists(Code code, int offset = 0) const;

  /// A list with the same codes, times and sub-codes; punch indices, lengths, marks and estimated
  /// flags of the copy are 0 or false. (Plain copying keeps everything.)
  LRKLegs clone() const;

 private:
  struct Leg {
    Code beginCode = 0;
    Code endCode = 0;
    Time beginTime = 0;
    Time endTime = 0;
    Length length = 0;
    int beginPunchIndex = 0;
    int endPunchIndex = 0;
    bool marked = false;
    bool beginTimeIsEstimated = false;
    bool endTimeIsEstimated = false;
    std::vector<Code> subCodes;
  };

  Leg& at(int index) { return legs_[indexWithin(index, legs_.size())]; }
  const Leg& at(int index) const { return legs_[indexWithin(index, legs_.size())]; }

  std::vector<Leg> legs_;
};

}  // namespace larkstone
