// Who followed whom, worked out by hand for the default gaps: in full up to 7 s, falling evenly to
// nothing at 20 s.

#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "larkstone/analysis/pack_integral.hpp"
#include "larkstone/core/number.hpp"

#include "analysis/courses.hpp"

namespace larkstone {
namespace {

using namespace test;

/// Runners by the seconds on the clock at which they passed the controls.
LRKCourse passing(std::string_view codesText, const std::vector<Ints>& runners,
                  enmPFIndexCalculationMethod method = elfiExtended) {
  LRKCourse course = emptyCourse(codesText);
  for (const Ints& seconds : runners) course.addRunner(runner(codesText, seconds));
  course.pfIndexCalculationMethod(method);
  course.calculate();
  return course;
}

std::string thousandths(float value) {
  return std::to_string(roundHalfEven(static_cast<double>(value) * 1000));
}

/// Pull and following index of every runner on leg 0, in thousandths.
std::string indices(const LRKCourse& course) {
  std::string text;
  for (int r = 0; r < course.noOfRunners(); ++r) {
    const LRKRunner& runner = course.runner(r);
    text += (r == 0 ? "" : ", ") + thousandths(runner.pullIndex(0)) + " " +
            thousandths(runner.followingIndex(0));
  }
  return text;
}

/// Whom every runner pulled on leg 0 and, behind "<", whom the runner followed.
std::string partners(const LRKCourse& course) {
  std::string text;
  for (int r = 0; r < course.noOfRunners(); ++r) {
    const LRKRunner& runner = course.runner(r);
    if (r > 0) text += ", ";
    for (int k = 0; k < runner.noOfPulledRunners(0); ++k) {
      text += std::to_string(runner.pulledRunnerIndex(0, k)) + ":" +
              thousandths(runner.pulledRunnerIndexValue(0, k)) + " ";
    }
    text += "<";
    for (int k = 0; k < runner.noOfFollowedRunners(0); ++k) {
      text += " " + std::to_string(runner.followedRunnerIndex(0, k)) + ":" +
              thousandths(runner.followedRunnerIndexValue(0, k));
    }
  }
  return text;
}

TEST(FollowingTest, ALegIsSharedByTheGapsAtItsEnds) {
  struct Row {
    std::vector<Ints> passings;  // begin and end of the leg
    std::string extended, partners;
    std::string basic = "";  // where it differs
  };
  const Row rows[] = {
      // 5 s apart all along; 25 s apart at one end; side by side.
      {{{0, 300}, {5, 305}}, "1000 0, 0 1000", "1:1000 <, < 0:1000"},
      {{{0, 300}, {5, 325}}, "0 0, 0 0", "<, <"},
      {{{25, 300}, {0, 300}}, "0 0, 0 0", "<, <"},
      {{{9, 90}, {9, 90}}, "500 500, 500 500", "1:500 < 1:500, 0:500 < 0:500"},
      // From 15 s to 0: 8/15 of the leg at (5/13 + 1) / 2, the rest in full; 163/195 in all.
      {{{0, 300}, {15, 300}}, "836 0, 0 836", "1:836 <, < 0:836"},
      // From 6 s behind to 6 s ahead: each follows for half the leg.
      {{{0, 306}, {6, 300}}, "500 500, 500 500", "1:500 < 1:500, 0:500 < 0:500"},
      // A pack at 0, 5 and 12 s, where 12 s count 8/13. The middle one follows and pulls: to the
      // basic method it only follows.
      {{{0, 300}, {5, 305}, {12, 312}},
       "1000 0, 1000 1000, 0 1000",
       "1:1000 2:615 <, 2:1000 < 0:1000, < 1:1000 0:615",
       "1000 0, 0 1000, 0 1000"},
      {{{7, 307}, {0, 300}, {19, 319}},
       "615 1000, 1000 0, 0 615",
       "2:615 < 1:1000, 0:1000 2:77 <, < 0:615 1:77",
       "0 1000, 1000 0, 0 615"},
      // Behind the first, one falls back from 5 to 19 s while the other closes up from 19 to 5 s.
      // The first pulls whoever is closer: in full on both outer sevenths, at (1 + 3/13) / 2 in
      // between; 66/91. One of the two alone: 55/91.
      {{{0, 300}, {5, 319}, {19, 305}},
       "725 0, 433 864, 433 864",
       "1:604 2:604 <, 2:433 < 0:604 2:433, 1:433 < 0:604 1:433",
       "604 0, 0 604, 0 604"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    const LRKCourse course = passing("S-F", row.passings);
    EXPECT_EQ(indices(course), row.extended);
    EXPECT_EQ(partners(course), row.partners);
    EXPECT_EQ(indices(passing("S-F", row.passings, elfiBasic)),
              row.basic.empty() ? row.extended : row.basic);
  }
}

TEST(FollowingTest, TheCourseAddsUpAndFollowingBringsTime) {
  // B is 5 s behind A on the first leg (300 s, 3/5 of the course by top times) and falls back on
  // the second: alone B needs 250 s for what takes 200 s, so the first leg would have taken 375 s.
  LRKCourse course = passing("S-31-F", {{0, 300, 500}, {5, 305, 555}});
  const LRKRunner& b = course.runner(1);
  EXPECT_FLOAT_EQ(b.courseFollowingIndex(), 0.6F);
  EXPECT_FLOAT_EQ(course.runner(0).coursePullIndex(), 0.6F);
  EXPECT_EQ(b.followingBenefitTime(0, elstTotal), 7500);
  EXPECT_EQ(b.followingBenefitTime(1, elstLeg), 0);
  EXPECT_EQ(course.runner(0).followingBenefitTime(1, elstTotal), 0);

  // The same again by the other method: no lists, nothing else changes; nor does it in other order.
  course.pfIndexCalculationMethod(elfiBasic);
  course.sortRunners(esorResultTime, -1, false);
  course.calculate();
  EXPECT_FLOAT_EQ(course.runner(0).courseFollowingIndex(), 0.6F);
  EXPECT_EQ(course.runner(0).followingBenefitTime(1, elstTotal), 7500);
  EXPECT_EQ(partners(course), "<, <");
}

TEST(FollowingTest, ButterflyLoopsAndForkedLegsAreSharedByTheLegsOfTheCourse) {
  LRKCourse butterfly = emptyCourse("S-50-1-50-2-50-F");
  butterfly.runnerAdditionStyleAllowRearrangement(true);
  butterfly.addRunner(runner("S-50-1-50-2-50-F", {0, 60, 120, 180, 240, 300, 360}));
  butterfly.addRunner(runner("S-50-2-50-1-50-F", {5, 65, 125, 185, 245, 305, 365}));
  butterfly.calculate();
  const float shares[] = {1, 0, 0, 0, 0, 1};  // together only up to the loops and behind them
  for (int i = 0; i < 6; ++i) EXPECT_EQ(butterfly.runner(1).followingIndex(i), shares[i]) << i;

  LRKCourse forked = emptyCourse("S-40-F", erqlAll);
  forked.runnerAdditionStyleAllowMerging(true);
  forked.addRunner(runner("S-31-40-F", {0, 100, 200, 300}));
  forked.addRunner(runner("S-32-40-F", {5, 130, 205, 305}));
  forked.calculate();
  EXPECT_EQ(partners(forked), "1:1000 <, < 0:1000");
}

TEST(FollowingTest, WhoFollowedAllTheWayIsMeasuredByTheWholeLegs) {
  // B is 5 s behind A everywhere, C alone and fastest on the first leg. The top times are 80 and
  // 100 s, B's own speed 180 / 200: 80 / 0.9 - 100 s = -11.1 s, 100 / 0.9 - 100 s = 11.1 s.
  const LRKCourse course = passing("S-31-F", {{0, 100, 200}, {5, 105, 205}, {1000, 1080, 1200}});
  const LRKRunner& follower = course.runner(1);
  EXPECT_EQ(follower.followingIndex(0), 1);
  EXPECT_EQ(follower.followingIndex(1), 1);
  EXPECT_EQ(follower.followingBenefitTime(0, elstTotal), -1100);
  EXPECT_EQ(follower.followingBenefitTime(1, elstLeg), 1100);
  EXPECT_EQ(follower.followingBenefitTime(1, elstTotal), 0);
  EXPECT_EQ(course.runner(0).followingBenefitTime(1, elstTotal), 0);
}

TEST(FollowingTest, EveryPairThatIsCloseAtBothEndsIsFound) {
  std::mt19937 random(20261124);
  for (const int spread : {1, 30, 90, 400}) {
    const auto second = [&] { return static_cast<int>(random()) % spread + 1000; };
    std::vector<Ints> times;
    for (int r = 0; r < 80; ++r) times.push_back({second(), 1500 + second()});
    const LRKCourse course = passing("S-F", times);
    const GapWeight weight(700, 2000);
    for (std::size_t a = 0; a < times.size(); ++a) {
      Ints behind;
      for (std::size_t b = 0; b < times.size(); ++b) {
        const double begin = (times[b][0] - times[a][0]) * 100;
        const double end = (times[b][1] - times[a][1]) * 100;
        const bool close = std::max(std::abs(begin), std::abs(end)) <= 2000;
        if (a != b && close && weight.share(begin, end) > 0) behind.push_back(static_cast<int>(b));
      }
      const LRKRunner& runner = course.runner(static_cast<int>(a));
      Ints pulled;
      for (int k = 0; k < runner.noOfPulledRunners(0); ++k) {
        pulled.push_back(runner.pulledRunnerIndex(0, k));
      }
      std::sort(pulled.begin(), pulled.end());
      ASSERT_EQ(pulled, behind) << spread << " " << a;
    }
  }
}

// The largest-of-weights integral as it is defined, without a thought of cost.
double largestWeights(const GapWeight& weight, const std::vector<GapLine>& lines, double sign) {
  std::vector<double> cuts = {0, 1};
  for (const GapLine& line : lines) {
    for (const double level : weight.levels()) {
      const double at = (level - line.begin) / line.change;
      if (line.change != 0 && at > 0 && at < 1) cuts.push_back(at);
    }
  }
  std::sort(cuts.begin(), cuts.end());
  double sum = 0;
  for (std::size_t i = 1; i < cuts.size(); ++i) {
    double largest = 0;
    for (const GapLine& line : lines) {
      const double from = sign * roundHalfEven(line.begin + line.change * cuts[i - 1]);
      const double to = sign * roundHalfEven(line.begin + line.change * cuts[i]);
      largest = std::max(
          largest, weight.atEnd(from, sign * line.change) + weight.atEnd(to, -sign * line.change));
    }
    sum += (cuts[i] - cuts[i - 1]) * largest;
  }
  return sum;
}

TEST(PackIntegralTest, IsTheDefinitionWhateverThePack) {
  std::mt19937 random(20261123);
  const auto below = [&random](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  constexpr std::pair<Time, Time> gaps[] = {{700, 2000}, {3, 8}, {0, 5}, {6, 6}, {9, 4}};
  for (int round = 0; round < 4000; ++round) {
    const auto [close, far] = gaps[below(std::size(gaps))];
    const GapWeight weight(close, far);
    PackIntegral integral(weight);
    std::vector<GapLine> lines(2 + random() % 12);
    const int spread = 1 + 2 * far * (1 + below(2));
    const int away = below(2) * close;  // half of the packs are out of the close reach
    for (GapLine& line : lines) {
      line.begin = away + below(spread) - (away == 0 ? spread / 2 : 0);
      line.change =
          below(3) == 0 ? 0 : away + below(spread) - (away == 0 ? spread / 2 : 0) - line.begin;
    }
    const LegShares shares = integral.shares(lines);
    ASSERT_NEAR(shares.pulling, largestWeights(weight, lines, 1), 1e-12) << round;
    ASSERT_NEAR(shares.following, largestWeights(weight, lines, -1), 1e-12) << round;
  }
}

}  // namespace
}  // namespace larkstone
