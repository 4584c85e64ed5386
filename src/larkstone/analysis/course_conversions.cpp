// Categories become courses, courses become categories and derived courses.

#include "larkstone/analysis/course.hpp"
#include "larkstone/geometry/tools.hpp"
#include "larkstone/model/category.hpp"
#include "larkstone/model/derived_course.hpp"

namespace larkstone {

namespace {

// Category names begin with the gender in the Nordic and German lands: H21, D16.
enmGender genderOfName(const std::string& name) {
  if (name.empty()) return egndUnknown;
  switch (name.front()) {
    case 'H':
    case 'h':
      return egndMale;
    case 'D':
    case 'd':
      return egndFemale;
    default:
      return egndUnknown;
  }
}

}  // namespace

LRKCourse LRKCategory::toCourse(enmRequiredLegs requiredLegs, bool allowRearrangement,
                                bool allowMerging) const {
  std::optional<LRKLegs> legs;
  return toCourse(requiredLegs, allowRearrangement, allowMerging, legs);
}

LRKCourse LRKCategory::toCourse(enmRequiredLegs requiredLegs, bool allowRearrangement,
                                bool allowMerging, std::optional<LRKLegs>& legs) const {
  LRKCourse course;
  course.name(name());
  course.timeAccuracy(timeAccuracy());
  if (!legs) legs = runners_.empty() ? LRKLegs() : runners_.front().punches().toLegs();

  std::vector<LRKCodes> codes;
  codes.reserve(runners_.size());
  for (const LRKRunner& runner : runners_) codes.push_back(runner.punches().toCodes());
  LRKCodes codesEqualToStart;
  LRKCodes codesEqualToFinish;
  getCodesEqualToStartAndFinish(codes, codesEqualToStart, codesEqualToFinish);
  course.setCourseLegsEx(*legs, codesEqualToStart, codesEqualToFinish);
  setLengths(course.legs());

  course.setRunnerAdditionStyle(requiredLegs, allowRearrangement, allowMerging);
  course.addRunnersFromArray(noOfRunners(), runners_);
  course.gender(genderSet() ? gender() : genderOfName(name()));
  course.isCategoryCourse(true);
  return course;
}

LRKCategory LRKCourse::toCategory() const {
  LRKCategory category;
  for (const LRKRunner& runner : runners_) category.addRunner(runner);
  category.updateForkingInfo();
  return category;
}

LRKDerivedCourse LRKCourse::toDerivedCourse(const std::vector<bool>& includeRunner,
                                            const std::vector<bool>& includeLeg) const {
  const auto includes = [](const std::vector<bool>& list, int index) {
    return static_cast<std::size_t>(index) < list.size() && list[static_cast<std::size_t>(index)];
  };
  LRKDerivedCourse derived;
  derived.name(name());
  for (int i = 0; i < noOfLegs(); ++i) {
    if (includes(includeLeg, i)) derived.legs().add(legs_.beginCode(i), legs_.endCode(i), 0, 0);
  }
  derived.requiredLegs(runnerAdditionStyleRequiredLegs());
  derived.allowRearrangement(runnerAdditionStyleAllowRearrangement());
  derived.allowMerging(runnerAdditionStyleAllowMerging());
  derived.codesEqualToStart(codesEqualToStart_.clone());
  derived.codesEqualToFinish(codesEqualToFinish_.clone());
  for (int i = 0; i < noOfRunners(); ++i) {
    if (includes(includeRunner, i)) {
      derived.addRunner(runner(i).categoryIndex(), runner(i).runnerIndex());
    }
  }
  return derived;
}

}  // namespace larkstone
