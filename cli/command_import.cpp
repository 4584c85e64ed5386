// larkstone import: result lists into an event file.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/platform/file.hpp"

#include "cli/event_input.hpp"
#include "cli/format_name.hpp"
#include "cli/interrupt.hpp"
#include "cli/overwriting.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

struct Options {
  CommonOptions common;
  ImportOptions import;
  std::vector<std::string> files;
};

Time zeroTime(const std::string& text) {
  const Time time = stringToTime(text);
  if (isDisq(time)) throw CLI::ValidationError("--zero-time", "no time: " + text);
  return time;
}

// A list that is given twice would have all its runners twice.
bool areDistinct(const std::vector<std::string>& files) {
  for (auto file = files.begin(); file != files.end(); ++file) {
    const bool isFirst = std::none_of(files.begin(), file, [&file](const std::string& before) {
      return isSameFile(before, *file);
    });
    if (isFirst) continue;
    sayError(*file, "the list is given twice (see larkstone import --help)");
    return false;
  }
  return true;
}

int import(const Options& options) {
  if (!areDistinct(options.files)) return exitUsage;
  const InterruptGuard guard;
  if (!mayWrite(options.common, options.files, LRK_IMPORT_LRK_LRK4)) return exitUsage;
  LRKEvent event;
  event.tempFilePath(workingFolder());
  std::int32_t code = event.createNewEvent(options.common.output, true);
  int exitCode = exitDone;
  for (const std::string& file : options.files) {
    if (code != 0) break;
    const int imported = importInto(event, file, options.import, options.common);
    if (imported != exitDone) exitCode = imported;
    if (imported == exitFailed || imported == exitInterrupted) return imported;
  }
  if (code == 0) code = event.saveEvent();
  if (code != 0) {
    sayError(options.common.output, errorText(code), errorName(code));
    return exitFailed;
  }
  return exitCode;
}

}  // namespace

Run declareImport(CLI::App& command) {
  const auto options = std::make_shared<Options>();
  command.add_option("FILE", options->files, "Result lists; all go into one event")->required();
  addCommonOptions(command, options->common);
  command.get_option("--output")->required();
  command
      .add_option_function<std::string>(
          "--format",
          [options](const std::string& text) {
            options->import.format = formatNamed(text, LRK_IMPORT_LRK, LRK_IMPORT_AUTO);
          },
          "Take this format instead of detecting one (as `larkstone detect` names it)")
      ->type_name("NAME");
  command
      .add_option_function<std::string>(
          "--zero-time",
          [options](const std::string& text) { options->import.zeroTime = zeroTime(text); },
          "Clock time that the list's start times count from, e.g. 10:00:00")
      ->type_name("T");
  command
      .add_option("--parallel", options->import.parallelMode,
                  "Which of several runners on one relay leg counts")
      ->transform(CLI::CheckedTransformer(std::map<std::string, enmRelayParallelMode>{
          {"fastest", erpmFastestTime}, {"slowest", erpmSlowestTime}}))
      ->type_name("fastest|slowest");
  command.add_option("--master", options->import.master, "Who imports: creator and last modifier")
      ->type_name("NAME");
  return [options] {
    if (options->common.output == "-") {
      sayError("larkstone import", "an event file cannot go to standard output");
      return static_cast<int>(exitUsage);
    }
    return import(*options);
  };
}

}  // namespace larkstone::cli
