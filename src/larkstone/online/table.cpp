#include "larkstone/online/table.hpp"

#include <array>
#include <cstdio>

#include "larkstone/analysis/course.hpp"
#include "larkstone/online/html_table.hpp"
#include "larkstone/online/text_table.hpp"
#include "larkstone/platform/clock.hpp"

namespace larkstone {

namespace {

std::string elapsedText(double seconds) {
  std::array<char, 40> text;
  std::snprintf(text.data(), text.size(), "%.1f ms", seconds * 1000);
  return text.data();
}

}  // namespace

bool hasStartTimes(const LRKCourse& course) {
  bool found = false;
  for (int i = 0; i < course.noOfRunners() && !found; ++i) {
    const Time start = course.runner(i).startTime();
    found = start > 0 && !isDisq(start);
  }
  return found;
}

const std::string& clsLarkstoneOnlineTable::cellFormat(CellFamily family, CellKind kind) const {
#define LRK_TABLE_SETTING(name, type, initial)
#define LRK_CELL_FORMAT(name, cellFamily, cellKind) \
  if (family == CellFamily::cellFamily && kind == CellKind::cellKind) return name##_;
#include "larkstone/online/table_settings.def"
  return cellFormat(family, CellKind::plain);
}

void clsLarkstoneOnlineTable::sort(enmSort sortBy, int legNo) {
  sortedBy_ = sortBy;
  sortedByLegNo_ = legNo;
  if (course_ == nullptr) return;
  if (sortBy == esorName) {
    for (const enmSort key : {esorName, esorFirstName, esorLastName}) course_->sortRunners(key, 0);
  } else if (sortBy == esorCustom) {
    course_->sortRunners(esorTotalTime, course_->noOfLegs() - 1);
  } else {
    const bool legExists = legNo >= 0 && legNo < course_->noOfLegs();
    course_->sortRunners(sortBy, legExists ? legNo : -1);
  }
}

void clsLarkstoneOnlineTable::createHTMLTable() {
  const double start = performanceCounter();
  const LRKCourse none{};
  HtmlTable html = writeHtmlTable(*this, course_ != nullptr ? *course_ : none);
  htmlTableString_ = std::move(html.table);
  styleString_ = std::move(html.style);
  scriptString_ = std::move(html.script);
  htmlTableCreationTime_ = elapsedText(performanceCounter() - start);
}

void clsLarkstoneOnlineTable::createTextTable() {
  const double start = performanceCounter();
  const LRKCourse none{};
  textTableString_ = writeTextTable(*this, course_ != nullptr ? *course_ : none);
  textTableCreationTime_ = elapsedText(performanceCounter() - start);
}

}  // namespace larkstone
