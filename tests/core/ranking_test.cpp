#include "larkstone/core/ranking.hpp"

#include <random>

#include <gtest/gtest.h>

namespace larkstone {
namespace {

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
