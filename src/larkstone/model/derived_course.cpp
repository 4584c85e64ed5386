#include "larkstone/model/derived_course.hpp"

#include <algorithm>

namespace larkstone {

namespace {

std::int16_t stored(int number) {
  const auto narrow = static_cast<std::int16_t>(number);
  return narrow == number ? narrow : std::int16_t{-1};
}

std::int16_t translated(std::int16_t number, const TranslationTable& TLT) {
  const bool known = number >= 0 && static_cast<std::size_t>(number) < TLT.size();
  return known ? TLT[static_cast<std::size_t>(number)] : std::int16_t{-1};
}

}  // namespace

void LRKDerivedCourse::noOfRunners(int count) {
  references_.resize(static_cast<std::size_t>(std::clamp(count, 0, LRK_MAX_LIST)));
}

void LRKDerivedCourse::runnerCategoryIndex(int index, int categoryIndex) {
  at(index).categoryIndex = stored(categoryIndex);
}

void LRKDerivedCourse::runnerIndex(int index, int runnerIndex) {
  at(index).runnerIndex = stored(runnerIndex);
}

void LRKDerivedCourse::addRunner(int categoryIndex, int index) {
  if (noOfRunners() >= LRK_MAX_LIST) return;
  references_.push_back({stored(categoryIndex), stored(index)});
}

void LRKDerivedCourse::addRunnersFromArray(int noOfRunners, const std::vector<LRKRunner>& runners) {
  references_.clear();
  const auto count = std::min(static_cast<std::size_t>(std::max(noOfRunners, 0)), runners.size());
  for (std::size_t i = 0; i < count; ++i) {
    addRunner(runners[i].categoryIndex(), runners[i].runnerIndex());
  }
}

void LRKDerivedCourse::deleteRunner(int categoryIndex, int index) {
  const auto found =
      std::find_if(references_.begin(), references_.end(), [=](const Reference& reference) {
        return reference.categoryIndex == categoryIndex && reference.runnerIndex == index;
      });
  if (found != references_.end()) references_.erase(found);
}

void LRKDerivedCourse::deleteRunnerByIndex(int index) {
  references_.erase(references_.begin() +
                    static_cast<std::ptrdiff_t>(indexWithin(index, references_.size())));
}

void LRKDerivedCourse::changeCategoryIndices(const TranslationTable& TLT) {
  for (Reference& reference : references_) {
    reference.categoryIndex = translated(reference.categoryIndex, TLT);
  }
  std::erase_if(references_, [](const Reference& r) { return r.categoryIndex == -1; });
}

void LRKDerivedCourse::changeRunnerIndices(int categoryIndex, const TranslationTable& TLT) {
  for (Reference& reference : references_) {
    if (reference.categoryIndex == categoryIndex) {
      reference.runnerIndex = translated(reference.runnerIndex, TLT);
    }
  }
  std::erase_if(references_, [](const Reference& r) { return r.runnerIndex == -1; });
}

TagValue LRKDerivedCourse::getPropertyByTag(enmFileTag tag, bool& isSet) const {
  isSet = true;
  switch (tag) {
    case etagDerivedCourseNoOfLegs:
      return legs_.count();
    case etagDerivedCourseNoOfCodesEqualToStart:
      return codesEqualToStart_.count();
    case etagDerivedCourseNoOfCodesEqualToFinish:
      return codesEqualToFinish_.count();
    case etagDerivedCourseNoOfRunners:
      return noOfRunners();
    default:
      return propertyByTag(*this, tag, isSet);
  }
}

void LRKDerivedCourse::setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue) {
  if (tag == etagDerivedCourseAllowRearrangement || tag == etagDerivedCourseAllowMerging) {
    if (const auto number = fromTagValue<std::int16_t>(value)) {
      larkstone::setPropertyByTag(*this, tag, *number > 0, setValue);
    }
    return;
  }
  larkstone::setPropertyByTag(*this, tag, value, setValue);
}

}  // namespace larkstone
