#include "larkstone/geometry/legs.hpp"

#include <algorithm>

#include "larkstone/core/code_text.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/leg_finder.hpp"

namespace larkstone {

void LRKLegs::count(int count) {
  legs_.resize(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)));
}

void LRKLegs::noOfSubCodes(int index, int count) {
  at(index).subCodes.assign(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)), 0);
}

Length LRKLegs::totalLength(int index) const {
  std::int64_t total = 0;
  for (int i = 0; i <= index; ++i) total += length(i);
  return static_cast<Length>(std::clamp<std::int64_t>(total, INT32_MIN, INT32_MAX));
}

int LRKLegs::noOfCourseFragments() const {
  int fragments = 1;
  for (int i = 1; i < count(); ++i) {
    if (newCourseFragmentStarts(i)) ++fragments;
  }
  return fragments;
}

bool LRKLegs::isSingleCourseFragment(int firstLegNo, int lastLegNo) const {
  for (int i = firstLegNo + 1; i <= lastLegNo; ++i) {
    if (newCourseFragmentStarts(i)) return false;
  }
  return true;
}

int LRKLegs::add(Code beginCode, Code endCode, Time beginTime, Time endTime, int beginPunchIndex,
                 int endPunchIndex) {
  const int index = count();
  if (index >= LRK_MAX_LIST) return -1;
  if (beginPunchIndex == defaultPunchIndex) beginPunchIndex = index;
  if (endPunchIndex == defaultPunchIndex) endPunchIndex = index + 1;
  legs_.emplace_back();
  edit(index, beginCode, endCode, beginTime, endTime, beginPunchIndex, endPunchIndex);
  return index;
}

int LRKLegs::addEnd(Time endTime, Code endCode, int endPunchIndex, bool endTimeIsEstimated) {
  const int index = count();
  if (index >= LRK_MAX_LIST) return -1;
  Leg leg;
  leg.endCode = endCode;
  leg.endTime = clampedTime(endTime);
  leg.endPunchIndex = endPunchIndex == defaultPunchIndex ? index + 1 : endPunchIndex;
  leg.beginPunchIndex = leg.endPunchIndex - 1;
  leg.endTimeIsEstimated = endTimeIsEstimated;
  if (index > 0) {
    const Leg& previous = legs_.back();
    leg.beginCode = previous.endCode;
    leg.beginTime = previous.endTime;
    leg.beginPunchIndex = previous.endPunchIndex;
  }
  legs_.push_back(std::move(leg));
  return index;
}

void LRKLegs::edit(int index, Code beginCode, Code endCode, Time beginTime, Time endTime,
                   int beginPunchIndex, int endPunchIndex, bool beginTimeIsEstimated,
                   bool endTimeIsEstimated) {
  Leg& leg = at(index);
  leg.beginCode = beginCode;
  leg.endCode = endCode;
  leg.beginTime = clampedTime(beginTime);
  leg.endTime = clampedTime(endTime);
  leg.beginPunchIndex = beginPunchIndex == defaultPunchIndex ? count() : beginPunchIndex;
  leg.endPunchIndex = endPunchIndex == defaultPunchIndex ? count() + 1 : endPunchIndex;
  leg.beginTimeIsEstimated = beginTimeIsEstimated;
  leg.endTimeIsEstimated = endTimeIsEstimated;
}

void LRKLegs::erase(int index) {
  legs_.erase(legs_.begin() + static_cast<std::ptrdiff_t>(indexWithin(index, legs_.size())));
}

void LRKLegs::addTimeOffset(Time offset) {
  for (Leg& leg : legs_) {
    leg.beginTime = shiftedTime(leg.beginTime, offset);
    leg.endTime = shiftedTime(leg.endTime, offset);
  }
}

bool LRKLegs::deleteLegByCodes(Code beginCode, Code endCode, int firstIndex, int lastIndex) {
  if (lastIndex == -1) lastIndex = count() - 1;
  bool any = false;
  for (int i = firstIndex; i <= lastIndex && i < count(); ++i) {
    if (this->beginCode(i) == beginCode && this->endCode(i) == endCode) {
      erase(i);
      any = true;
    }
  }
  return any;
}

void LRKLegs::insert(int index, Time beginTime, Code beginCode, Time endTime, Code endCode,
                     int beginPunchIndex, int endPunchIndex, bool beginTimeIsEstimated,
                     bool endTimeIsEstimated) {
  if (count() >= LRK_MAX_LIST) return;
  const std::size_t place = indexWithin(index, legs_.size() + 1);
  legs_.emplace(legs_.begin() + static_cast<std::ptrdiff_t>(place));
  edit(index, beginCode, endCode, beginTime, endTime, beginPunchIndex, endPunchIndex,
       beginTimeIsEstimated, endTimeIsEstimated);
}

int LRKLegs::legIndex(Code beginCode, Code endCode, int offset) const {
  for (int i = offset; i < count(); ++i) {
    if (at(i).beginCode == beginCode && at(i).endCode == endCode) return i;
  }
  return -1;
}

int LRKLegs::beginCodeIndex(Code beginCode, int offset) const {
  for (int i = offset; i < count(); ++i) {
    if (at(i).beginCode == beginCode) return i;
  }
  return -1;
}

