#pragma once

// Over which legs a category is analysed.

#include <optional>
#include <string>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone::cli {

/// The legs of an analysis and how runners may have run them. Without legs, the first runner's.
struct CourseChoice {
  std::optional<LRKLegs> legs;
  bool allowRearrangement = false;
  bool allowMerging = false;
};

/// What an organiser means by the course of a category: the sequence of controls that most
/// finishers ran, who have status OK, a valid result and controls (that most of all with controls
/// ran, when there is no finisher; the first of equals). When the finishers ran several sequences
/// (each by two runners or a tenth of them), the category is forked: if all these hold the same
/// legs, the sequence with rearrangement, else the controls common to all, with merging.
CourseChoice chooseCourse(const LRKCategory& category);

/// The category's runners on the chosen course. Where anybody has controls, entries without any are
/// left out unless no legs are required, but for finishers on a course from start to finish: to the
/// search for controls that act as start or finish, a finish straight behind a start is one.
LRKCourse toCourse(const LRKCategory& category, enmRequiredLegs requiredLegs, CourseChoice choice);

/// "auto", "first" or a course like "S-31-32-F". Nothing for any other text.
std::optional<CourseChoice> courseFromText(const std::string& text, const LRKCategory& category);

/// Whether courseFromText() knows the text.
bool isCourseText(const std::string& text);

}  // namespace larkstone::cli
