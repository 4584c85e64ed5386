// Event files of the previous generation.

#include "larkstone/event/export.hpp"

#include "imported.hpp"

namespace larkstone::test {
namespace {

using testing::ElementsAre;

// A file of one block, and as many entries of the table for it.
std::string fileOf(const std::string& block, std::size_t entries = 1) {
  std::string file = "\x0DLarkstone 3.0\1E" + little(46145, 4) + little(entries, 2);
  const std::size_t offset = file.size() + 8 * entries + 1;
  for (std::size_t i = 0; i < entries; ++i) file += little(offset, 4) + little(block.size(), 4);
  return file + block;
}

std::string blockOf(const std::vector<std::size_t>& lengths,
                    const std::vector<std::vector<std::size_t>>& runners) {
  std::string block = "\1H" + little(runners.size(), 2) + little(lengths.size(), 2);
  for (const std::size_t length : lengths) block += little(length, 4);
  for (const auto& times : runners) {
    block += little(12, 1) + "Ann , A, SWE";
    for (const std::size_t time : times) block += little(time, 3);
  }
  return block;
}

class Lrk3Test : public ImportTest {
 protected:
  std::int32_t importBytes(const std::string& bytes) {
    return importer.importLRK3(event, folder.write("event.lrk3", bytes));
  }
};

TEST_F(Lrk3Test, PunchesAndStatusFollowFromTheLegTimes) {
  struct Row {
    std::vector<std::size_t> times;  // the start and two legs
    std::string_view punches;
    enmStatus status;
  };
  const std::size_t none = LRK_NO_TIME;
  const Row rows[] = {{{100, 6000, 3050}, "S 100, 31 6100, F 9150", estaOK},
                      {{100, 6000, none}, "S 100, 31 6100, F -", estaUnknown},
                      {{100, none, 3050}, "S 100, 31 -, F -", estaMisPunch},
                      {{none, 60, 3050}, "S 0, 31 -, F -", estaMisPunch},
                      {{1, 0xFFFFFE, 60}, "S 1, 31 -, F -", estaMisPunch}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.punches);
    ASSERT_EQ(importBytes(fileOf(blockOf({0, 500}, {row.times}))), 0);
    const LRKRunner& runner = this->runner(event.noOfCategories() - 1, 0);
    EXPECT_EQ(textOf(runner.punches()), row.punches);
    EXPECT_EQ(runner.status(), row.status);
    EXPECT_EQ(setProperties(runner), "name=Ann club=A, SWE ");
  }
  EXPECT_FALSE(event.category(0)->courseLengthSet());
  EXPECT_EQ(event.category(0)->timeAccuracy(), etacTenthsSeconds);
  ASSERT_EQ(importBytes(fileOf(blockOf({}, {{7}}))), 0);
  EXPECT_EQ(textOf(runner(5, 0).punches()), "S 7, F -");
  ASSERT_EQ(importBytes(fileOf(blockOf({200, 300, 1}, {}))), 0);
  const auto category = event.category(6);
  EXPECT_THAT(category->legLengthArray(),
              ElementsAre(LegLength{LRK_START_CODE, 31, 200}, LegLength{31, 32, 300},
                          LegLength{32, LRK_FINISH_CODE, 1}));
  EXPECT_EQ(category->courseLength(), 501);
  EXPECT_EQ(event.name() + " " + event.importedFrom() + " " + toIsoText(event.endDate()),
            "E LRK3 2026-05-03");
}

TEST_F(Lrk3Test, AnExportComesBackAndHalfOfItGivesItsFirstRunners) {
  LRKCategory category;
  category.name("Öst");
  category.addRunner(LRKRunner());
  LRKRunner bo;
  bo.name("Bo");
  bo.startTime(1000);
  bo.punches().add(7000, 101);
  bo.finishTime(40000);
  category.addRunner(bo);
  for (int i = 0; i < 2; ++i) ASSERT_EQ(event.addCategory(category), 0);
  ASSERT_EQ(LRKExport().exportEventToLRK3(event, folder / "event.lrk3"), 0);
  const std::string bytes = bytesOf(folder / "event.lrk3");
  for (const bool half : {true, false}) {
    newEvent();
    ASSERT_EQ(importBytes(half ? bytes.substr(0, bytes.size() - 1) : bytes), 0);
    EXPECT_EQ(event.category(1)->noOfRunners(), half ? 1 : 2);
  }
  EXPECT_THAT(categoryNames(event), ElementsAre("Öst", "Öst"));
  EXPECT_EQ(runner(1, 1).name() + " " + textOf(runner(1, 1).punches()),
            "Bo S 1000, 31 7000, F 40000");
}

TEST_F(Lrk3Test, HostileTablesAndCountsCostNoMoreThanTheFile) {
  const std::vector<std::vector<std::size_t>> runners(1000, {1, 2});
  ASSERT_EQ(importBytes(fileOf(blockOf({1}, runners), 4000)), 0);
  EXPECT_EQ(event.noOfCategories(), 3);  // 51,032 bytes, 19,010 of them the block
  ASSERT_EQ(importBytes(fileOf("\1x" + little(0xFFFFFFFF, 4) + std::string(999, '\1'))), 0);
  ASSERT_EQ(importBytes(fileOf("\1y" + little(0xFFFF, 4) + std::string(999, '\0'))), 0);
  EXPECT_EQ(event.category(3)->noOfRunners(), 249);  // of 4 bytes each
}

}  // namespace
}  // namespace larkstone::test
