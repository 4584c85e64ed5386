// Maps a runner onto the legs of a course.

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "larkstone/analysis/course.hpp"
#include "larkstone/geometry/leg_finder.hpp"

namespace larkstone {

// A growing course must move its runners, not copy them.
static_assert(std::is_nothrow_move_constructible_v<LRKRunner>);

namespace {

// A style that asks for no legs gives every runner as many legs as the course has, run or not. A
// small file can name many of both: a course takes about a gigabyte and no more.
bool isFull(const LRKCourse& course) {
  constexpr std::int64_t mostLegs = std::int64_t{1} << 23;
  const std::int64_t runners = course.noOfRunners();
  return runners >= LRK_MAX_LIST || (runners + 1) * course.noOfLegs() > mostLegs;
}

// Finds every leg of a course among the legs that a runner ran.
class CourseMapping {
 public:
  CourseMapping(const LRKCourse& course, LRKLegs& runnerLegs)
      : course_(course),
        run_(runnerLegs),
        finder_(course.legs(), runnerLegs, course.codesEqualToStart(), course.codesEqualToFinish(),
                TakenLegs::arePassedOver),
        allowRearrangement_(course.runnerAdditionStyleAllowRearrangement()),
        allowMerging_(course.runnerAdditionStyleAllowMerging()) {}

  /// The runner's legs on the course, or why the runner does not fit.
  enmRefusal map(LRKLegs& mapped);

  enmRequiredLegs requiredLegsUsed() const { return requiredLegsUsed_; }
  bool rearranged() const { return rearranged_; }
  bool merged() const { return merged_; }

 private:
  LegMatch find(int legNo);
  enmRefusal refusal() const;
  void append(LRKLegs& mapped, int legNo, const LegMatch& match) const;

  const LRKCourse& course_;
  LRKLegs& run_;
  LegFinder finder_;
  const bool allowRearrangement_;
  const bool allowMerging_;
  int last_ = -1;  // the runner's leg matched last
  int matched_ = 0;
  enmRequiredLegs requiredLegsUsed_ = erqlExactlyAll;
  bool rearranged_ = false;
  bool merged_ = false;
};

// A leg run without a detour, unless a run of legs that may stand for it begins earlier. With
// rearrangement a run of legs is only the last resort.
LegMatch CourseMapping::find(int legNo) {
  const LegMatch direct = finder_.findLeg(legNo, last_, allowRearrangement_);
  LegMatch run;
  if (allowMerging_ && !allowRearrangement_) {
    run = finder_.findRun(legNo, last_, false);
  } else if (allowMerging_ && !direct) {
    run = finder_.findRun(legNo, -1, true);
    run.fromBeginning = true;
  }
  if (direct && !(run && run.first < direct.first)) return direct;
  if (run) merged_ = true;
  return run;
}

void CourseMapping::append(LRKLegs& mapped, int legNo, const LegMatch& match) const {
  const Code begin = course_.legs().beginCode(legNo);
  const Code end = course_.legs().endCode(legNo);
  if (!match) {
    mapped.add(begin, end, LRK_NO_TIME, LRK_NO_TIME, -1, -1);
    return;
  }
  mapped.add(begin, end, run_.beginTime(match.first), run_.endTime(match.last),
             run_.beginPunchIndex(match.first), run_.endPunchIndex(match.last));
  mapped.beginTimeIsEstimated(legNo, run_.beginTimeIsEstimated(match.first));
  mapped.endTimeIsEstimated(legNo, run_.endTimeIsEstimated(match.last));
  const int controlsInside = match.last - match.first;
  if (controlsInside == 0) return;
  mapped.noOfSubCodes(legNo, controlsInside);
  for (int k = 0; k < controlsInside; ++k) {
    mapped.subCode(legNo, k, run_.endCode(match.first + k));
  }
}

// Of a runner for whom no leg was missing that is required.
enmRefusal CourseMapping::refusal() const {
  switch (course_.runnerAdditionStyleRequiredLegs()) {
    case erqlExactlyAll:
      return matched_ == run_.count() ? erefNone : erefOtherLegs;
    case erqlAtLeastOne:
      return matched_ > 0 ? erefNone : erefNoFit;
    default:
      return erefNone;
  }
}

enmRefusal CourseMapping::map(LRKLegs& mapped) {
  const enmRequiredLegs required = course_.runnerAdditionStyleRequiredLegs();
  for (int i = 0; i < course_.noOfLegs(); ++i) {
    const LegMatch match = find(i);
    append(mapped, i, match);
    if (match) {
      finder_.take(match);
      last_ = match.last;
      ++matched_;
      rearranged_ = rearranged_ || match.fromBeginning;
    } else if (required == erqlExactlyAll || required == erqlAll) {
      return erefTooFewLegs;
    } else {
      requiredLegsUsed_ = erqlAtLeastOne;
    }
  }
  if (matched_ == 0) requiredLegsUsed_ = erqlNone;
  return refusal();
}

}  // namespace

bool LRKCourse::addRunner(const LRKRunner& runner) {
  LRKLegs run = runner.punches().toLegs();
  CourseMapping mapping(*this, run);
  LRKLegs mapped;
  lastRefusal_ = isFull(*this) ? erefCourseIsFull : mapping.map(mapped);
  if (lastRefusal_ != erefNone) {
    ++refused_[static_cast<std::size_t>(lastRefusal_)];
    return false;
  }

  LRKRunner added = runner.clone();
  added.legs(std::move(mapped));
  added.requiredLegsValueUsed(mapping.requiredLegsUsed());
  added.rearrangementValueUsed(mapping.rearranged());
  added.mergingValueUsed(mapping.merged());
  added.initializeTimes(settings_.isCategoryCourse);  // sizes the tables: legs can be read from now

  if (runners_.empty()) {
    allRunnersHaveTheSameCodes_ = true;
  } else {
    if (allRunnersHaveTheSameCodes_) {
      allRunnersHaveTheSameCodes_ =
          runners_.front().punches().toCodes().isEqualTo(added.punches().toCodes());
    }
    if (added.categoryIndex() != categoryIndexAddedLast_) runnersFromMultipleCategories_ = true;
  }
  categoryIndexAddedLast_ = added.categoryIndex();
  runners_.push_back(std::move(added));
  return true;
}

int LRKCourse::addRunnersFromArray(int noOfRunners, const std::vector<LRKRunner>& runners) {
  const auto count = std::min(static_cast<std::size_t>(std::max(noOfRunners, 0)), runners.size());
  return static_cast<int>(
      std::count_if(runners.begin(), runners.begin() + static_cast<std::ptrdiff_t>(count),
                    [this](const LRKRunner& runner) { return addRunner(runner); }));
}

}  // namespace larkstone
