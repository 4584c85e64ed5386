#include "cli/analysis_json.hpp"

#include <string>
#include <string_view>

#include "larkstone/core/iof_texts.hpp"

#include "cli/stages.hpp"

namespace larkstone::cli {

namespace {

// Writes keys with their values; times that are not valid are null.
class Fields {
 public:
  explicit Fields(JsonWriter& json) : json_(json) {}

  void text(std::string_view key, std::string_view value) {
    json_.key(key);
    json_.text(value);
  }
  void number(std::string_view key, std::int64_t value) {
    json_.key(key);
    json_.number(value);
  }
  void single(std::string_view key, float value, bool isThere = true) {
    json_.key(key);
    isThere ? json_.number(value) : json_.null();
  }
  void real(std::string_view key, double value) {
    json_.key(key);
    json_.number(value);
  }
  void boolean(std::string_view key, bool value) {
    json_.key(key);
    json_.boolean(value);
  }
  void time(std::string_view key, Time value) {
    json_.key(key);
    time(value);
  }
  void numberOrNull(std::string_view key, std::int64_t value, bool isThere) {
    json_.key(key);
    isThere ? json_.number(value) : json_.null();
  }
  void null(std::string_view key) {
    json_.key(key);
    json_.null();
  }
  void time(Time value) { isDisq(value) ? json_.null() : json_.number(std::int64_t{value}); }

