// The forms in which the text of a list arrives: encodings, prefixes, damage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/core/text.hpp"
#include "larkstone/import/xml_preparation.hpp"
#include "larkstone/platform/xml.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

using test::categoryNames;
using testing::ElementsAre;

constexpr std::string_view person =
    "<PersonResult><Person><Name><Family>Öbergř</Family></Name></Person></PersonResult>";

std::string listWith(std::string_view declaration, std::string_view rest = "") {
  return std::string(declaration) + "<ResultList iofVersion=\"3.0\"><ClassResult><Class><Name>Ä" +
         std::string(rest) + "</Name></Class>" + std::string(person) +
         "</ClassResult></ResultList>";
}

constexpr std::u16string_view wideList =
    u"<?xml version='1.0' encoding='UTF-16'?><ResultList iofVersion='3.0'><ClassResult><Class>"
    u"<Name>Ä\U0001F3C3</Name></Class><PersonResult><Person><Name><Family>Öbergř</Family></Name>"
    u"</Person></PersonResult></ClassResult></ResultList>";

std::string utf16(std::u16string_view units, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : units) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? std::string{high, low} : std::string{low, high};
  }
  return bytes;
}

class IofXmlTextTest : public test::ImportTest {
 protected:
  // The import's code; the names of the last class and its first runner.
  std::string readNames(std::string_view bytes) {
    const std::int32_t code = importXml(bytes);
    if (code != 0) return "code " + std::to_string(code);
    const auto category = event.category(event.noOfCategories() - 1);
    return category->name() + " " + category->runner(0).name();
  }
};

TEST_F(IofXmlTextTest, EncodingIsWhatTheBytesAre) {
  const std::string utf8 = listWith("");
  EXPECT_EQ(readNames(utf8), "Ä Öbergr");  // the event's page has no ř
  EXPECT_EQ(readNames("\xEF\xBB\xBF" + utf8), "Ä Öbergr");
  EXPECT_EQ(readNames(listWith("<?xml version='1.0' encoding='ISO-8859-1'?>")), "Ä Öbergr");
  EXPECT_EQ(readNames(windows1252FromUtf8(listWith("<?xml version='1.0' encoding='UTF-8'?>"))),
            "Ä Öbergr");
  EXPECT_EQ(readNames(windows1252FromUtf8(listWith("<?xml version='1.0'?>", "€"))), "Ä€ Öbergr");
  for (const bool bigEndian : {false, true}) {
    EXPECT_EQ(readNames(utf16(wideList, bigEndian)), "Ä? Öbergr");
    EXPECT_EQ(readNames(utf16(u"\uFEFF" + std::u16string(wideList), bigEndian)), "Ä? Öbergr");
  }
}

TEST_F(IofXmlTextTest, TextIsWholeAndTrimmed) {
  EXPECT_EQ(readNames(listWith("", " &amp; <!-- x -->B<![CDATA[<C>]]>&#68;&#xE9; ")),
            "Ä & B<C>Dé Öbergr");
}

TEST_F(IofXmlTextTest, PrefixesOfTheListsNamespaceDoNotMatter) {
  const std::string prefixed =
      "<iof:ResultList xmlns:iof='urn:o' iofVersion='3.0'><iof:ClassResult><iof:Class>"
      "<iof:Name>A</iof:Name></iof:Class><iof:PersonResult><iof:Person><iof:Name>"
      "<iof:Family>B</iof:Family></iof:Name></iof:Person></iof:PersonResult></iof:ClassResult>"
      "</iof:ResultList>";
  EXPECT_EQ(readNames(prefixed), "A B");
  const std::string mixed =
      "<ResultList xmlns='urn:o' xmlns:x='urn:x' iofVersion='3.0'><ClassResult><Class>"
      "<x:Name>wrong</x:Name><n:Name xmlns:n='urn:o'>A</n:Name><n:Name xmlns:n='urn:x'>no</n:Name>"
      "</Class><p:PersonResult xmlns:p='urn:o'><p:Person><p:Name><q:Family xmlns:q='urn:x'>no"
      "</q:Family><p:Family>B</p:Family></p:Name></p:Person></p:PersonResult></ClassResult>"
      "</ResultList>";
  EXPECT_EQ(readNames(mixed), "A B");
}

TEST_F(IofXmlTextTest, DocumentTypesAreCutOut) {
  EXPECT_EQ(readNames(listWith("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- a -> b -->\n"
                               "<!DOCTYPE ResultList SYSTEM \"IOFdata.dtd\">\n")),
            "Ä Öbergr");
  std::string bomb = "<!DOCTYPE x [\n<!ENTITY a \"aaaaaaaaaa\">\n";
  for (char c = 'b'; c < 'k'; ++c) {
    bomb += std::string("<!ENTITY ") + c + " \"";
    for (int i = 0; i < 10; ++i) bomb += std::string("&") + static_cast<char>(c - 1) + ';';
    bomb += "\">\n";
  }
  EXPECT_EQ(readNames(listWith(bomb + "]>", "&j;")), "code 3");
  EXPECT_EQ(readNames(listWith("<!DOCTYPE x [<!ENTITY a \"b\">]>", "&a;")), "code 3");
  EXPECT_EQ(readNames(listWith("", "&j;")), "Ä&j; Öbergr");  // never declared: as written
}

