#include "cli/analysis_options.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_set>

#include <CLI/CLI.hpp>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"

#include "cli/course_choice.hpp"
#include "cli/interrupt.hpp"
#include "cli/output.hpp"
#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

constexpr double longestSeconds = 100000;

struct SortKeyName {
  enmSort key;
  std::string_view name;
};
constexpr SortKeyName sortKeys[] = {
#define LRK_SORT_KEY(number, name) {name, #name},
#include "larkstone/core/sort_keys.def"
};

std::optional<enmSort> sortKeyNamed(std::string_view text) {
  constexpr std::string_view prefix = "esor";
  for (const SortKeyName& entry : sortKeys) {
    if (entry.key > esorUnsorted && equalNoCase(entry.name.substr(prefix.size()), text)) {
      return entry.key;
    }
  }
  return equalNoCase(text, "unsorted") ? std::optional(esorUnsorted) : std::nullopt;
}

std::vector<std::string_view> partsOf(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

// A leg's number, counted from 1.
std::optional<int> legNumber(std::string_view text) {
  const bool isNumber = !text.empty() && text.size() <= 5 &&
                        text.find_first_not_of("0123456789") == std::string_view::npos;
  const int number = isNumber ? leadingInteger(text) : 0;
  return number >= 1 && number <= LRK_MAX_LIST ? std::optional(number) : std::nullopt;
}

SortOption sortOption(const std::string& text) {
  const CLI::ValidationError refusal("--sort", "'" + text + "' is not KEY[:LEG][:desc]");
  std::vector<std::string_view> parts = partsOf(text, ':');
  SortOption option;
  const std::optional<enmSort> key = sortKeyNamed(parts.front());
  if (!key) throw refusal;
  option.key = *key;
  if (parts.size() > 1 && parts.back() == "desc") {
    option.ascending = false;
    parts.pop_back();
  }
  if (parts.size() == 1) return option;
  const std::optional<int> leg = legNumber(parts[1]);
  if (parts.size() > 2 || !leg) throw refusal;
  option.legNo = *leg - 1;
  return option;
}

// SECONDS,SECONDS: up to the first gap two runners are together, beyond the second they are apart.
std::array<Time, 2> breakpointsOption(const std::string& text) {
  const auto refuse = [&text](const std::string& why) {
    throw CLI::ValidationError("--breakpoints", "'" + text + "' " + why);
  };
  const std::vector<std::string_view> parts = partsOf(text, ',');
  if (parts.size() != 2) refuse("is not SECONDS,SECONDS");
  std::array<Time, 2> breakpoints{};
  for (std::size_t i = 0; i < 2; ++i) {
    const std::optional<double> seconds = wholeNumber(parts[i]);
    if (!seconds) refuse("is not SECONDS,SECONDS");
    if (*seconds < 0 || *seconds > longestSeconds) refuse("is out of range");
    breakpoints[i] = roundHalfEven(*seconds * 100);
  }
  if (breakpoints[0] > breakpoints[1]) refuse("has the larger gap first");
  return breakpoints;
}

template <class Value>
void addChoice(CLI::App& command, const std::string& name, Value& value, const std::string& help,
               const std::map<std::string, Value>& choices) {
  std::string names;
  for (const auto& [text, unused] : choices) names += (names.empty() ? "" : "|") + text;
  command.add_option(name, value, help)
      ->transform(CLI::CheckedTransformer(choices))
      ->type_name(names);
}

std::string isShare(const std::string& text) {
  double share = 0;
  if (CLI::detail::lexical_cast(text, share) && share >= 0 && share <= 1) return {};
  return "'" + text + "' is not a share from 0 to 1 (20 % is 0.2)";
}

void addTimeLossOptions(CLI::App& command, AnalysisOptions& options) {
  addChoice<enmTimeLossCalculationMethod>(
      command, "--time-loss-method", options.timeLossMethod,
      "What lost time is measured against: the fastest group's time (top) or the best (best)",
      {{"top", etlcCompareToTopTime}, {"best", etlcCompareToBestTime}});
  command.add_option("--time-loss-time", options.timeLossSeconds, "A time loss is above this time")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, longestSeconds))
      ->capture_default_str();
  command
      .add_option("--time-loss-percent", options.timeLossPercent,
                  "A time loss is above this share of the expected time")
      ->type_name("P")
      ->check(isShare)
      ->capture_default_str();
  command.add_flag("--time-loss-either", options.timeLossEither, "One of the two is enough");
  command
      .add_option("--time-loss-percentile", options.timeLossPercentile,
                  "Which of a runner's legs counts as normal speed")
      ->type_name("P")
      ->check(CLI::Range(0.0, 1.0))
      ->capture_default_str();
  command.add_flag("--without-time-loss", options.withoutTimeLoss,
                   "Take the time loss out of the times");
}

