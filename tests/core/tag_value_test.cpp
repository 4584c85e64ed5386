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
  EXPECT_EQ(fromTagValue<enmStatus>(std::string("14")), estaUnknown);
  EXPECT_EQ(fromTagValue<std::int32_t>(std::string("-2147483648.5")), -2147483647 - 1);
  EXPECT_EQ(fromTagValue<std::int16_t>(std::string("32767.4")), 32767);
  EXPECT_EQ(fromTagValue<Date>(std::string(" 2026-05-03 ")), Date{46145});
  EXPECT_EQ(fromTagValue<Date>(std::string("2026-05-03T06:00:00")), Date{46145.25});
  EXPECT_EQ(fromTagValue<Date>(std::string("46145.5")), Date{46145.5});
  EXPECT_EQ(fromTagValue<bool>(std::string("TRUE")), true);
  EXPECT_EQ(fromTagValue<bool>(std::string(" false")), false);
}

TEST(TagValueTest, WhatCannotBeConvertedIsNothing) {
  EXPECT_FALSE(fromTagValue<std::int32_t>(std::string("many")));
  EXPECT_FALSE(fromTagValue<std::int32_t>(TagValue{}));
  EXPECT_FALSE(fromTagValue<std::string>(TagValue{}));
  EXPECT_FALSE(fromTagValue<std::int16_t>(std::int32_t{40000}));
  for (const int status : {-1, 15, 9999, 70000}) EXPECT_FALSE(fromTagValue<enmStatus>(status));
  EXPECT_FALSE(fromTagValue<enmTimeAccuracy>(6));
  const std::string huge = "1" + std::string(300, '0');
  for (const std::string& text : {std::string("99999999999"), std::string("2147483647.5"), huge}) {
    EXPECT_FALSE(fromTagValue<std::int32_t>(text)) << text;
    EXPECT_FALSE(fromTagValue<Date>(text)) << text;
  }
  EXPECT_FALSE(fromTagValue<std::int16_t>(std::string("32767.5")));  // rounds to 32768
  EXPECT_FALSE(fromTagValue<float>(huge));
  EXPECT_FALSE(fromTagValue<Date>(Date{1e300}));
  EXPECT_FALSE(fromTagValue<Date>(std::string("2026-02-29")));
  EXPECT_FALSE(fromTagValue<bool>(std::string("yes")));
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
