#pragma once

// The one search by which a leg of one list is found in another: for legsMatch() and for the
// mapping of a runner onto a course.

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"

namespace larkstone {

/// A run of legs found in the searched list; a single leg has first == last.
struct LegMatch {
  int first = -1;
  int last = -1;
  bool fromBeginning = false;  ///< found by a search from the first leg, not behind the last match

  explicit operator bool() const { return first >= 0; }
};

/// What a search does where its hit, or a part of it, was taken before: it ends without a hit, or
/// it goes on behind, so that a leg that was run twice is found twice.
enum class TakenLegs { endTheSearch, arePassedOver };

/// Finds legs of `wanted` in `searched`, and knows which ones were taken. Without rearrangement
/// only the leg's own codes behind the last match count. With it, the own codes are looked for
/// behind the last match and then from the beginning; then, in the same two passes, a leg from the
/// start (to the finish) under the codes that act as start (finish) and last under the code that
/// `wanted` begins (ends) with.
class LegFinder {
 public:
  /// All legs of `searched` become unmarked; only take() may mark them from here on.
  LegFinder(const LRKLegs& wanted, LRKLegs& searched, const LRKCodes& codesEqualToStart,
            const LRKCodes& codesEqualToFinish, TakenLegs takenLegs);

  /// A single leg of `searched` with the codes of leg `legNo`.
  LegMatch findLeg(int legNo, int lastMatch, bool allowRearrangement);
  /// A run of consecutive legs from the begin code to the end code.
  LegMatch findRun(int legNo, int lastMatch, bool allowRearrangement);

  /// Marks what was found, so that it is not found again.
  void take(const LegMatch& match);

 private:
  using Search = LegMatch (LegFinder::*)(Code beginCode, Code endCode, int offset);

  /// Positions of legs by what they are looked for under, so that long lists are not walked through
  /// again and again.
  class Positions {
   public:
    void reserve(int count) { entries_.reserve(static_cast<std::size_t>(count)); }
    void add(std::uint32_t key, int position) { entries_.push_back(entryOf(key, position)); }
    void sort();
    /// The first position of the key at or behind offset that was not dropped, or -1.
    int first(std::uint32_t key, int offset);
    void drop(std::uint32_t key, int position);

   private:
    static std::uint64_t entryOf(std::uint32_t key, int position) {
      return std::uint64_t{key} << 32 | static_cast<std::uint32_t>(position);
    }
    std::size_t placeOf(std::uint32_t key, int offset) const;

    std::vector<std::uint64_t> entries_;
    std::vector<std::uint32_t> next_;  // itself, or for a dropped entry one behind
  };
  struct Index {
    explicit Index(const LRKLegs& list);
    Positions legs;
    Positions beginCodes;
    Positions endCodes;
  };

  /// The index of a long list, made when the first search does not find its leg right away.
  Index* index();
  /// Takes a leg out of the index.
  void drop(int leg);
  int legIndex(Code beginCode, Code endCode, int offset);
  int beginCodeIndex(Code beginCode, int offset);
  int endCodeIndex(Code endCode, int offset);
  /// The last taken leg of a run, or -1.
  int lastTaken(int first, int last) const;
  LegMatch searchLeg(Code beginCode, Code endCode, int offset);
  LegMatch searchRun(Code beginCode, Code endCode, int offset);
  LegMatch find(Search search, int legNo, int lastMatch, bool allowRearrangement);
  LegMatch findUnderOtherCodes(Search search, int legNo, int lastMatch);

  const LRKLegs& wanted_;
  LRKLegs& searched_;
  const LRKCodes& codesEqualToStart_;
  const LRKCodes& codesEqualToFinish_;
  const bool passesOver_;
  std::optional<Index> index_;
  std::vector<std::uint64_t> taken_;  // a bit per leg
  // By begin and end code, where the first run may begin: all before it were found to be taken.
  std::unordered_map<std::uint32_t, int> freeRunsFrom_;
};

}  // namespace larkstone
