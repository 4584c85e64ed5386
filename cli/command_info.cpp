// larkstone info: the event and a line a category, or the same as JSON.

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "larkstone/core/length.hpp"
#include "larkstone/event/event.hpp"

#include "cli/event_input.hpp"
#include "cli/forkings.hpp"
#include "cli/interrupt.hpp"
#include "cli/json_writer.hpp"
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

// Writes every property that is set, under its name, through `put(name, value)`.
template <class Owner, class Put>
void forEachSetProperty(const Owner& owner, Put put) {
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      bool isSet = false;
      const TagValue value = propertyByTag(owner, row.tag, isSet);
      if (row.stored && isSet) put(row.name, value);
    }
  });
}

void writeValue(JsonWriter& json, const TagValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return json.text(*text);
  if (const auto* whole = std::get_if<std::int32_t>(&value))
    return json.number(std::int64_t{*whole});
  if (const auto* single = std::get_if<float>(&value)) return json.number(*single);
  if (const auto* flag = std::get_if<bool>(&value)) return json.boolean(*flag);
  if (const auto* date = std::get_if<Date>(&value)) return json.text(toIsoText(*date));
  json.null();
}

auto putInto(JsonWriter& json) {
  return [&json](std::string_view name, const TagValue& value) {
    json.key(name);
    writeValue(json, value);
  };
}

template <class Value>
void put(JsonWriter& json, std::string_view name, Value value) {
  json.key(name);
  if constexpr (std::is_same_v<Value, bool>) {
    json.boolean(value);
  } else {
    json.number(std::int64_t{value});
  }
}

void writeEventJson(JsonWriter& json, const LRKEvent& event) {
  json.beginObject();
  json.key("name");
  json.text(event.name());
  forEachSetProperty(event, putInto(json));
  if (event.created().day != 0) putInto(json)("created", event.created());
  if (event.lastModified().day != 0) putInto(json)("lastModified", event.lastModified());
  put(json, "noOfCategories", event.noOfCategories());
  put(json, "noOfDerivedCourses", event.noOfDerivedCourses());
  json.endObject();
}

void writeCategoryJson(JsonWriter& json, const LRKCategory& category) {
  json.newLine();
  json.beginObject();
  json.key("name");
  json.text(category.name());
  forEachSetProperty(category, putInto(json));
  put(json, "noOfRunners", category.noOfRunners());
  put(json, "courseType", category.courseType());
  put(json, "timeAccuracy", category.timeAccuracy());
  put(json, "allRunnersHaveTheSameForking", category.allRunnersHaveTheSameForking());
  put(json, "minNoOfLegs", category.minNoOfLegs());
  put(json, "maxNoOfLegs", category.maxNoOfLegs());
  json.endObject();
}

// Derived courses by what their records say, without decoding them.
void writeDerivedCourseJson(JsonWriter& json, const LRKEvent& event, int index) {
  struct Entry {
    const char* name;
    enmFileTag tag;
    bool isFlag;
  };
  constexpr Entry entries[] = {
      {"requiredLegs", etagDerivedCourseRequiredLegs, false},
      {"allowRearrangement", etagDerivedCourseAllowRearrangement, true},
      {"allowMerging", etagDerivedCourseAllowMerging, true},
      {"noOfLegs", etagDerivedCourseNoOfLegs, false},
      {"noOfRunners", etagDerivedCourseNoOfRunners, false},
  };
  json.newLine();
  json.beginObject();
  json.key("name");
  json.text(event.derivedCourseName(index));
  for (const Entry& entry : entries) {
    const double value = numberOf(event.extractDerivedCourseTag(index, entry.tag)).value_or(0);
    json.key(entry.name);
    if (entry.isFlag) {
      json.boolean(value != 0);
    } else {
      json.number(static_cast<std::int64_t>(value));
    }
  }
  json.endObject();
}

void writeJson(Output& output, LRKEvent& event) {
  JsonWriter json(output);
  json.beginObject();
  json.key("event");
  writeEventJson(json, event);
  json.key("categories");
  json.beginArray();
  for (int i = 0; i < event.noOfCategories(); ++i) {
    if (const auto category = event.category(i)) writeCategoryJson(json, *category);
  }
  json.endArray();
  json.key("derivedCourses");
  json.beginArray();
  for (int i = 0; i < event.noOfDerivedCourses(); ++i) writeDerivedCourseJson(json, event, i);
  json.endArray();
  json.endObject();
}

std::string controlsText(const LRKCategory& category) {
  // A course of n legs has n - 1 controls between start and finish.
  const int fewest = std::max(category.minNoOfLegs() - 1, 0);
  const int most = std::max(category.maxNoOfLegs() - 1, 0);
  const std::string count =
      fewest == most ? std::to_string(most) : std::to_string(fewest) + "-" + std::to_string(most);
  return count + (most == 1 ? " control" : " controls");
}

void writeCategoryLine(Output& output, const LRKCategory& category) {
  std::string line = category.name().empty() ? "(no name)" : category.name();
  line += ": " + std::to_string(category.noOfRunners()) +
          (category.noOfRunners() == 1 ? " runner, " : " runners, ") +
          nameOf(category.courseType()) + ", " + controlsText(category);
  if (category.courseLengthSet()) line += ", " + lengthToString(category.courseLength(), elstkM);
  output.write(line + "\n");
}

void writeText(Output& output, LRKEvent& event) {
  output.write("name: " + event.name() + "\n");
  forEachSetProperty(event, [&output](std::string_view name, const TagValue& value) {
    output.write(std::string(name) + ": " + textOf(value).value_or("") + "\n");
  });
  output.write("noOfCategories: " + std::to_string(event.noOfCategories()) + "\n");
  if (event.noOfDerivedCourses() > 0) {
    output.write("noOfDerivedCourses: " + std::to_string(event.noOfDerivedCourses()) + "\n");
  }
  if (event.noOfCategories() > 0) output.write("\n");
  for (int i = 0; i < event.noOfCategories(); ++i) {
    if (const auto category = event.category(i)) writeCategoryLine(output, *category);
  }
}

int info(const InfoOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  Output output(options.common.output);
  if (options.json) {
    writeJson(output, *input.event);
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
