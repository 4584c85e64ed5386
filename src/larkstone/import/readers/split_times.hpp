#pragma once

// The times of one runner in a SportSoftware split-time list.

#include <cstddef>
#include <string_view>
#include <vector>

#include "larkstone/core/types.hpp"
#include "larkstone/import/reader_run.hpp"
#include "larkstone/import/readers/split_list.hpp"

namespace larkstone {

/// Whether a text stands where there is no time: "-----" for a missing punch, "0.00" for a control
/// that was counted without one.
bool isMissingSplit(std::string_view text);

/// The time of a text; an hour that the list has cut off (":05:11") is left out. LRK_NO_TIME for
/// text that is none.
Time splitTime(std::string_view text);

struct SplitRow;

/// Reads a runner's rows, each a line of times and the line below it.
class SplitReader {
 public:
  /// All must outlive the object. The times stand behind timeEnd.
  SplitReader(LRKRunner& runner, const LineNotes& notes, std::size_t timeEnd)
      : runner_(runner), notes_(notes), timeEnd_(timeEnd) {}

  /// Adds the punches of a row of controls, then what the row has beside them: extra punches.
  void read(const std::vector<ControlColumn>& controls, std::string_view timesLine,
            std::string_view legsLine);
  /// Sets the finish; a list without its column has the result only.
  void finish(std::string_view result);

 private:
  void add(const ControlColumn& control, std::string_view text, std::string_view leg);
  void addExtraPunches(SplitRow& row);
  Time read(std::string_view text, Time before, std::string_view leg);

  LRKRunner& runner_;
  const LineNotes& notes_;
  std::size_t timeEnd_;
  Time last_ = 0;
  Time lastExtra_ = 0;
  Time finish_ = LRK_NO_TIME;
  int noOfControls_ = 0;
};

}  // namespace larkstone