 private:
  JsonWriter& json_;
};

template <class Write>
void forEachStyle(JsonWriter& json, std::string_view key, Write write) {
  json.key(key);
  json.beginArray();
  for (int style = 0; style < LRK_LEG_STYLES; ++style) write(static_cast<enmLegStyle>(style));
  json.endArray();
}

// A pair of values of the leg alone and in total, null when their stage did not run.
template <class Write>
void legAndTotal(JsonWriter& json, std::string_view key, bool isThere, Write write) {
  json.key(key);
  json.beginArray();
  for (const enmLegStyle style : {elstLeg, elstTotal}) isThere ? write(style) : json.null();
  json.endArray();
}

void writeLeg(JsonWriter& json, const LRKCourse& course, const Stages& stages, int i) {
  Fields fields(json);
  json.newLine();
  json.beginObject();
  fields.number("beginCode", course.legs().beginCode(i));
  fields.number("endCode", course.legs().endCode(i));
  fields.text("ordinal", course.legs().ordinalString(i, "S", "F"));
  fields.number("length", course.legs().length(i));
  forEachStyle(json, "bestTime", [&](enmLegStyle style) {
    fields.time(stages.style(style) ? course.bestTime(i, style) : LRK_NO_TIME);
  });
  forEachStyle(json, "noOfQualifiedRunners", [&](enmLegStyle style) {
    stages.style(style) ? json.number(std::int64_t{course.noOfQualifiedRunners(i, style)})
                        : json.null();
  });
  fields.number("noOfExistingRunners", course.noOfExistingRunners(i));
  fields.time("legTopTime", course.legTopTime(i, etacHundredthsSeconds));
  fields.time("averageTime", course.averageTime(i, elstLeg, etacHundredthsSeconds));
  fields.time("idealTime", course.idealTime(i));
  fields.real("normalizedLength", course.normalizedLength(i));
  fields.real("accumulatedNormalizedLength", course.accumulatedNormalizedLength(i));
  fields.numberOrNull("noOfTimeLossRunners", course.noOfTimeLossRunners(i), stages.timeLoss);
  fields.single("timeLossFrequency", course.timeLossFrequency(i), stages.timeLoss);
  json.endObject();
}

void writePunches(JsonWriter& json, std::string_view key, const LRKPunches& punches) {
  Fields fields(json);
  json.key(key);
  json.beginArray();
  for (int i = 0; i < punches.count(); ++i) {
    json.beginArray();
    json.number(std::int64_t{punches.code(i)});
    fields.time(punches.time(i));
    json.boolean(punches.isEstimated(i));
    json.endArray();
  }
  json.endArray();
}

// Runners met on a leg: positions in the course, each with the share of the leg.
template <class Index, class Value>
void writePartners(JsonWriter& json, std::string_view key, int count, Index index, Value value) {
  json.key(key);
  json.beginArray();
  for (int k = 0; k < count; ++k) {
    json.beginArray();
    json.number(std::int64_t{index(k)});
    json.number(value(k));
    json.endArray();
  }
  json.endArray();
}

void writeFollowing(JsonWriter& json, const LRKRunner& runner, const Stages& stages, int i) {
  Fields fields(json);
  fields.single("followingIndex", runner.followingIndex(i), stages.following);
  fields.single("pullIndex", runner.pullIndex(i), stages.following);
  legAndTotal(json, "followingBenefitTime", stages.following, [&](enmLegStyle style) {
    json.number(std::int64_t{runner.followingBenefitTime(i, style)});
  });
  if (!stages.following) {
    fields.null("followed");
    fields.null("pulled");
    return;
  }
  writePartners(
      json, "followed", runner.noOfFollowedRunners(i),
      [&](int k) { return runner.followedRunnerIndex(i, k); },
      [&](int k) { return runner.followedRunnerIndexValue(i, k); });
  writePartners(
      json, "pulled", runner.noOfPulledRunners(i),
      [&](int k) { return runner.pulledRunnerIndex(i, k); },
      [&](int k) { return runner.pulledRunnerIndexValue(i, k); });
}

void writeRunnerLeg(JsonWriter& json, const LRKRunner& runner, const Stages& stages, int i) {
  Fields fields(json);
  json.beginObject();
  fields.number("beginPunchIndex", runner.legs().beginPunchIndex(i));
  fields.number("endPunchIndex", runner.legs().endPunchIndex(i));
  const auto times = runner.times(i);
  forEachStyle(json, "time",
               [&](enmLegStyle style) { fields.time(times[static_cast<std::size_t>(style)]); });
  fields.boolean("timeIsEstimated", runner.timeIsEstimated(i, elstLeg));
  forEachStyle(json, "place", [&](enmLegStyle style) {
    stages.style(style) ? json.number(std::int64_t{runner.place(i, style)}) : json.null();
  });
  legAndTotal(json, "timeLoss", stages.timeLoss,
              [&](enmLegStyle style) { json.number(std::int64_t{runner.timeLoss(i, style)}); });
  legAndTotal(json, "performanceIndex", stages.indices,
              [&](enmLegStyle style) { json.number(runner.performanceIndex(i, style)); });
  writeFollowing(json, runner, stages, i);
  json.endObject();
}

void writeRunner(JsonWriter& json, const LRKCourse& course, const Stages& stages,
                 const LRKRunner& runner) {
  Fields fields(json);
  json.newLine();
  json.beginObject();
  fields.number("runnerIndex", runner.runnerIndex());
  fields.number("categoryIndex", runner.categoryIndex());
  fields.text("name", runner.name());
  fields.text("club", runner.club());
  fields.text("status", iofStatusText(runner.status()));
  fields.time("resultTime", runner.resultTime());
  fields.numberOrNull("resultPlace", runner.resultPlace(), runner.resultPlaceSet());
  fields.numberOrNull("sortPlace", runner.sortPlace(), runner.sortPlaceSet());
  fields.number("requiredLegsValueUsed", runner.requiredLegsValueUsed());
  fields.boolean("rearrangementValueUsed", runner.rearrangementValueUsed());
  fields.boolean("mergingValueUsed", runner.mergingValueUsed());
  fields.numberOrNull("noOfTimeLossLegs", runner.noOfTimeLossLegs(), stages.timeLoss);
  fields.single("coursePercentualTimeLoss", runner.coursePercentualTimeLoss(), stages.timeLoss);
  fields.single("coursePerformanceIndex", runner.coursePerformanceIndex(), stages.indices);
  fields.single("coursePerformanceIndexWithoutTimeLoss",
                runner.coursePerformanceIndexWithoutTimeLoss(), stages.indices);
  fields.single("courseFollowingIndex", runner.courseFollowingIndex(), stages.following);
  fields.single("coursePullIndex", runner.coursePullIndex(), stages.following);
  writePunches(json, "punches", runner.punches());
  writePunches(json, "extraPunches", runner.extraPunches());
  json.key("legs");
  json.beginArray();
  for (int i = 0; i < course.noOfLegs(); ++i) writeRunnerLeg(json, runner, stages, i);
  json.endArray();
  json.endObject();
}

void writeRefused(JsonWriter& json, const LRKCourse& course, const LRKCategory& category) {
  json.key("refused");
  json.beginArray();
  for (const LRKRunner* runner : refusedRunners(category, course)) {
    Fields fields(json);
    json.beginObject();
    fields.number("runnerIndex", runner->runnerIndex());
    fields.text("name", runner->name());
    json.endObject();
  }
  json.endArray();
}

void writeCourse(JsonWriter& json, const LRKCourse& course, const LRKCategory& category) {
  const Stages stages(course);
  Fields fields(json);
  json.newLine();
  json.beginObject();
  fields.text("name", course.name());
  fields.number("categoryIndex", category.categoryIndex());
  fields.boolean("isCategoryCourse", course.isCategoryCourse());
  fields.number("timeAccuracy", course.timeAccuracy());
  fields.number("calculationFlags", course.calculationFlags());
  fields.boolean("allRunnersHaveTheSameCodes", course.allRunnersHaveTheSameCodes());
  fields.boolean("runnersFromMultipleCategories", course.runnersFromMultipleCategories());
  writeRefused(json, course, category);
  json.key("legs");
  json.beginArray();
  for (int i = 0; i < course.noOfLegs(); ++i) writeLeg(json, course, stages, i);
  json.endArray();
  json.key("runners");
  json.beginArray();
  for (int i = 0; i < course.noOfRunners(); ++i) {
    writeRunner(json, course, stages, course.runner(i));
  }
  json.endArray();
  json.endObject();
}

}  // namespace

void writeEventHead(JsonWriter& json, const LRKEvent& event) {
  Fields fields(json);
  json.key("event");
  json.beginObject();
  fields.text("name", event.name());
  if (event.startDateSet()) {
    fields.text("startDate", toIsoText(dateOf(calendarOf(event.startDate()))));
  } else {
    fields.null("startDate");
  }
  if (event.importedFromSet()) {
    fields.text("importedFrom", event.importedFrom());
  } else {
    fields.null("importedFrom");
  }
  json.endObject();
}

int writeAnalysis(JsonWriter& json, LRKEvent& event, const std::vector<int>& categories,
                  const AnalysisOptions& options, const CommonOptions& common) {
  json.beginObject();
  writeEventHead(json, event);
  json.key("courses");
  json.beginArray();
  const int exitCode = forEachCourse(event, categories, options, common,
                                     [&](LRKCourse& course, const LRKCategory& category) {
                                       const int sorted = sortRunners(course, options.sort, common);
                                       writeCourse(json, course, category);
                                       return sorted;
                                     });
  json.endArray();
  json.endObject();
  return exitCode;
}

}  // namespace larkstone::cli
