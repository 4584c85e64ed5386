#pragma once

// The split table of a course, for a web page or as text.

#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/property.hpp"
#include "larkstone/online/captions.hpp"
#include "larkstone/online/cell_format.hpp"

namespace larkstone {

class LRKCourse;

/// Whether a start time is known of any runner: a list that has none leaves all at 0:00:00, or
/// without a time.
bool hasStartTimes(const LRKCourse& course);

/// Renders the split times of an analysed course. Set the course, the looks and the captions, sort,
/// create, then take the texts:
///
///     LRKCourse course = category.toCourse(erqlAtLeastOne, false, false);
///     course.calculate();
///     clsLarkstoneOnlineTable table;
///     table.course(&course);
///     table.setLanguage("captions.txt", 1);
///     table.sort(esorResultTime);
///     table.createHTMLTable();
///     page = "<style>" + table.styleString() + "</style>" + table.scriptString() +
///            table.htmlTableString();
///
/// Settings read as `table.showPlaces()` and write as `table.showPlaces(true)`; the file
/// table_settings.def lists them all with their initial values and what they do.
///
/// The table has two header rows and two rows per runner in the course's order: place, name over
/// club, start and finish time on request, the distance to the best finish time (or why there is
/// none), per leg the leg time over the total or passing time with their places on request, and
/// name over club once more. A time that is not valid for a place (a leg needs at least 0.01 s) has
/// none and is neither best nor top. Start times that are not known stay empty, all of them without
/// hasStartTimes(). Place, start, finish and distance stand beside both rows. Lines run
/// above each runner, and left of every column but the places.
///
/// Captions by key ("" where one is missing):
///     place name club startTime finishTime finishTimeDifference   headings
///     startName finishName                                        the ends of a leg's description
///     legTimeSortCaption totalTimeSortCaption passingEndTimeSortCaption   headings of a leg
///     sortByName sortByClub sortByStartTime sortByFinishTime      tooltips of the sort links;
///     sortByLegTime sortByTotalTime sortByPassingEndTime          these go on with "finish" or
///     finish control                                              "control" and a number
///     timeLoss estimatedTime                                      tooltips of times
///     status_mp status_dnf status_disq status_dns                 instead of a result
///     timeDelimiters                                              three characters; empty: ":.,"
class clsLarkstoneOnlineTable {
 public:
#define LRK_TABLE_SETTING(name, type, initial) LRK_DECLARE_VALUE(name, type)
#define LRK_CELL_FORMAT(name, family, kind) LRK_DECLARE_VALUE(name, std::string)
#include "larkstone/online/table_settings.def"

  /// The text of the cell format for a kind of cell; of the plain one where the family has no such
  /// kind.
  const std::string& cellFormat(CellFamily family, CellKind kind) const;

  /// The course to render, nullptr for none (a table of captions alone). It stays the host's, who
  /// keeps it alive as long as it is set here. Times and places are shown once it is calculated.
  LRKCourse* course() const { return course_; }
  void course(LRKCourse* course) { course_ = course; }

  /// Replaces all captions by those of a language file (see Captions::load). False when the file
  /// cannot be read; the captions stay then.
  bool setLanguage(const std::string& languageFileName, int languageIndex) {
    return captions_.load(languageFileName, languageIndex);
  }
  /// A single caption. Captions enter the HTML as they stand, so they may hold markup.
  const std::string& caption(std::string_view key) const { return captions_.text(key); }
  void caption(std::string_view key, std::string text) { captions_.text(key, std::move(text)); }

  /// Orders the course's runners, ascending, and marks the column as sorted by: esorName by last
  /// name, first name and name, esorCustom by total time at the finish, any other key at that leg.
  /// A leg that the course does not have means the last one.
  void sort(enmSort sortBy, int legNo = -1);
  /// The arguments of the last sort().
  enmSort sortedBy() const { return sortedBy_; }
  int sortedByLegNo() const { return sortedByLegNo_; }

  /// Makes the three texts below anew from everything as it is now.
  void createHTMLTable();
  /// The TABLE element.
  const std::string& htmlTableString() const { return htmlTableString_; }
  /// The rules of its style sheet.
  const std::string& styleString() const { return styleString_; }
  /// The SCRIPT element that tints the runner under the mouse.
  const std::string& scriptString() const { return scriptString_; }
  /// How long createHTMLTable() took: "12.3 ms".
  const std::string& htmlTableCreationTime() const { return htmlTableCreationTime_; }

  /// Makes the same table as plain text from everything as it is now: cells with tabs between them,
  /// lines ended by CR LF, places in parentheses. Settings of looks and links do not matter to it.
  void createTextTable();
  const std::string& textTableString() const { return textTableString_; }
  const std::string& textTableCreationTime() const { return textTableCreationTime_; }

  static std::string colorToHexColor(Color color) { return larkstone::colorToHexColor(color); }
  static Color hexColorToColor(std::string_view hexColor) {
    return larkstone::hexColorToColor(hexColor);
  }

 private:
#define LRK_TABLE_SETTING(name, type, initial) type name##_ = initial;
#define LRK_CELL_FORMAT(name, family, kind) std::string name##_{initialCellFormat(CellKind::kind)};
#include "larkstone/online/table_settings.def"

  LRKCourse* course_ = nullptr;
  Captions captions_;
  enmSort sortedBy_ = esorUnsorted;
  int sortedByLegNo_ = 0;
  std::string htmlTableString_;
  std::string styleString_;
  std::string scriptString_;
  std::string htmlTableCreationTime_;
  std::string textTableString_;
  std::string textTableCreationTime_;
};

}  // namespace larkstone
