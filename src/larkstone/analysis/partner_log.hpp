#pragma once

// Whom the runners met, written down leg by leg and handed to them runner by runner.

#include <cstdint>
#include <span>
#include <vector>

#include "larkstone/analysis/following.hpp"
#include "larkstone/model/partner_lists.hpp"

namespace larkstone {

/// The partners of one kind: those who were pulled, or those who were followed. A list begins with
/// the strongest partner; equal ones stand by runner. Runners of one group share an entry.
class PartnerLog {
 public:
  PartnerLog(int legs, int runners)
      : legs_(static_cast<std::size_t>(legs)),
        lists_(legs_ * static_cast<std::size_t>(runners)),
        countOf_(static_cast<std::size_t>(runners)) {}

  /// Writes down the partners of all runners of a group, up to `limit` for each of them.
  void record(int legNo, const LegPassings& passings, int group, std::span<const CloseGroup> close,
              float CloseGroup::*share, std::int64_t limit);
  /// How many partners all runners together have.
  std::int64_t count() const { return count_; }
  PartnerLists listsOf(int runner) const;

 private:
  struct List {
    std::uint32_t first = 0;
    std::uint32_t count = 0;  // without the runner, who may be in the list, too
  };
  // What a share is short of the largest number above, the runner below: sorts as one number.
  using Entry = std::uint64_t;
  static int runnerOf(Entry entry) { return static_cast<int>(static_cast<std::uint32_t>(entry)); }

  std::size_t legs_;
  std::vector<List> lists_;            // leg by leg for each runner
  std::vector<std::int64_t> countOf_;  // by runner, all legs
  std::vector<Entry> entries_;
  std::int64_t count_ = 0;
};

}  // namespace larkstone
