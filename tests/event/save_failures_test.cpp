// Nothing is lost when saving or storing fails: the old file stays whole, no draft is left, and the
// event goes on.

#include <csignal>
#include <tuple>

#include <sys/resource.h>
#include <sys/stat.h>

#include "support.hpp"

namespace larkstone::test {
namespace {

namespace fs = std::filesystem;

// A saved event with A, and B that is not saved yet.
class Disk : public EventTest {
 protected:
  Disk() {
    EXPECT_EQ(event_.createNewEvent(path_), 0);
    EXPECT_EQ(event_.addCategory(categoryNamed("A")), 0);
    EXPECT_EQ(event_.saveEvent(), 0);
    whole_ = bytesOf(path_);
    EXPECT_EQ(event_.addCategory(categoryNamed("B", 2)), 0);
    other_.categorySortFlags(ecsfUnsorted);
  }

  // The file is the old one, or the new one with both categories.
  void expectWhole(bool saved) {
    if (saved) {
      ASSERT_EQ(other_.openEvent(path_), 0);
      expectSame(event_, other_);
      other_.closeEvent();
    } else {
      ASSERT_EQ(bytesOf(path_), whole_);
    }
  }

  std::string whole_;
};

// What the work returns while no file may grow beyond a size: a disk that is full at any byte.
template <class Work>
std::int32_t limited(rlim_t bytes, Work&& work) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  const rlimit limit{bytes, RLIM_INFINITY};
  ::prlimit(0, RLIMIT_FSIZE, &limit, &before);
  const std::int32_t code = work();
  ::setrlimit(RLIMIT_FSIZE, &before);
  return code;
}

TEST_F(Disk, ASaveThatStopsAtAnyByte) {
  ASSERT_EQ(event_.saveEvent(folder_ + "/elsewhere.lrk4"), 0);
  const auto size = static_cast<rlim_t>(event_.fileSize());
  for (rlim_t limit = 0; limit <= size; ++limit) {
    const std::int32_t code = limited(limit, [this] { return event_.saveEvent(); });
    ASSERT_EQ(code, limit < size ? LRK_COULD_NOT_OPEN_FILE : 0) << limit;
    expectWhole(code == 0);
    ASSERT_EQ(filesIn(folder_).size(), 3U) << "a draft was left";
  }
  // Nor is there room for the working file of another.
  const auto open = [this] { return other_.openEvent(path_); };
  EXPECT_EQ(limited(10, open), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
}

// B loses a runner, and the derived course follows the other one: both are stored or neither.
TEST_F(Disk, AChangeThatStopsAtAnyByte) {
  event_.category(1)->runner(0).name("Ida");
  ASSERT_EQ(event_.category(1, event_.category(1)), 0);
  LRKDerivedCourse course;
  course.addRunner(1, 1);
  ASSERT_EQ(event_.addDerivedCourse(course), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  other_.tempFilePath(folder_);
  ASSERT_EQ(other_.openEvent(path_), 0);
  LRKCategory changed = *other_.category(1);
  changed.deleteRunner(0);
  const fs::path working = workingFiles()[0];
  const auto size = fs::file_size(working);
  const auto change = [&] { return event_.category(1, changed); };
  EXPECT_EQ(limited(size, [&] { return event_.replaceCategoryByName(changed) ? 1 : 0; }), 0);
  for (rlim_t more = 0; limited(size + more, change) != 0; ++more) {
    ASSERT_EQ(fs::file_size(working), size) << "the disk stays filled";
    expectSame(event_, other_);
  }
  EXPECT_EQ(event_.category(1)->noOfRunners(), 1);
  EXPECT_EQ(event_.derivedCourse(0)->runnerIndex(0), 0);
}

// As somebody who owns neither the folder nor the file in it.
TEST_F(Disk, WhereTheUserMayNotWrite) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become somebody else";
  const std::tuple<unsigned, unsigned, std::int32_t> rows[] = {
      {0755, 0666, LRK_FILE_READONLY},         // the folder
      {0777, 0644, LRK_FILE_READONLY},         // the file
      {01777, 0666, LRK_COULD_NOT_OPEN_FILE},  // may be written but not replaced
      {0777, 0666, 0},
  };
  for (const auto& [ofFolder, ofFile, expected] : rows) {
    fs::permissions(folder_, fs::perms{ofFolder});
    fs::permissions(path_, fs::perms{ofFile});
    const int code = inChild([this] { return ::setuid(65534) != 0 ? -1 : event_.saveEvent(); });
    EXPECT_EQ(code, expected) << std::oct << ofFolder << ' ' << ofFile;
    expectWhole(expected == 0);
    EXPECT_EQ(filesIn(folder_).size(), 2U);
  }
}

TEST_F(Disk, PlacesWhereNoFileCanBe) {
  const std::string missing = folder_ + "/missing/event.lrk4";
  const std::string pipe = work_ + "pipe";  // to which nobody writes
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  fs::permissions(path_, fs::perms::owner_read);
  // What saving there gives, and opening.
  const std::tuple<std::string, std::int32_t, std::int32_t> rows[] = {
      {path_, LRK_FILE_READONLY, LRK_FILE_READONLY},
      {missing, LRK_COULD_NOT_OPEN_FILE, LRK_FILE_DOES_NOT_EXIST},
      {folder_, LRK_COULD_NOT_OPEN_FILE, LRK_COULD_NOT_OPEN_FILE},
      {"/dev/full", LRK_COULD_NOT_OPEN_FILE, LRK_COULD_NOT_OPEN_FILE},
      {"/dev/null", 0, LRK_COULD_NOT_OPEN_FILE},
      {folder_ + "/elsewhere.lrk4", 0, 0},
  };
  for (const auto& [path, saved, opened] : rows) {
    EXPECT_EQ(event_.saveEvent(path), saved) << path;
    EXPECT_EQ(other_.openEvent(path), opened) << path;
  }
  EXPECT_EQ(other_.openEvent(pipe), LRK_COULD_NOT_OPEN_FILE);
  expectWhole(false);
  EXPECT_EQ(filesIn(folder_).size(), 3U);
  EXPECT_EQ(event_.createNewEvent(path_), LRK_FILE_ALREADY_EXISTS);
  other_.tempFilePath(folder_ + "/missing");
  EXPECT_EQ(other_.createNewEvent(missing), LRK_COULD_NOT_CREATE_FILE);
  const std::string empty = folder_ + "/empty.lrk4";
  std::ofstream(empty, std::ios::binary) << eventFile({});
  EXPECT_EQ(other_.openEvent(empty), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(other_.isOpen());
}

// Nobody finds a working file, not even when the program is killed.
TEST_F(Disk, WorkingFilesArePrivateAndGoAway) {
  EXPECT_TRUE(filesIn(work_).empty());
  ASSERT_EQ(workingFiles().size(), 1U);
  const fs::path file = workingFiles()[0];
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::resize_file(file, 10);
  EXPECT_EQ(event_.category(0), nullptr);
  EXPECT_EQ(event_.saveEvent(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  expectWhole(false);
  EXPECT_EQ(event_.closeEvent(), 0);
  EXPECT_TRUE(workingFiles().empty());
  EXPECT_EQ(event_.addCategory(categoryNamed("C")), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
}

// Bytes that are no longer used are cleared out of the working file now and then, or stay when the
// folder is gone.
TEST_F(Disk, StoringOverAndOverDoesNotFillTheDisk) {
  const auto megabyte = std::make_shared<LRKCategory>(categoryNamed("A", 30000));
  for (int i = 0; i < 30; ++i) {
    if (i == 20) fs::remove_all(work_);
    megabyte->extraInfo(std::to_string(i));
    ASSERT_EQ(event_.category(0, megabyte), 0);
    EXPECT_TRUE(i >= 20 || fs::file_size(workingFiles()[0]) < 10'000'000);
  }
  EXPECT_EQ(event_.saveEvent(), 0);
  other_.tempFilePath(folder_);
  expectWhole(true);
  EXPECT_EQ(event_.closeEvent(), 0);
}

}  // namespace
}  // namespace larkstone::test
