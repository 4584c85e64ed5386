#pragma once

// A folder of a test's own, gone with everything in it when the test ends, and bytes of files.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <unistd.h>

namespace larkstone::test {

class TempFolder {
 public:
  TempFolder() {
    // In memory where that is possible: every save waits for the disk.
    std::string name = ::access("/dev/shm", W_OK) == 0
                           ? "/dev/shm"
                           : std::filesystem::temp_directory_path().string();
    name += "/lrktest-XXXXXX";
    path_ = ::mkdtemp(name.data());
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  std::string write(const std::string& name, std::string_view bytes) const {
    std::ofstream(*this / name, std::ios::binary) << bytes;
    return *this / name;
  }
  int noOfFiles() const {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::string path_;
};

inline std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A number of so many bytes, the lowest first.
inline std::string little(std::size_t value, int width) {
  std::string bytes;
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  return bytes;
}

}  // namespace larkstone::test
