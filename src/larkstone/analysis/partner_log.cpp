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
  std::sort(entries_.begin() + first, entries_.end());

  const std::int64_t written = static_cast<std::int64_t>(entries_.size()) - first;
  const std::int64_t count = std::min(written - (groupIsPartner ? 1 : 0), limit);
  if (written > count + 1) entries_.resize(static_cast<std::size_t>(first + count + 1));
  const auto runners = passings.group(group).runners;
  for (const int runner : runners) {
    lists_.at(legNo, runner) = {static_cast<std::uint32_t>(first),
                                static_cast<std::uint32_t>(count)};
    countOf_[static_cast<std::size_t>(runner)] += count;
  }
  count_ += count * static_cast<std::int64_t>(runners.size());
}

PartnerLists PartnerLog::listsOf(int runner, int legs) const {
  PartnerLists lists;
  const std::int64_t all = countOf_[static_cast<std::size_t>(runner)];
  if (all == 0) return lists;
  lists.reserve(static_cast<std::size_t>(all));
  for (int i = 0; i < legs; ++i) {
    const List& list = lists_.at(i, runner);
    std::size_t at = list.first;
    for (std::uint32_t left = list.count; left > 0; ++at) {
      const Entry entry = entries_[at];
      if (runnerOf(entry) == runner) continue;
      lists.append(i, {static_cast<std::int16_t>(runnerOf(entry)),
                       std::bit_cast<float>(~static_cast<std::uint32_t>(entry >> 32))});
      --left;
    }
  }
  return lists;
}

}  // namespace larkstone
