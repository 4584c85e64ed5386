#pragma once

// What the fuzz targets share: a folder of their own, and what holds for every event.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"

#include "support/temp_folder.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace larkstone::fuzz {

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

inline const test::TempFolder& folder() {
  static const test::TempFolder folder;
  return folder;
}

inline std::string fileOf(const std::uint8_t* data, std::size_t size) {
  return folder().write("input", {reinterpret_cast<const char*>(data), size});
}

/// A new event with its working files in the folder.
struct Event : LRKEvent {
  Event() {
    tempFilePath(folder().path());
    require(createNewEvent(folder() / "new.lrk4", true) == 0, "a new event begins");
  }
};

inline int noOfRunners(LRKEvent& event) {
  int runners = 0;
  for (int i = 0; i < event.noOfCategories(); ++i) runners += event.category(i)->noOfRunners();
  return runners;
}

/// What the records hold, in the order of the file.
inline std::string records(LRKEvent& event) {
  std::string bytes;
  for (int i = 0; i < event.noOfCategories(); ++i) {
    bytes += encodeCategory(*event.category(event.categoryDisplayIndex(i))) + '/';
  }
  for (int i = 0; i < event.noOfDerivedCourses(); ++i) {
    const auto course = event.derivedCourse(i);
    bytes += course->name() + course->legs().codesToString("S", "F") + ' ' +
             std::to_string(course->noOfRunners()) + '/';
  }
  return bytes;
}

/// What is saved comes back, and is saved as the same bytes but for the date of the change.
inline void checkSaving(LRKEvent& event) {
  const std::string first = folder() / "first.lrk4";
  const std::string second = folder() / "second.lrk4";
  require(event.saveEvent(first) == 0, "an event can be saved");
  Event saved;
  require(saved.openEvent(first) == 0, "a saved event can be opened");
  require(records(saved) == records(event), "a saved event comes back");
  require(saved.saveEvent(second) == 0, "it can be saved again");
  const std::string a = test::bytesOf(first);
  const std::string b = test::bytesOf(second);
  const auto begin = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
  const auto end = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first.base();
  require(a.size() == b.size() && end - begin <= 8, "with the same bytes but for a date");
}

}  // namespace larkstone::fuzz
