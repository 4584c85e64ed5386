#pragma once

// Times of a case next to the times of its floor, taken in turn in one run: on a busy machine only
// their ratio says anything.

#include <algorithm>
#include <vector>

#include <benchmark/benchmark.h>
#include <time.h>

namespace larkstone::bench {

/// What this thread has had of the processor: other work on the machine does not count.
inline double processorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// What passes on the wall: for work that waits for the disk.
inline double wallSeconds() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Work>
double secondsOf(Work&& work, double (*clock)() = processorSeconds) {
  const double start = clock();
  work();
  return clock() - start;
}

/// The times of one piece of work in all iterations.
class Times {
 public:
  void add(double seconds) { seconds_.push_back(seconds); }
  double median() const {
    std::vector<double> sorted = seconds_;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    return sorted.empty() ? 0 : *middle;
  }

 private:
  std::vector<double> seconds_;
};

/// Runs floor and work in turn; the counter "ratio" is work to floor. `prepare` makes what `work`
/// is given anew, and is not timed.
template <class Prepare, class Work, class Floor>
void compare(benchmark::State& state, Prepare prepare, Work work, Floor floor,
             double (*clock)() = processorSeconds) {
  Times works;
  Times floors;
  for (auto _ : state) {
    floors.add(secondsOf(floor, clock));
    auto subject = prepare();
    const double seconds = secondsOf([&] { work(subject); }, clock);
    works.add(seconds);
    state.SetIterationTime(seconds);
  }
  state.counters["ratio"] = works.median() / floors.median();
}

}  // namespace larkstone::bench
