// Damaged and hostile event files: a code or fewer records, never more.

#include "larkstone/event/category_codec.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

class DamagedFile : public EventTest {
 protected:
  // Opens a file of those bytes and asks for what the event offers then.
  std::int32_t openAndAsk(const std::string& bytes) {
    const std::int32_t code = openBytes(bytes);
    for (int i = 0; i < event_.noOfCategories(); ++i) {
      EXPECT_NE(event_.category(i), nullptr);
      event_.extractCategoryTag(i, etagCategoryShortName);
    }
    event_.extractDerivedCourseTag(0, etagDerivedCourseNoOfRunners);
    EXPECT_EQ(event_.isOpen(), code == 0 || code == LRK_UNKNOWN_FILE_VERSION);
    EXPECT_EQ(filesIn(work_).size(), event_.isOpen() ? 1U : 0U) << "a working file was left";
    return code;
  }
};

TEST_F(DamagedFile, CodesOfOpening) {
  const std::string good = eventFile({hex("43 0100 41")});
  const auto patched = [&good](std::size_t at, const std::string& bytes) {
    std::string file = good;
    return file.replace(at, bytes.size(), bytes);
  };
  // Version at 10, category count at 13, derived-course count at 16, P = 18: offset record, D1 at
  // 19, table tag at 23, position at 24, length at 28, second table tag at 32, data at 33.
  ASSERT_EQ(good.size(), 37U);
  struct Row {
    int line;
    std::string file;
    std::int32_t code;
  };
  const Row rows[] = {
      {__LINE__, good + "bytes behind the data area", 0},
      {__LINE__, eventFile({}), 0},
      {__LINE__, patched(10, hex("0100")), LRK_UNKNOWN_FILE_VERSION},
      {__LINE__, "", LRK_NOT_A_LRK_FILE},
      {__LINE__, "lrk3" + good.substr(4), LRK_NOT_A_LRK_FILE},
      {__LINE__, patched(5, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},   // header before its begin
      {__LINE__, patched(13, hex("FFFF")), LRK_INVALID_FILE_FORMAT},      // -1 categories
      {__LINE__, patched(19, hex("00000000")), LRK_INVALID_FILE_FORMAT},  // no place for the data
      {__LINE__, patched(19, hex("23000000")), LRK_INVALID_FILE_FORMAT},  // one byte too far
      {__LINE__, patched(24, hex("01000000")), LRK_INVALID_FILE_FORMAT},  // behind the data area
      {__LINE__, patched(24, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},
      // A tag that no header has takes no value: its value is read as tags.
      {__LINE__, eventFile({}, {}, hex("C8 14 0100 41")), 0},
      {__LINE__, eventFile({}, {}, hex("C8 0100 14 0100 41")), LRK_INVALID_FILE_FORMAT},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(openAndAsk(row.file), row.code);
  }
}

TEST_F(DamagedFile, CutAnywhereOrAnyBitTurned) {
  LRKCategory category = categoryNamed("D21", 2);
  category.runner(0).extraPunches().add(7, 99);
  deriveStoredValues(category);
  const std::string course = hex("60 0100 43  64 0100 01000200  67 0100 00000500");
  const std::string whole = eventFile({encodeCategory(category), hex("43 0100 41")}, {course});
  for (std::size_t length = 4; length < whole.size(); ++length) {
    EXPECT_EQ(openAndAsk(whole.substr(0, length)), LRK_INVALID_FILE_FORMAT) << length;
  }
  std::size_t opened = 0;
  for (std::size_t bit = 32; bit < whole.size() * 8; ++bit) {
    SCOPED_TRACE(bit);
    std::string turned = whole;
    turned[bit / 8] = static_cast<char>(turned[bit / 8] ^ (1 << bit % 8));
    const std::int32_t code = openAndAsk(turned);
    if (code == 0) ++opened;
    EXPECT_TRUE(code == 0 || code == LRK_INVALID_FILE_FORMAT || code == LRK_UNKNOWN_FILE_VERSION);
  }
  EXPECT_GT(opened, whole.size() * 4) << "damage to names, dates and punches does not matter";
}

TEST(DamagedCategory, RecordsThatRunPastTheirEnd) {
  std::string endless;
  for (int i = 0; i < 32767 + 3; ++i) endless += hex("80 00000000");
  struct Row {
    int line;
    std::string record;
    int runners;
    int punches;  // of the last runner
  };
  const Row rows[] = {
      {__LINE__, hex("45 FF7F"), 0, 0},       // claims 32767 runners
      {__LINE__, endless, 32767, 0},          // has more
      {__LINE__, hex("43 0300 4242"), 0, 0},  // text of three with two left
      {__LINE__, hex("47 FFFFFF7F 0100 0200 03000000"), 0, 0},
      {__LINE__, hex("80 FFFFFFFF 97 0000"), 0, 0},
      // A runner cut off keeps what was complete.
      {__LINE__, hex("80 FFFFFF7F 97 0100 1F00 640000 98 00 99 01"), 1, 1},
      // Damage in one runner does not reach the next.
      {__LINE__, hex("80 03000000 97 FF7F  80 08000000 97 0100 1F00 640000"), 2, 1},
      {__LINE__, hex("80 08000000 97 FFFF 1F00 640000"), 1, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const LRKCategory category = decodeCategory(hex("43 0100 41") + row.record, 0);
    EXPECT_EQ(category.name(), "A");
    ASSERT_EQ(category.noOfRunners(), row.runners);
    if (row.runners == 0) continue;
    EXPECT_EQ(category.runner(row.runners - 1).punches().count(), row.punches);
  }
}

}  // namespace
}  // namespace larkstone::test
