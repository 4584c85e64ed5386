#include "larkstone/online/cell_format.hpp"

#include <utility>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(CellFormatTest, HexColors) {
  EXPECT_EQ(colorToHexColor(0x12ABCDEF), "#EFCDAB");  // the highest byte is no colour
  EXPECT_EQ(colorToHexColor(-1), "#FFFFFF");
  EXPECT_EQ(hexColorToColor("#ff0aB1"), 0xB10AFF);
  for (const char* text : {"", "#FFFFF", "#FFFFFFF", "FFFFFFF", "#GG0000", "#+10000"}) {
    EXPECT_EQ(hexColorToColor(text), 0) << text;
  }
}

TEST(CellFormatTest, MixedColors) {
  EXPECT_EQ(mixedColor(0xFFFFFF, 0, 0.5F), 0x808080);          // 127.5 to the even 128
  EXPECT_EQ(mixedColor(0, 0x050301, 0.5F), 0x020200);          // 2.5 to 2, 1.5 to 2, 0.5 to 0
  EXPECT_EQ(mixedColor(0x646464, 0x0000C8, 0.25F), 0x4B4B7D);  // 100 - 25, 100 + 25
  EXPECT_EQ(mixedColor(0x646464, 0x6400C8, 2.0F), 0x6400FF);   // -100 and 300 stay within a byte
}

TEST(CellFormatTest, FormatTexts) {
  const std::pair<const char*, const char*> rows[] = {
      {"Trebuchet MS;9.50;1;-1;1;2;3;4;1;2;#FF0000;16777215",
       "Trebuchet MS;9.5;1;1;1;2;3;4;1;2;255;16777215;0;0;0;0"},
      {"Arial;;;1;;;;5", "Arial;0;0;1;0;0;0;5;0;0;0;0;0;0;0;0"},
      {"Arial;big;yes;0.5;x;2px;;;7;9;#12;red", "Arial;0;0;1;0;2;0;0;7;9;0;0;0;0;0;0"},
      {"Arial;8,5;0;0;0;0;0;0;0;99999;99999999999; #010000 ;3;4",
       "Arial;8;0;0;0;0;0;0;0;32767;2147483647;1;0;0;0;0"},
  };
  for (const auto& [text, key] : rows) EXPECT_EQ(cellFormatKey(parseCellFormat(text), {}), key);
  EXPECT_EQ(cellFormatKey({}, {.top = 5, .left = {}}), ";0;0;0;0;0;0;0;0;0;0;0;1;0;5;0");
  EXPECT_EQ(cellFormatKey({}, {.top = {}, .left = 0}), ";0;0;0;0;0;0;0;0;0;0;0;0;1;0;0");
}

}  // namespace
}  // namespace larkstone