int LRKLegs::endCodeIndex(Code endCode, int offset) const {
  for (int i = offset; i < count(); ++i) {
    if (at(i).endCode == endCode) return i;
  }
  return -1;
}

void LRKLegs::unmarkLegs() {
  for (Leg& leg : legs_) leg.marked = false;
}

int LRKLegs::legExistsAndMark(Code beginCode, Code endCode, int offset) {
  const int index = legIndex(beginCode, endCode, offset);
  if (index < 0 || marked(index)) return -1;
  marked(index, true);
  return index;
}

void LRKLegs::legSequenceExistsAndMark(int& beginIndex, int& endIndex, Code beginCode, Code endCode,
                                       int offset) {
  beginIndex = beginCodeIndex(beginCode, offset);
  endIndex = beginIndex < 0 ? -1 : endCodeIndex(endCode, beginIndex);
  bool free = endIndex >= 0;
  for (int i = beginIndex; free && i <= endIndex; ++i) free = !marked(i);
  if (!free) {
    beginIndex = endIndex = -1;
    return;
  }
  for (int i = beginIndex; i <= endIndex; ++i) marked(i, true);
}

bool LRKLegs::allLegsMarked() const {
  return std::all_of(legs_.begin(), legs_.end(), [](const Leg& leg) { return leg.marked; });
}

LRKLegs LRKLegs::commonLegs(LRKLegs& legsToCompare, bool allowRearrangement,
                            bool allowMerging) const {
  legsToCompare.unmarkLegs();
  LRKLegs common;
  int position = -1;
  for (const Leg& leg : legs_) {
    const auto search = [&](int offset) {
      if (!allowMerging) return legsToCompare.legExistsAndMark(leg.beginCode, leg.endCode, offset);
      int begin = -1;
      int end = -1;
      legsToCompare.legSequenceExistsAndMark(begin, end, leg.beginCode, leg.endCode, offset);
      return end;
    };
    int found = search(position + 1);
    if (found < 0 && allowRearrangement) found = search(0);
    if (found < 0) continue;
    common.add(leg.beginCode, leg.endCode, 0, 0);
    position = found;
  }
  return common;
}

bool LRKLegs::legsMatch(LRKLegs& legsToMatch, enmRequiredLegs requiredLegs, bool allowMerging,
                        bool allowRearrangement, const LRKCodes& codesEqualToStart,
                        const LRKCodes& codesEqualToFinish) const {
  LegFinder finder(*this, legsToMatch, codesEqualToStart, codesEqualToFinish,
                   TakenLegs::endTheSearch);
  int position = -1;
  int matched = 0;
  for (int i = 0; i < count(); ++i) {
    LegMatch found = finder.findLeg(i, position, allowRearrangement);
    if (allowMerging && !allowRearrangement) {
      const LegMatch run = finder.findRun(i, position, false);
      if (run && !(found && found.first < run.first)) found = run;
    }
    if (!found && allowRearrangement) found = finder.findLeg(i, -1, true);
    if (!found && allowRearrangement && allowMerging) found = finder.findRun(i, -1, true);
    finder.take(found);
    if (found) {
      position = found.last;
      ++matched;
    } else if (requiredLegs == erqlExactlyAll || requiredLegs == erqlAll) {
      return false;
    }
  }
  if (requiredLegs == erqlExactlyAll) return matched == legsToMatch.count();
  return requiredLegs != erqlAtLeastOne || matched > 0;
}

bool LRKLegs::legsMatch_old(LRKLegs& legsToMatch, enmRequiredLegs requiredLegs, bool allowMerging,
                            bool allowRearrangement, const LRKCodes& codesEqualToStart,
                            const LRKCodes& codesEqualToFinish) const {
  return legsMatch(legsToMatch, requiredLegs, allowMerging, allowRearrangement, codesEqualToStart,
                   codesEqualToFinish);
}

std::vector<Code> LRKLegs::codeArray() const {
  std::vector<Code> codes;
  for (int i = 0; i < count(); ++i) {
    if (newCourseFragmentStarts(i)) codes.push_back(beginCode(i));
    codes.push_back(endCode(i));
  }
  return codes;
}

Time LRKLegs::timeFromCode(Code code, int occurenceIndex) const {
  for (int i = 0; i < count(); ++i) {
    if (newCourseFragmentStarts(i) && beginCode(i) == code && occurenceIndex-- == 0) {
      return beginTime(i);
    }
    if (endCode(i) == code && occurenceIndex-- == 0) return endTime(i);
  }
  return 0;
}

bool LRKLegs::codeExists(Code code, int offset) const {
  return beginCodeIndex(code, offset) >= 0 || endCodeIndex(code, offset) >= 0;
}

LRKLegs LRKLegs::clone() const {
  LRKLegs copy;
  copy.legs_.resize(legs_.size());
  for (std::size_t i = 0; i < legs_.size(); ++i) {
    Leg& leg = copy.legs_[i];
    leg.beginCode = legs_[i].beginCode;
    leg.endCode = legs_[i].endCode;
    leg.beginTime = legs_[i].beginTime;
    leg.endTime = legs_[i].endTime;
    leg.subCodes = legs_[i].subCodes;
  }
  return copy;
}

}  // namespace larkstone
