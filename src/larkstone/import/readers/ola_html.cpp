// OLA's page of split times: a table for each class. The times of a runner fill a grid, row by row:
// each cell holds a column of it, a time a line, or two or three lines a time where those of the
// legs stand beside. The last one is the finish; the result in the third cell counts more.
//
//   <h1>Spring Sprint, Sunday</h1>  <h2>2004-05-02</h2>
//   <table>
//     <tr><td>D21</td><td>4 200 m</td></tr>
//     <tr valign=top>
//       <td>1</td> <td>Ann Bell<br>OK North</td> <td>32:01</td>
//       <td>3:38<br>32:01</td> <td>5:57<br>&nbsp;</td>       controls 31, 32, then the finish
//     </tr>
//   </table>
//   Skapad med OLA version 4.2.1</body>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/length.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/split_list.hpp"
#include "larkstone/import/scan/date_text.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/status_words.hpp"

namespace larkstone {

namespace {

constexpr Code codeBeforeFirst = 30;

// The texts between line breaks.
std::vector<std::string> linesOf(std::string_view cell) {
  std::vector<std::string> lines;
  HtmlPage page(cell);
  do {
    lines.push_back(lineText(page.readThrough({"br"})));
  } while (!page.tag().empty());
  return lines;
}

// Rows of runners are told by their alignment; other attributes may stand beside it.
bool isRunnerRow(std::string_view row) {
  for (removeThroughNoCase(row, "<tr"); !row.empty(); removeThroughNoCase(row, "<tr")) {
    if (containsNoCase(popField(row, ">"), "valign")) return true;
  }
  return false;
}

// The cells of a runner's times, line by line. Cells of very different height stand for a damaged
// page: the grid is cut off.
struct Grid {
  explicit Grid(const std::vector<std::string_view>& cells) {
    constexpr std::size_t firstColumn = 3;
    constexpr std::size_t mostTimes = 1000;
    for (std::size_t i = firstColumn; i < cells.size(); ++i) {
      columns.push_back(linesOf(cells[i]));
      height = std::max(height, columns.back().size());
    }
    isCut = columns.size() > 1 && height > 1 && columns.size() * height > mostTimes;
    if (isCut) height = std::max<std::size_t>(mostTimes / columns.size(), 1);
  }

  std::string text(std::size_t line, std::size_t column) const {
    return line < columns[column].size() ? columns[column][line] : std::string();
  }

  std::vector<std::vector<std::string>> columns;
  std::size_t height = 0;
  bool isCut = false;
};

bool isMissing(std::string_view text) { return text.find_first_not_of('-') == std::string::npos; }

Time timeOf(std::string_view text) {
  return isMissing(text) ? LRK_NO_TIME : stringToTime(textBefore(text, " "), etacAuto, true);
}

// How many lines each control has in its cell, and which of them is the time from the start.
struct GridLayout {
  std::size_t linesPerControl = 1;
  std::size_t running = 0;

  // The texts of one of the lines in the order of the course; empty ones at the end do not count.
  std::vector<std::string> texts(const Grid& grid, std::size_t line) const {
    std::vector<std::string> result;
    for (; line < grid.height; line += linesPerControl) {
      for (std::size_t i = 0; i < grid.columns.size(); ++i) result.push_back(grid.text(line, i));
    }
    while (!result.empty() && result.back().empty()) result.pop_back();
    return result;
  }
  std::vector<std::string> times(const Grid& grid) const { return texts(grid, running); }

  // How many times of the other line are those of the legs, less those that are not.
  int evidence(const Grid& grid) const {
    const std::vector<std::string> totals = times(grid);
    const std::vector<std::string> legs = texts(grid, running == 0 ? 1 : 0);
    int count = 0;
    Time before = 0;
    for (std::size_t i = 0; i < totals.size(); ++i) {
      const Time total = timeOf(totals[i]);
      const Time leg = i < legs.size() ? timeOf(legs[i]) : LRK_NO_TIME;
      if (!isDisq(before) && !isDisq(total) && !isDisq(leg)) {
        count += std::int64_t{total} - before == leg ? 1 : -1;
      }
      before = total;
    }
    return count;
  }
};

// What all runners of a class show together: the layout and the number of times.
class ClassGrid {
 public:
  void add(const Grid& grid) {
    for (Candidate& candidate : candidates_) {
      const bool several = candidate.layout.linesPerControl > 1;
      candidate.evidence += several ? candidate.layout.evidence(grid) : 0;
      candidate.count = std::max(candidate.count, candidate.layout.times(grid).size());
    }
  }

  const GridLayout& layout() const { return best().layout; }
  std::size_t noOfTimes() const { return best().count; }

 private:
  struct Candidate {
    GridLayout layout;
    int evidence = 0;
    std::size_t count = 0;
  };

  const Candidate& best() const {
    return *std::max_element(
        candidates_.begin(), candidates_.end(),
        [](const Candidate& a, const Candidate& b) { return a.evidence < b.evidence; });
  }

  std::array<Candidate, 5> candidates_ = {{{{1, 0}}, {{2, 0}}, {{2, 1}}, {{3, 0}}, {{3, 1}}}};
};

class OlaReader {
 public:
  OlaReader(ReadJob& job, std::string_view page, int lines)
      : job_(job), run_(job), page_(page), lines_(lines) {}

  std::int32_t read(const std::string& importedFrom) {
    page_.readThrough({"table"});
    while (page_.tag() == "table" && !run_.stopped()) {
      const int line = page_.line();
      readTable(HtmlPage(page_.readThrough({"/table", "table"}), line));
      if (page_.tag() == "/table") page_.readThrough({"table"});
    }
    return run_.end(importedFrom);
  }

