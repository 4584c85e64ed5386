#include "bench/fields.hpp"

#include <random>
#include <string>

namespace larkstone::bench {

namespace {

int below(std::mt19937& random, int limit) {
  return static_cast<int>(random() % static_cast<unsigned>(limit));
}

LRKRunner runnerAt(int number, const LRKCodes& course, const std::vector<Time>& passings) {
  LRKRunner runner;
  runner.name("Runner " + std::to_string(number));
  runner.club("Club " + std::to_string(number % 50));
  runner.status(estaOK);
  runner.runnerIndex(number);
  for (int k = 0; k < course.count(); ++k) {
    runner.punches().add(passings[static_cast<std::size_t>(k)], course.code(k));
  }
  return runner;
}

}  // namespace

LRKCodes courseCodes(int legs) {
  LRKCodes codes;
  codes.add(LRK_START_CODE);
  for (int i = 1; i < legs; ++i) codes.add(static_cast<Code>(30 + i));
  codes.add(LRK_FINISH_CODE);
  return codes;
}

std::vector<LRKRunner> intervalStart(int runners, int legs, Time interval) {
  std::mt19937 random(1);
  const LRKCodes course = courseCodes(legs);
  std::vector<LRKRunner> field;
  for (int r = 0; r < runners; ++r) {
    const int pace = 100 + below(random, 60);  // percent of the best
    std::vector<Time> passings = {r * interval};
    for (int i = 0; i < legs; ++i) {
      const int best = 60 + i * 37 % 120;
      const int mistake = below(random, 20) == 0 ? below(random, 240) : 0;
      const int seconds = best * (pace + below(random, 20)) / 100 + mistake;
      passings.push_back(passings.back() + seconds * 100);
    }
    field.push_back(runnerAt(r, course, passings));
  }
  return field;
}

std::vector<LRKRunner> packs(int runners, int legs, int packSize, Time spread) {
  std::mt19937 random(2);
  const LRKCodes course = courseCodes(legs);
  std::vector<LRKRunner> field;
  for (int r = 0; r < runners; ++r) {
    std::vector<Time> passings;
    for (int k = 0; k <= legs; ++k) {
      passings.push_back(k * 18000 + r / packSize * 6000 + below(random, spread));
    }
    field.push_back(runnerAt(r, course, passings));
  }
  return field;
}

LRKCourse courseOf(const std::vector<LRKRunner>& runners, int legs) {
  LRKCourse course;
  course.setCourseLegs(courseCodes(legs).toLegs());
  course.addRunnersFromArray(static_cast<int>(runners.size()), runners);
  return course;
}

}  // namespace larkstone::bench
