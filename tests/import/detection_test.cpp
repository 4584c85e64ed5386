#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/import/csv_columns.hpp"
#include "larkstone/import/import.hpp"

#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

std::string repeated(int count, std::string_view text) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

std::string at(std::size_t byte, std::string_view text) {
  return std::string(byte - 1, '.') + std::string(text) + std::string(10000, '.');
}

std::string utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char c : ascii) bytes += {c, '\0'};
  return bytes;
}

class DetectionTest : public testing::Test {
 protected:
  using Row = std::pair<std::string, std::int32_t>;
  void check(std::int32_t (*determine)(const std::string&), const std::vector<Row>& rows) {
    for (const auto& [bytes, code] : rows) {
      EXPECT_EQ(determine(folder.write("file", bytes)), code) << bytes.substr(0, 80);
    }
    EXPECT_EQ(determine(folder / "missing"), LRK_IMPORT_FILE_DOES_NOT_EXIST);
  }
  test::TempFolder folder;
};

TEST_F(DetectionTest, TheFirstTestThatSucceedsDecides) {
  const std::string olaEnd = at(1, "") + "med OLA version 5.1</html>";
  const std::vector<Row> rows = {
      {"Stnr;Kurz;Lang;Bahn Posten;\r\n1;H21;Herren;5;\r\n", 37},
      {"Stnr;Kurz;Lang;Kombination;\r\n1;H21;Herren;5;\r\n", 38},
      {"Stno,Name,Read at,\n1,x,y,\n", 45},
      {"Stno\tName\t\n1\tx\t\n", 39},
      {"N\xB0 d\xE9p.;Long;\n1;x;\n", 37},
      {"\xB3\xF6\xB7\xA2\xB1\xE0\xBA\xC5;\xB3\xA4;\n1;x;\n", 37},
      {"Stnr;Lang;<ResultList>;\n1;x;\n", 37},
      {"<RESULTLIST>", 40},
      {"<ResultList\r\n xmlns=\"x\" creator=\"eTiming\"><title>SPORTident results", 40},
      {repeated(9, "<a>") + "<ResultList >", 40},
      {"SPORTident results" + olaEnd, 43},
      {"V\xFDsledky s mezi\xE8\x61sy", 43},
      {"eTiming" + olaEnd, 46},
      {at(8000, "ETIMING"), 44},
      {"<title>eTiming</title>Tilanne rasteilla", 44},
      {"SOLV<TITLE>x</TITLE>" + at(9000, "tilanne RASTEILLA"), 41},
      {"LARKSTONE Standard Text Format  \r\nH21", 42},
      {"<h1>SOLV</h1><Event><EventClass>", 47},
      {"<Event><EventCode/><EventClass>", 48},
      {"<event Type=\"relay\">", 48},
  };
  check(LRKImport::determineFileFormat, rows);
}

TEST_F(DetectionTest, WhatOnlyLooksLikeAFormatIsUnknown) {
  const std::string rows[] = {
      "",
      "Stnr;Lang;",  // a header without rows
      "stnr;Lang;\n1;x;\n",
      "Stnr.;Lang;\n1;x;\n",
      "No.,Read at,SI-Card,\n3,2/28/16,20,\n",
      "OEVersion;Lang;\n1;x;\n",
      "<ResultListList><a><ResultLists>",
      repeated(50, "<a>") + "<ResultList>",
      "sportident results",
      at(4090, "SPORTident results"),
      "med OLA version" + std::string(5000, '.'),
      "MED OLA VERSION",
      at(8300, "eTiming"),
      "Tilanne rasteilla<title>",
      "larkstone standard text formats\n",
      "<EventClass><Event>",
      "<event type='Relay'>",
  };
  for (const std::string& row : rows) check(LRKImport::determineFileFormat, {{row, 63}});
}

TEST_F(DetectionTest, ASecondLookIsTolerant) {
  const std::vector<Row> rows = {
      {"\xEF\xBB\xBFN\xC2\xB0 d\xC3\xA9p.;Long;\n1;x;\n", 37},
      {"\"Stbr\";\"Dugo\";\n1;x;\n", 37},
      {"Stno;Long;km\n1;x;4.5\n", 37},  // the row does not end with the delimiter
      {"OE0012;Stno;LONG;\n1;x;y;\n", 37},
      {"OE0014_V12;Stno;Combination;\n1;x;y;\n", 38},
      {"OS0016a;Stno;\n1;x;\n", 38},
      {repeated(30, "<a>") + "<ResultList>", 40},
      {"<iof:ResultList xmlns:iof='x'>", 40},
      {utf16("<?xml version='1.0'?>\n<ResultList status='x'>"), 40},
      {"<title>Str\xC3\xA4\x63ktider</title>", 43},
      {"\xEF\xBB\xBFLarkstone standard text format\n", 42},
  };
  check(LRKImport::determineFileFormat, rows);
}

TEST_F(DetectionTest, StartListsEventFilesAndCsvVariants) {
  check(LRKImport::determineStartlistFileFormat,
        {{std::string(70000, '.') + "<A name=info>MT2002 \xA9 Some Body</A>", 129},
         {"created by <a>OE2003\n &copy; x", 129},
         {"OE2010 results", 191},
         {"\xA9 OE2003, 2003 \xA9", 191},
         {"med OLA version 5", 130},
         {std::string(9000, '.') + "L\xC4HT\xD6LUETTELO", 131}});
  check(LRKImport::determineLRKFileFormat,
        {{"lrk4\x10", 34}, {"\rLarkstone 3.0 and more", 33}, {"\x0CLarkstone 3.0", 35}, {"", 35}});
  check(LRKImport::determineSportSoftwareCSVFileFormat, {{"a;Gaffling;L\xE5ng;\n;;;\n", 38},
                                                         {"a;Luettu;Pitk\xE4;\n;;;\n", 37},
                                                         {"a;lettura;gelesen UM;\n;;;\n", 45}});
  std::vector<enmImportConstants> formats = {LRK_IMPORT_UNKNOWN};
  EXPECT_EQ(LRKImport::getSupportedSplitTimeFileFormats(formats), 9);
  EXPECT_THAT(formats, testing::ElementsAre(40, 36, 43, 46, 44, 41, 48, 42, 47));
}

TEST_F(DetectionTest, ASecondColumnOfOneNameHasAnAsterisk) {
  CsvHeader header;
  ASSERT_TRUE(header.read(folder.write("file", "Long;\"x;y\";Strecke;Long;\n1;\n")));
  EXPECT_EQ(header.column("Long"), 0);
  EXPECT_EQ(header.column("Leg"), 2);
  EXPECT_EQ(header.column("Combination"), -1);
}

}  // namespace
}  // namespace larkstone
