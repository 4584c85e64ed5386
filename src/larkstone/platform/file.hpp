#pragma once

// Files by bytes: what the library needs from the operating system, in one place.

#include <cstdint>
#include <string>
#include <string_view>

namespace larkstone {

// Paths are the system's own, with one exception: a folder for working files is kept in a form in
// which "\" separates folders on every system.

/// A folder for working files in the form that properties keep: with a backslash at its end, ".\\"
/// for an empty path.
std::string folderPath(std::string path);
/// Such a folder as the system understands it, with a separator at its end.
std::string nativeFolder(std::string_view folderPath);

/// Whether two paths name one file: by another spelling, through symbolic or hard links, or in
/// another letter case where the system disregards it. A file that is not there yet is told by its
/// folder and name.
bool isSameFile(const std::string& a, const std::string& b);

bool fileExists(const std::string& path);
/// True when there is no such file afterwards.
bool removeFile(const std::string& path);
/// Whether the owner may not write the file; also true for root then.
bool isReadOnlyFile(const std::string& path);
/// False for folders, devices and pipes, on which a reader might wait for ever.
bool isRegularFile(const std::string& path);
/// False for a file that this user may not replace: a read-only one, also for root; one that the
/// user may not write; one in a folder that he may not write.
bool mayReplaceFile(const std::string& path);
/// Reads a whole file; false (and empty bytes) when it cannot be read.
bool readFile(const std::string& path, std::string& bytes);
/// Moves a file over another one in one step.
bool renameFile(const std::string& from, const std::string& to);
/// A name in the folder (which ends in a separator) that no file has; random, so that two programs
/// do not meet.
std::string freshFileName(const std::string& folder);

/// An open file with random access. Closing is the destructor's work.
class File {
 public:
  enum class Mode {
    read,
    readWrite,
    create,        ///< a new file, readable by the user alone; fails when the name is taken
    createShared,  ///< the same, with the permissions that any new file gets
    vanishing,     ///< a new file for the user alone that has no name and is gone when it is closed
  };

  File() = default;
  File(const std::string& path, Mode mode);
  ~File() { close(); }
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;

  bool isOpen() const { return handle_ >= 0; }
  /// Bytes in the file; 0 for one that is not open.
  std::int64_t size() const;
  /// Reads up to `length` bytes at a position; fewer at the end of the file or on a failure.
  std::string readAt(std::int64_t position, std::int64_t length) const;
  /// Writes all bytes at a position, or returns false.
  bool writeAt(std::int64_t position, std::string_view bytes);
  bool truncate(std::int64_t size);
  /// Waits until the bytes are on the disk.
  bool flush();
  /// Gives the file the owner, group and permissions of another one, as far as the user may; false
  /// when something of it could not be given.
  bool takeAccessOf(const std::string& path);
  void close();

 private:
  int handle_ = -1;
};

/// A file that appears under its name whole or not at all: it is written beside the target and
/// renamed over it by commit(), which waits until it is on the disk. Without a commit nothing of it
/// is left, unless the program is killed: then a draft "lrk*.tmp" stays beside the target.
///
/// The new file is as accessible as the old one was. A symbolic link goes on pointing at it; other
/// hard links keep the old file. Something that is not a regular file (a device, a pipe) is written
/// directly.
class WholeFile {
 public:
  explicit WholeFile(const std::string& path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Whether the file could be created.
  bool isOpen() const { return file_.isOpen(); }
  /// Appends; after a failure commit() fails too.
  bool write(std::string_view bytes);
  bool commit();

 private:
  std::string target_;
  std::string draft_;  // empty: the target is written directly
  File file_;
  std::int64_t position_ = 0;
  bool failed_ = false;
};

}  // namespace larkstone
