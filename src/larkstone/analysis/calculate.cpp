// The stages of a calculation in their order.

#include "larkstone/analysis/calculation.hpp"
#include "larkstone/analysis/course.hpp"
#include "larkstone/analysis/time_correction.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

namespace {

// Every runner has all legs of the course: nobody ran those that came later than the runner.
void completeLegs(std::vector<LRKRunner>& runners, const LRKLegs& course) {
  for (LRKRunner& runner : runners) {
    for (int i = runner.legs().count(); i < course.count(); ++i) {
      runner.legs().add(course.beginCode(i), course.endCode(i), LRK_NO_TIME, LRK_NO_TIME, -1, -1);
    }
  }
}

// Brings the runners' times into the state that all stages rest on.
void prepareTimes(std::vector<LRKRunner>& runners, const CourseSettings& settings) {
  if (settings.isCategoryCourse) {
    for (LRKRunner& runner : runners) {
      if (runner.status() == estaOK) runner.qualifyEvenIfDisqualified(true);
    }
  }
  if (settings.correctZeroAndNegativeTimes) {
    correctZeroAndNegativeTimes(runners, settings.isCategoryCourse, settings.timeAccuracy);
  }
  for (LRKRunner& runner : runners) {
    LRKLegs& legs = runner.legs();
    for (int i = 0; i < legs.count(); ++i) {
      legs.beginTime(i, truncateTime(legs.beginTime(i), settings.timeAccuracy));
      legs.endTime(i, truncateTime(legs.endTime(i), settings.timeAccuracy));
    }
    runner.initializeTimes(settings.isCategoryCourse);
  }
}

void runStages(Calculation& calculation, enmCourseCalculationFlags flags) {
  const CourseSettings& settings = calculation.settings;
  const bool performance = (flags & eccfPerformanceIndices) != 0;
  computeLegStatistics(calculation);
  computeTopTimes(calculation);
  if (settings.timeLossCalculationMethod == etlcCompareToTopTime || performance) {
    computePerformance(calculation);
  }
  if ((flags & eccfTimeLoss) != 0) {
    estimateTimeLoss(calculation);
    if (settings.timesWithoutTimeLoss) subtractTimeLoss(calculation);
  }
  if (performance) computePerformanceWithoutTimeLoss(calculation);
  computeStylePlaces(calculation, flags);
  if ((flags & eccfLFIndices) != 0) computeFollowing(calculation);
}

}  // namespace

void LRKCourse::calculate(enmCourseCalculationFlags flags) {
  const CalculationProgress progress(action_, noOfRunners(), noOfLegs(),
                                     settings_.timesWithoutTimeLoss, flags);
  progress.started();
  tables_.reset(noOfLegs());
  if (!runners_.empty()) {
    if (settings_.timeAccuracy == etacAuto) settings_.timeAccuracy = getHighestTimeAccuracy();
    completeLegs(runners_, legs_);
    prepareTimes(runners_, settings_);
    progress.report(0, 1, 1);
    Calculation calculation(runners_, noOfLegs(), settings_, tables_, progress);
    runStages(calculation, flags);
  }
  calculationFlags_ = flags;
  calculated_ = true;
  progress.finished();
}

}  // namespace larkstone
