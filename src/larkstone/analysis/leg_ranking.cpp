#include "larkstone/analysis/leg_ranking.hpp"

#include <algorithm>
#include <array>
#include <numeric>

namespace larkstone {

LegStatistics LegRanking::rank(std::span<const Time> times, Time lowestTime,
                               std::span<std::int16_t> places) {
  entries_.clear();
  for (std::size_t runner = 0; runner < times.size(); ++runner) {
    const Time time = times[runner];
    if (time < lowestTime || isDisq(time)) continue;
    entries_.push_back(static_cast<Entry>(time) << 32 | runner);
  }
  sortEntries();

  std::fill(places.begin(), places.end(), static_cast<std::int16_t>(entries_.size() + 1));
  std::size_t place = 0;
  for (std::size_t k = 0; k < entries_.size(); ++k) {
    if (k == 0 || timeOf(entries_[k]) != timeOf(entries_[k - 1])) place = k + 1;
    places[runnerOf(entries_[k])] = static_cast<std::int16_t>(place);
  }

  LegStatistics statistics;
  statistics.qualified = static_cast<int>(entries_.size());
  if (!entries_.empty()) statistics.best = timeOf(entries_[0]);
  if (entries_.size() > 1) statistics.secondBest = timeOf(entries_[1]);
  return statistics;
}

// A valid time has three bytes: a large field is sorted byte by byte, in steps linear in its size.
void LegRanking::sortEntries() {
  if (entries_.size() < 128) {
    std::sort(entries_.begin(), entries_.end());
    return;
  }
  sorted_.resize(entries_.size());
  for (const int shift : {32, 40, 48}) {
    const auto byteOf = [shift](Entry entry) { return entry >> shift & 0xFF; };
    std::array<std::size_t, 256> slot{};
    for (const Entry entry : entries_) ++slot[byteOf(entry)];
    std::exclusive_scan(slot.begin(), slot.end(), slot.begin(), std::size_t{0});
    for (const Entry entry : entries_) sorted_[slot[byteOf(entry)]++] = entry;
    entries_.swap(sorted_);
  }
}

std::vector<Time> LegRanking::sortedTimes() const {
  std::vector<Time> times;
  times.reserve(entries_.size());
  for (const Entry entry : entries_) times.push_back(timeOf(entry));
  return times;
}

}  // namespace larkstone
