// Event files: their bytes, damage to them, and what stands on the disk.

#include <cstring>
#include <tuple>

#include "larkstone/event/category_codec.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

namespace fs = std::filesystem;

using EventFile = EventTest;

// One category with one runner, laid out by hand.
TEST_F(EventFile, EveryByteOfASmallFile) {
  ASSERT_EQ(event_.createNewEvent(path_), 0);
  event_.name("Vår");
  event_.resultListStatus(erlsDelta);
  event_.lastModifiedBy("U");  // and the creator, while the event is new
  LRKCategory category = categoryNamed("D10", 0);
  category.legLength(31, LRK_FINISH_CODE, 300);
  category.addRunner(runnerOn({31}));
  category.runner(0).firstName("Eva");
  ASSERT_EQ(event_.addCategory(category), 0);
  ASSERT_EQ(event_.saveEvent(), 0);

  const std::string file = bytesOf(path_);
  const std::string date = file.substr(21, 8);
  EXPECT_EQ(std::memcmp(date.data(), &event_.created().day, 8), 0);
  EXPECT_EQ(event_.fileSize(), 143);
  EXPECT_EQ(file, "lrk4" + hex("10 30000000  00 0000  14 0300 56E572  1E 02  22") + date +
                      hex("23 0100 55  24") + date +
                      hex("25 0100 55  1F 0100  2B 0000  21 44000000  20 00000000 4C000000  2C"
                          "43 0300 443130  45 0100  4E FF  4F 0200  50 0200"
                          "47 10000000  1F00 F07F 2C010000  E07F 1F00 00000000"
                          "48 02  49 00  80 1D000000  87 0300 457661"
                          "97 0300  E07F 000000  1F00 701700  F07F E02E00  98 00  99 0100"));
}

TEST_F(EventFile, ValuesOutOfRecordsWithoutDecoding) {
  const std::string category =
      hex("40 FEFFFFFF  43 0200 4131  C8 0300 585858  45 0500  4E 07  46 0900"
          "47 0A000000 00000000000000000000  48 03  80 02000000 4343  4D 0A000000");
  const std::string course = hex("60 0100 42  62 01  64 0200 0100020002000300  67 0100 00000500");
  ASSERT_EQ(openBytes(eventFile({hex("43 0100 41"), category}, {course})), 0);
  for (const bool held : {false, true}) {
    ASSERT_TRUE(!held || event_.openTempFile());
    const auto value = [this](enmFileTag tag) { return event_.extractCategoryTag(1, tag); };
    EXPECT_EQ(value(etagCategoryAllRunnersHaveTheSameForking), TagValue(true));
    EXPECT_EQ(value(etagCategoryCourseLength), TagValue(10)) << "behind the runner";
    EXPECT_EQ(value(etagCategoryShortName), TagValue());
    EXPECT_EQ(value(static_cast<enmFileTag>(200)), TagValue()) << "a tag of the future";
    EXPECT_EQ(event_.extractDerivedCourseTag(0, etagDerivedCourseNoOfLegs), TagValue(2));
    EXPECT_EQ(event_.extractDerivedCourseTag(0, etagDerivedCourseNoOfRunners), TagValue(1));
  }
}

