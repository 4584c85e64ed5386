#pragma once

// The one search by which a leg of one list is found in another: for legsMatch() and for the
// mapping of a runner onto a course.

#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"

namespace larkstone {

/// A run of legs found and marked in the searched list; a single leg has first == last.
struct LegMatch {
  int first = -1;
  int last = -1;
  bool fromBeginning = false;  ///< found by a search from the first leg, not behind the last match

  explicit operator bool() const { return first >= 0; }
};

/// Finds legs of `wanted` in `searched`. Without rearrangement only the leg's own codes behind the
/// last match count. With it, the own codes are looked for behind the last match and then from the
/// beginning; then, in the same two passes, a leg from the start (to the finish) under the codes
/// that act as start (finish) and last under the code that `wanted` begins (ends) with.
class LegFinder {
 public:
  LegFinder(const LRKLegs& wanted, LRKLegs& searched, const LRKCodes& codesEqualToStart,
            const LRKCodes& codesEqualToFinish)
      : wanted_(wanted),
        searched_(searched),
        codesEqualToStart_(codesEqualToStart),
        codesEqualToFinish_(codesEqualToFinish) {}

  /// A single leg of `searched` with the codes of leg `legNo`, marked.
  LegMatch findLeg(int legNo, int lastMatch, bool allowRearrangement);
  /// A run of consecutive legs from the begin code to the end code, all marked.
  LegMatch findRun(int legNo, int lastMatch, bool allowRearrangement);

  void unmark(const LegMatch& match) { setMarks(match, false); }
  void mark(const LegMatch& match) { setMarks(match, true); }

 private:
  using Search = LegMatch (*)(LRKLegs&, Code beginCode, Code endCode, int offset);

  LegMatch find(Search search, int legNo, int lastMatch, bool allowRearrangement);
  LegMatch findUnderOtherCodes(Search search, int legNo, int lastMatch);
  void setMarks(const LegMatch& match, bool marked);

  const LRKLegs& wanted_;
  LRKLegs& searched_;
  const LRKCodes& codesEqualToStart_;
  const LRKCodes& codesEqualToFinish_;
};

}  // namespace larkstone
