#include "larkstone/online/cell_format.hpp"

#include <gtest/gtest.h>

#include "larkstone/online/style_registry.hpp"

namespace larkstone {
namespace {

constexpr Color white = 16777215;

TEST(CellFormatTest, ColorsAsHex) {
  struct Row {
    int line;
    Color color;
    const char* hex;
  };
  const Row rows[] = {
      {__LINE__, white, "#FFFFFF"},      {__LINE__, 0, "#000000"},
      {__LINE__, 255, "#FF0000"},        {__LINE__, 0x00FF00, "#00FF00"},
      {__LINE__, 16711680, "#0000FF"},   {__LINE__, 0x0A0B0C, "#0C0B0A"},
      {__LINE__, 0x12ABCDEF, "#EFCDAB"},  // the highest byte is no colour
      {__LINE__, -1, "#FFFFFF"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(colorToHexColor(row.color), row.hex);
    EXPECT_EQ(hexColorToColor(row.hex), row.color & white);
  }
}

TEST(CellFormatTest, HexColorsThatAreNone) {
  EXPECT_EQ(hexColorToColor("#ff00a0"), 0xA000FF);
  for (const char* text :
       {"", "#", "#FFFFF", "#FFFFFFF", "FFFFFF", "FFFFFFF", "#GG0000", "#00 000", "#+10000"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(hexColorToColor(text), 0);
  }
}

TEST(CellFormatTest, MixedColors) {
  struct Row {
    int line;
    const char* from;
    const char* to;
    float share;
    const char* mixed;
  };
  const Row rows[] = {
      {__LINE__, "#FFFFFF", "#000000", 0.5F, "#808080"},  // 127.5 to the even 128
      {__LINE__, "#000000", "#010305", 0.5F, "#000202"},  // 0.5 to 0, 1.5 to 2, 2.5 to 2
      {__LINE__, "#0A141E", "#C8C8C8", 0.0F, "#0A141E"},
      {__LINE__, "#0A141E", "#C8C8C9", 1.0F, "#C8C8C9"},
      {__LINE__, "#646464", "#C80000", 0.25F, "#7D4B4B"},  // 100 + 25, 100 - 25
      {__LINE__, "#646464", "#C80064", 2.0F, "#FF0064"},   // 300 and -100 stay within a byte
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const Color mixed = mixedColor(hexColorToColor(row.from), hexColorToColor(row.to), row.share);
    EXPECT_EQ(colorToHexColor(mixed), row.mixed);
  }
}

TEST(CellFormatTest, FormatTexts) {
  struct Row {
    int line;
    const char* text;
    const char* key;
  };
  const Row rows[] = {
      {__LINE__, "Verdana;8;0;0;2;2;1;1;0;0;0;16777215",
       "Verdana;8;0;0;2;2;1;1;0;0;0;16777215;0;0;0;0"},
      {__LINE__, "Trebuchet MS;9.50;1;-1;1;2;3;4;1;2;#FF0000;#0000ff",
       "Trebuchet MS;9.5;1;1;1;2;3;4;1;2;255;16711680;0;0;0;0"},
      {__LINE__, "", ";0;0;0;0;0;0;0;0;0;0;0;0;0;0;0"},
      {__LINE__, "Arial;7", "Arial;7;0;0;0;0;0;0;0;0;0;0;0;0;0;0"},
      {__LINE__, "Arial;;;1;;;;5", "Arial;0;0;1;0;0;0;5;0;0;0;0;0;0;0;0"},
      {__LINE__, "Arial;big;yes;0.5;x;2px;;;7;9;#12;red", "Arial;0;0;1;0;2;0;0;7;9;0;0;0;0;0;0"},
      {__LINE__, "Arial;8;0;0;0;0;0;0;0;0;1;2;3;4;5", "Arial;8;0;0;0;0;0;0;0;0;1;2;0;0;0;0"},
      {__LINE__, "Arial;8,5;0;0;0;0;0;0;0;99999;99999999999; #010000 ",
       "Arial;8;0;0;0;0;0;0;0;32767;2147483647;1;0;0;0;0"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(cellFormatKey(parseCellFormat(row.text), {}), row.key);
  }
  EXPECT_EQ(cellFormatKey({}, {.top = 5, .left = {}}), ";0;0;0;0;0;0;0;0;0;0;0;1;0;5;0");
  EXPECT_EQ(cellFormatKey({}, {.top = {}, .left = 0}), ";0;0;0;0;0;0;0;0;0;0;0;0;1;0;0");
}

TEST(StyleRegistryTest, EqualLooksShareAClass) {
  StyleRegistry registry(0, 0.5F);
  const CellFormat plain = parseCellFormat("Verdana;8;0;0;2;2;1;1;0;0;0;16777215");
  const CellFormat same = parseCellFormat("Verdana;8.0;0;0;2;2;1;1;0;0;#000000;#FFFFFF");
  const CellFormat red = parseCellFormat("Verdana;8;0;0;2;2;1;1;0;0;0;255");
  EXPECT_EQ(registry.registerCellFormat(plain, {}), "C0");
  EXPECT_EQ(registry.registerCellFormat(red, {}), "C1");
  EXPECT_EQ(registry.registerCellFormat(same, {}), "C0");
  EXPECT_EQ(registry.registerCellFormat(plain, {.top = {}, .left = 0}), "C2");
  EXPECT_EQ(registry.registerCellFormat(plain, {.top = 0, .left = {}}), "C3");
  EXPECT_EQ(registry.registerCellFormat(plain, {.top = 1, .left = {}}), "C4");
  EXPECT_EQ(registry.registerCellFormat(red, {}), "C1");
  EXPECT_EQ(registry.highlightList(), "'#808080','#800000','#808080','#808080','#808080',");
}

}  // namespace
}  // namespace larkstone
