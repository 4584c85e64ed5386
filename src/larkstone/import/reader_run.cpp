#include "larkstone/import/reader_run.hpp"

#include <algorithm>

#include "larkstone/core/text.hpp"
#include "larkstone/event/event.hpp"

namespace larkstone {

namespace {

// The average of the runners' lengths, down to 10 m; no runner with a length leaves it alone.
void setCourseLengthFromRunners(LRKCategory& category) {
  std::int64_t sum = 0;
  std::int64_t count = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    if (!category.runner(i).courseLengthSet()) continue;
    sum += category.runner(i).courseLength();
    ++count;
  }
  if (count > 0) category.courseLength(static_cast<Length>(sum / (count * 1000) * 1000));
}

}  // namespace

void ReaderRun::beginCategory(LRKCategory category) {
  endCategory();
  if (stopped()) return;
  category_ = std::move(category);
  standings_.clear();
  category_.name(std::string(sharedName(category_.name())));
  open_ = true;
  if (job_.session.onNewCategory) job_.session.onNewCategory(category_.name());
}

void ReaderRun::countCategory() {
  ++noOfAdded_;
  if (category_.name().empty()) ++noOfNameless_;
}

void ReaderRun::endCategory() {
  if (!open_ || stopped()) return;
  open_ = false;
  countCategory();
  if (courseLength_ == CourseLengthFrom::runners) setCourseLengthFromRunners(category_);
  const std::int32_t error = job_.event.addCategory(category_);
  if (error != 0) code_ = LRK_IMPORT_EVENT_FILE_ERROR + error;
}

void ReaderRun::add(LRKRunner runner) {
  completePunches(runner);
  category_.addRunner(std::move(runner));
}

void ReaderRun::endRelay() {
  if (!open_ || stopped()) return;
  open_ = false;
  countCategory();
  const RelayRules rules{job_.session.wholeLegsText, job_.session.commonControlsText, false,
                         job_.parallelMode};
  std::vector<LRKCategory> categories = relayCategories(std::move(category_), rules, standings_);
  if (!categories.empty()) notePlaces(categories.front());
  if (courseLength_ == CourseLengthFrom::runners) {
    for (LRKCategory& category : categories) setCourseLengthFromRunners(category);
  }
  const std::int32_t error = addCategories(job_.event, categories);
  if (error != 0) code_ = LRK_IMPORT_EVENT_FILE_ERROR + error;
}

// The places by time are those that the event shows.
void ReaderRun::notePlaces(const LRKCategory& teams) {
  std::vector<Time> times;
  times.reserve(static_cast<std::size_t>(teams.noOfRunners()));
  for (int i = 0; i < teams.noOfRunners(); ++i) times.push_back(teams.runner(i).resultTime());
  std::sort(times.begin(), times.end());
  for (int i = 0; i < teams.noOfRunners(); ++i) {
    const LRKRunner& team = teams.runner(i);
    const Time time = team.resultTime();
    if (!team.resultPlaceSet() || isDisq(time)) continue;
    const auto better = std::lower_bound(times.begin(), times.end(), time) - times.begin();
    if (team.resultPlace() == better + 1) continue;
    job_.session.note("the list places teams otherwise than their times", team.name(),
                      [&] { return quoted("class", teams.name()); });
    return;
  }
}

bool ReaderRun::progress(int done, int total) {
  job_.session.progress(static_cast<float>(std::min(done, total)) / static_cast<float>(total));
  return !stopped();
}

bool ReaderRun::stopped() {
  if (code_ == 0 && job_.session.cancelled()) code_ = LRK_IMPORT_CANCELLED;
  return code_ != 0;
}

std::int32_t ReaderRun::end(const std::string& importedFrom) {
  endCategory();
  if (code_ == 0) job_.session.complete(job_.event, importedFrom);
  return code_;
}

void LineNotes::operator()(std::string_view what, std::string_view text) const {
  session_.note(what, text, [&] {
    const std::string line = "line " + std::to_string(line_);
    const std::string name = runner_ == nullptr ? std::string() : nameInNotes(*runner_);
    return name.empty() ? line : quoted(line, name);
  });
}

void completePunches(LRKRunner& runner) {
  if (!runner.punches().startExists()) runner.startTime(0);
  if (!runner.punches().finishExists()) runner.finishTime(LRK_NO_TIME);
}

std::string quoted(std::string_view element, std::string_view name) {
  return std::string(element).append(" \"").append(beginningOf(name, longestNoteText)).append("\"");
}

std::string nameInNotes(const LRKRunner& runner) {
  if (!runner.firstNameSet() && !runner.lastNameSet()) {
    return std::string(beginningOf(runner.storedName(), longestNoteText));
  }
  std::string name(beginningOf(runner.firstName(), longestNoteText));
  name.append(" ").append(beginningOf(runner.lastName(), longestNoteText));
  return std::string(trimmed(name));
}

}  // namespace larkstone
