// The categories of an open event: their order, handing out and storing.

#include <algorithm>
#include <random>
#include <tuple>

#include "support.hpp"

namespace larkstone::test {
namespace {

// One digit class group, one gender, three age, 0, one length group, three number in the suffix.
TEST(CategorySortKey, FollowsTheName) {
  constexpr auto byGender = ecsfSorted | ecsfYoungstersBeforeOldboys;
  constexpr auto all = byGender | ecsfTreatGendersAsEqual;
  const std::tuple<std::string, enmCategorySortFlags, std::string> rows[] = {
      {"H21", ecsfUnsorted, "00012_H21"},
      {"H21", all, "2000001000_00012_H21"},
      {"H21", ecsfSorted, "2197801000_00012_H21"},
      {"D21E", all, "1000002000_00012_D21E"},
      {"H21 Super 2", all, "0000003002_00012_H21 Super 2"},
      {"H21 Motion", all, "3000002000_00012_H21 Motion"},
      {"H16 N", all, "4000502000_00012_H16 N"},
      {"Inskolning", all, "5200001000_00012_Inskolning"},
      {"ÖPPEN 5 Lång", all, "7200500000_00012_ÖPPEN 5 Lång"},
      {"W40 K2", byGender, "2004003002_00012_W40 K2"},
      {"Course 12e", ecsfSorted, "9201202000_00012_Course 12e"},
      {"Bana Lång", all, "9200000000_00012_Bana Lång"},
      {"h 8 se", all, "0001303000_00012_h 8 se"},
      {"U12 e", all, "6201202000_00012_U12 e"},
      {"Dir 3 k1", all, "8000303001_00012_Dir 3 k1"},
      {"ö dir", ecsfSorted, "7200002000_00012_ö dir"},
      {"Mo35", ecsfSorted, "9296401000_00012_Mo35"},
      {"M 35 s", byGender, "2103503000_00012_M 35 s"},
      {"D22", byGender, "2002201000_00012_D22"},
      {"99999999999999999999", all, "9299901000_00012_99999999999999999999"},
  };
  for (const auto& [name, flags, key] : rows) {
    EXPECT_EQ(LRKEvent::createCategorySortKey(name, 12, flags), key);
  }
}

class EventCategories : public EventTest {
 protected:
  EventCategories() { EXPECT_EQ(event_.createNewEvent(path_), 0); }

