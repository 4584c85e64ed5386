#pragma once

// What the tests of event files share: a folder that disappears, files as bytes, and event files
// put together by hand.

#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/derived_course_codec.hpp"
#include "larkstone/event/event.hpp"

#include "support/build.hpp"
#include "support/temp_folder.hpp"

namespace larkstone::test {

/// What the work returns in a process of its own; -1 when that ended otherwise.
template <class Work>
int inChild(Work&& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(static_cast<int>(work()));
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Two events and a fresh folder for their files, with another for working files within.
class EventTest : public testing::Test {
 protected:
  EventTest() {
    std::filesystem::create_directory(work_);
    event_.tempFilePath(work_);
    other_.tempFilePath(work_);
  }

  std::int32_t openBytes(const std::string& bytes) {
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
    return event_.openEvent(path_);
  }
  static std::vector<std::filesystem::path> filesIn(const std::string& folder) {
    const std::filesystem::directory_iterator files(folder);
    return {begin(files), end(files)};
  }

  /// The working files of this process. They have no name in their folder any more, but one among
  /// the open files.
  std::vector<std::filesystem::path> workingFiles() const {
    std::vector<std::filesystem::path> files;
    for (const auto& open : filesIn("/proc/self/fd")) {
      std::error_code gone;  // as is the one by which the folder was read
      if (std::filesystem::read_symlink(open, gone).string().starts_with(work_)) {
        files.push_back(open);
      }
    }
    return files;
  }

  const TempFolder temporary_;
  const std::string folder_ = temporary_.path();
  std::string path_ = folder_ + "/event.lrk4";
  const std::string work_ = folder_ + "/working/";
  LRKEvent event_;
  LRKEvent other_;
};

/// "6C 72 6B" as bytes.
inline std::string hex(std::string text) {
  std::erase(text, ' ');
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(text.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

using Records = std::vector<std::string>;

inline std::string joined(const Records& records) {
  return std::accumulate(records.begin(), records.end(), std::string());
}

/// The end of an event file: both position tables and the data area, where the records, all
/// different, may stand in another order than in the tables.
inline std::string tablesAndData(const Records& categories, const Records& derivedCourses,
                                 const std::string& data) {
  const auto table = [&data](const Records& records) {
    std::string bytes;
    for (const auto& record : records)
      bytes += little(data.find(record), 4) + little(record.size(), 4);
    return bytes;
  };
  return hex("20") + table(categories) + hex("2C") + table(derivedCourses) + data;
}

inline std::string eventFile(const Records& categories, const Records& derivedCourses = {},
                             const std::string& headerRecords = {}) {
  const std::string header = hex("00 0000") + headerRecords + hex("1F") +
                             little(categories.size(), 2) + hex("2B") +
                             little(derivedCourses.size(), 2);
  const std::size_t end = 9 + header.size();
  const std::size_t dataBegin = end + 7 + 8 * (categories.size() + derivedCourses.size());
  return "lrk4" + hex("10") + little(end - 4, 4) + header + hex("21") + little(dataBegin + 1, 4) +
         tablesAndData(categories, derivedCourses, joined(categories) + joined(derivedCourses));
}

/// A runner with status OK: start at 0, a minute between controls.
inline LRKRunner runnerOn(const std::vector<Code>& codes) {
  std::string course = "S";
  for (const Code code : codes) course += "-" + std::to_string(code);
  return runner(course + "-F", {}, "Eva");
}

using Properties = std::map<enmFileTag, TagValue>;

/// Sets those of them that the owner can have.
template <class Owner>
void set(Owner& owner, const Properties& properties) {
  for (const auto& [tag, value] : properties) owner.setPropertyByTag(tag, value, true);
}

inline LRKCategory categoryNamed(const std::string& name, int noOfRunners = 1) {
  LRKCategory category;
  category.name(name);
  for (int i = 0; i < noOfRunners; ++i) category.addRunner(runnerOn({31, 32}));
  return category;
}

template <class T>
T sample(int n) {
  if constexpr (std::is_same_v<T, std::string>) {
    return "text " + std::to_string(n) + " å";
  } else if constexpr (std::is_same_v<T, Date>) {
    return Date{40000.25 + n};
  } else if constexpr (std::is_same_v<T, bool>) {
    return false;  // the only Boolean is true at first
  } else if constexpr (std::is_enum_v<T>) {
    return static_cast<T>(1 + n % lastEnumerator<T>);
  } else {
    return static_cast<T>(100 + n);
  }
}

/// Fills all rows, or with `only` just that one and the values without a flag. Returns how many
/// there are.
template <class Owner>
int fill(Owner& owner, int only) {
  int n = 0;
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      const bool wanted = only < 0 || only == n;
      owner.*row.member = {sample<typename Row::Type>(n), row.stored && wanted};
    } else if constexpr (isValueRow<Row>) {
      owner.*row.member = sample<typename Row::Type>(n);
    }
    ++n;
  });
  return n;
}

template <class Owner>
void expectEqual(const Owner& written, const Owner& read) {
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      const auto& property = written.*row.member;
      EXPECT_EQ(property.set, (read.*row.member).set) << row.name;
      if (!property.set) return;
      EXPECT_EQ(property.value, (read.*row.member).value) << row.name;
    } else if constexpr (isValueRow<Row>) {
      EXPECT_EQ(written.*row.member, read.*row.member) << row.name;
    }
  });
}

/// Both have the same categories and derived courses.
inline void expectSame(LRKEvent& a, LRKEvent& b) {
  ASSERT_EQ(a.noOfCategories(), b.noOfCategories());
  for (int i = 0; i < a.noOfCategories(); ++i) {
    EXPECT_TRUE(encodeCategory(*a.category(i)) == encodeCategory(*b.category(i))) << i;
  }
  ASSERT_EQ(a.noOfDerivedCourses(), b.noOfDerivedCourses());
  for (int k = 0; k < a.noOfDerivedCourses(); ++k) {
    EXPECT_EQ(encodeDerivedCourse(*a.derivedCourse(k)), encodeDerivedCourse(*b.derivedCourse(k)));
  }
}

}  // namespace larkstone::test
