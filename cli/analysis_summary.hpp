#pragma once

// The analysis in a line per category, for the terminal.

#include <array>
#include <string>
#include <vector>

#include "larkstone/analysis/course.hpp"
#include "larkstone/model/category.hpp"

#include "cli/output.hpp"

namespace larkstone::cli {

/// Collects a line per category and writes them when all are there, in columns as wide as they
/// need; the last tells who of the category is not on the course. Only the ideal and best leg times
/// and the time loss of a calculation are looked at.
class SummaryTable {
 public:
  SummaryTable();

  void add(const LRKCourse& course, const LRKCategory& category);
  void write(Output& output) const;

 private:
  static constexpr int columns = 9;
  using Line = std::array<std::string, columns>;

  std::vector<Line> lines_;
};

}  // namespace larkstone::cli
