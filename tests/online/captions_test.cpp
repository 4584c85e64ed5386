#include "larkstone/online/captions.hpp"

#include <fstream>

#include <gtest/gtest.h>

#include "larkstone/online/table.hpp"

namespace larkstone {
namespace {

class CaptionsTest : public ::testing::Test {
 protected:
  CaptionsTest() : path_(::testing::TempDir() + "larkstone_captions_test.txt") {}
  ~CaptionsTest() override { std::remove(path_.c_str()); }

  Captions loaded(const std::string& bytes, int languageIndex) {
    std::ofstream(path_, std::ios::binary) << bytes;
    Captions captions;
    captions.text("old", "caption");
    EXPECT_TRUE(captions.load(path_, languageIndex));
    return captions;
  }

  std::string path_;
};

TEST_F(CaptionsTest, Columns) {
  struct Row {
    int line;
    const char* file;
    int language;
    const char* caption;
  };
  const Row rows[] = {
      {__LINE__, "place\tPlac.\tPlace\r\n", 0, "Plac."},
      {__LINE__, "place\tPlac.\tPlace\r\n", 1, "Place"},
      {__LINE__, "place\tPlac.\tPlace\r\n", 2, ""},
      {__LINE__, "place\tPlac.\tPlace\r\n", 32767, ""},
      {__LINE__, "place\tPlac.\tPlace\r\n", -1, "Plac."},
      {__LINE__, "place\tPlac.\tPlace\tPlatz", 1, "Place"},
      {__LINE__, "place", 0, ""},
      {__LINE__, "place\t\tPlace", 0, ""},
      {__LINE__, "place\t\tPlace", 1, "Place"},
      {__LINE__, "name\tN\n\nplace\tP\n", 0, "P"},
      {__LINE__, "name\tN\rplace\tP\r", 0, "P"},
      {__LINE__, "place\tA\tB\nplace\tC\tD\n", 0, "C"},  // the later line wins,
      {__LINE__, "place\tA\tB\nplace\tC\n", 1, ""},      // also with less in it
      {__LINE__, "Place\tA\n place\tB\nplaces\tC\n", 0, ""},
      {__LINE__, "place\tone\\ntwo\\tthree\\four\\", 0, "one\r\ntwo\tthree\\four\\"},
      {__LINE__, "place\t\\\\n", 0, "\\\r\n"},
      {__LINE__, "place\t a b ", 0, " a b "},
      {__LINE__, "", 0, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const Captions captions = loaded(row.file, row.language);
    EXPECT_EQ(captions.text("place"), row.caption);
    EXPECT_EQ(captions.text("old"), "");
  }
}

TEST_F(CaptionsTest, Encodings) {
  EXPECT_EQ(loaded("club\tF\xF6rening\t", 0).text("club"), "Förening");
  EXPECT_EQ(loaded("club\t\x96", 0).text("club"), "–");
  EXPECT_EQ(loaded("club\tFörening\t", 0).text("club"), "Förening");
  EXPECT_EQ(loaded("\xEF\xBB\xBF"
                   "club\tKlub\xC5\xAF",
                   0)
                .text("club"),
            "Klubů");
  // One letter of the code page makes the whole file code page text.
  EXPECT_EQ(loaded("club\tö\xF6", 0).text("club"), "Ã¶ö");
}

TEST_F(CaptionsTest, MissingFileKeepsTheCaptions) {
  clsLarkstoneOnlineTable table;
  table.caption("place", "Pl.");
  EXPECT_FALSE(table.setLanguage(path_ + ".missing", 0));
  EXPECT_FALSE(table.setLanguage(::testing::TempDir(), 0));
  EXPECT_EQ(table.caption("place"), "Pl.");
  std::ofstream(path_) << "name\tNamn\n";
  EXPECT_TRUE(table.setLanguage(path_, 0));
  EXPECT_EQ(table.caption("place"), "");
  EXPECT_EQ(table.caption("name"), "Namn");
}

}  // namespace
}  // namespace larkstone
