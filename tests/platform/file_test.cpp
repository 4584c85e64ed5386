#include "larkstone/platform/file.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_folder.hpp"

namespace larkstone {
namespace {

using test::bytesOf;
using test::TempFolder;

unsigned permissionsOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 0777;
}

TEST(FileTest, PathsTakeEitherSeparator) {
  EXPECT_EQ(nativePath("a\\b/c\\"), "a/b/c/");
  EXPECT_EQ(fileNameOfPath("a/b\\c.txt"), "c.txt");
  EXPECT_EQ(fileNameOfPath("c.txt"), "c.txt");
  EXPECT_EQ(fileNameOfPath("a/"), "");
}

TEST(FileTest, NewFilesAreTheUsersAloneAndNotTakenOver) {
  const TempFolder folder;
  const std::string name = freshFileName(folder.path() + "/");
  File file(name, File::Mode::create);
  ASSERT_TRUE(file.isOpen());
  EXPECT_EQ(permissionsOf(name), 0600U);
  EXPECT_FALSE(File(name, File::Mode::create).isOpen());
  EXPECT_NE(freshFileName(folder.path() + "/"), name);
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
  ::chmod(target.c_str(), 0640);
  {
    WholeFile file(target);
    file.write("half");
    EXPECT_EQ(bytesOf(target), "old");
  }
  EXPECT_EQ(bytesOf(target), "old");
  EXPECT_EQ(folder.noOfFiles(), 1);
  {
    WholeFile file(target);
    file.write("new ");
    file.write("text");
    EXPECT_TRUE(file.commit());
  }
  EXPECT_EQ(bytesOf(target), "new text");
  EXPECT_EQ(permissionsOf(target), 0640U);
  EXPECT_EQ(folder.noOfFiles(), 1);
  WholeFile fresh(folder / "fresh");
  EXPECT_TRUE(fresh.commit());
  EXPECT_EQ(permissionsOf(folder / "fresh"), permissionsOf(folder.write("plain", "")));
}

TEST(WholeFileTest, ALinkKeepsPointingAtItsFile) {
  const TempFolder folder;
  const std::string target = folder.write("real", "old");
  std::filesystem::create_symlink(target, folder / "link");
  WholeFile file(folder / "link");
  file.write("new");
  EXPECT_TRUE(file.commit());
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(bytesOf(target), "new");
}

TEST(WholeFileTest, WhereNoFileCanBeNothingIsWritten) {
  const TempFolder folder;
  WholeFile file(folder / "missing/out");
  EXPECT_FALSE(file.isOpen());
  EXPECT_FALSE(file.write("x"));
  EXPECT_FALSE(file.commit());
  EXPECT_FALSE(WholeFile(folder.path()).isOpen());
  WholeFile device("/dev/null");
  EXPECT_TRUE(device.write("x"));
  EXPECT_TRUE(device.commit());
}

}  // namespace
}  // namespace larkstone
