// Damaged and hostile event files: a code or fewer records, never more.

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;

std::string smallEvent(const Folder& folder) {
  const std::string path = folder.file("whole.lrk4");
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  EXPECT_EQ(event.createNewEvent(path), 0);
  event.name("Vår");
  event.startDate(Date{46000});
  LRKCategory first = categoryNamed("D21");
  first.runner(0).extraPunches().add(7, 99);
  EXPECT_EQ(event.addCategory(first), 0);
  EXPECT_EQ(event.addCategory(categoryNamed("H21", 2)), 0);
  EXPECT_EQ(event.saveEvent(), 0);
  return bytesOf(path);
}

// Whatever the file holds, everything that an open event offers can be asked for.
void askForEverything(LRKEvent& event) {
  EXPECT_GE(event.noOfCategories(), 0);
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const std::shared_ptr<LRKCategory> category = event.category(i);
    ASSERT_NE(category, nullptr);
    for (int tag = 0; tag < 256; tag += 7)
      event.extractCategoryTag(i, static_cast<enmFileTag>(tag));
  }
  for (int k = 0; k < event.noOfDerivedCourses(); ++k) {
    event.extractDerivedCourseTag(k, etagDerivedCourseNoOfRunners);
  }
}

TEST(DamagedFile, CutAnywhere) {
  const Folder folder;
  const std::string whole = smallEvent(folder);
  const std::string path = folder.file("cut.lrk4");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    writeBytes(path, whole.substr(0, length));
    LRKEvent event;
    event.tempFilePath(folder.file(""));
    EXPECT_EQ(event.openEvent(path), length < 4 ? LRK_NOT_A_LRK_FILE : LRK_INVALID_FILE_FORMAT);
  }
}

TEST(DamagedFile, EveryBitTurned) {
  const Folder folder;
  const std::string whole = smallEvent(folder);
  const std::string path = folder.file("turned.lrk4");
  int opened = 0;
  for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
    SCOPED_TRACE(bit);
    std::string file = whole;
    file[bit / 8] = static_cast<char>(file[bit / 8] ^ (1 << bit % 8));
    writeBytes(path, file);
    LRKEvent event;
    event.tempFilePath(folder.file(""));
    const std::int32_t code = event.openEvent(path);
    if (bit < 32) {
      EXPECT_EQ(code, LRK_NOT_A_LRK_FILE);
    } else {
      EXPECT_TRUE(code == 0 || code == LRK_INVALID_FILE_FORMAT || code == LRK_UNKNOWN_FILE_VERSION);
    }
    if (!event.isOpen()) continue;
    ++opened;
    askForEverything(event);
  }
  EXPECT_GT(opened, 2000) << "damage to names, dates and punches does not matter";
}

TEST(DamagedFile, RecordsThatRunPastTheirEnd) {
  const std::string name = hex("43 0100 41");
  struct Row {
    int line;
    std::string record;
    std::string name;
    int runners;
    int punches;  // of the last runner
  };
  const Row rows[] = {
      {__LINE__, "", "", 0, 0},
      {__LINE__, name, "A", 0, 0},
      {__LINE__, name + hex("45 FF7F"), "A", 0, 0},  // claims 32767 runners
      {__LINE__, name + hex("45 FFFF 80 00000000"), "A", 1, 0},
      {__LINE__, name + hex("43 0300 4242"), "A", 0, 0},  // text of three with two left
      {__LINE__, name + hex("43 FFFF 42"), "A", 0, 0},
      {__LINE__, name + hex("40 0102"), "A", 0, 0},
      {__LINE__, name + hex("C8 FF7F 42"), "A", 0, 0},  // unknown tags are texts
      {__LINE__, name + hex("47 FFFFFF7F 0100 0200 03000000"), "A", 0, 0},
      {__LINE__, name + hex("47 FFFFFFFF 0100 0200 03000000"), "A", 0, 0},
      {__LINE__, name + hex("80 FFFFFFFF 97 0000"), "A", 0, 0},
      {__LINE__, name + hex("80 80"), "A", 0, 0},
      // A runner cut off keeps what was complete.
      {__LINE__, name + hex("80 FFFFFF7F 97 0100 1F00 640000 98 00 99 01"), "A", 1, 1},
      // Damage in one runner does not reach the next.
      {__LINE__, name + hex("80 03000000 97 FF7F  80 08000000 97 0100 1F00 640000"), "A", 2, 1},
      {__LINE__, name + hex("80 08000000 97 FFFF 1F00 640000"), "A", 1, 0},
      {__LINE__, name + hex("80 08000000 97 FF7F 1F00 640000"), "A", 1, 0},
      {__LINE__, name + hex("80 08000000 97 0200 1F00 640000"), "A", 1, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const LRKCategory category = decodeCategory(row.record, 0);
    EXPECT_EQ(category.name(), row.name);
    ASSERT_EQ(category.noOfRunners(), row.runners);
    if (row.runners == 0) continue;
    EXPECT_EQ(category.runner(row.runners - 1).punches().count(), row.punches);
  }
}

TEST(DamagedFile, MoreRunnersThanACategoryHolds) {
  std::string record = hex("43 0100 41");
  for (int i = 0; i < 32767 + 3; ++i) record += hex("80 00000000");
  EXPECT_EQ(decodeCategory(record, 0).noOfRunners(), 32767);
}

// Records may overlap in a file; saving writes each for itself.
TEST(DamagedFile, OverlappingRecords) {
  const Folder folder;
  const std::string record = hex("43 0100 41");
  std::string file = eventFile({record, hex("43 0100 42")}, {hex("60 0100 43")});
  const std::string table = hex("00000000 04000000  04000000 04000000");
  file.replace(file.find(table), 16, hex("00000000 04000000  00000000 04000000"));
  writeBytes(folder.file("event.lrk4"), file);
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  ASSERT_EQ(event.openEvent(folder.file("event.lrk4")), 0);
  EXPECT_EQ(event.categoryName(1), "A");
  ASSERT_EQ(event.saveEvent(), 0);
  const SavedFile saved(bytesOf(folder.file("event.lrk4")), 2, 1);
  EXPECT_EQ(saved.data, record + record + hex("60 0100 43"));
  EXPECT_EQ(saved.categories[1].position, 4);
}

}  // namespace
}  // namespace larkstone
