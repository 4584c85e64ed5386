// The bytes of event files, and the codes with which files open.

#include <cstring>

#include "larkstone/event/event.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;

// One category with one runner, laid out by hand.
TEST(EventFile, EveryByteOfASmallFile) {
  const Folder folder;
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  ASSERT_EQ(event.createNewEvent(folder.file("small.lrk4")), 0);
  event.name("Vår");
  event.resultListStatus(erlsDelta);
  LRKCategory category;
  category.name("D10");
  category.legLength(31, LRK_FINISH_CODE, 300);
  LRKRunner runner;
  runner.firstName("Eva");
  runner.name("not kept");
  runner.status(estaOK);
  runner.startTime(0);
  runner.punches().add(6000, 31);
  runner.finishTime(12345);
  category.addRunner(runner);
  ASSERT_EQ(event.addCategory(category), 0);
  ASSERT_EQ(event.saveEvent(), 0);

  double created = 0;
  const std::string file = bytesOf(folder.file("small.lrk4"));
  ASSERT_EQ(file.size(), 135U);
  std::memcpy(&created, file.data() + 21, 8);
  EXPECT_GT(created, 45000);  // some day after 2023
  EXPECT_EQ(event.created(), Date{created});
  EXPECT_EQ(event.lastModified(), Date{created});
  EXPECT_EQ(event.fileSize(), 135);
  const std::string date = file.substr(21, 8);

  const std::string expected = "lrk4" + hex("10 28000000  00 0000  14 0300 56E572  1E 02  22") +
                               date + hex("24") + date +
                               hex("1F 0100  2B 0000"
                                   "21 3C000000"
                                   "20 00000000 4C000000  2C"
                                   "43 0300 443130  45 0100  4E FF  4F 0200  50 0200"
                                   "47 10000000  1F00 F07F 2C010000  E07F 1F00 00000000"
                                   "48 02  49 00"
                                   "80 1D000000  87 0300 457661"
                                   "97 0300  E07F 000000  1F00 701700  F07F 393000"
                                   "98 00  99 0100");
  EXPECT_EQ(file, expected);
}

