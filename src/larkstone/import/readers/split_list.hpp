#pragma once

// How a SportSoftware split-time list is laid out, whatever its language.
//
//        Pl    Stno Name                       Time
//
//    Green  (2)               3.900 km  180 m   2 C
//                                                      1(201)   2(202)        F
//
//         1      27 Ann Bell                  32:01     3:38     5:57    32:01
//                   SBOC                                3:38     2:19    26:04
//                27 Bob Cole                     mp     4:04    -----  1:05:10            4:48
//                   SBOC                                4:04           1:01:06            *203
//
// Words end at the same column in all lines of a class. The column that the control row shows is
// where the times below it end. Controls that do not fit go on in further rows, and each runner has
// as many pairs of lines. The start number may be missing; further columns (the year of birth, the
// club, which then does not stand below the name) may stand anywhere in the header.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/types.hpp"
#include "larkstone/import/scan/html_page.hpp"

namespace larkstone {

/// Where a runner's first line holds what.
class SplitListColumns {
 public:
  std::size_t placeBegin = 0;
  std::size_t placeEnd = 0;  ///< at most; a number that ends behind it is a start number
  std::size_t nameBegin = 0;
  std::size_t timeEnd = 0;     ///< the result ends here
  std::size_t timesBegin = 0;  ///< the times at the controls stand behind this column
  bool isNamed = false;        ///< by words that are known

  std::string_view place(std::string_view line) const;
  std::string_view result(std::string_view line) const;
  std::string_view name(std::string_view line) const;
  /// Empty without such a column.
  std::string_view club(std::string_view line) const;
  std::string_view birthYear(std::string_view line) const;
  /// What stands below the name: the club, unless it has a column.
  std::string_view below(std::string_view line) const;
  /// Whether a runner begins here: a first line, or a name without a result beside times.
  bool isRunner(std::string_view line) const;
  /// Whether the line is a runner's first: it has a place, a start number or a result.
  bool isFirst(std::string_view line) const {
    return !columnText(line, 0, nameBegin).empty() || !result(line).empty();
  }
  /// Whether there are only times.
  bool isContinuation(std::string_view line) const {
    return columnText(line, 0, timesBegin).empty();
  }
  /// A text in the last column may go on behind its header, up to the times of the first control.
  void endBefore(std::size_t firstTimeEnd);

 private:
  friend class SplitListHeader;
  enum class Kind { place, startNumber, name, club, birthYear, time, other };
  struct Column {
    Kind kind;
    std::size_t begin;
    std::size_t end;
  };

  const Column* find(Kind kind) const;
  const Column* behind(std::size_t begin) const;
  std::size_t textEnd(std::string_view line, std::size_t begin) const;
  std::size_t resultBegin(std::string_view line) const;

  std::vector<Column> columns_;  // in the order of the header; empty where that is not known
};

/// The columns by the header line of the list ("Pl Stno Name Time" in any language); nothing for a
/// line of another kind.
std::optional<SplitListColumns> columnsOfHeader(std::string_view header);
/// Whether the header line names its columns in words that are known.
bool isKnownHeader(std::string_view header);

/// The columns by both lines of a runner, for a list whose header line is blank. firstTimeEnd is
/// the column of the first control.
SplitListColumns columnsOfRunner(std::string_view first, std::string_view second,
                                 std::size_t firstTimeEnd);

/// The column of a control or of the finish.
struct ControlColumn {
  std::size_t end;
  Code code;  ///< 0 where the list shows none
  bool isFinish;
};

/// The controls of a row "1(201) 2(202) F", or of one that only counts them ("1 2 3"), from a
/// column on; nothing for a line of another kind.
std::vector<ControlColumn> controlsOf(std::string_view line, std::size_t from = 0);

/// How many controls a runner gets at least where the times of so many are missing altogether.
/// Beyond, a course is only as long as its lines: a short line says nothing about a long row.
inline constexpr int mostControlsWithoutTimes = 100;

/// The line above a class.
struct ClassLine {
  std::string name;
  std::optional<Length> courseLength;
};

/// The class line; nothing for a line of another kind. The count of runners may be cut off, the
/// length missing: then the next line shows that it is one.
std::optional<ClassLine> classLineOf(std::string_view line, std::string_view nextLine);

}  // namespace larkstone
