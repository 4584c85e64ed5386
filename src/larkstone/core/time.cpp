#include "larkstone/core/time.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

// Hundredths of a second in one unit of the accuracy; 0 for an accuracy that is no unit.
constexpr Time unitOf(enmTimeAccuracy accuracy) {
  switch (accuracy) {
    case etacHundredthsSeconds:
      return 1;
    case etacTenthsSeconds:
      return 10;
    case etacSeconds:
      return 100;
    case etacMinutes:
      return 6000;
    case etacHours:
      return 360000;
    default:
      return 0;
  }
}

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isDelimiter(char c) { return c == '.' || c == ',' || c == ':'; }

enmTimeAccuracy accuracyOfText(std::string_view text) {
  if (std::count_if(text.begin(), text.end(), isDelimiter) != 3) return etacSeconds;
  return isDelimiter(text[text.size() - 2]) || isDelimiter(text.back()) ? etacTenthsSeconds
                                                                        : etacHundredthsSeconds;
}

// Groups of digits, taken from the right: the first counts in the accuracy's unit, the following
// ones in seconds, minutes and, however many there are, hours.
class GroupSum {
 public:
  explicit GroupSum(enmTimeAccuracy accuracy) : unit_(unitOf(accuracy)) {}

  void add(int value) {
    if (unit_ != hour || value < 1000) total_ += std::int64_t{value} * unit_;
    unit_ = unit_ < second ? second : unit_ == second ? minute : hour;
  }
  std::int64_t total() const { return total_; }

 private:
  static constexpr Time second = unitOf(etacSeconds);
  static constexpr Time minute = unitOf(etacMinutes);
  static constexpr Time hour = unitOf(etacHours);

  Time unit_;
  std::int64_t total_ = 0;
};

// LRK_NO_TIME for text without digits, with five in a row, or with a "-".
Time sumOfGroups(std::string_view text, enmTimeAccuracy accuracy) {
  GroupSum sum(accuracy);
  bool anyDigit = false;
  int value = 0;
  int digits = 0;
  int scale = 1;
  for (std::size_t i = text.size() + 1; i-- > 0;) {
    const char c = i == 0 ? '.' : text[i - 1];
    if (isDigit(c)) {
      if (++digits > 4) return LRK_NO_TIME;
      value += (c - '0') * scale;
      scale *= 10;
    } else if (isDelimiter(c)) {
      anyDigit = anyDigit || digits > 0;
      sum.add(value);
      value = digits = 0;
      scale = 1;
    } else if (c == '-') {
      return LRK_NO_TIME;
    }
  }
  if (!anyDigit || sum.total() >= LRK_NO_TIME) return LRK_NO_TIME;
  return static_cast<Time>(sum.total());
}

// In decimal, with at least one or two digits.
char* writeNumber(std::uint32_t value, int digits, char* to) {
  if (value >= 100) return std::to_chars(to, to + 10, value).ptr;
  if (value >= 10 || digits == 2) *to++ = static_cast<char>('0' + value / 10);
  *to++ = static_cast<char>('0' + value % 10);
  return to;
}

}  // namespace

Time stringToTime(std::string_view text, enmTimeAccuracy accuracy,
                  bool truncateIfTimeIsMoreAccurate) {
  std::string_view groups = trimmed(text);
  if (accuracy == etacAuto) accuracy = accuracyOfText(groups);
  const bool negative = groups.starts_with('-');
  if (negative) groups.remove_prefix(1);
  const Time total = sumOfGroups(groups, accuracy);
  if (isDisq(total)) return LRK_NO_TIME;
  const Time time = truncateIfTimeIsMoreAccurate ? truncateTime(total, accuracy) : total;
  return negative ? -time : time;
}

Time stringToClockTime(std::string_view text, enmTimeAccuracy accuracy,
                       bool truncateIfTimeIsMoreAccurate) {
  std::string groups(trimmed(text));
  if (accuracy != etacMinutes && accuracy != etacHours) {
    const auto stops = std::count_if(groups.begin(), groups.end(), isDelimiter);
    if (stops == 0) {
      groups += ".00.00";
    } else if (stops == 1) {
      groups += ".00";
    } else if (stops >= 3) {
      accuracy = etacAuto;
    }
  }
  return stringToTime(groups, accuracy, truncateIfTimeIsMoreAccurate);
}

Time csvTime(std::string_view text) { return stringToTime(text, etacAuto, true); }

std::string timeToString(Time time, enmTimeStyle style, enmTimeAccuracy accuracy,
                         bool truncateIfTimeIsMoreAccurate, std::string_view delimiters) {
  std::array<char, TimeFormat::room> text;
  const TimeFormat format(style, accuracy, truncateIfTimeIsMoreAccurate, delimiters);
  return {text.data(), format.write(time, text.data())};
}

