// larkstone startlist: start times from a start list into an event file.

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "larkstone/import/import.hpp"
#include "larkstone/platform/file.hpp"

#include "cli/event_input.hpp"
#include "cli/format_name.hpp"
#include "cli/interrupt.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

struct Options {
  CommonOptions common;
  std::string event;
  std::string list;
  std::int32_t format = LRK_IMPORT_AUTO;
  int stage = 1;
};

int importStartTimes(const Options& options) {
  const InterruptGuard guard;
  if (isSameFile(options.event, options.list)) {
    sayError(options.list, "the start list is the event file");
    return exitUsage;
  }
  const EventInput input = openEventFile(options.event, options.common);
  if (!input.event) return input.exitCode;
  int set = 0;
  const std::int32_t code = watchedImport(options.list, options.common, [&](LRKImport& importer) {
    std::int32_t format = options.format;
    if (format == LRK_IMPORT_AUTO) format = importer.determineStartlistFileFormat(options.list);
    if (format == LRK_IMPORT_FILE_DOES_NOT_EXIST) return format;
    const std::int32_t result = importer.importStartlist(format, *input.event, options.list,
                                                         std::to_string(options.stage - 1));
    set = importer.noOfStartTimesSet();
    return result;
  });
  const bool ofTheEvent = code >= LRK_IMPORT_EVENT_FILE_ERROR;
  const int exitCode = exitCodeOf(code, ofTheEvent ? options.event : options.list, options.common);
  if (exitCode != exitDone || set > 0) return exitCode == exitDone ? input.exitCode : exitCode;
  sayWarning(options.common, options.list,
             "no start time was set: it has none for a runner of the event");
  return exitWarning;
}

}  // namespace

Run declareStartlist(CLI::App& command) {
  const auto options = std::make_shared<Options>();
  command.add_option("EVENT", options->event, "The event file that gets the start times")
      ->type_name("FILE")
      ->required();
  command.add_option("LIST", options->list, "A start list")->type_name("FILE")->required();
  command.add_flag("-q,--quiet", options->common.quiet, "Say nothing but errors");
  command.add_flag("-v,--verbose", options->common.verbose,
                   "Name every entry that could not be used");
  command
      .add_option_function<std::string>(
          "--format",
          [options](const std::string& text) {
            options->format = formatNamed(text, LRK_IMPORT_AUTO, LRK_IMPORT_STARTLIST_UNKNOWN);
          },
          "Take this format instead of detecting one (as `larkstone detect` names it)")
      ->type_name("NAME");
  command
      .add_option("--stage", options->stage,
                  "Which start time to take from a list of several stages, from 1")
      ->check(CLI::Range(1, 32767))
      ->type_name("N");
  return [options] { return importStartTimes(*options); };
}

}  // namespace larkstone::cli
