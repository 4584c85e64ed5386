// Long series of random changes against lists kept in memory. The event begins as a file with
// derived courses, whose bytes are carried along untouched.

#include <algorithm>
#include <random>

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;

struct Known {
  std::string name;
  int id;
  int runners;
};

class Model {
 public:
  explicit Model(unsigned seed) : random_(seed) {
    writeBytes(path_, eventFile({}, courses_));
    event_.tempFilePath(folder_.file(""));
    EXPECT_EQ(event_.openEvent(path_), 0);
  }

  void change() {
    const bool sorted = upTo(1) == 0;
    event_.categorySortFlags(sorted ? ecsfSorted : ecsfUnsorted);
    const int count = static_cast<int>(shown_.size());
    switch (upTo(6)) {
      case 0:
        remove(upTo(count));
        break;
      case 1:
        move(upTo(count), upTo(count), sorted);
        break;
      case 2:
      case 3:
        store(upTo(count));
        break;
      case 4:
        replace();
        break;
      default:
        add(fresh());
    }
  }

  void compare() {
    ASSERT_EQ(event_.noOfCategories(), static_cast<int>(shown_.size()));
    for (std::size_t i = 0; i < shown_.size(); ++i) {
      const auto index = static_cast<int>(i);
      ASSERT_EQ(event_.categoryName(index), known(shown_[i]).name);
      ASSERT_EQ(event_.categoryDisplayIndex(event_.categoryFileIndex(index)), index);
      const std::shared_ptr<LRKCategory> category = event_.category(index);
      ASSERT_EQ(category->ID(), shown_[i]);
      ASSERT_EQ(category->noOfRunners(), known(shown_[i]).runners);
    }
  }

  // Saves, and reads what was written without an event.
  void compareFile() {
    ASSERT_EQ(event_.saveEvent(), 0);
    const SavedFile saved(bytesOf(path_), inFile_.size(), courses_.size());
    std::int32_t position = 0;
    for (const int id : bytes_) {
      const auto fileIndex = std::find(inFile_.begin(), inFile_.end(), id) - inFile_.begin();
      const SavedFile::Place place = saved.categories[static_cast<std::size_t>(fileIndex)];
      ASSERT_EQ(place.position, position);
      const LRKCategory category = decodeCategory(saved.record(place), 0);
      ASSERT_EQ(category.ID(), id);
      ASSERT_EQ(category.name(), known(id).name);
      ASSERT_EQ(category.noOfRunners(), known(id).runners);
      position += place.length;
    }
    for (std::size_t k = 0; k < courses_.size(); ++k) {
      ASSERT_EQ(saved.derivedCourses[k].position, position);
      ASSERT_EQ(saved.record(saved.derivedCourses[k]), courses_[k]);
      position += saved.derivedCourses[k].length;
    }
    ASSERT_EQ(saved.data.size(), static_cast<std::size_t>(position));
  }

  void reopen() {
    event_.categorySortFlags(ecsfUnsorted);
    ASSERT_EQ(event_.openEvent(path_), 0);
    shown_ = inFile_;
    EXPECT_EQ(event_.derivedCourseName(0), "first");
    EXPECT_EQ(event_.derivedCourseName(1), "second");
    EXPECT_EQ(event_.extractDerivedCourseTag(1, etagDerivedCourseNoOfLegs), TagValue(1));
  }

 private:
  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
  Known& known(int id) { return known_[static_cast<std::size_t>(id)]; }

  Known fresh() {
    const auto id = static_cast<int>(known_.size());
    return {"Class " + std::to_string(id), id, upTo(4)};
  }
  LRKCategory built(const Known& as) {
    LRKCategory category = categoryNamed(as.name, as.runners);
    category.ID(as.id);
    category.extraInfo(std::string(static_cast<std::size_t>(upTo(50)), 'x'));
    return category;
  }
  bool exists(int index) const { return index < static_cast<int>(shown_.size()); }

  void add(const Known& added) {
    LRKCategory category = built(added);
    EXPECT_EQ(event_.addCategory(category), 0);
    known_.push_back(added);
    for (std::vector<int>* list : {&shown_, &inFile_, &bytes_}) list->push_back(added.id);
  }
  void store(int index) {
    LRKCategory category;
    Known changed{};
    if (exists(index)) {
      changed = known(shown_[static_cast<std::size_t>(index)]);
      changed.name += "'";
      changed.runners = upTo(4);
    }
    category = built(changed);
    EXPECT_EQ(event_.category(index, category), 0);
    if (!exists(index)) return;
    known(changed.id) = changed;
    bytes_ = inFile_;
  }
  void replace() {
    Known changed = fresh();
    if (upTo(2) == 0 || shown_.empty()) {
      LRKCategory category = built(changed);
      EXPECT_FALSE(event_.replaceCategoryByName(category));
      known_.push_back(changed);
      for (std::vector<int>* list : {&shown_, &inFile_, &bytes_}) list->push_back(changed.id);
      return;
    }
    changed = known(shown_[static_cast<std::size_t>(upTo(static_cast<int>(shown_.size()) - 1))]);
    changed.name[0] = changed.name[0] == 'C' ? 'c' : 'C';
    LRKCategory category = built(changed);
    EXPECT_TRUE(event_.replaceCategoryByName(category));
    known(changed.id) = changed;
    bytes_ = inFile_;
  }
  void remove(int index) {
    EXPECT_EQ(event_.deleteCategory(index), 0);
    if (!exists(index)) return;
    const int id = shown_[static_cast<std::size_t>(index)];
    std::erase(shown_, id);
    std::erase(inFile_, id);
    bytes_ = inFile_;
  }
  void move(int from, int to, bool sorted) {
    event_.moveCategory(from, to);
    if (!exists(from) || !exists(to)) return;
    const int id = shown_[static_cast<std::size_t>(from)];
    const int displaced = shown_[static_cast<std::size_t>(to)];
    std::erase(shown_, id);
    shown_.insert(shown_.begin() + to, id);
    if (sorted || id == displaced) return;
    // In the file it comes to stand where the category was whose place it took.
    const auto place = std::find(inFile_.begin(), inFile_.end(), displaced) - inFile_.begin();
    std::erase(inFile_, id);
    inFile_.insert(inFile_.begin() + place, id);
  }

  const Folder folder_;
  const std::string path_ = folder_.file("event.lrk4");
  // The second has a tag of the future, which stays where it is.
  const std::vector<std::string> courses_ = {
      hex("60 0500 6669727374  61 00  62 01  63 00  64 0000  67 0100 0000 0100"),
      hex("60 0600 7365636F6E64  C8 0200 5858  64 0100 E07F1F00  67 0000")};
  std::mt19937 random_;
  LRKEvent event_;
  std::vector<Known> known_;  // by ID
  std::vector<int> shown_;    // IDs in display order
  std::vector<int> inFile_;   // in the order of the position table
  std::vector<int> bytes_;    // in the order of the data area
};

TEST(RandomChanges, AgreeWithListsInMemory) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Model model(seed);
    for (int step = 1; step <= 120 && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      model.change();
      model.compare();
      if (step % 10 == 0) model.compareFile();
      if (step % 40 == 0) model.reopen();
    }
  }
}

}  // namespace
}  // namespace larkstone
