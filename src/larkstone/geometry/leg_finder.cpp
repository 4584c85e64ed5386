#include "larkstone/geometry/leg_finder.hpp"

namespace larkstone {

namespace {

LegMatch searchLeg(LRKLegs& legs, Code beginCode, Code endCode, int offset) {
  const int found = legs.legExistsAndMark(beginCode, endCode, offset);
  return {found, found, false};
}

LegMatch searchRun(LRKLegs& legs, Code beginCode, Code endCode, int offset) {
  LegMatch run;
  legs.legSequenceExistsAndMark(run.first, run.last, beginCode, endCode, offset);
  return run;
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

LegMatch LegFinder::findLeg(int legNo, int lastMatch, bool allowRearrangement) {
  return find(searchLeg, legNo, lastMatch, allowRearrangement);
}

LegMatch LegFinder::findRun(int legNo, int lastMatch, bool allowRearrangement) {
  return find(searchRun, legNo, lastMatch, allowRearrangement);
}

LegMatch LegFinder::find(Search search, int legNo, int lastMatch, bool allowRearrangement) {
  const Code begin = wanted_.beginCode(legNo);
  const Code end = wanted_.endCode(legNo);
  LegMatch match = search(searched_, begin, end, lastMatch + 1);
  if (match || !allowRearrangement) return match;
  match = search(searched_, begin, end, 0);
  match.fromBeginning = true;
  return match ? match : findUnderOtherCodes(search, legNo, lastMatch);
}

LegMatch LegFinder::findUnderOtherCodes(Search search, int legNo, int lastMatch) {
  const Code begin = wanted_.beginCode(legNo);
  const Code end = wanted_.endCode(legNo);
  if (isStartCode(begin) || codesEqualToStart_.codeExists(begin)) {
    const LegMatch match =
        inTwoPasses(lastMatch + 1, codesEqualToStart_, wanted_.beginCode(0),
                    [&](Code code, int offset) { return search(searched_, code, end, offset); });
    if (match) return match;
  }
  if (isFinishCode(end) || codesEqualToFinish_.codeExists(end)) {
    return inTwoPasses(
        lastMatch + 1, codesEqualToFinish_, wanted_.endCode(wanted_.count() - 1),
        [&](Code code, int offset) { return search(searched_, begin, code, offset); });
  }
  return {};
}

void LegFinder::setMarks(const LegMatch& match, bool marked) {
  if (!match) return;
  for (int i = match.first; i <= match.last; ++i) searched_.marked(i, marked);
}

}  // namespace larkstone
