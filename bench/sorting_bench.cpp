// Ordering the runners of a course against sorting their bare keys.

#include <algorithm>
#include <numeric>
#include <string>

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

template <class Key>
void sortKeys(std::vector<std::pair<Key, int>> keys) {
  std::sort(keys.begin(), keys.end());
  benchmark::DoNotOptimize(keys.data());
}

LRKCourse calculatedCourse(int runners) {
  LRKCourse course = courseOf(intervalStart(runners, 30, 500), 30);
  course.calculate(eccfPlacesAllowMissingPunches);
  return course;
}

void sortByTime(benchmark::State& state) {
  const LRKCourse course = calculatedCourse(static_cast<int>(state.range(0)));
  std::vector<std::pair<Time, int>> keys;
  for (int r = 0; r < course.noOfRunners(); ++r)
    keys.emplace_back(course.runner(r).resultTime(), r);
  compare(
      state, [&] { return course; }, [](LRKCourse& c) { c.sortRunners(esorResultTime); },
      [&] { sortKeys(keys); });
}
BENCHMARK(sortByTime)->Arg(1000)->Arg(32000)->UseManualTime()->Unit(benchmark::kMillisecond);

void sortByName(benchmark::State& state) {
  const LRKCourse course = calculatedCourse(static_cast<int>(state.range(0)));
  std::vector<std::pair<std::string, int>> keys;
  for (int r = 0; r < course.noOfRunners(); ++r) keys.emplace_back(course.runner(r).name(), r);
  compare(
      state, [&] { return course; }, [](LRKCourse& c) { c.sortRunners(esorName); },
      [&] { sortKeys(keys); });
}
BENCHMARK(sortByName)->Arg(1000)->Arg(32000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkstone::bench
