// No property is lost on the way through a file: every row of every table with a value of its own,
// all at once and each alone.

#include <type_traits>

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;

template <class T>
T sample(int n) {
  if constexpr (std::is_same_v<T, std::string>) {
    return "text " + std::to_string(n) + " å";
  } else if constexpr (std::is_same_v<T, Date>) {
    return Date{40000.25 + n};
  } else if constexpr (std::is_same_v<T, float>) {
    return static_cast<float>(n) + 0.5F;
  } else if constexpr (std::is_same_v<T, bool>) {
    return false;  // the only Boolean is true at first
  } else {
    return static_cast<T>(100 + n);
  }
}

template <class Owner>
int rowCount() {
  int count = 0;
  Owner::forEachRow([&count](const auto&) { ++count; });
  return count;
}

// Fills all rows, or with `only` just that one and the values without a flag.
template <class Owner>
void fill(Owner& owner, int only) {
  int n = 0;
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      const bool wanted = only < 0 || only == n;
      owner.*row.member = {sample<typename Row::Type>(n), row.stored && wanted};
    } else if constexpr (isValueRow<Row>) {
      owner.*row.member = sample<typename Row::Type>(n);
    }
    ++n;
  });
}

template <class Owner>
void expectEqual(const Owner& written, const Owner& read) {
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      EXPECT_EQ((written.*row.member).set, (read.*row.member).set) << row.name;
      const auto expected =
          (written.*row.member).set ? (written.*row.member).value : typename Row::Type{};
      EXPECT_EQ(expected, (read.*row.member).value) << row.name;
    } else if constexpr (isValueRow<Row>) {
      EXPECT_EQ(written.*row.member, read.*row.member) << row.name;
    }
  });
}

TEST(Properties, OfAnEvent) {
  const Folder folder;
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  event.createNewEvent(folder.file("event.lrk4"));
  ASSERT_EQ(event.saveEvent(), 0);
  for (int only = -1; only < rowCount<LRKEvent>(); ++only) {
    SCOPED_TRACE(only);
    ASSERT_EQ(event.openEvent(folder.file("event.lrk4")), 0);  // saving does not stamp the creator
    fill(event, only);
    ASSERT_EQ(event.saveEvent(folder.file("copy.lrk4")), 0);
    LRKEvent read;
    read.tempFilePath(folder.file(""));
    ASSERT_EQ(read.openEvent(folder.file("copy.lrk4")), 0);
    expectEqual(event, read);
  }
}

TEST(Properties, OfACategory) {
  for (int only = -1; only < rowCount<LRKCategory>(); ++only) {
    SCOPED_TRACE(only);
    LRKCategory category;
    fill(category, only);
    category.legLength(31, 32, 250);
    category.legLength(-2, LRK_FINISH_CODE, -1);
    const LRKCategory read = decodeCategory(encodeCategory(category), 7);
    expectEqual(category, read);
    EXPECT_EQ(read.legLengthArray(), category.legLengthArray());
    EXPECT_EQ(read.categoryIndex(), 7);
  }
}

TEST(Properties, OfARunner) {
  for (int only = -1; only < rowCount<LRKRunner>(); ++only) {
    SCOPED_TRACE(only);
    LRKCategory category = categoryNamed("D12", 2);
    fill(category.runner(1), only);
    category.runner(1).extraPunches().add(100, 77);
    const LRKCategory read = decodeCategory(encodeCategory(category), 7);
    ASSERT_EQ(read.noOfRunners(), 2);
    const LRKRunner& runner = read.runner(1);
    expectEqual(category.runner(1), runner);
    EXPECT_EQ(runner.punches().codeArray(), category.runner(1).punches().codeArray());
    EXPECT_EQ(runner.finishTime(), category.runner(1).finishTime());
    EXPECT_EQ(runner.extraPunches().codeArray(), (std::vector<Code>{77}));
    EXPECT_EQ(runner.categoryName(), "D12");
    EXPECT_EQ(runner.categoryIndex(), 7);
    EXPECT_EQ(runner.runnerIndex(), 1);
  }
}

// Fields narrower than their property hold the nearest value.
TEST(Properties, KeepToTheirFields) {
  LRKCategory category = categoryNamed("D12");
  category.noOfRelayLegs(300);
  category.runner(0).relayLeg(-1);
  category.runner(0).status(static_cast<enmStatus>(256));
  const LRKCategory read = decodeCategory(encodeCategory(category), 0);
  EXPECT_EQ(read.noOfRelayLegs(), 255);
  EXPECT_EQ(read.runner(0).relayLeg(), 0);
  EXPECT_EQ(read.runner(0).status(), 255);

  const LRKCategory far = decodeCategory(hex("80 05000000 95 40420F00"), 0);
  ASSERT_EQ(far.noOfRunners(), 1);
  EXPECT_EQ(far.runner(0).rankingPosition(), 32767) << "a million in the file";
}

TEST(Properties, ByTag) {
  LRKEvent event;
  bool isSet = true;
  event.getPropertyByTag(etagEventOrganiser, isSet);
  EXPECT_FALSE(isSet);
  event.setPropertyByTag(etagEventOrganiser, TagValue("OK Syd"), true);
  EXPECT_EQ(event.organiser(), "OK Syd");
  event.setPropertyByTag(etagEventID, TagValue("no number"), true);
  EXPECT_FALSE(event.IDSet());
  EXPECT_EQ(event.getPropertyByTag(etagEventNoOfCategories, isSet), TagValue(0));
  EXPECT_TRUE(isSet);
  event.setPropertyByTag(etagEventNoOfCategories, TagValue(5), true);
  EXPECT_EQ(event.noOfCategories(), 0);
  EXPECT_EQ(event.getPropertyByTag(etagCategoryName, isSet), TagValue());
  EXPECT_FALSE(isSet);
}

}  // namespace
}  // namespace larkstone
