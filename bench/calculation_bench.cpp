// Calculation against sorting the same numbers.

#include "bench/fields.hpp"
#include "bench/measure.hpp"
#include "bench/sorting_floor.hpp"

namespace larkstone::bench {
namespace {

constexpr auto allButFollowing =
    static_cast<enmCourseCalculationFlags>(eccfComplete & ~eccfLFIndices);

// Arguments: runners, legs, start interval in seconds. The counters are ratios to sorting: what
// all stages but following take, and what following takes on top.
void calculateInterval(benchmark::State& state) {
  const auto legs = static_cast<int>(state.range(1));
  const LRKCourse course = courseOf(intervalStart(static_cast<int>(state.range(0)), legs,
                                                  static_cast<Time>(state.range(2)) * 100),
                                    legs);
  LRKCourse calculated = course;
  calculated.calculate();
  SortingFloor floor(calculated);
  Times floors;
  Times without;
  Times all;
  for (auto _ : state) {
    floors.add(secondsOf(floor));
    LRKCourse first = course;
    without.add(secondsOf([&] { first.calculate(allButFollowing); }));
    LRKCourse second = course;
    const double seconds = secondsOf([&] { second.calculate(); });
    all.add(seconds);
    state.SetIterationTime(seconds);
  }
  state.counters["without_following"] = without.median() / floors.median();
  state.counters["following"] = (all.median() - without.median()) / floors.median();
  state.counters["ratio"] = all.median() / floors.median();
}
BENCHMARK(calculateInterval)
    ->Args({1000, 30, 120})
    ->Args({1000, 30, 60})
    ->Args({1000, 30, 30})
    ->Args({1000, 30, 5})
    ->Args({32000, 30, 5})
    ->MinTime(2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// 32,000 runners against 1,000, both 5 s apart: the ratio is 32 when the cost per runner stays.
void calculateGrowth(benchmark::State& state) {
  const LRKCourse small = courseOf(intervalStart(1000, 30, 500), 30);
  const LRKCourse large = courseOf(intervalStart(32000, 30, 500), 30);
  compare(
      state, [&] { return large; }, [](LRKCourse& course) { course.calculate(); },
      [&, course = LRKCourse()]() mutable {
        course = small;
        course.calculate();
      });
}
BENCHMARK(calculateGrowth)->MinTime(5)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkstone::bench
