#pragma once

// An event out of any file: an event file is opened, a result list imported.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "larkstone/event/event.hpp"
#include "larkstone/import/import_constants.hpp"

#include "cli/program.hpp"

namespace larkstone {
class LRKImport;
}

namespace larkstone::cli {

/// The name of a format or result code of either vocabulary and what it means.
struct CodeText {
  std::string_view name;
  std::string_view meaning;
};
CodeText importCodeText(std::int32_t code);

struct ImportOptions {
  int format = 0;  ///< 0: an event file is opened, anything else detected
  Time zeroTime = 0;
  enmRelayParallelMode parallelMode = erpmFastestTime;
  std::string master;
};

/// Imports with run(importer): tells what is left out and how far it is, and lets Ctrl-C cancel.
/// The result of the importer.
std::int32_t watchedImport(const std::string& file, const CommonOptions& options,
                           const std::function<std::int32_t(LRKImport&)>& run);
/// Says what went wrong with a file. The exit code: done, failed, warning or interrupted.
int exitCodeOf(std::int32_t importCode, const std::string& file, const CommonOptions& options);

/// Imports a result list into an open event and says what went wrong; the exit code.
int importInto(LRKEvent& event, const std::string& file, const ImportOptions& import,
               const CommonOptions& options);

/// The folder for working files, in the library's form.
std::string workingFolder();

/// Of all categories.
int noOfRunners(const LRKEvent& event);

/// An open event, or none and the exit code.
struct EventInput {
  std::unique_ptr<LRKEvent> event;
  int exitCode = exitDone;
};
/// Opened for a command that writes an output of the format `written` (see mayWrite()): none, and
/// an error of usage, when it may not.
EventInput openInput(const std::string& file, const CommonOptions& options,
                     std::int32_t written = LRK_IMPORT_UNKNOWN);
/// The same for an event file only.
EventInput openEventFile(const std::string& file, const CommonOptions& options);

}  // namespace larkstone::cli
