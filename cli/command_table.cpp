// larkstone table: the split table of one category as a web page or as text.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "larkstone/core/number.hpp"
#include "larkstone/online/table.hpp"

#include "cli/analysis_options.hpp"
#include "cli/captions.hpp"
#include "cli/event_input.hpp"
#include "cli/html_page.hpp"
#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/overwriting.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

struct TableOptions {
  CommonOptions common;
  AnalysisOptions analysis;
  std::string file;
  bool html = false;
  bool text = false;
  std::string language = "en";  // a code of ours or FILE:COLUMN
  TableView view;
};

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool hasCaptions(const clsLarkstoneOnlineTable& table) {
  const std::vector<Caption>& ours = languages().front().captions;
  return std::any_of(ours.begin(), ours.end(), [&table](const Caption& caption) {
    return !table.caption(caption.key).empty();
  });
}

// The captions of one of our languages or of a language file. False, after saying so, when the file
// cannot be read or has no such column.
bool setCaptions(clsLarkstoneOnlineTable& table, const std::string& language) {
  if (setLanguage(table, language)) return true;
  const auto colon = language.rfind(':');
  const bool hasColumn =
      colon != std::string::npos && isNumber(std::string_view(language).substr(colon + 1));
  const std::string file = hasColumn ? language.substr(0, colon) : language;
  const int column = hasColumn ? leadingInteger(language.substr(colon + 1)) : 0;
  if (!table.setLanguage(file, column)) {
    sayError(file, "the language file could not be read");
    return false;
  }
  if (hasCaptions(table)) return true;
  sayError(file, "the language file has no captions in column " + std::to_string(column));
  return false;
}

// A descending order is no heading's.
int sortTable(clsLarkstoneOnlineTable& table, LRKCourse& course, const SortOption& sort,
              const CommonOptions& common) {
  int exitCode = exitDone;
  if (!sort.ascending) return sortRunners(course, sort, common);
  table.sort(sort.key, legToSortBy(course, sort, common, exitCode));
  return exitCode;
}

int writeTable(const TableOptions& options, const EventInput& input, int categoryIndex) {
  const auto category = input.event->category(categoryIndex);
  if (!category) {
    sayError(options.file, "the category could not be read");
    return exitFailed;
  }
  const auto course = calculatedCourse(*category, options.analysis, options.common);
  int exitCode = checkRunners(*course, *category, options.analysis, options.common);
  clsLarkstoneOnlineTable table;
  table.course(course.get());
  setView(table, options.view);
  if (!setCaptions(table, options.language)) return exitFailed;
  const int sorted = sortTable(table, *course, options.analysis.sort, options.common);
  exitCode = std::max({input.exitCode, exitCode, sorted});
  if (options.text) {
    table.createTextTable();
  } else {
    table.createHTMLTable();
  }
  if (interrupted()) return exitInterrupted;

  Output output(options.common.output);
  output.write(options.text ? table.textTableString()
                            : pageOf(table, input.event->name(), category->name()));
  return output.close() ? exitCode : exitFailed;
}

int tableCommand(const TableOptions& options) {
  const InterruptGuard guard;
  const std::string languageFile = options.language.substr(0, options.language.rfind(':'));
  if (!mayWrite(options.common, {options.language, languageFile})) return exitUsage;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  std::vector<int> categories;
  if (!findCategories(*input.event, options.file, options.analysis.categories, categories))
    return exitFailed;
  if (categories.empty()) {
    sayError(options.file, "there is no category");
    return input.exitCode == exitDone ? exitFailed : input.exitCode;
  }
  if (categories.size() != 1) {
    sayError(options.file, "name one category with -c (`larkstone info` lists them)");
    return exitUsage;
  }
  return writeTable(options, input, categories.front());
}

}  // namespace

Run declareTable(CLI::App& command) {
  const auto options = std::make_shared<TableOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  CLI::Option* html =
      command.add_flag("--html", options->html, "Write a complete web page (the default)");
  CLI::Option* text =
      command.add_flag("--text", options->text, "Write plain text with tabs between the columns")
          ->excludes(html);
  command
      .add_option("--language", options->language,
                  "Captions: a language of the program (de), or a tab-separated file, whose column "
                  "0 is the first behind the keys")
      ->type_name("CODE|FILE:COLUMN");
  command.add_flag("--places", options->view.places, "Show places beside times");
  command.add_flag("--start-times", options->view.startTimes, "Show start times");
  command.add_flag("--finish-times", options->view.finishTimes, "Show finish times");
  command.add_flag("--relative", options->view.relative, "Show times relative to the best");
  command.add_flag("--tooltips", options->view.tooltips, "Explain time losses and estimated times")
      ->excludes(text);
  command.add_option("--top", options->view.top, "Mark the places up to this one")
      ->type_name("N")
      ->check(CLI::Range(0, 32767))
      ->excludes(text);
  command.add_option("--base-url", options->view.baseURL, "Make the captions links that sort")
      ->type_name("URL")
      ->excludes(text);
  addAnalysisOptions(command, options->analysis);
  addCommonOptions(command, options->common);
  return [options] { return tableCommand(*options); };
}

}  // namespace larkstone::cli
