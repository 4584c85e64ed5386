#pragma once

// Small courses to render, and the cells of a rendering.

#include <initializer_list>
#include <string>
#include <vector>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"
#include "larkstone/online/table.hpp"

#include "support/build.hpp"

namespace larkstone::test {

/// A course over the first runner's legs. Only differences above a minute count as time losses.
inline LRKCourse courseOf(std::initializer_list<LRKRunner> runners) {
  LRKCategory category;
  for (const LRKRunner& runner : runners) category.addRunner(runner);
  LRKCourse course = category.toCourse(erqlAtLeastOne, false, false);
  course.timeLossConditionTime(6000);
  return course;
}

inline LRKCourse calculatedCourse(std::initializer_list<LRKRunner> runners) {
  LRKCourse course = courseOf(runners);
  course.calculate();
  return course;
}

/// Ada is faster to the control, Bo to the finish.
inline LRKCourse adaAndBo() {
  LRKRunner ada = runner("S-31-F", {36000, 36060, 36150}, "Ada");
  ada.club("OK Nord");
  LRKRunner bo = runner("S-31-F", {36120, 36190, 36260}, "Bo");
  bo.club("IF Syd");
  return calculatedCourse({ada, bo});
}

/// Every border in a colour of its own, the best leg times white on red.
inline clsLarkstoneOnlineTable tableOf(LRKCourse& course) {
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.caption("place", "Pl");
  table.caption("name", "Name");
  table.caption("club", "Club");
  table.caption("startTime", "Start");
  table.caption("finishTime", "Time");
  table.caption("finishTimeDifference", "Diff");
  table.caption("startName", "S");
  table.caption("finishName", "F");
  table.caption("legTimeSortCaption", "Leg");
  table.caption("totalTimeSortCaption", "Total");
  table.caption("status_mp", "mp");
  table.caption("status_dnf", "dnf");
  table.caption("status_disq", "disq");
  table.caption("status_dns", "dns");
  table.outerBorderColor(255);
  table.innerBorderColor(65280);
  table.fixedBorderColor(16711680);
  table.unfixedBorderColor(8421504);
  table.highlightPercentage(0.5F);
  table.bestLegTimeFormat("Arial;9.5;1;1;3;4;5;6;2;1;#FFFFFF;255");
  return table;
}

struct RenderedCell {
  std::string className;
  std::string content;
};

/// The text between two others behind a position, which moves behind the second one.
inline std::string between(const std::string& text, std::size_t& at, const std::string& begin,
                           const std::string& end) {
  at = text.find(begin, at);
  if (at == std::string::npos) return {};
  at += begin.size();
  const std::size_t from = at;
  at = text.find(end, from);
  return text.substr(from, at - from);
}

/// The rows of a table with their cells.
inline std::vector<std::vector<RenderedCell>> cellsOf(const std::string& html) {
  std::vector<std::vector<RenderedCell>> rows;
  std::size_t atRow = 0;
  for (;;) {
    const std::string row = between(html, atRow, "<TR", "</TR>");
    if (atRow == std::string::npos) return rows;
    rows.emplace_back();
    std::size_t atCell = 0;
    for (;;) {
      const std::string cell = between(row, atCell, "<TD class=\"", "</TD>");
      if (atCell == std::string::npos) break;
      rows.back().push_back({cell.substr(0, cell.find('"')), cell.substr(cell.find('>') + 1)});
    }
  }
}

inline std::vector<std::vector<RenderedCell>> rendered(clsLarkstoneOnlineTable& table) {
  table.createHTMLTable();
  return cellsOf(table.htmlTableString());
}

/// The contents of one row, apart by blanks.
inline std::string contents(const std::vector<RenderedCell>& row) {
  std::string text;
  for (const RenderedCell& cell : row) text += (text.empty() ? "" : " ") + cell.content;
  return text;
}

/// Gives every cell format its own name as its font.
inline void nameFormats(clsLarkstoneOnlineTable& table) {
#define LRK_TABLE_SETTING(name, type, initial)
#define LRK_CELL_FORMAT(name, family, kind) table.name(#name ";8;0;0;2;2;1;1;0;0;0;16777215");
#include "larkstone/online/table_settings.def"
}

/// The font of a class of the style sheet.
inline std::string fontOf(const clsLarkstoneOnlineTable& table, const std::string& className) {
  std::size_t at = table.styleString().find("." + className + " {");
  return between(table.styleString(), at, "font-family:", ",");
}

}  // namespace larkstone::test
