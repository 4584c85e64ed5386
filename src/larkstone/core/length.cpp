#include "larkstone/core/length.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

std::string grouped(std::int64_t value, std::string_view separator) {
  std::string text = std::to_string(value);
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, separator);
  return text;
}

}  // namespace

std::string lengthToString(Length length, enmLengthStyle style, int noOfDecimals,
                           std::string_view thousandSeparator, std::string_view decimalDelimiter,
                           std::string_view suffix) {
  const int places = style == elstkM ? 5 : 2;  // centimetres have this many decimals in the unit
  std::int64_t value = std::abs(std::int64_t{length});
  int decimals = places;
  while (decimals > 0 && value % 10 == 0 && noOfDecimals == -1) value /= 10, --decimals;
  if (noOfDecimals >= 0) {
    for (; decimals > noOfDecimals; --decimals)
      value = (value + (decimals - 1 == noOfDecimals ? 5 : 0)) / 10;
  }
  std::int64_t unit = 1;
  for (int i = 0; i < decimals; ++i) unit *= 10;

  std::string text = length < 0 && value != 0 ? "-" : "";
  text += grouped(value / unit, thousandSeparator);
  const int written = std::max(noOfDecimals, decimals);
  if (written > 0) {
    const std::string fraction = decimals == 0 ? "" : std::to_string(unit + value % unit).substr(1);
    text += decimalDelimiter;
    text += fraction;
    text.append(static_cast<std::size_t>(written - decimals), '0');
  }
  if (suffix == "[suffix]") suffix = style == elstkM ? " km" : " m";
  return text.append(suffix);
}

Length stringToLength(std::string_view text) {
  std::string lower = lowered(text);
  std::replace(lower.begin(), lower.end(), ',', '.');
  const bool metres = lower.find('.') == std::string::npos && lower.find("km") == std::string::npos;
  const double product = leadingNumber(lower) * (metres ? 100 : 100000);
  const double top = std::numeric_limits<Length>::max();
  return roundHalfEven(std::clamp(product, 0.0, top) + 0.0001);
}

}  // namespace larkstone
