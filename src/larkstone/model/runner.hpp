#pragma once

// One competitor: who, for which club, the punches of the run, and what an analysis found.

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "larkstone/core/date.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/index.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"
#include "larkstone/geometry/punches.hpp"
#include "larkstone/model/partner_lists.hpp"

namespace larkstone {

/// A competitor's record. Every descriptive property has a flag that tells whether it is known:
/// writing `club("OK Syd")` sets `clubSet()`, `clubSet(false)` withdraws the value.
///
/// The analysis works on clones that a course holds (LRKCourse::runner()); the values by leg are
/// there only for those. Legs count from 0, and initializeTimes() sizes their tables: call it after
/// the legs changed and before any value by leg is written (debug builds assert that the leg is
/// there). A leg that is not there reads as LRK_NO_TIME, place 0, 0, false and no partners, and
/// so do all legs of a runner of a category.
///
///     LRKRunner runner;
///     runner.name("Åsa Öberg");
///     runner.startTime(0);
///     runner.punches().add(6000, 31);
///     runner.finishTime(30000);
class LRKRunner {
 public:
#define LRK_PROPERTY(name, flag, type, tag) LRK_DECLARE_PROPERTY(name, flag, type)
#define LRK_PROPERTY_STORED(name, flag, type, tag) \
  LRK_DECLARE_WRITER(name, type)                   \
  LRK_DECLARE_FLAG(name, flag)
#define LRK_PROPERTY_UNSAVED(name, flag, type) LRK_DECLARE_PROPERTY(name, flag, type)
#define LRK_VALUE(name, type, tag) LRK_DECLARE_VALUE(name, type)
#define LRK_RECORD(tag)
#include "larkstone/model/runner_properties.def"

  /// First and last name when either is set, else the stored name.
  std::string name() const;
  /// The stored name, whatever the parts of the name say.
  const std::string& storedName() const { return name_.value; }
  /// The first letter of the name and of every part behind "-", a blank, "." or "(".
  std::string nameInitials() const;

  /// The position in the event, in display order; -1 when the runner is in no event.
  int categoryIndex() const { return categoryIndex_; }
  void categoryIndex(int index) { categoryIndex_ = index; }
  /// The runner's number in the category, never used twice there; -1 when in no category.
  int runnerIndex() const { return runnerIndex_; }
  void runnerIndex(int index) { runnerIndex_ = index; }
  /// Of the category that holds or held the runner.
  const std::string& categoryName() const { return categoryName_; }
  /// Whether totals count although the runner is disqualified or a punch is missing.
  bool qualifyEvenIfDisqualified() const { return qualifyEvenIfDisqualified_; }
  void qualifyEvenIfDisqualified(bool qualify) { qualifyEvenIfDisqualified_ = qualify; }

  LRKPunches& punches() { return punches_; }
  const LRKPunches& punches() const { return punches_; }
  void punches(LRKPunches punches) { punches_ = std::move(punches); }
  /// Punches that do not belong to the course.
  LRKPunches& extraPunches() { return extraPunches_; }
  const LRKPunches& extraPunches() const { return extraPunches_; }
  void extraPunches(LRKPunches punches) { extraPunches_ = std::move(punches); }
  LRKLegs& legs() { return legs_; }
  const LRKLegs& legs() const { return legs_; }
  void legs(LRKLegs legs) { legs_ = std::move(legs); }

  /// The time of the start punch, 0 without one. Writing adds the start punch, or moves it together
  /// with all others.
  Time startTime() const { return punches_.startExists() ? punches_.time(0) : 0; }
  void startTime(Time time) { punches_.add(time, LRK_START_CODE); }
  /// The time of the finish punch, 0 without one. Writing adds or replaces it.
  Time finishTime() const {
    return punches_.finishExists() ? punches_.time(punches_.count() - 1) : 0;
  }
  void finishTime(Time time) { punches_.add(time, LRK_FINISH_CODE); }
  /// The first and the last code; 0 without punches.
  Code startControlCode() const { return punches_.count() == 0 ? Code{0} : punches_.code(0); }
  Code finishControlCode() const {
    return punches_.count() == 0 ? Code{0} : punches_.code(punches_.count() - 1);
  }
  /// Finish less start for a runner with status OK; 0 without a start or finish punch, else
  /// LRK_NO_TIME.
  Time resultTime() const;

  /// The time of a leg in the style; LRK_NO_TIME where there is none.
  Time time(int legNo, enmLegStyle style) const;
  /// The times of a leg in all styles, by enmLegStyle.
  std::array<Time, LRK_LEG_STYLES> times(int legNo) const;
  bool timeIsEstimated(int legNo, enmLegStyle style) const;
  bool isTimeDisq(int legNo, enmLegStyle style) const { return isDisq(time(legNo, style)); }

