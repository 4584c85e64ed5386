#pragma once

// What an output may replace.

#include <cstdint>
#include <string>
#include <vector>

#include "larkstone/import/import_constants.hpp"

#include "cli/program.hpp"

namespace larkstone::cli {

/// Whether a command may write its output: never over one of its inputs, and over an event file of
/// another kind or over any result list only on request. Says why not. `written` is the format of
/// an event file that the command writes.
bool mayWrite(const CommonOptions& options, const std::vector<std::string>& inputs,
              std::int32_t written = LRK_IMPORT_UNKNOWN);

}  // namespace larkstone::cli
