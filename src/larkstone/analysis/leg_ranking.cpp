#include "larkstone/analysis/leg_ranking.hpp"

#include <algorithm>

namespace larkstone {

LegStatistics LegRanking::rank(std::span<const Time> times, Time lowestTime,
                               std::span<std::int16_t> places) {
  entries_.clear();
  for (std::size_t runner = 0; runner < times.size(); ++runner) {
    const Time time = times[runner];
    if (time < lowestTime || isDisq(time)) continue;
    entries_.push_back(static_cast<Entry>(time) << 32 | runner);
  }
  std::sort(entries_.begin(), entries_.end());

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

std::vector<Time> LegRanking::sortedTimes() const {
  std::vector<Time> times;
  times.reserve(entries_.size());
  for (const Entry entry : entries_) times.push_back(timeOf(entry));
  return times;
}

}  // namespace larkstone
