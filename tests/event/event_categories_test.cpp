// The categories of an open event: handing out, storing, order.

#include <memory>

#include "larkstone/event/event.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;

class EventCategories : public testing::Test {
 protected:
  EventCategories() {
    event_.tempFilePath(folder_.file(""));
    EXPECT_EQ(event_.createNewEvent(path_), 0);
  }

  void add(const std::vector<std::string>& names) {
    for (const std::string& name : names) ASSERT_EQ(event_.addCategory(categoryNamed(name)), 0);
  }
  void saveAndReopen() {
    ASSERT_EQ(event_.saveEvent(), 0);
    ASSERT_EQ(event_.openEvent(path_), 0);
  }
  std::vector<std::string> shown() const {
    std::vector<std::string> names;
    for (int i = 0; i < event_.noOfCategories(); ++i) names.push_back(event_.categoryName(i));
    return names;
  }
  std::vector<std::string> inFile() const {
    std::vector<std::string> names;
    for (int i = 0; i < event_.noOfCategories(); ++i) {
      names.push_back(event_.categoryName(event_.categoryDisplayIndex(i)));
    }
    return names;
  }

  using Names = std::vector<std::string>;
  const Folder folder_;
  const std::string path_ = folder_.file("event.lrk4");
  LRKEvent event_;
};

TEST_F(EventCategories, AreShownSortedOnceTheFileIsOpened) {
  add({"Öppen 1", "H21", "D12", "D21"});
  EXPECT_EQ(shown(), (Names{"Öppen 1", "H21", "D12", "D21"}));
  saveAndReopen();
  EXPECT_EQ(shown(), (Names{"H21", "D21", "D12", "Öppen 1"}));
  EXPECT_EQ(inFile(), (Names{"Öppen 1", "H21", "D12", "D21"}));
  EXPECT_EQ(event_.categoryFileIndex(2), 2);
  EXPECT_EQ(event_.categoryFileIndex(3), 0);
  EXPECT_EQ(event_.category(3)->name(), "Öppen 1");
  EXPECT_EQ(event_.category(3)->runner(0).categoryIndex(), 3);

  LRKCategory late = categoryNamed("D10");
  ASSERT_EQ(event_.addCategory(late), 0);
  EXPECT_EQ(late.categoryIndex(), 4);
  EXPECT_EQ(event_.categoryFileIndex(4), 4);

  event_.categorySortFlags(ecsfUnsorted);
  ASSERT_EQ(event_.openEvent(path_), 0);
  EXPECT_EQ(shown(), inFile());
}

TEST_F(EventCategories, TheLastOneHandedOutIsKept) {
  add({"A", "B"});
  const std::shared_ptr<LRKCategory> a = event_.category(0);
  EXPECT_EQ(event_.category(0), a);
  a->name("changed in the copy only");
  EXPECT_EQ(event_.category(1)->name(), "B");
  EXPECT_NE(event_.category(0), a);
  EXPECT_EQ(event_.category(0)->name(), "A");

  const std::shared_ptr<LRKCategory> kept = event_.category(0);
  kept->name("C");
  ASSERT_EQ(event_.category(0, kept), 0);
  EXPECT_EQ(event_.category(0), kept);
  LRKCategory other = categoryNamed("D");
  ASSERT_EQ(event_.category(0, other), 0);
  EXPECT_EQ(event_.category(0)->name(), "D");
  event_.unsetCurrentCategory();
  EXPECT_EQ(event_.categoryName(0), "D");
}

TEST_F(EventCategories, MoveInTheListAlone) {
  add({"0", "1", "2", "3", "4", "5"});
  event_.moveCategory(5, 1);
  EXPECT_EQ(shown(), (Names{"0", "5", "1", "2", "3", "4"}));
  EXPECT_EQ(inFile(), (Names{"0", "1", "2", "3", "4", "5"}));
  event_.moveCategory(0, 0);
  event_.moveCategory(0, 6);
  event_.moveCategory(-1, 2);
  EXPECT_EQ(shown(), (Names{"0", "5", "1", "2", "3", "4"}));
  event_.moveCategory(1, 5);
  EXPECT_EQ(shown(), inFile());
}

