#pragma once

// The order in which controls were passed, for lists that name radio controls by ascending code and
// not in the order of the course.

#include "larkstone/model/category.hpp"

namespace larkstone {

/// Puts the controls of every runner in the order of their times. One without a time stands where
/// the others on the same leg of a relay, or in the class, pass it; last when nobody has a time.
void orderByTimes(LRKCategory& category);

/// The same for every leg, or class, whose runners all have their controls by ascending code while
/// the times of at least half of those who passed two of them say otherwise. Whether there was one.
bool orderIfListedByCode(LRKCategory& category);

}  // namespace larkstone
