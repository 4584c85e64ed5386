#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/core/text.hpp"
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
  struct Row {
    int line;
    std::string bytes;
    std::int32_t code;
  };
  template <std::size_t n>
  void check(const Row (&rows)[n], std::int32_t (*determine)(const std::string&)) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.line);
      EXPECT_EQ(determine(folder.write("file", row.bytes)), row.code);
    }
    EXPECT_EQ(determine(folder / "missing"), LRK_IMPORT_FILE_DOES_NOT_EXIST);
  }
  test::TempFolder folder;
};

TEST_F(DetectionTest, EachFormatIsKnownByItsTest) {
  const Row rows[] = {
      {__LINE__, "Stnr;Kurz;Lang;Bahn Posten;\r\n1;H21;Herren;5;\r\n", 37},
      {__LINE__, "Stnr;Kurz;Lang;Kombination;\r\n1;H21;Herren;5;\r\n", 38},
      {__LINE__, "Stno,Name,Read at,\n1,x,y,\n", 45},
      {__LINE__, "Stno\tName\t\n1\tx\t\n", 39},
      {__LINE__, "N\xB0 d\xE9p.;Long;\n1;x;\n", 37},
      {__LINE__, "\xB3\xF6\xB7\xA2\xB1\xE0\xBA\xC5;\xB3\xA4;\n1;x;\n", 37},
      {__LINE__, "St\xC8\xED;Dlouh\xFD;\n1;x;\n", 37},
      {__LINE__, "<?xml version='1.0'?><ResultList status=\"complete\">", 40},
      {__LINE__, "<RESULTLIST>", 40},
      {__LINE__, "<ResultList\r\n xmlns=\"x\" creator=\"eTiming\">", 40},
      {__LINE__, repeated(9, "<a>") + "<ResultList >", 40},
      {__LINE__,
       "<title>Day 1 - Str\xE4"
       "cktider</title>",
       43},
      {__LINE__,
       "V\xFDsledky s mezi\xE8"
       "asy",
       43},
      {__LINE__, at(1, "") + "med OLA version 5.1</html>", 46},
      {__LINE__, at(8000, "ETIMING"), 44},
      {__LINE__, "<TITLE>x</TITLE>" + at(9000, "tilanne RASTEILLA"), 41},
      {__LINE__, "LARKSTONE Standard Text Format  \r\nH21", 42},
      {__LINE__, "<h1>SOLV</h1>", 47},
      {__LINE__, "<Event><EventCode/><EventClass>", 48},
      {__LINE__, "<event Type=\"relay\">", 48},
  };
  check(rows, LRKImport::determineFileFormat);
}

TEST_F(DetectionTest, TheFirstTestThatSucceedsDecides) {
  const Row rows[] = {
      {__LINE__, "Stnr;Lang;<ResultList>;\n1;x;\n", 37},
      {__LINE__, "<ResultList><title>SPORTident results", 40},
      {__LINE__, "SPORTident results" + at(1, "") + "med OLA version", 43},
      {__LINE__, "eTiming" + at(1, "") + "med OLA version", 46},
      {__LINE__, "<title>eTiming</title>Tilanne rasteilla", 44},
      {__LINE__, "SOLV<title>Tilanne rasteilla", 41},
      {__LINE__, "SOLV<Event><EventClass>", 47},
  };
  check(rows, LRKImport::determineFileFormat);
}

TEST_F(DetectionTest, WhatOnlyLooksLikeAFormatIsUnknown) {
  const Row rows[] = {
      {__LINE__, "", 63},
      {__LINE__, "Stnr;Lang;", 63},  // a header without rows
      {__LINE__, "stnr;Lang;\n1;x;\n", 63},
      {__LINE__, "Stnr.;Lang;\n1;x;\n", 63},
      {__LINE__, "No.,Read at,SI-Card,\n3,2/28/16,20,\n", 63},
      {__LINE__, "OEVersion;Lang;\n1;x;\n", 63},
      {__LINE__, "<ResultListList><a><ResultLists>", 63},
      {__LINE__, repeated(50, "<a>") + "<ResultList>", 63},
      {__LINE__, "sportident results", 63},
      {__LINE__, at(4090, "SPORTident results"), 63},
      {__LINE__, "med OLA version" + std::string(5000, '.'), 63},
      {__LINE__, "MED OLA VERSION", 63},
      {__LINE__, at(8300, "eTiming"), 63},
      {__LINE__, "Tilanne rasteilla<title>", 63},
      {__LINE__, "larkstone standard text formats\n", 63},
      {__LINE__, "<EventClass></EventClass>", 63},
      {__LINE__, "<EventClass><Event>", 63},
      {__LINE__, "<event type='Relay'>", 63},
  };
  check(rows, LRKImport::determineFileFormat);
}

