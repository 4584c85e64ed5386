#include "larkstone/online/table_content.hpp"

#include "larkstone/core/time.hpp"
#include "larkstone/online/table.hpp"

namespace larkstone {

TableContent::TableContent(const clsLarkstoneOnlineTable& table, const LRKCourse& course)
    : table_(table),
      course_(course),
      accuracy_(course.getHighestTimeAccuracy()),
      delimiters_(table.caption("timeDelimiters")) {
  if (delimiters_.empty()) delimiters_ = ":.,";
}

enmLegStyle TableContent::secondRowStyle() const {
  return table_.passingEndTimes() ? elstPassingEnd : elstTotal;
}

std::string TableContent::legDescription(int legNo) const {
  const std::string& startName = table_.caption("startName");
  const std::string& finishName = table_.caption("finishName");
  std::string description = course_.legs().ordinalString(legNo, startName, finishName, "", "-");
  if (!isLastLeg(legNo)) {
    description += " (" + course_.legs().endCodeString(legNo, startName, finishName) + ")";
  }
  return description;
}

std::string TableContent::place(int runner) const {
  const LRKRunner& r = course_.runner(runner);
  return r.sortPlaceSet() ? std::to_string(r.sortPlace()) : std::string();
}

std::string TableContent::startTime(int runner) const {
  const LRKRunner& r = course_.runner(runner);
  return r.punches().startExists() ? text(r.startTime(), etstClockTime) : std::string();
}

std::string TableContent::finishTime(int runner) const {
  return timeText(validFinishTime(course_.runner(runner)));
}

std::string TableContent::finishTimeDifference(int runner) const {
  const LRKRunner& r = course_.runner(runner);
  const Time finish = validFinishTime(r);
  return isDisq(finish) ? statusCaption(r.status())
                        : differenceText(finish, course_.bestFinishTime());
}

Time TableContent::validFinishTime(const LRKRunner& runner) const {
  if (!course_.calculated() || noOfLegs() == 0 || runner.status() != estaOK) return LRK_NO_TIME;
  return runner.time(noOfLegs() - 1, elstTotal);
}

std::string TableContent::statusCaption(enmStatus status) const {
  switch (status) {
    case estaMisPunch:
      return table_.caption("status_mp");
    case estaDidNotFinish:
      return table_.caption("status_dnf");
    case estaDisqualified:
      return table_.caption("status_disq");
    case estaDidNotStart:
      return table_.caption("status_dns");
    default:
      return "-";
  }
}

LegCell TableContent::legCell(int runner, int legNo, enmLegStyle style) const {
  LegCell cell;
  const LRKRunner& r = course_.runner(runner);
  const Time time = course_.calculated() ? r.time(legNo, style) : LRK_NO_TIME;
  if (isDisq(time)) return cell;

  cell.time = legTimeText(time, legNo, style);
  const int place = r.place(legNo, style);
  if (place > 0) cell.place = std::to_string(place);

  const bool showsLoss = style == elstLeg && !course_.timesWithoutTimeLoss();
  const Time loss = showsLoss ? r.timeLoss(legNo, elstLeg) : 0;
  if (r.timeIsEstimated(legNo, style)) {
    cell.kind = CellKind::estimated;
    cell.tooltip = table_.caption("estimatedTime");
  } else if (loss >= 1) {
    cell.kind = CellKind::timeLoss;
    cell.tooltip = table_.caption("timeLoss") + ": " + timeText(loss);
  } else if (place == 1) {
    cell.kind = CellKind::best;
  } else if (place > 0 && place <= table_.topPlace()) {
    cell.kind = CellKind::top;
  }
  return cell;
}

std::string TableContent::legTimeText(Time time, int legNo, enmLegStyle style) const {
  const bool relative = (style == elstLeg && table_.relativeLegTimes()) ||
                        (style == elstTotal && table_.relativeTotalTimes());
  return relative ? differenceText(time, course_.bestTime(legNo, style)) : timeText(time);
}

std::string TableContent::timeText(Time time) const { return text(time, table_.timeStyle()); }

std::string TableContent::differenceText(Time time, Time best) const {
  return isDisq(best) ? std::string() : text(time - best, table_.timeStyle() | etstRelative);
}

std::string TableContent::text(Time time, enmTimeStyle style) const {
  if (isDisq(time)) return {};
  return timeToString(time, style, accuracy_, true, delimiters_);
}

}  // namespace larkstone
