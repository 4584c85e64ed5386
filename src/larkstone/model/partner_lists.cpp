#include "larkstone/model/partner_lists.hpp"

#include <algorithm>
#include <cassert>

#include "larkstone/core/types.hpp"

namespace larkstone {

void PartnerLists::count(int legNo, int count) {
  assert(legNo >= 0);
  const int wanted = std::clamp(count, 0, LRK_MAX_LIST);
  const int present = this->count(legNo);
  if (wanted == present) return;
  const auto leg = static_cast<std::size_t>(legNo);
  if (leg >= end_.size()) end_.resize(leg + 1, static_cast<std::uint32_t>(partners_.size()));
  const auto behind = partners_.begin() + static_cast<std::ptrdiff_t>(end(legNo));
  if (wanted > present) {
    partners_.insert(behind, static_cast<std::size_t>(wanted - present), Partner{});
  } else {
    partners_.erase(behind - (present - wanted), behind);
  }
  for (std::size_t i = leg; i < end_.size(); ++i) {
    end_[i] = static_cast<std::uint32_t>(static_cast<int>(end_[i]) + wanted - present);
  }
}

}  // namespace larkstone
