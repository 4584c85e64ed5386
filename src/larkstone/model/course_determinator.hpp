#pragma once

// Works out, from what runners punched, the course that they ran.

#include <array>
#include <optional>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"
#include "larkstone/model/category.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

/// Add runners or code lists (32767 at most, further ones are ignored), then ask for the legs of a
/// course type. Legs are worked out when they are first asked for and kept until more lists are
/// added. The template runner (an index in the order of addition) decides which legs the types that
/// need a model begin with; without such a runner their course is empty.
///
///     LRKCourseDeterminator determinator;
///     determinator.addRunnersFromCategory(category);
///     LRKLegs legs = determinator.getCourseLegs(ectyRelay);
///
/// - ectyNormal: the legs, if every list has the same codes.
/// - ectyRelay: the legs between the controls that all have in common, in order.
/// - ectyOneManRelay: the template's legs, if everybody ran exactly these in some order. A leg from
///   the start (or to the finish) may begin (end) at a code that acts as such. A template that runs
///   a leg twice is the course of nobody else.
/// - ectyCommonLegs: the template's legs that everybody ran, in the template's order.
/// - ectyRogaining: every leg that anybody ran, ordered by begin code and end code, legs from the
///   start first. Legs from or to code 0 are left out; 32767 legs at most.
///
/// A course that there is not, or a course type beyond these, is an empty list. All times are 0.
class LRKCourseDeterminator {
 public:
  void addCodes(const LRKCodes& codes);
  void addRunner(const LRKRunner& runner);
  /// Adds the first noOfRunners of the list.
  void addRunnersFromArray(int noOfRunners, const std::vector<LRKRunner>& runners);
  void addRunnersFromCategory(const LRKCategory& category);

  /// Works out every course type that is not up to date.
  void determineCourses(int templateRunnerIndex = 0);
  /// The legs of the type; those worked out before whoever was the template then. Legs that do not
  /// hang together are given only on request.
  LRKLegs getCourseLegs(enmCourseType courseType, bool allowFragmentation = false,
                        int templateRunnerIndex = 0);
  /// Works the type out again, keeps and returns it.
  LRKLegs calculateCourseLegs(enmCourseType courseType, int templateRunnerIndex = 0);

 private:
  static constexpr int noOfCourseTypes = 5;

  LRKLegs normalLegs() const;
  LRKLegs relayLegs() const;
  LRKLegs oneManRelayLegs(std::size_t templateRunner) const;
  LRKLegs commonLegs(std::size_t templateRunner) const;
  LRKLegs rogainingLegs() const;

  std::vector<LRKCodes> codeLists_;
  std::array<std::optional<LRKLegs>, noOfCourseTypes> courses_;  // nothing: out of date
};

}  // namespace larkstone
