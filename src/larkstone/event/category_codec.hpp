#pragma once

// A category with its runners to and from the record that the event file holds.

#include <string>
#include <string_view>
#include <vector>

#include "larkstone/model/category.hpp"

namespace larkstone {

/// What a category must know about itself before it is stored: forking information, an entry for
/// every leg that was run, course names and type where runners had different courses, places by
/// result time, and which form of a runner's name is kept.
void deriveStoredValues(LRKCategory& category);

std::string encodeCategory(const LRKCategory& category);

/// Tells the runners the category's index and name, and their places as their numbers.
void numberRunners(LRKCategory& category);

/// A damaged record gives what stands before the damage. The runners are numbered.
LRKCategory decodeCategory(std::string_view record, int categoryIndex);

/// The runners of a record, in file order, each as the bytes behind its etagRunner: views of the
/// record. Of a block that runs past the end what is there.
std::vector<std::string_view> runnerBlocks(std::string_view record);

/// Reads such a block.
void decodeRunner(std::string_view block, LRKRunner& runner);

}  // namespace larkstone