  void addAndSave(const std::vector<std::string>& names) {
    for (const std::string& name : names) ASSERT_EQ(event_.addCategory(categoryNamed(name)), 0);
    ASSERT_EQ(event_.saveEvent(), 0);
  }
  void expectShown(const std::vector<std::string>& names) {
    ASSERT_EQ(event_.noOfCategories(), static_cast<int>(names.size()));
    int i = 0;
    for (const std::string& name : names) EXPECT_EQ(event_.category(i++)->name(), name);
  }
};

TEST_F(EventCategories, AreShownSortedOnceTheFileIsOpened) {
  addAndSave({"Öppen 1", "H21", "öppen 1", "D21"});
  ASSERT_EQ(event_.openEvent(path_), 0);
  expectShown({"H21", "D21", "Öppen 1", "öppen 1"});
  LRKCategory replacing = categoryNamed("ÖPPEN 1");
  EXPECT_TRUE(event_.replaceCategoryByName(replacing));
  EXPECT_EQ(replacing.categoryIndex(), 2);
  expectShown({"H21", "D21", "ÖPPEN 1", "öppen 1"});
}

TEST_F(EventCategories, TheLastOneHandedOutIsKept) {
  addAndSave({"A", "B"});
  const std::shared_ptr<LRKCategory> kept = event_.category(0);
  kept->name("C");
  expectShown({"C", "B"});
  expectShown({"A", "B"});
  ASSERT_EQ(event_.category(0, kept), 0);
  expectShown({"C", "B"});
}

// The object that was handed out goes to another place: it is that category then, and the one it
// came from is as it was.
TEST_F(EventCategories, AreCopiedByStoringTheOneHandedOut) {
  addAndSave({"A", "B", "C"});
  const std::shared_ptr<LRKCategory> copied = event_.category(0);
  ASSERT_EQ(event_.addCategory(event_.category(0)), 0);
  ASSERT_EQ(event_.category(2, event_.category(0)), 0);
  expectShown({"A", "B", "A", "A"});
  for (int i = 0; i < event_.noOfCategories(); ++i) {
    EXPECT_EQ(event_.category(i)->categoryIndex(), i);
    EXPECT_EQ(event_.category(i)->runner(0).categoryIndex(), i);
  }
  EXPECT_EQ(copied->categoryIndex(), 3);
  EXPECT_EQ(event_.addCategory(event_.category(99)), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.category(0, event_.category(99)), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
}

// The second category has runners of two courses, but its record says nothing of it.
TEST_F(EventCategories, UpdateForkingInfoStoresAllAndSaves) {
  LRKCategory forked = categoryNamed("B", 2);
  forked.runner(1) = runnerOn({31, 33, 34});
  ASSERT_EQ(openBytes(eventFile({encodeCategory(categoryNamed("A")), encodeCategory(forked)})), 0);
  const auto expectLegs = [this](int category, int least, int most, bool same) {
    const auto value = [&](enmFileTag tag) { return event_.extractCategoryTag(category, tag); };
    EXPECT_EQ(value(etagCategoryMinNoOfLegs), TagValue(least));
    EXPECT_EQ(value(etagCategoryMaxNoOfLegs), TagValue(most));
    EXPECT_EQ(value(etagCategoryAllRunnersHaveTheSameForking), TagValue(same));
  };
  expectLegs(1, 0, 0, true);
  ASSERT_EQ(event_.updateForkingInfo(), 0);
  ASSERT_EQ(event_.openEvent(path_), 0);
  expectLegs(0, 3, 3, true);
  expectLegs(1, 3, 4, false);
}

// Long series of random changes against lists kept in memory. The event begins as a file with
// derived courses.
using Known = std::shared_ptr<LRKCategory>;  // a category as it was last stored
using List = std::vector<Known>;

class RandomChanges : public EventTest {
 protected:
  RandomChanges() { EXPECT_EQ(openBytes(eventFile({}, coursesInData_)), 0); }

  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
  Known shown(int index) const {
    return index < static_cast<int>(shown_.size()) ? *(shown_.begin() + index) : nullptr;
  }
  static Records recordsOf(const List& list) {
    Records records;
    for (const Known& category : list) records.push_back(encodeCategory(*category));
    return records;
  }

  void change() {
    const bool sorted = upTo(1) == 0;
    event_.categorySortFlags(sorted ? ecsfSorted : ecsfUnsorted);
    if (upTo(1) == 0) event_.openTempFile();  // extractions are of what is stored nevertheless
    event_.category(0);                       // handed out and kept, unless the change concerns it
    const int index = upTo(event_.noOfCategories());
    const int kind = upTo(6);
    if (kind == 6) return changeCourses();
    if (kind == 0) return remove(index);
    if (kind == 1) return move(index, upTo(event_.noOfCategories()), sorted);
    return kind < 5 ? store(index) : add();
  }
  void add() {
    LRKCategory added = categoryNamed("Class " + std::to_string(++added_), upTo(3));
    EXPECT_FALSE(event_.replaceCategoryByName(added));
    const auto category = std::make_shared<LRKCategory>(added);
    for (List* list : {&shown_, &inFile_, &inData_}) list->push_back(category);
  }
  void store(int index) {
    const Known category = shown(index);
    LRKCategory changed = category ? *category : LRKCategory();
    changed.extraInfo(std::string(static_cast<std::size_t>(upTo(50)), 'x'));
    if (category && upTo(1) == 0) {
      changed.name((changed.name()[0] == 'C' ? 'c' : 'C') + changed.name().substr(1));
      EXPECT_TRUE(event_.replaceCategoryByName(changed));
    } else {
      changed.name(changed.name() + "'");
      EXPECT_EQ(event_.category(index, changed), 0);
    }
    if (!category) return;
    *category = changed;
    inData_ = inFile_;
  }
  void remove(int index) {
    const Known category = shown(index);
    EXPECT_EQ(event_.deleteCategory(index), 0);
    if (!category) return;
    std::erase(shown_, category);
    std::erase(inFile_, category);
    inData_ = inFile_;
  }
  void move(int from, int to, bool sorted) {
    const Known category = shown(from);
    event_.moveCategory(from, to);
    if (!category || !shown(to)) return;
    // In the file it comes to stand where the category was whose place it took.
    const auto place = std::find(inFile_.begin(), inFile_.end(), shown(to)) - inFile_.begin();
    std::erase(shown_, category);
    shown_.insert(shown_.begin() + to, category);
    if (sorted) return;
    std::erase(inFile_, category);
    inFile_.insert(inFile_.begin() + place, category);
  }
  // A course that is stored or moved in the table keeps its place in the data area.
  void changeCourses() {
    const int last = event_.noOfDerivedCourses() - 1;
    const int index = upTo(std::max(last, 0));
    const int to = upTo(std::max(last, 0));
    LRKDerivedCourse course;
    course.name(std::to_string(++added_) + std::string(static_cast<std::size_t>(upTo(50)), 'x'));
    const auto at = courses_.begin() + index;
    if (last < 1 || upTo(2) == 0) {
      EXPECT_EQ(event_.addDerivedCourse(course), 0);
      for (Records* list : {&courses_, &coursesInData_})
        list->push_back(encodeDerivedCourse(course));
    } else if (upTo(2) == 0) {
      EXPECT_EQ(event_.deleteDerivedCourse(index), 0);
      std::erase(coursesInData_, *at);
      courses_.erase(at);
    } else if (upTo(1) == 0) {
      EXPECT_EQ(event_.derivedCourse(index, course), 0);
      std::replace(coursesInData_.begin(), coursesInData_.end(), std::string(*at),
                   encodeDerivedCourse(course));
      *at = encodeDerivedCourse(course);
    } else {
      event_.moveDerivedCourse(index, to);
      const std::string moved = *at;
      courses_.erase(at);
      courses_.insert(courses_.begin() + to, moved);
    }
  }

  void compare() {
    ASSERT_EQ(event_.noOfCategories(), static_cast<int>(shown_.size()));
    for (int i = 0; i < event_.noOfCategories(); ++i) {
      ASSERT_EQ(event_.categoryName(i), shown(i)->name());
      ASSERT_EQ(event_.extractCategoryTag(i, etagCategoryNoOfRunners),
                TagValue(shown(i)->noOfRunners()));
      ASSERT_EQ(event_.categoryDisplayIndex(event_.categoryFileIndex(i)), i);
      ASSERT_EQ(encodeCategory(*event_.category(i)), encodeCategory(*shown(i)));
    }
  }
  void compareFile() {
    const std::string data = joined(recordsOf(inData_)) + joined(coursesInData_);
    EXPECT_TRUE(bytesOf(path_).ends_with(tablesAndData(recordsOf(inFile_), courses_, data)));
  }
  void reopen() {
    event_.categorySortFlags(ecsfUnsorted);
    move(0, 1, false);  // the records stand in another order than in the table
    EXPECT_EQ(event_.saveEvent(), 0);
    EXPECT_EQ(event_.openEvent(path_), 0);
    shown_ = inFile_;
    EXPECT_EQ(event_.saveEvent(), 0);
    compareFile();
    EXPECT_EQ(event_.updateForkingInfo(), 0);  // stores all and saves
    inData_ = inFile_;
    compareFile();
  }

  // The second has a tag of the future, which stays where it is.
  Records coursesInData_ = {hex("60 0500 6669727374  61 00  62 01  63 00  64 0000  67 0000"),
                            hex("60 0600 7365636F6E64  C8 0200 5858  64 0100 E07F1F00  67 0000")};
  Records courses_ = coursesInData_;  // in the order of their table
  std::mt19937 random_{1};
  int added_ = 0;
  List shown_;   // in display order
  List inFile_;  // in the order of the position table
  List inData_;  // in the order of the data area
};

TEST_F(RandomChanges, AgreeWithListsInMemory) {
  for (int step = 1; step <= 1200 && !HasFailure(); ++step) {
    SCOPED_TRACE(step);
    change();
    compare();
    if (step % 20 == 0) reopen();
  }
}

}  // namespace
}  // namespace larkstone::test
