// Categories become courses, courses become categories.

#include "larkstone/analysis/course.hpp"
#include "larkstone/geometry/tools.hpp"
#include "larkstone/model/category.hpp"

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

}  // namespace larkstone