TEST_F(EventCategories, MoveInTheFileWhenUnsorted) {
  add({"0", "1", "2", "3"});
  event_.categorySortFlags(ecsfUnsorted);
  event_.moveCategory(3, 1);
  EXPECT_EQ(shown(), (Names{"0", "3", "1", "2"}));
  EXPECT_EQ(inFile(), shown());
  ASSERT_EQ(event_.saveEvent(), 0);

  // The table is in the new order, the bytes are where they were.
  const SavedFile moved(bytesOf(path_), 4, 0);
  EXPECT_EQ(moved.categories[0].position, 0);
  EXPECT_EQ(moved.categories[2].position, moved.categories[0].length);
  EXPECT_EQ(moved.categories[1].position + moved.categories[1].length,
            static_cast<std::int32_t>(moved.data.size()));

  ASSERT_EQ(event_.openEvent(path_), 0);
  EXPECT_EQ(shown(), (Names{"0", "3", "1", "2"}));
  ASSERT_EQ(event_.saveEvent(), 0);
  EXPECT_EQ(SavedFile(bytesOf(path_), 4, 0).data, moved.data);

  // Storing any of them writes all in the order of the table.
  ASSERT_EQ(event_.category(0, event_.category(0)), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  const SavedFile stored(bytesOf(path_), 4, 0);
  EXPECT_EQ(stored.categories[1].position, stored.categories[0].length);
}

TEST_F(EventCategories, Delete) {
  add({"Öppen 1", "H21", "D12", "D21"});
  saveAndReopen();
  ASSERT_EQ(event_.category(1)->name(), "D21");
  ASSERT_EQ(event_.deleteCategory(3), 0);  // the first in the file
  EXPECT_EQ(shown(), (Names{"H21", "D21", "D12"}));
  EXPECT_EQ(inFile(), (Names{"H21", "D12", "D21"}));
  EXPECT_EQ(event_.category(1)->name(), "D21");
  EXPECT_EQ(event_.deleteCategory(3), 0);
  EXPECT_EQ(event_.noOfCategories(), 3);
  while (event_.noOfCategories() > 0) ASSERT_EQ(event_.deleteCategory(0), 0);
  saveAndReopen();
  EXPECT_EQ(event_.noOfCategories(), 0);
}

TEST_F(EventCategories, ReplaceByNameWhateverItsCase) {
  add({"H21", "öppen 1", "Öppen 1"});
  LRKCategory category = categoryNamed("ÖPPEN 1", 5);
  EXPECT_TRUE(event_.replaceCategoryByName(category));
  EXPECT_EQ(shown(), (Names{"H21", "ÖPPEN 1", "Öppen 1"}));
  EXPECT_EQ(event_.category(1)->noOfRunners(), 5);
  LRKCategory other = categoryNamed("Öppen 2");
  EXPECT_FALSE(event_.replaceCategoryByName(other));
  EXPECT_EQ(shown(), (Names{"H21", "ÖPPEN 1", "Öppen 1", "Öppen 2"}));
}

TEST_F(EventCategories, UpdateForkingInfoStoresAllAndSaves) {
  add({"A", "B"});
  ASSERT_EQ(event_.saveEvent(), 0);
  std::string file = bytesOf(path_);
  const std::string wrong = hex("4E FF 4F 0300 50 0300");
  for (std::size_t at; (at = file.find(wrong)) != std::string::npos;) file[at + 1] = 0;
  writeBytes(path_, file);

  ASSERT_EQ(event_.openEvent(path_), 0);
  EXPECT_FALSE(event_.category(1)->allRunnersHaveTheSameForking());
  ASSERT_EQ(event_.updateForkingInfo(), 0);
  EXPECT_TRUE(event_.category(1)->allRunnersHaveTheSameForking());
  LRKEvent read;
  read.tempFilePath(folder_.file(""));
  ASSERT_EQ(read.openEvent(path_), 0);
  EXPECT_TRUE(read.category(0)->allRunnersHaveTheSameForking());
  EXPECT_TRUE(read.category(1)->allRunnersHaveTheSameForking());
}

TEST_F(EventCategories, ThePositionTableHasItsLimit) {
  LRKCategory category = categoryNamed("A", 0);
  for (int i = 0; i < 4095; ++i) ASSERT_EQ(event_.addCategory(category), 0);
  EXPECT_EQ(event_.addCategory(category), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.noOfCategories(), 4095);
  saveAndReopen();
  EXPECT_EQ(event_.noOfCategories(), 4095);
}

TEST_F(EventCategories, ClosedEventHasNone) {
  add({"A"});
  ASSERT_EQ(event_.saveEvent(), 0);
  EXPECT_EQ(event_.closeEvent(), 0);
  EXPECT_EQ(event_.closeEvent(), 0);
  LRKCategory category = categoryNamed("B");
  EXPECT_EQ(event_.noOfCategories(), 0);
  EXPECT_EQ(event_.category(0), nullptr);
  EXPECT_EQ(event_.categoryName(0), "");
  EXPECT_EQ(event_.addCategory(category), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.category(0, category), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.deleteCategory(0), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.updateForkingInfo(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.saveEvent(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(event_.replaceCategoryByName(category));
  EXPECT_FALSE(event_.openTempFile());
  event_.closeTempFile();
  event_.moveCategory(0, 0);
  EXPECT_EQ(event_.openEvent(path_), 0);
  EXPECT_EQ(shown(), (Names{"A"}));
}

}  // namespace
}  // namespace larkstone
