#include <gmock/gmock.h>

#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_text.hpp"
#include "larkstone/import/scan/scan_file.hpp"
#include "larkstone/import/scan/text_lines.hpp"

#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

TEST(FieldsTest, FieldsEndAtTheDelimiterOrTheEndOfTheText) {
  std::string_view text = "NameXYZrest";
  EXPECT_EQ(popFieldNoCase(text, "xyz"), "Name");
  EXPECT_EQ(textBeforeNoCase("NameXYZ", "XYZ"), "NameXYZ");  // the delimiter is not lower-cased
  EXPECT_EQ(textBeforeNoCase("Stra\xDF\xC4re", "\xE4"), "Stra\xDF");
  text = "one<BR>two<br>three<Br>four";
  EXPECT_EQ(nthFieldNoCase(text, "<br>", 3), "three");
  EXPECT_EQ(lastFieldBefore("12 34 56", " ", 5), "34");
  EXPECT_EQ(lastFieldBefore("1234", " ", -1), "");
  EXPECT_TRUE(isPrefixNoCase("AUFG", "aufgeg."));
  EXPECT_FALSE(isPrefixNoCase("Auf", "abg"));
}

std::vector<std::string> csvFields(std::string_view line) {
  std::vector<std::string> fields;
  for (CsvFields csv(line, ";"); !csv.atEnd();) fields.emplace_back(csv.next());
  return fields;
}

TEST(FieldsTest, CsvFieldsAreQuotedProperly) {
  using testing::ElementsAre;
  EXPECT_THAT(csvFields("1;\"a;b\";c"), ElementsAre("1", "a;b", "c"));
  EXPECT_THAT(csvFields("\"say \"\"hi\"\"\";'it''s';"), ElementsAre("say \"hi\"", "it's"));
  EXPECT_THAT(csvFields("'t Hof;\"a;b\";\"open"), ElementsAre("'t Hof", "a;b", "\"open"));
  EXPECT_THAT(csvFields("\"Bo \"B\" Ek\";'5'6\"'"), ElementsAre("Bo \"B\" Ek", "5'6\""));
  // Opening quotes that nothing closes are read in one go.
  std::string line;
  for (int i = 0; i < 200000; ++i) line += "\"a\"\";";
  EXPECT_EQ(csvFields(line).size(), 200000U);
}

TEST(HtmlTextTest, TagsGoAndEntitiesBecomeCharacters) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"<td>1</td><td>2</TD>", "1\t2\t"},        {"a</tw>b", "a\r\nb"},
      {"a<tr class='x'>b</table>", "ab"},        {"x<b unclosed", "x"},
      {"&amp;&lt;b&gt;&quot;&apos;", "&<b>\"'"}, {"&#252;&#xFC;&#XE4;&#150;", "\xFC\xFC\xE4\x96"},
      {"&#345;&#x142;&#8211;", "rl\x96"},  // ř, ł and a dash of the page
      {"a & <b>x</b>; y", "a & x; y"},
  };
  for (const auto& [html, text] : rows) EXPECT_EQ(htmlToText(html), text) << html;
  EXPECT_EQ(stripTags("<b>a</b> &amp; a>b<i>b<"), "a &amp; a>bb");
}

class ScanFileTest : public testing::Test {
 protected:
  ScanFile open(std::string_view bytes) { return ScanFile(folder.write("file", bytes)); }
  test::TempFolder folder;
};

TEST_F(ScanFileTest, SearchesMeetTextsThatStraddleBlocksInAnyCase) {
  const std::string bytes = "one<TiTle>two</title>three\r\nfour";
  for (int block = 1; block < 30; ++block) {
    SCOPED_TRACE(block);
    ScanFile file = open(bytes);
    file.skipPast("<title>", block);
    EXPECT_EQ(file.position(), 11);
    EXPECT_EQ(file.readUntil("</TITLE>", block), "two");
    EXPECT_TRUE(file.find("THREE", 0, block));
    EXPECT_EQ(file.position(), 23);  // a byte behind the "t"
    EXPECT_EQ(file.readUntil("\r\n", block), "hree");
    EXPECT_EQ(file.position(), 29);
    file.skipPast("<title>", block);
    EXPECT_EQ(file.position(), 33);
  }
}

TEST_F(ScanFileTest, FindReadsWholeBlocksUpToItsLimit) {
  // Where the word begins, the limit, whether it is found, the position afterwards.
  const std::tuple<std::size_t, int, bool, std::int64_t> rows[] = {
      {1, 4096, true, 2},         {8188, 4096, true, 8189},  // ends with the second block
      {8189, 4096, false, 4097},                             // straddles its end
      {12284, 8192, true, 12285}, {8300, 0, true, 8301},
      {70000, -1, true, 70001},   {79998, 0, false, 80001},  // not whole
  };
  for (const auto& [at, limit, found, position] : rows) {
    SCOPED_TRACE(at);
    std::string bytes(at + 10000, '.');
    ScanFile file = open(bytes.replace(at - 1, 5, "wOrd!").substr(0, 80000));
    EXPECT_EQ(file.find("word!", limit, 4096), found);
    EXPECT_EQ(file.position(), position);
  }
}

TEST_F(ScanFileTest, LinesEndInAnyWay) {
  const std::string longLine(100000, 'x');
  const std::string bytes = "a\nb\r\nc\r\r\nd\re\r\n\r\n" + longLine + "\nlast";
  ScanFile file = open(bytes);
  std::vector<std::string> lines;
  for (std::string line; file.readLine(line);) lines.push_back(line);
  EXPECT_THAT(lines, testing::ElementsAre("a", "b", "c", "d", "e", "", longLine, "last"));
  TextLines text;
  ASSERT_TRUE(text.read(folder.write("text", bytes)));
  EXPECT_EQ(text.count(), 8);
  std::string_view line;
  for (const std::string& expected : lines) {
    ASSERT_TRUE(text.next(line));
    EXPECT_EQ(line, expected);
  }
  EXPECT_FALSE(text.next(line));
  EXPECT_EQ(text.number(), 8);
}

TEST_F(ScanFileTest, TheEncodingOfATextIsThatOfAllItsBytes) {
  using namespace std::string_view_literals;
  struct Row {
    std::string_view bytes;
    std::string_view utf8;
    std::string_view page;
  };
  constexpr Row rows[] = {
      {"", "", ""},
      {"\uFEFFa\r", "a\n", "a\n"},
      {"\xC3\xA5\n", "å\n", "\xE5\n"},
      // Characters of UTF-8 and bytes that are none: the greater number tells.
      {"\xE5 \xC3\xA5\n", "å Ã¥\n", "\xE5 \xC3\xA5\n"},
      {"\xE5 \xC3\xA5\u0159\n", "å åř\n", "\xE5 \xE5r\n"},
      {"\xC3\xA5\xC3 \xC3\xA4\n", "åÃ ä\n", "\xE5\xC3 \xE4\n"},
      {"\uFEFF\xE5\n", "å\n", "\xE5\n"},
      {"\xFF\xFE"
       "a\0\xE5\0"sv,
       "aå\n", "a\xE5\n"},
      {"a\0b\0\n"sv, "a b \n", "a b \n"},
  };
  for (const Row& row : rows) {
    const std::string path = folder.write("text", row.bytes);
    TextLines lines;
    ASSERT_TRUE(lines.read(path));
    EXPECT_EQ(lines.text(), row.utf8);
    ASSERT_TRUE(lines.read(path, TextLines::Form::windows1252));
    EXPECT_EQ(lines.text(), row.page);
  }
}

}  // namespace
}  // namespace larkstone
