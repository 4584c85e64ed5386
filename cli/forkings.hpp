#pragma once

// What the runners of a category ran, as sequences of controls.

#include <map>
#include <utility>
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

/// Whether the runner's card shows a control, not just start and finish. Entries who never started
/// have none.
bool hasControls(const LRKRunner& runner);
/// The same of the legs of a course.
bool hasControls(const LRKLegs& legs);

/// The distinct sequences in the order of first appearance, of the runners who are wanted.
template <class IsWanted>
std::vector<Sequence> sequencesOf(const LRKCategory& category, IsWanted isWanted) {
  std::vector<Sequence> sequences;
  std::map<std::vector<Code>, std::size_t> index;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    if (!isWanted(category.runner(i))) continue;
    std::vector<Code> codes = category.runner(i).punches().codeArray();
    const auto [found, isNew] = index.try_emplace(codes, sequences.size());
    if (isNew) sequences.push_back({std::move(codes), 0, i});
    ++sequences[found->second].runners;
  }
  return sequences;
}

/// "relay", "one-man relay" ...
const char* nameOf(enmCourseType type);

}  // namespace larkstone::cli
