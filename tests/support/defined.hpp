#pragma once

// What holds for every calculated course, whatever its runners did.

#include <algorithm>
#include <cmath>
#include <vector>

#include "larkstone/analysis/course.hpp"

namespace larkstone::test {

/// Asks for all that a calculated course gives, and tells expect(holds, what) what must hold.
template <class Expect>
void checkDefined(const LRKCourse& course, Expect expect) {
  const int n = course.noOfRunners();
  const auto isShare = [](double value) { return value >= 0 && value <= 1; };
  std::vector<Time> times;
  std::vector<int> runners;
  double lengths = 0;
  for (int i = -1; i <= course.noOfLegs(); ++i) {  // legs that are not there may be asked about
    const bool isLeg = i >= 0 && i < course.noOfLegs();
    course.legTopTime(i);
    course.idealTime(i);
    course.accumulatedNormalizedLength(i);
    course.timeLossFrequency(i);
    if (isLeg) lengths += course.normalizedLength(i);
    for (int r = 0; isLeg && r < n; ++r) {
      const LRKRunner& runner = course.runner(r);
      expect(std::isfinite(runner.coursePercentualTimeLoss()) &&
                 std::isfinite(runner.coursePerformanceIndexWithoutTimeLoss()) &&
                 std::isfinite(runner.performanceIndex(i, elstLeg)) &&
                 std::isfinite(runner.performanceIndex(i, elstTotal)),
             "performance is a number");
      expect(isShare(runner.followingIndex(i)) && isShare(runner.pullIndex(i)) &&
                 std::isfinite(runner.courseFollowingIndex() + runner.coursePullIndex()),
             "following is a share");
      expect(runner.timeLoss(i, elstLeg) >= 0, "no time is won");
      expect(runner.place(i, elstLeg) >= 1, "everybody has a place at a leg");
    }
    for (int number = 0; number < LRK_LEG_STYLES; ++number) {
      const auto style = static_cast<enmLegStyle>(number);
      course.averageTime(i, style);
      course.getSortedTimes(i, style, times, runners);
      expect(times.size() == runners.size(), "every time has a runner");
      std::sort(runners.begin(), runners.end());
      bool eachOnce = static_cast<int>(runners.size()) == n;
      for (int r = 0; r < n; ++r) {
        course.runnerTimeDifference(r, i, style, r % 2 == 0);
        eachOnce = eachOnce && runners[static_cast<std::size_t>(r)] == r;
        if (isLeg) expect(course.runner(r).place(i, style) <= n, "places end with the runners");
      }
      expect(eachOnce || !isLeg, "everybody is listed once");
      expect(course.noOfQualifiedRunners(i, style) <= n, "only runners qualify");
    }
  }
  expect(std::abs(lengths - (n > 0 && course.noOfLegs() > 0 ? 1 : 0)) <= 1e-9,
         "lengths of the legs are shares of the course's");
}

}  // namespace larkstone::test