  /// Time lost: on the leg alone (elstLeg) or from the start to its end (the total styles). Writing
  /// a total changes that leg's stored value only, writing a leg's own loss shifts all later ones.
  Time timeLoss(int legNo, enmLegStyle style) const;
  void timeLoss(int legNo, enmLegStyle style, Time loss);

  /// Results by leg as the analysis stored them. A runner without a valid time for the style has a
  /// place behind all others, which only orders: hasPlace() tells whether it is one to be shown.
  int place(int legNo, enmLegStyle style) const {
    return isLegStyle(style) ? leg(legNo).place[style] : 0;
  }
  void place(int legNo, enmLegStyle style, int place) {
    if (isLegStyle(style)) leg(legNo).place[style] = static_cast<std::int16_t>(place);
  }
  /// Whether the place on the leg is a place: it was worked out, and the time is valid for it.
  bool hasPlace(int legNo, enmLegStyle style) const {
    const Time ranked = time(legNo, style);
    return place(legNo, style) > 0 && !isDisq(ranked) && ranked >= lowestRankedTime(style);
  }
  /// The least time that gets a place: no leg takes no time, but a runner may begin one at
  /// midnight.
  static constexpr Time lowestRankedTime(enmLegStyle style) {
    return style == elstPassingBegin || style == elstPassingBeginAllowMissingPunches ? 0 : 1;
  }
  /// An analysis writes styles elstLeg and elstTotal; others hold what a host wrote.
  float performanceIndex(int legNo, enmLegStyle style) const;
  void performanceIndex(int legNo, enmLegStyle style, float index);
  /// Time gained by following: accumulated to the end of the leg (elstTotal) or on the leg alone,
  /// the difference of two totals. Writing a total changes that leg's stored value only, writing a
  /// leg's own benefit shifts all later ones. Other styles hold what a host wrote.
  Time followingBenefitTime(int legNo, enmLegStyle style) const;
  void followingBenefitTime(int legNo, enmLegStyle style, Time benefit);
  float followingIndex(int legNo) const { return leg(legNo).followingIndex; }
  void followingIndex(int legNo, float index) { leg(legNo).followingIndex = index; }
  float pullIndex(int legNo) const { return leg(legNo).pullIndex; }
  void pullIndex(int legNo, float index) { leg(legNo).pullIndex = index; }

