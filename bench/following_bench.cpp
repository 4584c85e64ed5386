// Following in packs, where nearly everybody is close to everybody, against one plain pass over the
// close pairs.

#include <cstdlib>
#include <utility>

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

constexpr int legs = 10;

/// The gaps at both ends of a leg of every pair that is close at both, pair behind pair.
std::vector<std::pair<Time, Time>> closePairs(const LRKCourse& course, Time far) {
  std::vector<std::pair<Time, Time>> gaps;
  for (int i = 0; i < course.noOfLegs(); ++i) {
    const auto begin = [&](int r) { return course.runner(r).time(i, elstPassingBegin); };
    const auto end = [&](int r) { return course.runner(r).time(i, elstPassingEnd); };
    for (int a = 0; a < course.noOfRunners(); ++a) {
      for (int b = 0; b < a; ++b) {
        const std::pair gap(begin(b) - begin(a), end(b) - end(a));
        if (std::abs(gap.first) <= far && std::abs(gap.second) <= far) gaps.push_back(gap);
      }
    }
  }
  return gaps;
}

// Arguments: runners, runners in a pack, seconds between first and last of a pack. The ratio should
// not grow with the size of the packs.
void followingInPacks(benchmark::State& state, enmPFIndexCalculationMethod method) {
  const auto runners =
      packs(static_cast<int>(state.range(0)), legs, static_cast<int>(state.range(1)),
            static_cast<Time>(state.range(2)) * 100);
  LRKCourse course = courseOf(runners, legs);
  course.pfIndexCalculationMethod(method);
  LRKCourse calculated = course;
  calculated.calculate();
  const auto pairs = closePairs(calculated, course.indexBreakpoint(1));

  const auto flags = static_cast<enmCourseCalculationFlags>(eccfComplete & ~eccfLFIndices);
  Times floors;
  Times following;
  for (auto _ : state) {
    floors.add(secondsOf([&] {
      double sum = 0;
      for (const auto& [begin, end] : pairs) sum += static_cast<double>(begin) * end;
      benchmark::DoNotOptimize(sum);
    }));
    LRKCourse first = course;
    const double without = secondsOf([&] { first.calculate(flags); });
    LRKCourse second = course;
    const double seconds = secondsOf([&] { second.calculate(); }) - without;
    following.add(seconds);
    state.SetIterationTime(seconds);
  }
  state.counters["pairs_per_leg"] = static_cast<double>(pairs.size()) / legs;
  state.counters["ratio"] = following.median() / floors.median();
}
void packArguments(benchmark::internal::Benchmark* benchmark) {
  benchmark->Args({1000, 50, 15})
      ->Args({1000, 200, 15})
      ->Args({1000, 500, 15})
      ->Args({1000, 1000, 15})
      ->Args({1000, 1000, 60})
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(followingInPacks, extended, elfiExtended)->Apply(packArguments);
BENCHMARK_CAPTURE(followingInPacks, basic, elfiBasic)->Apply(packArguments);

}  // namespace
}  // namespace larkstone::bench
