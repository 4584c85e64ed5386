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
  const struct {
    std::string_view utf8, bytes;
  } rows[] = {
      {"Jiří Łukasz Čech Győr Đurić", "Jir\xED Lukasz Cech Gyor Duric"},
      {"ș ț Ș ƀ Ɖ ɛ ŋ ǆ ẞ ı İ", "s t S b D e n d S i I"},
      {"Nguyễn Ấn Ậ Ǖ ǽ Ǿ ẘ", "Nguyen An A U \xE6 \xD8 w"},
      {"Ольга Щёкина Николай", "Ol'ga Sekina Nikolaj"},
      {"Олексій Їжак Ґудзь Євген", "Oleksij Izak Gudz' Evgen"},
      {"Аляксандр Шаўчэнка", "Alaksandr Saucenka"},
      {"Ђорђе Љубић Њ Џенан Ћосић", "Dorde Lubic N Denan Cosic"},
      {"Ѓорѓи Ќосев Ѕ Ј Първан", "Gorgi Kosev D J Parvan"},
      {"ӕ Ӑ Қ ө Ѣ Ꙁ", "\xE6 A K o E Z"},
      {"Νίκος Δημήτρης Ψ Ύ ΐ", "Nikos Dimitris P Y i"},
      {"Ἀχιλλεύς ᾧ ϑ ῥ", "Acilleys o t r"},
      {"Ａｚ１！　Å K Ω ﬁ ⱥ Ꞡ", "Az1! \xC5 K O f a G"},
      {"– “x” … ‐‑‒―−5 ʼ″‛ ⁄", "\x96 \x93x\x94 \x85 -----5 '\"' /"},
      {"e\xCC\x81 \xE1\xAA\xB0u 東 😀 ʘ א", "e u ? ? ? ?"},  // marks of their own are dropped
      {"\xE9t\xE9", "\xE9t\xE9"},                           // not UTF-8: the page's own bytes
  };
  for (const auto& row : rows) EXPECT_EQ(windows1252FromUtf8(row.utf8), row.bytes) << row.utf8;
}

TEST(TextTest, TheCodePageHoldsWhatComesBack) {
  for (const char* text : {"", "Anna", "Åsa Öberg žŒ€ “\xC2\x81”", "\xE9t\xE9", "é\xC3"}) {
    EXPECT_TRUE(windows1252Holds(text)) << text;
  }
  for (const char* text : {"Dvořák", "Anna 東", "Иван", "e\xCC\x81", "\xE9 ř", "\xC2\x80"}) {
    EXPECT_FALSE(windows1252Holds(text)) << text;
  }
  for (char32_t c = ' '; c <= 0x10FFFF; ++c) {
    std::string text;
    appendUtf8(text, c);
    const std::string back = utf8FromWindows1252(windows1252FromUtf8(text));
    ASSERT_EQ(windows1252Holds(text), back == text) << std::hex << std::uint32_t{c};
    const std::string relative = utf8FromWindows1252(std::string(1, windows1252Byte(c)));
    ASSERT_TRUE(relative == text || (relative >= " " && relative < "\x7F") ||
                relative >= "\xC2\xA1")
        << std::hex << std::uint32_t{c};
  }
}

TEST(TextTest, LowerAndUpperCaseCoverEveryScript) {
  EXPECT_EQ(
      lowered("ÅSA ŠŒŽŸ ŘĹŃĞ ƆǄǅƠ ẤẞȺ ΑΒΣΆΏΫ ἈᾼῬ ЖЁЇЂӘԮ ՀＡ"),
      "åsa šœžÿ řĺńğ ɔǆǆơ ấßⱥ αβσάώϋ ἀᾳῥ жёїђәԯ հａ");
  EXPECT_EQ(
      uppered(
          "åsa šœžÿ řĺńğ ɔǆǅơ ấßⱥ αβςσάώϋ ἀᾳῥ жёїђәԯ հａ"),
      "ÅSA ŠŒŽŸ ŘĹŃĞ ƆǄǄƠ ẤßȺ ΑΒΣΣΆΏΫ ἈᾼῬ ЖЁЇЂӘԮ ՀＡ");
  EXPECT_EQ(lowered("×ß÷µª 1東\xFF"), "×ß÷µª 1東\xFF");
  EXPECT_EQ(uppered("×ß÷µª 1東\xFF"), "×ß÷µª 1東\xFF");
  EXPECT_EQ(lowered1252("\xC5SA \x8A"), "\xE5sa \x9A");
  EXPECT_EQ(uppered1252('\xE4'), '\xC4');
  EXPECT_EQ(uppered1252('\x83'), '\x83');  // ƒ: the page lacks its capital

  const struct {
    std::string_view a, b;
    bool equal;
  } rows[] = {
      {"H21e", "h21E", true},
      {"Öberg", "öBERG", true},
      {"Öberg", "Oberg", false},
      {"ΝΊΚΟΣ", "νίκος", true},
      {"Νικος", "ΝΊΚΟΣ", false},
      {"ЩЁКИН їжак", "щёкин ЇЖАК", true},
      {"IŞIK İZMİR", "ışık izmir", true},
      {"ISPARTA", "isparta", true},
      {"Straße", "STRASSE", false},
  };
  for (const auto& row : rows) EXPECT_EQ(equalNoCase(row.a, row.b), row.equal) << row.a;
}

TEST(TextTest, CaseIsOneAndTheSameInEveryForm) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    std::string text;
    appendUtf8(text, c);
    const std::string lower = lowered(text);
    const std::string upper = uppered(text);
    ASSERT_EQ(lowered(lower), lower) << text;
    ASSERT_EQ(uppered(upper), upper) << text;
    ASSERT_EQ(lowered(upper), lower) << text;
    ASSERT_TRUE(equalNoCase(lower, upper)) << text;
    if (!windows1252Holds(text)) continue;
    ASSERT_EQ(utf8FromWindows1252(lowered1252(windows1252FromUtf8(text))), lower) << text;
  }
}

TEST(TextTest, Utf8IsCheckedStrictly) {
  EXPECT_TRUE(isUtf8("a é € 😀"));
  for (const char* bad : {"\x80", "\xC3", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xE0\x80\xAF",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xC3("}) {
    EXPECT_FALSE(isUtf8(bad));
    EXPECT_FALSE(windows1252FromUtf8(bad).empty());
  }
}

TEST(TextTest, CharactersAreTakenWholeAndBlanksOffTheEnds) {
  std::string_view text = "é€x\xC3";
  for (const char* next : {"é", "€", "x", "\xC3", ""}) EXPECT_EQ(takeCharacter(text), next);
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
