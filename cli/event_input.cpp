#include "cli/event_input.hpp"

#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/import/import.hpp"

#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/overwriting.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

// What an import left out: counted, or named one by one on request.
class Omissions {
 public:
  Omissions(const CommonOptions& options, std::string file)
      : options_(options), file_(std::move(file)) {}

  void add(const ImportNote& note) {
    ++count_;
    if (options_.verbose) {
      sayWarning(options_, file_, std::string(note.where) + ": " + std::string(note.what));
    }
  }

  void sayCount() const {
    if (count_ == 0) return;
    const std::string items = count_ == 1 ? "1 item" : std::to_string(count_) + " items";
    sayWarning(options_, file_,
               items + " left out or unreadable" + (options_.verbose ? "" : " (-v names them)"));
  }

 private:
  const CommonOptions& options_;
  std::string file_;
  int count_ = 0;
};

EventInput failed(const std::string& file, std::string_view what, std::string_view name) {
  sayError(file, what, name);
  return {nullptr, exitFailed};
}

// What the file says that cannot be is counted, or named on request. Whether there was any.
bool sayWarnings(const LRKEvent& event, const std::string& file, const CommonOptions& options) {
  const std::vector<std::string> warnings = event.warnings();
  if (warnings.empty()) return false;
  for (const std::string& warning : warnings) {
    if (options.verbose) sayWarning(options, file, oneLine(warning));
  }
  const std::string values =
      warnings.size() == 1 ? "1 value is" : std::to_string(warnings.size()) + " values are";
  sayWarning(
      options, file,
      values + " damaged, the default is taken" + (options.verbose ? "" : " (-v names them)"));
  return true;
}

}  // namespace

CodeText importCodeText(std::int32_t code) { return {importName(code), importText(code)}; }

std::int32_t watchedImport(const std::string& file, const CommonOptions& options,
                           const std::function<std::int32_t(LRKImport&)>& run) {
  Omissions omissions(options, file);
  Progress progress(options, "importing");
  LRKImport importer;
  importer.tempFilePath(workingFolder());
  importer.onNote([&](const ImportNote& note) { omissions.add(note); });
  importer.onWorkProgress([&](float fraction) {
    progress.show(static_cast<double>(fraction));
    if (interrupted()) importer.Cancel();
  });
  const std::int32_t code = run(importer);
  progress.clear();
  omissions.sayCount();
  return code;
}

int exitCodeOf(std::int32_t importCode, const std::string& file, const CommonOptions& options) {
  if (importCode == LRK_IMPORT_CANCELLED) return exitInterrupted;
  if (importCode == 0) return exitDone;
  const CodeText text = importCodeText(importCode);
  if (importCode == LRK_IMPORT_IOF_XML_BLANK_NAMES) {
    sayWarning(options, file, text.meaning, text.name);
    return exitWarning;
  }
  sayError(file, text.meaning, text.name);
  return exitFailed;
}

int noOfRunners(const LRKEvent& event) {
  int runners = 0;
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const TagValue count = event.extractCategoryTag(i, etagCategoryNoOfRunners);
    runners += fromTagValue<int>(count).value_or(0);
  }
  return runners;
}

namespace {

std::string emptyListText(int classes) {
  if (classes == 0) return "there is no runner in it, and no class";
  return "there is no runner in it, but " + std::to_string(classes) +
         (classes == 1 ? " class without any" : " classes without any");
}

}  // namespace

int importInto(LRKEvent& event, const std::string& file, const ImportOptions& import,
               const CommonOptions& options) {
  const int runners = noOfRunners(event);
  const int classes = event.noOfCategories();
  const std::int32_t code = watchedImport(file, options, [&](LRKImport& importer) {
    importer.master(import.master);
    int format = import.format == 0 ? LRK_IMPORT_AUTO : import.format;
    if (format == LRK_IMPORT_AUTO &&
        LRKImport::determineLRKFileFormat(file) == LRK_IMPORT_LRK_LRK3) {
      format = LRK_IMPORT_LRK_LRK3;
    }
    if (format == LRK_IMPORT_LRK_LRK3) return importer.importLRK3(event, file);
    return importer.import_parallel(format, event, file, import.zeroTime, import.parallelMode);
  });
  const int exitCode = exitCodeOf(code, file, options);
  const bool isDone = exitCode == exitDone || exitCode == exitWarning;
  if (!isDone || noOfRunners(event) > runners) return exitCode;
  sayWarning(options, file, emptyListText(event.noOfCategories() - classes));
  return exitWarning;
}

std::string workingFolder() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  return error ? std::string() : folder.string() + "\\";
}

EventInput openInput(const std::string& file, const CommonOptions& options, std::int32_t written) {
  if (!mayWrite(options, {file}, written)) return {nullptr, exitUsage};
  LRKImport importer;
  if (importer.determineLRKFileFormat(file) == LRK_IMPORT_LRK_LRK4) {
    return openEventFile(file, options);
  }
  EventInput input{std::make_unique<LRKEvent>(), exitDone};
  input.event->tempFilePath(workingFolder());
  // It needs no name as long as it is not saved.
  const std::int32_t code = input.event->createNewEvent({}, true);
  if (code != 0) return failed(workingFolder(), errorText(code), errorName(code));
  input.exitCode = importInto(*input.event, file, {}, options);
  if (input.exitCode != exitDone && input.exitCode != exitWarning) input.event.reset();
  return input;
}

EventInput openEventFile(const std::string& file, const CommonOptions& options) {
  EventInput input{std::make_unique<LRKEvent>(), exitDone};
  input.event->tempFilePath(workingFolder());
  const std::int32_t code = input.event->openEvent(file);
  if (code == LRK_UNKNOWN_FILE_VERSION) {
    sayWarning(options, file, errorText(code), errorName(code));
    input.exitCode = exitWarning;
  } else if (code != 0) {
    return failed(file, errorText(code), errorName(code));
  }
  if (sayWarnings(*input.event, file, options)) input.exitCode = exitWarning;
  return input;
}

}  // namespace larkstone::cli
