#include "larkstone/analysis/course.hpp"

#include <algorithm>
#include <numeric>

namespace larkstone {

void LRKCourse::setCourseLegs(const LRKLegs& courseLegs) { setCourseLegsEx(courseLegs, {}, {}); }

void LRKCourse::setCourseLegsEx(const LRKLegs& courseLegs, const LRKCodes& codesEqualToStart,
                                const LRKCodes& codesEqualToFinish) {
  legs_ = courseLegs.clone();
  for (int i = 0; i < legs_.count(); ++i) {
    legs_.beginPunchIndex(i, i);
    legs_.endPunchIndex(i, i + 1);
  }
  runners_.clear();
  lastRefusal_ = erefNone;
  refused_.fill(0);
  tables_ = {};
  calculated_ = false;
  codesEqualToStart_ = codesEqualToStart.clone();
  codesEqualToFinish_ = codesEqualToFinish.clone();
}

void LRKCourse::setRunnerAdditionStyle(enmRequiredLegs requiredLegs, bool allowRearrangement,
                                       bool allowMerging) {
  settings_.runnerAdditionStyleRequiredLegs = requiredLegs;
  settings_.runnerAdditionStyleAllowRearrangement = allowRearrangement;
  settings_.runnerAdditionStyleAllowMerging = allowMerging;
}

const LRKLegs& LRKCourse::referenceLegs() const {
  const bool inForce = settings_.referenceRunnerIndexSet && referenceRunnerIndex_ >= 0 &&
                       referenceRunnerIndex_ < noOfRunners();
  return inForce ? runner(referenceRunnerIndex_).legs() : legs_;
}

LRKLegs& LRKCourse::referenceLegs() {
  return const_cast<LRKLegs&>(std::as_const(*this).referenceLegs());
}

enmTimeAccuracy LRKCourse::getHighestTimeAccuracy() const {
  enmTimeAccuracy finest = etacHours;
  for (const LRKRunner& runner : runners_) {
    finest = std::min(finest, runner.punches().highestTimeAccuracy());
  }
  return finest;
}

int LRKCourse::noOfRefusedRunners(enmRefusal reason) const {
  const bool isReason = reason > erefNone && reason < LRK_REFUSALS;
  return isReason ? refused_[static_cast<std::size_t>(reason)] : 0;
}

int LRKCourse::noOfRefusedRunners() const {
  return std::accumulate(refused_.begin(), refused_.end(), 0);
}

void LRKCourse::qualifyRunnersEvenIfNotQualified(bool qualify) {
  for (LRKRunner& runner : runners_) runner.qualifyEvenIfDisqualified(qualify);
}

}  // namespace larkstone
