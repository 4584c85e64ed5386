#pragma once

// For those who hand out runners of a category.

#include <string>
#include <utility>

#include "larkstone/model/runner.hpp"

namespace larkstone {

/// Tells a runner which category it is of and its number there: hosts read the category's name and
/// do not write it.
class RunnerOrigin {
 public:
  static void set(LRKRunner& runner, int categoryIndex, std::string categoryName, int runnerIndex) {
    runner.categoryIndex_ = categoryIndex;
    runner.categoryName_ = std::move(categoryName);
    runner.runnerIndex_ = runnerIndex;
  }
};

}  // namespace larkstone
