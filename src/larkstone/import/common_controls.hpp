#pragma once

// The controls that all forkings of a relay leg have in common.

#include "larkstone/model/category.hpp"

namespace larkstone {

/// Leaves every runner the start, the finish and the controls that all runners with a valid result
/// (status OK and a finish time; all runners, if there is none such) visited in the same order;
/// other punches become extra punches. Where all of them ran the same course, that is the whole
/// course. A runner without any control says nothing about it.
void reduceToCommonControls(LRKCategory& category);

}  // namespace larkstone
