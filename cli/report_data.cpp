#include "cli/report_data.hpp"

#include <unordered_map>

#include "larkstone/online/table.hpp"

#include "cli/analysis_options.hpp"
#include "cli/captions.hpp"
#include "cli/json_writer.hpp"
#include "cli/stages.hpp"

namespace larkstone::cli {

namespace {

template <class Write>
std::string jsonOf(Write write) {
  TextBuffer buffer;
  JsonWriter json(buffer, JsonWriter::Form::compact);
  write(json);
  return buffer.take();
}

void put(JsonWriter& json, std::string_view key, std::string_view text) {
  json.key(key);
  json.text(text);
}

void putTime(JsonWriter& json, Time time) {
  isDisq(time) ? json.null() : json.number(std::int64_t{time});
}

// A list with what value(json, leg) writes for each leg.
template <class Value>
void putLegs(JsonWriter& json, std::string_view key, int legs, Value value) {
  json.key(key);
  json.beginArray();
  for (int leg = 0; leg < legs; ++leg) value(leg);
  json.endArray();
}

// How the runners, by their number in the category, stand in the order of a heading's sort link.
std::unordered_map<int, int> ranksBy(LRKCourse& course, enmSort key) {
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.sort(key);
  std::unordered_map<int, int> ranks;
  for (int i = 0; i < course.noOfRunners(); ++i) ranks[course.runner(i).runnerIndex()] = i;
  return ranks;
}

std::string_view statusName(const LRKRunner& runner) {
  switch (runner.status()) {
    case estaMisPunch:
      return "mp";
    case estaDidNotFinish:
      return "dnf";
    case estaDisqualified:
      return "disq";
    case estaDidNotStart:
      return "dns";
    default:
      return "";
  }
}

void putLeg(JsonWriter& json, const LRKCourse& course, int leg) {
  json.beginObject();
  json.key("code");
  isFinishCode(course.legs().endCode(leg)) ? json.null()
                                           : json.number(std::int64_t{course.legs().endCode(leg)});
  json.key("best");
  putTime(json, course.bestTime(leg, elstLeg));
  json.key("bestTotal");
  putTime(json, course.bestTime(leg, elstTotal));
  json.key("share");
  json.number(static_cast<float>(course.normalizedLength(leg)));
  json.endObject();
}

void putFollowed(JsonWriter& json, const LRKRunner& runner, int legs) {
  json.key("followed");
  json.beginArray();
  for (int leg = 0; leg < legs; ++leg) {
    for (int k = 0; k < runner.noOfFollowedRunners(leg); ++k) {
      json.beginArray();
      json.number(std::int64_t{leg});
      json.number(std::int64_t{runner.followedRunnerIndex(leg, k)});
      json.number(runner.followedRunnerIndexValue(leg, k));
      json.endArray();
    }
  }
  json.endArray();
}

void putEstimated(JsonWriter& json, std::string_view key, const LRKRunner& runner, int legs,
                  enmLegStyle style) {
  putLegs(json, key, legs, [&](int leg) {
    const bool isEstimated = runner.timeIsEstimated(leg, style) && !runner.isTimeDisq(leg, style);
    if (isEstimated) json.number(std::int64_t{leg});
  });
}

void putRunnerLegs(JsonWriter& json, const LRKRunner& runner, int legs, const Stages& stages) {
  const auto time = [&](enmLegStyle style) {
    return [&json, &runner, style](int leg) { putTime(json, runner.time(leg, style)); };
  };
  const auto place = [&](enmLegStyle style) {
    return [&json, &runner, style](int leg) {
      json.number(std::int64_t{runner.hasPlace(leg, style) ? runner.place(leg, style) : 0});
    };
  };
  putLegs(json, "leg", legs, time(elstLeg));
  putLegs(json, "total", legs, time(elstTotal));
  putLegs(json, "legPlace", legs, place(elstLeg));
  putLegs(json, "totalPlace", legs, place(elstTotal));
  putLegs(json, "loss", legs, [&](int leg) {
    const bool known = stages.timeLoss && !runner.isTimeDisq(leg, elstLeg);
    json.number(known ? std::int64_t{runner.timeLoss(leg, elstLeg)} : 0);
  });
  putLegs(json, "index", legs, [&](int leg) {
    const bool known = stages.indices && !runner.isTimeDisq(leg, elstLeg);
    known ? json.number(runner.performanceIndex(leg, elstLeg)) : json.null();
  });
  putEstimated(json, "estimated", runner, legs, elstLeg);
  putEstimated(json, "estimatedTotal", runner, legs, elstTotal);
  putFollowed(json, runner, stages.following ? legs : 0);
}

// What is said of every runner of a course.
struct CourseFacts {
  int legs;
  bool starts;
  Stages stages;
  std::unordered_map<int, int> rankByName;
  std::unordered_map<int, int> rankByClub;
};

void putRunner(JsonWriter& json, const LRKRunner& runner, const CourseFacts& course) {
  const Time time = runner.resultTime();
  const bool hasResult = time > 0 && !isDisq(time);
  json.beginObject();
  put(json, "name", runner.name());
  put(json, "club", runner.club());
  put(json, "status", statusName(runner));
  json.key("start");
  putTime(json, course.starts && runner.punches().startExists() ? runner.startTime() : LRK_NO_TIME);
  json.key("time");
  putTime(json, hasResult ? time : LRK_NO_TIME);
  json.key("place");
  hasResult&& runner.sortPlaceSet() ? json.number(std::int64_t{runner.sortPlace()}) : json.null();
  json.key("order");
  json.beginArray();
  json.number(std::int64_t{course.rankByName.at(runner.runnerIndex())});
  json.number(std::int64_t{course.rankByClub.at(runner.runnerIndex())});
  json.endArray();
  json.key("performance");
  course.stages.indices ? json.number(runner.coursePerformanceIndex()) : json.null();
  putRunnerLegs(json, runner, course.legs, course.stages);
  json.endObject();
}

int fractionDigits(enmTimeAccuracy accuracy) {
  return accuracy == etacHundredthsSeconds ? 2 : accuracy == etacTenthsSeconds ? 1 : 0;
}

}  // namespace

std::string eventData(const LRKEvent& event) {
  return jsonOf([&event](JsonWriter& json) {
    json.beginObject();
    put(json, "name", event.name());
    put(json, "date",
        event.startDateSet() ? toIsoText(dateOf(calendarOf(event.startDate()))) : std::string());
    put(json, "organiser", event.organiserSet() ? event.organiser() : std::string());
    json.endObject();
  });
}

std::string captionData() {
  return jsonOf([](JsonWriter& json) {
    json.beginObject();
    for (const Language& language : languages()) {
      json.key(language.code);
      json.beginObject();
      for (const Caption& caption : language.captions) put(json, caption.key, caption.text);
      json.endObject();
    }
    json.endObject();
  });
}

std::string classData(const LRKCategory& category, const LRKCourse& course) {
  return jsonOf([&](JsonWriter& json) {
    json.beginObject();
    put(json, "name", category.name());
    json.key("names");
    json.beginArray();
    for (int i = 0; i < course.noOfRunners(); ++i) json.text(course.runner(i).name());
    json.endArray();
    json.endObject();
  });
}

std::string courseData(const LRKCategory& category, LRKCourse& course) {
  const CourseFacts facts = {course.noOfLegs(), hasStartTimes(course), Stages(course),
                             ranksBy(course, esorName), ranksBy(course, esorClub)};
  course.sortRunners(esorResultTime);
  return jsonOf([&](JsonWriter& json) {
    json.beginObject();
    json.key("digits");
    json.number(std::int64_t{fractionDigits(course.getHighestTimeAccuracy())});
    json.key("length");
    category.courseLengthSet() ? json.number(std::int64_t{category.courseLength()}) : json.null();
    putLegs(json, "legs", course.noOfLegs(), [&](int leg) { putLeg(json, course, leg); });
    json.key("runners");
    json.beginArray();
    for (int i = 0; i < course.noOfRunners(); ++i) {
      putRunner(json, course.runner(i), facts);
    }
    json.endArray();
    json.key("refused");
    json.beginArray();
    for (const LRKRunner* runner : refusedRunners(category, course)) json.text(runner->name());
    json.endArray();
    json.endObject();
  });
}

}  // namespace larkstone::cli