TEST(EventFile, CodesOfOpening) {
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
      {__LINE__, good, 0},
      {__LINE__, good + "bytes behind the data area", 0},
      {__LINE__, eventFile({}), 0},
      {__LINE__, eventFile({}, {}, hex("14 0100 41")), 0},
      {__LINE__, patched(10, hex("0100")), LRK_UNKNOWN_FILE_VERSION},
      {__LINE__, "", LRK_NOT_A_LRK_FILE},
      {__LINE__, "lrk", LRK_NOT_A_LRK_FILE},
      {__LINE__, "LRK4" + good.substr(4), LRK_NOT_A_LRK_FILE},
      {__LINE__, "lrk3" + good.substr(4), LRK_NOT_A_LRK_FILE},
      {__LINE__, "lrk4", LRK_INVALID_FILE_FORMAT},
      {__LINE__, "lrk4" + hex("11") + good.substr(5), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(23, hex("21")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(32, hex("2D")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(5, hex("FFFFFF7F")), LRK_INVALID_FILE_FORMAT},  // header to infinity
      {__LINE__, patched(5, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},  // and before its begin
      {__LINE__, patched(13, hex("FFFF")), LRK_INVALID_FILE_FORMAT},     // -1 categories
      {__LINE__, patched(13, hex("FF7F")), LRK_INVALID_FILE_FORMAT},     // 32767 of them
      {__LINE__, patched(16, hex("FFFF")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(16, hex("FF7F")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(19, hex("00000000")), LRK_INVALID_FILE_FORMAT},  // no place for the data
      {__LINE__, patched(19, hex("23000000")), LRK_INVALID_FILE_FORMAT},  // one byte too far
      {__LINE__, patched(19, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(24, hex("01000000")), LRK_INVALID_FILE_FORMAT},  // behind the data area
      {__LINE__, patched(24, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(28, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},
      {__LINE__, patched(28, hex("FFFFFF7F")), LRK_INVALID_FILE_FORMAT},
      // A tag that no header has takes no value: its value is read as tags.
      {__LINE__, eventFile({}, {}, hex("C8")), 0},
      {__LINE__, eventFile({}, {}, hex("C8 14 0100 41")), 0},
      {__LINE__, eventFile({}, {}, hex("C8 0100 14 0100 41")), LRK_INVALID_FILE_FORMAT},
  };
  const Folder folder;
  const std::string path = folder.file("event.lrk4");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    writeBytes(path, row.file);
    LRKEvent event;
    event.tempFilePath(folder.file(""));
    EXPECT_EQ(event.openEvent(path), row.code);
    EXPECT_EQ(event.isOpen(), row.code == 0 || row.code == LRK_UNKNOWN_FILE_VERSION);
    EXPECT_EQ(folder.files().size(), event.isOpen() ? 2U : 1U) << "a working file was left";
  }
}

TEST(EventFile, EmptyEventHasNoDataArea) {
  const Folder folder;
  const std::string path = folder.file("empty.lrk4");
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  ASSERT_EQ(event.createNewEvent(path), 0);
  ASSERT_EQ(event.saveEvent(), 0);
  const std::string file = bytesOf(path);
  // P is 39: the header up to the name's empty record, two dates, two counts.
  EXPECT_EQ(file.size(), 9U + 3 + 3 + 9 + 9 + 3 + 3 + 5 + 2);
  EXPECT_EQ(longAt(file, 40), static_cast<std::int32_t>(file.size()) + 1);
  ASSERT_EQ(event.openEvent(path), 0);
  EXPECT_EQ(event.fileSize(), static_cast<std::int32_t>(file.size()));
  ASSERT_EQ(event.saveEvent(), 0);
  EXPECT_EQ(bytesOf(path).size(), file.size());
}

TEST(EventFile, CreatorIsStampedUntilTheNewEventIsClosed) {
  const Folder folder;
  const std::string path = folder.file("event.lrk4");
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  event.createNewEvent(path);
  event.createdBy("nobody");
  ASSERT_EQ(event.saveEvent(), 0);
  EXPECT_FALSE(event.createdBySet()) << "the modifier is not known, so the creator is not";
  event.lastModifiedBy("Ulla");
  ASSERT_EQ(event.saveEvent(), 0);
  EXPECT_EQ(event.createdBy(), "Ulla");

  const Date created = event.created();
  ASSERT_EQ(event.openEvent(path), 0);
  event.lastModifiedBy("Nils");
  ASSERT_EQ(event.saveEvent(), 0);
  EXPECT_EQ(event.createdBy(), "Ulla");
  EXPECT_EQ(event.created(), created);
}

TEST(EventFile, TextsAreCutWhereTheirCountEnds) {
  const Folder folder;
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  event.createNewEvent(folder.file("event.lrk4"));
  std::string text;
  for (int i = 0; i < 40000; ++i) text += "å";
  event.extraInfo(text);
  event.organiser("behind it");
  ASSERT_EQ(event.saveEvent(), 0);
  ASSERT_EQ(event.openEvent(event.filename()), 0);
  EXPECT_EQ(event.extraInfo(), text.substr(0, 2 * 32767));
  EXPECT_EQ(event.organiser(), "behind it");
}

TEST(EventFile, PunchesComeBackAsTheyStood) {
  const Folder folder;
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  event.createNewEvent(folder.file("event.lrk4"));
  LRKRunner runner;
  runner.firstName("Åsa");
  runner.name("Åsa Öberg");
  runner.punches().count(4);
  runner.punches().edit(0, 100, LRK_FINISH_CODE);  // as a damaged card may hold them
  runner.punches().edit(1, LRK_NO_TIME, 31);
  runner.punches().edit(2, 300, LRK_START_CODE);
  runner.punches().edit(3, 200, -2);
  runner.extraPunches().add(50, 99);
  LRKCategory category;
  category.addRunner(runner);
  ASSERT_EQ(event.addCategory(category), 0);
  ASSERT_EQ(event.saveEvent(), 0);
  ASSERT_EQ(event.openEvent(event.filename()), 0);

  const LRKRunner& read = event.category(0)->runner(0);
  EXPECT_FALSE(read.nameSet());
  EXPECT_EQ(read.name(), "Åsa");
  EXPECT_EQ(read.punches().codeArray(),
            (std::vector<Code>{LRK_FINISH_CODE, 31, LRK_START_CODE, -2}));
  EXPECT_EQ(read.punches().time(1), 16777215);
  EXPECT_EQ(read.punches().time(2), 300);
  ASSERT_EQ(read.extraPunches().count(), 1);
  EXPECT_EQ(read.extraPunches().code(0), 99);
  EXPECT_EQ(read.extraPunches().time(0), 50);
}

TEST(EventFile, ValuesOutOfRecordsWithoutDecoding) {
  const std::string category =
      hex("40 FEFFFFFF  43 0200 4131  C8 0300 585858  45 0500  4E 07  46 0900"
          "47 0A000000 00000000000000000000  48 03  80 02000000 4343  4D 0A000000");
  const std::string course = hex(
      "60 0100 42  61 02  62 01  63 00  64 0200 0100020002000300  66 0100 2000  67 0100 00000500");
  const Folder folder;
  writeBytes(folder.file("event.lrk4"), eventFile({category}, {course}));
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  ASSERT_EQ(event.openEvent(folder.file("event.lrk4")), 0);
  EXPECT_EQ(event.categoryName(0), "A1");
  EXPECT_EQ(event.derivedCourseName(0), "B");

  const TagValue nothing;
  struct Row {
    int line;
    bool ofCategory;
    int tag;
    TagValue value;
  };
  const Row rows[] = {
      {__LINE__, true, etagCategoryID, -2},
      {__LINE__, true, etagCategoryName, std::string("A1")},
      {__LINE__, true, etagCategoryNoOfRunners, 5},
      {__LINE__, true, etagCategoryAllRunnersHaveTheSameForking, true},
      {__LINE__, true, etagCategoryNoOfLegs, 9},
      {__LINE__, true, etagCategoryTimeAccuracy, 3},
      {__LINE__, true, etagCategoryCourseLength, 10},
      {__LINE__, true, etagCategoryLegLengths, nothing},
      {__LINE__, true, etagRunner, nothing},
      {__LINE__, true, etagCategoryShortName, nothing},
      {__LINE__, true, etagEventName, nothing},
      {__LINE__, true, 200, nothing},
      {__LINE__, false, etagDerivedCourseName, std::string("B")},
      {__LINE__, false, etagDerivedCourseRequiredLegs, 2},
      {__LINE__, false, etagDerivedCourseAllowRearrangement, 1},
      {__LINE__, false, etagDerivedCourseNoOfLegs, 2},
      {__LINE__, false, etagDerivedCourseNoOfCodesEqualToStart, nothing},
      {__LINE__, false, etagDerivedCourseNoOfCodesEqualToFinish, 1},
      {__LINE__, false, etagDerivedCourseNoOfRunners, 1},
  };
  for (const bool held : {false, true}) {
    ASSERT_TRUE(!held || event.openTempFile());
    for (const Row& row : rows) {
      SCOPED_TRACE(row.line);
      const auto tag = static_cast<enmFileTag>(row.tag);
      EXPECT_EQ(
          row.ofCategory ? event.extractCategoryTag(0, tag) : event.extractDerivedCourseTag(0, tag),
          row.value);
    }
  }
  EXPECT_EQ(event.extractCategoryTag(1, etagCategoryName), nothing);
  EXPECT_EQ(event.extractDerivedCourseTag(-1, etagDerivedCourseName), nothing);

  LRKCategory renamed = *event.category(0);
  renamed.name("A2");
  ASSERT_EQ(event.category(0, renamed), 0);
  EXPECT_EQ(event.extractCategoryTag(0, etagCategoryName), TagValue("A2"));
}

TEST(EventFile, NamesOfCodes) {
  EXPECT_EQ(errorName(4), "LRK_FILE_READONLY");
  EXPECT_EQ(errorName(0), "");
  EXPECT_EQ(errorName(12), "");
  for (int code = 1; code <= 11; ++code) EXPECT_NE(errorText(code), "") << code;
}

}  // namespace
}  // namespace larkstone
