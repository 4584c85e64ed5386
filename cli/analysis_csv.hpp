#pragma once

// The analysis as CSV, for spreadsheets: one line per runner and leg.

#include "larkstone/analysis/course.hpp"

#include "cli/output.hpp"

namespace larkstone::cli {

void writeCsvHeader(Output& output);

/// The runners of a calculated course in their order. Times are hundredths of a second; a field is
/// empty where there is no value. Totals and their places are the strict ones, as in a split table.
void writeCsvCourse(Output& output, const LRKCourse& course);

}  // namespace larkstone::cli
