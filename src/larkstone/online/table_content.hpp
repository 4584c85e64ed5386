#pragma once

// What stands in the cells of a split table, whatever it is written as.

#include <string>

#include "larkstone/analysis/course.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/online/cell_format.hpp"

namespace larkstone {

class clsLarkstoneOnlineTable;

/// A runner's time at a leg and what there is to say about it.
struct LegCell {
  Time time = LRK_NO_TIME;  ///< as shown, maybe the difference to the best; LRK_NO_TIME for none
  bool isDifference = false;
  int place = 0;  ///< 0 without a time that is valid for it, or when places were not calculated
  CellKind kind = CellKind::plain;
  Time timeLoss = 0;  ///< set for CellKind::timeLoss

  /// Whether there is more to say than the time.
  bool isMarked() const { return kind == CellKind::timeLoss || kind == CellKind::estimated; }
};

/// Plain texts, not yet escaped for anything; empty where there is nothing to show. Table and
/// course must outlive it and stay as they are.
class TableContent {
 public:
  TableContent(const clsLarkstoneOnlineTable& table, const LRKCourse& course);

  int noOfLegs() const { return course_.noOfLegs(); }
  int noOfRunners() const { return course_.noOfRunners(); }
  bool isLastLeg(int legNo) const { return legNo == noOfLegs() - 1; }
  /// The style of the times in a runner's second row.
  enmLegStyle secondRowStyle() const;

  /// "1-2 (32)".
  std::string legDescription(int legNo) const;

  std::string name(int runner) const { return course_.runner(runner).name(); }
  std::string club(int runner) const { return course_.runner(runner).club(); }
  std::string place(int runner) const;
  std::string startTime(int runner) const;
  std::string finishTime(int runner) const;
  /// The caption of the status for a runner without a valid result.
  std::string finishTimeDifference(int runner) const;
  LegCell legCell(int runner, int legNo, enmLegStyle style) const;
  /// Writes the time of a cell and returns its end; there is room for TimeFormat::room at `to`.
  char* writeTime(const LegCell& cell, char* to) const {
    if (isDisq(cell.time)) return to;
    return (cell.isDifference ? difference_ : time_).write(cell.time, to);
  }
  /// Empty unless the cell is marked.
  std::string tooltip(const LegCell& cell) const;

 private:
  Time validFinishTime(const LRKRunner& runner) const;
  std::string statusCaption(enmStatus status) const;
  bool showsDifferences(enmLegStyle style) const;

  const clsLarkstoneOnlineTable& table_;
  const LRKCourse& course_;
  TimeFormat time_;
  TimeFormat difference_;
  TimeFormat clockTime_;
  bool showsStarts_ = false;
};

}  // namespace larkstone
