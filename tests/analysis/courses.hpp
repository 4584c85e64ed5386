#pragma once

// Short forms for building courses in tests.

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/analysis/course.hpp"

#include "support/build.hpp"

namespace larkstone::test {

inline constexpr Time none = LRK_NO_TIME;
using Times = std::vector<Time>;

/// A course over "S-31-32-F" that takes every runner, with everything else at its default.
inline LRKCourse emptyCourse(std::string_view codesText, enmRequiredLegs required = erqlNone) {
  LRKCourse course;
  course.setCourseLegs(legs(codesText));
  course.setRunnerAdditionStyle(required, false, false);
  return course;
}

/// A runner who ran the legs of "S-31-32-F" in these seconds from time 0 on.
inline LRKRunner runnerByLegs(std::string_view codesText, const std::vector<int>& seconds,
                              std::string name = "") {
  std::vector<int> times = {0};
  for (const int leg : seconds) times.push_back(times.back() + leg);
  return runner(codesText, times, std::move(name));
}

/// The runners of a course, each by the seconds of the legs.
inline LRKCourse courseByLegs(std::string_view codesText,
                              std::initializer_list<std::vector<int>> runners) {
  LRKCourse course = emptyCourse(codesText);
  for (const auto& seconds : runners) course.addRunner(runnerByLegs(codesText, seconds));
  return course;
}

/// What every runner has at a leg.
template <class Value>
std::vector<int> ofRunners(const LRKCourse& course, Value value) {
  std::vector<int> values;
  for (int r = 0; r < course.noOfRunners(); ++r) values.push_back(value(course.runner(r)));
  return values;
}

inline std::vector<int> places(const LRKCourse& course, int legNo, enmLegStyle style) {
  return ofRunners(course, [=](const LRKRunner& r) { return r.place(legNo, style); });
}

/// The names of the runners in their order, one letter each.
inline std::string order(const LRKCourse& course) {
  std::string names;
  for (int r = 0; r < course.noOfRunners(); ++r) names += course.runner(r).name();
  return names;
}

inline enmCourseCalculationFlags flagsOf(int bits) {
  return static_cast<enmCourseCalculationFlags>(bits);
}

}  // namespace larkstone::test
