// larkstone export: an event in the format of another program.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "larkstone/event/export.hpp"

#include "cli/event_input.hpp"
#include "cli/event_json.hpp"
#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

// How the exporter writes a format; the program's own JSON has no such method.
using ExportMethod = std::int32_t (LRKExport::*)(LRKEvent&, const ExportSink&);

struct Format {
  const char* name;
  ExportMethod method;
  std::int32_t written = LRK_IMPORT_UNKNOWN;  // of an event file
};
constexpr Format formats[] = {
    {"iofxml2", &LRKExport::writeEventAsIOFXML},
    {"iofxml3", &LRKExport::writeEventAsIOFXML3},
    {"lrk3", &LRKExport::writeEventAsLRK3, LRK_IMPORT_LRK_LRK3},
    {"json", nullptr},
};

struct ExportOptions {
  CommonOptions common;
  std::string file;
  Format format = {};
};

bool writeExport(LRKEvent& event, const ExportOptions& options) {
  Output output(options.common.output);
  if (options.format.method == nullptr) {
    writeEventJson(output, event, true);
    return output.close();
  }
  const auto write = [&output](std::string_view bytes) {
    output.write(bytes);
    return true;
  };
  LRKExport exporter;
  const std::int32_t code = (exporter.*options.format.method)(event, write);
  if (code != 0) sayError(options.file, errorText(code), errorName(code));
  return code == 0 && output.close();
}

Format formatNamed(const std::string& name) {
  for (const Format& format : formats) {
    if (name == format.name) return format;
  }
  throw CLI::ValidationError("--to", "no format '" + name + "'");
}

int exportCommand(const ExportOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common, options.format.written);
  if (!input.event) return input.exitCode;
  return writeExport(*input.event, options) ? input.exitCode : exitFailed;
}

}  // namespace

Run declareExport(CLI::App& command) {
  const auto options = std::make_shared<ExportOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  command
      .add_option_function<std::string>(
          "--to", [options](const std::string& name) { options->format = formatNamed(name); },
          "The format to write")
      ->type_name("iofxml2|iofxml3|lrk3|json")
      ->required();
  addCommonOptions(command, options->common);
  return [options] { return exportCommand(*options); };
}

}  // namespace larkstone::cli
