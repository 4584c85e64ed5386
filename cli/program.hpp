#pragma once

// The commands of the program and what all of them share.

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace larkstone::cli {

/// How a run ended.
enum ExitCode {
  exitDone = 0,
  exitFailed = 1,  ///< an input could not be read, or an output not be written
  exitUsage = 2,
  exitWarning = 3,  ///< done, but not without a doubt
  exitInterrupted = 130,
};

/// What the command line says for every command.
struct CommonOptions {
  std::string output = "-";
  bool overwrite = false;  ///< the output may replace an event file or a result list
  bool quiet = false;
  bool verbose = false;
};

/// Adds --output, --overwrite, --quiet and --verbose.
void addCommonOptions(CLI::App& command, CommonOptions& options);

/// A command declares its options on the command line and hands back what runs when it is chosen.
using Run = std::function<int()>;
Run declareDetect(CLI::App& command);
Run declareImport(CLI::App& command);
Run declareStartlist(CLI::App& command);
Run declareInfo(CLI::App& command);
Run declareCourses(CLI::App& command);
Run declareAnalyse(CLI::App& command);
Run declareTable(CLI::App& command);
Run declareExport(CLI::App& command);
Run declareSearch(CLI::App& command);
Run declareReport(CLI::App& command);
Run declareServe(CLI::App& command);

/// Parses the command line and runs the command. Never throws.
int runProgram(int argc, const char* const* argv);

}  // namespace larkstone::cli
