#include "larkstone/geometry/leg_finder.hpp"

#include <algorithm>

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

void LegFinder::Positions::sort() { std::sort(entries_.begin(), entries_.end()); }

int LegFinder::Positions::first(std::uint32_t key, int offset) const {
  const auto found = std::lower_bound(entries_.begin(), entries_.end(), entryOf(key, offset));
  return found == entries_.end() || *found >> 32 != key ? -1 : static_cast<int>(*found & 0xFFFF);
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
                     const LRKCodes& codesEqualToFinish)
    : wanted_(wanted),
      searched_(searched),
      codesEqualToStart_(codesEqualToStart),
      codesEqualToFinish_(codesEqualToFinish),
      taken_(static_cast<std::size_t>(searched.count()) / wordBits + 1) {
  searched.unmarkLegs();
}

const LegFinder::Index* LegFinder::index() {
  if (searched_.count() < longList) return nullptr;
  if (!index_) index_.emplace(searched_);
  return &*index_;
}

// A runner on the course runs its legs one after the other: mostly the next one is wanted.
int LegFinder::legIndex(Code beginCode, Code endCode, int offset) {
  if (offset < searched_.count() && searched_.beginCode(offset) == beginCode &&
      searched_.endCode(offset) == endCode) {
    return offset;
  }
  const Index* index = this->index();
  return index != nullptr ? index->legs.first(keyOf(beginCode, endCode), offset)
                          : searched_.legIndex(beginCode, endCode, offset);
}

int LegFinder::beginCodeIndex(Code beginCode, int offset) {
  if (offset < searched_.count() && searched_.beginCode(offset) == beginCode) return offset;
  const Index* index = this->index();
  return index != nullptr ? index->beginCodes.first(keyOf(beginCode), offset)
                          : searched_.beginCodeIndex(beginCode, offset);
}

int LegFinder::endCodeIndex(Code endCode, int offset) {
  if (offset < searched_.count() && searched_.endCode(offset) == endCode) return offset;
  const Index* index = this->index();
  return index != nullptr ? index->endCodes.first(keyOf(endCode), offset)
                          : searched_.endCodeIndex(endCode, offset);
}

bool LegFinder::anyTaken(int first, int last) const {
  const auto bits = [](int count) { return (std::uint64_t{1} << count) - 1; };
  const int firstWord = first / wordBits;
  const int lastWord = last / wordBits;
  for (int word = firstWord; word <= lastWord; ++word) {
    std::uint64_t taken = taken_[static_cast<std::size_t>(word)];
    if (word == firstWord) taken &= ~bits(first % wordBits);
    if (word == lastWord) taken &= bits(last % wordBits) << 1 | 1;
    if (taken != 0) return true;
  }
  return false;
}

LegMatch LegFinder::searchLeg(Code beginCode, Code endCode, int offset) {
  const int found = legIndex(beginCode, endCode, offset);
  if (found < 0 || searched_.marked(found)) return {};
  return {found, found, false};
}

LegMatch LegFinder::searchRun(Code beginCode, Code endCode, int offset) {
  const int first = beginCodeIndex(beginCode, offset);
  const int last = first < 0 ? -1 : endCodeIndex(endCode, first);
  if (last < 0) return {};
  return anyTaken(first, last) ? LegMatch{} : LegMatch{first, last, false};
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
  }
}

}  // namespace larkstone
