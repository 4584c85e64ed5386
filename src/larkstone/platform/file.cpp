#include "larkstone/platform/file.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace larkstone {

namespace {

constexpr std::size_t largestRead = std::size_t{1} << 30;

struct Freed {
  void operator()(char* text) const { std::free(text); }
};

// The file behind symbolic links, or where it is to be, so that replacing it does not replace a
// link.
std::string resolved(std::string path) {
  constexpr int mostLinks = 40;
  for (int i = 0; i < mostLinks; ++i) {
    const std::unique_ptr<char, Freed> real(::realpath(path.c_str(), nullptr));
    if (real) return real.get();
    std::error_code failed;
    const auto next = std::filesystem::read_symlink(path, failed);
    if (failed) break;
    path = (std::filesystem::path(path).parent_path() / next).string();
  }
  return path;
}

std::string folderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

struct Identity {
  dev_t device;
  ino_t number;
  std::string name;  // in the folder, of a file that is not there yet

  friend bool operator==(const Identity&, const Identity&) = default;
};

// Nothing for a file in a folder that does not exist.
std::optional<Identity> identityOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return Identity{status.st_dev, status.st_ino, {}};
  const std::string target = resolved(path);
  const std::string folder = folderOf(target);
  if (target.empty() || ::stat(folder.c_str(), &status) != 0) return std::nullopt;
  return Identity{status.st_dev, status.st_ino, target.substr(target.rfind('/') + 1)};
}

int openHandle(const std::string& path, int flags, mode_t mode = 0) {
  int handle = -1;
  do {
    handle = ::open(path.c_str(), flags | O_CLOEXEC, mode);
  } while (handle < 0 && errno == EINTR);
  return handle;
}

}  // namespace

std::string folderPath(std::string path) {
  if (path.empty()) path += '.';
  if (path.back() != '\\') path += '\\';
  return path;
}

std::string nativeFolder(std::string_view folderPath) {
  std::string native(folderPath);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

bool isSameFile(const std::string& a, const std::string& b) {
  const std::optional<Identity> first = identityOf(a);
  return first && first == identityOf(b);
}

bool fileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

bool removeFile(const std::string& path) { return ::unlink(path.c_str()) == 0 || errno == ENOENT; }

bool isRegularFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool mayReplaceFile(const std::string& path) {
  const auto isWritable = [](const std::string& name) {
    return ::faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) == 0;
  };
  if (!fileExists(path)) return true;
  if (isReadOnlyFile(path) || !isWritable(path)) return false;
  return !isRegularFile(path) || isWritable(folderOf(resolved(path)));
}

bool isReadOnlyFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && (status.st_mode & S_IWUSR) == 0;
}

