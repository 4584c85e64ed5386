#pragma once

// Times: rounding, truncation, reading from text and writing as text.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

/// Reads "12:34", "1:02:03,4" or "-0.45"; ":" "," and "." all separate groups, and the last group
/// counts in units of `accuracy`. With etacAuto, three separators mean tenths or hundredths by the
/// length of the last group, anything else seconds. LRK_NO_TIME for text that holds no time.
Time stringToTime(std::string_view text, enmTimeAccuracy accuracy = etacSeconds,
                  bool truncateIfTimeIsMoreAccurate = true);

/// Reads a time of day; missing minutes and seconds are zero ("9" and "9:00" are 9:00:00).
Time stringToClockTime(std::string_view text, enmTimeAccuracy accuracy = etacSeconds,
                       bool truncateIfTimeIsMoreAccurate = true);

/// stringToTime(text, etacAuto): the times of CSV result lists.
Time csvTime(std::string_view text);

/// Writes a time; "-" for an invalid one. The three delimiters stand before the minutes, the
/// seconds and the fraction. With etacAuto nothing is truncated and no fraction is written.
///
///     timeToString(372345)                              // "1:02.03"
///     timeToString(4500, etstHMS | etstRelative)        // "+0.45"
std::string timeToString(Time time, enmTimeStyle style = etstHMS,
                         enmTimeAccuracy accuracy = etacSeconds,
                         bool truncateIfTimeIsMoreAccurate = true,
                         std::string_view delimiters = ":.,");

/// What timeToString() takes beside the time, made ready for many times.
class TimeFormat {
 public:
  explicit TimeFormat(enmTimeStyle style = etstHMS, enmTimeAccuracy accuracy = etacSeconds,
                      bool truncateIfTimeIsMoreAccurate = true,
                      std::string_view delimiters = ":.,");

  /// The room that writing a time takes, more than its characters.
  static constexpr std::size_t room = 48;
  /// Writes the text of timeToString() to where there is `room`, and returns its end.
  char* write(Time time, char* to) const;

 private:
  struct Delimiter {
    std::array<char, 4> bytes{};  // of one character
    std::size_t size = 0;
  };
  static char* written(const Delimiter& delimiter, char* to);
  char* writeClock(std::uint32_t seconds, char* to) const;
  char* writeFraction(std::uint32_t hundredths, char* to) const;

  int baseStyle_;
  bool relative_;
  enmTimeAccuracy accuracy_;
  bool truncated_;
  std::array<Delimiter, 3> delimiters_;  // before the minutes, the seconds and the fraction
};

/// To the unit of the accuracy, halves upwards also below zero. Invalid times become LRK_NO_TIME,
/// an accuracy without a unit (etacAuto) gives 0.
Time roundTime(Time time, enmTimeAccuracy accuracy = etacSeconds);

/// As roundTime(), towards zero.
Time truncateTime(Time time, enmTimeAccuracy accuracy = etacSeconds);

/// The coarsest unit that divides the time; hours for 0 and for LRK_NO_TIME.
enmTimeAccuracy getTimeAccuracy(Time time);

/// Whether a text could be a time: digits, ":", "." and "," behind at most one sign.
bool isTimeText(std::string_view text);

/// Reads groups of digits between any other characters as seconds, minutes, hours from the right;
/// of a range "10:00-10:45" the end. LRK_NO_TIME for empty text and text that begins with "-".
Time sexagesimalTextToTime(std::string_view text);

}  // namespace larkstone
