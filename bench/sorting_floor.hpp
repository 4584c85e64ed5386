#pragma once

// What a calculation is measured against.

#include <vector>

#include "larkstone/analysis/course.hpp"

namespace larkstone::bench {

/// The floor of a calculation: one contiguous array of (time, runner) per leg, sorted with
/// std::sort, for each of four styles (legs, totals, passing begin and end). Sorts the same numbers
/// in every call.
class SortingFloor {
 public:
  explicit SortingFloor(const LRKCourse& calculated);
  void operator()();

 private:
  struct Entry {
    Time time;
    int runner;
  };
  std::vector<std::vector<Entry>> unsorted_;
  std::vector<Entry> entries_;
};

}  // namespace larkstone::bench
