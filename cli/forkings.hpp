#pragma once

// What the runners of a category ran, as sequences of controls.

#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone::cli {

/// A sequence of controls and how many ran it.
struct Sequence {
  std::vector<Code> codes;
  int runners = 0;
  int firstRunner = 0;  ///< who ran it first, by the place in the category
};

/// The distinct sequences in the order of first appearance; of all runners, or of those with status
/// OK only.
std::vector<Sequence> sequencesOf(const LRKCategory& category, bool onlyOK = false);

/// "relay", "one-man relay" ...
const char* nameOf(enmCourseType type);

}  // namespace larkstone::cli
