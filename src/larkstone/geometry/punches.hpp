#pragma once

// The punches of a runner in the order of the run.

#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/index.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

class LRKCodes;
class LRKLegs;

/// An ordered list of punches: code, time and whether the time was estimated. The first punch may
/// be a start, the last a finish; add() keeps that form whatever the order of additions. At most
/// 32767 punches. Indices count from 0 and must lie below count() (debug builds assert it), offsets
/// of searches may lie beyond.
///
///     LRKPunches punches;
///     punches.add(0, LRK_START_CODE);
///     punches.add(6000, 31);
class LRKPunches {
 public:
  int count() const { return static_cast<int>(punches_.size()); }
  /// Keeps what is there; new punches have code 0 and time 0. 0 or less empties the list.
  void count(int count);

  Time time(int index) const { return at(index).time; }
  /// A time outside 0 .. LRK_NO_TIME is stored as LRK_NO_TIME.
  void time(int index, Time time) { at(index).time = clampedTime(time); }

  Code code(int index) const { return at(index).code; }
  /// Ignored for a start code behind index 0 and for a finish code before the last index.
  void code(int index, Code code);

  bool isEstimated(int index) const { return at(index).isEstimated; }
  void isEstimated(int index, bool estimated) { at(index).isEstimated = estimated; }

  /// The start's or finish's name without its number, for any other punch prefix and index.
  std::string name(int index, std::string_view startName, std::string_view finishName,
                   std::string_view legPrefix = "") const;
  std::string codeName(int index, std::string_view startName, std::string_view finishName,
                       std::string_view codePrefix = "",
                       enmCodeStringConversion codeStringConversion = ecscDefault) const;

  /// Adds a punch where it belongs. A second start shifts all punches to the new start time, a
  /// second finish replaces the first, any punch before a finish is inserted in front of it (and
  /// the finish's index returned). Otherwise the new punch's index; -1 when the list is full.
  int add(Time time, Code code = 0);
  /// Sets time and code without a look at the place.
  void edit(int index, Time time, Code code = 0);
  void erase(int index);
  /// Shifts every punch, or those with the code; times stay within 0 .. LRK_NO_TIME.
  void addTimeOffset(Time offset, int code = -1);
  /// Removes the punches with the code from firstIndex to lastIndex (-1: the last), also those that
  /// move into the range while it is cleared. True if any.
  bool deleteCode(Code code, int firstIndex = 0, int lastIndex = -1);
  /// Inserts before the index; index count() appends. A full list stays as it is.
  void insert(int index, Time time, Code code = 0);

  bool startExists() const { return !punches_.empty() && isStartCode(punches_.front().code); }
  bool finishExists() const { return !punches_.empty() && isFinishCode(punches_.back().code); }

  /// The first leg (punch index to the next) with these codes at or behind offset, or -1.
  int legIndex(Code beginCode, Code endCode, int offset = 0) const;
  /// Forgets all marks. Must be called after the list changed and before legs are marked.
  void unmarkLegs();
  /// As legIndex(), over the legs not yet marked; marks the one it returns.
  int legExistsAndMark(Code code0, Code code1, int offset = 0);
  /// True for fewer than two punches; false for legs that unmarkLegs() has not seen.
  bool allLegsMarked() const;

  /// The punches whose codes are matched in order in the other list; controls that this list
  /// visits more than once are not passed over. All times are 0.
  LRKPunches commonControlPunches(const LRKPunches& punchesToCompare) const;

  std::string codesToString(std::string_view startName = "S", std::string_view finishName = "F",
                            std::string_view codePrefix = "",
                            enmCodeStringConversion codeStringConversion = ecscDefault,
                            std::string_view delimiter = "-") const;
  std::vector<Code> codeArray() const;
  /// The finest accuracy of the times from firstIndex on; hours without any.
  enmTimeAccuracy highestTimeAccuracy(int firstIndex = 0) const;
  /// The time of the occurrence (from 0) of the code; 0 if there is none.
  Time timeFromCode(Code code, int occurenceIndex = 0) const;
  bool punchExists(Code code, int offset = 0) const { return punchIndex(code, offset) >= 0; }
  /// The first punch with the code at or behind offset, or -1.
  int punchIndex(Code code, int offset = 0) const;

  LRKLegs toLegs() const;
  LRKCodes toCodes() const;
  LRKPunches clone() const { return *this; }

 private:
  struct Punch {
    Code code = 0;
    bool isEstimated = false;
    Time time = 0;
  };

  Punch& at(int index) { return punches_[indexWithin(index, punches_.size())]; }
  const Punch& at(int index) const { return punches_[indexWithin(index, punches_.size())]; }

  std::vector<Punch> punches_;
  std::vector<bool> legMarks_;
};

}  // namespace larkstone
