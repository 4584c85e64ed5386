#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_text.hpp"
#include "larkstone/import/scan/scan_file.hpp"

#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

TEST(FieldsTest, FieldsEndAtTheDelimiterOrTheEndOfTheText) {
  std::string_view text = "a;b";
  EXPECT_EQ(popField(text, ";"), "a");
  EXPECT_EQ(popField(text, ";"), "b");
  EXPECT_EQ(text, "");
  text = "abc";
  removeThrough(text, ";");
  EXPECT_EQ(text, "");
  EXPECT_EQ(textBefore("a, b", ", "), "a");
  EXPECT_EQ(textBefore("abc", ";"), "abc");
  EXPECT_EQ(countOccurrences("a;;b;", ";"), 3);
  EXPECT_EQ(countOccurrences("abc", ""), 0);
}

TEST(FieldsTest, CaseOfTheTextDoesNotMatterButIsKept) {
  std::string_view text = "NameXYZrest";
  EXPECT_EQ(popFieldNoCase(text, "xyz"), "Name");
  EXPECT_EQ(text, "rest");
  EXPECT_EQ(textBeforeNoCase("NameXYZ", "XYZ"), "NameXYZ");  // the delimiter is not lower-cased
  EXPECT_EQ(textBeforeNoCase("Stra\xDF\xC4re", "\xE4"), "Stra\xDF");
  EXPECT_EQ(countOccurrencesNoCase("xAyaz", "a"), 2);
  text = "one<BR>two<br>three<Br>four";
  EXPECT_EQ(nthFieldNoCase(text, "<br>", 3), "three");
  EXPECT_EQ(text, "four");
}

TEST(FieldsTest, LastFieldAndPrefix) {
  EXPECT_EQ(lastFieldBefore("12 34 56", " ", 5), "34");
  EXPECT_EQ(lastFieldBefore("12 34 56", " ", 99), "56");
  EXPECT_EQ(lastFieldBefore("1234", " ", 3), "123");
  EXPECT_EQ(lastFieldBefore("1234", " ", -1), "");
  EXPECT_TRUE(isPrefixNoCase("AUFG", "aufgeg."));
  EXPECT_TRUE(isPrefixNoCase("aufgeg.", "Auf"));
  EXPECT_FALSE(isPrefixNoCase("Auf", "abg"));
}

std::vector<std::string> csvFields(std::string_view line) {
  std::vector<std::string> fields;
  for (CsvFields csv(line, ";"); !csv.atEnd();) fields.push_back(csv.next());
  return fields;
}

TEST(FieldsTest, CsvFieldsAreQuotedProperly) {
  using testing::ElementsAre;
  EXPECT_THAT(csvFields("1;\"a;b\";c"), ElementsAre("1", "a;b", "c"));
  EXPECT_THAT(csvFields("\"say \"\"hi\"\"\";'it''s';"), ElementsAre("say \"hi\"", "it's"));
  EXPECT_THAT(csvFields("'t Hof;5;\"open"), ElementsAre("'t Hof", "5", "\"open"));
  EXPECT_THAT(csvFields("\"\";;x"), ElementsAre("", "", "x"));
}

TEST(FieldsTest, OpeningQuotesThatNothingClosesAreReadInOneGo) {
  std::string line;
  for (int i = 0; i < 200000; ++i) line += "\"a\"\";";
  EXPECT_EQ(csvFields(line).size(), 200000U);
}

