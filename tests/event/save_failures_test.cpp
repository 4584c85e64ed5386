// Nothing is lost when saving or storing fails: the old file stays whole, no draft is left, and the
// event goes on.

#include <csignal>
#include <random>
#include <tuple>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "larkstone/event/category_codec.hpp"

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
    other_.tempFilePath(work_);
    other_.categorySortFlags(ecsfUnsorted);
  }

  // The file is the old one, or the new one with both categories.
  void expectWhole(bool saved) {
    if (!saved) {
      ASSERT_TRUE(bytesOf(path_) == whole_);
      return;
    }
    ASSERT_EQ(other_.openEvent(path_), 0);
    for (const int i : {0, 1}) {
      EXPECT_TRUE(encodeCategory(*other_.category(i)) == encodeCategory(*event_.category(i)));
    }
    other_.closeEvent();
  }

  std::string whole_;
  LRKEvent other_;
};

// No file may grow beyond it: what a disk does that is full, at any byte.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
};

TEST_F(Disk, ASaveThatStopsAtAnyByte) {
  ASSERT_EQ(event_.saveEvent(folder_ + "/elsewhere.lrk4"), 0);
  const auto size = static_cast<rlim_t>(event_.fileSize());
  ASSERT_GT(size, 200U);
  for (rlim_t limit = 0; limit <= size; ++limit) {
    const auto save = [&] {
      const FileSizeLimit disk(limit);
      return event_.saveEvent();
    };
    ASSERT_EQ(save(), limit < size ? LRK_COULD_NOT_OPEN_FILE : 0) << limit;
    expectWhole(limit == size);
    ASSERT_EQ(filesIn(folder_).size(), 3U) << "a draft was left";
  }
}

