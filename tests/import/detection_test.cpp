
#include "imported.hpp"

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
      {"Stnr;Kurz;Lang;Kombination;\r\n1;H21;Herren;5;\r\n", 38},
      {"Stno,Name,Read at,\n1,x,y,\n", 45},
      {"Stno\tName\t\n1\tx\t\n", 39},
      {"N\xB0 d\xE9p.;Long;\n1;x;\n", 37},
      {"Stnr;Lang;<ResultList>;\n1;x;\n", 37},
      {"< RESULTLIST >", 40},
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
      // A second look is tolerant.
      {"\xEF\xBB\xBFN\xC2\xB0 d\xC3\xA9p.;Long;\n1;x;\n", 37},
      {"\"Stbr\";\"Dugo\";\n1;x;\n", 37},
      {"Stno;Long;km\n1;x;4.5\n", 37},  // the row does not end with the delimiter
      {"OE0014_V12;Stno;Combination;\n1;x;y;\n", 38},
      {"OS0016a;Stno;\n1;x;\n", 39},  // of no layout that relays have
      {"OS0014;Long;Punch1;\n1;x;y;\n", 37},
      {"OS0012;Long;XTRA1;\n1;x;y;\n", 38},
      {"Stno;Long;Xtra1;\n1;x;y;\n", 37},
      {"\xEF\xBB\xBFN\xC2\xB0 d\xC3\xA9p.;\"Read at\"\nSPORTident results;SOLV\n", 45},
      {"OE0014_V12;Long;Name\n;;Solveig Str\xE4\x63ktider <title> eTiming Tilanne rasteilla\n", 37},
      {"\xEF\xBB\xBFLarkstone standard text format\nStr\xE4\x63ktider 2026, eTiming\n", 42},
      {"OE0012;Long;\n;x;\n<Event><EventClass>", 37},
      {"OE0012;Long;\n;<ResultList >;\n", 40},
      {repeated(30, "<a>") + "<ResultList>", 40},
      {"<iof:ResultList xmlns:iof='x'>", 40},
      {test::utf16(u"\uFEFF<ResultList status='x'>", false), 40},
      {test::utf16(u"\uFEFF<Event><EventClass>", true), 48},
      {"<title>Str\xC3\xA4\x63ktider</title>", 43},
      {"\xEF\xBB\xBFLarkstone standard text format\n", 42},
      // What only looks like a format.
      {"", 63},
      {"Stnr;Lang;", 63},  // a header without rows
      {"stnr;Lang;\n1;x;\n", 63},
      {"<ResultListList><a><ResultLists>", 63},
      {repeated(50, "<a>") + "<ResultList>", 63},
      {at(4090, "SPORTident results"), 63},
      {"med OLA version" + std::string(5000, '.'), 63},
      {"MED OLA VERSION", 63},
      {at(8300, "eTiming"), 63},
      {"Tilanne rasteilla<title>", 63},
      {"larkstone standard text formats\n", 63},
      {"<EventClass><Event>", 63},
      {"<event type='Relay'>", 63},
      {"OS2010 relay results\nOLG Beispiel\n", 63},
      {"OE20 03;Long;\n;x;\n", 63},
  };
  check(LRKImport::determineFileFormat, rows);
}

TEST_F(DetectionTest, StartListsEventFilesAndCsvVariants) {
  check(LRKImport::determineStartlistFileFormat,
        {{std::string(70000, '.') + "<A name=info>MT2002 \xA9 Some Body</A>", 129},
         {"created by <a>OE2003\n &copy; x", 129},
         {"\xA9 OE2003, 2003 \xA9", 191},
         {std::string(9000, '.') + "L\xC4HT\xD6LUETTELO", 131}});
  check(LRKImport::determineLRKFileFormat,
        {{"lrk4\x10", 34}, {"\rLarkstone 3.0 and more", 33}, {"\x0CLarkstone 3.0", 35}, {"", 35}});
  check(LRKImport::determineSportSoftwareCSVFileFormat,
        {{"a;Luettu;Pitk\xE4;\n;;;\n", 37}, {"a;lettura;gelesen UM;\n;;;\n", 45}});
}

}  // namespace
}  // namespace larkstone
