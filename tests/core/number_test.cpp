#include "larkstone/core/number.hpp"

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(NumberTest, HalvesGoToTheEvenNeighbourWithin32Bits) {
  using Row = std::pair<double, std::int32_t>;
  for (const auto& [number, rounded] :
       {Row(0.5, 0), Row(1.5, 2), Row(2.5, 2), Row(-0.5, 0), Row(-1.5, -2), Row(-2.5, -2),
        Row(2.5000001, 3), Row(-2.4999999, -2), Row(1e300, INT32_MAX), Row(-1e300, INT32_MIN),
        Row(std::nan(""), 0), Row(2147483646.5, 2147483646)}) {
    EXPECT_EQ(roundHalfEven(number), rounded) << number;
  }
}

using Number = std::pair<std::string, double>;

TEST(NumberTest, LeadingNumbers) {
  for (const auto& [text, number] :
       {Number("  12.5km", 12.5), Number("-3-4", -3), Number(".5", 0.5), Number("+7", 7),
        Number("S1", 0), Number("-", 0), Number(".", 0), Number("1e5", 1)}) {
    EXPECT_DOUBLE_EQ(leadingNumber(text), number) << text;
  }
  for (const auto& [text, number] :
       {Number("100-2", 100), Number("-2.9", -2), Number("99999999999", INT32_MAX),
        Number(std::string(400, '9'), INT32_MAX)}) {
    EXPECT_EQ(leadingInteger(text), number) << text;
  }
}

TEST(NumberTest, WholeNumbersLeaveNothingOver) {
  EXPECT_EQ(wholeNumber(" 519,2 "), 519.2);
  EXPECT_EQ(wholeNumber("-4"), -4);
  for (const char* text : {"", "12a", "1,2,3", "nan", "0x10"}) EXPECT_FALSE(wholeNumber(text));
}

TEST(NumberTest, LengthsAsListsWriteThem) {
  for (const auto& [text, number] :
       {Number("1,5", 1.5), Number("1.2.5", 1.25), Number("4'500", 4500), Number("\"3:2\"", 3.2),
        Number("-1.5", -1.5), Number("", 0)}) {
    EXPECT_DOUBLE_EQ(textToNumber(text), number) << text;
  }
  EXPECT_DOUBLE_EQ(textToNumber("5 km", 7), 7);
}

TEST(NumberTest, SaturationKeepsWithinTheType) {
  EXPECT_EQ(saturated<std::uint8_t>(300), 255);
  EXPECT_EQ(saturated<std::uint8_t>(-1), 0);
  EXPECT_EQ(saturated<std::int16_t>(40000), 32767);
  EXPECT_EQ(saturated<std::int16_t>(-40000), -32768);
  EXPECT_EQ(saturated<std::int32_t>(-5), -5);
}

}  // namespace
}  // namespace larkstone
