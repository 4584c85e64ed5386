// larkstone serve: the report, the split tables and the analysis over HTTP.

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/captions.hpp"
#include "cli/event_input.hpp"
#include "cli/interrupt.hpp"
#include "cli/program.hpp"
#include "cli/web_service.hpp"

namespace larkstone::cli {

namespace {

struct ServeOptions {
  CommonOptions common;
  AnalysisOptions analysis;
  std::string file;
  std::string language;
  std::string host = "127.0.0.1";
  int port = 8080;
};

int serveCommand(const ServeOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  CommonOptions common = options.common;
  common.quiet = true;  // no progress bar for requests
  WebService service(*input.event, options.analysis, common, options.language);
  return serve(service, options.host, options.port);
}

}  // namespace

Run declareServe(CLI::App& command) {
  const auto options = std::make_shared<ServeOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  command.add_option("--port", options->port, "The port; 0 takes any that is free")
      ->type_name("N")
      ->check(CLI::Range(0, 65535))
      ->capture_default_str();
  command.add_option("--host", options->host, "The address to listen on")
      ->type_name("ADDRESS")
      ->capture_default_str();
  addLanguageOption(command, options->language);
  addAnalysisOptions(command, options->analysis);
  addCommonOptions(command, options->common);
  return [options] { return serveCommand(*options); };
}

}  // namespace larkstone::cli
