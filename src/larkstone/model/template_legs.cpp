#include "larkstone/model/template_legs.hpp"

#include <algorithm>

namespace larkstone {

TemplateLegs::Ranks TemplateLegs::ranksOf(const LRKCodes& codes) {
  Ranks ranks;
  for (int i = 0; i < codes.count(); ++i) ranks.emplace(codes.code(i), i);
  return ranks;
}

TemplateLegs::TemplateLegs(const LRKCodes& course, const LRKCodes& actingAsStart,
                           const LRKCodes& actingAsFinish)
    : actingAsStart_(ranksOf(actingAsStart)), actingAsFinish_(ranksOf(actingAsFinish)) {
  if (course.count() < 2) return;
  const auto legs = static_cast<std::size_t>(course.count() - 1);
  taken_.resize(legs);

  Ranks starts = actingAsStart_;
  starts.emplace(course.codes().front(), actingAsStart.count());
  Ranks finishes = actingAsFinish_;
  finishes.emplace(course.codes().back(), actingAsFinish.count());
  std::vector<int> startRanks(legs);
  std::vector<int> finishRanks(legs);
  for (std::size_t i = 0; i < legs; ++i) {
    const Code begin = course.codes()[i];
    const Code end = course.codes()[i + 1];
    const int leg = static_cast<int>(i);
    if (!legs_.emplace(std::pair(begin, end), leg).second) eachLegOnce_ = false;
    if (const auto start = starts.find(begin); start != starts.end()) {
      startRanks[i] = start->second;
      fromStart_[end].legs.push_back(leg);
    }
    if (const auto finish = finishes.find(end); finish != finishes.end()) {
      finishRanks[i] = finish->second;
      toFinish_[begin].legs.push_back(leg);
    }
  }
  const auto order = [](Choices& choices, const std::vector<int>& ranks) {
    for (auto& [code, choice] : choices) {
      std::sort(choice.legs.begin(), choice.legs.end(), [&ranks](int a, int b) {
        return ranks[static_cast<std::size_t>(a)] < ranks[static_cast<std::size_t>(b)];
      });
    }
  };
  order(fromStart_, startRanks);
  order(toFinish_, finishRanks);
}

bool TemplateLegs::areExactlyThoseOf(const LRKCodes& run) {
  // Every leg takes one, so equal numbers are all.
  if (!eachLegOnce_ || std::max(run.count() - 1, 0) != static_cast<int>(taken_.size())) {
    return false;
  }
  taken_.assign(taken_.size(), false);
  for (Choices* choices : {&fromStart_, &toFinish_}) {
    for (auto& [code, choice] : *choices) choice.next = 0;
  }
  for (int i = 0; i + 1 < run.count(); ++i) {
    if (!takeLeg(run.code(i), run.code(i + 1))) return false;
  }
  return true;
}

bool TemplateLegs::takeLeg(Code begin, Code end) {
  const auto own = legs_.find({begin, end});
  if (own != legs_.end() && take(own->second)) return true;
  if ((isStartCode(begin) || actingAsStart_.count(begin) != 0) && takeNext(fromStart_, end)) {
    return true;
  }
  return (isFinishCode(end) || actingAsFinish_.count(end) != 0) && takeNext(toFinish_, begin);
}

bool TemplateLegs::take(int leg) {
  const auto index = static_cast<std::size_t>(leg);
  if (taken_[index]) return false;
  taken_[index] = true;
  return true;
}

// Legs stay taken until the next runner, so those passed over need no second look.
bool TemplateLegs::takeNext(Choices& choices, Code code) {
  const auto found = choices.find(code);
  if (found == choices.end()) return false;
  Choice& choice = found->second;
  while (choice.next < choice.legs.size()) {
    if (take(choice.legs[choice.next++])) return true;
  }
  return false;
}

}  // namespace larkstone