TimeFormat::TimeFormat(enmTimeStyle style, enmTimeAccuracy accuracy,
                       bool truncateIfTimeIsMoreAccurate, std::string_view delimiters)
    : baseStyle_(style & 3),
      relative_((style & etstRelative) != 0),
      accuracy_(accuracy),
      truncated_(truncateIfTimeIsMoreAccurate) {
  for (Delimiter& delimiter : delimiters_) {
    const std::string_view character = takeCharacter(delimiters);
    delimiter.size = character.copy(delimiter.bytes.data(), delimiter.bytes.size());
  }
}

char* TimeFormat::write(Time time, char* to) const {
  if (isDisq(time) || time < 0) {
    *to++ = '-';
    if (isDisq(time)) return to;
  } else if (relative_) {
    *to++ = '+';
  }
  const auto t = static_cast<std::uint32_t>(std::abs(std::int64_t{time}));
  return writeFraction(t % 100, writeClock(t / 100, to));
}

char* TimeFormat::writeClock(std::uint32_t seconds, char* to) const {
  const std::uint32_t minutes = seconds / 60;
  const bool clock = baseStyle_ >= etstClockTime;
  const std::uint32_t hours = clock ? minutes / 60 % 24 : minutes / 60;
  const int hourDigits = baseStyle_ == etstClockTimeForceTwoHourDigits ? 2 : 1;
  if (accuracy_ == etacHours) return writeNumber(hours, hourDigits, to);
  if (clock || (baseStyle_ == etstHMS && hours != 0)) {
    to = written(delimiters_[0], writeNumber(hours, hourDigits, to));
    to = writeNumber(minutes % 60, 2, to);
  } else {
    to = writeNumber(baseStyle_ == etstMS ? minutes : minutes % 60, 1, to);
  }
  if (accuracy_ == etacMinutes) return to;
  return writeNumber(seconds % 60, 2, written(delimiters_[1], to));
}

char* TimeFormat::writeFraction(std::uint32_t hundredths, char* to) const {
  if (accuracy_ > etacSeconds || accuracy_ < etacHundredthsSeconds) return to;
  if (accuracy_ == etacSeconds && (hundredths == 0 || truncated_)) return to;
  const bool tenths =
      accuracy_ == etacTenthsSeconds || (accuracy_ == etacSeconds && hundredths % 10 == 0);
  to = written(delimiters_[2], to);
  return tenths ? writeNumber(hundredths / 10, 1, to) : writeNumber(hundredths, 2, to);
}

char* TimeFormat::written(const Delimiter& delimiter, char* to) {
  std::memcpy(to, delimiter.bytes.data(), delimiter.bytes.size());
  return to + delimiter.size;
}

Time roundTime(Time time, enmTimeAccuracy accuracy) {
  if (isDisq(time)) return LRK_NO_TIME;
  const Time unit = unitOf(accuracy);
  if (unit == 0) return 0;
  if (unit == 1) return time;
  return static_cast<Time>(std::floor(static_cast<double>(time) / unit + 0.5) * unit);
}

Time truncateTime(Time time, enmTimeAccuracy accuracy) {
  if (isDisq(time)) return LRK_NO_TIME;
  const Time unit = unitOf(accuracy);
  return unit == 0 ? 0 : time / unit * unit;
}

enmTimeAccuracy getTimeAccuracy(Time time) {
  if (time == LRK_NO_TIME) return etacHours;
  if (time % 10 != 0) return etacHundredthsSeconds;
  if (time % 100 != 0) return etacTenthsSeconds;
  if (time % 6000 != 0) return etacSeconds;
  if (time % 360000 != 0) return etacMinutes;
  return etacHours;
}

bool isTimeText(std::string_view text) {
  if (text.empty()) return false;
  text = trimmed(text);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  return text.find_first_not_of("0123456789:.,") == std::string_view::npos;
}

Time sexagesimalTextToTime(std::string_view text) {
  text = trimmed(text);
  if (text.empty() || text.front() == '-') return LRK_NO_TIME;
  if (const auto dash = text.find('-'); dash != std::string_view::npos) {
    text.remove_prefix(dash + 1);
  }
  // All but the total stop at a number that is too large already, whatever comes in front of it.
  constexpr std::int64_t enough = LRK_NO_TIME + 1;
  std::int64_t total = 0;
  std::int64_t weight = 100;
  std::int64_t value = 0;
  std::int64_t scale = 1;
  bool inGroup = false;
  for (std::size_t i = text.size() + 1; i-- > 0;) {
    const char c = i == 0 ? ' ' : text[i - 1];
    if (isDigit(c)) {
      value = std::min(value + (c - '0') * scale, enough);
      scale = std::min(scale * 10, enough);
      inGroup = true;
    } else if (inGroup) {
      total += value * weight;
      if (total > LRK_NO_TIME) return LRK_NO_TIME;
      weight = std::min(weight * 60, enough);
      value = 0;
      scale = 1;
      inGroup = false;
    }
  }
  return static_cast<Time>(total);
}

}  // namespace larkstone