TEST_F(IofXmlTextTest, TheMisspeltEndTagIsRepaired) {
  std::string list = listWith("");
  list.replace(list.rfind("</ResultList>"), 13, "</Results>\r\n");
  EXPECT_EQ(readNames(list), "Ä Öbergr");
}

TEST_F(IofXmlTextTest, BrokenListsLeaveTheEventUntouched) {
  const std::string good = listWith("");
  const auto nested = [](int depth) {
    std::string list = "<ResultList iofVersion=\"3.0\">";
    for (int i = 1; i < depth; ++i) list += "<a>";
    for (int i = 1; i < depth; ++i) list += "</a>";
    return list + "</ResultList>";
  };
  EXPECT_TRUE(XmlDocument().parse(nested(XmlDocument::deepest)));
  std::string withNul = good;
  withNul[60] = '\0';
  const std::string rows[] = {
      "",
      "<",
      "x",
      std::string(3, '\0'),
      "<ResultList iofVersion='3.0'>",
      nested(XmlDocument::deepest + 1),
      nested(10000),
      withNul,
      "<ResultListList><ResultList iofVersion='3.0'/></ResultListList>",
      "<StartList iofVersion='3.0'/>",
      "<!DOCTYPE",
      "\xFF\xFE",
      "\xEF\xBB\xBF",
      "<ResultList iofVersion='3.0'><Event><Name>E</Name></Event></Resultlist>",
  };
  for (const std::string& row : rows) {
    SCOPED_TRACE(row.substr(0, 40));
    EXPECT_EQ(importXml(row), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
    EXPECT_EQ(event.name(), "");
    EXPECT_FALSE(event.importedFromSet());
    EXPECT_EQ(event.noOfCategories(), 0);
  }
  EXPECT_EQ(importer.importIOFXML(event, folder.path()), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
}

TEST_F(IofXmlTextTest, EveryPrefixOfAListIsRefusedAndHarmless) {
  const std::string two =
      "<?xml version='1.0'?><!DOCTYPE ResultList SYSTEM \"a\"><ResultList status=\"delta\">"
      "<IOFVersion version=\"2.0.3\"/><ClassResult><ClassShortName>Ä</ClassShortName>"
      "<PersonResult><Person/><Result><SplitTime><ControlCode>31</ControlCode><Time>1:00</Time>"
      "</SplitTime></Result></PersonResult></ClassResult></ResultList>";
  for (const std::string& list : {two, listWith("<?xml version='1.0'?>"), utf16(wideList, false)}) {
    const std::string file = folder.write("list.xml", list);
    EXPECT_EQ(importer.importIOFXML(event, file), 0);
    EXPECT_EQ(event.noOfCategories(), 1);
    const bool wide = list[1] == '\0';  // half of its last character may be missing
    for (std::size_t length = list.size() - (wide ? 2 : 1); length > 0; --length) {
      std::filesystem::resize_file(file, length);
      ASSERT_EQ(importer.importIOFXML(event, file), LRK_IMPORT_IOF_XML_INVALID_FORMAT) << length;
    }
    EXPECT_EQ(event.noOfCategories(), 1);
    EXPECT_EQ(event.deleteCategory(0), 0);
  }
}

TEST(XmlNodeTest, AbsentNodesAnswerWithNothing) {
  XmlDocument document;
  ASSERT_TRUE(document.parse("<a Name='x' name=' y '><b/>t1<b><c>deep</c></b><!-- b -->t2</a>"));
  const XmlNode root = document.root();
  EXPECT_EQ(root.attribute("name"), "y");
  EXPECT_EQ(root.attribute("NAME"), "x");  // the first that differs in case only
  EXPECT_FALSE(root.hasAttribute("b"));
  EXPECT_EQ(root.text(), "t1t2");
  EXPECT_EQ(root.textAt("b/c"), "");  // a path takes the first of its name
  EXPECT_EQ(root.child("b").next("b").child("c").text(), "deep");
  int children = 0;
  for (const XmlNode b : root.children("b")) children += b.is("b") ? 1 : 0;
  EXPECT_EQ(children, 2);
  const XmlNode none = root.at("b/x/y");
  EXPECT_FALSE(none);
  EXPECT_EQ(none.text() + std::string(none.name()) + std::string(none.attribute("x")), "");
  EXPECT_FALSE(none.firstChild() || none.next() || none.at("a/b"));
  EXPECT_FALSE(XmlDocument().root());
}

}  // namespace
}  // namespace larkstone
