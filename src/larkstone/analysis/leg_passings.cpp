#include "larkstone/analysis/leg_passings.hpp"

#include <algorithm>
#include <limits>

namespace larkstone {

namespace {

// Negative times before positive ones.
std::uint64_t sortable(Time time) { return static_cast<std::uint32_t>(time) ^ 0x80000000U; }
Time timeOf(std::uint64_t sortable) {
  return static_cast<Time>(static_cast<std::uint32_t>(sortable) ^ 0x80000000U);
}

}  // namespace

void LegPassings::collect(std::span<const Time> begins, std::span<const Time> ends, Time reach) {
  reach_ = reach;
  passings_.clear();
  const auto isThere = [&](std::size_t r) { return !isDisq(begins[r]) && !isDisq(ends[r]); };
  std::int64_t earliest = std::numeric_limits<std::int64_t>::max();
  for (std::size_t r = 0; r < begins.size(); ++r) {
    if (isThere(r)) earliest = std::min(earliest, std::int64_t{begins[r]});
  }
  const std::int64_t width = std::max<std::int64_t>(reach_, 1);
  for (std::size_t r = 0; r < begins.size() && reach_ >= 0; ++r) {
    if (!isThere(r)) continue;
    const auto row = static_cast<std::uint64_t>((begins[r] - earliest) / width);
    passings_.push_back({row << 32 | sortable(ends[r]), sortable(begins[r]) << 32 | r});
  }
  std::sort(passings_.begin(), passings_.end());
  makeGroups();
}

void LegPassings::makeGroups() {
  groups_.clear();
  rows_.clear();
  runners_.resize(passings_.size());
  std::size_t first = 0;  // runner of the group
  for (std::size_t k = 0; k < passings_.size(); ++k) {
    const Passing& passing = passings_[k];
    const auto row = static_cast<std::uint32_t>(passing.rowAndEnd >> 32);
    const Time begin = timeOf(passing.beginAndRunner >> 32);
    const Time end = timeOf(passing.rowAndEnd);
    const auto count = static_cast<int>(groups_.size());
    if (rows_.empty() || rows_.back().number != row) rows_.push_back({row, count, count});
    const bool isNew = rows_.back().last == rows_.back().first || groups_.back().begin != begin ||
                       groups_.back().end != end;
    if (isNew) {
      groups_.push_back({begin, end, {}});
      rows_.back().last = count + 1;
      first = k;
    }
    runners_[k] = static_cast<int>(static_cast<std::uint32_t>(passing.beginAndRunner));
    groups_.back().runners = std::span(runners_).subspan(first, k + 1 - first);
  }
}

void LegPassings::findClose(int group, const Row& row, int& from) {
  const PassingGroup& own = groups_[static_cast<std::size_t>(group)];
  while (from < row.last && this->group(from).end < own.end - reach_) ++from;
  for (int other = from; other < row.last; ++other) {
    const PassingGroup& partner = this->group(other);
    if (partner.end > own.end + reach_) break;
    const std::int64_t gap = std::int64_t{partner.begin} - own.begin;
    if (gap > reach_ || gap < -reach_) continue;
    if (other != group || own.runners.size() > 1) close_.push_back(other);
  }
}

}  // namespace larkstone