 private:
  void readTable(HtmlPage table) {
    grid_ = ClassGrid();
    for (HtmlPage rows = table;;) {
      const std::string_view row = rows.readThrough({"/tr"});
      if (isRunnerRow(row)) grid_.add(Grid(cellsOf(row)));
      if (rows.tag().empty()) break;
    }
    noOfControls_ = static_cast<int>(std::min<std::size_t>(grid_.noOfTimes(), LRK_MAX_LIST - 1));
    hasRunner_ = false;
    bool hasHeading = false;
    do {
      const int line = table.line();
      const std::string_view row = table.readThrough({"/tr"});
      if (isRunnerRow(row)) {
        readRunner(cellsOf(row), line);
        if (!run_.progress(table.line(), lines_)) return;
      } else if (!hasHeading) {
        hasHeading = readHeading(cellsOf(row));
      }
    } while (!table.tag().empty());
  }

  // A class is opened by its first runner: tables without any are for the looks of the page. A
  // heading with a table of its own belongs to the next one.
  bool readHeading(const std::vector<std::string_view>& cells) {
    const std::string name = cells.empty() ? std::string() : lineText(cells[0]);
    if (name.empty()) return false;
    heading_ = LRKCategory();
    heading_.name(name);
    for (std::size_t i = 1; i < cells.size(); ++i) {
      std::string text = lineText(cells[i]);
      text.erase(std::remove(text.begin(), text.end(), ' '), text.end());  // "4 200 m"
      const Length length = stringToLength(text);
      if (length > 0 && lowered(text).ends_with('m')) heading_.courseLength(length);
    }
    return true;
  }

  void readRunner(const std::vector<std::string_view>& cells, int line) {
    LRKRunner runner;
    const LineNotes notes(job_.session, line, &runner);
    const Grid grid(cells);
    if (!hasRunner_) run_.beginCategory(heading_);
    hasRunner_ = true;
    if (cells.size() < 3) {
      notes("row without a result");
      return;
    }
    HtmlPage person(cells[1]);
    runner.name(lineText(person.readThrough({"br"})));
    const std::string club = lineText(person.readThrough({"br"}));
    if (!club.empty()) runner.club(club);
    if (run_.category().courseLengthSet()) runner.courseLength(run_.category().courseLength());
    const Time result = readResult(lineText(cells[2]), runner);
    const std::string place = lineText(cells[0]);
    if (isNotCompetingWord(place)) runner.status(statusByPlace(place, runner.status()));
    readTimes(grid_.layout().times(grid), runner, notes);
    if (grid.isCut) notes("more times than controls");
    if (!isDisq(result)) runner.finishTime(result);
    run_.addRunner(std::move(runner), notes);
  }

  static Time readResult(const std::string& text, LRKRunner& runner) {
    const Time time = stringToTime(text, etacAuto, true);
    const bool notApproved = lowered(text).find("ej godk") != std::string::npos;
    runner.status(!isDisq(time) ? estaOK : notApproved ? estaDidNotFinish : estaDisqualified);
    return time;
  }

  void readTimes(const std::vector<std::string>& times, LRKRunner& runner,
                 const LineNotes& notes) const {
    runner.startTime(0);
    const auto known = static_cast<int>(std::min<std::size_t>(times.size(), LRK_MAX_LIST));
    const int last = std::min(noOfControls_, std::max(known, mostControlsWithoutTimes));
    for (int position = 1; position <= last; ++position) {
      Time time = LRK_NO_TIME;
      if (position <= known) {
        const std::string& text = times[static_cast<std::size_t>(position - 1)];
        time = timeOf(text);  // a place may follow
        if (isDisq(time) && !isMissing(text)) notes("unreadable time", text);
      }
      const int code = std::min<int>(codeBeforeFirst + position, LRK_START_CODE - 1);
      runner.punches().add(time,
                           position < noOfControls_ ? static_cast<Code>(code) : LRK_FINISH_CODE);
    }
    if (known > noOfControls_) notes("more times than controls");
    if (!runner.punches().finishExists()) runner.finishTime(LRK_NO_TIME);
  }

  ReadJob& job_;
  ReaderRun run_;
  HtmlPage page_;
  int lines_;
  LRKCategory heading_;
  // Of the class in this table:
  ClassGrid grid_;
  int noOfControls_ = 0;
  bool hasRunner_ = false;
};

// "4.2.1" of the footer "... med OLA version 4.2.1</body>".
std::string versionOf(std::string_view page) {
  removeThrough(page, "med OLA version");
  return lineText(textBefore(page, "</"));
}

}  // namespace

std::int32_t readOlaHtml(ReadJob& job) {
  TextLines file;
  const bool isRead = file.read(job.fileName, TextLines::Form::windows1252);
  const std::string_view page = file.text();
  const bool hasFooter = page.find("med OLA version") != std::string_view::npos;
  if (!isRead || (!hasFooter && !containsNoCase(page, "<tr valign"))) {
    return LRK_IMPORT_OLA_HTML_INVALID_FORMAT;
  }
  const std::string heading = elementText(page, "h1");
  if (!heading.empty()) job.event.name(std::string(textBefore(heading, ", ")));
  if (const auto date = dateOf(elementText(page, "h2"))) job.event.startDate(*date);
  const std::string version = versionOf(page);
  return OlaReader(job, page, file.count())
      .read(version.empty() ? "OLA HTML" : "OLA " + version + " HTML");
}

}  // namespace larkstone
