// Derived courses: their record, their place in the event and its file, and that they keep to their
// runners whatever happens to the categories.

#include <algorithm>
#include <random>
#include <tuple>

#include "larkstone/analysis/course.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

const std::string handMade =
    hex("60 0100 C5  61 02  62 01  63 00  64 0200 E07F1F00 1F002000  65 0100 2100") +
    hex("67 0200 01000200 FFFF0000");

LRKDerivedCourse courseNamed(const std::string& name) {
  LRKDerivedCourse course;
  course.name(name);
  course.requiredLegs(erqlAtLeastOne);
  course.allowRearrangement(true);
  course.legs().add(LRK_START_CODE, 31, 0, 0);
  course.legs().add(31, 32, 0, 0);
  return course;
}

TEST(DerivedCourseRecord, EveryByte) {
  LRKDerivedCourse course = courseNamed("Å");
  course.codesEqualToStart().add(33);
  course.addRunner(1, 2);
  course.addRunner(-1, 0);
  EXPECT_EQ(encodeDerivedCourse(course), handMade);
  EXPECT_EQ(encodeDerivedCourse(decodeDerivedCourse(handMade)), handMade);
}

TEST(DerivedCourseRecord, ForeignTagsAndWrongCounts) {
  // Behind it: the codes equal to the finish, and the runners.
  const std::tuple<std::string, int, int> rows[] = {
      {hex("C8 0200 6767"), 1, 1},      // a tag of the future holds a text
      {hex("62 FF  63 02"), 1, 1},      // any byte but 0 is true
      {hex("C8 FFFF"), 0, 0},           // a text of -1
      {hex("65 FFFF"), 0, 0},           // -1 codes
      {hex("64 FF7F 0100"), 0, 0},      // 32767 legs
      {hex("67 0500 01000200"), 0, 0},  // 5 runners, 4 in all that follows
  };
  for (const auto& [damage, codes, runners] : rows) {
    const LRKDerivedCourse read =
        decodeDerivedCourse(hex("60 0100 41") + damage + hex("66 0100 2200  67 0100 00000300"));
    EXPECT_EQ(read.name(), "A");
    EXPECT_EQ(read.codesEqualToFinish().count(), codes) << testing::PrintToString(damage);
    EXPECT_EQ(read.noOfRunners(), runners) << testing::PrintToString(damage);
  }
}

// An event with derived courses of the legs S-31-32, and classes whose runners all ran them.
class DerivedCourses : public EventTest {
 protected:
  using Names = std::vector<std::string>;

  DerivedCourses() { EXPECT_EQ(event_.createNewEvent(path_), 0); }

  // "Class 3" has the runners "3.0", "3.1" ...
  void addClass(int number, int runners) {
    LRKCategory category = categoryNamed("Class " + std::to_string(number), runners);
    for (int i = 0; i < runners; ++i) {
      category.runner(i).name(std::to_string(number) + '.' + std::to_string(i));
    }
    ASSERT_EQ(event_.addCategory(category), 0);
  }
  static Names namesIn(const LRKCourse& course) {
    Names names;
    for (int i = 0; i < course.noOfRunners(); ++i) names.push_back(course.runner(i).name());
    return names;
  }
};

