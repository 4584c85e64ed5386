#include "larkstone/model/category.hpp"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "larkstone/core/text.hpp"
#include "larkstone/model/runner_origin.hpp"

namespace larkstone {

void LRKCategory::noOfRunners(int count) {
  runners_.resize(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)));
}

void LRKCategory::reserveRunners(int count) {
  runners_.reserve(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)));
}

int LRKCategory::addRunner(LRKRunner runner) {
  if (noOfRunners() >= LRK_MAX_LIST) return -1;
  RunnerOrigin::set(runner, categoryIndex_, name(), noOfDeletedRunners_ + noOfRunners());
  runners_.push_back(std::move(runner));
  return noOfRunners() - 1;
}

void LRKCategory::moveRunner(int currentIndex, int newIndex) {
  const auto at = [this](int index) {
    return runners_.begin() + static_cast<std::ptrdiff_t>(indexWithin(index, runners_.size()));
  };
  const auto from = at(currentIndex);
  const auto to = at(newIndex);
  if (currentIndex < newIndex) {
    std::rotate(from, from + 1, to + 1);
  } else {
    std::rotate(to, from, from + 1);
  }
}

void LRKCategory::deleteRunner(int index) {
  runners_.erase(runners_.begin() +
                 static_cast<std::ptrdiff_t>(indexWithin(index, runners_.size())));
  ++noOfDeletedRunners_;
}

Length LRKCategory::legLength(Code beginCode, Code endCode) const {
  const Length* length = legLengths_.find(legKey(beginCode, endCode));
  return length == nullptr ? 0 : *length;
}

void LRKCategory::legLengthSet(Code beginCode, Code endCode, bool set) {
  if (set) {
    legLengths_.insert(legKey(beginCode, endCode), 0);
  } else {
    legLengths_.erase(legKey(beginCode, endCode));
  }
}

std::vector<LegLength> LRKCategory::legLengthArray() const {
  std::vector<LegLength> table;
  table.reserve(legLengths_.size());
  for (const auto& [key, length] : legLengths_) {
    table.push_back({static_cast<Code>(key >> 16), static_cast<Code>(key & 0xFFFF), length});
  }
  return table;
}

void LRKCategory::legLengthArray(const std::vector<LegLength>& legLengths) {
  legLengths_.clear();
  for (const LegLength& entry : legLengths) {
    legLength(entry.beginCode, entry.endCode, entry.length);
  }
}

void LRKCategory::updateForkingInfo() {
  allRunnersHaveTheSameForking_ = true;
  if (runners_.empty()) return;
  const LRKCodes reference = runners_.front().punches().toCodes();
  int fewest = reference.count();
  int most = reference.count();
  for (const LRKRunner& runner : runners_) {
    const int punches = runner.punches().count();
    fewest = std::min(fewest, punches);
    most = std::max(most, punches);
    if (allRunnersHaveTheSameForking_ && !runner.punches().toCodes().isEqualTo(reference)) {
      allRunnersHaveTheSameForking_ = false;
    }
  }
  minNoOfLegs_ = static_cast<std::int16_t>(fewest - 1);
  maxNoOfLegs_ = static_cast<std::int16_t>(most - 1);
}

enmTimeAccuracy LRKCategory::getHighestTimeAccuracy(bool onlyCheckResultTimes) const {
  enmTimeAccuracy finest = etacHours;
  for (const LRKRunner& runner : runners_) {
    const LRKPunches& punches = runner.punches();
    const int first = onlyCheckResultTimes ? std::max(punches.count() - 1, 0) : 0;
    finest = std::min(finest, punches.highestTimeAccuracy(first));
  }
  return finest;
}

void LRKCategory::createMatchingTLT(const LRKCategory& categoryToMatch,
                                    TranslationTable& TLT) const {
  const auto keyOf = [](const LRKRunner& runner) {
    return lowered(runner.name()) + '\n' + lowered(runner.club());
  };
  std::unordered_map<std::string, std::size_t> first;
  for (std::size_t i = 0; i < runners_.size(); ++i) first.try_emplace(keyOf(runners_[i]), i);

  TLT.assign(runners_.size(), -1);
  for (std::size_t j = 0; j < categoryToMatch.runners_.size(); ++j) {
    const auto found = first.find(keyOf(categoryToMatch.runners_[j]));
    if (found != first.end()) TLT[found->second] = static_cast<std::int16_t>(j);
  }
}

LRKLegs LRKCategory::getAllRunnersLegs() const {
  LRKLegs legs;
  std::unordered_set<LegKey> known;
  for (const LRKRunner& runner : runners_) {
    const LRKPunches& punches = runner.punches();
    for (int i = 0; i + 1 < punches.count(); ++i) {
      const Code begin = punches.code(i);
      const Code end = punches.code(i + 1);
      if (known.insert(legKey(begin, end)).second) legs.add(begin, end, 0, 0);
    }
  }
  setLengths(legs);
  return legs;
}

// The table holds metres, a leg list centimetres.
void LRKCategory::setLengths(LRKLegs& legs) const {
  for (int i = 0; i < legs.count(); ++i) {
    const Length* metres = legLengths_.find(legKey(legs.beginCode(i), legs.endCode(i)));
    if (metres != nullptr) legs.length(i, saturated<Length>(std::int64_t{*metres} * 100));
  }
}

void LRKCategory::addTimeOffset(Time offset, int code) {
  for (LRKRunner& runner : runners_) runner.punches().addTimeOffset(offset, code);
}

LRKCategory LRKCategory::clone() const {
  LRKCategory copy = *this;
  for (std::size_t i = 0; i < runners_.size(); ++i) copy.runners_[i] = runners_[i].clone();
  return copy;
}

TagValue LRKCategory::getPropertyByTag(enmFileTag tag, bool& isSet) const {
  if (tag == etagCategoryNoOfRunners) {
    isSet = true;
    return noOfRunners();
  }
  return propertyByTag(*this, tag, isSet);
}

void LRKCategory::setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue) {
  if (tag == etagCategoryNoOfRunners) {
    if (const auto count = fromTagValue<std::int16_t>(value)) noOfRunners(*count);
    return;
  }
  larkstone::setPropertyByTag(*this, tag, value, setValue);
}

}  // namespace larkstone
