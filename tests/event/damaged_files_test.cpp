// Damaged and hostile files: a code or fewer records, never more; and what is read is not lost when
// it is saved.

#include <cstring>
#include <tuple>

#include <sys/resource.h>

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/derived_course_codec.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

class DamagedFile : public EventTest {
 protected:
  DamagedFile() {
    event_.categorySortFlags(ecsfUnsorted);
    read_.categorySortFlags(ecsfUnsorted);
    read_.tempFilePath(work_);
  }

  static Records contentOf(LRKEvent& event) {
    Records records;
    for (int i = 0; i < event.noOfCategories(); ++i) {
      records.push_back(encodeCategory(*event.category(i)));
    }
    for (int k = 0; k < event.noOfDerivedCourses(); ++k) {
      records.push_back(encodeDerivedCourse(*event.derivedCourse(k)));
    }
    return records;
  }
  // The file holds what the event does.
  void expectSaved() {
    ASSERT_EQ(event_.saveEvent(), 0);
    ASSERT_EQ(read_.openEvent(path_), 0);
    expectEqual(event_, read_);
    EXPECT_TRUE(contentOf(event_) == contentOf(read_));
    read_.closeEvent();
  }
  // Opens a file of those bytes and saves it, as it is and with everything stored again.
  std::int32_t openAndSave(const std::string& bytes) {
    const std::int32_t code = openBytes(bytes);
    EXPECT_EQ(event_.isOpen(), code == 0 || code == LRK_UNKNOWN_FILE_VERSION);
    EXPECT_EQ(filesIn(work_).size(), event_.isOpen() ? 1U : 0U) << "a working file was left";
    if (!event_.isOpen()) return code;
    expectSaved();
    for (int i = 0; i < event_.noOfCategories(); ++i) {
      EXPECT_EQ(event_.category(i, event_.category(i)), 0);
    }
    for (int k = 0; k < event_.noOfDerivedCourses(); ++k) {
      EXPECT_EQ(event_.derivedCourse(k, *event_.derivedCourse(k)), 0);
    }
    expectSaved();
    return code;
  }

  LRKEvent read_;
};

TEST_F(DamagedFile, CodesOfOpening) {
  const std::string good = eventFile({hex("43 0100 41")});
  // Fifty records on one place: they would not fit beside each other.
  std::string crowded = eventFile(Records(50, hex("43 0100 41")));
  crowded.resize(crowded.size() - 49 * 4);
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
      {crowded, LRK_INVALID_FILE_FORMAT},
      {patched(24, hex("FFFFFFFF")), LRK_INVALID_FILE_FORMAT},
      // A tag that no header has takes no value: its value is read as tags.
      {eventFile({}, {}, hex("C8 14 0100 41")), 0},
      {eventFile({}, {}, hex("C8 0100 14 0100 41")), LRK_INVALID_FILE_FORMAT},
  };
  for (const auto& [file, code] : rows) {
    EXPECT_EQ(openAndSave(file), code) << testing::PrintToString(file);
  }
  // Two records of 2 GB, more than positions can count.
  std::string vast = eventFile({hex("43 0100 41"), hex("43 0100 42")});
  vast.replace(24, 16, hex("00000000 FFFFFF7F 00000000 FFFFFF7F"));
  std::ofstream(path_, std::ios::binary) << vast;
  std::filesystem::resize_file(path_, 5'000'000'000);
  EXPECT_EQ(event_.openEvent(path_), LRK_INVALID_FILE_FORMAT);
}

