#include "larkstone/core/wildcard.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(WildcardTest, TheWholeTextIsLikeThePattern) {
  struct Row {
    int line;
    const char* pattern;
    std::vector<const char*> like;
    std::vector<const char*> unlike;
  };
  const Row rows[] = {
      {__LINE__, "", {""}, {"a"}},
      {__LINE__, "ok", {"ok"}, {"", "o", "okt"}},
      {__LINE__, "*", {"", "a"}, {}},
      {__LINE__, "ok *", {"ok ", "ok syd"}, {"ok", "aok syd"}},
      {__LINE__, "*a**b?*", {"xaxbxbx", "ab\xFF"}, {"xaxxxb", "bxa"}},
      {__LINE__, "?sa", {"åsa", "€sa"}, {"sa", "xåsa"}},
      {__LINE__, "h##", {"h21"}, {"h2e", "h2"}},
      {__LINE__, "[a-cx]", {"a", "b", "x"}, {"d", "-", "", "ab"}},
      {__LINE__, "[!a-cx]", {"d", "ö", "!"}, {"b", "x", ""}},
      {__LINE__, "[å-ö][c-a]*", {}, {"ö", "öb"}},
      {__LINE__, "[å-ö]", {"å", "æ"}, {"a", "ø"}},
      {__LINE__, "[-a][a-][a-c-e]", {"---", "aae"}, {"bad", "aad"}},
      {__LINE__, "[a!][*][?][#][[]]", {"!*?#[]"}, {"!a?#[]"}},
      {__LINE__, "a[]b[!]", {"abx"}, {"ab"}},
      {__LINE__, "![ab", {"![ab"}, {"!a"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const WildcardPattern pattern(row.pattern);
    for (const char* text : row.like) EXPECT_TRUE(pattern.matches(text)) << text;
    for (const char* text : row.unlike) EXPECT_FALSE(pattern.matches(text)) << text;
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
