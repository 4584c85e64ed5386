#include "larkstone/import/import.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "imported.hpp"

namespace larkstone {
namespace {

using test::categoryNames;
using testing::ElementsAre;

// A list with the given class names, two runners each.
std::string listOf(const std::vector<std::string>& classes) {
  std::string list = test::element("Event", test::element("Name", "E"));
  for (const std::string& name : classes) {
    list += test::class3(test::person3("") + test::person3(""), name);
  }
  return test::list3(list);
}

class DriverTest : public test::ImportTest {
 protected:
  const std::string target = folder / "out.lrk4";
  std::string write(const std::vector<std::string>& classes) {
    return folder.write("list.xml", listOf(classes));
  }
};

TEST_F(DriverTest, TellsOfCategoriesAndProgressAndTakesNoOtherImport) {
  const std::string file = write({"A", "B"});
  folder.write("out.lrk4", "stays");
  std::vector<std::string> seen;
  importer.onNewCategory([&](const std::string& name) {
    EXPECT_TRUE(importer.importingNow());
    EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, file), LRK_IMPORT_UNKNOWN);
    EXPECT_EQ(importer.convert(LRK_IMPORT_XML, target, file), LRK_IMPORT_UNKNOWN);
    seen.push_back(name + " of " + std::to_string(event.noOfCategories()));
  });
  std::vector<float> fractions;
  importer.onWorkProgress([&](float fraction) {
    EXPECT_EQ(importer.fractionCompleted(), fraction);
    fractions.push_back(fraction);
  });
  EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, file), 0);
  EXPECT_THAT(seen, ElementsAre("A of 0", "B of 1"));
  EXPECT_THAT(fractions, ElementsAre(0.5F, 1.0F));
  EXPECT_FALSE(importer.importingNow());
  EXPECT_EQ(test::bytesOf(target), "stays");
}

TEST_F(DriverTest, CancelInTheSecondClassKeepsTheFirst) {
  importer.onNewCategory([&](const std::string& name) {
    if (name == "B") importer.Cancel();
  });
  importer.master("Ann");
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"A", "B", "C"})), LRK_IMPORT_CANCELLED);
  EXPECT_THAT(categoryNames(event), ElementsAre("A"));
  EXPECT_FALSE(event.lastModifiedBySet());
  // The request is used up. The master becomes the creator where there is none.
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"D"})), 0);
  importer.master("Bo");
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"E"})), 0);
  EXPECT_THAT(categoryNames(event), ElementsAre("A", "D", "E"));
  EXPECT_EQ(event.createdBy() + "," + event.lastModifiedBy(), "Ann,Bo");
  // Beforehand it stops the next reader, in progress after the class.
  importer.Cancel();
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"F"})), LRK_IMPORT_CANCELLED);
  importer.onWorkProgress([&](float) { importer.Cancel(); });
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"G"})), LRK_IMPORT_CANCELLED);
  EXPECT_THAT(categoryNames(event), ElementsAre("A", "D", "E", "G"));
}

TEST_F(DriverTest, CodesWithoutAReader) {
  const std::string file = write({"A"});
  for (const std::int32_t code : {0, 2, 32, 33, 34, 35, 39, 63, 128, 129, 999, -1}) {
    EXPECT_EQ(importer.import(code, event, file), LRK_IMPORT_UNKNOWN) << code;
    EXPECT_EQ(importer.convert(code, target, file), LRK_IMPORT_UNKNOWN) << code;
  }
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(DriverTest, ConvertWritesAnEventFile) {
  ASSERT_EQ(importer.convert(LRK_IMPORT_AUTO, target, write({"A", "B"})), 0);
  LRKEvent saved;
  std::string name = target;
  ASSERT_EQ(saved.openEvent(name), 0);
  EXPECT_THAT(categoryNames(saved), ElementsAre("A", "B"));
  EXPECT_EQ(saved.name(), "E");
}

TEST_F(DriverTest, AFailedConversionLeavesNoFile) {
  const std::string broken = folder.write("broken.xml", "<ResultList><a>");
  folder.write("out.lrk4", "what was there");
  EXPECT_EQ(importer.convert(LRK_IMPORT_AUTO, target, broken), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
  EXPECT_FALSE(std::filesystem::exists(target));
  importer.onNewCategory([&](const std::string&) { importer.Cancel(); });
  const std::string list = write({"A"});
  EXPECT_EQ(importer.convertIOFXML(target, list), LRK_IMPORT_CANCELLED);
  EXPECT_FALSE(std::filesystem::exists(target));
  importer.onNewCategory(nullptr);

  EXPECT_EQ(importer.convert(LRK_IMPORT_AUTO, target, folder / "missing"), LRK_IMPORT_UNKNOWN);
  EXPECT_EQ(importer.convertIOFXML(target, folder / "missing"), LRK_IMPORT_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(importer.convertIOFXML(folder / "none/out.lrk4", list), 256 + LRK_COULD_NOT_OPEN_FILE);
  // A result list is never its own target.
  EXPECT_EQ(importer.convertIOFXML(list, list), 256 + LRK_FILE_ALREADY_EXISTS);
  EXPECT_EQ(test::bytesOf(list), listOf({"A"}));
  event.closeEvent();
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, list), 256 + LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(importer.importingNow());
  EXPECT_EQ(importName(256 + LRK_FILE_READONLY), "LRK_FILE_READONLY");
}

}  // namespace
}  // namespace larkstone
