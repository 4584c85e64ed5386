#include "larkstone/core/wildcard.hpp"

#include <string>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(WildcardTest, TheWholeTextIsLikeThePattern) {
  struct Row {
    int line;
    const char* pattern;
    const char* text;
    bool matches;
  };
  constexpr Row rows[] = {
      {__LINE__, "", "", true},
      {__LINE__, "", "a", false},
      {__LINE__, "ok", "ok", true},
      {__LINE__, "ok", "okt", false},
      {__LINE__, "okt", "ok", false},
      {__LINE__, "*", "", true},
      {__LINE__, "ok *", "ok syd", true},
      {__LINE__, "ok *", "ok", false},
      {__LINE__, "*syd", "ok syd syd", true},
      {__LINE__, "*a**b?*", "xaxxxb", false},
      {__LINE__, "*a**b?*", "xaxbxbx", true},
      {__LINE__, "?sa", "åsa", true},
      {__LINE__, "??sa", "åsa", false},
      {__LINE__, "h##", "h21", true},
      {__LINE__, "h##", "h2e", false},
      {__LINE__, "[a-c]x", "bx", true},
      {__LINE__, "[a-c]x", "dx", false},
      {__LINE__, "[c-a]", "b", false},
      {__LINE__, "[!a-cx]", "b", false},
      {__LINE__, "[!a-cx]", "ö", true},
      {__LINE__, "[!a]", "", false},
      {__LINE__, "[å-ö]", "ö", true},
      {__LINE__, "[å-ö]", "a", false},
      {__LINE__, "[-a]", "-", true},
      {__LINE__, "[a-]", "-", true},
      {__LINE__, "[a-c-e]", "d", false},
      {__LINE__, "[a-c-e]", "-", true},
      {__LINE__, "[a!]", "!", true},
      {__LINE__, "[*][?][#][[]]", "*?#[]", true},
      {__LINE__, "[*]", "a", false},
      {__LINE__, "a[]b", "ab", true},
      {__LINE__, "[!]", "x", true},
      {__LINE__, "[ab", "[ab", true},
      {__LINE__, "[ab", "a", false},
      {__LINE__, "?", "\xFF", true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(WildcardPattern(row.pattern).matches(row.text), row.matches);
  }
}

// With a try for every division of the text among the runs this would never end.
TEST(WildcardTest, ManyRunsCostNoMoreThanBothLengths) {
  std::string pattern;
  for (int i = 0; i < 40; ++i) pattern += "*a";
  const std::string text(5000, 'a');
  EXPECT_FALSE(WildcardPattern(pattern + "*b").matches(text));
  EXPECT_TRUE(WildcardPattern(pattern + "*b").matches(text + "b"));
}

}  // namespace
}  // namespace larkstone
