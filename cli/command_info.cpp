// larkstone info: the event and a line a category, or the same as JSON.

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "larkstone/core/length.hpp"
#include "larkstone/event/event.hpp"

#include "cli/event_input.hpp"
#include "cli/event_json.hpp"
#include "cli/forkings.hpp"
#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

struct InfoOptions {
  CommonOptions common;
  std::string file;
  bool json = false;
};

std::string controlsText(const LRKCategory& category) {
  // A course of n legs has n - 1 controls between start and finish.
  const int fewest = std::max(category.minNoOfLegs() - 1, 0);
  const int most = std::max(category.maxNoOfLegs() - 1, 0);
  const std::string count =
      fewest == most ? std::to_string(most) : std::to_string(fewest) + "-" + std::to_string(most);
  return count + (most == 1 ? " control" : " controls");
}

void writeCategoryLine(Output& output, const LRKCategory& category) {
  std::string line = displayName(category.name());
  line += ": " + std::to_string(category.noOfRunners()) +
          (category.noOfRunners() == 1 ? " runner, " : " runners, ") +
          nameOf(category.courseType()) + ", " + controlsText(category);
  if (category.courseLengthSet()) line += ", " + lengthToString(category.courseLength(), elstkM);
  output.write(line + "\n");
}

// What the record says, without decoding the course.
void writeDerivedCourseLine(Output& output, const LRKEvent& event, int index) {
  const auto counted = [&event, index](enmFileTag tag, const std::string& what) {
    const auto count = fromTagValue<int>(event.extractDerivedCourseTag(index, tag)).value_or(0);
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
  };
  output.write(displayName(event.derivedCourseName(index)) + ": " +
               counted(etagDerivedCourseNoOfRunners, "runner") + ", " +
               counted(etagDerivedCourseNoOfLegs, "leg") + "\n");
}

void writeText(Output& output, LRKEvent& event) {
  output.write("name: " + oneLine(event.name()) + "\n");
  forEachSetProperty(event, [&output](std::string_view name, const TagValue& value) {
    output.write(std::string(name) + ": " + oneLine(textOf(value).value_or("")) + "\n");
  });
  output.write("noOfCategories: " + std::to_string(event.noOfCategories()) + "\n");
  const int derivedCourses = event.noOfDerivedCourses();
  if (derivedCourses > 0) {
    output.write("noOfDerivedCourses: " + std::to_string(derivedCourses) + "\n");
  }
  if (event.noOfCategories() > 0) output.write("\n");
  for (int i = 0; i < event.noOfCategories(); ++i) {
    if (const auto category = event.category(i)) writeCategoryLine(output, *category);
  }
  if (derivedCourses > 0) output.write("\nderived courses\n");
  for (int i = 0; i < derivedCourses; ++i) writeDerivedCourseLine(output, event, i);
}

int info(const InfoOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  Output output(options.common.output);
  if (options.json) {
    writeEventJson(output, *input.event, false);
  } else {
    writeText(output, *input.event);
  }
  return output.close() ? input.exitCode : exitFailed;
}

}  // namespace

Run declareInfo(CLI::App& command) {
  const auto options = std::make_shared<InfoOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  command.add_flag("--json", options->json, "Print JSON");
  addCommonOptions(command, options->common);
  return [options] { return info(*options); };
}

}  // namespace larkstone::cli
