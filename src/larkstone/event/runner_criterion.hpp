#pragma once

// One condition of a search for runners.

#include <optional>
#include <string>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/wildcard.hpp"
#include "larkstone/event/runner_block.hpp"

namespace larkstone {

/// A runner's value against the one sought, by the type of the tag's value: texts lower-cased, all
/// others as numbers. A value that the runner does not have meets no condition, not even that of
/// being different; nor does any value when the one sought cannot be of that type.
class RunnerCriterion {
 public:
  RunnerCriterion(enmFileTag tag, enmComparisonOperator comparison, const TagValue& sought);

  bool holds(const RunnerBlock& runner) const;

 private:
  bool holdsForText(const std::string& text) const;

  enmFileTag tag_;
  enmComparisonOperator comparison_;
  std::optional<std::string> text_;  // what is sought for a tag of texts, lower-cased
  std::optional<double> number_;     // and for all others
  WildcardPattern pattern_;
};

}  // namespace larkstone
