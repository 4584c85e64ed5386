#include "larkstone/core/wildcard.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(WildcardTest, TheWholeTextIsLikeThePattern) {
  struct Row {
    const char* pattern;
    std::vector<const char*> like, unlike;
  };
  const Row rows[] = {
      {"", {""}, {"a"}},
      {"ok", {"ok"}, {"", "o", "okt"}},
      {"*", {"", "a"}, {}},
      {"ok *", {"ok ", "ok syd"}, {"ok", "aok syd"}},
      {"*a**b?*", {"xaxbxbx", "ab\xFF"}, {"xaxxxb", "bxa"}},
      {"?sa", {"åsa", "€sa"}, {"sa", "xåsa"}},
      {"h##", {"h21"}, {"h2e", "h2"}},
      {"[a-cx]", {"a", "b", "x"}, {"d", "-", "", "ab"}},
      {"[!a-cx]", {"d", "ö", "!"}, {"b", "x", ""}},
      {"[å-ö][c-a]*", {}, {"ö", "öb"}},
      {"[å-ö]", {"å", "æ"}, {"a", "ø"}},
      {"[-a][a-][a-c-e]", {"---", "aae"}, {"bad", "aad"}},
      {"[a!][*][?][#][[]]", {"!*?#[]"}, {"!a?#[]"}},
      {"a[]b[!]", {"abx"}, {"ab"}},
      {"![ab", {"![ab"}, {"!a"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.pattern);
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