TEST_F(DerivedCourses, IndicesAndHowManyThereMayBe) {
  EXPECT_FALSE(event_.derivedCourse(2));
  EXPECT_FALSE(event_.derivedCourseAsCourse(-1));

  // An empty record stays in front of the one that begins where it does.
  const std::string c = encodeDerivedCourse(courseNamed("C"));
  ASSERT_EQ(openBytes(eventFile({}, {c, ""})), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  EXPECT_TRUE(bytesOf(path_).ends_with(tablesAndData({}, {c, ""}, c)));

  ASSERT_EQ(openBytes(eventFile(Records(4094, hex("43 0100 41")))), 0);
  EXPECT_EQ(event_.addDerivedCourse(courseNamed("last")), 0);
  EXPECT_EQ(event_.addDerivedCourse(courseNamed("more")), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(event_.noOfDerivedCourses(), 1);
}

TEST_F(DerivedCourses, BecomeCoursesWithTheRunnersTheyName) {
  addClass(0, 1);
  addClass(1, 3);
  LRKDerivedCourse derived = courseNamed("Both");
  for (const auto& [category, runner] : std::vector<std::pair<int, int>>{
           {1, 2}, {0, 0}, {1, 2}, {0, 1}, {2, 0}, {-1, 0}, {1, 1}, {1, -1}}) {
    derived.addRunner(category, runner);
  }
  const LRKCourse course = event_.convertDerivedCourseToCourse(derived);
  EXPECT_EQ(namesIn(course), (Names{"1.2", "0.0", "1.1"}));
  EXPECT_EQ(course.runner(0).categoryName(), "Class 1");
  EXPECT_EQ(course.runnerAdditionStyleRequiredLegs(), erqlAtLeastOne);
  EXPECT_TRUE(course.runnerAdditionStyleAllowRearrangement());
}

// A class is stored with other runners: "2Ann" is the third one of before under that name, "+Bo" a
// new one. Whom the references to those of before name then, -1 for nobody.
TEST_F(DerivedCourses, FollowRunnersOfAChangedClass) {
  const std::tuple<Names, bool, Names, std::vector<int>> rows[] = {
      // Corrected names.
      {{"Ann", "Bo"}, true, {"0Anna", "1Bo"}, {0, 1}},
      {{"Ann", "Bo", "Cid"}, true, {"1Bo", "2Zid", "0Anna"}, {2, 0, 1}},
      {{"Ann", "Bo"}, true, {"1Bob", "+Anna"}, {-1, 0}},
      // The name counts before the number.
      {{"Ann", "Bo"}, true, {"0Bo", "1Ann"}, {1, 0}},
      // Twins, in either order.
      {{"Eva", "EVA"}, true, {"0Eva", "1Eva", "+Eva"}, {0, 1}},
      {{"Eva", "Eva"}, true, {"1Eva", "0Eva"}, {1, 0}},
      {{"Eva", "Eva", "Eva"}, true, {"0Eva", "2Eva"}, {0, -1, 1}},
      // A class from elsewhere: its numbers say nothing.
      {{"Eva", "Ann", "Eva"}, false, {"+Eva", "+Bo", "+eva"}, {0, -1, 2}},
      // Names count as the file holds them.
      {{"Eva", "Łukasz Ősz"}, false, {"+Łukasz Ősz", "+Eva"}, {1, 0}},
  };
  for (const auto& [before, handedOut, now, expected] : rows) {
    ASSERT_EQ(event_.createNewEvent(path_, true), 0);
    ASSERT_EQ(event_.addCategory(categoryNamed("first")), 0);
    LRKCategory category;
    for (const std::string& name : before) {
      category.addRunner(runnerOn({31, 32}));
      category.runner(category.noOfRunners() - 1).name(name);
    }
    ASSERT_EQ(event_.addCategory(category), 0);
    LRKCategory changed = handedOut ? *event_.category(1) : LRKCategory();
    const LRKCategory old = *event_.category(1);
    for (const std::string& name : now) {
      const int from = name[0] == '+' ? -1 : name[0] - '0';
      changed.addRunner(from < 0 ? runnerOn({31}) : LRKRunner());
      const int last = changed.noOfRunners() - 1;
      if (from >= 0) changed.runner(last, old.runner(from));
      changed.runner(last).name(name.substr(1));
    }
    for (std::size_t i = 0; handedOut && i < before.size(); ++i) changed.deleteRunner(0);
    LRKDerivedCourse course = courseNamed("");
    std::vector<int> after;
    for (std::size_t i = 0; i < before.size(); ++i) {
      course.noOfRunners(0);
      course.addRunner(1, static_cast<int>(i));
      ASSERT_EQ(event_.addDerivedCourse(course), 0);
    }
    ASSERT_EQ(event_.category(1, changed), 0);
    for (int i = 0; i < event_.noOfDerivedCourses(); ++i) {
      course = *event_.derivedCourse(i);
      after.push_back(course.noOfRunners() == 0 ? -1 : course.runnerIndex(0));
    }
    EXPECT_EQ(after, expected) << testing::PrintToString(now);
  }
}

// Long series of changes: the course names the same runners, but for those who are gone.
class RunnersFollowed : public DerivedCourses {
 protected:
  RunnersFollowed() { EXPECT_EQ(event_.addDerivedCourse(courseNamed("")), 0); }

  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
  void refer(const LRKRunner& runner) {
    if (std::count(named_.begin(), named_.end(), runner.name()) > 0) return;
    named_.push_back(runner.name());
    LRKDerivedCourse course = *event_.derivedCourse(0);
    course.addRunner(runner.categoryIndex(), runner.runnerIndex());
    ASSERT_EQ(event_.derivedCourse(0, course), 0);
  }
  void forget(const std::string& begin) {
    std::erase_if(named_, [&](const std::string& name) { return name.starts_with(begin); });
  }
  // A runner goes or gets a new name, or two change places; one is referred to under the number
  // that storing gave.
  void store(int index) {
    const std::shared_ptr<LRKCategory> category = event_.category(index);
    const int last = category->noOfRunners() - 1;
    if (upTo(2) == 0) {
      LRKRunner& runner = category->runner(upTo(last));
      const std::string before = runner.name();
      runner.name(before + "'");
      std::replace(named_.begin(), named_.end(), before, runner.name());
    } else if (last > 0 && upTo(2) == 0) {
      forget(category->runner(last / 2).name());
      category->deleteRunner(last / 2);
    } else {
      category->moveRunner(upTo(last), upTo(last));
    }
    ASSERT_EQ(event_.category(index, category), 0);
    refer(category->runner(category->noOfRunners() - 1));
  }
  void change() {
    const int last = event_.noOfCategories() - 1;
    const int index = upTo(std::max(last, 0));
    const int kind = upTo(6);
    if (last < 2 || kind == 0) {
      addClass(++added_, 6);
    } else if (kind == 1) {
      forget(event_.categoryName(index).substr(6) + '.');
      ASSERT_EQ(event_.deleteCategory(index), 0);
    } else if (kind == 2) {
      ASSERT_EQ(event_.saveEvent(), 0);
      ASSERT_EQ(event_.openEvent(path_), 0);
    } else if (kind == 3) {
      event_.categorySortFlags(upTo(1) == 0 ? ecsfUnsorted : ecsfSorted);
      event_.moveCategory(index, upTo(last));
    } else {
      store(index);
    }
  }

  std::mt19937 random_{1};
  int added_ = 0;
  Names named_;
};

TEST_F(RunnersFollowed, ThroughRandomChanges) {
  for (int step = 1; step <= 600 && !HasFailure(); ++step) {
    SCOPED_TRACE(step);
    change();
    EXPECT_EQ(event_.derivedCourse(0)->noOfRunners(), static_cast<int>(named_.size()));
    EXPECT_EQ(namesIn(*event_.derivedCourseAsCourse(0)), named_);
  }
}

}  // namespace
}  // namespace larkstone::test
