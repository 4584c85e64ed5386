// larkstone report: one page over all categories.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/captions.hpp"
#include "cli/event_input.hpp"
#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"
#include "cli/report_page.hpp"

namespace larkstone::cli {

namespace {

struct ReportOptions {
  CommonOptions common;
  AnalysisOptions analysis;
  std::string file;
  std::string language;
};

int report(const ReportOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  std::vector<int> categories;
  if (!findCategories(*input.event, options.file, options.analysis.categories, categories)) {
    return exitFailed;
  }
  Output output(options.common.output);
  const int exitCode = writeReport(output, *input.event, categories, options.analysis,
                                   options.common, options.language);
  if (exitCode == exitInterrupted) return exitCode;
  return output.close() ? std::max(input.exitCode, exitCode) : exitFailed;
}

}  // namespace

Run declareReport(CLI::App& command) {
  const auto options = std::make_shared<ReportOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  addLanguageOption(command, options->language);
  addAnalysisOptions(command, options->analysis);
  addCommonOptions(command, options->common);
  return [options] { return report(*options); };
}

}  // namespace larkstone::cli
