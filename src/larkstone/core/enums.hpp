#pragma once

// All enumerations of the public face. They stand together because lists below their owner use
// them too (the required-legs policy in leg lists, the leg style in the runner).

#include <cstdint>

namespace larkstone {

enum enmTimeAccuracy : std::int16_t {
  etacHundredthsSeconds = 0,
  etacTenthsSeconds = 1,
  etacSeconds = 2,
  etacMinutes = 3,
  etacHours = 4,
  etacAuto = 5,  ///< decided from the text when parsing, from the runners when calculating
};

/// Bits 0-1 are the base style, bit 2 the relative flag: `etstHMS | etstRelative`.
enum enmTimeStyle : std::int16_t {
  etstMS = 0,         ///< total minutes and seconds
  etstHMS = 1,        ///< hours only when there are any
  etstClockTime = 2,  ///< hours modulo 24
  etstClockTimeForceTwoHourDigits = 3,
  etstRelative = 4,  ///< times that are not negative get a leading "+"
};
constexpr enmTimeStyle operator|(enmTimeStyle a, enmTimeStyle b) {
  return static_cast<enmTimeStyle>(static_cast<int>(a) | static_cast<int>(b));
}

enum enmLengthStyle : std::int16_t { elstM = 0, elstkM = 1 };

enum enmCodeStringConversion : std::int16_t {
  ecscDefault = 0,         ///< S and F for the first start and finish, S2, F3 for the others
  ecscForceShowIndex = 1,  ///< S1, F1
  ecscForceHideIndex = 2,  ///< S, F
};

/// The policy by which a runner's legs are accepted on a course.
enum enmRequiredLegs : std::int16_t {
  erqlExactlyAll = 0,  ///< every leg is found, and there are no others
  erqlAll = 1,         ///< every leg is found
  erqlAtLeastOne = 2,
  erqlNone = 3,
};

/// Why a course does not take a runner (LRKCourse::addRunner()).
enum enmRefusal : std::int16_t {
  erefNone = 0,          ///< the runner was accepted
  erefCourseIsFull = 1,  ///< whatever the runner ran
  erefTooFewLegs = 2,    ///< a leg of the course was not run, and all are required
  erefOtherLegs = 3,     ///< all legs of the course were run, but others too
  erefNoFit = 4,         ///< not one leg of the course was run
};
inline constexpr int LRK_REFUSALS = 5;

enum enmStatus : std::int16_t {
  estaOK = 0,
  estaFinished = 1,
  estaActive = 2,
  estaInactive = 3,
  estaSportWithdr = 4,
  estaOverTime = 5,
  estaMisPunch = 6,
  estaDidNotFinish = 7,
  estaDisqualified = 8,
  estaNotCompeting = 9,
  estaDidNotStart = 10,
  estaMoved = 11,
  estaMovedUp = 12,
  estaCancelled = 13,
  estaUnknown = 14,
};

enum enmGender : std::int16_t { egndUnknown = 0, egndMale = 1, egndFemale = 2, egndMixed = 3 };

enum enmIDType : std::int16_t {
  eidtInt = 0,
  eidtNat = 1,
  eidtReg = 2,
  eidtLoc = 3,
  eidtOther = 4,
};

enum enmCourseType : std::int16_t {
  ectyNormal = 0,
  ectyRelay = 1,
  ectyOneManRelay = 2,
  ectyCommonLegs = 3,
  ectyRogaining = 4,
};

enum enmEventForm : std::int16_t {
  eefmIndSingleDay = 0,
  eefmIndMultiDay = 1,
  eefmTeamSingleDay = 2,
  eefmTeamMultiDay = 3,
  eefmRelay = 4,
};

enum enmEventClassification : std::int16_t {
  eclfUnknown = 0,
  eclfInternational = 1,
  eclfNational = 2,
  eclfRegional = 3,
  eclfLocal = 4,
  eclfClub = 5,
};

enum enmResultListStatus : std::int16_t { erlsComplete = 0, erlsSnapshot = 1, erlsDelta = 2 };

/// A set of bits.
enum enmCategorySortFlags : std::int16_t {
  ecsfUnsorted = 0,
  ecsfSorted = 1,
  ecsfYoungstersBeforeOldboys = 2,
  ecsfTreatGendersAsEqual = 4,
};
constexpr enmCategorySortFlags operator|(enmCategorySortFlags a, enmCategorySortFlags b) {
  return static_cast<enmCategorySortFlags>(static_cast<int>(a) | static_cast<int>(b));
}

/// How LRKEvent::searchRunners() compares a runner's value with the one sought.
enum enmComparisonOperator : std::int16_t {
  ecopEqual = 0,  ///< for texts: like a pattern
  ecopLessThan = 1,
  ecopMoreThan = 2,
  ecopLessThanOrEqual = 3,
  ecopMoreThanOrEqual = 4,
  ecopNotEqual = 5,  ///< for texts: unlike a pattern
};

/// Which time of a runner at a leg is meant.
enum enmLegStyle : std::int16_t {
  elstLeg = 0,           ///< time of the leg alone
  elstTotal = 1,         ///< time from the start to the end of the leg
  elstPassingBegin = 2,  ///< clock time at the begin control
  elstPassingEnd = 3,    ///< clock time at the end control
  elstTotalAllowMissingPunches = 4,
  elstPassingBeginAllowMissingPunches = 5,
  elstPassingEndAllowMissingPunches = 6,
};
inline constexpr int LRK_LEG_STYLES = 7;

/// A set of bits: the stages of LRKCourse::calculate().
enum enmCourseCalculationFlags : std::int32_t {
  eccfTimeLoss = 1,
  eccfPlacesDontAllowMissingPunches = 2,
  eccfPlacesAllowMissingPunches = 4,
  eccfLFIndices = 8,
  eccfPerformanceIndices = 16,
  eccfComplete = 31,
};
constexpr enmCourseCalculationFlags operator|(enmCourseCalculationFlags a,
                                              enmCourseCalculationFlags b) {
  return static_cast<enmCourseCalculationFlags>(static_cast<std::int32_t>(a) |
                                                static_cast<std::int32_t>(b));
}

enum enmTimeLossCalculationMethod : std::int16_t {
  etlcCompareToBestTime = 0,
  etlcCompareToTopTime = 1,
};

enum enmPFIndexCalculationMethod : std::int16_t { elfiBasic = 0, elfiExtended = 1 };

/// Keys of LRKCourse::sortRunners(). "Last leg" is meant where a key asks for no leg.
enum enmSort : std::int16_t {
#define LRK_SORT_KEY(number, name) name = number,
#include "larkstone/core/sort_keys.def"
};

/// Which of several runners of one team on one relay leg counts for the team.
enum enmRelayParallelMode : std::int16_t { erpmFastestTime = 0, erpmSlowestTime = 1 };

/// The last enumerator of an enumeration that properties hold. All of them count on from 0.
template <class Enumeration>
inline constexpr std::int32_t lastEnumerator = -1;
template <>
inline constexpr std::int32_t lastEnumerator<enmTimeAccuracy> = etacAuto;
template <>
inline constexpr std::int32_t lastEnumerator<enmRequiredLegs> = erqlNone;
template <>
inline constexpr std::int32_t lastEnumerator<enmStatus> = estaUnknown;
template <>
inline constexpr std::int32_t lastEnumerator<enmGender> = egndMixed;
template <>
inline constexpr std::int32_t lastEnumerator<enmIDType> = eidtOther;
template <>
inline constexpr std::int32_t lastEnumerator<enmCourseType> = ectyRogaining;
template <>
inline constexpr std::int32_t lastEnumerator<enmEventForm> = eefmRelay;
template <>
inline constexpr std::int32_t lastEnumerator<enmEventClassification> = eclfClub;
template <>
inline constexpr std::int32_t lastEnumerator<enmResultListStatus> = erlsDelta;

enum enmHAlign : std::int16_t { ehalLeft = 0, ehalCenter = 1, ehalRight = 2 };
enum enmVAlign : std::int16_t { evalTop = 0, evalCenter = 1, evalBottom = 2 };

}  // namespace larkstone
