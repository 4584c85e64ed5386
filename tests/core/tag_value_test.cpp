#include "larkstone/core/tag_value.hpp"

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/ordered_map.hpp"

namespace larkstone {
namespace {

using namespace std::string_literals;

template <class Value>
void expectValues(std::initializer_list<std::pair<TagValue, std::optional<Value>>> rows) {
  for (const auto& row : rows) {
    EXPECT_EQ(fromTagValue<Value>(row.first), row.second) << "row " << &row - rows.begin();
  }
}

TEST(TagValueTest, ValuesConvertToTheTypeOfThePropertyOrToNothing) {
  const std::string huge = "1" + std::string(300, '0');
  const TagValue nothing;
  for (const std::string& text : {"99999999999"s, "2147483647.5"s, huge}) {
    expectValues<std::int32_t>({{text, {}}});
    expectValues<Date>({{text, {}}});
  }
  expectValues<std::int32_t>({{" 12 "s, 12}, {2.5F, 2}, {true, 1}, {"-2147483648.5"s, INT32_MIN}});
  expectValues<std::int32_t>({{"many"s, {}}, {nothing, {}}});
  // 32767.5 rounds to 32768.
  expectValues<std::int16_t>({{"32767.4"s, 32767}, {"32767.5"s, {}}, {40000, {}}});
  expectValues<std::string>({{-7, "-7"}, {Date{46145}, "2026-05-03"}, {nothing, {}}});
  expectValues<float>({{"1,5"s, 1.5F}, {huge, {}}});
  expectValues<bool>({{"0"s, false}, {"TRUE"s, true}, {" false"s, false}, {"yes"s, {}}});
  expectValues<Date>({{2, Date{2}}, {"46145.5"s, Date{46145.5}}, {" 2026-05-03 "s, Date{46145}}});
  expectValues<Date>({{"2026-05-03T06:00:00"s, Date{46145.25}}, {"2026-02-29"s, {}}});
  expectValues<Date>({{Date{1e300}, {}}});
  expectValues<enmStatus>(
      {{6, estaMisPunch}, {"14"s, estaUnknown}, {-1, {}}, {15, {}}, {9999, {}}, {70000, {}}});
  expectValues<enmTimeAccuracy>({{6, {}}});
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