// Damaged and hostile files: a code or fewer records, never more.
class DamagedFile : public EventTest {
 protected:
  // Opens a file of those bytes and asks for what the event offers then.
  std::int32_t openAndAsk(const std::string& bytes) {
    const std::int32_t code = openBytes(bytes);
    for (int i = 0; i < event_.noOfCategories(); ++i) EXPECT_NE(event_.category(i), nullptr);
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
  const std::pair<std::string, std::int32_t> rows[] = {
      {good + "bytes behind the data area", 0},
      {patched(10, hex("0100")), LRK_UNKNOWN_FILE_VERSION},
      {"", LRK_NOT_A_LRK_FILE},
      {"lrk3" + good.substr(4), LRK_NOT_A_LRK_FILE},
      {patched(5, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},   // header before its begin
      {patched(13, hex("FFFF")), LRK_INVALID_FILE_FORMAT},      // -1 categories
      {patched(19, hex("00000000")), LRK_INVALID_FILE_FORMAT},  // no place for the data
      {patched(19, hex("23000000")), LRK_INVALID_FILE_FORMAT},  // one byte too far
      {patched(24, hex("01000000")), LRK_INVALID_FILE_FORMAT},  // behind the data area
      {patched(24, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},
      // A tag that no header has takes no value: its value is read as tags.
      {eventFile({}, {}, hex("C8 14 0100 41")), 0},
      {eventFile({}, {}, hex("C8 0100 14 0100 41")), LRK_INVALID_FILE_FORMAT},
  };
  for (const auto& [file, code] : rows) {
    EXPECT_EQ(openAndAsk(file), code) << testing::PrintToString(file);
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
  // The runners read, and the punches of the last.
  const std::tuple<std::string, int, int> rows[] = {
      {hex("45 FF7F"), 0, 0},       // claims 32767 runners
      {endless, 32767, 0},          // has more
      {hex("43 0300 4242"), 0, 0},  // text of three with two left
      {hex("47 FFFFFF7F 0100 0200 03000000"), 0, 0},
      {hex("80 FFFFFFFF 97 0000"), 0, 0},
      // A runner cut off keeps what was complete.
      {hex("80 FFFFFF7F 97 0100 1F00 640000 98 00 99 01"), 1, 1},
      {hex("80 0A000000 97 0100 1F00 640000 97 01"), 1, 1},
      // Damage in one runner does not reach the next.
      {hex("80 03000000 97 FF7F  80 08000000 97 0100 1F00 640000"), 2, 1},
      {hex("80 08000000 97 FFFF 1F00 640000"), 1, 0},
  };
  for (const auto& [record, runners, punches] : rows) {
    const LRKCategory category = decodeCategory(hex("43 0100 41") + record, 0);
    EXPECT_EQ(category.name(), "A");
    ASSERT_EQ(category.noOfRunners(), runners) << testing::PrintToString(record.substr(0, 20));
    if (runners == 0) continue;
    EXPECT_EQ(category.runner(runners - 1).punches().count(), punches);
  }
}

// A saved event with A, and B that is not saved yet.
class Disk : public EventTest {
 protected:
  Disk() {
    EXPECT_EQ(event_.createNewEvent(path_), 0);
    EXPECT_EQ(event_.addCategory(categoryNamed("A")), 0);
    EXPECT_EQ(event_.saveEvent(), 0);
    whole_ = bytesOf(path_);
    EXPECT_EQ(event_.addCategory(categoryNamed("B")), 0);
    other_.tempFilePath(work_);
  }

  std::string whole_;
  LRKEvent other_;
};

TEST_F(Disk, PlacesWhereNoFileCanBe) {
  const std::string missing = folder_ + "/missing/event.lrk4";
  fs::permissions(path_, fs::perms::owner_read);
  EXPECT_EQ(event_.createNewEvent(path_), LRK_FILE_ALREADY_EXISTS);
  EXPECT_EQ(event_.saveEvent(), LRK_FILE_READONLY);
  EXPECT_EQ(event_.saveEvent(missing), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(event_.saveEvent(work_), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(other_.openEvent(path_), LRK_FILE_READONLY);
  EXPECT_EQ(other_.openEvent(missing), LRK_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(other_.openEvent(folder_), LRK_COULD_NOT_OPEN_FILE);
  other_.tempFilePath(folder_ + "/missing");
  EXPECT_EQ(other_.createNewEvent(missing), LRK_COULD_NOT_CREATE_FILE);
  // The old file is whole, with no draft beside it, and the event can still be saved elsewhere.
  EXPECT_EQ(bytesOf(path_), whole_);
  EXPECT_EQ(filesIn(folder_).size(), 2U);
  EXPECT_EQ(event_.saveEvent(folder_ + "/elsewhere.lrk4"), 0);
}

TEST_F(Disk, WorkingFilesArePrivateAndGoAway) {
  ASSERT_EQ(other_.openEvent(path_), 0);
  EXPECT_EQ(filesIn(work_).size(), 2U);
  EXPECT_EQ(other_.closeEvent(), 0);
  ASSERT_EQ(filesIn(work_).size(), 1U);
  const fs::path file = filesIn(work_)[0];
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::resize_file(file, 10);
  EXPECT_EQ(event_.category(0), nullptr);
  EXPECT_EQ(event_.saveEvent(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(bytesOf(path_), whole_);
  EXPECT_EQ(event_.closeEvent(), 0);
  EXPECT_TRUE(filesIn(work_).empty());
  EXPECT_EQ(event_.addCategory(categoryNamed("C")), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
}

TEST_F(Disk, TwoEventsOnOneFile) {
  ASSERT_EQ(other_.openEvent(path_), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  EXPECT_EQ(other_.category(0)->name(), "A");
  ASSERT_EQ(other_.category(0, std::make_shared<LRKCategory>(categoryNamed("A2"))), 0);
  ASSERT_EQ(other_.saveEvent(), 0);
  EXPECT_EQ(event_.category(0)->name(), "A");
  ASSERT_EQ(event_.openEvent(path_), 0);
  EXPECT_EQ(event_.category(0)->name(), "A2");
}

// Bytes that are no longer used are cleared out of the working file now and then.
TEST_F(Disk, StoringOverAndOverDoesNotFillTheDisk) {
  for (int i = 0; i < 20; ++i) {
    const auto megabyte = std::make_shared<LRKCategory>(categoryNamed(std::to_string(i), 30000));
    ASSERT_EQ(event_.category(0, megabyte), 0);
    EXPECT_LT(fs::file_size(filesIn(work_)[0]), 10'000'000U);
  }
  EXPECT_EQ(event_.category(0)->name(), "19");
  EXPECT_EQ(event_.category(1)->name(), "B");
}

}  // namespace
}  // namespace larkstone::test
