#pragma once

// The unit of analysis: one sequence of legs and the runners who ran it.

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/analysis/leg_tables.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/index.hpp"
#include "larkstone/core/ranking.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

class LRKCategory;
class LRKDerivedCourse;

/// Every setting of a course that a host can read and write, with its default.
struct CourseSettings {
  bool timesWithoutTimeLoss = false;
  Time timeLossConditionTime = 2000;
  float timeLossConditionPercent = 0.2F;
  bool timeLossConditionBoth = true;
  double timeLossPercentile = 0.5;
  enmTimeLossCalculationMethod timeLossCalculationMethod = etlcCompareToTopTime;
  enmPFIndexCalculationMethod pfIndexCalculationMethod = elfiExtended;
  enmTimeAccuracy timeAccuracy = etacAuto;
  enmGender gender = egndUnknown;
  float topPercentile = 0.25F;
  enmRequiredLegs runnerAdditionStyleRequiredLegs = erqlExactlyAll;
  bool runnerAdditionStyleAllowRearrangement = false;
  bool runnerAdditionStyleAllowMerging = false;
  bool correctZeroAndNegativeTimes = true;
  bool referenceRunnerIndexSet = false;
  bool isCategoryCourse = false;
  Time indexBreakpoint[2] = {700, 2000};
};

/// Set the legs, then add the runners (each is cloned and mapped onto the legs), then calculate,
/// then read. Legs and runners count from 0, times are hundredths of a second. What calculate()
/// works out about a leg reads as LRK_NO_TIME, 0 or 0.0 before it, and for a leg that the course
/// has not got. Indices of runners must lie below noOfRunners() (debug builds assert it).
///
///     LRKCourse course = category.toCourse(erqlAtLeastOne, false, false);
///     course.calculate();
///     course.sortRunners(esorResultTime);
class LRKCourse {
 public:
  const std::string& name() const { return name_; }
  void name(std::string name) { name_ = std::move(name); }

#define LRK_SETTING(name, type)                \
  type name() const { return settings_.name; } \
  void name(type value) { settings_.name = value; }
  /// calculate() also takes the time loss out of the runners' times.
  LRK_SETTING(timesWithoutTimeLoss, bool)
  /// A leg counts as lost time when the loss is above this time and above this share of the
  /// expected time; with timeLossConditionBoth off, either is enough.
  LRK_SETTING(timeLossConditionTime, Time)
  LRK_SETTING(timeLossConditionPercent, float)
  LRK_SETTING(timeLossConditionBoth, bool)
  /// Which of a runner's leg indices counts as the runner's normal speed (etlcCompareToTopTime).
  LRK_SETTING(timeLossPercentile, double)
  LRK_SETTING(timeLossCalculationMethod, enmTimeLossCalculationMethod)
  /// Following: only the closest partners count (elfiBasic), or all that were met, who are then
  /// listed with the runners (elfiExtended). A course lists up to 67 million partners; beyond,
  /// lists of the leg and of later ones are cut to the strongest, but never below 16.
  LRK_SETTING(pfIndexCalculationMethod, enmPFIndexCalculationMethod)
  /// Leg times are cut to it; calculate() replaces etacAuto by the runners' finest accuracy.
  LRK_SETTING(timeAccuracy, enmTimeAccuracy)
  LRK_SETTING(gender, enmGender)
  /// The share of the runners on a leg whose times make up its top time.
  LRK_SETTING(topPercentile, float)
  LRK_SETTING(runnerAdditionStyleRequiredLegs, enmRequiredLegs)
  LRK_SETTING(runnerAdditionStyleAllowRearrangement, bool)
  LRK_SETTING(runnerAdditionStyleAllowMerging, bool)
  /// calculate() first re-times punches that make zero or negative leg times.
  LRK_SETTING(correctZeroAndNegativeTimes, bool)
  LRK_SETTING(referenceRunnerIndexSet, bool)
  /// The course holds one whole category: OK runners always qualify, failing ones never.
  LRK_SETTING(isCategoryCourse, bool)
#undef LRK_SETTING

  /// Following: up to gap 0 two runners are together, from there to gap 1 less and less, beyond not
  /// at all. Slots 0 and 1, any other reads 0.
  Time indexBreakpoint(int index) const {
    return index == 0 || index == 1 ? settings_.indexBreakpoint[index] : 0;
  }
  void indexBreakpoint(int index, Time gap) {
    if (index == 0 || index == 1) settings_.indexBreakpoint[index] = gap;
  }
  /// Writing it also puts it in force.
  int referenceRunnerIndex() const { return referenceRunnerIndex_; }
  void referenceRunnerIndex(int index) {
    referenceRunnerIndex_ = index;
    settings_.referenceRunnerIndexSet = true;
  }

