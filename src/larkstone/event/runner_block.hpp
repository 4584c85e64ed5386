#pragma once

// A runner's record read value by value, without a runner object.

#include <array>
#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"
#include "larkstone/event/record_codec.hpp"
#include "larkstone/geometry/codes.hpp"

namespace larkstone {

/// Notes where the values of a block stand, and decodes those that are asked for. A value that the
/// block holds twice counts as it stands last, one that the block's end cuts off is not held, as
/// decodeRunner() has it. The bytes must outlive it.
class RunnerBlock {
 public:
  explicit RunnerBlock(std::string_view block);

  /// Whether the block holds a record with that tag.
  bool has(enmFileTag tag) const { return isIn(runnerTags, tag) && !at(tag).empty(); }
  /// The value as LRKRunner::getPropertyByTag() gives it; nothing when the runner has none. The
  /// full name is made of its parts where there are any, a list of punches gives its count.
  TagValue value(enmFileTag tag) const;
  /// Empty text and 0 for what is not held.
  std::string text(enmFileTag tag) const { return textOf(value(tag)).value_or(""); }
  std::int32_t number(enmFileTag tag) const;

  /// As of an LRKRunner with this record.
  std::string name() const;
  enmStatus status() const;
  Time resultTime() const;
  /// The codes of the punches.
  LRKCodes codes() const;

 private:
  std::string_view at(enmFileTag tag) const {
    return values_[static_cast<std::size_t>(tag - runnerTags.first)];
  }

  // The encoded values by tag; a value that is held has at least one byte.
  std::array<std::string_view, runnerTags.last - runnerTags.first + 1> values_;
};

}  // namespace larkstone
