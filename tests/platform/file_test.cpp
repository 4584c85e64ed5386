#include "larkstone/platform/file.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

using test::bytesOf;
using test::TempFolder;

struct stat statusOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status;
}

unsigned permissionsOf(const std::string& path) { return statusOf(path).st_mode & 0777; }

TEST(FileTest, FoldersForWorkingFilesTakeEitherSeparator) {
  EXPECT_EQ(nativeFolder(folderPath("a\\b/c")), "a/b/c/");
  EXPECT_EQ(nativeFolder(folderPath("")), "./");
}

TEST(FileTest, OneFileUnderManyNames) {
  const TempFolder folder;
  const std::string file = folder.write("a", "");
  folder.write("b", "");
  folder.write("x\\a", "");
  std::filesystem::create_directory(folder / "x");
  std::filesystem::create_symlink("../a", folder / "x/soft");
  std::filesystem::create_symlink("../none", folder / "x/dangling");
  std::filesystem::create_hard_link(file, folder / "hard");
  for (const char* name : {"a", "./x/../a", "x//soft", "hard"}) {
    EXPECT_TRUE(isSameFile(file, folder / name) && isSameFile(folder / name, file)) << name;
    EXPECT_FALSE(isSameFile(folder / name, folder / "b")) << name;
  }
  for (const char* name : {"none", "x/../none", "x/dangling"}) {
    EXPECT_TRUE(isSameFile(folder / name, folder / "none")) << name;
  }
  for (const char* name : {"b", "x\\a", "x/a", "A/a", "none"}) {
    EXPECT_FALSE(isSameFile(file, folder / name)) << name;
  }
  EXPECT_FALSE(isSameFile(folder / "no/such", folder / "no/such"));
  EXPECT_FALSE(isSameFile("", ""));
}

TEST(FileTest, NewFilesAreTheUsersAloneAndNotTakenOver) {
  const TempFolder folder;
  const std::string name = freshFileName(folder.path() + "/");
  File file(name, File::Mode::create);
  ASSERT_TRUE(file.isOpen());
  EXPECT_EQ(permissionsOf(name), 0600U);
  EXPECT_FALSE(File(name, File::Mode::create).isOpen());
  EXPECT_NE(freshFileName(folder.path() + "/"), name);
  EXPECT_EQ(folder.noOfFiles(), 1);
}

TEST(FileTest, BytesAtPositions) {
  const TempFolder folder;
  File file(folder / "a", File::Mode::create);
  EXPECT_TRUE(file.writeAt(0, "abcdef"));
  EXPECT_TRUE(file.writeAt(2, "XY"));
  EXPECT_EQ(file.readAt(1, 3), "bXY");
  EXPECT_EQ(file.readAt(4, 100), "ef");
  EXPECT_EQ(file.readAt(9, 1), "");
  EXPECT_EQ(file.readAt(-1, 5), "");
  EXPECT_TRUE(file.truncate(3));
  EXPECT_EQ(file.size(), 3);
  File moved = std::move(file);
  EXPECT_EQ(moved.readAt(0, 9), "abX");

  std::string bytes;
  EXPECT_TRUE(readFile(folder / "a", bytes));
  EXPECT_EQ(bytes, "abX");
  EXPECT_FALSE(readFile(folder.path(), bytes));
  EXPECT_FALSE(readFile(folder / "none", bytes));
}

TEST(WholeFileTest, NothingIsSeenBeforeTheCommit) {
  const TempFolder folder;
  const std::string target = folder.write("out", "old");
  const bool root = ::geteuid() == 0;  // the others can only own it themselves
  EXPECT_EQ(root ? ::chown(target.c_str(), 12, 34) : 0, 0);
  ::chmod(target.c_str(), 0640);
  {
    WholeFile file(target);
    file.write("new ");
    file.write("text");
    EXPECT_EQ(bytesOf(target), "old");
    EXPECT_TRUE(file.commit());
  }
  EXPECT_EQ(bytesOf(target), "new text");
  EXPECT_EQ(permissionsOf(target), 0640U);
  EXPECT_EQ(statusOf(target).st_uid, root ? 12 : ::geteuid());
  EXPECT_TRUE(!root || statusOf(target).st_gid == 34);
  EXPECT_EQ(folder.noOfFiles(), 1);
  WholeFile fresh(folder / "fresh");
  EXPECT_TRUE(fresh.commit());
  EXPECT_EQ(permissionsOf(folder / "fresh"), permissionsOf(folder.write("plain", "")));
}

TEST(WholeFileTest, ALinkKeepsPointingAtItsFile) {
  for (const bool exists : {true, false}) {
    const TempFolder folder;
    if (exists) folder.write("real", "old");
    std::filesystem::create_directory(folder / "links");
    std::filesystem::create_symlink("../real", folder / "links/first");
    std::filesystem::create_symlink("links/first", folder / "second");
    WholeFile file(folder / "second");
    file.write("new");
    EXPECT_TRUE(file.commit());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "second"));
    EXPECT_EQ(bytesOf(folder / "real"), "new");
  }
}

}  // namespace
}  // namespace larkstone
