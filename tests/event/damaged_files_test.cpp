// Damaged and hostile files: a code or fewer records, never more; and what is read is not lost when
// it is saved.

#include <tuple>

#include <sys/resource.h>

#include "support.hpp"

namespace larkstone::test {
namespace {

class DamagedFile : public EventTest {
 protected:
  DamagedFile() {
    event_.categorySortFlags(ecsfUnsorted);
    other_.categorySortFlags(ecsfUnsorted);
  }

  // Opens a file of those bytes and saves it, as it is and with everything stored again.
  std::int32_t openAndSave(const std::string& bytes) {
    const std::int32_t code = openBytes(bytes);
    EXPECT_EQ(event_.isOpen(), code == 0 || code == LRK_UNKNOWN_FILE_VERSION);
    EXPECT_EQ(workingFiles().size(), event_.isOpen() ? 1U : 0U) << "a working file was left";
    for (int stored = 0; event_.isOpen() && stored < 2; ++stored) {
      for (int i = 0; stored && i < event_.noOfCategories(); ++i) {
        EXPECT_EQ(event_.category(i, event_.category(i)), 0);
      }
      for (int k = 0; stored && k < event_.noOfDerivedCourses(); ++k) {
        EXPECT_EQ(event_.derivedCourse(k, *event_.derivedCourse(k)), 0);
      }
      EXPECT_EQ(event_.saveEvent(), 0);
      EXPECT_EQ(other_.openEvent(path_), 0);
      expectEqual(event_, other_);
      expectSame(event_, other_);
      other_.closeEvent();
    }
    return code;
  }
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
  std::string vast = eventFile({"A", "B"});
  vast.replace(24, 16, hex("00000000 FFFFFF7F 00000000 FFFFFF7F"));
  std::ofstream(path_, std::ios::binary) << vast;
  std::filesystem::resize_file(path_, 5'000'000'000);
  EXPECT_EQ(event_.openEvent(path_), LRK_INVALID_FILE_FORMAT);
}

// Records may lie on each other; they are saved side by side.
TEST_F(DamagedFile, RecordsOnEachOther) {
  const std::string whole = encodeCategory(categoryNamed("A", 2));
  const std::string part = whole.substr(4);  // has no name
  const std::string course = hex("60 0100 43");
  const std::size_t n = whole.size();
  ASSERT_EQ(openAndSave(eventFile({whole, whole, part}, {course, course})), 0);
  ASSERT_EQ(openBytes(eventFile({whole, whole, part}, {course, course})), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  std::string tables;
  for (const std::size_t value : {n - n, n, n, n, 2 * n, n - 4}) tables += little(value, 4);
  tables += hex("2C") + little(3 * n - 4, 4) + hex("04000000") + little(3 * n, 4) + hex("04000000");
  EXPECT_TRUE(bytesOf(path_).ends_with(tables + whole + whole + part + course + course));
}

// With bits turned, files are tried by the replay of the fuzzer.
TEST_F(DamagedFile, CutAnywhere) {
  LRKCategory category = categoryNamed("", 2);
  fill(category, -1);
  fill(category.runner(1), -1);
  const std::string whole =
      eventFile({encodeCategory(category), hex("43 0100 41")},
                {hex("64 0100 1F002000  65 0100 2100  66 0100 2200  67 0200 0000010001000000")},
                hex("1E 02"));
  ASSERT_EQ(openAndSave(whole), 0);
  for (std::size_t length = 4; length < whole.size(); ++length) {
    EXPECT_EQ(openAndSave(whole.substr(0, length)), LRK_INVALID_FILE_FORMAT) << length;
  }
}

// What no property can hold reads as its default, by whatever way, and can be asked for.
TEST_F(DamagedFile, ValuesThatNoPropertyCanHold) {
  const std::string runner = hex("82 01  82 05  98 63  9A 04  96 0000C07F  9B 9C7500883CE4377E") +
                             hex("94 0100 52  82 05");
  const std::string category = hex("43 0300 483231  41 09  48 4D  49 05  4A 02  4A 04  80") +
                               little(runner.size(), 4) + runner;
  const std::string good = hex("43 0100 41  48 05  80 02000000 98 0E");
  const std::string header = hex("1D 05  1E 02  27 06  19 000000000000F87F");
  ASSERT_EQ(openBytes(eventFile({category, good}, {hex("60 0100 42  61 04")}, header)), 0);
  EXPECT_EQ(event_.resultListStatus(), erlsDelta);
  EXPECT_FALSE(event_.eventFormSet() || event_.classificationSet() || event_.startDateSet());
  const LRKCategory read = *event_.category(0);
  EXPECT_EQ(read.timeAccuracy(), etacSeconds);
  EXPECT_EQ(read.courseType(), ectyNormal);
  EXPECT_FALSE(read.IDTypeSet() || read.genderSet());
  const LRKRunner& first = read.runner(0);
  EXPECT_EQ(first.status(), estaUnknown);
  EXPECT_FALSE(first.IDTypeSet() || first.genderSet() || first.rankingValueSet());
  EXPECT_EQ(first.birthDate(), Date{0});
  EXPECT_EQ(first.rankingName(), "R") << "what stands behind is read";
  EXPECT_EQ(event_.category(1)->timeAccuracy(), etacAuto);
  EXPECT_EQ(event_.derivedCourse(0)->requiredLegs(), LRKDerivedCourse().requiredLegs());
  EXPECT_EQ(event_.extractCategoryTag(0, etagCategoryTimeAccuracy), TagValue(int{etacSeconds}));
  EXPECT_EQ(event_.extractCategoryTag(0, etagCategoryIDType), TagValue());
  std::vector<LRKRunner> found;
  event_.searchRunners(found, {{etagRunnerStatus, TagValue(int{estaUnknown})}},
                       {{etagRunnerStatus, ecopEqual}}, false);
  EXPECT_EQ(found.size(), 2U);
  std::string warnings;
  for (const std::string& warning : event_.warnings()) warnings += warning + "; ";
  EXPECT_EQ(warnings,
            R"(eventForm 5; classification 6; startDate; category "H21": idType 9; )"
            R"(category "H21": timeAccuracy 77; category "H21": courseType 5; )"
            R"(category "H21": gender 4; category "H21": runner 1: idType 5; )"
            R"(category "H21": runner 1: status 99; category "H21": runner 1: gender 4; )"
            R"(category "H21": runner 1: rankingValue; category "H21": runner 1: birthDate; )"
            R"(category "H21": runner 1: idType 5; derived course "B": requiredLegs 4; )");
  EXPECT_EQ(event_.category(0, event_.category(0)), 0);
  EXPECT_EQ(event_.warnings().size(), 4U) << "the header's and the derived course's";
}

// Small files that ask for much: what is done to them needs at most ten times their size and 64 MB.
// It would take minutes if its time grew with the square of it.
TEST_F(DamagedFile, MemoryStaysInProportion) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer has a memory of its own";
#endif
  std::string legs = hex("47") + little(8 * 200'000, 4);
  for (std::size_t i = 0; i < 200'000; ++i) legs += little(i % 500, 2) + little(i / 500, 6);
  const std::string runners =
      hex("43 FF7F") + std::string(32767, 'A') + joined(Records(40'000, hex("80 00000000")));
  const std::string references = hex("67 FF7F") + joined(Records(32'767, hex("00000100")));
  for (const std::string& file : {eventFile({legs}), eventFile({runners}, {references, references}),
                                  eventFile(Records(32'767), Records(32'767, hex("67 0000")))}) {
    std::ofstream(path_, std::ios::binary) << file;
    const int megabytes = inChild([this] {
      rusage before{};
      rusage after{};
      ::getrusage(RUSAGE_SELF, &before);
      bool good = event_.openEvent(path_) == 0;
      good = good && event_.category(0, event_.category(0)) == 0;
      good = good && event_.updateForkingInfo() == 0 && event_.openTempFile();
      ::getrusage(RUSAGE_SELF, &after);
      return good ? std::min((after.ru_maxrss - before.ru_maxrss) / 1024, 250L) : 255L;
    });
    EXPECT_LT(megabytes, 64 + static_cast<int>(file.size() * 10 >> 20));
  }
}

TEST(DamagedCategory, RecordsThatRunPastTheirEnd) {
  // The runners read, and the punches of the last.
  const std::tuple<std::string, int, int> rows[] = {
      {hex("45 FF7F"), 0, 0},  // claims 32767 runners
      {joined(Records(32770, hex("80 00000000"))), 32767, 0},
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

}  // namespace
}  // namespace larkstone::test
