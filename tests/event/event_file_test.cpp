// Event files and working files on the disk: their bytes; nothing is lost, nothing left behind.

#include <cstring>

#include <sys/stat.h>

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
  ASSERT_EQ(file.size(), 143U);
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
    EXPECT_EQ(value(etagCategoryID), TagValue(-2));
    EXPECT_EQ(value(etagCategoryName), TagValue("A1"));
    EXPECT_EQ(value(etagCategoryAllRunnersHaveTheSameForking), TagValue(true));
    EXPECT_EQ(value(etagCategoryTimeAccuracy), TagValue(3));
    EXPECT_EQ(value(etagCategoryCourseLength), TagValue(10)) << "behind the runner";
    EXPECT_EQ(value(etagCategoryShortName), TagValue());
    EXPECT_EQ(value(static_cast<enmFileTag>(200)), TagValue()) << "a tag of the future";
    EXPECT_EQ(event_.extractDerivedCourseTag(0, etagDerivedCourseNoOfLegs), TagValue(2));
    EXPECT_EQ(event_.extractDerivedCourseTag(0, etagDerivedCourseNoOfRunners), TagValue(1));
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
  ASSERT_EQ(::chmod(path_.c_str(), 0444), 0);
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
  EXPECT_EQ(event_.noOfCategories(), 2);
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
  EXPECT_EQ(event_.noOfCategories(), 1);
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
