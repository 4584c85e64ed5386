// Result pages of one program each: what is read of them, also after people had them in hand.

#include "imported.hpp"
#include "treated_pages.hpp"

namespace larkstone {
namespace {

using test::described;
using test::replaced;
using test::treated;
using testing::ElementsAre;

const std::string solvPage =
    "<html><title>SOLV</title>\n<b>Menu</b><h2>3. Muster-OL\n <a href='i'>Info</a></h2>\n"
    "<pre>\nIm Ziel fehlte ein Posten.</pre>\n<b><p></p><a href='a'>H10</a></b>\n"
    "<pre>( 1.6 km,  10 m, 7 Po.)  5 Teilnehmer\n\n"
    "<b>  1. Jörg Muster            08  Adorf              OLG Beispiel        1:47:07</b>\n"
    "    1.   0.38 (2)  2.     --  ()  3.   2.00 (1)  4.  59.59 (1)  5.  62.15(10)\n"
    "   131   0.38 (2)  95     --  () 101   1.22 (1) 131  57.59 (1)  -7   2.16 (2) \n"
    "         0.01                          0.00\n"
    "    6. 106.44 (1)     107.07(22)\n"
    "   142  44.29(22)  Zi   0.23 (6)\n"
    "         2.37           0.03     \n"
    "<b>     Eva Zwei               85  Adorf                                    Po.f.</b>\n"
    "    1.   0.40 (2)         --  ()\n"
    "   131   0.40 (2)  Zi     --  ()\n\n"
    "<b>     Ida Drei                   Adorf              Klub zu neunzehn Z.n. gest.</b>\n"
    "<b>     Max Vier                   Adorf              Club A                verl.</b>\n"
    "<b>     Ute Acht                   Adorf              Club A                 a.K.</b>\n"
    "<b> 12. Uwe Fünf               60  Adorf              Club A                 9:14</b>\n"
    "<b>     Ada Sechs                  Adorf              Club A                n.kl.</b>\n"
    "    1.     89 (1)  2.  90.05 (1)\n"
    "   131     89 (1) 142   1.05 (1)\n</pre>\n"
    "<b><a href='b'>D10</a></b>\n<pre>(1 Po.)  0 Teilnehmer\n</pre></html>\n";

const std::string solvRead =
    "3. Muster-OL|importedFrom=SOLV HTML \n"
    "H10|courseLength=160000 \n"
    "name=J\u00F6rg Muster club=OLG Beispiel birthDate=2008-01-01 birthDateFormat=yyyy "
    "courseName=1 |"
    "S 0, 131 3800, 95 -, 101 12000, 131 359900, 0 373500, 142 640400, F 642700||0\n"
    "name=Eva Zwei birthDate=1985-01-01 birthDateFormat=yyyy courseName=2 |S 0, 131 4000, F -||6\n"
    "name=Ida Drei club=Klub zu neunzehn Z. courseName=3 |S 0, F -||10\n"
    "name=Max Vier club=Club A courseName=3 |S 0, F -||14\n"
    "name=Ute Acht club=Club A courseName=3 |S 0, F -||9\n"
    "name=Uwe F\u00FCnf club=Club A birthDate=1960-01-01 birthDateFormat=yyyy courseName=3 |"
    "S 0, F 55400||0\n"
    "name=Ada Sechs club=Club A courseName=4 |S 0, 131 534000, 142 540500, F -||9\n"
    "D10|\n";

const std::string pirilaPage =
    "<HTML><HEAD><TITLE>Mallin rastit, 1.5.2026</TITLE></HEAD>\n"
    "<H3 CLASS=o>1. osakilpailu</H3><H3>H21 A   Tilanne rasteilla\n\n</H3><PRE>\n"
    "Sija  Nimi                          1.           2.      Tulos\n\n"
    "  1. M\u00E4tti Malli                   2-26       1-1.03     12.50        M\u00E4tti\n"
    "  2. Pekka Pitkanimi-Mall      12-1.25      2-59.59    1.00.13  Pekka Pitkanimi-Mallinen\n"
    " HYL Ville Virtanen                  -          1.10  Ville Virtanen\n"
    "KESK Keijo Kesken                    -            -      \n"
    "VIRH Veera Virhe                  2-30            x\n"
    " DQ  Dan D                        3-30       3-1.30\n"
    "     Kilpailun ulkopuolella          \n"
    "  7. Outi Ajat                 15.35      \n"
    "  8.                              4-30\n"
    "  9. Tiina Tulos                   4-30       4-1.30\n"
    "</PRE>\n\n<H3>H21 A   Rastiv\u00E4lien ajat\n\n</H3><PRE>\n"
    "Sija  Nimi                         0-1          1-M      Tulos\n\n"
    "  9. Tiina Tulos                   4-30        4-60      14.10\n"
    "  1. M\u00E4tti Malli                   2-26        1-37      99.99\n</PRE>\n"
    "<H3>D21   Tilanne rasteilla klo 12.30\n\n</H3><PRE>\n"
    "Sija  Nimi                          1.      Tulos\n</PRE>\n"
    "<H3>D35   Tilanne rasteilla</H3>\n<PRE>no header\n</PRE>\n</HTML>\n";

const std::string pirilaRead =
    "Mallin rastit, 1.5.2026|importedFrom=Pekka Piril\u00E4 \n"
    "H21 A|\n"
    "name=M\u00E4tti Malli courseName=1 |S 0, 31 2600, 32 6300, F 77000||0\n"
    "name=Pekka Pitkanimi-Mallinen courseName=1 |S 0, 31 8500, 32 359900, F 361300||0\n"
    "name=Ville Virtanen courseName=1 |S 0, 31 -, 32 7000, F -||6\n"
    "name=Keijo Kesken courseName=1 |S 0, 31 -, 32 -, F -||7\n"
    "name=Veera Virhe courseName=1 |S 0, 31 3000, 32 -, F -||6\n"
    "name=Dan D courseName=1 |S 0, 31 3000, 32 9000, F -||8\n"
    "name=Kilpailun ulkopuolell courseName=2 |S 0, F -||14\n"
    "name=Outi Ajat courseName=2 |S 0, F 93500||0\n"
    "name=Tiina Tulos courseName=1 |S 0, 31 3000, 32 9000, F 85000||0\n"
    "D21|\nD35|\n";

struct PageFormat {
  std::int32_t format;
  std::int32_t (LRKImport::*import)(LRKEvent&, const std::string&);
  std::int32_t invalid;
  std::string page;
  std::string read;
};
const PageFormat formats[] = {
    {LRK_IMPORT_SOLV_HTML, &LRKImport::importSOLVHTML, LRK_IMPORT_SOLV_HTML_INVALID_FORMAT,
     solvPage, solvRead},
    {LRK_IMPORT_PEKKA_PIRILA_HTML, &LRKImport::importPekkaPirilaHTML,
     LRK_IMPORT_PEKKA_PIRILA_INVALID_FORMAT, pirilaPage, pirilaRead},
};

class PagesTest : public test::ImportTest {
 protected:
  std::int32_t importPage(const PageFormat& format, std::string_view page) {
    newEvent();
    notes.clear();
    return (importer.*format.import)(event, folder.write("page.html", page));
  }
};

TEST_F(PagesTest, ATreatedPageReadsAsTheOriginal) {
  for (const PageFormat& format : formats) {
    for (const auto& [treatment, page] : treated(format.page)) {
      SCOPED_TRACE(std::to_string(format.format) + " " + treatment);
      EXPECT_EQ(importPage(format, page), 0);
      EXPECT_EQ(described(event), format.read);
      EXPECT_EQ(importer.determineFileFormat(folder / "page.html"), format.format);
    }
  }
}

TEST_F(PagesTest, APageOfAnotherProgramIsRefused) {
  const std::string lookalike =
      "<TITLE></TITLE><H3> Lapset, tilanne rasteilla, rastiv\u00E4lien ajat</H3>\n<PRE>\n"
      "                                     1. [055]     Tulos\n   1. Arttu   1-00.14   04.25\n";
  for (const PageFormat& format : formats) {
    for (const std::string& page : {std::string(), lookalike, std::string("<pre>1. A</pre>"),
                                    &format == formats ? pirilaPage : solvPage}) {
      EXPECT_EQ(importPage(format, page), format.invalid);
      EXPECT_EQ(described(event), "|\n");
    }
  }
}

TEST_F(PagesTest, WhatIsDroppedIsNamedWithItsLine) {
  const auto noted = [&](const PageFormat& format) {
    EXPECT_EQ(importPage(format, replaced(format.page, "\n", "\r\n")), 0);
    std::vector<std::string> texts;
    for (const ImportNote& note : notes) texts.push_back(note.where + ": " + note.what);
    return texts;
  };
  EXPECT_THAT(noted(formats[0]),
              ElementsAre("line 11 \"J\u00F6rg Muster\": code of a control \"-7\"",
                          "line 21 \"Max Vier\": result \"verl.\""));
  EXPECT_THAT(noted(formats[1]),
              ElementsAre("line 11 \"Veera Virhe\": time of a control \"x\"",
                          "line 15: no name in \"8.                              "
                          "4-30\"",
                          "line 33: no controls in \"no header\""));
}

TEST_F(PagesTest, AnOldSolvPageHasItsEventInTheFirstBlock) {
  EXPECT_EQ(importPage(formats[0],
                       "<title>SOLV</title><pre><b><a href='x'>1. Stadt-OL</a>     Adorf, 1. Mai\n"
                       "2. Lauf</b>\n</pre><hr>\n<b>H10</b>\n<pre>(&nbsp;9.5&nbsp;km)\n</pre>"),
            0);
  EXPECT_EQ(described(event), "1. Stadt-OL|importedFrom=SOLV HTML \nH10|courseLength=950000 \n");
}

}  // namespace
}  // namespace larkstone