// B loses a runner, and the derived course follows the other one: both are stored or neither.
TEST_F(Disk, AChangeThatStopsAtAnyByte) {
  LRKCategory changed = *event_.category(1);
  changed.runner(0).name("Ida");
  ASSERT_EQ(event_.category(1, changed), 0);
  LRKDerivedCourse course;
  course.addRunner(1, 1);
  ASSERT_EQ(event_.addDerivedCourse(course), 0);
  changed.deleteRunner(0);
  const fs::path working = filesIn(work_)[0];
  const auto size = fs::file_size(working);
  std::int32_t code = LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  for (rlim_t more = 0; code != 0; ++more) {
    ASSERT_EQ(code, LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
    ASSERT_EQ(fs::file_size(working), size) << "the disk stays filled";
    event_.unsetCurrentCategory();
    ASSERT_EQ(event_.category(1)->noOfRunners(), 2) << more;
    ASSERT_EQ(event_.derivedCourse(0)->runnerIndex(0), 1) << more;
    const FileSizeLimit disk(size + more);
    code = event_.category(1, changed);
  }
  EXPECT_GT(fs::file_size(working), size + 100);
  EXPECT_EQ(event_.category(1)->noOfRunners(), 1);
  EXPECT_EQ(event_.derivedCourse(0)->runnerIndex(0), 0);
}

// A disk of 64 pages, seen by this process alone.
TEST_F(Disk, AFullDisk) {
  const std::string disk = folder_ + "/disk/";
  fs::create_directory(disk);
  if (::unshare(CLONE_NEWNS) != 0 ||
      ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      ::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=256k") != 0) {
    GTEST_SKIP() << "nobody but root may mount";
  }
  const std::string filler = disk + "filler";
  const auto fill = [&filler] { std::ofstream(filler) << std::string(256 * 1024, 'x'); };
  path_ = disk + "event.lrk4";
  std::ofstream(path_, std::ios::binary) << whole_;
  fill();
  other_.tempFilePath(disk);
  EXPECT_EQ(other_.openEvent(path_), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  ASSERT_EQ(event_.category(0, std::make_shared<LRKCategory>(categoryNamed("A", 900))), 0);
  int failed = 0;
  while (event_.saveEvent(path_) != 0) {
    expectWhole(false);
    ASSERT_EQ(filesIn(disk).size(), 2U);
    ASSERT_LT(++failed, 64);
    fs::resize_file(filler, fs::file_size(filler) - 4096);
  }
  EXPECT_GT(failed, 4);
  fs::remove(filler);
  expectWhole(true);

  // The working file here, too: a change that is too large leaves room for saving.
  ASSERT_EQ(other_.openEvent(path_), 0);
  EXPECT_EQ(other_.addCategory(categoryNamed("C", 9000)), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(other_.saveEvent(), 0);
  whole_ = bytesOf(path_);
  fill();
  EXPECT_EQ(other_.addCategory(categoryNamed("C", 90)), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  LRKDerivedCourse course;
  course.noOfRunners(5000);
  EXPECT_EQ(other_.addDerivedCourse(course), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(other_.saveEvent(), LRK_COULD_NOT_OPEN_FILE);
  expectWhole(false);
  EXPECT_EQ(other_.saveEvent(folder_ + "/elsewhere.lrk4"), 0);
  EXPECT_EQ(other_.closeEvent(), 0);
  EXPECT_EQ(filesIn(disk).size(), 2U);
  EXPECT_EQ(::umount(disk.c_str()), 0);
  path_ = folder_ + "/elsewhere.lrk4";
  expectWhole(true);
}

// As somebody who owns neither the folder nor the file in it.
TEST_F(Disk, WhereTheUserMayNotWrite) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become somebody else";
  const std::tuple<unsigned, unsigned, std::int32_t> rows[] = {
      {0755, 0666, LRK_FILE_READONLY},         // the folder
      {0755, 0000, LRK_COULD_NOT_OPEN_FILE},   // and there is no file
      {0777, 0644, LRK_FILE_READONLY},         // the file
      {01777, 0666, LRK_COULD_NOT_OPEN_FILE},  // may be written but not replaced
      {0777, 0666, 0},
  };
  for (const auto& [ofFolder, ofFile, expected] : rows) {
    fs::permissions(folder_, fs::perms{ofFolder});
    fs::permissions(path_, fs::perms{ofFile});
    const std::string path = ofFile == 0 ? folder_ + "/new.lrk4" : path_;
    const int code = inChild([&] {
      if (::setgid(65534) != 0 || ::setuid(65534) != 0) return -1;
      const std::int32_t result = event_.saveEvent(path);
      return event_.category(1)->name() == "B" ? result : -1;
    });
    EXPECT_EQ(code, expected) << std::oct << ofFolder << ' ' << ofFile;
    expectWhole(expected == 0);
    EXPECT_EQ(filesIn(folder_).size(), 2U);
  }
}

TEST_F(Disk, PlacesWhereNoFileCanBe) {
  const std::string missing = folder_ + "/missing/event.lrk4";
  fs::permissions(path_, fs::perms::owner_read);
  EXPECT_EQ(event_.createNewEvent(path_), LRK_FILE_ALREADY_EXISTS);
  EXPECT_EQ(event_.saveEvent(), LRK_FILE_READONLY);
  EXPECT_EQ(event_.saveEvent(missing), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(event_.saveEvent(work_), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(event_.saveEvent("/dev/full"), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(other_.openEvent(path_), LRK_FILE_READONLY);
  EXPECT_EQ(other_.openEvent(missing), LRK_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(other_.openEvent(folder_), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(filesIn(folder_).size(), 2U);
  ASSERT_EQ(::mkfifo((folder_ + "/pipe").c_str(), 0600), 0);
  EXPECT_EQ(other_.openEvent(folder_ + "/pipe"), LRK_COULD_NOT_OPEN_FILE) << "nobody writes there";
  other_.tempFilePath(folder_ + "/missing");
  EXPECT_EQ(other_.createNewEvent(missing), LRK_COULD_NOT_CREATE_FILE);
  // The old file is whole, and the event can still be saved elsewhere.
  expectWhole(false);
  other_.tempFilePath(work_);
  path_ = folder_ + "/elsewhere.lrk4";
  EXPECT_EQ(event_.saveEvent(path_), 0);
  expectWhole(true);
}

TEST_F(Disk, WorkingFilesArePrivateAndGoAway) {
  ASSERT_EQ(other_.openEvent(path_), 0);
  EXPECT_EQ(filesIn(work_).size(), 2U);
  EXPECT_EQ(other_.closeEvent(), 0);
  ASSERT_EQ(filesIn(work_).size(), 1U);
  const fs::path file = filesIn(work_)[0];
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::resize_file(file, 10);
  EXPECT_EQ(event_.category(0), nullptr);
  EXPECT_EQ(event_.saveEvent(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(bytesOf(path_), whole_);
  EXPECT_EQ(event_.closeEvent(), 0);
  EXPECT_TRUE(filesIn(work_).empty());
  EXPECT_EQ(event_.addCategory(categoryNamed("C")), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
}

// Bytes that are no longer used are cleared out of the working file now and then, or stay when the
// folder is gone.
TEST_F(Disk, StoringOverAndOverDoesNotFillTheDisk) {
  for (int i = 0; i < 30; ++i) {
    const auto megabyte = std::make_shared<LRKCategory>(categoryNamed(std::to_string(i), 30000));
    ASSERT_EQ(event_.category(0, megabyte), 0);
    if (i < 20) {
      EXPECT_LT(fs::file_size(filesIn(work_)[0]), 10'000'000U);
    } else if (i == 20) {
      fs::remove_all(work_);
    }
  }
  EXPECT_EQ(event_.category(0)->name(), "29");
  EXPECT_EQ(event_.category(1)->name(), "B");
  EXPECT_EQ(event_.saveEvent(), 0);
  other_.tempFilePath(folder_);
  expectWhole(true);
  EXPECT_EQ(event_.closeEvent(), 0);
}

// The file is always one of two versions, and what a killed program leaves does no harm.
TEST_F(Disk, AProgramKilledWhileItSaves) {
  const auto version = [this](int number) {
    event_.name(std::to_string(number));
    return event_.category(0, std::make_shared<LRKCategory>(categoryNamed("A", 300 + number))) +
           event_.saveEvent();
  };
  ASSERT_EQ(version(0), 0);
  std::mt19937 random(1);
  for (int i = 0; i < 100; ++i) {
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      for (int number = 0; ::write(pipe[1], "", 1) == 1 && version(number) == 0;) number ^= 1;
      ::_exit(1);
    }
    for (char byte = 1; byte != 0;) ASSERT_EQ(::read(pipe[0], &byte, 1), 1);
    for (volatile auto moment = random() % 400'000; moment > 0;) moment = moment - 1;
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status)) << "a save failed";
    ::close(pipe[0]);
    ::close(pipe[1]);
    ASSERT_EQ(other_.openEvent(path_), 0) << i;
    ASSERT_EQ(other_.category(0)->noOfRunners(), 300 + std::stoi(other_.name()));
    ASSERT_EQ(other_.fileSize(), static_cast<std::int64_t>(fs::file_size(path_)));
  }
  ASSERT_EQ(version(1), 0);
  expectWhole(true);
}

}  // namespace
}  // namespace larkstone::test
