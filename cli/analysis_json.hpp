#pragma once

// An analysed course as JSON.

#include "larkstone/analysis/course.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/model/category.hpp"

#include "cli/json_writer.hpp"

namespace larkstone::cli {

/// The "event" object of an analysis.
void writeEventHead(JsonWriter& json, const LRKEvent& event);

/// A course in its present order, with the runners of its category that it refused.
void writeCourse(JsonWriter& json, const LRKCourse& course, const LRKCategory& category);

}  // namespace larkstone::cli
