#include "cli/program.hpp"

#include <exception>
#include <iostream>
#include <vector>

#include <CLI/CLI.hpp>

namespace larkstone::cli {

namespace {

struct Command {
  const char* name;
  const char* help;
  Run (*declare)(CLI::App&);
};

constexpr Command commands[] = {
    {"detect", "Tell the format of files", declareDetect},
    {"import", "Import result lists into an event file", declareImport},
    {"startlist", "Take start times from a start list into an event file", declareStartlist},
    {"info", "Describe an event and its categories", declareInfo},
    {"courses", "Tell which courses the runners of a category ran", declareCourses},
    {"analyse", "Calculate the split-time analysis and print it", declareAnalyse},
    {"table", "Write the split table of one category", declareTable},
    {"report", "Write one page over all categories", declareReport},
    {"serve", "Serve the report, the split tables and the analysis over HTTP", declareServe},
    {"export", "Write the event in the format of another program", declareExport},
    {"search", "Find runners by their properties", declareSearch},
};

int usageError(const std::string& message, const std::string& command) {
  std::cerr << "larkstone: " << message << "\nTry: larkstone "
            << (command.empty() ? "" : command + " ") << "--help\n";
  return exitUsage;
}

std::string chosenCommand(const CLI::App& app) {
  const auto chosen = app.get_subcommands();
  return chosen.empty() ? "" : chosen.front()->get_name();
}

int printHelp(CLI::App& app, const std::string& command) {
  if (command.empty()) {
    std::cout << app.help();
    return exitDone;
  }
  for (const Command& known : commands) {
    if (command != known.name) continue;
    std::cout << app.get_subcommand(command)->help();
    return exitDone;
  }
  return usageError("no command '" + command + "'", "");
}

int parseAndRun(int argc, const char* const* argv) {
  CLI::App app("Split-time analysis for orienteering.", "larkstone");
  app.set_version_flag("--version", "larkstone " LARKSTONE_VERSION);
  app.require_subcommand(1);
  std::vector<Run> runs;
  for (const Command& command : commands) {
    CLI::App* declared = app.add_subcommand(command.name, command.help);
    declared->final_callback([] {});
    runs.push_back(command.declare(*declared));
  }
  std::string helpTopic;
  CLI::App* help = app.add_subcommand("help", "Explain a command");
  help->add_option("COMMAND", helpTopic, "The command to explain");

  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& success) {  // --help and --version
    return app.exit(success);
  } catch (const CLI::ParseError& error) {
    return usageError(error.what(), chosenCommand(app));
  }
  if (help->parsed()) return printHelp(app, helpTopic);
  for (std::size_t i = 0; i < runs.size(); ++i) {
    if (app.get_subcommand(commands[i].name)->parsed()) return runs[i]();
  }
  return exitUsage;
}

}  // namespace

void addCommonOptions(CLI::App& command, CommonOptions& options) {
  command
      .add_option("-o,--output", options.output, "Write to this file instead of standard output")
      ->type_name("PATH");
  command.add_flag("--overwrite", options.overwrite,
                   "Let the output replace an event file of another kind or a result list");
  command.add_flag("-q,--quiet", options.quiet, "Say nothing but errors");
  command.add_flag("-v,--verbose", options.verbose, "Name everything an import had to leave out");
}

int runProgram(int argc, const char* const* argv) {
  try {
    return parseAndRun(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "larkstone: " << error.what() << '\n';
    return exitFailed;
  }
}

}  // namespace larkstone::cli
