#include "larkstone/online/text_table.hpp"

#include <algorithm>
#include <string_view>

#include "larkstone/core/growing_text.hpp"
#include "larkstone/online/table.hpp"
#include "larkstone/online/table_content.hpp"

namespace larkstone {

namespace {

class TextTableWriter {
 public:
  TextTableWriter(const clsLarkstoneOnlineTable& table, const LRKCourse& course)
      : table_(table), content_(table, course) {}

  std::string write() {
    writeHeader();
    for (int runner = 0; runner < content_.noOfRunners(); ++runner) writeRunner(runner);
    return text_.take();
  }

 private:
  // A tab or a line end of a name would begin a cell or a line of its own.
  static char shown(char c) { return static_cast<unsigned char>(c) < 0x20 ? ' ' : c; }

  void beginCell() {
    if (!atLineStart_) text_.add('\t');
    atLineStart_ = false;
  }

  void cell(std::string_view content) {
    beginCell();
    text_.addWritten(content.size(), [content](char* to) {
      return std::transform(content.begin(), content.end(), to, shown);
    });
  }

  void endLine() {
    text_.add("\r\n");
    atLineStart_ = true;
  }

  // Start, finish and difference; the two times only where they are shown.
  void timeCells(std::string_view start, std::string_view finish, std::string_view difference) {
    if (table_.showStartTimes()) cell(start);
    if (table_.showFinishTimes()) cell(finish);
    cell(difference);
  }

  void legHeading(std::string_view content) {
    cell(content);
    if (table_.showPlaces()) cell("");
  }

  void legCell(const LegCell& leg) {
    beginCell();
    text_.addWritten(TimeFormat::room, [&](char* to) {
      char* const end = content_.writeTime(leg, to);
      return std::transform(to, end, to, shown);
    });
    if (!table_.showPlaces()) return;
    beginCell();
    if (leg.place == 0) return;
    text_.add('(');
    text_.add(leg.place);
    text_.add(')');
  }

  void legCells(int runner, enmLegStyle style) {
    for (int i = 0; i < content_.noOfLegs(); ++i) legCell(content_.legCell(runner, i, style));
  }

  void writeHeader() {
    const std::string& name = table_.caption("name");
    cell(table_.caption("place"));
    cell(name);
    timeCells(table_.caption("startTime"), table_.caption("finishTime"),
              table_.caption("finishTimeDifference"));
    for (int i = 0; i < content_.noOfLegs(); ++i) legHeading(content_.legDescription(i));
    cell(name);
    endLine();

    const std::string& club = table_.caption("club");
    cell("");
    cell(club);
    timeCells("", "", "");
    for (int i = 0; i < content_.noOfLegs(); ++i) legHeading("");
    cell(club);
    endLine();
  }

  void writeRunner(int runner) {
    const std::string name = content_.name(runner);
    cell(content_.place(runner));
    cell(name);
    timeCells(content_.startTime(runner), content_.finishTime(runner),
              content_.finishTimeDifference(runner));
    legCells(runner, elstLeg);
    cell(name);
    endLine();

    const std::string club = content_.club(runner);
    cell("");
    cell(club);
    timeCells("", "", "");
    legCells(runner, content_.secondRowStyle());
    cell(club);
    endLine();
  }

  const clsLarkstoneOnlineTable& table_;
  TableContent content_;
  GrowingText text_;
  bool atLineStart_ = true;
};

}  // namespace

std::string writeTextTable(const clsLarkstoneOnlineTable& table, const LRKCourse& course) {
  return TextTableWriter(table, course).write();
}

}  // namespace larkstone
