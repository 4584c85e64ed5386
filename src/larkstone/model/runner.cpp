#include "larkstone/model/runner.hpp"

#include <algorithm>
#include <numeric>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"

namespace larkstone {

const LRKRunner::LegTable LRKRunner::noLeg{};

std::string LRKRunner::name() const {
  if (!firstNameSet() && !lastNameSet()) return name_.value;
  return std::string(trimmed(firstName() + " " + lastName()));
}

std::string LRKRunner::nameInitials() const {
  const std::string full = name();
  std::string_view rest = trimmed(full);
  const auto separates = [](std::string_view c) {
    return c == "-" || c == " " || c == "." || c == "(";
  };
  std::string_view previous = takeCharacter(rest);
  std::string initials(previous);
  while (!rest.empty()) {
    const std::string_view next = takeCharacter(rest);
    if (separates(previous) && !separates(next)) initials += next;
    previous = next;
  }
  return initials;
}

Time LRKRunner::resultTime() const {
  if (!punches_.startExists() || !punches_.finishExists()) return 0;
  const Time start = startTime();
  const Time finish = finishTime();
  if (isDisq(start) || isDisq(finish) || status() != estaOK) return LRK_NO_TIME;
  return finish - start;
}

Time LRKRunner::timeOf(const LegTable& table, int legNo, enmLegStyle style) const {
  const bool qualified = legNo <= lastQualifiedLeg_ || qualifyEvenIfDisqualified_;
  switch (style) {
    case elstLeg:
      return isDisq(table.begin) || isDisq(table.end) ? LRK_NO_TIME : table.end - table.begin;
    case elstTotal:
      return qualified ? std::min(table.total, LRK_NO_TIME) : LRK_NO_TIME;
    case elstPassingBegin:
      return qualified || legNo <= lastQualifiedLeg_ + 1 ? table.begin : LRK_NO_TIME;
    case elstPassingEnd:
      return qualified ? table.end : LRK_NO_TIME;
    case elstTotalAllowMissingPunches:
      return std::min(table.total, LRK_NO_TIME);
    case elstPassingBeginAllowMissingPunches:
      return table.begin;
    case elstPassingEndAllowMissingPunches:
      return table.end;
  }
  return 0;
}

Time LRKRunner::time(int legNo, enmLegStyle style) const {
  return timeOf(leg(legNo), legNo, style);
}

std::array<Time, LRK_LEG_STYLES> LRKRunner::times(int legNo) const {
  const LegTable& table = leg(legNo);
  std::array<Time, LRK_LEG_STYLES> times;
  for (int style = 0; style < LRK_LEG_STYLES; ++style) {
    times[static_cast<std::size_t>(style)] = timeOf(table, legNo, static_cast<enmLegStyle>(style));
  }
  return times;
}

bool LRKRunner::timeIsEstimated(int legNo, enmLegStyle style) const {
  if (legNo < 0 || legNo >= legs_.count()) return false;
  const bool begin = legs_.beginTimeIsEstimated(legNo);
  const bool end = legs_.endTimeIsEstimated(legNo);
  switch (style) {
    case elstLeg:
      return begin || end;
    case elstPassingBegin:
    case elstPassingBeginAllowMissingPunches:
      return begin;
    default:
      return end;
  }
}

Time LRKRunner::timeLoss(int legNo, enmLegStyle style) const {
  if (!hasLeg(legNo)) return 0;
  const Time total = leg(legNo).timeLoss;
  switch (style) {
    case elstTotal:
    case elstTotalAllowMissingPunches:
      return total;
    case elstLeg:
      return legNo == 0 ? total : total - leg(legNo - 1).timeLoss;
    default:
      return 0;
  }
}

void LRKRunner::timeLoss(int legNo, enmLegStyle style, Time loss) {
  if (style == elstTotal || style == elstTotalAllowMissingPunches) {
    leg(legNo).timeLoss = loss;
  } else if (style == elstLeg) {
    const Time difference = loss - timeLoss(legNo, elstLeg);
    for (std::size_t i = indexWithin(legNo, table_.size()); i < table_.size(); ++i) {
      table_[i].timeLoss += difference;
    }
  }
}

LRKRunner::HostValues& LRKRunner::hostValues(int legNo) {
  const std::size_t at = indexWithin(legNo, table_.size());
  if (at >= hostValues_.size()) hostValues_.resize(at + 1);
  return hostValues_[at];
}

LRKRunner::HostValues LRKRunner::hostValues(int legNo) const {
  const auto at = static_cast<std::size_t>(legNo);
  return hasLeg(legNo) && at < hostValues_.size() ? hostValues_[at] : HostValues{};
}

float LRKRunner::performanceIndex(int legNo, enmLegStyle style) const {
  if (!isLegStyle(style)) return 0;
  return style <= elstTotal ? leg(legNo).performanceIndex[style]
                            : hostValues(legNo).performanceIndex[style];
}

void LRKRunner::performanceIndex(int legNo, enmLegStyle style, float index) {
  if (!isLegStyle(style)) return;
  (style <= elstTotal ? leg(legNo).performanceIndex : hostValues(legNo).performanceIndex)[style] =
      index;
}

Time LRKRunner::followingBenefitTime(int legNo, enmLegStyle style) const {
  if (!hasLeg(legNo) || !isLegStyle(style)) return 0;
  const Time total = leg(legNo).followingBenefit;
  if (style == elstTotal) return total;
  if (style != elstLeg) return hostValues(legNo).followingBenefit[style];
  return legNo == 0 ? total : total - leg(legNo - 1).followingBenefit;
}

void LRKRunner::followingBenefitTime(int legNo, enmLegStyle style, Time benefit) {
  if (style == elstTotal) {
    leg(legNo).followingBenefit = benefit;
  } else if (style == elstLeg) {
    const Time difference = benefit - followingBenefitTime(legNo, elstLeg);
    for (std::size_t i = indexWithin(legNo, table_.size()); i < table_.size(); ++i) {
      table_[i].followingBenefit += difference;
    }
  } else if (isLegStyle(style)) {
    hostValues(legNo).followingBenefit[style] = benefit;
  }
}

// The legs must be one fragment and account for just the punches from the gap's begin to its end:
// a rearranged or merged leg in between would count time of other legs.
bool LRKRunner::gapCanBeBridged(int firstLeg, int lastLeg) const {
  if (!legs_.isSingleCourseFragment(firstLeg, lastLeg)) return false;
  const int first = legs_.beginPunchIndex(firstLeg);
  const int last = legs_.endPunchIndex(lastLeg);
  if (last < first) return false;
  std::vector<bool> spanned(static_cast<std::size_t>(last - first) + 1, false);
  for (int i = firstLeg; i <= lastLeg; ++i) {
    for (int k = legs_.beginPunchIndex(i); k <= legs_.endPunchIndex(i); ++k) {
      if (k < first || k > last) return false;
      spanned[static_cast<std::size_t>(k - first)] = true;
    }
  }
  return std::find(spanned.begin(), spanned.end(), false) == spanned.end();
}

void LRKRunner::computeTotals() {
  std::int64_t sum = 0;
  int openGap = -1;
  bool controlMissing = false;
  for (int i = 0; i < legs_.count(); ++i) {
    LegTable& table = leg(i);
    table.total = LRK_NO_TIME;
    if (legs_.beginPunchIndex(i) == -1 || legs_.endPunchIndex(i) == -1) controlMissing = true;
    if (controlMissing) continue;

    const bool hasBegin = !isDisq(table.begin);
    const bool hasEnd = !isDisq(table.end);
    if (hasBegin && hasEnd) {
      sum += table.end - table.begin;
    } else if (hasBegin) {
      openGap = i;
      continue;
    } else if (hasEnd && openGap >= 0 && gapCanBeBridged(openGap, i)) {
      sum += table.end - leg(openGap).begin;
      openGap = -1;
    } else {
      continue;
    }
    table.total = static_cast<Time>(std::clamp<std::int64_t>(sum, INT32_MIN, LRK_NO_TIME));
  }
}

void LRKRunner::initializeTimes(bool onlyQualifyIfStatusIsOK) {
  const int n = legs_.count();
  if (n == 0) return;
  table_.resize(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) {
    leg(i).begin = legs_.beginTime(i);
    leg(i).end = legs_.endTime(i);
  }
  computeTotals();

  lastQualifiedLeg_ = -1;
  while (lastQualifiedLeg_ + 1 < n && !isDisq(leg(lastQualifiedLeg_ + 1).total)) {
    ++lastQualifiedLeg_;
  }
  const bool mayQualify = status() == estaOK || status() == estaFinished ||
                          status() == estaActive || status() == estaUnknown;
  if (lastQualifiedLeg_ == n - 1 && onlyQualifyIfStatusIsOK && !mayQualify) lastQualifiedLeg_ = -1;
  if (status() == estaOK) lastQualifiedLeg_ = n - 1;
}

void LRKRunner::subtractTimeLoss() {
  const auto subtract = [](Time& time, Time loss) {
    time = saturated<Time>(std::int64_t{time} - loss);
  };
  for (int i = 0; i < static_cast<int>(table_.size()); ++i) {
    LegTable& table = leg(i);
    if (!isTimeDisq(i, elstTotal)) subtract(table.total, table.timeLoss);
    if (i >= 1 && !isDisq(table.begin)) subtract(table.begin, leg(i - 1).timeLoss);
    if (!isTimeDisq(i, elstPassingEnd)) subtract(table.end, table.timeLoss);
  }
  for (LegTable& table : table_) table.timeLoss = 0;
}

void LRKRunner::transformPunches(const LRKCodes& templateCodes) {
  LRKPunches collected;
  for (const LRKPunches* list : {&punches_, &extraPunches_}) {
    for (int i = 0; i < list->count(); ++i) {
      if (!isDisq(list->time(i))) collected.add(list->time(i), list->code(i));
    }
  }
  std::vector<int> byTime(static_cast<std::size_t>(collected.count()));
  std::iota(byTime.begin(), byTime.end(), 0);
  std::stable_sort(byTime.begin(), byTime.end(),
                   [&collected](int a, int b) { return collected.time(a) < collected.time(b); });

  punches_ = {};
  extraPunches_ = {};
  std::vector<bool> used(byTime.size(), false);
  std::size_t next = 0;  // searches go on behind the last punch found
  bool controlMissing = false;
  for (const Code code : templateCodes.codes()) {
    std::size_t at = next;
    while (at < byTime.size() && collected.code(byTime[at]) != code) ++at;
    if (at == byTime.size()) {
      punches_.add(LRK_NO_TIME, code);
      controlMissing = true;
      continue;
    }
    punches_.add(collected.time(byTime[at]), code);
    used[at] = true;
    next = at + 1;
  }
  if (controlMissing && status() == estaOK) status(estaDisqualified);
  for (std::size_t i = 0; i < byTime.size(); ++i) {
    const Time time = collected.time(byTime[i]);
    if (!used[i] && !isDisq(time)) extraPunches_.add(time, collected.code(byTime[i]));
  }
}

LRKRunner LRKRunner::clone() const {
  LRKRunner copy;
  copySetProperties(*this, copy);
  copy.categoryIndex_ = categoryIndex_;
  copy.categoryName_ = categoryName_;
  copy.runnerIndex_ = runnerIndex_;
  copy.punches_ = punches_.clone();
  copy.extraPunches_ = extraPunches_.clone();
  copy.legs_ = legs_.clone();
  copy.requiredLegsValueUsed_ = requiredLegsValueUsed_;
  copy.rearrangementValueUsed_ = rearrangementValueUsed_;
  copy.mergingValueUsed_ = mergingValueUsed_;
  return copy;
}

TagValue LRKRunner::getPropertyByTag(enmFileTag tag, bool& isSet) const {
  if (tag == etagRunnerPunches || tag == etagRunnerExtraPunches) {
    isSet = true;
    return (tag == etagRunnerPunches ? punches_ : extraPunches_).count();
  }
  const TagValue value = propertyByTag(*this, tag, isSet);
  // A full name reads as the parts make it.
  return tag == etagRunnerName ? TagValue(name()) : value;
}

void LRKRunner::setPropertyByTag(enmFileTag tag, const TagValue& value, bool setValue) {
  larkstone::setPropertyByTag(*this, tag, value, setValue);
}

}  // namespace larkstone
