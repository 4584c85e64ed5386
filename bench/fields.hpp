#pragma once

// Fields of runners as races make them, the same in every run.

#include <vector>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone::bench {

/// S-31-32-...-F with that many legs.
LRKCodes courseCodes(int legs);

/// Runners of different speed who start one after the other, `interval` apart, and now and then
/// make a mistake. Times are whole seconds.
std::vector<LRKRunner> intervalStart(int runners, int legs, Time interval);

/// A mass start in packs that stay together: within a pack everybody passes every control within
/// `spread`; the packs are a minute apart.
std::vector<LRKRunner> packs(int runners, int legs, int packSize, Time spread);

/// The course of these runners, not yet calculated.
LRKCourse courseOf(const std::vector<LRKRunner>& runners, int legs);

}  // namespace larkstone::bench