  /// Whom the runner followed and pulled on a leg: positions in the course, each with a value.
#define LRK_PARTNERS(lists, noOf, index, indexValue)                                      \
  int noOf(int legNo) const { return lists##_.count(legNo); }                             \
  void noOf(int legNo, int number) { lists##_.count(legNo, number); }                     \
  int index(int legNo, int k) const { return lists##_.at(legNo, k).runner; }              \
  void index(int legNo, int k, int runner) {                                              \
    lists##_.at(legNo, k).runner = static_cast<std::int16_t>(runner);                     \
  }                                                                                       \
  float indexValue(int legNo, int k) const { return lists##_.at(legNo, k).value; }        \
  void indexValue(int legNo, int k, float share) { lists##_.at(legNo, k).value = share; } \
  /** All legs at once. */                                                                \
  void lists(PartnerLists partners) { lists##_ = std::move(partners); }
  LRK_PARTNERS(followedRunners, noOfFollowedRunners, followedRunnerIndex, followedRunnerIndexValue)
  LRK_PARTNERS(pulledRunners, noOfPulledRunners, pulledRunnerIndex, pulledRunnerIndexValue)
#undef LRK_PARTNERS

  /// Results of the whole course as the analysis stored them.
#define LRK_RESULT(name, type)          \
  type name() const { return name##_; } \
  void name(type value) { name##_ = value; }
  LRK_RESULT(courseTime, Time)
  LRK_RESULT(coursePlace, int)
  LRK_RESULT(coursePerformanceIndex, float)
  LRK_RESULT(coursePerformanceIndexWithoutTimeLoss, float)
  LRK_RESULT(courseFollowingIndex, float)
  LRK_RESULT(coursePullIndex, float)
  LRK_RESULT(noOfTimeLossLegs, int)
  LRK_RESULT(coursePercentualTimeLoss, float)  ///< 0 where it is not set
  /// How the runner was placed on the course.
  LRK_RESULT(requiredLegsValueUsed, enmRequiredLegs)
  LRK_RESULT(rearrangementValueUsed, bool)
  LRK_RESULT(mergingValueUsed, bool)
#undef LRK_RESULT

  /// Works out the time tables from the legs: passing times, totals (a control without a time is
  /// bridged when the legs around it are one run of punches), and up to which leg the runner
  /// qualifies. With onlyQualifyIfStatusIsOK a runner with all times but a failing status does not
  /// qualify at all. Results of legs are kept.
  void initializeTimes(bool onlyQualifyIfStatusIsOK);
  /// Takes the time loss out of the time tables and clears it.
  void subtractTimeLoss();
  /// Rebuilds the punches so that they follow the codes of a course: what does not fit becomes an
  /// extra punch, a missing control a punch without time (and an OK runner disqualified).
  void transformPunches(const LRKCodes& templateCodes);

  /// A runner with the same properties, punches and legs (see LRKLegs::clone()) but without the
  /// tables by leg and the results of an analysis.
  LRKRunner clone() const;

  /// The property stored under a runner tag. The punch tags give the number of punches.
  TagValue getPropertyByTag(enmFileTag tag, bool& isSet) const;
  /// Stores a value under a tag. Changes nothing for a value that cannot be converted.
  void setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue);

  /// Hands every row of the property table to visit(row), in file order.
  template <class Visit>
  static void forEachRow(Visit&& visit) {
#define LRK_PROPERTY(name, flag, type, tag) \
  visit(PropertyRow<LRKRunner, type>{#name, tag, true, &LRKRunner::name##_});
#define LRK_PROPERTY_STORED(name, flag, type, tag) LRK_PROPERTY(name, flag, type, tag)
#define LRK_PROPERTY_UNSAVED(name, flag, type) \
  visit(PropertyRow<LRKRunner, type>{#name, etagLRKFileVersion, false, &LRKRunner::name##_});
#define LRK_VALUE(name, type, tag) \
  visit(ValueRow<LRKRunner, type>{#name, tag, &LRKRunner::name##_});
#define LRK_RECORD(tag) visit(RecordRow{tag});
#include "larkstone/model/runner_properties.def"
  }

 private:
  friend class RunnerOrigin;

  struct LegTable {
    Time begin = LRK_NO_TIME;  // passing times and total
    Time end = LRK_NO_TIME;
    Time total = LRK_NO_TIME;
    Time timeLoss = 0;  // accumulated
    Time followingBenefit = 0;
    float performanceIndex[2] = {};
    float followingIndex = 0;
    float pullIndex = 0;
    std::int16_t place[LRK_LEG_STYLES] = {};
  };
  // What a host wrote for styles that an analysis does not write.
  struct HostValues {
    float performanceIndex[LRK_LEG_STYLES] = {};
    Time followingBenefit[LRK_LEG_STYLES] = {};
  };
  static bool isLegStyle(enmLegStyle style) { return style >= 0 && style < LRK_LEG_STYLES; }
  Time timeOf(const LegTable& table, int legNo, enmLegStyle style) const;
  bool hasLeg(int legNo) const {
    return legNo >= 0 && static_cast<std::size_t>(legNo) < table_.size();
  }
  LegTable& leg(int legNo) { return table_[indexWithin(legNo, table_.size())]; }
  const LegTable& leg(int legNo) const {
    return hasLeg(legNo) ? table_[static_cast<std::size_t>(legNo)] : noLeg;
  }
  HostValues& hostValues(int legNo);
  HostValues hostValues(int legNo) const;

  bool gapCanBeBridged(int firstLeg, int lastLeg) const;
  void computeTotals();

#define LRK_PROPERTY(name, flag, type, tag) Property<type> name##_;
#define LRK_PROPERTY_STORED(name, flag, type, tag) Property<type> name##_;
#define LRK_PROPERTY_UNSAVED(name, flag, type) Property<type> name##_;
#define LRK_VALUE(name, type, tag) type name##_ = estaUnknown;
#define LRK_RECORD(tag)
#include "larkstone/model/runner_properties.def"

  int categoryIndex_ = -1;
  int runnerIndex_ = -1;
  std::string categoryName_;
  bool qualifyEvenIfDisqualified_ = false;
  LRKPunches punches_;
  LRKPunches extraPunches_;
  LRKLegs legs_;

  static const LegTable noLeg;
  std::vector<LegTable> table_;
  std::vector<HostValues> hostValues_;  // up to the last leg that has any
  PartnerLists followedRunners_;
  PartnerLists pulledRunners_;
  int lastQualifiedLeg_ = -1;

  Time courseTime_ = 0;
  int coursePlace_ = 0;
  float coursePerformanceIndex_ = 0;
  float coursePerformanceIndexWithoutTimeLoss_ = 0;
  float courseFollowingIndex_ = 0;
  float coursePullIndex_ = 0;
  int noOfTimeLossLegs_ = 0;
  float coursePercentualTimeLoss_ = 0;
  enmRequiredLegs requiredLegsValueUsed_ = erqlExactlyAll;
  bool rearrangementValueUsed_ = false;
  bool mergingValueUsed_ = false;
};

}  // namespace larkstone
