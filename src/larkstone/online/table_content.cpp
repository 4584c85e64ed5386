#include "larkstone/online/table_content.hpp"

#include <array>

#include "larkstone/online/table.hpp"

namespace larkstone {

namespace {

std::string textOf(Time time, const TimeFormat& format) {
  if (isDisq(time)) return {};
  std::array<char, TimeFormat::room> text;
  return {text.data(), format.write(time, text.data())};
}

Time difference(Time time, Time best) { return isDisq(best) ? LRK_NO_TIME : time - best; }

}  // namespace

TableContent::TableContent(const clsLarkstoneOnlineTable& table, const LRKCourse& course)
    : table_(table), course_(course) {
  const enmTimeAccuracy accuracy = course.getHighestTimeAccuracy();
  std::string_view delimiters = table.caption("timeDelimiters");
  if (delimiters.empty()) delimiters = ":.,";
  const auto format = [&](enmTimeStyle style) {
    return TimeFormat(style, accuracy, true, delimiters);
  };
  time_ = format(table.timeStyle());
  difference_ = format(table.timeStyle() | etstRelative);
  clockTime_ = format(etstClockTime);
  showsStarts_ = hasStartTimes(course);
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
  return showsStarts_ && r.punches().startExists() ? textOf(r.startTime(), clockTime_)
                                                   : std::string();
}

std::string TableContent::finishTime(int runner) const {
  return textOf(validFinishTime(course_.runner(runner)), time_);
}

std::string TableContent::finishTimeDifference(int runner) const {
  const LRKRunner& r = course_.runner(runner);
  const Time finish = validFinishTime(r);
  return isDisq(finish) ? statusCaption(r.status())
                        : textOf(difference(finish, course_.bestFinishTime()), difference_);
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

  cell.isDifference = showsDifferences(style);
  cell.time = cell.isDifference ? difference(time, course_.bestTime(legNo, style)) : time;
  cell.place = r.hasPlace(legNo, style) ? r.place(legNo, style) : 0;

  const bool showsLoss = style == elstLeg && !course_.timesWithoutTimeLoss();
  const Time loss = showsLoss ? r.timeLoss(legNo, elstLeg) : 0;
  if (r.timeIsEstimated(legNo, style)) {
    cell.kind = CellKind::estimated;
  } else if (loss >= 1) {
    cell.kind = CellKind::timeLoss;
    cell.timeLoss = loss;
  } else if (cell.place == 1) {
    cell.kind = CellKind::best;
  } else if (cell.place > 0 && cell.place <= table_.topPlace()) {
    cell.kind = CellKind::top;
  }
  return cell;
}

bool TableContent::showsDifferences(enmLegStyle style) const {
  return (style == elstLeg && table_.relativeLegTimes()) ||
         (style == elstTotal && table_.relativeTotalTimes());
}

std::string TableContent::tooltip(const LegCell& cell) const {
  switch (cell.kind) {
    case CellKind::estimated:
      return table_.caption("estimatedTime");
    case CellKind::timeLoss:
      return table_.caption("timeLoss") + ": " + textOf(cell.timeLoss, time_);
    default:
      return {};
  }
}

}  // namespace larkstone
