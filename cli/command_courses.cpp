// larkstone courses: what the runners of each category ran, and the course of each type that fits.

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/course_determinator.hpp"

#include "cli/analysis_json.hpp"
#include "cli/analysis_options.hpp"
#include "cli/course_choice.hpp"
#include "cli/event_input.hpp"
#include "cli/forkings.hpp"
#include "cli/interrupt.hpp"
#include "cli/json_writer.hpp"
#include "cli/output.hpp"
#include "cli/program.hpp"

namespace larkstone::cli {

namespace {

struct CoursesOptions {
  CommonOptions common;
  std::string file;
  std::vector<std::string> categories;
  bool json = false;
};

// How the course of a type is looked for, and by which policy runners fit it.
struct CourseStyle {
  enmCourseType type;
  bool allowFragmentation;
  enmRequiredLegs requiredLegs;
  bool allowRearrangement;
  bool allowMerging;
};
constexpr CourseStyle courseStyles[] = {
    {ectyNormal, false, erqlExactlyAll, false, false},
    {ectyRelay, false, erqlAll, false, true},
    {ectyOneManRelay, false, erqlExactlyAll, true, false},
    {ectyCommonLegs, true, erqlAll, true, false},
    {ectyRogaining, true, erqlAtLeastOne, true, false},
};

struct FoundCourse {
  enmCourseType type = ectyNormal;
  LRKLegs legs;
  int runners = 0;
};

// Whether a runner fits a course depends on the controls alone, so that one runner per sequence is
// asked for all who ran it.
class CoursesOfCategory {
 public:
  explicit CoursesOfCategory(const LRKCategory& category);

  /// The sequences run, those of most runners first.
  const std::vector<Sequence>& forkings() const { return forkings_; }
  FoundCourse find(const CourseStyle& style);

 private:
  int runnersFitting(const LRKLegs& legs, const CourseStyle& style) const;
  int runnersWithAnyOf(const LRKLegs& legs) const;

