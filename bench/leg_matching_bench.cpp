// Placing runners on a course against cloning them, which every course does anyway.

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

struct Style {
  enmRequiredLegs required;
  bool rearrange;
  bool merge;
};

// Arguments: runners, legs. The ratio should not depend on them.
void addRunners(benchmark::State& state, Style style) {
  const auto legs = static_cast<int>(state.range(1));
  const auto runners = intervalStart(static_cast<int>(state.range(0)), legs, 100);
  LRKCourse course;
  course.setCourseLegs(courseCodes(legs).toLegs());
  course.setRunnerAdditionStyle(style.required, style.rearrange, style.merge);
  compare(
      state, [&] { return course; },
      [&](LRKCourse& c) { c.addRunnersFromArray(static_cast<int>(runners.size()), runners); },
      [&] {
        std::vector<LRKRunner> clones;
        for (const LRKRunner& runner : runners) {
          LRKRunner clone = runner.clone();
          clone.legs(runner.punches().toLegs());
          clone.initializeTimes(true);
          clones.push_back(std::move(clone));
        }
        benchmark::DoNotOptimize(clones.data());
      });
}
void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Args({1000, 30})
      ->Args({32000, 30})
      ->Args({1000, 300})
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(addRunners, exactly, Style{erqlExactlyAll, false, false})->Apply(sizes);
BENCHMARK_CAPTURE(addRunners, rearranged, Style{erqlAtLeastOne, true, false})->Apply(sizes);
BENCHMARK_CAPTURE(addRunners, merged, Style{erqlAtLeastOne, false, true})->Apply(sizes);

// Whether runners ran the course, against comparing their codes with it. Arguments as above.
void matchLegs(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(1));
  const LRKCodes codes = courseCodes(count);
  std::vector<LRKLegs> runs;
  for (const LRKRunner& runner : intervalStart(static_cast<int>(state.range(0)), count, 100)) {
    runs.push_back(runner.punches().toLegs());
  }
  compare(
      state, [&] { return codes.toLegs(); },
      [&](LRKLegs& course) {
        for (const LRKLegs& run : runs) {
          benchmark::DoNotOptimize(run.legsMatch(course, erqlExactlyAll, false, false, {}, {}));
        }
      },
      [&] {
        for (const LRKLegs& run : runs) {
          benchmark::DoNotOptimize(run.codeArray() == codes.codes());
        }
      });
}
BENCHMARK(matchLegs)->Apply(sizes);

// A course that nobody ran: every leg is looked for everywhere.
void addRunnersOfAnotherCourse(benchmark::State& state) {
  const auto legs = static_cast<int>(state.range(0));
  const auto runners = intervalStart(1000, legs, 100);
  LRKCodes codes;
  for (int k = 0; k <= legs; ++k) codes.add(static_cast<Code>(1000 + k));
  LRKCourse course;
  course.setCourseLegs(codes.toLegs());
  course.setRunnerAdditionStyle(erqlNone, true, true);
  compare(
      state, [&] { return course; },
      [&](LRKCourse& c) { c.addRunnersFromArray(static_cast<int>(runners.size()), runners); },
      [&] {
        for (const LRKRunner& runner : runners) {
          LRKRunner clone = runner.clone();
          benchmark::DoNotOptimize(clone);
        }
      });
}
BENCHMARK(addRunnersOfAnotherCourse)
    ->Arg(30)
    ->Arg(90)
    ->Arg(300)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkstone::bench
