#pragma once

// The controls that all forkings of a relay leg have in common.

#include "larkstone/model/category.hpp"

namespace larkstone {

/// Leaves every runner the start, the finish and the controls that all runners with status OK (all
/// runners, if none is OK) visited in the same order; other punches become extra punches. Where
/// all of them ran the same course, that is the whole course.
void reduceToCommonControls(LRKCategory& category);

}  // namespace larkstone
