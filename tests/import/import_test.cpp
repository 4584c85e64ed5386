#include "larkstone/import/import.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/import/session.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

using test::categoryNames;
using testing::ElementsAre;

// A list with the given class names, two runners each.
std::string listOf(const std::vector<std::string>& classes) {
  const std::string person =
      "<PersonResult><Person><Name><Family>F</Family></Name></Person><Result>"
      "<Time>60</Time><Status>OK</Status></Result></PersonResult>";
  std::string list = "<ResultList iofVersion=\"3.0\" creator=\"C\"><Event><Name>E</Name></Event>";
  for (const std::string& name : classes) {
    list += "<ClassResult><Class><Name>" + name + "</Name></Class>" + person + person +
            "</ClassResult>";
  }
  return list + "</ResultList>";
}

class DriverTest : public test::ImportTest {
 protected:
  const std::string target = folder / "out.lrk4";
  std::string write(const std::vector<std::string>& classes) {
    return folder.write("list.xml", listOf(classes));
  }
};

TEST_F(DriverTest, TempFilePathEndsInABackslash) {
  for (const auto& [written, read] : {std::pair{"", ".\\"}, {"C:\\t", "C:\\t\\"}, {"a\\", "a\\"}}) {
    importer.tempFilePath(written);
    EXPECT_EQ(importer.tempFilePath(), read);
  }
}

TEST_F(DriverTest, TellsOfCategoriesAndProgress) {
  std::vector<std::string> seen;
  importer.onNewCategory([&](const std::string& name) {
    EXPECT_TRUE(importer.importingNow());
    seen.push_back(name + " of " + std::to_string(event.noOfCategories()));
  });
  std::vector<float> fractions;
  importer.onWorkProgress([&](float fraction) {
    EXPECT_EQ(importer.fractionCompleted(), fraction);
    fractions.push_back(fraction);
  });
  EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, write({"A", "B"})), 0);
  EXPECT_THAT(seen, ElementsAre("A of 0", "B of 1"));
  EXPECT_THAT(fractions, ElementsAre(0.5F, 1.0F));
  EXPECT_FALSE(importer.importingNow());
}

TEST_F(DriverTest, CancelInTheSecondClassKeepsTheFirst) {
  importer.onNewCategory([&](const std::string& name) {
    if (name == "B") importer.Cancel();
  });
  importer.master("Ann");
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"A", "B", "C"})), LRK_IMPORT_CANCELLED);
  EXPECT_THAT(categoryNames(event), ElementsAre("A"));
  EXPECT_FALSE(event.lastModifiedBySet());
  EXPECT_FALSE(importer.importingNow());
  // The request is used up.
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"D"})), 0);
  EXPECT_THAT(categoryNames(event), ElementsAre("A", "D"));
}

TEST_F(DriverTest, CancelBeforehandStopsTheNextReader) {
  importer.Cancel();
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, folder / "missing"),
            LRK_IMPORT_FILE_DOES_NOT_EXIST);
  importer.Cancel();
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"A"})), LRK_IMPORT_CANCELLED);
  EXPECT_EQ(event.noOfCategories(), 0);
  importer.onWorkProgress([&](float) { importer.Cancel(); });
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"A", "B"})), LRK_IMPORT_CANCELLED);
  EXPECT_THAT(categoryNames(event), ElementsAre("A"));
}

TEST_F(DriverTest, MasterBecomesCreatorWhereThereIsNone) {
  importer.master("Ann");
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"A"})), 0);
  EXPECT_EQ(event.createdBy(), "Ann");
  EXPECT_EQ(event.importedFrom(), "IOFXML3 / C");
  importer.master("Bo");
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"B"})), 0);
  EXPECT_EQ(event.createdBy(), "Ann");
  EXPECT_EQ(event.lastModifiedBy(), "Bo");
}

