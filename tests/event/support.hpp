#pragma once

// What the tests of event files share: a folder that disappears, files as bytes, and event files
// put together by hand.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "larkstone/event/event.hpp"

namespace larkstone::test {

/// A fresh folder for the files of one test.
class Folder {
 public:
  Folder() {
    std::string name = testing::TempDir() + "larkstone-event-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no folder " << name;
    path_ = name;
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string file(const std::string& name) const { return (path_ / name).string(); }
  std::vector<std::filesystem::path> files() const {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) found.push_back(entry);
    return found;
  }

 private:
  std::filesystem::path path_;
};

inline std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeBytes(const std::string& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << bytes;
}

/// "6C 72 6B" as bytes.
inline std::string hex(std::string_view text) {
  std::string bytes;
  int digits = 0;
  unsigned value = 0;
  for (const char c : text) {
    if (c == ' ' || c == '\n') continue;
    value = value * 16 + static_cast<unsigned>(c <= '9' ? c - '0' : c - 'A' + 10);
    if (++digits % 2 == 0) bytes += static_cast<char>(value & 0xFF);
  }
  return bytes;
}

inline std::string little(std::int64_t value, int width) {
  std::string bytes;
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  return bytes;
}

inline std::int32_t longAt(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;)
    value = value << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
  return static_cast<std::int32_t>(value);
}

/// An event file of the given records: categories, then derived courses.
inline std::string eventFile(const std::vector<std::string>& categories,
                             const std::vector<std::string>& derivedCourses = {},
                             const std::string& headerRecords = {}) {
  std::string header = hex("00 00 00") + headerRecords + hex("1F") +
                       little(static_cast<std::int64_t>(categories.size()), 2) + hex("2B") +
                       little(static_cast<std::int64_t>(derivedCourses.size()), 2);
  const auto end = static_cast<std::int64_t>(9 + header.size());
  const auto records = static_cast<std::int64_t>(categories.size() + derivedCourses.size());
  std::string file = "lrk4" + hex("10") + little(end - 4, 4) + header + hex("21") +
                     little(end + 8 + 8 * records, 4);
  std::int64_t position = 0;
  std::string data;
  const auto table = [&](const std::vector<std::string>& kind) {
    for (const std::string& record : kind) {
      file += little(position, 4) + little(static_cast<std::int64_t>(record.size()), 4);
      position += static_cast<std::int64_t>(record.size());
      data += record;
    }
  };
  file += hex("20");
  table(categories);
  file += hex("2C");
  table(derivedCourses);
  return file + data;
}

/// The position tables and the data area of a saved event file, read without the library.
struct SavedFile {
  struct Place {
    std::int32_t position;
    std::int32_t length;
  };
  std::vector<Place> categories;
  std::vector<Place> derivedCourses;
  std::string data;

  explicit SavedFile(const std::string& file, std::size_t noOfCategories,
                     std::size_t noOfDerivedCourses) {
    std::size_t at = static_cast<std::size_t>(longAt(file, 5)) + 4;  // the offset record
    const auto dataBegin = static_cast<std::size_t>(longAt(file, at + 1)) - 1;
    at += 6;
    const auto table = [&](std::size_t count, std::vector<Place>& places) {
      for (std::size_t i = 0; i < count; ++i, at += 8) {
        places.push_back({longAt(file, at), longAt(file, at + 4)});
      }
      ++at;
    };
    table(noOfCategories, categories);
    table(noOfDerivedCourses, derivedCourses);
    EXPECT_EQ(at - 1, dataBegin);
    data = file.substr(dataBegin);
  }

  std::string record(Place place) const {
    return data.substr(static_cast<std::size_t>(place.position),
                       static_cast<std::size_t>(place.length));
  }
};

/// A runner with status OK: start at 0, a minute between controls.
inline LRKRunner runnerOn(const std::vector<Code>& codes, const std::string& name = "Eva") {
  LRKRunner runner;
  runner.name(name);
  runner.status(estaOK);
  runner.startTime(0);
  Time time = 0;
  for (const Code code : codes) runner.punches().add(time += 6000, code);
  runner.finishTime(time + 6000);
  return runner;
}

inline LRKCategory categoryNamed(const std::string& name, int noOfRunners = 1) {
  LRKCategory category;
  category.name(name);
  for (int i = 0; i < noOfRunners; ++i) category.addRunner(runnerOn({31, 32}));
  return category;
}

}  // namespace larkstone::test
