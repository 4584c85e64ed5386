#include "larkstone/geometry/codes.hpp"

#include <algorithm>
#include <cassert>
#include <unordered_map>

#include "larkstone/geometry/legs.hpp"
#include "larkstone/geometry/punches.hpp"

namespace larkstone {

namespace {

using CodeCounts = std::unordered_map<Code, int>;

CodeCounts countsOf(const std::vector<Code>& codes) {
  CodeCounts counts;
  for (const Code code : codes) ++counts[code];
  return counts;
}

// Codes that two lists both visit several times, with the smaller of their two counts.
CodeCounts sharedRepeatedCodes(const std::vector<Code>& a, const std::vector<Code>& b) {
  const CodeCounts inB = countsOf(b);
  CodeCounts shared;
  for (const auto& [code, count] : countsOf(a)) {
    const auto other = inB.find(code);
    if (count >= 2 && other != inB.end() && other->second >= 2) {
      shared[code] = std::min(count, other->second);
    }
  }
  return shared;
}

// The last index of the loops that begin at the repeated control at `begin`, or -1 when they are
// no section of their own.
int repeatedSectionEnd(const std::vector<Code>& codes, const CodeCounts& repeated, int begin) {
  const Code centre = codes[static_cast<std::size_t>(begin)];
  const int multiplicity = repeated.at(centre);
  const int count = static_cast<int>(codes.size());
  int closing = -1;
  int seen = 1;
  for (int j = begin + 1; j < count && closing < 0; ++j) {
    if (codes[static_cast<std::size_t>(j)] == centre && ++seen == multiplicity) closing = j;
  }
  if (closing < 0) return -1;
  int end = closing;
  for (int j = closing + 1; j < count; ++j) {
    if (repeated.count(codes[static_cast<std::size_t>(j)]) != 0) end = j;
  }
  return end != closing || multiplicity > 2 ? end : -1;
}

}  // namespace

void LRKCodes::count(int count) {
  codes_.resize(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)));
}

int LRKCodes::add(Code code) {
  if (count() >= LRK_MAX_LIST) return -1;
  codes_.push_back(code);
  return count() - 1;
}

bool LRKCodes::isEqualTo(const LRKCodes& codesToCompare, const LRKCodes* codesEqualToStart) const {
  const auto actsAsStart = [codesEqualToStart](Code code) {
    return codesEqualToStart != nullptr && codesEqualToStart->codeExists(code);
  };
  const auto equal = [&actsAsStart](Code a, Code b) {
    if (a == b) return true;
    if (isStartCode(b)) return actsAsStart(a);
    return isStartCode(a) && actsAsStart(b);
  };
  return std::equal(codes_.begin(), codes_.end(), codesToCompare.codes_.begin(),
                    codesToCompare.codes_.end(), equal);
}

int LRKCodes::codeIndex(Code code, int offset) const {
  if (offset >= count()) return -1;
  assert(offset >= 0);
  const auto found = std::find(codes_.begin() + offset, codes_.end(), code);
  return found == codes_.end() ? -1 : static_cast<int>(found - codes_.begin());
}

LRKCodes LRKCodes::commonCodes(const LRKCodes& codesToCompare) const {
  const CodeCounts repeated = sharedRepeatedCodes(codes_, codesToCompare.codes_);
  std::unordered_map<Code, int> last;  // so that nobody looks for a control that is gone by
  for (int i = 0; i < codesToCompare.count(); ++i) last[codesToCompare.code(i)] = i;
  LRKCodes common;
  bool inSection = false;
  int sectionEnd = -1;
  int position = 0;
  for (int i = 0; i < count(); ++i) {
    const bool isRepeated = repeated.count(code(i)) != 0;
    if (inSection && sectionEnd < i) inSection = false;
    if (!inSection && isRepeated) {
      sectionEnd = repeatedSectionEnd(codes_, repeated, i);
      inSection = sectionEnd != -1;
    }
    if (!isRepeated && inSection) continue;
    const auto lastVisit = last.find(code(i));
    if (lastVisit == last.end() || lastVisit->second < position) continue;
    const int found = codesToCompare.codeIndex(code(i), position);
    common.add(code(i));
    position = found + 1;
  }
  return common;
}

LRKCodes LRKCodes::commonCodes_old(const LRKCodes& codesToCompare) const {
  const CodeCounts counts = countsOf(codes_);
  const auto isBarrier = [&counts](Code code) {
    const auto found = counts.find(code);
    return found != counts.end() && found->second >= 2;
  };
  LRKCodes common;
  int position = 0;
  for (const Code code : codes_) {
    for (int k = position; k < codesToCompare.count(); ++k) {
      if (codesToCompare.code(k) == code) {
        common.add(code);
        position = k + 1;
        break;
      }
      if (isBarrier(codesToCompare.code(k))) break;
    }
  }
  return common;
}

LRKPunches LRKCodes::toPunches() const {
  LRKPunches punches;
  punches.count(count());
  for (int i = 0; i < count(); ++i) punches.code(i, code(i));
  return punches;
}

LRKLegs LRKCodes::toLegs() const {
  LRKLegs legs;
  legs.count(count() - 1);
  for (int i = 0; i < legs.count(); ++i) legs.edit(i, code(i), code(i + 1), 0, 0, i, i + 1);
  return legs;
}

int LRKCodes::codeCount(Code code) const {
  return static_cast<int>(std::count(codes_.begin(), codes_.end(), code));
}

bool LRKCodes::superStartAndFinishExist() const {
  return count() >= 2 && codes_.front() == LRK_SUPER_START_CODE &&
         codes_.back() == LRK_SUPER_FINISH_CODE;
}

void LRKCodes::addSuperStartAndFinish() {
  if (superStartAndFinishExist() || count() + 2 > LRK_MAX_LIST) return;
  codes_.insert(codes_.begin(), LRK_SUPER_START_CODE);
  codes_.push_back(LRK_SUPER_FINISH_CODE);
}

void LRKCodes::stripSuperStartAndFinish() {
  if (!superStartAndFinishExist()) return;
  codes_.erase(codes_.begin());
  codes_.pop_back();
}

std::string LRKCodes::toString(std::string_view delimiter) const {
  std::string text;
  for (int i = 0; i < count(); ++i) {
    if (i > 0) text += delimiter;
    text += std::to_string(code(i));
  }
  return text;
}

}  // namespace larkstone
