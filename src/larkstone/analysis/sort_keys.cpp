#include "larkstone/analysis/sort_keys.hpp"

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

template <class T>
T ifSet(const T& value, bool set) {
  return set ? value : T{};
}

bool hasLeg(const LRKRunner& runner, int legNo) {
  return legNo >= 0 && legNo < runner.legs().count();
}

int orLast(const LRKRunner& runner, int legNo) {
  return legNo == -1 ? runner.legs().count() - 1 : legNo;
}

// By name, first the last name.
std::string nameKey(const LRKRunner& runner) {
  if (!runner.firstNameSet()) return runner.name();
  return std::string(
      trimmed(ifSet(runner.lastName(), runner.lastNameSet()) + " " + runner.firstName()));
}

Time resultTimeWithoutTimeLoss(const LRKRunner& runner, int lastLeg) {
  const Time result = runner.resultTime();
  if (isDisq(result)) return LRK_NO_TIME;
  const Time loss = hasLeg(runner, lastLeg) ? runner.timeLoss(lastLeg, elstTotal) : 0;
  return saturated<Time>(std::int64_t{result} - loss);
}

}  // namespace

SortKeyKind kindOf(enmSort sortBy) {
  switch (sortBy) {
    case esorName:
    case esorFirstName:
    case esorLastName:
    case esorClub:
    case esorClubCountryCode:
    case esorClubCountry:
    case esorNationality:
    case esorNationalityCode:
    case esorCourseName:
    case esorRelayTeam:
      return SortKeyKind::text;
    case esorBirthDate:
    case esorGender:
    case esorCourseLength:
    case esorResultPlace:
    case esorStatus:
    case esorNoOfTimeLossLegs:
    case esorRelayLeg:
      return SortKeyKind::number;
    case esorCoursePercentualTimeLoss:
    case esorCoursePerformanceIndex:
    case esorCoursePerformanceIndexWithoutTimeLoss:
    case esorCoursePullIndex:
    case esorCourseFollowingIndex:
    case esorPullIndex:
    case esorFollowingIndex:
    case esorLegPerformanceIndex:
    case esorTotalPerformanceIndex:
      return SortKeyKind::single;
    case esorStartTime:
    case esorFinishTime:
    case esorResultTime:
    case esorCourseTimeLoss:
    case esorResultTimeWithoutTimeLoss:
    case esorCourseFollowingBenefitTime:
    case esorCourseTime:
    case esorLegTime:
    case esorTotalTime:
    case esorPassingBeginTime:
    case esorPassingEndTime:
    case esorTotalTimeAllowMissingPunches:
    case esorPassingBeginTimeAllowMissingPunches:
    case esorPassingEndTimeAllowMissingPunches:
    case esorLegTimeLoss:
    case esorTotalTimeLoss:
    case esorLegFollowingBenefitTime:
    case esorTotalFollowingBenefitTime:
      return SortKeyKind::time;
    default:
      return SortKeyKind::none;
  }
}

std::string textKey(const LRKRunner& runner, enmSort sortBy) {
  switch (sortBy) {
    case esorName:
      return nameKey(runner);
    case esorFirstName:
      return ifSet(runner.firstName(), runner.firstNameSet());
    case esorLastName:
      return ifSet(runner.lastName(), runner.lastNameSet());
    case esorClub:
      return ifSet(runner.club(), runner.clubSet());
    case esorClubCountryCode:
      return ifSet(runner.clubCountryCode(), runner.clubCountryCodeSet());
    case esorClubCountry:
      return ifSet(runner.clubCountry(), runner.clubCountrySet());
    case esorNationality:
      return ifSet(runner.nationality(), runner.nationalitySet());
    case esorNationalityCode:
      return ifSet(runner.nationalityCode(), runner.nationalityCodeSet());
    case esorCourseName:
      return ifSet(runner.courseName(), runner.courseNameSet());
    case esorRelayTeam:
      return ifSet(runner.relayTeam(), runner.relayTeamSet());
    default:
      return {};
  }
}

std::int32_t numberKey(const LRKRunner& runner, enmSort sortBy) {
  switch (sortBy) {
    case esorBirthDate:
      return roundHalfEven(ifSet(runner.birthDate(), runner.birthDateSet()).day);
    case esorGender:
      return ifSet(runner.gender(), runner.genderSet());
    case esorCourseLength:
      return ifSet(runner.courseLength(), runner.courseLengthSet());
    case esorResultPlace:
      return ifSet(runner.resultPlace(), runner.resultPlaceSet());
    case esorStatus:
      return runner.status();
    case esorNoOfTimeLossLegs:
      return runner.noOfTimeLossLegs();
    case esorRelayLeg:
      return ifSet(runner.relayLeg(), runner.relayLegSet());
    default:
      return 0;
  }
}

Time timeKey(const LRKRunner& runner, enmSort sortBy, int legNo) {
  const int last = runner.legs().count() - 1;
  if (sortBy == esorResultTime) return runner.resultTime();
  if (sortBy == esorResultTimeWithoutTimeLoss) return resultTimeWithoutTimeLoss(runner, last);

  const bool knowsLegs = sortBy >= esorLegTime;
  const int leg = knowsLegs ? orLast(runner, legNo) : last;
  if (!hasLeg(runner, leg)) return LRK_NO_TIME;
  switch (sortBy) {
    case esorStartTime:
      return runner.time(0, elstPassingBegin);
    case esorFinishTime:
    case esorCourseTime:
      return runner.time(leg, elstTotal);
    case esorLegTimeLoss:
      return runner.timeLoss(leg, elstLeg);
    case esorCourseTimeLoss:
    case esorTotalTimeLoss:
      return runner.timeLoss(leg, elstTotal);
    case esorLegFollowingBenefitTime:
      return runner.followingBenefitTime(leg, elstLeg);
    case esorCourseFollowingBenefitTime:
    case esorTotalFollowingBenefitTime:
      return runner.followingBenefitTime(leg, elstTotal);
    default:  // esorLegTime and its siblings, in the order of the leg styles
      return runner.time(leg, static_cast<enmLegStyle>(sortBy - esorLegTime));
  }
}

float singleKey(const LRKRunner& runner, enmSort sortBy, int legNo) {
  const int leg = orLast(runner, legNo);
  switch (sortBy) {
    case esorCoursePercentualTimeLoss:
      return runner.coursePercentualTimeLoss();
    case esorCoursePerformanceIndex:
      return runner.coursePerformanceIndex();
    case esorCoursePerformanceIndexWithoutTimeLoss:
      return runner.coursePerformanceIndexWithoutTimeLoss();
    case esorCoursePullIndex:
      return runner.coursePullIndex();
    case esorCourseFollowingIndex:
      return runner.courseFollowingIndex();
    default:
      break;
  }
  if (!hasLeg(runner, leg)) return 0;
  switch (sortBy) {
    case esorPullIndex:
      return runner.pullIndex(leg);
    case esorFollowingIndex:
      return runner.followingIndex(leg);
    case esorLegPerformanceIndex:
      return runner.performanceIndex(leg, elstLeg);
    default:
      return runner.performanceIndex(leg, elstTotal);
  }
}

}  // namespace larkstone
