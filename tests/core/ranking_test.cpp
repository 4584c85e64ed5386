#include "larkstone/core/ranking.hpp"

#include <random>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(RankingTest, EqualKeysShareAPlaceAndKeepTheirOrder) {
  const std::vector<int> keys = {100, 100, 90};
  const std::vector<bool> all(3, true);
  const Ranking up = ranked(keys, all, true);
  EXPECT_EQ(up.newIndex, (TranslationTable{1, 2, 0}));
  EXPECT_EQ(up.place, (std::vector<std::int16_t>{2, 2, 1}));
  const Ranking down = ranked(keys, all, false);
  EXPECT_EQ(down.newIndex, (TranslationTable{1, 0, 2}));
  EXPECT_EQ(down.place, (std::vector<std::int16_t>{1, 1, 3}));
}

TEST(RankingTest, AgreesWithTheDefinitionOnRandomKeys) {
  std::mt19937 random(20260503);
  for (int round = 0; round < 200; ++round) {
    const std::size_t n = random() % 12;
    std::vector<int> keys(n);
    std::vector<bool> valid(n);
    for (std::size_t i = 0; i < n; ++i) {
      valid[i] = random() % 4 != 0;
      keys[i] = valid[i] ? static_cast<int>(random() % 5) : 1000;
    }
    for (const bool ascending : {true, false}) {
      const Ranking ranking = ranked(keys, valid, ascending);
      for (std::size_t i = 0; i < n; ++i) {
        std::size_t before = 0;  // entries that must stand in front, and better valid keys
        int better = 0;
        for (std::size_t j = 0; j < n; ++j) {
          const bool less = keys[j] < keys[i];
          const bool equal = keys[j] == keys[i];
          before += ascending ? less || (equal && j < i) : (!less && !equal) || (equal && j > i);
          better += valid[j] && (ascending ? less : !less && !equal);
        }
        EXPECT_EQ(static_cast<std::size_t>(ranking.newIndex[i]), before);
        EXPECT_EQ(ranking.place[i], valid[i] ? better + 1 : 0);
      }
    }
  }
}

}  // namespace
}  // namespace larkstone