TEST(HtmlTextTest, TagsGoAndEntitiesBecomeCharacters) {
  struct Row {
    int line;
    std::string_view html;
    std::string_view text;
  };
  const Row rows[] = {
      {__LINE__, "<td>1</td><td>2</TD>", "1\t2\t"},
      {__LINE__, "a</tw>b", "a\r\nb"},
      {__LINE__, "a<tr class='x'>b</table>", "ab"},
      {__LINE__, "x<b unclosed", "x"},
      {__LINE__, "J&uuml;rg &Auml;ngsj&Ouml;", "J\xFCrg \xC4ngsj\xD6"},
      {__LINE__, "a&nbsp;b&szlig;", "a b\xDF"},
      {__LINE__, "&amp;&lt;b&gt;&quot;&apos;", "&<b>\"'"},
      {__LINE__, "&#252;&#xFC;&#XE4;", "\xFC\xFC\xE4"},
      {__LINE__, "&#345;&#x142;&#8211;", "rl\x96"},  // ř, ł and a dash of the page
      {__LINE__, "&#150;", "\x96"},
      {__LINE__, "&#0;&#abc;&#;&;", "&#0;&#abc;&#;&;"},
      {__LINE__, "&copy; 2003", "&copy; 2003"},
      {__LINE__, "Tom & Jerry &uuml;", "Tom & Jerry \xFC"},
      {__LINE__, "a & <b>x</b>; y", "a & x; y"},
      {__LINE__, "end&", "end&"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(htmlToText(row.html), row.text);
  }
}

TEST(HtmlTextTest, StripTags) {
  EXPECT_EQ(stripTags("<b>a</b> &amp; <i>b"), "a &amp; b");
  EXPECT_EQ(stripTags("a<b"), "a");
  EXPECT_EQ(stripTags("a>b"), "a>b");
}

class ScanFileTest : public testing::Test {
 protected:
  ScanFile open(std::string_view bytes) { return ScanFile(folder.write("file", bytes)); }
  test::TempFolder folder;
};

TEST_F(ScanFileTest, ReadUntilLeavesThePositionBehindTheDelimiter) {
  ScanFile file = open("ab\r\ncd\nef");
  EXPECT_EQ(file.readUntil("\r\n", 2), "ab");
  EXPECT_EQ(file.position(), 5);
  EXPECT_EQ(file.readUntil("\r\n", 1), "cd");
  EXPECT_EQ(file.readUntil("\r\n", 512), "ef");
  EXPECT_EQ(file.position(), 10);
  EXPECT_EQ(file.readUntil("x", 512), "");
}

TEST_F(ScanFileTest, SearchesMeetTextsThatStraddleBlocksInAnyCase) {
  const std::string bytes = "one<TiTle>two</title>three";
  for (int block = 1; block < 30; ++block) {
    SCOPED_TRACE(block);
    ScanFile file = open(bytes);
    file.skipPast("<title>", block);
    EXPECT_EQ(file.position(), 11);
    EXPECT_EQ(file.readUntil("</TITLE>", block), "two");
    EXPECT_TRUE(file.find("THREE", 0, block));
    EXPECT_EQ(file.position(), 23);  // a byte behind the "t"
    file.skipPast("<title>", block);
    EXPECT_EQ(file.position(), 27);
  }
}

TEST_F(ScanFileTest, FindReadsWholeBlocksUpToItsLimit) {
  struct Row {
    int line;
    std::size_t at;  // from 1
    int limit;
    bool found;
    std::int64_t position;
  };
  const Row rows[] = {
      {__LINE__, 1, 4096, true, 2},        {__LINE__, 8000, 4096, true, 8001},
      {__LINE__, 8188, 4096, true, 8189},   // ends with the second block
      {__LINE__, 8189, 4096, false, 4097},  // straddles its end
      {__LINE__, 8300, 4096, false, 4097}, {__LINE__, 12284, 8192, true, 12285},
      {__LINE__, 8300, 0, true, 8301},     {__LINE__, 70000, -1, true, 70001},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    std::string bytes(80000, '.');
    bytes.replace(row.at - 1, 5, "wOrd!");
    ScanFile file = open(bytes);
    EXPECT_EQ(file.find("word!", row.limit, 4096), row.found);
    EXPECT_EQ(file.position(), row.position);
  }
  ScanFile file = open("short");
  EXPECT_FALSE(file.find("word", 0, 4096));
  EXPECT_EQ(file.position(), 6);
}

TEST_F(ScanFileTest, LinesEndInAnyWay) {
  const std::string longLine(100000, 'x');
  ScanFile file = open("a\nb\r\nc\r\r\nd\re\r\n\r\n" + longLine + "\nlast");
  std::vector<std::string> lines;
  for (std::string line; file.readLine(line);) lines.push_back(line);
  EXPECT_THAT(lines, testing::ElementsAre("a", "b", "c", "d", "e", "", longLine, "last"));
  EXPECT_EQ(countLines(folder.write("two", "a\nb\n")), 2);
  EXPECT_EQ(countLines(folder / "missing"), 0);
}

}  // namespace
}  // namespace larkstone
