#pragma once

// The analysis of an event as JSON.

#include <vector>

#include "larkstone/event/event.hpp"

#include "cli/analysis_options.hpp"
#include "cli/json_writer.hpp"

namespace larkstone::cli {

/// The "event" object of an analysis.
void writeEventHead(JsonWriter& json, const LRKEvent& event);

/// The analysis of some categories (display indices), calculated and sorted as the options say,
/// with the runners whom each course refused. The exit code of forEachCourse(); interrupted, it
/// ends in the middle.
int writeAnalysis(JsonWriter& json, LRKEvent& event, const std::vector<int>& categories,
                  const AnalysisOptions& options, const CommonOptions& common);

}  // namespace larkstone::cli
