// What a category works out about itself before it is stored.

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "larkstone/event/category_codec.hpp"

namespace larkstone {

namespace {

struct CodesHash {
  std::size_t operator()(const std::vector<Code>& codes) const {
    const auto* bytes = reinterpret_cast<const char*>(codes.data());
    return std::hash<std::string_view>{}({bytes, codes.size() * sizeof(Code)});
  }
};

void addLegs(LRKCategory& category, const std::vector<Code>& codes) {
  for (std::size_t k = 0; k + 1 < codes.size(); ++k) {
    category.legLengthSet(codes[k], codes[k + 1], true);
  }
}

// Numbers the distinct courses from 1 in order of appearance, one number per runner, and gives
// every leg of them an entry in the leg-length table. Returns how many there are.
int numberCourses(LRKCategory& category, std::vector<int>& courseOfRunner) {
  std::unordered_map<std::vector<Code>, int, CodesHash> courses;
  courseOfRunner.reserve(static_cast<std::size_t>(category.noOfRunners()));
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const auto next = static_cast<int>(courses.size()) + 1;
    const auto [course, isNew] =
        courses.try_emplace(category.runner(i).punches().codeArray(), next);
    if (isNew) addLegs(category, course->first);
    courseOfRunner.push_back(course->second);
  }
  return static_cast<int>(courses.size());
}

void nameCourses(LRKCategory& category, const std::vector<int>& courseOfRunner) {
  for (int i = 0; i < category.noOfRunners(); ++i) {
    LRKRunner& runner = category.runner(i);
    if (runner.courseNameSet()) continue;
    runner.courseName(std::to_string(courseOfRunner[static_cast<std::size_t>(i)]));
  }
  category.courseType(ectyOneManRelay);
}

// Equal times share a place, the next place skips.
void assignPlaces(LRKCategory& category) {
  std::vector<Time> times;
  times.reserve(static_cast<std::size_t>(category.noOfRunners()));
  for (int i = 0; i < category.noOfRunners(); ++i) {
    times.push_back(category.runner(i).resultTime());
  }
  std::vector<Time> sorted = times;
  std::sort(sorted.begin(), sorted.end());
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const Time time = times[static_cast<std::size_t>(i)];
    if (time == LRK_NO_TIME) continue;
    const auto better = std::lower_bound(sorted.begin(), sorted.end(), time) - sorted.begin();
    category.runner(i).resultPlace(static_cast<std::int16_t>(better + 1));
  }
}

// A name is kept in parts where any is set, else in full.
void chooseNameForm(LRKRunner& runner) {
  if ((runner.firstNameSet() && !runner.firstName().empty()) ||
      (runner.lastNameSet() && !runner.lastName().empty())) {
    runner.nameSet(false);
  } else {
    runner.firstNameSet(false);
    runner.lastNameSet(false);
  }
}

}  // namespace

void deriveStoredValues(LRKCategory& category) {
  category.updateForkingInfo();
  std::vector<int> courseOfRunner;
  if (numberCourses(category, courseOfRunner) > 1) nameCourses(category, courseOfRunner);
  assignPlaces(category);
  for (int i = 0; i < category.noOfRunners(); ++i) chooseNameForm(category.runner(i));
}

}  // namespace larkstone
