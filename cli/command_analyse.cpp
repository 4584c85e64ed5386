// larkstone analyse: the whole analysis as JSON.

#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/analysis_json.hpp"
#include "cli/analysis_options.hpp"
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
};

int analyse(const AnalyseOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  std::vector<int> categories;
  if (!findCategories(*input.event, options.file, options.analysis.categories, categories))
    return exitFailed;

  Output output(options.common.output);
  JsonWriter json(output);
  json.beginObject();
  writeEventHead(json, *input.event);
  json.key("courses");
  json.beginArray();
  const SortOption& sort = options.analysis.sort;
  for (const int index : categories) {
    const auto category = input.event->category(index);
    if (!category) continue;
    const auto course = calculatedCourse(*category, options.analysis, options.common);
    course->sortRunners(sort.key, sort.legNo, sort.ascending);
    writeCourse(json, *course, *category);
    if (interrupted()) return exitInterrupted;
  }
  json.endArray();
  json.endObject();
  return output.close() ? input.exitCode : exitFailed;
}

}  // namespace

Run declareAnalyse(CLI::App& command) {
  const auto options = std::make_shared<AnalyseOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  addAnalysisOptions(command, options->analysis);
  addCommonOptions(command, options->common);
  return [options] { return analyse(*options); };
}

}  // namespace larkstone::cli