TEST_F(DriverTest, CodesWithoutAReader) {
  const std::string file = write({"A"});
  for (const std::int32_t code : {0, 2, 32, 33, 34, 35, 39, 63, 128, 129, 999, -1}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(importer.import(code, event, file), LRK_IMPORT_UNKNOWN);
    EXPECT_EQ(importer.convert(code, target, file), LRK_IMPORT_UNKNOWN);
  }
  EXPECT_EQ(importer.import(1, event, file), LRK_IMPORT_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(importer.convert(1, target, file), LRK_IMPORT_UNKNOWN);
  EXPECT_EQ(importer.importStartlist(LRK_IMPORT_STARTLIST_XML, event, file), LRK_IMPORT_UNKNOWN);
  EXPECT_EQ(importer.importStartlist(LRK_IMPORT_XML, event, file), LRK_IMPORT_UNKNOWN);
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(DriverTest, ConvertWritesAnEventFile) {
  importer.master("Ann");
  ASSERT_EQ(importer.convert(LRK_IMPORT_AUTO, target, write({"A", "B"})), 0);
  LRKEvent saved;
  std::string name = target;
  ASSERT_EQ(saved.openEvent(name), 0);
  EXPECT_THAT(categoryNames(saved), ElementsAre("A", "B"));
  EXPECT_EQ(saved.name(), "E");
  EXPECT_EQ(saved.category(0)->noOfRunners(), 2);
  EXPECT_EQ(saved.lastModifiedBy(), "Ann");
}

TEST_F(DriverTest, AFailedConversionLeavesNoFile) {
  const std::string broken = folder.write("broken.xml", "<ResultList><a>");
  folder.write("out.lrk4", "what was there");
  EXPECT_EQ(importer.convert(LRK_IMPORT_AUTO, target, broken), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
  EXPECT_FALSE(std::filesystem::exists(target));

  importer.onNewCategory([&](const std::string&) { importer.Cancel(); });
  EXPECT_EQ(importer.convertIOFXML(target, write({"A"})), LRK_IMPORT_CANCELLED);
  EXPECT_FALSE(std::filesystem::exists(target));
  importer.onNewCategory(nullptr);

  EXPECT_EQ(importer.convert(LRK_IMPORT_AUTO, target, folder / "missing"), LRK_IMPORT_UNKNOWN);
  EXPECT_EQ(importer.convertIOFXML(target, folder / "missing"), LRK_IMPORT_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(importer.convertIOFXML(folder / "none/out.lrk4", write({"A"})),
            LRK_IMPORT_EVENT_FILE_ERROR + LRK_COULD_NOT_OPEN_FILE);
  // A result list is never its own target.
  const std::string list = write({"A"});
  EXPECT_EQ(importer.convertIOFXML(list, list),
            LRK_IMPORT_EVENT_FILE_ERROR + LRK_FILE_ALREADY_EXISTS);
  EXPECT_EQ(test::bytesOf(list), listOf({"A"}));
}

TEST_F(DriverTest, AnEventThatTakesNoCategoryFails) {
  event.closeEvent();
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"A"})),
            LRK_IMPORT_EVENT_FILE_ERROR + LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(importer.importingNow());
}

TEST_F(DriverTest, OneImportAtATime) {
  const std::string file = write({"A"});
  std::vector<std::int32_t> nested;
  folder.write("out.lrk4", "stays");
  importer.onNewCategory([&](const std::string&) {
    nested.push_back(importer.import(LRK_IMPORT_XML, event, file));
    nested.push_back(importer.convert(LRK_IMPORT_XML, target, file));
  });
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, file), 0);
  EXPECT_THAT(nested, ElementsAre(LRK_IMPORT_UNKNOWN, LRK_IMPORT_UNKNOWN));
  EXPECT_EQ(test::bytesOf(target), "stays");
}

TEST_F(DriverTest, CodesHaveNamesAndTexts) {
  EXPECT_EQ(importName(LRK_IMPORT_IOF_XML_BLANK_NAMES), "LRK_IMPORT_IOF_XML_BLANK_NAMES");
  EXPECT_EQ(importText(LRK_IMPORT_CSV_INVALID_FORMAT), "CSV file not of a known layout");
  EXPECT_EQ(importName(LRK_IMPORT_EVENT_FILE_ERROR + LRK_FILE_READONLY), "LRK_FILE_READONLY");
  EXPECT_EQ(importName(99), "");
}

TEST(CourseLengthTest, IsTheAverageOfTheRunnersDownToTenMetres) {
  LRKCategory category;
  setCourseLengthFromRunners(category);
  EXPECT_FALSE(category.courseLengthSet());
  for (const Length length : {520000, 521500, 0}) {
    LRKRunner runner;
    if (length > 0) runner.courseLength(length);
    category.addRunner(std::move(runner));
  }
  setCourseLengthFromRunners(category);
  EXPECT_EQ(category.courseLength(), 520000);  // of 520750
}

}  // namespace
}  // namespace larkstone
