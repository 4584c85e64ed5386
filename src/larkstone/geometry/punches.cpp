#include "larkstone/geometry/punches.hpp"

#include <algorithm>
#include <unordered_map>

#include "larkstone/core/code_text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"

namespace larkstone {

void LRKPunches::count(int count) {
  punches_.resize(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)));
}

void LRKPunches::code(int index, Code code) {
  if (isStartCode(code) && index > 0) return;
  if (isFinishCode(code) && index < count() - 1) return;
  at(index).code = code;
}

std::string LRKPunches::name(int index, std::string_view startName, std::string_view finishName,
                             std::string_view legPrefix) const {
  if (isStartCode(code(index)) || isFinishCode(code(index))) {
    return codeToString(code(index), startName, finishName, "", ecscForceHideIndex);
  }
  return std::string(legPrefix) + std::to_string(index);
}

std::string LRKPunches::codeName(int index, std::string_view startName, std::string_view finishName,
                                 std::string_view codePrefix,
                                 enmCodeStringConversion codeStringConversion) const {
  return codeToString(code(index), startName, finishName, codePrefix, codeStringConversion);
}

int LRKPunches::add(Time time, Code code) {
  if (count() >= LRK_MAX_LIST) return -1;
  time = clampedTime(time);
  if (isStartCode(code) && !punches_.empty()) {
    if (startExists()) {
      punches_.front().code = code;
      addTimeOffset(time - punches_.front().time);
    } else {
      insert(0, 0, code);
      addTimeOffset(time);
    }
    return 0;
  }
  if (finishExists()) {
    if (isFinishCode(code)) {
      edit(count() - 1, time, code);
    } else {
      insert(count() - 1, time, code);
    }
    return count() - 1;
  }
  punches_.push_back({code, false, time});
  return count() - 1;
}

void LRKPunches::edit(int index, Time time, Code code) {
  at(index).time = clampedTime(time);
  at(index).code = code;
}

void LRKPunches::erase(int index) {
  punches_.erase(punches_.begin() +
                 static_cast<std::ptrdiff_t>(indexWithin(index, punches_.size())));
}

void LRKPunches::addTimeOffset(Time offset, int code) {
  for (Punch& punch : punches_) {
    if (code == -1 || punch.code == code) punch.time = shiftedTime(punch.time, offset);
  }
}

bool LRKPunches::deleteCode(Code code, int firstIndex, int lastIndex) {
  if (lastIndex == -1) lastIndex = count() - 1;
  bool any = false;
  for (int i = firstIndex; i <= lastIndex && i < count();) {
    if (this->code(i) == code) {
      erase(i);
      any = true;
    } else {
      ++i;
    }
  }
  return any;
}

void LRKPunches::insert(int index, Time time, Code code) {
  if (count() >= LRK_MAX_LIST) return;
  const std::size_t place = indexWithin(index, punches_.size() + 1);
  punches_.insert(punches_.begin() + static_cast<std::ptrdiff_t>(place),
                  {code, false, clampedTime(time)});
}

int LRKPunches::legIndex(Code beginCode, Code endCode, int offset) const {
  for (int i = offset; i < count() - 1; ++i) {
    if (code(i) == beginCode && code(i + 1) == endCode) return i;
  }
  return -1;
}

void LRKPunches::unmarkLegs() {
  legMarks_.assign(static_cast<std::size_t>(std::max(count() - 1, 0)), false);
}

int LRKPunches::legExistsAndMark(Code code0, Code code1, int offset) {
  const int legs = std::min(count() - 1, static_cast<int>(legMarks_.size()));
  for (int i = offset; i < legs; ++i) {
    const auto leg = static_cast<std::size_t>(i);
    if (!legMarks_[leg] && code(i) == code0 && code(i + 1) == code1) {
      legMarks_[leg] = true;
      return i;
    }
  }
  return -1;
}

bool LRKPunches::allLegsMarked() const {
  const int legs = std::max(count() - 1, 0);
  if (legs > static_cast<int>(legMarks_.size())) return false;
  return std::find(legMarks_.begin(), legMarks_.begin() + legs, false) == legMarks_.begin() + legs;
}

LRKPunches LRKPunches::commonControlPunches(const LRKPunches& punchesToCompare) const {
  std::unordered_map<Code, int> occurrences;
  for (const Punch& punch : punches_) ++occurrences[punch.code];
  const auto isFixedPoint = [&occurrences](Code code) {
    const auto found = occurrences.find(code);
    return found != occurrences.end() && found->second >= 2;
  };

  LRKPunches common;
  int position = 0;
  for (const Punch& punch : punches_) {
    for (int k = position; k < punchesToCompare.count(); ++k) {
      const Code other = punchesToCompare.code(k);
      if (other == punch.code) {
        common.add(0, punch.code);
        position = k + 1;
        break;
      }
      if (isFixedPoint(other)) break;
    }
  }
  return common;
}

std::string LRKPunches::codesToString(std::string_view startName, std::string_view finishName,
                                      std::string_view codePrefix,
                                      enmCodeStringConversion codeStringConversion,
                                      std::string_view delimiter) const {
  std::string text;
  for (int i = 0; i < count(); ++i) {
    if (i > 0) text += delimiter;
    text += codeName(i, startName, finishName, codePrefix, codeStringConversion);
  }
  return text;
}

std::vector<Code> LRKPunches::codeArray() const {
  std::vector<Code> codes;
  codes.reserve(punches_.size());
  for (const Punch& punch : punches_) codes.push_back(punch.code);
  return codes;
}

enmTimeAccuracy LRKPunches::highestTimeAccuracy(int firstIndex) const {
  enmTimeAccuracy finest = etacHours;
  for (int i = firstIndex; i < count() && finest != etacHundredthsSeconds; ++i) {
    finest = std::min(finest, getTimeAccuracy(time(i)));
  }
  return finest;
}

Time LRKPunches::timeFromCode(Code code, int occurenceIndex) const {
  for (const Punch& punch : punches_) {
    if (punch.code == code && occurenceIndex-- == 0) return punch.time;
  }
  return 0;
}

int LRKPunches::punchIndex(Code code, int offset) const {
  for (int i = offset; i < count(); ++i) {
    if (this->code(i) == code) return i;
  }
  return -1;
}

LRKLegs LRKPunches::toLegs() const {
  LRKLegs legs;
  legs.count(count() - 1);
  for (int i = 0; i < legs.count(); ++i) {
    legs.edit(i, code(i), code(i + 1), time(i), time(i + 1), i, i + 1, isEstimated(i),
              isEstimated(i + 1));
  }
  return legs;
}

LRKCodes LRKPunches::toCodes() const {
  LRKCodes codes;
  codes.count(count());
  for (int i = 0; i < count(); ++i) codes.code(i, code(i));
  codes.runnerCount(1);
  return codes;
}

}  // namespace larkstone
