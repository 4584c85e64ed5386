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
    } else if (isDelimiter(c)) {
      anyDigit = anyDigit || digits > 0;
      sum.add(value);
      value = digits = 0;
      scale = 1;
    }
  }
  if (!anyDigit || sum.total() >= LRK_NO_TIME) return LRK_NO_TIME;
  return static_cast<Time>(sum.total());
}

// A short text put together from numbers and delimiters.
class TimeText {
 public:
  void add(std::string_view text) {
    for (const char c : text) text_[length_++] = c;
  }
  void number(std::int64_t value, int width = 1) {
    int digits = 1;
    for (std::int64_t rest = value / 10; rest > 0; rest /= 10) ++digits;
    digits = std::max(digits, width);
    for (int i = digits - 1; i >= 0; --i, value /= 10) {
      text_[length_ + static_cast<std::size_t>(i)] = static_cast<char>('0' + value % 10);
    }
    length_ += static_cast<std::size_t>(digits);
  }
  std::string text() const { return {text_.data(), length_}; }

 private:
  std::array<char, 48> text_;  // a sign, four numbers of at most ten digits, three characters
  std::size_t length_ = 0;
};

// A time cut into what the clock shows.
struct ClockParts {
  std::int64_t hours;
  std::int64_t minutes;
  std::int64_t seconds;
  std::int64_t hundredths;
};

struct Delimiters {
  std::string_view hours;
  std::string_view minutes;
  std::string_view seconds;
};

void addBase(TimeText& text, const ClockParts& parts, int baseStyle, enmTimeAccuracy accuracy,
             const Delimiters& delimiters) {
  const bool clock = baseStyle >= etstClockTime;
  const std::int64_t hours = clock ? parts.hours % 24 : parts.hours;
  const int hourDigits = baseStyle == etstClockTimeForceTwoHourDigits ? 2 : 1;
  if (accuracy == etacHours) return text.number(hours, hourDigits);
  if (clock || (baseStyle == etstHMS && hours != 0)) {
    text.number(hours, hourDigits);
    text.add(delimiters.hours);
    text.number(parts.minutes, 2);
  } else {
    text.number(baseStyle == etstMS ? hours * 60 + parts.minutes : parts.minutes);
  }
  if (accuracy == etacMinutes) return;
  text.add(delimiters.minutes);
  text.number(parts.seconds, 2);
}

void addFraction(TimeText& text, std::int64_t hundredths, enmTimeAccuracy accuracy, bool truncated,
                 std::string_view delimiter) {
  if (accuracy > etacSeconds || accuracy < etacHundredthsSeconds) return;
  if (accuracy == etacSeconds && (hundredths == 0 || truncated)) return;
  const bool tenths =
      accuracy == etacTenthsSeconds || (accuracy == etacSeconds && hundredths % 10 == 0);
  text.add(delimiter);
  if (tenths) {
    text.number(hundredths / 10);
  } else {
    text.number(hundredths, 2);
  }
}

}  // namespace

Time stringToTime(std::string_view text, enmTimeAccuracy accuracy,
                  bool truncateIfTimeIsMoreAccurate) {
  std::string_view groups = trimmed(text);
  if (accuracy == etacAuto) accuracy = accuracyOfText(groups);
  const bool negative = groups.starts_with('-') && groups.find('-', 1) == std::string_view::npos;
  if (negative) groups.remove_prefix(1);
  if (groups.empty() || groups.find('-') != std::string_view::npos) return LRK_NO_TIME;

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
  if (isDisq(time)) return "-";
  TimeText text;
  if (time < 0) {
    text.add("-");
  } else if ((style & etstRelative) != 0) {
    text.add("+");
  }
  std::int64_t t = std::abs(std::int64_t{time});
  const Time unit = unitOf(accuracy);
  if (truncateIfTimeIsMoreAccurate && unit != 0) t = t / unit * unit;

  Delimiters delimiter;
  for (std::string_view* d : {&delimiter.hours, &delimiter.minutes, &delimiter.seconds}) {
    *d = takeCharacter(delimiters);
  }
  const ClockParts parts{t / 360000, t / 6000 % 60, t / 100 % 60, t % 100};
  addBase(text, parts, style & 3, accuracy, delimiter);
  addFraction(text, parts.hundredths, accuracy, truncateIfTimeIsMoreAccurate, delimiter.seconds);
  return text.text();
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
