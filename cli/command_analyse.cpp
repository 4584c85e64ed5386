// larkstone analyse: the whole analysis as JSON, as CSV, or in a line per category.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/analysis_csv.hpp"
#include "cli/analysis_json.hpp"
#include "cli/analysis_options.hpp"
#include "cli/analysis_summary.hpp"
#include "cli/event_input.hpp"
#include "cli/interrupt.hpp"
#include "cli/json_writer.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"

namespace larkstone::cli {

namespace {

struct AnalyseOptions {
  CommonOptions common;
  AnalysisOptions analysis;
  std::string file;
  bool csv = false;
  bool summary = false;
};

int writeJson(Output& output, LRKEvent& event, const std::vector<int>& categories,
              const AnalyseOptions& options) {
  JsonWriter json(output);
  return writeAnalysis(json, event, categories, options.analysis, options.common);
}

int writeCsv(Output& output, LRKEvent& event, const std::vector<int>& categories,
             const AnalyseOptions& options) {
  writeCsvHeader(output);
  return forEachCourse(event, categories, options.analysis, options.common,
                       [&](LRKCourse& course, const LRKCategory&) {
                         const int sorted =
                             sortRunners(course, options.analysis.sort, options.common);
                         writeCsvCourse(output, course);
                         return sorted;
                       });
}

int writeSummary(Output& output, LRKEvent& event, const std::vector<int>& categories,
                 const AnalyseOptions& options) {
  AnalysisOptions analysis = options.analysis;
  if (!analysis.flags) analysis.flags = eccfTimeLoss;
  SummaryTable table;
  const int exitCode =
      forEachCourse(event, categories, analysis, options.common,
                    [&table](const LRKCourse& course, const LRKCategory& category) {
                      table.add(course, category);
                      return exitDone;
                    });
  table.write(output);
  return exitCode;
}

int analyse(const AnalyseOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  std::vector<int> categories;
  if (!findCategories(*input.event, options.file, options.analysis.categories, categories))
    return exitFailed;

  Output output(options.common.output);
  const auto write = options.csv ? writeCsv : options.summary ? writeSummary : writeJson;
  const int exitCode = write(output, *input.event, categories, options);
  if (exitCode == exitInterrupted) return exitCode;
  return output.close() ? std::max(input.exitCode, exitCode) : exitFailed;
}

}  // namespace

Run declareAnalyse(CLI::App& command) {
  const auto options = std::make_shared<AnalyseOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  CLI::Option* csv =
      command.add_flag("--csv", options->csv, "Print CSV: one line per runner and leg");
  command
      .add_flag(
          "--summary", options->summary,
          "Print one line per category; calculates the time loss only, unless --flags is given")
      ->excludes(csv);
  addAnalysisOptions(command, options->analysis);
  addCommonOptions(command, options->common);
  return [options] { return analyse(*options); };
}

}  // namespace larkstone::cli
