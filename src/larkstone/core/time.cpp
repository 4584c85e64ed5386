#include "larkstone/core/time.hpp"

#include <algorithm>
#include <array>
#include <cmath>

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

std::string withFullStops(std::string_view text) {
  std::string result(trimmed(text));
  std::replace_if(
      result.begin(), result.end(), [](char c) { return c == ',' || c == ':'; }, '.');
  return result;
}

enmTimeAccuracy accuracyOfText(std::string_view text) {
  if (std::count(text.begin(), text.end(), '.') != 3) return etacSeconds;
  return text.substr(text.size() - 2).find('.') == std::string_view::npos ? etacHundredthsSeconds
                                                                          : etacTenthsSeconds;
}

// Groups of digits, taken from the right: the first counts in the accuracy's unit, the following
// ones in seconds, minutes and, however many there are, hours.
class GroupSum {
 public:
  explicit GroupSum(enmTimeAccuracy accuracy) : position_(accuracy) {}

  void add(int value) {
    if (position_ != etacHours || value < 1000) total_ += std::int64_t{value} * unitOf(position_);
    switch (position_) {
      case etacHundredthsSeconds:
      case etacTenthsSeconds:
        position_ = etacSeconds;
        break;
      case etacSeconds:
        position_ = etacMinutes;
        break;
      default:
        position_ = etacHours;
    }
  }
  std::int64_t total() const { return total_; }

 private:
  enmTimeAccuracy position_;
  std::int64_t total_ = 0;
};

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
    } else if (c == '.') {
      anyDigit = anyDigit || digits > 0;
      sum.add(value);
      value = digits = 0;
      scale = 1;
    }
  }
  if (!anyDigit || sum.total() >= LRK_NO_TIME) return LRK_NO_TIME;
  return static_cast<Time>(sum.total());
}

std::string padded(std::int64_t value, std::size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

// A time cut into what the clock shows.
struct ClockParts {
  std::int64_t hours;
  std::int64_t minutes;
  std::int64_t seconds;
  std::int64_t hundredths;
};

std::string baseText(const ClockParts& parts, int baseStyle, enmTimeAccuracy accuracy,
                     const std::array<std::string, 3>& delimiters) {
  const bool clock = baseStyle >= etstClockTime;
  const std::int64_t hours = clock ? parts.hours % 24 : parts.hours;
  std::string hourText = padded(hours, baseStyle == etstClockTimeForceTwoHourDigits ? 2 : 1);
  if (accuracy == etacHours) return hourText;
  std::string text;
  if (clock || (baseStyle == etstHMS && hours != 0)) {
    text = hourText + delimiters[0] + padded(parts.minutes, 2);
  } else {
    text = std::to_string(baseStyle == etstMS ? hours * 60 + parts.minutes : parts.minutes);
  }
  if (accuracy == etacMinutes) return text;
  return text + delimiters[1] + padded(parts.seconds, 2);
}

std::string fractionText(std::int64_t hundredths, enmTimeAccuracy accuracy, bool truncated,
                         const std::string& delimiter) {
  switch (accuracy) {
    case etacHundredthsSeconds:
      return delimiter + padded(hundredths, 2);
    case etacTenthsSeconds:
      return delimiter + std::to_string(hundredths / 10);
    case etacSeconds:
      if (hundredths == 0 || truncated) return {};
      return delimiter +
             (hundredths % 10 == 0 ? std::to_string(hundredths / 10) : padded(hundredths, 2));
    default:
      return {};
  }
}

}  // namespace

Time stringToTime(std::string_view text, enmTimeAccuracy accuracy,
                  bool truncateIfTimeIsMoreAccurate) {
  std::string groups = withFullStops(text);
  if (accuracy == etacAuto) accuracy = accuracyOfText(groups);
  const bool negative =
      !groups.empty() && groups.front() == '-' && groups.find('-', 1) == std::string::npos;
  if (negative) groups.erase(0, 1);
  if (groups.empty() || groups.find('-') != std::string::npos) return LRK_NO_TIME;

  const Time total = sumOfGroups(groups, accuracy);
  if (isDisq(total)) return LRK_NO_TIME;
  const Time time = truncateIfTimeIsMoreAccurate ? truncateTime(total, accuracy) : total;
  return negative ? -time : time;
}

Time stringToClockTime(std::string_view text, enmTimeAccuracy accuracy,
                       bool truncateIfTimeIsMoreAccurate) {
  std::string groups = withFullStops(text);
  if (accuracy != etacMinutes && accuracy != etacHours) {
    const auto stops = std::count(groups.begin(), groups.end(), '.');
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
  if (isDisq(time)) return "-";
  std::string sign;
  if (time < 0) {
    sign = "-";
  } else if ((style & etstRelative) != 0) {
    sign = "+";
  }
  std::int64_t t = std::abs(std::int64_t{time});
  const Time unit = unitOf(accuracy);
  if (truncateIfTimeIsMoreAccurate && unit != 0) t = t / unit * unit;

  std::array<std::string, 3> delimiter;
  for (std::string& d : delimiter) d = takeCharacter(delimiters);
  const ClockParts parts{t / 360000, t / 6000 % 60, t / 100 % 60, t % 100};
  return sign + baseText(parts, style & 3, accuracy, delimiter) +
         fractionText(parts.hundredths, accuracy, truncateIfTimeIsMoreAccurate, delimiter[2]);
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
  double total = 0;
  double weight = 100;
  double value = 0;
  double scale = 1;
  bool inGroup = false;
  for (std::size_t i = text.size() + 1; i-- > 0;) {
    const char c = i == 0 ? ' ' : text[i - 1];
    if (isDigit(c)) {
      value += (c - '0') * scale;
      scale *= 10;
      inGroup = true;
    } else if (inGroup) {
      total += value * weight;
      if (total > LRK_NO_TIME) return LRK_NO_TIME;
      weight *= 60;
      value = 0;
      scale = 1;
      inGroup = false;
    }
  }
  return static_cast<Time>(total);
}

}  // namespace larkstone