TEST_F(DetectionTest, ASecondLookIsTolerant) {
  const Row rows[] = {
      {__LINE__, "\xEF\xBB\xBFStno;Long;\n1;x;\n", 37},
      {__LINE__, "\xEF\xBB\xBFN\xC2\xB0 d\xC3\xA9p.;Long;\n1;x;\n", 37},
      {__LINE__, "\"Stbr\";\"Dugo\";\n1;x;\n", 37},
      {__LINE__, "Stno;Long;km\n1;x;4.5\n", 37},  // the row does not end with the delimiter
      {__LINE__, "OE0012;Stno;LONG;\n1;x;y;\n", 37},
      {__LINE__, "OE0014_V12;Stno;Combination;\n1;x;y;\n", 38},
      {__LINE__, "OS0012;Stno;Long;Read at;\n1;x;y;z;\n", 38},
      {__LINE__, "OS0016a;Stno;\n1;x;\n", 38},
      {__LINE__, repeated(30, "<a>") + "<ResultList>", 40},
      {__LINE__, "<iof:ResultList xmlns:iof='x'>", 40},
      {__LINE__, utf16("<?xml version='1.0'?>\n<ResultList status='x'>"), 40},
      {__LINE__,
       "<title>Str\xC3\xA4"
       "cktider</title>",
       43},
      {__LINE__, "\xEF\xBB\xBFLarkstone standard text format\n", 42},
  };
  check(rows, LRKImport::determineFileFormat);
}

TEST_F(DetectionTest, StartLists) {
  const Row rows[] = {
      {__LINE__, std::string(70000, '.') + "<A name=info>MT2002 \xA9 Some Body</A>", 129},
      {__LINE__, "created by <a>OE2003\n &copy; x", 129},
      {__LINE__, "OE2010 results", 191},
      {__LINE__, "\xA9 OE2003, 2003 \xA9", 191},
      {__LINE__, "med OLA version 5", 130},
      {__LINE__, std::string(9000, '.') + "L\xC4HT\xD6LUETTELO", 131},
      {__LINE__, "", 191},
  };
  check(rows, LRKImport::determineStartlistFileFormat);
}

TEST_F(DetectionTest, EventFiles) {
  const Row rows[] = {
      {__LINE__, "lrk4\x10", 34},
      {__LINE__, "\rLarkstone 3.0 and more", 33},
      {__LINE__, "\x0CLarkstone 3.0", 35},
      {__LINE__, "LRK4", 35},
      {__LINE__, "", 35},
  };
  check(rows, LRKImport::determineLRKFileFormat);
}

TEST_F(DetectionTest, CsvVariantsFollowTheColumns) {
  const Row rows[] = {
      {__LINE__, "a;Gaffling;L\xE5ng;\n;;;\n", 38},
      {__LINE__, "a;Luettu;Pitk\xE4;\n;;;\n", 37},
      {__LINE__, "a;lettura;gelesen UM;\n;;;\n", 45},
      {__LINE__, "a;;;\n;;;\n", 39},
  };
  check(rows, LRKImport::determineSportSoftwareCSVFileFormat);
}

TEST_F(DetectionTest, ASecondColumnOfOneNameHasAnAsterisk) {
  CsvHeader header;
  ASSERT_TRUE(header.read(folder.write("file", "Long;\"x;y\";Strecke;Long;\n1;\n")));
  EXPECT_EQ(header.delimiter(), ";");
  EXPECT_EQ(header.column("Long"), 0);
  EXPECT_EQ(header.column("Leg"), 2);
  EXPECT_EQ(header.column("Combination"), -1);
}

TEST(SupportedFormatsTest, AreOfferedInTheirOrder) {
  std::vector<enmImportConstants> formats = {LRK_IMPORT_UNKNOWN};
  EXPECT_EQ(LRKImport::getSupportedSplitTimeFileFormats(formats), 9);
  EXPECT_THAT(formats, testing::ElementsAre(40, 36, 43, 46, 44, 41, 48, 42, 47));
  EXPECT_EQ(LRKImport::getSupportedStartlistFileFormats(formats), 3);
  EXPECT_THAT(formats, testing::ElementsAre(129, 130, 131));
}

}  // namespace
}  // namespace larkstone
