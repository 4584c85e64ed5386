#include "larkstone/import/import.hpp"

#include <sys/stat.h>

#include "imported.hpp"
#include "treated_pages.hpp"

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
  importer.Cancel();  // beforehand it stops the next reader
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, write({"F"})), LRK_IMPORT_CANCELLED);
}

TEST_F(DriverTest, EveryReaderStopsAtAnyOfItsNotifications) {
  // What a list begins with, and what it has for each class "#".
  const std::string columns = "f;g;h;i;j;k;l;m;n;o;p;q;r;s;t;u;v;w;x;y;z;A;B;C;D;E;Xtra1;\n;";
  const std::pair<std::string, std::string> lists[] = {
      {"med OLA version<table><tr><td>",
       "#</tr><tr valign><td>1<td>Eva<td>9:00</tr></table><table><tr><td>"},
      {"<h1>eTiming</h1>", "<h2>#</h2><pre><b>Eva</b>\n1:00\n</pre>"},
      {"Split time results\n  Pl Name                        Time\n",
       "# (1)\n   1 Eva                         9:00\n"},
      {"<ResultList iofVersion='3.0'>", test::class3(test::person3("") + test::person3(""), "#")},
      {"Larkstone Standard Text Format\nE\n\n\n", "#\n1\nEva\nBo\n\n"},
      {"OE0012;Name;Long;\n", ";1;#;\n;2;#;\n"},
      {"Stno;Read at;Name;Verein;Posten1;Stempel1;\n", ";;#;;3#;1;\n"},
      {"OS0012;b;c;d;e;" + columns, "7;;;;;;;;;;;;;;;;;;;#;;;;;;;;;;;0;1;1;Ek;Ed;;;0:00;9:00;\n;"},
      {"SOLV", "<b>#</b><pre>(\n<b>  1. Eva</b></pre>\n"},
      {"<title></title>",
       "<h3># Tilanne rasteilla</h3><pre>1.     Tulos\n  1. Eva\n  2. Di\n</pre>\n"},
  };
  int notified = 0;
  int stopAt = -1;
  const auto notify = [&] {
    EXPECT_TRUE(importer.importingNow());
    if (notified++ == stopAt) importer.Cancel();
  };
  importer.onNewCategory([&](const std::string&) { notify(); });
  importer.onWorkProgress([&](float fraction) {
    EXPECT_TRUE(fraction > 0 && fraction <= 1);
    notify();
  });
  const auto imported = [&](const std::string& file, int code) {
    newEvent();
    notified = 0;
    EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, file), code);
    EXPECT_FALSE(importer.importingNow());
    return categoryNames(event);
  };
  for (const auto& [head, classes] : lists) {
    SCOPED_TRACE(head);
    std::string list = head;
    for (const char* const name : {"1", "2", "3"}) list += test::replaced(classes, "#", name);
    if (head.starts_with("<ResultList")) list += "</ResultList>";
    const std::string file = folder.write("list", list);
    stopAt = -1;
    const std::vector<std::string> all = imported(file, 0);
    const int notifications = notified;
    EXPECT_GE(all.size(), 3U);
    std::size_t kept = 0;
    for (stopAt = 0; stopAt < notifications; ++stopAt) {
      const std::vector<std::string> names = imported(file, LRK_IMPORT_CANCELLED);
      EXPECT_LE(notified, stopAt + 2);
      EXPECT_THAT(std::vector(all.begin(), all.begin() + static_cast<int>(names.size())),
                  testing::ElementsAreArray(names));
      EXPECT_GE(names.size(), kept);
      kept = names.size();
    }
    EXPECT_GE(kept, all.size() / 2);
  }
}