  /// Codes and lengths may be changed at any time, runners are mapped onto what is there when they
  /// are added. A leg that is added behind the others later was run by none of those before it.
  LRKLegs& legs() { return legs_; }
  const LRKLegs& legs() const { return legs_; }
  int noOfLegs() const { return legs_.count(); }
  /// The legs of the reference runner when one is in force, else the course's own.
  LRKLegs& referenceLegs();
  const LRKLegs& referenceLegs() const;
  const LRKCodes& codesEqualToStart() const { return codesEqualToStart_; }
  const LRKCodes& codesEqualToFinish() const { return codesEqualToFinish_; }

  /// Begins a new course: the legs are cloned, runners and results given up.
  void setCourseLegs(const LRKLegs& courseLegs);
  /// The same, with controls that count as the start or the finish.
  void setCourseLegsEx(const LRKLegs& courseLegs, const LRKCodes& codesEqualToStart,
                       const LRKCodes& codesEqualToFinish);
  void setRunnerAdditionStyle(enmRequiredLegs requiredLegs, bool allowRearrangement,
                              bool allowMerging);

  /// Maps the runner's punches onto the legs under the addition style and keeps a clone with one
  /// leg per course leg. False when the runner does not fit or the course is full: with 32767
  /// runners, or 2^23 legs of all runners together; lastRefusal() tells which. References to
  /// runners of the course that were handed out before no longer hold.
  bool addRunner(const LRKRunner& runner);
  /// Adds the first noOfRunners of the list; returns how many were accepted.
  int addRunnersFromArray(int noOfRunners, const std::vector<LRKRunner>& runners);
  /// Why the runner of the last addRunner() was refused; erefNone when it was accepted.
  enmRefusal lastRefusal() const { return lastRefusal_; }
  /// How many runners were refused since the legs were set, for a reason or in all.
  ///
  ///     const LRKCourse course = category.toCourse(erqlAll, false, false);
  ///     if (course.noOfRefusedRunners() > 0) { ... course.noOfRefusedRunners(erefTooFewLegs) ... }
  int noOfRefusedRunners(enmRefusal reason) const;
  int noOfRefusedRunners() const;
  int noOfRunners() const { return static_cast<int>(runners_.size()); }
  /// The course's own runner, not a copy.
  LRKRunner& runner(int index) { return runners_[indexWithin(index, runners_.size())]; }
  const LRKRunner& runner(int index) const { return runners_[indexWithin(index, runners_.size())]; }

  bool allRunnersHaveTheSameCodes() const { return allRunnersHaveTheSameCodes_; }
  bool runnersFromMultipleCategories() const { return runnersFromMultipleCategories_; }

  /// A category that holds the course's runners in their order.
  LRKCategory toCategory() const;
  /// The chosen legs by their codes, the addition style, the codes that act as start and finish,
  /// and references to the chosen runners. What lies behind the end of a list is not chosen.
  LRKDerivedCourse toDerivedCourse(const std::vector<bool>& includeRunner,
                                   const std::vector<bool>& includeLeg) const;
  /// The finest accuracy of any punch time of any runner; hours without punches.
  enmTimeAccuracy getHighestTimeAccuracy() const;

  /// Runs the stages that the flags select, in their fixed order, over the runners' present times;
  /// may be called again at any time. Corrected and cut times are so for good; a time loss that was
  /// taken out of the times is in them again, until the stage that takes it out is run again.
  ///
  /// What a second call with fewer flags leaves: the runners keep the places of other styles, time
  /// losses, indices, partners and benefits of the calculation that made them last. What the course
  /// itself answers begins anew: best times and counts of styles that are not selected, and the
  /// runners who lost time, read as if they had never been worked out. Leg times, their places and
  /// best times, ideal and top times are always worked out.
  void calculate(enmCourseCalculationFlags flags = eccfComplete);
  bool calculated() const { return calculated_; }
  enmCourseCalculationFlags calculationFlags() const { return calculationFlags_; }
  /// Called while calculate() works: the stage ("start calculate", "0" to "8", "end calculate") and
  /// the fraction of the work done. It must not change the course.
  void onAction(std::function<void(std::string_view message, float value)> handler) {
    action_ = std::move(handler);
  }