bool readFile(const std::string& path, std::string& bytes) {
  bytes.clear();
  const File file(path, File::Mode::read);
  struct stat status {};
  if (!file.isOpen() || ::stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return false;
  // The size is a hint: a pipe has none, and a file may grow while it is read.
  std::int64_t chunk = std::max<std::int64_t>(file.size(), 65536);
  for (;;) {
    std::string next = file.readAt(static_cast<std::int64_t>(bytes.size()), chunk);
    if (next.empty()) return true;
    if (bytes.empty()) {
      bytes = std::move(next);
    } else {
      bytes += next;
    }
    chunk = 65536;
  }
}

bool renameFile(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

std::string freshFileName(const std::string& folder) {
  constexpr std::string_view letters = "0123456789abcdefghijklmnopqrstuvwxyz";
  for (;;) {
    std::uint64_t number = 0;
    if (::getentropy(&number, sizeof number) != 0) {
      number =
          static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    }
    std::string name = folder + "lrk";
    for (int i = 0; i < 12; ++i, number /= letters.size()) name += letters[number % letters.size()];
    name += ".tmp";
    if (!fileExists(name)) return name;
  }
}

File::File(const std::string& path, Mode mode) {
  switch (mode) {
    case Mode::read:
      handle_ = openHandle(path, O_RDONLY);
      break;
    case Mode::readWrite:
      handle_ = openHandle(path, O_RDWR);
      break;
    case Mode::create:
      handle_ = openHandle(path, O_RDWR | O_CREAT | O_EXCL, 0600);
      break;
    case Mode::createShared:
      handle_ = openHandle(path, O_RDWR | O_CREAT | O_EXCL, 0666);
      break;
    case Mode::vanishing:
      handle_ = openHandle(path, O_RDWR | O_CREAT | O_EXCL, 0600);
      // One that kept its name would be left by a program that is killed.
      if (isOpen() && !removeFile(path)) close();
      break;
  }
}

File::File(File&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

File& File::operator=(File&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

std::int64_t File::size() const {
  struct stat status {};
  return isOpen() && ::fstat(handle_, &status) == 0 ? status.st_size : 0;
}

std::string File::readAt(std::int64_t position, std::int64_t length) const {
  std::string bytes;
  if (!isOpen() || position < 0 || length <= 0) return bytes;
  bytes.resize(static_cast<std::size_t>(length));
  std::size_t done = 0;
  while (done < bytes.size()) {
    const std::size_t want = std::min(bytes.size() - done, largestRead);
    ssize_t got =
        ::pread(handle_, bytes.data() + done, want, position + static_cast<std::int64_t>(done));
    if (got < 0 && errno == ESPIPE) got = ::read(handle_, bytes.data() + done, want);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  return bytes;
}

bool File::writeAt(std::int64_t position, std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t put = ::pwrite(handle_, bytes.data(), std::min(bytes.size(), largestRead), position);
    if (put < 0 && errno == ESPIPE) put = ::write(handle_, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(put));
    position += put;
  }
  return isOpen();
}

bool File::truncate(std::int64_t size) { return ::ftruncate(handle_, size) == 0; }

bool File::flush() {
  while (::fsync(handle_) != 0) {
    // Some file systems have nothing to wait for.
    if (errno != EINTR) return errno == EINVAL || errno == ENOTSUP;
  }
  return true;
}

bool File::takeAccessOf(const std::string& path) {
  struct stat status {};
  if (!isOpen() || ::stat(path.c_str(), &status) != 0) return false;
  // Only root may give a file away, but its owner may give it to a group that he is in.
  constexpr auto sameOwner = static_cast<uid_t>(-1);
  const bool given = ::fchown(handle_, status.st_uid, status.st_gid) == 0 ||
                     ::fchown(handle_, sameOwner, status.st_gid) == 0;
  // What the old group may, the user's own group shall not.
  const mode_t mode = status.st_mode & (given ? 07777 : 00707);
  return ::fchmod(handle_, mode) == 0 && given;
}

void File::close() {
  if (isOpen()) ::close(std::exchange(handle_, -1));
}

WholeFile::WholeFile(const std::string& path) : target_(resolved(path)) {
  struct stat status {};
  const bool exists = ::stat(target_.c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode)) {
    if (!S_ISDIR(status.st_mode)) file_ = File(target_, File::Mode::readWrite);
    return;
  }
  draft_ = freshFileName(folderOf(target_));
  file_ = File(draft_, exists ? File::Mode::create : File::Mode::createShared);
}

WholeFile::~WholeFile() {
  if (!draft_.empty() && file_.isOpen()) removeFile(draft_);
}

bool WholeFile::write(std::string_view bytes) {
  if (failed_ || !file_.isOpen() || !file_.writeAt(position_, bytes)) failed_ = true;
  position_ += static_cast<std::int64_t>(bytes.size());
  return !failed_;
}

bool WholeFile::commit() {
  if (failed_ || !file_.isOpen()) return false;
  if (draft_.empty()) return true;
  // Where that is not possible, the file is still the user's, and whole.
  file_.takeAccessOf(target_);
  if (!file_.flush() || !renameFile(draft_, target_)) return false;
  file_.close();
  // The change of names, too. Not every folder can be flushed; the target is whole either way.
  File(folderOf(target_), File::Mode::read).flush();
  return true;
}

}  // namespace larkstone
