#include "cli/event_json.hpp"

#include <cstdint>
#include <string>
#include <variant>

#include "larkstone/core/code_text.hpp"
#include "larkstone/event/event.hpp"

#include "cli/json_writer.hpp"

namespace larkstone::cli {

namespace {

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

void writeProperties(JsonWriter& json, const LRKEvent& event) {
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

// A punch as [code, time].
void writePunches(JsonWriter& json, std::string_view name, const LRKPunches& punches) {
  json.key(name);
  json.beginArray();
  for (int i = 0; i < punches.count(); ++i) {
    json.beginArray();
    json.number(std::int64_t{punches.code(i)});
    if (isDisq(punches.time(i))) {
      json.null();
    } else {
      json.number(std::int64_t{punches.time(i)});
    }
    json.endArray();
  }
  json.endArray();
}

void writeRunnerJson(JsonWriter& json, const LRKRunner& runner) {
  json.newLine();
  json.beginObject();
  forEachSetProperty(runner, putInto(json));
  put(json, "status", runner.status());
  writePunches(json, "punches", runner.punches());
  writePunches(json, "extraPunches", runner.extraPunches());
  json.endObject();
}

void writeRunners(JsonWriter& json, const LRKCategory& category) {
  json.key("legLengths");
  json.beginObject();
  for (const LegLength& leg : category.legLengthArray()) {
    put(json, codeToString(leg.beginCode, "S", "F") + "-" + codeToString(leg.endCode, "S", "F"),
        leg.length);
  }
  json.endObject();
  json.key("runners");
  json.beginArray();
  for (int i = 0; i < category.noOfRunners(); ++i) writeRunnerJson(json, category.runner(i));
  json.endArray();
}

void writeCategoryJson(JsonWriter& json, const LRKCategory& category, bool withRunners) {
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
  if (withRunners) writeRunners(json, category);
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

}  // namespace

void writeEventJson(TextSink& output, LRKEvent& event, bool withRunners) {
  JsonWriter json(output);
  json.beginObject();
  json.key("event");
  writeProperties(json, event);
  json.key("categories");
  json.beginArray();
  for (int i = 0; i < event.noOfCategories(); ++i) {
    if (const auto category = event.category(i)) {
      writeCategoryJson(json, *category, withRunners);
    }
  }
  json.endArray();
  json.key("derivedCourses");
  json.beginArray();
  for (int i = 0; i < event.noOfDerivedCourses(); ++i) writeDerivedCourseJson(json, event, i);
  json.endArray();
  json.endObject();
}

}  // namespace larkstone::cli
