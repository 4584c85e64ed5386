#pragma once

// The integers that every part of the library speaks: times, lengths and control codes.

#include <cstdint>

namespace larkstone {

/// A time in hundredths of a second (1 s = 100, 1 min = 6000, 1 h = 360000): elapsed, or a clock
/// time of day counted from midnight where a property says so.
using Time = std::int32_t;

/// A length in centimetres (1 m = 100, 1 km = 100000).
using Length = std::int32_t;

/// A control code. 0 to 32735 are printed on the course, the two blocks above are reserved.
using Code = std::int16_t;

/// No valid time: a missing punch, no result. Every time at or above it counts as invalid; test
/// with isDisq(), because sums of invalid times exceed it.
inline constexpr Time LRK_NO_TIME = 0xFFFFFF;

inline constexpr Code LRK_START_CODE = 0x7FE0;   ///< the start; the next 15 codes are start 2 to 16
inline constexpr Code LRK_FINISH_CODE = 0x7FF0;  ///< the finish; the next 15 are finish 2 to 16

/// The most entries any list holds. A full list refuses further ones.
inline constexpr int LRK_MAX_LIST = 32767;

constexpr bool isDisq(Time time) { return time >= LRK_NO_TIME; }
constexpr bool isStartCode(Code code) { return code >= LRK_START_CODE && code < LRK_FINISH_CODE; }
constexpr bool isFinishCode(Code code) { return code >= LRK_FINISH_CODE; }

/// What the time setters store: anything outside 0 .. LRK_NO_TIME becomes LRK_NO_TIME.
constexpr Time clampedTime(Time time) {
  return time < 0 || time > LRK_NO_TIME ? LRK_NO_TIME : time;
}

/// A shifted time of a list: below 0 becomes 0, above LRK_NO_TIME becomes LRK_NO_TIME.
constexpr Time shiftedTime(Time time, Time offset) {
  const std::int64_t sum = std::int64_t{time} + offset;
  if (sum < 0) return 0;
  return sum > LRK_NO_TIME ? LRK_NO_TIME : static_cast<Time>(sum);
}

}  // namespace larkstone
