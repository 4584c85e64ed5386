// Who followed whom, and what it brought.

#include "larkstone/analysis/following.hpp"

#include <vector>

namespace larkstone {

namespace {

// Judges every group of runners on every leg by a method.
class FollowingLegs {
 public:
  FollowingLegs(Calculation& calculation, const GapWeight& weight, FollowingMethod& method)
      : calculation_(calculation), weight_(weight), method_(method) {}

  void judge(int legNo, std::span<LegIndices> indices) {
    passings_.collect(calculation_.times(elstPassingBeginAllowMissingPunches).leg(legNo),
                      calculation_.times(elstPassingEndAllowMissingPunches).leg(legNo),
                      weight_.far());
    method_.beginLeg(legNo, passings_);
    passings_.forEachGroup([&](int group, std::span<const int> close) {
      weigh(group, close);
      if (met_.empty()) return;
      const LegIndices judged = method_.judge(group, met_);
      for (const int runner : passings_.group(group).runners) {
        indices[static_cast<std::size_t>(runner)] = judged;
      }
    });
  }

 private:
  // Those of the close groups with whom at least a part of the leg was shared.
  void weigh(int group, std::span<const int> close) {
    const PassingGroup& own = passings_.group(group);
    met_.clear();
    for (const int other : close) {
      const PassingGroup& partner = passings_.group(other);
      const double begin = static_cast<double>(partner.begin) - own.begin;
      const double end = static_cast<double>(partner.end) - own.end;
      const auto pulled = static_cast<float>(weight_.share(begin, end));
      const auto followed = static_cast<float>(weight_.share(-begin, -end));
      if (pulled > 0 || followed > 0) met_.push_back({other, begin, end, pulled, followed});
    }
  }

  Calculation& calculation_;
  const GapWeight& weight_;
  FollowingMethod& method_;
  LegPassings passings_;
  std::vector<CloseGroup> met_;
};

// Hands the indices of the legs to the runners, and adds them up to those of the course.
void storeResults(Calculation& calculation, const LegMajorTable<LegIndices>& indices,
                  FollowingMethod& method) {
  for (int r = 0; r < calculation.noOfRunners; ++r) {
    method.storePartners(r);
    LRKRunner& runner = calculation.runner(r);
    float coursePull = 0;
    float courseFollowing = 0;
    for (int i = 0; i < calculation.noOfLegs; ++i) {
      const LegIndices& leg = indices.at(i, r);
      const double length = calculation.tables.normalizedLength[static_cast<std::size_t>(i)];
      runner.pullIndex(i, leg.pull);
      runner.followingIndex(i, leg.following);
      coursePull = static_cast<float>(coursePull + leg.pull * length);
      courseFollowing = static_cast<float>(courseFollowing + leg.following * length);
    }
    runner.coursePullIndex(coursePull);
    runner.courseFollowingIndex(courseFollowing);
  }
}

}  // namespace

void computeFollowing(Calculation& calculation) {
  const CourseSettings& settings = calculation.settings;
  const GapWeight weight(settings.indexBreakpoint[0], settings.indexBreakpoint[1]);
  const auto method = settings.pfIndexCalculationMethod == elfiBasic
                          ? basicFollowing(calculation)
                          : extendedFollowing(calculation, weight);
  FollowingLegs legs(calculation, weight, *method);
  LegMajorTable<LegIndices> indices(calculation.noOfLegs, calculation.noOfRunners);
  for (int i = 0; i < calculation.noOfLegs; ++i) {
    legs.judge(i, indices.leg(i));
    calculation.progress.report(8, i + 1, calculation.noOfLegs);
  }
  storeResults(calculation, indices, *method);
  computeFollowingBenefit(calculation, indices);
}

}  // namespace larkstone
