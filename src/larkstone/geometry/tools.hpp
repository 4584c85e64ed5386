#pragma once

// The public conversion service: times, lengths and codes to and from text, for hosts.

#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/code_text.hpp"
#include "larkstone/core/length.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/geometry/codes.hpp"

namespace larkstone {

/// Finds controls that runners punched where others have the start or the finish, so that they can
/// be treated as such: the codes in front of a control that elsewhere comes first behind the start,
/// and behind a control that elsewhere comes last before the finish. The lists are overwritten.
void getCodesEqualToStartAndFinish(const std::vector<LRKCodes>& codes, LRKCodes& startCodes,
                                   LRKCodes& finishCodes);

/// Stateless; every method is the function of its name.
class LRKTools {
 public:
  static Time stringToTime(std::string_view txt, enmTimeAccuracy accuracy = etacSeconds,
                           bool truncateIfTimeIsMoreAccurate = true) {
    return larkstone::stringToTime(txt, accuracy, truncateIfTimeIsMoreAccurate);
  }
  static std::string timeToString(Time time, enmTimeStyle style = etstHMS,
                                  enmTimeAccuracy accuracy = etacSeconds,
                                  bool truncateIfTimeIsMoreAccurate = true,
                                  std::string_view delimiters = ":.,") {
    return larkstone::timeToString(time, style, accuracy, truncateIfTimeIsMoreAccurate, delimiters);
  }
  static Time stringToClockTime(std::string_view txt, enmTimeAccuracy accuracy = etacSeconds,
                                bool truncateIfTimeIsMoreAccurate = true) {
    return larkstone::stringToClockTime(txt, accuracy, truncateIfTimeIsMoreAccurate);
  }
  static Time csvTime(std::string_view txt) { return larkstone::csvTime(txt); }
  static bool isDisq(Time time) { return larkstone::isDisq(time); }
  static Time roundTime(Time time, enmTimeAccuracy accuracy = etacSeconds) {
    return larkstone::roundTime(time, accuracy);
  }
  static Time truncateTime(Time time, enmTimeAccuracy accuracy = etacSeconds) {
    return larkstone::truncateTime(time, accuracy);
  }
  static std::string lengthToString(Length length, enmLengthStyle style = elstM,
                                    int noOfDecimals = -1, std::string_view thousandSeparator = " ",
                                    std::string_view decimalDelimiter = ".",
                                    std::string_view suffix = "[suffix]") {
    return larkstone::lengthToString(length, style, noOfDecimals, thousandSeparator,
                                     decimalDelimiter, suffix);
  }
  static Length stringToLength(std::string_view txt) { return larkstone::stringToLength(txt); }
  static enmTimeAccuracy getTimeAccuracy(Time time) { return larkstone::getTimeAccuracy(time); }
  static std::string codeToString(Code code, std::string_view startName,
                                  std::string_view finishName, std::string_view codePrefix = "",
                                  enmCodeStringConversion codeStringConversion = ecscDefault) {
    return larkstone::codeToString(code, startName, finishName, codePrefix, codeStringConversion);
  }
  static Code stringToCode(std::string_view txt, std::string_view startName,
                           std::string_view finishName, std::string_view codePrefix = "",
                           enmCodeStringConversion codeStringConversion = ecscDefault) {
    return larkstone::stringToCode(txt, startName, finishName, codePrefix, codeStringConversion);
  }
  /// Only the first noOfRunners lists are looked at.
  static void getCodesEqualToStartAndFinish(int noOfRunners, const std::vector<LRKCodes>& codes,
                                            LRKCodes& startCodes, LRKCodes& finishCodes);
};

}  // namespace larkstone