  std::vector<Sequence> sequences_;  // in the order of first appearance
  std::vector<Sequence> forkings_;
  int template_ = 0;       // who of the determinator's runners ran what most ran
  LRKCategory oneOfEach_;  // one runner per sequence
  LRKCourseDeterminator determinator_;
};

CoursesOfCategory::CoursesOfCategory(const LRKCategory& category)
    : sequences_(sequencesOf(category, [](const LRKRunner&) { return true; })),
      forkings_(sequences_) {
  std::stable_sort(forkings_.begin(), forkings_.end(),
                   [](const Sequence& a, const Sequence& b) { return a.runners > b.runners; });
  for (const Sequence& sequence : sequences_) {
    LRKRunner runner;
    runner.punches(category.runner(sequence.firstRunner).punches());
    oneOfEach_.addRunner(std::move(runner));
  }
  // Entries without controls say nothing of the course where others have some.
  const auto most = std::find_if(forkings_.begin(), forkings_.end(), [&](const Sequence& sequence) {
    return hasControls(category.runner(sequence.firstRunner));
  });
  const bool allCount = most == forkings_.end();
  int added = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    if (!allCount && !hasControls(category.runner(i))) continue;
    if (!allCount && i == most->firstRunner) template_ = added;
    determinator_.addRunner(category.runner(i));
    ++added;
  }
}

FoundCourse CoursesOfCategory::find(const CourseStyle& style) {
  FoundCourse course;
  course.type = style.type;
  if (forkings_.empty()) return course;
  course.legs = determinator_.getCourseLegs(style.type, style.allowFragmentation, template_);
  if (course.legs.count() > 0) course.runners = runnersFitting(course.legs, style);
  return course;
}

int CoursesOfCategory::runnersFitting(const LRKLegs& legs, const CourseStyle& style) const {
  // A course of thousands of legs, each of which somebody ran: mapping every runner onto all of
  // them would tell no more than that.
  if (style.requiredLegs == erqlAtLeastOne) return runnersWithAnyOf(legs);
  const LRKCourse course = toCourse(oneOfEach_, style.requiredLegs,
                                    {legs, style.allowRearrangement, style.allowMerging});
  int runners = 0;
  for (int i = 0; i < course.noOfRunners(); ++i) {
    runners += sequences_[static_cast<std::size_t>(course.runner(i).runnerIndex())].runners;
  }
  return runners;
}

int CoursesOfCategory::runnersWithAnyOf(const LRKLegs& legs) const {
  std::set<std::pair<Code, Code>> known;
  for (int i = 0; i < legs.count(); ++i) known.emplace(legs.beginCode(i), legs.endCode(i));
  int runners = 0;
  for (const Sequence& sequence : sequences_) {
    const auto& codes = sequence.codes;
    const auto hit = std::adjacent_find(codes.begin(), codes.end(), [&known](Code begin, Code end) {
      return known.count({begin, end}) != 0;
    });
    if (hit != codes.end()) runners += sequence.runners;
  }
  return runners;
}

std::string textOf(const LRKLegs& legs) { return legs.codesToString("S", "F"); }

std::string textOf(const LRKCategory& category, const Sequence& sequence) {
  return category.runner(sequence.firstRunner).punches().codesToString();
}

std::string counted(int count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// Both ways to write a category return false when the user asked to stop.
bool writeText(Output& output, const LRKCategory& category) {
  output.write(displayName(category.name()) + ": " + counted(category.noOfRunners(), "runner") +
               "\n");
  if (category.noOfRunners() == 0) return true;
  CoursesOfCategory courses(category);
  for (const Sequence& forking : courses.forkings()) {
    const std::string codes = textOf(category, forking);
    output.write("  " + counted(forking.runners, "runner") + ": " +
                 (codes.empty() ? "no punches" : codes) + "\n");
  }
  for (const CourseStyle& style : courseStyles) {
    if (interrupted()) return false;
    const FoundCourse course = courses.find(style);
    output.write(std::string("  ") + nameOf(course.type) + ": ");
    output.write(course.legs.count() == 0
                     ? "none\n"
                     : counted(course.runners, "runner") + ", " +
                           counted(course.legs.count(), "leg") + ": " + textOf(course.legs) + "\n");
  }
  return true;
}

void writeNumber(JsonWriter& json, const char* name, int value) {
  json.key(name);
  json.number(std::int64_t{value});
}

void writeJsonText(JsonWriter& json, const char* name, const std::string& value) {
  json.key(name);
  json.text(value);
}

void writeForking(JsonWriter& json, const LRKCategory& category, const Sequence& forking) {
  json.newLine();
  json.beginObject();
  writeJsonText(json, "codes", textOf(category, forking));
  writeNumber(json, "noOfRunners", forking.runners);
  json.endObject();
}

void writeCourse(JsonWriter& json, const FoundCourse& course) {
  json.newLine();
  json.beginObject();
  writeNumber(json, "courseType", course.type);
  writeNumber(json, "noOfLegs", course.legs.count());
  writeJsonText(json, "legs", textOf(course.legs));
  writeNumber(json, "noOfRunners", course.runners);
  json.endObject();
}

bool writeJson(JsonWriter& json, const LRKCategory& category) {
  CoursesOfCategory courses(category);
  json.newLine();
  json.beginObject();
  writeJsonText(json, "name", category.name());
  writeNumber(json, "noOfRunners", category.noOfRunners());
  writeNumber(json, "courseType", category.courseType());
  json.key("forkings");
  json.beginArray();
  for (const Sequence& forking : courses.forkings()) writeForking(json, category, forking);
  json.endArray();
  json.key("courses");
  json.beginArray();
  for (const CourseStyle& style : courseStyles) {
    if (interrupted()) return false;
    writeCourse(json, courses.find(style));
  }
  json.endArray();
  json.endObject();
  return true;
}

int coursesCommand(const CoursesOptions& options) {
  const InterruptGuard guard;
  const EventInput input = openInput(options.file, options.common);
  if (!input.event) return input.exitCode;
  std::vector<int> indices;
  if (!findCategories(*input.event, options.file, options.categories, indices)) return exitFailed;

  Output output(options.common.output);
  JsonWriter json(output);
  if (options.json) {
    json.beginObject();
    writeEventHead(json, *input.event);
    json.key("categories");
    json.beginArray();
  }
  for (const int index : indices) {
    const auto category = input.event->category(index);
    if (!category) continue;
    const bool done = options.json ? writeJson(json, *category) : writeText(output, *category);
    if (!done) return exitInterrupted;
  }
  if (options.json) {
    json.endArray();
    json.endObject();
  }
  return output.close() ? input.exitCode : exitFailed;
}

}  // namespace

Run declareCourses(CLI::App& command) {
  const auto options = std::make_shared<CoursesOptions>();
  command.add_option("FILE", options->file, "An event file or a result list")->required();
  command.add_flag("--json", options->json, "Print JSON");
  addCategoryOption(command, options->categories);
  addCommonOptions(command, options->common);
  return [options] { return coursesCommand(*options); };
}

}  // namespace larkstone::cli
