#include "larkstone/model/course_determinator.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "larkstone/geometry/tools.hpp"
#include "larkstone/model/template_legs.hpp"

namespace larkstone {

namespace {

using Leg = std::pair<Code, Code>;

// Starts come before all controls.
int rankOf(Code code) { return isStartCode(code) ? code - LRK_FINISH_CODE : code; }

template <class Visit>
void forEachLeg(const LRKCodes& codes, Visit visit) {
  for (int i = 0; i + 1 < codes.count(); ++i) visit(Leg(codes.code(i), codes.code(i + 1)));
}

bool isKnownType(enmCourseType type) { return type >= ectyNormal && type <= ectyRogaining; }

}  // namespace

void LRKCourseDeterminator::addCodes(const LRKCodes& codes) {
  if (codeLists_.size() >= static_cast<std::size_t>(LRK_MAX_LIST)) return;
  codeLists_.push_back(codes.clone());
  courses_.fill(std::nullopt);
}

void LRKCourseDeterminator::addRunner(const LRKRunner& runner) {
  addCodes(runner.punches().toCodes());
}

void LRKCourseDeterminator::addRunnersFromArray(int noOfRunners,
                                                const std::vector<LRKRunner>& runners) {
  const auto count = std::min(static_cast<std::size_t>(std::max(noOfRunners, 0)), runners.size());
  for (std::size_t i = 0; i < count; ++i) addRunner(runners[i]);
}

void LRKCourseDeterminator::addRunnersFromCategory(const LRKCategory& category) {
  for (int i = 0; i < category.noOfRunners(); ++i) addRunner(category.runner(i));
}

void LRKCourseDeterminator::determineCourses(int templateRunnerIndex) {
  for (int type = 0; type < noOfCourseTypes; ++type) {
    getCourseLegs(static_cast<enmCourseType>(type), true, templateRunnerIndex);
  }
}

LRKLegs LRKCourseDeterminator::getCourseLegs(enmCourseType courseType, bool allowFragmentation,
                                             int templateRunnerIndex) {
  if (!isKnownType(courseType)) return {};
  const std::optional<LRKLegs>& known = courses_[static_cast<std::size_t>(courseType)];
  if (!known) calculateCourseLegs(courseType, templateRunnerIndex);
  return allowFragmentation || known->noOfCourseFragments() < 2 ? *known : LRKLegs();
}

LRKLegs LRKCourseDeterminator::calculateCourseLegs(enmCourseType courseType,
                                                   int templateRunnerIndex) {
  if (!isKnownType(courseType)) return {};
  const auto templateRunner = static_cast<std::size_t>(templateRunnerIndex);
  const bool hasTemplate = templateRunnerIndex >= 0 && templateRunner < codeLists_.size();
  const auto legs = [&]() -> LRKLegs {
    if (codeLists_.empty()) return {};
    switch (courseType) {
      case ectyNormal:
        return normalLegs();
      case ectyRelay:
        return relayLegs();
      case ectyOneManRelay:
        return hasTemplate ? oneManRelayLegs(templateRunner) : LRKLegs();
      case ectyCommonLegs:
        return hasTemplate ? commonLegs(templateRunner) : LRKLegs();
      case ectyRogaining:
        return rogainingLegs();
    }
    return {};
  };
  return courses_[static_cast<std::size_t>(courseType)].emplace(legs());
}

LRKLegs LRKCourseDeterminator::normalLegs() const {
  const std::vector<Code>& first = codeLists_.front().codes();
  const bool allEqual =
      std::all_of(codeLists_.begin() + 1, codeLists_.end(),
                  [&first](const LRKCodes& codes) { return codes.codes() == first; });
  return allEqual ? codeLists_.front().toLegs() : LRKLegs();
}

LRKLegs LRKCourseDeterminator::relayLegs() const {
  LRKCodes common = codeLists_.front();
  for (std::size_t i = 1; i < codeLists_.size() && common.count() > 0; ++i) {
    common = common.commonCodes(codeLists_[i]);
  }
  return common.toLegs();
}

LRKLegs LRKCourseDeterminator::oneManRelayLegs(std::size_t templateRunner) const {
  LRKCodes actingAsStart;
  LRKCodes actingAsFinish;
  getCodesEqualToStartAndFinish(codeLists_, actingAsStart, actingAsFinish);
  TemplateLegs legs(codeLists_[templateRunner], actingAsStart, actingAsFinish);
  for (std::size_t i = 0; i < codeLists_.size(); ++i) {
    if (i != templateRunner && !legs.areExactlyThoseOf(codeLists_[i])) return {};
  }
  return codeLists_[templateRunner].toLegs();
}

LRKLegs LRKCourseDeterminator::commonLegs(std::size_t templateRunner) const {
  // Per leg of the template, how many lists, one after the other from the first, have it.
  std::map<Leg, std::size_t> listsWithLeg;
  forEachLeg(codeLists_[templateRunner], [&](Leg leg) { listsWithLeg.emplace(leg, 0); });
  for (std::size_t i = 0; i < codeLists_.size(); ++i) {
    forEachLeg(codeLists_[i], [&](Leg leg) {
      const auto found = listsWithLeg.find(leg);
      if (found != listsWithLeg.end() && found->second == i) ++found->second;
    });
  }

  const LRKLegs all = codeLists_[templateRunner].toLegs();
  LRKLegs common;
  for (int i = 0; i < all.count(); ++i) {
    if (listsWithLeg.at({all.beginCode(i), all.endCode(i)}) != codeLists_.size()) continue;
    common.add(all.beginCode(i), all.endCode(i), 0, 0, all.beginPunchIndex(i),
               all.endPunchIndex(i));
  }
  return common;
}

LRKLegs LRKCourseDeterminator::rogainingLegs() const {
  std::set<Leg> known;
  for (const LRKCodes& codes : codeLists_) {
    forEachLeg(codes, [&known](Leg leg) {
      if (leg.first != 0 && leg.second != 0) known.insert(leg);
    });
  }
  std::vector<Leg> ordered(known.begin(), known.end());
  std::stable_sort(ordered.begin(), ordered.end(), [](const Leg& a, const Leg& b) {
    return std::pair(rankOf(a.first), rankOf(a.second)) <
           std::pair(rankOf(b.first), rankOf(b.second));
  });
  LRKLegs legs;
  for (const auto& [begin, end] : ordered) legs.add(begin, end, 0, 0);
  return legs;
}

}  // namespace larkstone
