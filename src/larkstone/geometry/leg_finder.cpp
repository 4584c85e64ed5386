#include "larkstone/geometry/leg_finder.hpp"

#include <algorithm>
#include <bit>
#include <numeric>

namespace larkstone {

namespace {

constexpr int longList = 100;
constexpr int wordBits = 64;

std::uint32_t keyOf(Code code) { return static_cast<std::uint16_t>(code); }
std::uint32_t keyOf(Code beginCode, Code endCode) {
  return keyOf(beginCode) << 16 | keyOf(endCode);
}

// Two passes, behind the last match and from the beginning, over the codes of a list and then one
// more code.
template <class SearchUnder>
LegMatch inTwoPasses(int behind, const LRKCodes& codes, Code last, SearchUnder searchUnder) {
  for (const bool fromBeginning : {false, true}) {
    for (int k = 0; k <= codes.count(); ++k) {
      LegMatch match =
          searchUnder(k < codes.count() ? codes.code(k) : last, fromBeginning ? 0 : behind);
      if (match) {
        match.fromBeginning = fromBeginning;
        return match;
      }
    }
  }
  return {};
}

}  // namespace

void LegFinder::Positions::sort() {
  std::sort(entries_.begin(), entries_.end());
  next_.resize(entries_.size() + 1);
  std::iota(next_.begin(), next_.end(), std::uint32_t{0});
}

std::size_t LegFinder::Positions::placeOf(std::uint32_t key, int offset) const {
  const auto found = std::lower_bound(entries_.begin(), entries_.end(), entryOf(key, offset));
  return static_cast<std::size_t>(found - entries_.begin());
}

int LegFinder::Positions::first(std::uint32_t key, int offset) {
  std::size_t place = placeOf(key, offset);
  while (next_[place] != place) place = next_[place] = next_[next_[place]];
  return place == entries_.size() || entries_[place] >> 32 != key
             ? -1
             : static_cast<int>(entries_[place] & 0xFFFF);
}

void LegFinder::Positions::drop(std::uint32_t key, int position) {
  const std::size_t place = placeOf(key, position);
  next_[place] = static_cast<std::uint32_t>(place + 1);
}

LegFinder::Index::Index(const LRKLegs& list) {
  for (Positions* positions : {&legs, &beginCodes, &endCodes}) positions->reserve(list.count());
  for (int i = 0; i < list.count(); ++i) {
    legs.add(keyOf(list.beginCode(i), list.endCode(i)), i);
    beginCodes.add(keyOf(list.beginCode(i)), i);
    endCodes.add(keyOf(list.endCode(i)), i);
  }
  for (Positions* positions : {&legs, &beginCodes, &endCodes}) positions->sort();
}

LegFinder::LegFinder(const LRKLegs& wanted, LRKLegs& searched, const LRKCodes& codesEqualToStart,
                     const LRKCodes& codesEqualToFinish, TakenLegs takenLegs)
    : wanted_(wanted),
      searched_(searched),
      codesEqualToStart_(codesEqualToStart),
      codesEqualToFinish_(codesEqualToFinish),
      passesOver_(takenLegs == TakenLegs::arePassedOver),
      taken_(static_cast<std::size_t>(searched.count()) / wordBits + 1) {
  searched.unmarkLegs();
}

LegFinder::Index* LegFinder::index() {
  if (searched_.count() < longList) return nullptr;
  if (!index_) {
    index_.emplace(searched_);
    for (int i = 0; passesOver_ && i < searched_.count(); ++i) {
      if (searched_.marked(i)) drop(i);
    }
  }
  return &*index_;
}

void LegFinder::drop(int leg) {
  index_->legs.drop(keyOf(searched_.beginCode(leg), searched_.endCode(leg)), leg);
}

// A runner on the course runs its legs one after the other: mostly the next one is wanted.
int LegFinder::legIndex(Code beginCode, Code endCode, int offset) {
  if (offset < searched_.count() && searched_.beginCode(offset) == beginCode &&
      searched_.endCode(offset) == endCode && !searched_.marked(offset)) {
    return offset;
  }
  if (Index* index = this->index()) return index->legs.first(keyOf(beginCode, endCode), offset);
  int found = searched_.legIndex(beginCode, endCode, offset);
  while (passesOver_ && found >= 0 && searched_.marked(found)) {
    found = searched_.legIndex(beginCode, endCode, found + 1);
  }
  return found;
}

int LegFinder::beginCodeIndex(Code beginCode, int offset) {
  if (offset < searched_.count() && searched_.beginCode(offset) == beginCode) return offset;
  Index* index = this->index();
  return index != nullptr ? index->beginCodes.first(keyOf(beginCode), offset)
                          : searched_.beginCodeIndex(beginCode, offset);
}

int LegFinder::endCodeIndex(Code endCode, int offset) {
  if (offset < searched_.count() && searched_.endCode(offset) == endCode) return offset;
  Index* index = this->index();
  return index != nullptr ? index->endCodes.first(keyOf(endCode), offset)
                          : searched_.endCodeIndex(endCode, offset);
}

int LegFinder::lastTaken(int first, int last) const {
  const auto bits = [](int count) { return (std::uint64_t{1} << count) - 1; };
  const int firstWord = first / wordBits;
  const int lastWord = last / wordBits;
  for (int word = lastWord; word >= firstWord; --word) {
    std::uint64_t taken = taken_[static_cast<std::size_t>(word)];
    if (word == firstWord) taken &= ~bits(first % wordBits);
    if (word == lastWord) taken &= bits(last % wordBits) << 1 | 1;
    if (taken != 0) return word * wordBits + static_cast<int>(std::bit_width(taken)) - 1;
  }
  return -1;
}

LegMatch LegFinder::searchLeg(Code beginCode, Code endCode, int offset) {
  const int found = legIndex(beginCode, endCode, offset);
  if (found < 0 || searched_.marked(found)) return {};
  return {found, found, false};
}

LegMatch LegFinder::searchRun(Code beginCode, Code endCode, int offset) {
  const std::uint32_t key = keyOf(beginCode, endCode);
  const auto known = freeRunsFrom_.find(key);
  const int allTakenBefore = known == freeRunsFrom_.end() ? 0 : known->second;
  int first = beginCodeIndex(beginCode, std::max(offset, allTakenBefore));
  while (first >= 0) {
    const int last = endCodeIndex(endCode, first);
    if (last < 0) return {};
    const int taken = lastTaken(first, last);
    if (taken < 0) return {first, last, false};
    if (!passesOver_) return {};
    // Any run from here to the taken leg ends where this one does.
    if (offset <= allTakenBefore) freeRunsFrom_[key] = taken + 1;
    first = beginCodeIndex(beginCode, taken + 1);
  }
  return {};
}

LegMatch LegFinder::findLeg(int legNo, int lastMatch, bool allowRearrangement) {
  return find(&LegFinder::searchLeg, legNo, lastMatch, allowRearrangement);
}

LegMatch LegFinder::findRun(int legNo, int lastMatch, bool allowRearrangement) {
  return find(&LegFinder::searchRun, legNo, lastMatch, allowRearrangement);
}

LegMatch LegFinder::find(Search search, int legNo, int lastMatch, bool allowRearrangement) {
  const Code begin = wanted_.beginCode(legNo);
  const Code end = wanted_.endCode(legNo);
  LegMatch match = (this->*search)(begin, end, lastMatch + 1);
  if (match || !allowRearrangement) return match;
  match = (this->*search)(begin, end, 0);
  match.fromBeginning = true;
  return match ? match : findUnderOtherCodes(search, legNo, lastMatch);
}

LegMatch LegFinder::findUnderOtherCodes(Search search, int legNo, int lastMatch) {
  const Code begin = wanted_.beginCode(legNo);
  const Code end = wanted_.endCode(legNo);
  if (isStartCode(begin) || codesEqualToStart_.codeExists(begin)) {
    const LegMatch match =
        inTwoPasses(lastMatch + 1, codesEqualToStart_, wanted_.beginCode(0),
                    [&](Code code, int offset) { return (this->*search)(code, end, offset); });
    if (match) return match;
  }
  if (isFinishCode(end) || codesEqualToFinish_.codeExists(end)) {
    return inTwoPasses(lastMatch + 1, codesEqualToFinish_, wanted_.endCode(wanted_.count() - 1),
                       [&](Code code, int offset) { return (this->*search)(begin, code, offset); });
  }
  return {};
}

void LegFinder::take(const LegMatch& match) {
  if (!match) return;
  for (int i = match.first; i <= match.last; ++i) {
    searched_.marked(i, true);
    taken_[static_cast<std::size_t>(i / wordBits)] |= std::uint64_t{1} << i % wordBits;
    if (passesOver_ && index_) drop(i);
  }
}

}  // namespace larkstone
