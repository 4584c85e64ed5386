#pragma once

// What the report page knows of an event, as compact JSON.

#include <string>

#include "larkstone/analysis/course.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone::cli {

/// {name, date, organiser}; texts that are not known are empty.
std::string eventData(const LRKEvent& event);

/// All captions by language and key.
std::string captionData();

/// {name, names}: the names of the runners in the order of their results.
std::string classData(const LRKCategory& category, const LRKCourse& course);

/// A calculated course, whose runners are put in the order of their results. Times are hundredths
/// of a second, null where there is none (a start that is not known, too); places are 0 where there
/// is none, as for a time that is not valid for one.
///
///     digits    of the seconds' fraction
///     length    in centimetres, or null
///     legs      [{code, best, bestTotal, share}]: the code at the end (null at the finish), the
///               best times, the leg's part of the course
///     runners   [{name, club, status, start, time, place, order: [by name, by club], leg, total,
///               legPlace, totalPlace, loss, index: a list of each over the legs, estimated,
///               estimatedTotal: the legs with such a time, performance, followed: [leg, runner,
///               share]}]
///     refused   the names of runners who did not fit the course
std::string courseData(const LRKCategory& category, LRKCourse& course);

}  // namespace larkstone::cli
