// Events on one file and with one folder for working files, in one program and in several.

#include <random>

#include "support.hpp"

namespace larkstone::test {
namespace {

// An event whose three categories all say which save wrote them.
class SharedFolder : public EventTest {
 protected:
  SharedFolder() {
    EXPECT_EQ(event_.createNewEvent(path_), 0);
    for (const char* const name : {"A", "B", "C"}) {
      EXPECT_EQ(event_.addCategory(categoryNamed(name, 50)), 0);
    }
    EXPECT_EQ(mark(event_, 0), 0);
  }

  static std::int32_t mark(LRKEvent& event, int number) {
    std::int32_t failed = 0;
    for (int i = 0; i < 3; ++i) {
      LRKCategory category = *event.category(i);
      category.extraInfo(std::string(static_cast<std::size_t>(number % 100), 'x') + '#' +
                         std::to_string(number));
      failed |= event.category(i, category);
    }
    return failed | event.saveEvent();
  }
  // The number that all three categories of the file have.
  int markOfFile() {
    LRKEvent event;
    event.tempFilePath(work_);
    if (event.openEvent(path_) != 0 || event.noOfCategories() != 3) return -1;
    const std::string mark = event.category(0)->extraInfo();
    for (int i = 0; i < 3; ++i) {
      const auto category = event.category(i);
      if (category->extraInfo() != mark || category->noOfRunners() != 50) return -1;
    }
    return std::stoi(mark.substr(mark.find('#') + 1));
  }
};

TEST_F(SharedFolder, TheLastOfTwoEventsWins) {
  LRKEvent other;
  other.tempFilePath(work_);
  ASSERT_EQ(other.openEvent(path_), 0);
  std::mt19937 random(1);
  for (int i = 1; i <= 200; ++i) {
    ASSERT_EQ(mark(random() % 2 == 0 ? event_ : other, i), 0);
    ASSERT_EQ(markOfFile(), i);
    ASSERT_EQ(filesIn(work_).size(), 2U);
  }
}

TEST_F(SharedFolder, ProgramsThatSaveAndOneThatReads) {
  pid_t writers[3];
  for (pid_t& writer : writers) {
    writer = ::fork();
    if (writer != 0) continue;
    LRKEvent own;
    own.tempFilePath(work_);
    bool good = own.openEvent(path_) == 0;
    for (int i = 1; good && i <= 300; ++i) good = mark(own, i) == 0;
    own.closeEvent();
    ::_exit(good ? 0 : 1);
  }
  for (const pid_t writer : writers) {
    int status = 0;
    while (::waitpid(writer, &status, WNOHANG) == 0) EXPECT_GE(markOfFile(), 0);
    EXPECT_EQ(status, 0) << "a save failed";
  }
  EXPECT_EQ(markOfFile(), 300);
  EXPECT_EQ(filesIn(folder_).size(), 2U);
  EXPECT_EQ(filesIn(work_).size(), 1U);
}

}  // namespace
}  // namespace larkstone::test