TEST_F(DriverTest, CodesWithoutAReader) {
  const std::string file = write({"A"});
  for (const std::int32_t code : {0, 2, 32, 33, 34, 35, 39, 63, 128, 129, 999, -1}) {
    EXPECT_EQ(importer.import(code, event, file), LRK_IMPORT_UNKNOWN) << code;
    EXPECT_EQ(importer.convert(code, target, file), LRK_IMPORT_UNKNOWN) << code;
  }
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(DriverTest, OnlyASuccessfulConversionLeavesAFile) {
  const std::string broken = folder.write("broken.xml", "<ResultList><a>");
  folder.write("out.lrk4", "what was there");
  EXPECT_EQ(importer.convert(LRK_IMPORT_AUTO, target, broken), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
  EXPECT_FALSE(std::filesystem::exists(target));
  // But nothing goes that is no file, or that the user protected.
  folder.write("kept.lrk4", "what was there");
  std::filesystem::permissions(folder / "kept.lrk4", std::filesystem::perms::owner_read);
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  for (const char* const kept : {"kept.lrk4", "pipe"}) {
    EXPECT_EQ(importer.convertIOFXML(folder / kept, broken), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
    EXPECT_TRUE(std::filesystem::exists(folder / kept));
  }
  EXPECT_EQ(test::bytesOf(folder / "kept.lrk4"), "what was there");

  importer.onNewCategory([&](const std::string&) { importer.Cancel(); });
  const std::string list = write({"A"});
  EXPECT_EQ(importer.convertIOFXML(target, list), LRK_IMPORT_CANCELLED);
  EXPECT_FALSE(std::filesystem::exists(target));
  importer.onNewCategory(nullptr);

  ASSERT_EQ(importer.convert(LRK_IMPORT_AUTO, target, write({"A", "B"})), 0);
  std::string name = target;
  ASSERT_EQ(event.openEvent(name), 0);
  EXPECT_THAT(categoryNames(event), ElementsAre("A", "B"));
  EXPECT_EQ(event.name(), "E");
  event.closeEvent();

  EXPECT_EQ(importer.convert(LRK_IMPORT_AUTO, target, folder / "missing"), LRK_IMPORT_UNKNOWN);
  EXPECT_EQ(importer.convertIOFXML(target, folder / "missing"), LRK_IMPORT_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(importer.convertIOFXML(folder / "none/out.lrk4", list), 256 + LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(importer.import(LRK_IMPORT_XML, event, list), 256 + LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(importer.importingNow());
  EXPECT_EQ(importName(256 + LRK_FILE_READONLY), "LRK_FILE_READONLY");
}

// Nor does anything go over the list that is read, whatever it is called.
TEST_F(DriverTest, AListIsNeverItsOwnTarget) {
  const std::string list = write({"A"});
  std::filesystem::create_symlink(list, folder / "soft");
  std::filesystem::create_hard_link(list, folder / "hard");
  for (const std::string& name : {list, folder / ".//list.xml", folder / "soft", folder / "hard"}) {
    EXPECT_EQ(importer.convertIOFXML(name, list), 256 + LRK_FILE_ALREADY_EXISTS);
    EXPECT_EQ(importer.convert(LRK_IMPORT_CSV, list, name), 256 + LRK_FILE_ALREADY_EXISTS);
    ASSERT_EQ(event.createNewEvent(name, true), 0);  // which would be saved there
    EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, list), 256 + LRK_FILE_ALREADY_EXISTS);
    EXPECT_EQ(importer.importStartlistOLAHTML(event, list), 256 + LRK_FILE_ALREADY_EXISTS);
    EXPECT_EQ(test::bytesOf(name), listOf({"A"}));
  }
  // A backslash is a letter like any other.
  std::filesystem::create_directory(folder / "w");
  const std::string other = folder / "w/list.xml";
  std::filesystem::copy(list, other);
  EXPECT_EQ(importer.convertIOFXML(folder / "w\\list.xml", other), 0);
  EXPECT_EQ(test::bytesOf(other), listOf({"A"}));
}

}  // namespace
}  // namespace larkstone
