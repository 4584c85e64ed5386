#include "cli/analysis_summary.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/time.hpp"

#include "cli/stages.hpp"

namespace larkstone::cli {

namespace {

constexpr const char* none = "-";

// What the finishers of a course lost, by leg. Who did not finish has no whole race to lose time
// on.
class Losses {
 public:
  explicit Losses(const LRKCourse& course) : byLeg_(static_cast<std::size_t>(course.noOfLegs())) {
    for (int r = 0; r < course.noOfRunners(); ++r) {
      const LRKRunner& runner = course.runner(r);
      if (runner.status() != estaOK) continue;
      ++finishers_;
      Time before = 0;
      for (int i = 0; i < course.noOfLegs(); ++i) {
        const Time total = runner.timeLoss(i, elstTotal);
        byLeg_[static_cast<std::size_t>(i)] += total - before;
        before = total;
      }
    }
  }

  int finishers() const { return finishers_; }
  std::int64_t onCourse() const {
    std::int64_t sum = 0;
    for (const std::int64_t loss : byLeg_) sum += loss;
    return sum;
  }
  std::int64_t onLeg(int i) const { return byLeg_[static_cast<std::size_t>(i)]; }
  /// The leg that cost most, the first of equals; -1 when nobody lost anything.
  int worstLeg() const {
    const auto worst = std::max_element(byLeg_.begin(), byLeg_.end());
    return worst == byLeg_.end() || *worst <= 0 ? -1 : static_cast<int>(worst - byLeg_.begin());
  }

 private:
  std::vector<std::int64_t> byLeg_;
  int finishers_ = 0;
};

std::string timeText(Time time, enmTimeAccuracy accuracy) {
  return isDisq(time) ? none : timeToString(time, etstHMS, accuracy, true, "::.");
}

std::string meanText(std::int64_t sum, int count, enmTimeAccuracy accuracy) {
  const Time mean = roundHalfEven(static_cast<double>(sum) / count);
  return timeText(roundTime(mean, accuracy), accuracy);
}

Time winnersTime(const LRKCategory& category) {
  Time best = LRK_NO_TIME;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const Time time = category.runner(i).resultTime();
    if (time >= 1) best = std::min(best, time);
  }
  return best;
}

int finishersOf(const LRKCategory& category) {
  int finishers = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    if (category.runner(i).status() == estaOK) ++finishers;
  }
  return finishers;
}

// How many of the category are not on its course, and why: "3: 2 no controls, 1 legs missing".
std::string offCourseText(const LRKCategory& category, const LRKCourse& course) {
  const int all = category.noOfRunners() - course.noOfRunners();
  const std::pair<int, const char*> reasons[] = {
      {all - course.noOfRefusedRunners(), "no controls"},  // whom toCourse() left out
      {course.noOfRefusedRunners(erefNoFit), "no leg of the course"},
      {course.noOfRefusedRunners(erefTooFewLegs), "legs missing"},
      {course.noOfRefusedRunners(erefOtherLegs), "other legs too"},
      {course.noOfRefusedRunners(erefCourseIsFull), "course full"},
  };
  std::string text;
  for (const auto& [runners, why] : reasons) {
    if (runners <= 0) continue;
    if (runners == all) return std::to_string(all) + ": " + why;
    text += (text.empty() ? ": " : ", ") + std::to_string(runners) + " " + why;
  }
  return text.empty() ? none : std::to_string(all) + text;
}

// In characters: every byte that does not continue one.
std::size_t widthOf(const std::string& utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

SummaryTable::SummaryTable()
    : lines_{{"Category", "Runners", "OK", "Best", "Ideal", "Mean loss", "Costliest leg",
              "Loss there", "Not on the course"}} {}

void SummaryTable::add(const LRKCourse& course, const LRKCategory& category) {
  // Times are shown to the second at least: a mean of whole minutes has seconds.
  const enmTimeAccuracy accuracy = std::min(course.timeAccuracy(), etacSeconds);
  Line line;
  line.fill(none);
  line[0] = displayName(category.name());
  line[1] = std::to_string(category.noOfRunners());
  line[2] = std::to_string(finishersOf(category));
  line[3] = timeText(winnersTime(category), accuracy);
  line[4] = timeText(course.idealTime(course.noOfLegs() - 1), accuracy);
  const Losses losses(course);
  if (Stages(course).timeLoss && losses.finishers() > 0) {
    line[5] = meanText(losses.onCourse(), losses.finishers(), accuracy);
    if (const int worst = losses.worstLeg(); worst >= 0) {
      line[6] = course.legs().ordinalString(worst, "S", "F") + " (" +
                course.legs().beginAndEndCodeString(worst, "S", "F") + ")";
      line[7] = meanText(losses.onLeg(worst), losses.finishers(), accuracy);
    }
  }
  line[8] = offCourseText(category, course);
  lines_.push_back(std::move(line));
}

// Texts stand to the left, numbers to the right.
void SummaryTable::write(Output& output) const {
  constexpr std::size_t legColumn = 6;
  constexpr std::size_t lastColumn = columns - 1;
  std::array<std::size_t, columns> width{};
  for (const Line& line : lines_) {
    for (std::size_t i = 0; i < columns; ++i) width[i] = std::max(width[i], widthOf(line[i]));
  }
  for (const Line& line : lines_) {
    std::string text;
    for (std::size_t i = 0; i < columns; ++i) {
      const std::string padding(width[i] - widthOf(line[i]), ' ');
      text += i == 0 ? "" : "  ";
      if (i == lastColumn) {
        text += line[i];
      } else if (i == 0 || i == legColumn) {
        text += line[i] + padding;
      } else {
        text += padding + line[i];
      }
    }
    output.write(text + "\n");
  }
}

}  // namespace larkstone::cli
