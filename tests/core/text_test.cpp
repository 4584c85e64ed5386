#include "larkstone/core/text.hpp"

#include <gtest/gtest.h>

#include "larkstone/core/growing_text.hpp"

namespace larkstone {
namespace {

TEST(TextTest, EveryByteOfTheCodePageSurvives) {
  std::string bytes;
  for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
  const std::string utf8 = utf8FromWindows1252(bytes);
  EXPECT_TRUE(isUtf8(utf8));
  EXPECT_EQ(windows1252FromUtf8(utf8), bytes);
  EXPECT_EQ(utf8FromWindows1252("\x80 \xC5sa \x9E"), "€ Åsa ž");
}

TEST(TextTest, OtherLettersBecomeTheirPlainestRelative) {
  EXPECT_EQ(windows1252FromUtf8("Jiří Łukasz Čech Győr Đurić"), "Jir\xED Lukasz Cech Gyor Duric");
  EXPECT_EQ(windows1252FromUtf8("ș ț Ș – “x” −5"), "s t S \x96 \x93x\x94 -5");
  EXPECT_EQ(windows1252FromUtf8("Nguyễn Ấn"), "Nguyen An");
  EXPECT_EQ(windows1252FromUtf8("Ольга"), "Ol?ga");
  EXPECT_EQ(windows1252FromUtf8("e\xCC\x81 東 😀"), "e ? ?");  // a mark of its own is dropped
  EXPECT_EQ(windows1252FromUtf8("\xE9t\xE9"), "\xE9t\xE9");   // not UTF-8: the page's own bytes
}

TEST(TextTest, LowerCaseCoversTheLettersOfNames) {
  EXPECT_EQ(lowered("ÅSA ÖBERG ŠŒŽŸ ŘĹŃ ΑΒΣ ЖЁ"), "åsa öberg šœžÿ řĺń αβσ жё");
  EXPECT_EQ(lowered("×ß÷ 1"), "×ß÷ 1");
  EXPECT_EQ(uppered("åsa öberg šœžÿ ×÷ß"), "ÅSA ÖBERG ŠŒŽŸ ×÷ß");
  EXPECT_EQ(lowered("\xFF"), "\xFF");
  EXPECT_EQ(lowered1252("\xC5SA \x8A"), "\xE5sa \x9A");
  EXPECT_EQ(uppered1252('\xE4'), '\xC4');
  EXPECT_TRUE(equalNoCase("Öberg", "öBERG"));
  EXPECT_FALSE(equalNoCase("Öberg", "Oberg"));
  EXPECT_TRUE(equalNoCase("H21e", "h21E"));
}

TEST(TextTest, Utf8IsCheckedStrictly) {
  EXPECT_TRUE(isUtf8("a é € 😀"));
  for (const char* bad : {"\x80", "\xC3", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xE0\x80\xAF",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xC3("}) {
    EXPECT_FALSE(isUtf8(bad));
    EXPECT_FALSE(windows1252FromUtf8(bad).empty());
  }
}

TEST(TextTest, CharactersAreTakenWhole) {
  std::string_view text = "é€x\xC3";
  EXPECT_EQ(takeCharacter(text), "é");
  EXPECT_EQ(takeCharacter(text), "€");
  EXPECT_EQ(takeCharacter(text), "x");
  EXPECT_EQ(takeCharacter(text), "\xC3");
  EXPECT_EQ(takeCharacter(text), "");
}

TEST(TextTest, TrimmingTakesBlanksOffBothEnds) {
  EXPECT_EQ(trimmed(" \t a b \r\n"), "a b");
  EXPECT_EQ(trimmed(" \n "), "");
}

TEST(TextTest, AGrowingTextHoldsPiecesOfEveryLength) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
  GrowingText growing;
  std::string text;
  for (int round = 0; round < 150; ++round) {
    for (std::size_t length = 0; length <= letters.size(); ++length) {
      growing.add(std::string_view(letters).substr(letters.size() - length));
      growing.add(-round);
      text += letters.substr(letters.size() - length) + std::to_string(-round);
    }
  }
  const std::string large(100000, 'x');
  growing.add(large);
  EXPECT_EQ(growing.take(), text + large);
  EXPECT_EQ(growing.take(), "");
}

}  // namespace
}  // namespace larkstone
