// larkstone search: runners by what is known of them.

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <CLI/CLI.hpp>

#include "larkstone/core/iof_texts.hpp"
#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"

#include "cli/event_input.hpp"
#include "cli/interrupt.hpp"
#include "cli/json_writer.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"

namespace larkstone::cli {

namespace {

struct SearchOptions {
  CommonOptions common;
  std::string file;
  std::map<enmFileTag, TagValue> find;
  std::map<enmFileTag, enmComparisonOperator> comparisons;
  bool any = false;
  bool json = false;
};

constexpr const char* criteriaName = "TAG OP VALUE";

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

enmFileTag tagNamed(const std::string& text) {
  std::optional<enmFileTag> tag;
  LRKRunner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      if (row.stored && equalNoCase(row.name, text)) tag = row.tag;
    } else if constexpr (isValueRow<Row>) {
      if (equalNoCase(row.name, text)) tag = row.tag;
    }
  });
  if (tag) return *tag;
  const std::int32_t number = isNumber(text) ? leadingInteger(text) : 0;
  if (number < etagRunnerID || number > etagRunnerCourseLength) {
    throw CLI::ValidationError(criteriaName, "'" + text + "' is no property of a runner");
  }
  return static_cast<enmFileTag>(number);
}

enmComparisonOperator comparisonNamed(const std::string& text) {
  constexpr std::pair<std::string_view, enmComparisonOperator> comparisons[] = {
      {"=", ecopEqual},    {"!=", ecopNotEqual},        {"<", ecopLessThan},
      {">", ecopMoreThan}, {"<=", ecopLessThanOrEqual}, {">=", ecopMoreThanOrEqual},
  };
  for (const auto& [name, comparison] : comparisons) {
    if (text == name) return comparison;
  }
  throw CLI::ValidationError(criteriaName, "'" + text + "' is none of = != < > <= >=");
}

// The words of the IOF; a word that is not known reads as the first value of its enumeration, which
// has one word only.
std::optional<enmStatus> wordAs(std::string_view text, enmStatus) {
  const enmStatus status = statusFromIof(text);
  return status != estaOK || equalNoCase(text, iofStatusText(estaOK)) ? std::optional(status)
                                                                      : std::nullopt;
}
std::optional<enmIDType> wordAs(std::string_view text, enmIDType) {
  const enmIDType type = idTypeFromIof(text);
  return type != eidtInt || equalNoCase(text, iofIDTypeText(eidtInt)) ? std::optional(type)
                                                                      : std::nullopt;
}
std::optional<enmGender> wordAs(std::string_view text, enmGender) {
  const enmGender gender = genderFromIof(text);
  return gender != egndUnknown ? std::optional(gender) : std::nullopt;
}

template <class T>
TagValue valueAs(const std::string& text) {
  if constexpr (std::is_same_v<T, std::string>) {
    return text;
  } else if constexpr (std::is_same_v<T, Date>) {
    if (const auto date = dateFromIso(text)) return *date;
    throw CLI::ValidationError(criteriaName, "'" + text + "' is not a date like 1990-05-17");
  } else {
    if (wholeNumber(text)) return text;
    if constexpr (std::is_enum_v<T>) {
      if (const auto value = wordAs(text, T{})) return toTagValue(*value);
    }
    throw CLI::ValidationError(criteriaName, "'" + text + "' is not a value of the property");
  }
}

TagValue valueFor(enmFileTag tag, const std::string& text) {
  TagValue value;
  const bool isProperty = visitRow<LRKRunner>(tag, [&](const auto& row) {
    value = valueAs<typename std::decay_t<decltype(row)>::Type>(text);
  });
  return isProperty ? value : valueAs<int>(text);  // a list of punches has a count
}

void readCriteria(SearchOptions& options, const std::vector<std::string>& words) {
  if (words.size() % 3 != 0) {
    throw CLI::ValidationError(criteriaName, "every condition has three words");
  }
  for (std::size_t i = 0; i < words.size(); i += 3) {
    const enmFileTag tag = tagNamed(words[i]);
    options.comparisons[tag] = comparisonNamed(words[i + 1]);
    if (!options.find.try_emplace(tag, valueFor(tag, words[i + 2])).second) {
      throw CLI::ValidationError(criteriaName, "'" + words[i] + "' has two conditions");
    }
  }
}

// A line per runner, fields apart by tabs.
void writeLine(Output& output, const LRKRunner& runner) {
  const Time time = runner.resultTime();
  const enmTimeAccuracy accuracy = std::min(getTimeAccuracy(time), etacSeconds);
  output.write(oneLine(runner.categoryName()) + "\t" + oneLine(runner.name()) + "\t" +
               oneLine(runner.club()) + "\t" + timeToString(time, etstHMS, accuracy, true, "::.") +
               "\t" + std::string(iofStatusText(runner.status())) + "\n");
}

void writeObject(JsonWriter& json, const LRKRunner& runner) {
  const auto text = [&json](const char* key, std::string_view value) {
    json.key(key);
    json.text(value);
  };
  json.newLine();
  json.beginObject();
  text("category", runner.categoryName());
  json.key("runnerIndex");
  json.number(std::int64_t{runner.runnerIndex()});
  text("name", runner.name());
  text("club", runner.club());
  text("status", iofStatusText(runner.status()));
  json.key("resultTime");
  const Time time = runner.resultTime();
  isDisq(time) ? json.null() : json.number(std::int64_t{time});
  json.endObject();
}

int search(const SearchOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  std::vector<LRKRunner> runners;
  input.event->searchRunners(runners, options.find, options.comparisons, options.any);
  if (interrupted()) return exitInterrupted;

  Output output(options.common.output);
  if (options.json) {
    JsonWriter json(output);
    json.beginArray();
    for (const LRKRunner& runner : runners) writeObject(json, runner);
    json.endArray();
  } else {
    for (const LRKRunner& runner : runners) writeLine(output, runner);
  }
  return output.close() ? input.exitCode : exitFailed;
}

}  // namespace

Run declareSearch(CLI::App& command) {
  const auto options = std::make_shared<SearchOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  command
      .add_option_function<std::vector<std::string>>(
          "CONDITIONS",
          [options](const std::vector<std::string>& words) { readCriteria(*options, words); },
          "A property, one of = != < > <= >=, and a value; texts may have wildcards")
      ->type_name(criteriaName)
      ->required();
  command.add_flag("--any", options->any, "One condition is enough");
  command.add_flag("--json", options->json, "Print JSON");
  addCommonOptions(command, options->common);
  return [options] { return search(*options); };
}

}  // namespace larkstone::cli
