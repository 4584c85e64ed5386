// The forms in which the text of a list arrives: encodings, prefixes, damage.

#include "larkstone/core/text.hpp"
#include "larkstone/import/xml_preparation.hpp"
#include "larkstone/platform/xml.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

constexpr std::string_view rest =
    "</Name></Class><PersonResult><Person><Name><Family>Öbergř</Family></Name></Person>"
    "</PersonResult></ClassResult></ResultList>";

std::string listWith(std::string_view declaration, std::string_view name = "") {
  return std::string(declaration) + "<ResultList iofVersion='3.0'><ClassResult><Class><Name>Ä" +
         std::string(name) + std::string(rest);
}

constexpr std::u16string_view wideList =
    u"<?xml version='1.0' encoding='UTF-16'?><ResultList iofVersion='3.0'><ClassResult><Class>"
    u"<Name>Ä\U0001F3C3</Name></Class><PersonResult><Person><Name><Family>Öbergř</Family></Name>"
    u"</Person></PersonResult></ClassResult></ResultList>";

class IofXmlTextTest : public test::ImportTest {
 protected:
  // The import's code; the names of the last class and its first runner.
  std::string readNames(std::string_view bytes) {
    const std::int32_t code = importXml(bytes);
    if (code != 0) return "code " + std::to_string(code);
    return lastCategory()->name() + " " + lastCategory()->runner(0).name();
  }
};

TEST_F(IofXmlTextTest, EncodingIsWhatTheBytesAre) {
  const std::pair<std::string, std::string_view> rows[] = {
      {windows1252FromUtf8(listWith("<?xml version='1.0'?>", "€")), "Ä€ Öbergr"},
      {test::utf16(wideList, false), "Ä? Öbergr"},
      {test::utf16(wideList, true), "Ä? Öbergr"},
      {test::utf16(u"\uFEFF" + std::u16string(wideList), true), "Ä? Öbergr"},
      {listWith("", " &amp; <!-- x -->B<![CDATA[<C>]]>&#68;&#xE9; "), "Ä & B<C>Dé Öbergr"},
  };
  for (const auto& [bytes, names] : rows) EXPECT_EQ(readNames(bytes), names) << bytes;
}

TEST_F(IofXmlTextTest, DeclaredEncodingsAreBelievedUnlessTheBytesContradict) {
  struct Row {
    std::string encoding, bytes, text;
  };
  const Row rows[] = {
      {"windows-1250", "\xF8\xE8\x9A", "řčš"},
      {"Windows-1251", "\xC8\xE2\xE0\xED", "Иван"},
      {"windows-1252", "\x80\xC5", "€Å"},
      {"windows-1254", "\xDE\xF0\xFD", "Şğı"},
      {"windows-1257", "\xF0\xE0\xFE", "šąž"},
      {"ISO-8859-1", "\x80\xC5", "€Å"},
      {"iso-8859-2", "\xF8\xB9\xB1", "řšą"},
      {"ISO-8859-5", "\xB8\xD2\xD0\xDD", "Иван"},
      {"ISO-8859-9", "\xDE\xF0", "Şğ"},
      {"ISO-8859-15", "\xA4\xE9", "€é"},
      {"KOI8-R", "\xE9\xD7\xC1\xCE", "Иван"},
      {"GBK", "\xCD\xF5", "王"},
      {"windows-1250", "ř", "ř"},
      {"ISO-8859-1", "ř", "ř"},
      {"UTF-8", "\xE5", "å"},
      {"UTF-16", "\xE5", "å"},
      {"ISO-8859-2", "\x9A", "š"},    // a control character there
      {"windows-1257", "\xA1", "¡"},  // nothing at all there
      {"windows-1250//TRANSLIT", "\xF8", "ø"},
      {"UTF-7", "+AMQ-\xC4", "+AMQ-Ä"},
      {"unheard-of", "\xF8", "ø"},
  };
  for (const auto& [encoding, bytes, text] : rows) {
    const std::string declaration = "<?xml version=\"1.0\" encoding = \"" + encoding + "\"?>";
    EXPECT_EQ(xmlText(declaration + bytes), declaration + text);
  }
  EXPECT_EQ(readNames("<?xml version='1.0' encoding='windows-1250'?>" +
                      windows1252FromUtf8(listWith("", "\x9A"))),
            "Äš Öbergr");
}

TEST_F(IofXmlTextTest, PrefixesOfTheListsNamespaceDoNotMatter) {
  const std::string mixed =
      "<o:ResultList xmlns:o='urn:o' xmlns='urn:o' xmlns:x='urn:x' iofVersion='3.0'><ClassResult>"
      "<Class><x:Name>wrong</x:Name><n:Name xmlns:n='urn:o'>A</n:Name><n:Name xmlns:n='urn:x'>no"
      "</n:Name></Class><p:PersonResult xmlns:p='urn:o'><p:Person><o:Name><q:Family "
      "xmlns:q='urn:x'>no</q:Family><p:Family>B</p:Family></o:Name></p:Person></p:PersonResult>"
      "</ClassResult></o:ResultList>";
  EXPECT_EQ(readNames(mixed), "A B");
}

TEST_F(IofXmlTextTest, DocumentTypesAreCutOutAndTheEndTagRepaired) {
  EXPECT_EQ(readNames(listWith("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- a -> b -->\n"
                               "<!DOCTYPE ResultList SYSTEM \"IOFdata.dtd\">\n")),
            "Ä Öbergr");
  const std::string bomb =
      "<!DOCTYPE x [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>\n"
      "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;'>]>";
  // Nothing that is declared is expanded.
  for (const std::string& type :
       {bomb, std::string("<!DOCTYPE x [<!-- don't ]> --><?p ]> ?><!ENTITY d ']>'>]\n>"),
        std::string("<!DOCTYPE x SYSTEM \"a>b\">"), std::string("<!DOCTYPE x [<!ENTITY d 'b'>"),
        std::string()}) {
    EXPECT_EQ(readNames(listWith(type, "&d;")), "Ä&d; Öbergr") << type;
  }
  std::string misspelt = listWith("");
  misspelt.replace(misspelt.rfind("</ResultList>"), 13, "</Results>\r\n");
  EXPECT_EQ(readNames(misspelt), "Ä Öbergr");
}

TEST_F(IofXmlTextTest, BrokenListsLeaveTheEventUntouched) {
  const auto nested = [](int depth) {
    std::string list = "<ResultList iofVersion=\"3.0\">";
    for (int i = 1; i < depth; ++i) list += "<a>";
    for (int i = 1; i < depth; ++i) list += "</a>";
    return list + "</ResultList>";
  };
  EXPECT_TRUE(XmlDocument().parse(nested(XmlDocument::deepest)));
  const std::string rows[] = {
      "",
      nested(XmlDocument::deepest + 1),
      nested(10000),
      listWith("", std::string(1, '\0')),
      "<ResultListList><ResultList iofVersion='3.0'/></ResultListList>",
      "<StartList iofVersion='3.0'/>",
      "\xFF\xFE",
      "<ResultList iofVersion='3.0'><Event><Name>E</Name></Event></Resultlist>",
  };
  for (const std::string& row : rows) {
    EXPECT_EQ(importXml(row), LRK_IMPORT_IOF_XML_INVALID_FORMAT) << row.substr(0, 40);
    EXPECT_EQ(event.name(), "");
    EXPECT_FALSE(event.importedFromSet());
  }
  EXPECT_EQ(importer.importIOFXML(event, folder.path()), LRK_IMPORT_IOF_XML_INVALID_FORMAT);
}

}  // namespace
}  // namespace larkstone