void addFollowingOptions(CLI::App& command, AnalysisOptions& options) {
  addChoice<enmPFIndexCalculationMethod>(
      command, "--following-method", options.followingMethod,
      "Following: the closest runner counts (basic), or all met on a leg together (extended)",
      {{"basic", elfiBasic}, {"extended", elfiExtended}});
  command
      .add_option_function<std::string>(
          "--breakpoints",
          [&options](const std::string& text) { options.breakpoints = breakpointsOption(text); },
          "Runners are together up to the first gap and apart beyond the second")
      ->type_name("SECONDS,SECONDS")
      ->default_str("7,20");
}

int categoryNamed(const LRKEvent& event, const std::string& name) {
  const auto find = [&](auto equal) {
    for (int i = 0; i < event.noOfCategories(); ++i) {
      if (equal(event.categoryName(i))) return i;
    }
    return -1;
  };
  const int exact = find([&name](const std::string& other) { return other == name; });
  return exact >= 0 ? exact
                    : find([&name](const std::string& other) { return equalNoCase(other, name); });
}

}  // namespace

void addCategoryOption(CLI::App& command, std::vector<std::string>& names) {
  command.add_option("-c,--category", names, "A category by name; may be repeated")
      ->type_name("NAME")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void addAnalysisOptions(CLI::App& command, AnalysisOptions& options) {
  addCategoryOption(command, options.categories);
  addChoice<enmRequiredLegs>(command, "--required-legs", options.requiredLegs,
                             "Which legs of the course a runner must have run",
                             {{"exactly-all", erqlExactlyAll},
                              {"all", erqlAll},
                              {"at-least-one", erqlAtLeastOne},
                              {"none", erqlNone}});
  command.add_flag("--rearrange", options.rearrange, "Legs may have been run in any order");
  command.add_flag("--merge", options.merge, "A leg may have been run over other controls");
  addChoice<int>(command, "--accuracy", options.accuracy, "Cut times to this accuracy",
                 {{"auto", etacAuto},
                  {"hundredths", etacHundredthsSeconds},
                  {"tenths", etacTenthsSeconds},
                  {"seconds", etacSeconds}});
  addTimeLossOptions(command, options);
  addFollowingOptions(command, options);
  command
      .add_option("--top-percentile", options.topPercentile,
                  "The share of the runners who make up a leg's top time")
      ->type_name("P")
      ->check(CLI::Range(0.0, 1.0))
      ->capture_default_str();
  command.add_flag("--no-time-correction", options.noTimeCorrection,
                   "Leave zero and negative leg times as they are");
  command.add_option("--flags", options.flags, "Calculation stages, a sum of 1, 2, 4, 8 and 16")
      ->type_name("N")
      ->check(CLI::Range(0, static_cast<int>(eccfComplete)));
  command
      .add_option_function<std::string>(
          "--sort", [&options](const std::string& text) { options.sort = sortOption(text); },
          "Order of the runners, e.g. resultTime or legTime:3:desc (leg 1 is the first)")
      ->type_name("KEY[:LEG][:desc]");
  command
      .add_option("--course-legs", options.courseLegs,
                  "The course: what most runners ran, the first runner's, or its controls")
      ->type_name("auto|first|S-31-32-F")
      ->check([](const std::string& text) {
        return isCourseText(text) ? std::string() : "'" + text + "' is no course";
      })
      ->capture_default_str();
}

bool findCategories(const LRKEvent& event, const std::string& file,
                    const std::vector<std::string>& names, std::vector<int>& indices) {
  indices.clear();
  for (const std::string& name : names) {
    const int index = categoryNamed(event, name);
    if (index < 0) {
      sayError(file, "no category named '" + name + "'");
      return false;
    }
    indices.push_back(index);
  }
  if (names.empty()) {
    for (int i = 0; i < event.noOfCategories(); ++i) indices.push_back(i);
  }
  return true;
}

std::unique_ptr<LRKCourse> calculatedCourse(const LRKCategory& category,
                                            const AnalysisOptions& options,
                                            const CommonOptions& common) {
  CourseChoice choice = courseFromText(options.courseLegs, category).value_or(CourseChoice{});
  choice.allowRearrangement = choice.allowRearrangement || options.rearrange;
  choice.allowMerging = choice.allowMerging || options.merge;
  auto course =
      std::make_unique<LRKCourse>(toCourse(category, options.requiredLegs, std::move(choice)));
  if (options.accuracy >= 0) course->timeAccuracy(static_cast<enmTimeAccuracy>(options.accuracy));
  course->timeLossCalculationMethod(options.timeLossMethod);
  course->timeLossConditionTime(roundHalfEven(options.timeLossSeconds * 100));
  course->timeLossConditionPercent(options.timeLossPercent);
  course->timeLossConditionBoth(!options.timeLossEither);
  course->timeLossPercentile(options.timeLossPercentile);
  course->topPercentile(options.topPercentile);
  course->timesWithoutTimeLoss(options.withoutTimeLoss);
  course->correctZeroAndNegativeTimes(!options.noTimeCorrection);
  course->pfIndexCalculationMethod(options.followingMethod);
  course->indexBreakpoint(0, options.breakpoints[0]);
  course->indexBreakpoint(1, options.breakpoints[1]);
  const auto flags =
      static_cast<enmCourseCalculationFlags>(options.flags.value_or(int{eccfComplete}));
  {
    Progress progress(common, category.name());
    course->onAction([&progress](std::string_view, float fraction) {
      progress.show(static_cast<double>(fraction));
    });
    course->calculate(flags);
    course->onAction({});
  }
  return course;
}

int legToSortBy(const LRKCourse& course, const SortOption& sort, const CommonOptions& common,
                int& exitCode) {
  if (sort.legNo < course.noOfLegs() || course.noOfRunners() == 0) return sort.legNo;
  sayWarning(common, displayName(course.name()),
             "there is no leg " + std::to_string(sort.legNo + 1) + " to sort by, but " +
                 std::to_string(course.noOfLegs()) + "; the last one is taken");
  exitCode = exitWarning;
  return -1;
}

int sortRunners(LRKCourse& course, const SortOption& sort, const CommonOptions& common) {
  int exitCode = exitDone;
  const int leg = legToSortBy(course, sort, common, exitCode);
  course.sortRunners(sort.key, leg, sort.ascending);
  return exitCode;
}

std::vector<const LRKRunner*> refusedRunners(const LRKCategory& category, const LRKCourse& course) {
  std::unordered_set<int> accepted;
  for (int i = 0; i < course.noOfRunners(); ++i) accepted.insert(course.runner(i).runnerIndex());
  std::vector<const LRKRunner*> refused;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    if (!accepted.contains(runner.runnerIndex())) refused.push_back(&runner);
  }
  return refused;
}

int checkRunners(const LRKCourse& course, const LRKCategory& category,
                 const AnalysisOptions& options, const CommonOptions& common) {
  if (course.noOfRunners() > 0 || category.noOfRunners() == 0) return exitDone;
  const bool isGiven = options.courseLegs != "auto" && options.courseLegs != "first";
  sayWarning(common, displayName(category.name()),
             "no runner fits the course" + (isGiven ? " " + options.courseLegs : std::string()));
  return exitWarning;
}

int forEachCourse(LRKEvent& event, const std::vector<int>& categories,
                  const AnalysisOptions& options, const CommonOptions& common,
                  const std::function<int(LRKCourse&, const LRKCategory&)>& use) {
  int exitCode = exitDone;
  for (const int index : categories) {
    const auto category = event.category(index);
    if (!category) continue;
    const auto course = calculatedCourse(*category, options, common);
    exitCode = std::max(
        {exitCode, checkRunners(*course, *category, options, common), use(*course, *category)});
    if (interrupted()) return exitInterrupted;
  }
  return exitCode;
}

}  // namespace larkstone::cli
