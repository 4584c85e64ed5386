#include "cli/overwriting.hpp"

#include <algorithm>

#include "larkstone/event/event.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/platform/file.hpp"

#include "cli/event_input.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

bool holdsRunners(const std::string& file, std::int32_t format) {
  LRKEvent event;
  event.tempFilePath(workingFolder());
  event.createNewEvent({}, true);
  LRKImport().import(format, event, file);
  return noOfRunners(event) > 0;
}

// The programs that write pages are told by their names, which may stand in any page: one of theirs
// has runners in it.
bool isResultList(const std::string& file) {
  const std::int32_t format = LRKImport::determineFileFormat(file);
  switch (format) {
    case LRK_IMPORT_UNKNOWN:
    case LRK_IMPORT_FILE_DOES_NOT_EXIST:
      return false;
    case LRK_IMPORT_PEKKA_PIRILA_HTML:
    case LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT:
    case LRK_IMPORT_ETIMING_HTML:
    case LRK_IMPORT_OLA_HTML:
    case LRK_IMPORT_SOLV_HTML:
      return holdsRunners(file, format);
    default:
      return true;
  }
}

}  // namespace

bool mayWrite(const CommonOptions& options, const std::vector<std::string>& inputs,
              std::int32_t written) {
  const std::string& output = options.output;
  if (output == "-") return true;
  const auto isOutput = [&output](const std::string& input) {
    return fileExists(input) && isSameFile(input, output);
  };
  if (std::any_of(inputs.begin(), inputs.end(), isOutput)) {
    sayError(output, "the output would replace an input of this command");
    return false;
  }
  if (options.overwrite || !isRegularFile(output)) return true;
  const std::int32_t own = LRKImport::determineLRKFileFormat(output);
  const bool isEventFile = own == LRK_IMPORT_LRK_LRK4 || own == LRK_IMPORT_LRK_LRK3;
  if (isEventFile ? own == written : !isResultList(output)) return true;
  sayError(output, std::string("there is ") + (isEventFile ? "an event file" : "a result list") +
                       " of this name; --overwrite replaces it");
  return false;
}

}  // namespace larkstone::cli
