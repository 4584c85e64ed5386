#pragma once

// Short forms for building courses in tests.

#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/analysis/course.hpp"

#include "support/build.hpp"

namespace larkstone::test {

inline constexpr Time none = LRK_NO_TIME;
using Times = std::vector<Time>;
using Ints = std::vector<int>;

/// A course over "S-31-32-F" that takes every runner, with everything else at its default.
inline LRKCourse emptyCourse(std::string_view codesText, enmRequiredLegs required = erqlNone) {
  LRKCourse course;
  course.setCourseLegs(legs(codesText));
  course.setRunnerAdditionStyle(required, false, false);
  return course;
}

/// The runners of a course over "S-31-32-F", each by the seconds of the legs from time 0 on.
inline LRKCourse courseByLegs(std::string_view codesText, std::initializer_list<Ints> runners) {
  LRKCourse course = emptyCourse(codesText);
  for (const Ints& seconds : runners) {
    Ints times = {0};
    for (const int leg : seconds) times.push_back(times.back() + leg);
    course.addRunner(runner(codesText, times));
  }
  return course;
}

/// Random but plausible runners with many equal times: some lose time, and those who are not OK
/// may miss punches or their times.
inline LRKCourse randomCourse(unsigned seed, int runners) {
  std::mt19937 random(seed);
  LRKCourse course = emptyCourse("S-31-32-33-34-F");
  course.isCategoryCourse(seed % 2 == 0);
  for (int n = 0; n < runners; ++n) {
    LRKRunner r;
    r.name(std::to_string(n));
    r.status(random() % 2 == 0 ? estaOK : static_cast<enmStatus>(random() % 9));
    LRKPunches punches;
    Time time = static_cast<Time>(random() % 4) * 6000;
    for (const char* code : {"S", "31", "32", "33", "34", "F"}) {
      time += static_cast<Time>(random() % 6 == 0 ? 20 : random() % 4 + 5) * 1000;
      const auto kind = r.status() == estaOK ? 2 : random() % 8;
      if (kind > 0) punches.add(kind == 1 ? none : time, stringToCode(code, "S", "F"));
    }
    r.punches(std::move(punches));
    course.addRunner(r);
  }
  return course;
}

/// What every runner has.
template <class Value>
Ints ofRunners(const LRKCourse& course, Value value) {
  Ints values;
  for (int r = 0; r < course.noOfRunners(); ++r) values.push_back(value(course.runner(r)));
  return values;
}

inline Ints places(const LRKCourse& course, int legNo, enmLegStyle style) {
  return ofRunners(course, [=](const LRKRunner& r) { return r.place(legNo, style); });
}

/// The stored names of the runners in their order.
inline std::string order(const LRKCourse& course) {
  std::string names;
  for (int r = 0; r < course.noOfRunners(); ++r) names += course.runner(r).storedName();
  return names;
}

inline enmCourseCalculationFlags flagsOf(int bits) {
  return static_cast<enmCourseCalculationFlags>(bits);
}

}  // namespace larkstone::test
