// Event files and working files on the disk: nothing is lost, nothing is left behind.

#include <algorithm>

#include <sys/stat.h>

#include "larkstone/event/event.hpp"

#include "support.hpp"

namespace larkstone {
namespace {

using namespace test;
namespace fs = std::filesystem;

class Disk : public testing::Test {
 protected:
  Disk() {
    event_.tempFilePath(work_.file(""));
    EXPECT_EQ(event_.createNewEvent(path_), 0);
    EXPECT_EQ(event_.addCategory(categoryNamed("A")), 0);
    EXPECT_EQ(event_.saveEvent(), 0);
    whole_ = bytesOf(path_);
    EXPECT_EQ(event_.addCategory(categoryNamed("B")), 0);
  }
  // The event can still be saved somewhere, and no draft stands beside the old file.
  void expectNothingLost() {
    EXPECT_EQ(bytesOf(path_), whole_);
    EXPECT_EQ(files_.files().size(), 1U);
    EXPECT_EQ(event_.noOfCategories(), 2);
    EXPECT_EQ(event_.saveEvent(files_.file("elsewhere.lrk4")), 0);
  }

  const Folder files_;
  const Folder work_;
  const std::string path_ = files_.file("event.lrk4");
  std::string whole_;
  LRKEvent event_;
};

TEST_F(Disk, ReadOnlyFilesAreNeitherOpenedNorReplaced) {
  ASSERT_EQ(::chmod(path_.c_str(), 0444), 0);
  EXPECT_EQ(event_.saveEvent(), LRK_FILE_READONLY);
  expectNothingLost();
  LRKEvent other;
  EXPECT_EQ(other.openEvent(path_), LRK_FILE_READONLY);
  EXPECT_FALSE(other.isOpen());
}

TEST_F(Disk, PlacesWhereNoFileCanBe) {
  EXPECT_EQ(event_.saveEvent(files_.file("missing/event.lrk4")), LRK_COULD_NOT_OPEN_FILE);
  EXPECT_EQ(event_.saveEvent(work_.file("")), LRK_COULD_NOT_OPEN_FILE);
  expectNothingLost();

  LRKEvent other;
  EXPECT_EQ(other.openEvent(files_.file("missing.lrk4")), LRK_FILE_DOES_NOT_EXIST);
  EXPECT_EQ(other.openEvent(files_.file("")), LRK_COULD_NOT_OPEN_FILE);
  other.tempFilePath(work_.file("missing"));
  EXPECT_EQ(other.createNewEvent(files_.file("new.lrk4")), LRK_COULD_NOT_CREATE_FILE);
  EXPECT_FALSE(other.isOpen());
  EXPECT_EQ(other.openEvent(path_), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(other.isOpen());
}

TEST_F(Disk, ExistingFilesAreOverwrittenOnlyWhenAsked) {
  EXPECT_EQ(event_.createNewEvent(path_), LRK_FILE_ALREADY_EXISTS);
  EXPECT_EQ(event_.noOfCategories(), 2) << "the open event stays";
  EXPECT_EQ(event_.createNewEvent(event_.filename(), true), 0);
  EXPECT_EQ(event_.filename(), path_);
  EXPECT_EQ(bytesOf(path_), whole_) << "until it is saved";
  EXPECT_EQ(event_.noOfCategories(), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  EXPECT_LT(bytesOf(path_).size(), whole_.size());
}

TEST_F(Disk, AWorkingFileCutShort) {
  ASSERT_EQ(work_.files().size(), 1U);
  fs::resize_file(work_.files()[0], 10);
  EXPECT_EQ(event_.category(0), nullptr);
  EXPECT_EQ(event_.saveEvent(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_FALSE(event_.openTempFile());
  EXPECT_EQ(event_.updateForkingInfo(), LRK_COULD_NOT_OPEN_TEMPORARY_FILE);
  EXPECT_EQ(bytesOf(path_), whole_);
  EXPECT_EQ(files_.files().size(), 1U);
}

TEST_F(Disk, WorkingFilesArePrivateAndGoAway) {
  {
    LRKEvent other;
    other.tempFilePath(work_.file(""));
    ASSERT_EQ(other.openEvent(path_), 0);
    for (const fs::path& file : work_.files()) {
      struct stat status {};
      ASSERT_EQ(::stat(file.c_str(), &status), 0);
      EXPECT_EQ(status.st_mode & 0777, 0600U);
    }
    EXPECT_EQ(work_.files().size(), 2U);
  }
  EXPECT_EQ(work_.files().size(), 1U);
  ASSERT_EQ(event_.openEvent(path_), 0);
  EXPECT_EQ(work_.files().size(), 1U);
  EXPECT_EQ(event_.closeEvent(), 0);
  EXPECT_TRUE(work_.files().empty());
}

TEST_F(Disk, AWorkingFileThatCannotBeDeleted) {
  const fs::path file = work_.files()[0];
  fs::remove(file);
  fs::create_directory(file);
  EXPECT_EQ(event_.closeEvent(), LRK_COULD_NOT_DELETE_TEMPORARY_FILE);
  EXPECT_FALSE(event_.isOpen());
}

TEST_F(Disk, TheFolderForWorkingFiles) {
  LRKEvent other;
  EXPECT_EQ(other.tempFilePath(), ".\\");
  other.tempFilePath("C:\\temp");
  EXPECT_EQ(other.tempFilePath(), "C:\\temp\\");
  other.tempFilePath("C:\\temp\\");
  EXPECT_EQ(other.tempFilePath(), "C:\\temp\\");
  other.tempFilePath("");
  EXPECT_EQ(other.tempFilePath(), ".\\");
}

TEST_F(Disk, TwoEventsOnOneFile) {
  LRKEvent other;
  other.tempFilePath(work_.file(""));
  ASSERT_EQ(other.openEvent(path_), 0);
  ASSERT_EQ(event_.saveEvent(), 0);
  EXPECT_EQ(other.category(0)->name(), "A");
  LRKCategory changed = categoryNamed("A2");
  ASSERT_EQ(other.category(0, changed), 0);
  EXPECT_EQ(event_.category(0)->name(), "A");
  ASSERT_EQ(other.saveEvent(), 0);
  ASSERT_EQ(event_.openEvent(path_), 0);
  EXPECT_EQ(event_.noOfCategories(), 1);
  EXPECT_EQ(event_.category(0)->name(), "A2");
}

// Bytes that are no longer used are cleared out of the working file now and then.
TEST_F(Disk, StoringOverAndOverDoesNotFillTheDisk) {
  LRKCategory large = categoryNamed("large", 0);
  std::vector<Code> codes(120, 31);
  for (int i = 0; i < 1500; ++i) large.addRunner(runnerOn(codes));
  ASSERT_EQ(event_.addCategory(large), 0);
  ASSERT_EQ(event_.addCategory(categoryNamed("Z")), 0);
  const auto workSize = [this] {
    std::uintmax_t size = 0;
    for (const fs::path& file : work_.files()) size += fs::file_size(file);
    return size;
  };
  const std::uintmax_t once = workSize();
  ASSERT_GT(once, 900000U);
  std::uintmax_t largest = 0;
  for (int i = 0; i < 20; ++i) {
    large.extraInfo(std::to_string(i));
    ASSERT_EQ(event_.category(2, large), 0);
    largest = std::max(largest, workSize());
  }
  EXPECT_LT(largest, 10 * once);
  EXPECT_EQ(event_.category(0)->name(), "A");
  EXPECT_EQ(event_.category(2)->extraInfo(), "19");
  EXPECT_EQ(event_.category(2)->noOfRunners(), 1500);
  EXPECT_EQ(event_.category(3)->name(), "Z");
}

}  // namespace
}  // namespace larkstone
