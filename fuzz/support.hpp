#pragma once

// What the fuzz targets share: a folder of their own, an event as text, and what holds for every
// event that is saved.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

#include "larkstone/event/event.hpp"

#include "support/temp_folder.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace larkstone::fuzz {

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// In memory where the system has a place for that.
inline const test::TempFolder& folder() {
  static const bool inMemory = std::filesystem::exists("/dev/shm");
  static const test::TempFolder folder(inMemory ? "/dev/shm"
                                                : std::filesystem::temp_directory_path());
  return folder;
}

inline std::string fileOf(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(size == 0 ? "" : reinterpret_cast<const char*>(data), size);
  return folder().write("input", bytes);
}

/// An event whose working files are in the folder, new unless a file of it is opened.
struct Event : LRKEvent {
  Event() {
    tempFilePath(folder().path());
    require(createNewEvent(folder() / "new.lrk4", true) == 0, "a new event begins");
  }
};

template <class Owner>
std::string properties(const Owner& owner) {
  std::string text;
  Owner::forEachRow([&](const auto& row) {
    using Row = std::decay_t<decltype(row)>;
    if constexpr (isPropertyRow<Row>) {
      const auto& property = owner.*row.member;
      if (property.set) text += *textOf(toTagValue(property.value)) + '|';
    } else if constexpr (isValueRow<Row>) {
      text += *textOf(toTagValue(owner.*row.member)) + '|';
    }
    text += '|';
  });
  return text;
}

inline std::string described(const LRKPunches& punches) {
  std::string text = ":";
  for (int i = 0; i < punches.count(); ++i) {
    text += std::to_string(punches.code(i)) + ' ' + std::to_string(punches.time(i)) + ',';
  }
  return text;
}

inline std::string described(const LRKRunner& runner) {
  return properties(runner) + described(runner.punches()) + described(runner.extraPunches()) + '\n';
}

inline std::string described(const LRKCategory& category) {
  std::string text = properties(category);
  for (const LegLength& leg : category.legLengthArray()) {
    for (const int number : {+leg.beginCode, +leg.endCode, leg.length}) {
      text += std::to_string(number) + ' ';
    }
  }
  for (int i = 0; i < category.noOfRunners(); ++i) text += described(category.runner(i));
  return text;
}

/// Everything in the order of the file, whatever the categories' order on the screen.
inline std::string described(LRKEvent& event) {
  std::string text = properties(event);
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.category(event.categoryDisplayIndex(i));
    require(category != nullptr, "every category can be decoded");
    text += described(*category);
  }
  for (int i = 0; i < event.noOfDerivedCourses(); ++i) {
    const auto course = event.derivedCourse(i);
    require(course.has_value(), "every derived course can be decoded");
    text += properties(*course) + course->legs().codesToString("S", "F") +
            described(course->codesEqualToStart().toPunches()) +
            described(course->codesEqualToFinish().toPunches());
    for (int k = 0; k < course->noOfRunners(); ++k) {
      text += std::to_string(event.categoryFileIndex(course->runnerCategoryIndex(k))) + ' ' +
              std::to_string(course->runnerIndex(k)) + ',';
    }
  }
  return text;
}

inline int noOfRunners(LRKEvent& event) {
  int runners = 0;
  for (int i = 0; i < event.noOfCategories(); ++i) runners += event.category(i)->noOfRunners();
  return runners;
}

/// What is saved comes back, and is saved as the same bytes but for the date of the change.
inline void checkSaving(LRKEvent& event) {
  const std::string first = folder() / "first.lrk4";
  const std::string second = folder() / "second.lrk4";
  require(event.saveEvent(first) == 0, "an event can be saved");
  Event saved;
  require(saved.openEvent(first) == 0, "a saved event can be opened");
  require(described(saved) == described(event), "a saved event comes back");
  require(saved.saveEvent(second) == 0, "and can be saved again");
  const std::string a = test::bytesOf(first);
  const std::string b = test::bytesOf(second);
  require(a.size() == b.size(), "in a file of the same size");
  const auto change = std::mismatch(a.begin(), a.end(), b.begin());
  const auto same = std::mismatch(a.rbegin(), a.rend(), b.rbegin());
  require(same.first.base() - change.first <= 8, "with the same bytes");
}

}  // namespace larkstone::fuzz
