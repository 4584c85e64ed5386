#include "larkstone/online/captions.hpp"

#include <gtest/gtest.h>

#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

std::string placeIn(const std::string& file, int languageIndex) {
  const test::TempFolder folder;
  Captions captions;
  captions.text("place", "old");
  EXPECT_TRUE(captions.load(folder.write("captions.txt", file), languageIndex));
  return captions.text("place");
}

TEST(CaptionsTest, ColumnsAndEncodings) {
  EXPECT_EQ(placeIn("place\tPlac.\tPlace\r\n", 0), "Plac.");
  EXPECT_EQ(placeIn("place\t\tPlace\tPlatz", 1), "Place");
  EXPECT_EQ(placeIn("place\tPlac.\tPlace\r\n", 2), "");
  EXPECT_EQ(placeIn("name\tN\n\nplace\tP\rclub\tC", 0), "P");
  EXPECT_EQ(placeIn("place\tA\tB\nplace\tC\n", 1), "");  // the later line wins
  EXPECT_EQ(placeIn("place\t one\\ntwo\\tthree\\four\\", 0), " one\r\ntwo\tthree\\four\\");
  EXPECT_EQ(placeIn("place\t\\\\n", 0), "\\\r\n");
  EXPECT_EQ(placeIn("place\t\x96 \xF6", 0), "– ö");
  EXPECT_EQ(placeIn("place\tö", 0), "ö");
  EXPECT_EQ(placeIn("\xEF\xBB\xBFplace\tö", 0), "ö");
  EXPECT_EQ(placeIn("place\tö\xF6", 0), "Ã¶ö");  // one letter makes it all code page text
}

TEST(CaptionsTest, MissingFileKeepsTheCaptions) {
  Captions captions;
  captions.text("place", "old");
  EXPECT_FALSE(captions.load(test::TempFolder() / "missing", 0));
  EXPECT_EQ(captions.text("place"), "old");
}

}  // namespace
}  // namespace larkstone
