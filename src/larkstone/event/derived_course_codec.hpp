#pragma once

// A derived course to and from the record that the event file holds.

#include <string>
#include <string_view>

#include "larkstone/model/derived_course.hpp"

namespace larkstone {

/// In a record, references name categories by file index.
std::string encodeDerivedCourse(const LRKDerivedCourse& course);

/// A damaged record gives what stands before the damage; of a list that is not all there, nothing.
LRKDerivedCourse decodeDerivedCourse(std::string_view record);

}  // namespace larkstone
