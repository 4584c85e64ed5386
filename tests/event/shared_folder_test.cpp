// Events on one file and with one folder for working files, in one program and in several.

#include <csignal>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

#include "support.hpp"

namespace larkstone::test {
namespace {

// An event whose three categories all say which save wrote them.
class SharedFolder : public EventTest {
 protected:
  SharedFolder() {
    EXPECT_EQ(event_.createNewEvent(path_), 0);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(event_.addCategory(categoryNamed("A", 50)), 0);
    EXPECT_EQ(mark(event_, 0), 0);
  }

  static std::int32_t mark(LRKEvent& event, int number) {
    std::int32_t failed = 0;
    for (int i = 0; i < 3; ++i) {
      LRKCategory category = *event.category(i);
      category.extraInfo(std::to_string(number) +
                         std::string(static_cast<std::size_t>(number) % 100, 'x'));
      failed |= event.category(i, category);
    }
    return failed | event.saveEvent();
  }
  // The number that all three categories of the file have, or -1.
  int markOfFile() {
    LRKEvent event;
    event.tempFilePath(work_);
    if (event.openEvent(path_) != 0 || event.noOfCategories() != 3) return -1;
    const std::string mark = event.category(0)->extraInfo();
    for (int i = 0; i < 3; ++i) {
      if (event.category(i)->extraInfo() != mark || event.category(i)->noOfRunners() != 50)
        return -1;
    }
    return std::stoi(mark);
  }
  // Comes back when the writer has the event open and saves it.
  pid_t startWriter() {
    int ends[2] = {};
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
      LRKEvent own;
      own.tempFilePath(work_);
      std::int32_t failed = own.openEvent(path_);
      failed |= ::write(ends[1], "!", 1) == 1 ? 0 : 1;
      for (int i = 1; failed == 0; ++i) failed = mark(own, i);
      ::_exit(failed);
    }
    char sign = 0;
    EXPECT_EQ(::read(ends[0], &sign, 1), 1);
    ::close(ends[0]);
    ::close(ends[1]);
    return writer;
  }
};

// Two events here, and programs that save without end until they are killed in the middle of it.
// Whoever reads sees a whole file all the time, and what the killed leave behind does no harm.
TEST_F(SharedFolder, TheLastSaveWins) {
  ASSERT_EQ(other_.openEvent(path_), 0);
  std::mt19937 random(1);
  for (int round = 1; round <= 40; ++round) {
    const pid_t writers[] = {startWriter(), startWriter()};
    for (auto reads = 2 + random() % 10; reads > 0; --reads) EXPECT_GE(markOfFile(), 0);
    EXPECT_EQ(mark(random() % 2 == 0 ? event_ : other_, 0), 0);
    for (const pid_t writer : writers) {
      EXPECT_EQ(::kill(writer, SIGKILL), 0);
      int status = 0;
      EXPECT_EQ(::waitpid(writer, &status, 0), writer);
      EXPECT_TRUE(WIFSIGNALED(status)) << "a save failed";
      EXPECT_GE(markOfFile(), 0);
    }
    EXPECT_EQ(mark(random() % 2 == 0 ? event_ : other_, round), 0);
    EXPECT_EQ(markOfFile(), round);
  }
  EXPECT_TRUE(filesIn(work_).empty()) << "those who were killed left their working files";
}

}  // namespace
}  // namespace larkstone::test
