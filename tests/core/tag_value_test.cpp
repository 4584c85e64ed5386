#include "larkstone/core/tag_value.hpp"

#include <gtest/gtest.h>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/ordered_map.hpp"

namespace larkstone {
namespace {

TEST(TagValueTest, ValuesConvertToTheTypeOfTheProperty) {
  EXPECT_EQ(fromTagValue<std::int32_t>(std::string(" 12 ")), 12);
  EXPECT_EQ(fromTagValue<std::int32_t>(2.5F), 2);
  EXPECT_EQ(fromTagValue<std::int32_t>(true), 1);
  EXPECT_EQ(fromTagValue<std::string>(std::int32_t{-7}), "-7");
  EXPECT_EQ(fromTagValue<std::string>(Date{46145}), "2026-05-03");
  EXPECT_EQ(fromTagValue<float>(std::string("1,5")), 1.5F);
  EXPECT_EQ(fromTagValue<bool>(std::string("0")), false);
  EXPECT_EQ(fromTagValue<Date>(std::int32_t{2}), Date{2});
  EXPECT_EQ(fromTagValue<enmStatus>(std::int32_t{6}), estaMisPunch);
}

TEST(TagValueTest, WhatCannotBeConvertedIsNothing) {
  EXPECT_FALSE(fromTagValue<std::int32_t>(std::string("many")));
  EXPECT_FALSE(fromTagValue<std::int32_t>(TagValue{}));
  EXPECT_FALSE(fromTagValue<std::string>(TagValue{}));
  EXPECT_FALSE(fromTagValue<std::int16_t>(std::int32_t{40000}));
  EXPECT_FALSE(fromTagValue<enmStatus>(std::int32_t{70000}));
}

TEST(OrderedMapTest, KeepsTheOrderOfAdditionThroughErasure) {
  OrderedMap<int, char> map;
  for (const int key : {30, 10, 20}) map[key] = static_cast<char>('a' + key / 10);
  map[10] = 'x';
  EXPECT_EQ(map.find(40), nullptr);
  map.erase(30);
  map.erase(99);
  EXPECT_FALSE(map.insert(20, 'y'));
  EXPECT_TRUE(map.insert(30, 'z'));
  using Entries = std::vector<std::pair<int, char>>;
  EXPECT_EQ(map.entries(), (Entries{{10, 'x'}, {20, 'c'}, {30, 'z'}}));
  EXPECT_EQ(*map.find(30), 'z');
}

}  // namespace
}  // namespace larkstone
