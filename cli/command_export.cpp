// larkstone export: an event in the format of another program.

#include <cstdint>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "larkstone/event/export.hpp"
#include "larkstone/platform/file.hpp"

#include "cli/event_input.hpp"
#include "cli/event_json.hpp"
#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

// How the exporter writes a format; the program's own JSON has no such method.
using ExportMethod = std::int32_t (LRKExport::*)(LRKEvent&, const std::string&);

struct Format {
  const char* name;
  ExportMethod method;
};
constexpr Format formats[] = {
    {"iofxml2", &LRKExport::exportEventToIOFXML},
    {"iofxml3", &LRKExport::exportEventToIOFXML3},
    {"lrk3", &LRKExport::exportEventToLRK3},
    {"json", nullptr},
};

struct ExportOptions {
  CommonOptions common;
  std::string file;
  ExportMethod method = nullptr;
};

bool exported(LRKEvent& event, ExportMethod method, const std::string& path) {
  LRKExport exporter;
  const std::int32_t code = (exporter.*method)(event, path);
  if (code != 0) sayError(path, errorText(code), errorName(code));
  return code == 0;
}

bool copied(const std::string& path, Output& output) {
  constexpr std::int64_t pieceSize = 1 << 20;
  const File file(path, File::Mode::read);
  std::int64_t position = 0;
  while (position < file.size()) {
    const std::string piece = file.readAt(position, pieceSize);
    if (piece.empty()) return false;
    output.write(piece);
    position += static_cast<std::int64_t>(piece.size());
  }
  return file.isOpen() && output.close();
}

// The exporter writes files; what goes to standard output takes the way over one.
bool exportedToOutput(LRKEvent& event, ExportMethod method) {
  const std::string path = freshFileName(nativeFolder(workingFolder()));
  Output output("-");
  const bool done = exported(event, method, path) && copied(path, output);
  removeFile(path);
  return done;
}

bool writeExport(LRKEvent& event, const ExportOptions& options) {
  const std::string& target = options.common.output;
  if (options.method != nullptr) {
    return target == "-" ? exportedToOutput(event, options.method)
                         : exported(event, options.method, target);
  }
  Output output(target);
  writeEventJson(output, event, true);
  return output.close();
}

ExportMethod methodNamed(const std::string& name) {
  for (const Format& format : formats) {
    if (name == format.name) return format.method;
  }
  throw CLI::ValidationError("--to", "no format '" + name + "'");
}

int exportCommand(const ExportOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  return writeExport(*input.event, options) ? input.exitCode : exitFailed;
}

}  // namespace

Run declareExport(CLI::App& command) {
  const auto options = std::make_shared<ExportOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  command
      .add_option_function<std::string>(
          "--to", [options](const std::string& name) { options->method = methodNamed(name); },
          "The format to write")
      ->type_name("iofxml2|iofxml3|lrk3|json")
      ->required();
  addCommonOptions(command, options->common);
  return [options] { return exportCommand(*options); };
}

}  // namespace larkstone::cli
