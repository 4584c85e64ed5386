#include "cli/analysis_csv.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/iof_texts.hpp"

#include "cli/stages.hpp"

namespace larkstone::cli {

namespace {

// A line in the making. Fields are quoted only where they have to be.
class CsvLine {
 public:
  void plain(std::string_view value) {
    if (!isFirst_) line_ += ',';
    isFirst_ = false;
    if (value.find_first_of(",\"\r\n") == std::string_view::npos) {
      line_ += value;
      return;
    }
    line_ += '"';
    for (const char c : value) line_.append(c == '"' ? 2 : 1, c);
    line_ += '"';
  }
  // A text that came from a file. A spreadsheet would calculate what begins like a formula, and
  // names and clubs are whatever somebody entered: the apostrophe makes it text.
  void text(std::string_view value) {
    const bool isFormula =
        !value.empty() && std::string_view("=+-@\t\r").find(value[0]) != std::string_view::npos;
    plain(isFormula ? "'" + std::string(value) : value);
  }
  void number(std::int64_t value, bool isThere = true) {
    plain(isThere ? std::to_string(value) : std::string());
  }
  void time(Time value) { number(value, !isDisq(value)); }
  void single(float value, bool isThere) {
    std::array<char, 32> digits{};
    if (isThere) {
      std::snprintf(digits.data(), digits.size(), "%.9g", static_cast<double>(value));
    }
    plain(digits.data());
  }

  /// The fields of another line.
  void fields(const CsvLine& other) {
    if (!isFirst_) line_ += ',';
    isFirst_ = false;
    line_ += other.line_;
  }
  std::string ended() const { return line_ + '\n'; }

 private:
  std::string line_;
  bool isFirst_ = true;
};

CsvLine runnerFields(const LRKCourse& course, const LRKRunner& runner) {
  CsvLine line;
  line.text(course.name());
  line.number(runner.sortPlace(), runner.sortPlaceSet());
  line.number(runner.runnerIndex());
  line.text(runner.name());
  line.text(runner.club());
  line.plain(iofStatusText(runner.status()));
  line.time(runner.resultTime());
  return line;
}

CsvLine legFields(const LRKLegs& legs, int i) {
  CsvLine line;
  line.number(i + 1);
  line.plain(legs.ordinalString(i, "S", "F"));
  line.plain(legs.beginCodeString(i, "S", "F"));
  line.plain(legs.endCodeString(i, "S", "F"));
  return line;
}

// Without a time on the leg all its figures are empty, so that a mean over a column is right.
void addFigures(CsvLine& line, const LRKCourse& course, const LRKRunner& runner,
                const Stages& stages, int i) {
  const Time time = runner.time(i, elstLeg);
  const Time best = course.bestTime(i, elstLeg);
  const Time total = runner.time(i, elstTotal);
  const bool hasTime = !isDisq(time);
  line.time(time);
  line.number(runner.place(i, elstLeg), runner.hasPlace(i, elstLeg));
  line.number(std::int64_t{time} - best, hasTime && !isDisq(best));
  line.time(total);
  line.number(runner.place(i, elstTotal), runner.hasPlace(i, elstTotal));
  line.number(runner.timeLoss(i, elstLeg), hasTime && stages.timeLoss);
  line.single(runner.performanceIndex(i, elstLeg), hasTime && stages.indices);
  const bool hasFollowing = hasTime && stages.following;
  line.single(runner.followingIndex(i), hasFollowing);
  line.single(runner.pullIndex(i), hasFollowing);
  line.number(runner.followingBenefitTime(i, elstLeg), hasFollowing);
}

}  // namespace

void writeCsvHeader(Output& output) {
  output.write(
      "category,sortPlace,runnerIndex,name,club,status,resultTime,leg,ordinal,beginCode,endCode,"
      "time,place,timeBehind,totalTime,totalPlace,timeLoss,performanceIndex,followingIndex,"
      "pullIndex,followingBenefitTime\n");
}

void writeCsvCourse(Output& output, const LRKCourse& course) {
  const Stages stages(course);
  std::vector<CsvLine> legs;
  legs.reserve(static_cast<std::size_t>(course.noOfLegs()));
  for (int i = 0; i < course.noOfLegs(); ++i) legs.push_back(legFields(course.legs(), i));
  for (int r = 0; r < course.noOfRunners(); ++r) {
    const LRKRunner& runner = course.runner(r);
    const CsvLine who = runnerFields(course, runner);
    for (int i = 0; i < course.noOfLegs(); ++i) {
      CsvLine line = who;
      line.fields(legs[static_cast<std::size_t>(i)]);
      addFigures(line, course, runner, stages, i);
      output.write(line.ended());
    }
  }
}

}  // namespace larkstone::cli