// Records may lie on each other; they are saved side by side.
TEST_F(DamagedFile, RecordsOnEachOther) {
  const std::string whole = encodeCategory(categoryNamed("A", 2));
  const std::string part = whole.substr(4);  // has no name
  const std::string course = hex("60 0100 43  67 0100 01000100");
  const std::size_t n = whole.size();
  const std::size_t m = course.size();
  ASSERT_EQ(openAndSave(eventFile({whole, part, whole}, {course, course})), 0);
  ASSERT_EQ(openBytes(eventFile({whole, part, whole}, {course, course})), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  const auto row = [](std::size_t at, std::size_t length) {
    return little(at, 4) + little(length, 4);
  };
  EXPECT_TRUE(bytesOf(path_).ends_with(hex("20") + row(0, n) + row(2 * n, n - 4) + row(n, n) +
                                       hex("2C") + row(3 * n - 4, m) + row(3 * n - 4 + m, m) +
                                       whole + whole + part + course + course));
}

TEST_F(DamagedFile, CutAnywhereOrAnyBitTurned) {
  ASSERT_EQ(event_.createNewEvent(path_), 0);
  fill(event_, -1);
  LRKCategory category = categoryNamed("", 2);
  fill(category, -1);
  fill(category.runner(1), -1);
  category.runner(1).extraPunches().add(7, 99);
  ASSERT_EQ(event_.addCategory(category), 0);
  ASSERT_EQ(event_.addCategory(categoryNamed("A")), 0);
  LRKDerivedCourse course;
  course.legs().add(31, 32, 0, 0);
  course.codesEqualToStart().add(33);
  course.codesEqualToFinish().add(34);
  course.addRunner(0, 1);
  course.addRunner(1, 0);
  ASSERT_EQ(event_.addDerivedCourse(course), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  const std::string whole = bytesOf(path_);
  for (std::size_t length = 4; length < whole.size(); ++length) {
    EXPECT_EQ(openAndSave(whole.substr(0, length)), LRK_INVALID_FILE_FORMAT) << length;
  }
  std::size_t opened = 0;
  for (std::size_t bit = 32; bit < whole.size() * 8 && !HasFailure(); ++bit) {
    SCOPED_TRACE(bit);
    std::string turned = whole;
    turned[bit / 8] = static_cast<char>(turned[bit / 8] ^ (1 << bit % 8));
    const std::int32_t code = openAndSave(turned);
    if (code == 0) ++opened;
    EXPECT_TRUE(code == 0 || code == LRK_INVALID_FILE_FORMAT || code == LRK_UNKNOWN_FILE_VERSION);
  }
  EXPECT_GT(opened, whole.size() * 4) << "damage to names, dates and punches does not matter";
}

// Small files that ask for much: everything done to them needs at most ten times their size and
// 64 MB, and would take minutes if its time grew with the square of it.
TEST_F(DamagedFile, MemoryStaysInProportion) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer has a memory of its own";
#endif
  const auto series = [](std::size_t count, auto&& entry) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) bytes += entry(i);
    return bytes;
  };
  const auto empty = [](std::size_t) { return hex("80 00000000"); };
  const auto oneControl = [](std::size_t i) {
    return hex("80 08000000 97 0100") + little(i, 2) + hex("000001");
  };
  const auto leg = [](std::size_t i) { return little(i % 500, 2) + little(i / 500, 6); };
  const auto punch = [](std::size_t i) { return little(i * 7 % 32749, 5); };
  const std::string punches =
      hex("80") + little(3 + 5 * 32767, 4) + hex("97 FF7F") + series(32767, punch);
  const std::string files[] = {
      eventFile({series(40'000, empty)}),
      eventFile({series(32'767, oneControl)}),
      eventFile({hex("47") + little(8 * 200'000, 4) + series(200'000, leg)}),
      eventFile({punches + punches + punches}),
      eventFile(Records(32'767), Records(32'767, hex("67 0000"))),
      eventFile({series(40'000, empty)},
                Records(10, hex("67 FF7F") +
                                series(32'767, [](std::size_t i) { return little(i << 16, 4); }))),
  };
  for (const std::string& file : files) {
    std::ofstream(path_, std::ios::binary) << file;
    const int megabytes = inChild([this] {
      const auto peak = [] {
        rusage usage{};
        ::getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
      };
      const auto before = peak();
      bool good = event_.openEvent(path_) == 0 && event_.updateForkingInfo() == 0;
      if (event_.noOfCategories() > 0) good = good && event_.category(0, event_.category(0)) == 0;
      std::vector<LRKCodes> ofCategories;
      std::vector<LRKCodes> ofRunners;
      int count = 0;
      event_.getAllCategoryAndRunnerCodes(ofCategories, count, ofRunners);
      good =
          good && event_.openTempFile() && event_.saveEvent() == 0 && event_.openEvent(path_) == 0;
      return good ? std::min(peak() - before, 250L) : 255L;
    });
    EXPECT_LT(megabytes, 64 + static_cast<int>(file.size() >> 20) * 10);
  }
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

}  // namespace
}  // namespace larkstone::test
