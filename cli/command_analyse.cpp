// larkstone analyse: the whole analysis as JSON, as CSV, or in a line per category.

#include <functional>
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

using WriteCourse = std::function<void(const LRKCourse& course, const LRKCategory& category)>;

// Hands every category's course, calculated and sorted, to the writer. False when interrupted.
bool forEachCourse(LRKEvent& event, const std::vector<int>& categories,
                   const AnalyseOptions& options, const WriteCourse& write) {
  const SortOption& sort = options.analysis.sort;
  for (const int index : categories) {
    const auto category = event.category(index);
    if (!category) continue;
    const auto course = calculatedCourse(*category, options.analysis, options.common);
    if (!options.summary) course->sortRunners(sort.key, sort.legNo, sort.ascending);
    write(*course, *category);
    if (interrupted()) return false;
  }
  return true;
}

bool writeJson(Output& output, LRKEvent& event, const std::vector<int>& categories,
               const AnalyseOptions& options) {
  JsonWriter json(output);
  json.beginObject();
  writeEventHead(json, event);
  json.key("courses");
  json.beginArray();
  const bool done = forEachCourse(event, categories, options,
                                  [&json](const LRKCourse& course, const LRKCategory& category) {
                                    writeCourse(json, course, category);
                                  });
  json.endArray();
  json.endObject();
  return done;
}

bool writeCsv(Output& output, LRKEvent& event, const std::vector<int>& categories,
              const AnalyseOptions& options) {
  writeCsvHeader(output);
  return forEachCourse(
      event, categories, options,
      [&output](const LRKCourse& course, const LRKCategory&) { writeCsvCourse(output, course); });
}

bool writeSummary(Output& output, LRKEvent& event, const std::vector<int>& categories,
                  const AnalyseOptions& given) {
  AnalyseOptions options = given;
  if (!options.analysis.flags) options.analysis.flags = eccfTimeLoss;
  SummaryTable table;
  const bool done = forEachCourse(event, categories, options,
                                  [&table](const LRKCourse& course, const LRKCategory& category) {
                                    table.add(course, category);
                                  });
  table.write(output);
  return done;
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
  if (!write(output, *input.event, categories, options)) return exitInterrupted;
  return output.close() ? input.exitCode : exitFailed;
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
