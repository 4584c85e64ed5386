#include "larkstone/analysis/partner_log.hpp"

#include <algorithm>
#include <bit>

namespace larkstone {

void PartnerLog::record(int legNo, const LegPassings& passings, int group,
                        std::span<const CloseGroup> close, float CloseGroup::*share,
                        std::int64_t limit) {
  const auto first = static_cast<std::ptrdiff_t>(entries_.size());
  bool groupIsPartner = false;
  for (const CloseGroup& partner : close) {
    const float value = partner.*share;
    if (value <= 0) continue;
    groupIsPartner = groupIsPartner || partner.group == group;
    const Entry weakness = ~std::bit_cast<std::uint32_t>(value);
    for (const int runner : passings.group(partner.group).runners) {
      entries_.push_back(weakness << 32 | static_cast<std::uint32_t>(runner));
    }
  }
  const std::int64_t written = static_cast<std::int64_t>(entries_.size()) - first;
  const std::int64_t count = std::min(written - (groupIsPartner ? 1 : 0), limit);
  if (written > count + 1) {
    const auto needed = entries_.begin() + first + static_cast<std::ptrdiff_t>(count + 1);
    std::nth_element(entries_.begin() + first, needed, entries_.end());
    entries_.erase(needed, entries_.end());
  }
  std::sort(entries_.begin() + first, entries_.end());

  const auto runners = passings.group(group).runners;
  for (const int runner : runners) {
    const auto r = static_cast<std::size_t>(runner);
    lists_[r * legs_ + static_cast<std::size_t>(legNo)] = {static_cast<std::uint32_t>(first),
                                                           static_cast<std::uint32_t>(count)};
    countOf_[r] += count;
  }
  count_ += count * static_cast<std::int64_t>(runners.size());
}

PartnerLists PartnerLog::listsOf(int runner) const {
  PartnerLists lists;
  const auto r = static_cast<std::size_t>(runner);
  if (countOf_[r] == 0) return lists;
  lists.reserve(static_cast<std::size_t>(countOf_[r]), static_cast<int>(legs_));
  for (std::size_t i = 0; i < legs_; ++i) {
    const List& list = lists_[r * legs_ + i];
    std::size_t at = list.first;
    for (std::uint32_t left = list.count; left > 0; ++at) {
      const Entry entry = entries_[at];
      if (runnerOf(entry) == runner) continue;
      lists.append(static_cast<int>(i),
                   {static_cast<std::int16_t>(runnerOf(entry)),
                    std::bit_cast<float>(~static_cast<std::uint32_t>(entry >> 32))});
      --left;
    }
  }
  return lists;
}

}  // namespace larkstone