  /// LRK_NO_TIME when nobody qualified. The total and passing-end styles that allow missing punches
  /// read the best of their strict twins.
  Time bestTime(int legNo, enmLegStyle style) const;
  /// The best total time at the last leg.
  Time bestFinishTime() const;
  /// Mean of the fastest runners' times, rounded to the accuracy (etacAuto: the course's).
  Time legTopTime(int legNo, enmTimeAccuracy accuracy = etacAuto) const;
  /// Mean over the runners with a valid time, computed now; LRK_NO_TIME without any.
  Time averageTime(int legNo, enmLegStyle style, enmTimeAccuracy accuracy = etacAuto) const;
  /// Sum of the best leg times up to the end of the leg.
  Time idealTime(int legNo) const;
  /// The leg's share of the sum of all top times; all shares add up to 1.
  double normalizedLength(int legNo) const;
  double accumulatedNormalizedLength(int legNo) const;
  int noOfExistingRunners(int legNo) const;
  int noOfQualifiedRunners(int legNo, enmLegStyle style) const;
  int noOfTimeLossRunners(int legNo) const;
  /// Share of the leg's runners who lost time there; 0 without runners.
  float timeLossFrequency(int legNo) const;
  /// The runner's time less the best. For the best runner with excludeThisRunner less the second
  /// best (zero or below). LRK_NO_TIME when the runner has no time, or there is none to compare
  /// with.
  Time runnerTimeDifference(int runnerIndex, int legNo, enmLegStyle legStyle,
                            bool excludeThisRunner = false) const;
  /// Times and runner indices by place; runners without a valid time at the end. Only for styles
  /// whose places were calculated.
  void getSortedTimes(int legNo, enmLegStyle style, std::vector<Time>& times,
                      std::vector<int>& runnerIndices) const;
  /// Sets qualifyEvenIfDisqualified of every runner.
  void qualifyRunnersEvenIfNotQualified(bool qualify);

  /// Orders the runners by a key at a leg (-1: the last) and gives each a sort place.
  void sortRunners(enmSort sortBy, int legNo = -1, bool ascending = true);
  /// The same, and fills TLT with the new index of each old one. A key without meaning (esorCustom,
  /// 30, 31) leaves order and TLT as they are.
  void sortRunnersAndCreateTLT(enmSort sortBy, TranslationTable& TLT, int legNo = -1,
                               bool ascending = true);
  /// By a caller's key for each runner.
  void sortRunnersByStringArray(const std::vector<std::string>& stringArray, bool ascending = true);
  void sortRunnersByStringArrayAndCreateTLT(const std::vector<std::string>& stringArray,
                                            TranslationTable& TLT, bool ascending = true);
  /// Runners without a valid key come last in either direction and get no place.
  void sortRunnersByNumericArray(const std::vector<double>& numericArray,
                                 const std::vector<bool>& runnerIsValid, bool ascending = true);
  void sortRunnersByNumericArrayAndCreateTLT(const std::vector<double>& numericArray,
                                             const std::vector<bool>& runnerIsValid,
                                             TranslationTable& TLT, bool ascending = true);
  enmSort sortedBy() const { return sortedBy_; }
  int sortedByLegNo() const { return sortedByLegNo_; }
  bool sortedAscending() const { return sortedAscending_; }

 private:
  LegStatistics statistics(int legNo, enmLegStyle style) const;
  Time rounded(Time time, enmTimeAccuracy accuracy) const;
  /// Moves the runners, gives them their sort places and renumbers whatever names runners by index.
  void applyRanking(Ranking ranking, TranslationTable& TLT);

  std::string name_;
  CourseSettings settings_;
  int referenceRunnerIndex_ = 0;
  LRKLegs legs_;
  LRKCodes codesEqualToStart_;
  LRKCodes codesEqualToFinish_;
  std::vector<LRKRunner> runners_;
  enmRefusal lastRefusal_ = erefNone;
  std::array<int, LRK_REFUSALS> refused_{};  // by reason
  int categoryIndexAddedLast_ = -1;
  bool allRunnersHaveTheSameCodes_ = false;
  bool runnersFromMultipleCategories_ = false;
  LegTables tables_;
  bool calculated_ = false;
  enmCourseCalculationFlags calculationFlags_{};
  std::function<void(std::string_view, float)> action_;
  enmSort sortedBy_ = esorUnsorted;
  int sortedByLegNo_ = 0;
  bool sortedAscending_ = false;
};

}  // namespace larkstone
