// larkstone detect: one line a file, the format's name and number.

#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "larkstone/import/import.hpp"

#include "cli/event_input.hpp"
#include "cli/output.hpp"
#include "cli/overwriting.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

struct DetectOptions {
  CommonOptions common;
  std::vector<std::string> files;
};

std::int32_t formatOf(const std::string& file) {
  const std::int32_t own = LRKImport::determineLRKFileFormat(file);
  if (own != LRK_IMPORT_LRK_UNKNOWN) return own;
  const std::int32_t results = LRKImport::determineFileFormat(file);
  if (results != LRK_IMPORT_UNKNOWN) return results;
  const std::int32_t starts = LRKImport::determineStartlistFileFormat(file);
  return starts == LRK_IMPORT_STARTLIST_UNKNOWN ? results : starts;
}

int detect(const DetectOptions& options) {
  if (!mayWrite(options.common, options.files)) return exitUsage;
  Output output(options.common.output);
  int exitCode = exitDone;
  for (const std::string& file : options.files) {
    const std::int32_t format = formatOf(file);
    const CodeText text = importCodeText(format);
    if (format == LRK_IMPORT_FILE_DOES_NOT_EXIST) {
      sayError(file, text.meaning, text.name);
      exitCode = exitFailed;
      continue;
    }
    output.write(file + ": " + std::string(text.name) + " " + std::to_string(format) + "\n");
  }
  return output.close() ? exitCode : exitFailed;
}

}  // namespace

Run declareDetect(CLI::App& command) {
  const auto options = std::make_shared<DetectOptions>();
  command.add_option("FILE", options->files, "Files to look at")->required();
  addCommonOptions(command, options->common);
  return [options] { return detect(*options); };
}

}  // namespace larkstone::cli
