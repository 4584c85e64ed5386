#pragma once

// The report: one page over all categories that needs nothing else.

#include <string_view>
#include <vector>

#include "larkstone/event/event.hpp"

#include "cli/analysis_options.hpp"
#include "cli/output.hpp"

namespace larkstone::cli {

/// Writes the page of an event with some of its categories (display indices). The language is the
/// code of one that the program knows, or empty: then the browser's counts. The exit
/// code of forEachCourse().
int writeReport(TextSink& output, LRKEvent& event, const std::vector<int>& categories,
                const AnalysisOptions& options, const CommonOptions& common,
                std::string_view language);

}  // namespace larkstone::cli
