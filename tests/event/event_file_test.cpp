// Event files: their bytes, and the texts in them.

#include <cstring>

#include "larkstone/core/text.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

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

// "\\" separates folders in tempFilePath only.
TEST_F(EventFile, PathsAreTheSystemsOwn) {
  event_.tempFilePath(folder_ + "\\working");
  ASSERT_EQ(event_.createNewEvent(folder_ + "/a\\b.lrk4"), 0);
  EXPECT_EQ(workingFiles().size(), 1U);
  ASSERT_EQ(event_.saveEvent(), 0);
  ASSERT_EQ(event_.saveEvent(work_ + "..\\evil.lrk4"), 0);
  EXPECT_TRUE(std::filesystem::exists(folder_ + "/a\\b.lrk4"));
  EXPECT_TRUE(std::filesystem::exists(work_ + "..\\evil.lrk4"));
  EXPECT_EQ(filesIn(folder_).size(), 2U);
  EXPECT_EQ(event_.openEvent(folder_ + "\\a\\b.lrk4"), LRK_FILE_DOES_NOT_EXIST);
}

// Every text comes back as the code page has it, in every kind of record.
TEST_F(EventFile, TextsOfAllKinds) {
  std::string page(256, ' ');
  std::iota(page.begin(), page.end(), '\0');
  page = utf8FromWindows1252(page);
  const std::string euros = joined(Records(40'000, "€"));  // three bytes each, in the file one
  const std::pair<std::string, std::string> rows[] = {
      {"", ""},
      {page, page},
      {"Łukasz Őry – ț 東", "Lukasz Ory – t ?"},
      {euros, euros.substr(0, 3 * 32767)},
  };
  for (const auto& [written, read] : rows) {
    ASSERT_EQ(event_.createNewEvent(path_, true), 0);
    event_.name(written);
    LRKCategory category = categoryNamed(written);
    category.runner(0).club(written);
    ASSERT_EQ(event_.addCategory(category), 0);
    LRKDerivedCourse course;
    course.name(written);
    ASSERT_EQ(event_.addDerivedCourse(course), 0);
    ASSERT_EQ(event_.saveEvent(), 0);
    ASSERT_EQ(event_.openEvent(path_), 0);
    const std::shared_ptr<LRKCategory> known = event_.category(0);
    for (const std::string& text :
         {event_.name(), event_.categoryName(0), known->name(), known->runner(0).club(),
          event_.derivedCourseName(0), event_.derivedCourse(0)->name()}) {
      EXPECT_TRUE(text == read) << text.substr(0, 50);
    }
    EXPECT_TRUE(known->runner(0).clubSet()) << "also when it is empty";
  }
}

}  // namespace
}  // namespace larkstone::test
