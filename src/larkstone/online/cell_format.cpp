#include "larkstone/online/cell_format.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr std::array<int, 3> channelShifts = {0, 8, 16};  // red, green, blue

constexpr int channel(Color color, int shift) { return (color >> shift) & 255; }

constexpr int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// Hands out the fields of a format text; behind the last one they are empty.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : rest_(text) {}

  std::string_view text() {
    const std::size_t end = std::min(rest_.find(';'), rest_.size());
    const std::string_view field = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return field;
  }
  int integer() { return leadingInteger(text()); }
  bool flag() { return leadingNumber(text()) != 0; }
  float number() {
    constexpr double limit = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(leadingNumber(text()), -limit, limit));
  }
  Color color() {
    const std::string_view field = trimmed(text());
    return field.starts_with('#') ? hexColorToColor(field) : leadingInteger(field);
  }

 private:
  std::string_view rest_;
};

}  // namespace

std::string colorToHexColor(Color color) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text = "#";
  for (const int shift : channelShifts) {
    const auto value = static_cast<std::size_t>(channel(color, shift));
    text += digits[value / 16];
    text += digits[value % 16];
  }
  return text;
}

Color hexColorToColor(std::string_view hexColor) {
  if (hexColor.size() != 7 || hexColor.front() != '#') return 0;
  Color color = 0;
  for (std::size_t i = 0; i < channelShifts.size(); ++i) {
    const int high = hexDigit(hexColor[2 * i + 1]);
    const int low = hexDigit(hexColor[2 * i + 2]);
    if (high < 0 || low < 0) return 0;
    color |= (high * 16 + low) << channelShifts[i];
  }
  return color;
}

Color mixedColor(Color from, Color to, float share) {
  Color mixed = 0;
  for (const int shift : channelShifts) {
    const int begin = channel(from, shift);
    const int value =
        roundHalfEven(begin + static_cast<double>(share) * (channel(to, shift) - begin));
    mixed |= std::clamp(value, 0, 255) << shift;
  }
  return mixed;
}

CellFormat parseCellFormat(std::string_view text) {
  FieldReader fields(text);
  CellFormat format;
  format.font = fields.text();
  format.size = fields.number();
  format.bold = fields.flag();
  format.italic = fields.flag();
  format.leftPadding = fields.integer();
  format.topPadding = fields.integer();
  format.rightPadding = fields.integer();
  format.bottomPadding = fields.integer();
  format.hAlign = static_cast<enmHAlign>(saturated<std::int16_t>(fields.integer()));
  format.vAlign = static_cast<enmVAlign>(saturated<std::int16_t>(fields.integer()));
  format.textColor = fields.color();
  format.backColor = fields.color();
  return format;
}

std::string cellFormatKey(const CellFormat& format, const CellBorders& borders) {
  std::string key = format.font + ';' + fontSizeText(format.size);
  const auto add = [&key](int value) { key += ';' + std::to_string(value); };
  add(format.bold);
  add(format.italic);
  add(format.leftPadding);
  add(format.topPadding);
  add(format.rightPadding);
  add(format.bottomPadding);
  add(format.hAlign);
  add(format.vAlign);
  add(format.textColor);
  add(format.backColor);
  add(borders.top.has_value());
  add(borders.left.has_value());
  add(borders.top.value_or(0));
  add(borders.left.value_or(0));
  return key;
}

std::string fontSizeText(float points) {
  std::array<char, 64> digits;  // the longest number of its kind has 47 characters
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), points, std::chars_format::fixed);
  return {digits.data(), end.ptr};
}

}  // namespace larkstone
