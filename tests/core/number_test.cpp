#include "larkstone/core/number.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(NumberTest, HalvesGoToTheEvenNeighbour) {
  EXPECT_EQ(roundHalfEven(0.5), 0);
  EXPECT_EQ(roundHalfEven(1.5), 2);
  EXPECT_EQ(roundHalfEven(2.5), 2);
  EXPECT_EQ(roundHalfEven(-0.5), 0);
  EXPECT_EQ(roundHalfEven(-1.5), -2);
  EXPECT_EQ(roundHalfEven(-2.5), -2);
  EXPECT_EQ(roundHalfEven(2.5000001), 3);
  EXPECT_EQ(roundHalfEven(-2.4999999), -2);
}

TEST(NumberTest, RoundingStaysWithin32Bits) {
  EXPECT_EQ(roundHalfEven(1e300), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(roundHalfEven(-1e300), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(roundHalfEven(std::nan("")), 0);
  EXPECT_EQ(roundHalfEven(2147483646.5), 2147483646);
}

TEST(NumberTest, LeadingNumbers) {
  EXPECT_DOUBLE_EQ(leadingNumber("  12.5km"), 12.5);
  EXPECT_DOUBLE_EQ(leadingNumber("-3-4"), -3);
  EXPECT_DOUBLE_EQ(leadingNumber(".5"), 0.5);
  EXPECT_DOUBLE_EQ(leadingNumber("+7"), 7);
  EXPECT_DOUBLE_EQ(leadingNumber("S1"), 0);
  EXPECT_DOUBLE_EQ(leadingNumber("-"), 0);
  EXPECT_DOUBLE_EQ(leadingNumber("."), 0);
  EXPECT_DOUBLE_EQ(leadingNumber("1e5"), 1);
  EXPECT_EQ(leadingInteger("100-2"), 100);
  EXPECT_EQ(leadingInteger("-2.9"), -2);
  EXPECT_EQ(leadingInteger("99999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(leadingInteger(std::string(400, '9')), std::numeric_limits<std::int32_t>::max());
}

TEST(NumberTest, WholeNumbersLeaveNothingOver) {
  EXPECT_EQ(wholeNumber(" 519,2 "), 519.2);
  EXPECT_EQ(wholeNumber("-4"), -4);
  EXPECT_FALSE(wholeNumber(""));
  EXPECT_FALSE(wholeNumber("12a"));
  EXPECT_FALSE(wholeNumber("1,2,3"));
  EXPECT_FALSE(wholeNumber("nan"));
  EXPECT_FALSE(wholeNumber("0x10"));
}

TEST(NumberTest, LengthsAsListsWriteThem) {
  EXPECT_DOUBLE_EQ(textToNumber("1,5"), 1.5);
  EXPECT_DOUBLE_EQ(textToNumber("1.2.5"), 1.25);
  EXPECT_DOUBLE_EQ(textToNumber("4'500"), 4500);
  EXPECT_DOUBLE_EQ(textToNumber("\"3:2\""), 3.2);
  EXPECT_DOUBLE_EQ(textToNumber("-1.5"), -1.5);
  EXPECT_DOUBLE_EQ(textToNumber("5 km", 7), 7);
  EXPECT_DOUBLE_EQ(textToNumber(""), 0);
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
