// Brings the runners of a course into order.

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "larkstone/analysis/course.hpp"
#include "larkstone/analysis/sort_keys.hpp"

namespace larkstone {

namespace {

template <class KeyOf>
auto keysOf(const std::vector<LRKRunner>& runners, KeyOf keyOf) {
  std::vector<decltype(keyOf(runners.front()))> keys;
  keys.reserve(runners.size());
  for (const LRKRunner& runner : runners) keys.push_back(keyOf(runner));
  return keys;
}

template <class Key, class IsValid>
std::vector<bool> validityOf(const std::vector<Key>& keys, IsValid isValid) {
  std::vector<bool> valid(keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) valid[i] = isValid(keys[i]);
  return valid;
}

Ranking rankedByTime(const std::vector<Time>& keys, bool ascending) {
  return ranked(keys, validityOf(keys, [](Time key) { return key != LRK_NO_TIME; }), ascending);
}

// Something that is no number cannot be put in order: it stands where missing times stand.
Ranking rankedBySingle(std::vector<float> keys, bool ascending) {
  const auto valid = validityOf(keys, [](float key) { return !std::isnan(key); });
  for (float& key : keys) {
    if (std::isnan(key)) key = std::numeric_limits<float>::infinity();
  }
  return ranked(keys, valid, ascending);
}

template <class Key>
Ranking rankedByValidKey(const std::vector<Key>& keys, bool ascending) {
  return ranked(keys, std::vector<bool>(keys.size(), true), ascending);
}

Ranking rankedBy(const std::vector<LRKRunner>& runners, enmSort sortBy, int legNo, bool ascending) {
  switch (kindOf(sortBy)) {
    case SortKeyKind::text:
      return rankedByValidKey(keysOf(runners, [&](const auto& r) { return textKey(r, sortBy); }),
                              ascending);
    case SortKeyKind::number:
      return rankedByValidKey(keysOf(runners, [&](const auto& r) { return numberKey(r, sortBy); }),
                              ascending);
    case SortKeyKind::time:
      return rankedByTime(keysOf(runners, [&](const auto& r) { return timeKey(r, sortBy, legNo); }),
                          ascending);
    case SortKeyKind::single:
      return rankedBySingle(
          keysOf(runners, [&](const auto& r) { return singleKey(r, sortBy, legNo); }), ascending);
    case SortKeyKind::none:
      break;
  }
  return {};
}

void setSortPlaces(std::vector<LRKRunner>& runners, const std::vector<std::int16_t>& places) {
  for (std::size_t i = 0; i < runners.size(); ++i) {
    if (places[i] > 0) {
      runners[i].sortPlace(places[i]);
    } else {
      runners[i].sortPlaceSet(false);
    }
  }
}

int renumbered(int index, const TranslationTable& newIndex) {
  const auto at = static_cast<std::size_t>(index);
  return index >= 0 && at < newIndex.size() ? newIndex[at] : index;
}

void renumberPartners(LRKRunner& runner, const TranslationTable& newIndex) {
  for (int i = 0; i < runner.legs().count(); ++i) {
    for (int k = 0; k < runner.noOfPulledRunners(i); ++k) {
      runner.pulledRunnerIndex(i, k, renumbered(runner.pulledRunnerIndex(i, k), newIndex));
    }
    for (int k = 0; k < runner.noOfFollowedRunners(i); ++k) {
      runner.followedRunnerIndex(i, k, renumbered(runner.followedRunnerIndex(i, k), newIndex));
    }
  }
}

}  // namespace

void LRKCourse::applyRanking(Ranking ranking, TranslationTable& TLT) {
  setSortPlaces(runners_, ranking.place);
  applyOrder(runners_, ranking.newIndex);
  TLT = std::move(ranking.newIndex);
  if (settings_.referenceRunnerIndexSet) {
    referenceRunnerIndex_ = renumbered(referenceRunnerIndex_, TLT);
  }
  for (LRKRunner& runner : runners_) renumberPartners(runner, TLT);
}

void LRKCourse::sortRunners(enmSort sortBy, int legNo, bool ascending) {
  TranslationTable TLT;
  sortRunnersAndCreateTLT(sortBy, TLT, legNo, ascending);
}

void LRKCourse::sortRunnersAndCreateTLT(enmSort sortBy, TranslationTable& TLT, int legNo,
                                        bool ascending) {
  if (sortBy == esorUnsorted) {
    TLT.resize(runners_.size());
    std::iota(TLT.begin(), TLT.end(), std::int16_t{0});
  } else if (kindOf(sortBy) != SortKeyKind::none) {
    applyRanking(rankedBy(runners_, sortBy, legNo, ascending), TLT);
  } else {
    return;
  }
  sortedBy_ = sortBy;
  sortedByLegNo_ = legNo;
  sortedAscending_ = ascending;
}

void LRKCourse::sortRunnersByStringArray(const std::vector<std::string>& stringArray,
                                         bool ascending) {
  TranslationTable TLT;
  sortRunnersByStringArrayAndCreateTLT(stringArray, TLT, ascending);
}

void LRKCourse::sortRunnersByStringArrayAndCreateTLT(const std::vector<std::string>& stringArray,
                                                     TranslationTable& TLT, bool ascending) {
  std::vector<std::string> keys = stringArray;
  keys.resize(runners_.size());
  applyRanking(rankedByValidKey(keys, ascending), TLT);
  sortedBy_ = esorCustom;
  sortedAscending_ = ascending;
}

void LRKCourse::sortRunnersByNumericArray(const std::vector<double>& numericArray,
                                          const std::vector<bool>& runnerIsValid, bool ascending) {
  TranslationTable TLT;
  sortRunnersByNumericArrayAndCreateTLT(numericArray, runnerIsValid, TLT, ascending);
}

void LRKCourse::sortRunnersByNumericArrayAndCreateTLT(const std::vector<double>& numericArray,
                                                      const std::vector<bool>& runnerIsValid,
                                                      TranslationTable& TLT, bool ascending) {
  // Runners without a valid number follow in either direction, so the numbers change their sign
  // instead of the list its direction.
  using Key = std::pair<bool, double>;  // invalid behind valid, whatever its number
  std::vector<Key> keys(runners_.size(), Key{true, 0});
  const std::size_t given = std::min({keys.size(), numericArray.size(), runnerIsValid.size()});
  for (std::size_t i = 0; i < given; ++i) {
    if (!runnerIsValid[i] || std::isnan(numericArray[i])) continue;
    keys[i] = {false, ascending ? numericArray[i] : -numericArray[i]};
  }
  const auto valid = validityOf(keys, [](const Key& key) { return !key.first; });
  applyRanking(ranked(keys, valid, true), TLT);
  sortedBy_ = esorCustom;
  sortedAscending_ = ascending;
}

}  // namespace larkstone
