#pragma once

// Who was close to whom on one leg.

#include <cstdint>
#include <span>
#include <vector>

#include "larkstone/core/types.hpp"

namespace larkstone {

/// The runners who passed both ends of a leg at the same times: what holds for one of them holds
/// for all.
struct PassingGroup {
  Time begin = 0;
  Time end = 0;
  std::span<const int> runners;  ///< by index, ascending
};

/// The runners of a leg by the times at which they passed its two controls. Pairs that are close at
/// both ends are found without looking at all those that are close at one of them, as after a mass
/// start. One object serves leg after leg and keeps its memory.
class LegPassings {
 public:
  /// Takes the runners who have both times. Close is up to `reach` apart; below 0 nobody is.
  void collect(std::span<const Time> begins, std::span<const Time> ends, Time reach);

  const PassingGroup& group(int index) const { return groups_[static_cast<std::size_t>(index)]; }

  /// Calls visit(group, closeGroups) for every group that has others close by, with their indices.
  /// A group of several runners is close to itself.
  template <class Visit>
  void forEachGroup(Visit visit);

 private:
  // The runners are laid out in rows of begin times, each as wide as the reach: a runner's partners
  // stand in the own row and its two neighbours. Within a row the order is by end time.
  struct Passing {
    std::uint64_t rowAndEnd;
    std::uint64_t beginAndRunner;
    bool operator<(const Passing& other) const {
      return rowAndEnd != other.rowAndEnd ? rowAndEnd < other.rowAndEnd
                                          : beginAndRunner < other.beginAndRunner;
    }
  };
  struct Row {
    std::uint32_t number = 0;
    int first = 0;  // groups
    int last = 0;
  };

  void makeGroups();
  void findClose(int group, const Row& row, int& from);

  std::int64_t reach_ = 0;
  std::vector<Passing> passings_;
  std::vector<int> runners_;
  std::vector<PassingGroup> groups_;
  std::vector<Row> rows_;
  std::vector<int> close_;
};

template <class Visit>
void LegPassings::forEachGroup(Visit visit) {
  for (std::size_t k = 0; k < rows_.size(); ++k) {
    const Row& row = rows_[k];
    const Row before = k > 0 && rows_[k - 1].number + 1 == row.number ? rows_[k - 1] : Row{};
    const Row behind =
        k + 1 < rows_.size() && rows_[k + 1].number == row.number + 1 ? rows_[k + 1] : Row{};
    // Where the search in each row begins moves on with the end times.
    int fromBefore = before.first;
    int from = row.first;
    int fromBehind = behind.first;
    for (int group = row.first; group < row.last; ++group) {
      close_.clear();
      findClose(group, before, fromBefore);
      findClose(group, row, from);
      findClose(group, behind, fromBehind);
      if (!close_.empty()) visit(group, std::span<const int>(close_));
    }
  }
}

}  // namespace larkstone
