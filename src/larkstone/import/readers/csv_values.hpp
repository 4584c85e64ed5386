#pragma once

// The fields of delimited result lists as values.

#include <cstdint>
#include <optional>
#include <string_view>

#include "larkstone/core/types.hpp"
#include "larkstone/import/csv_file.hpp"
#include "larkstone/import/reader_run.hpp"

namespace larkstone {

/// The control that stands for the finish among radio controls, and how many fields each of them
/// has: number, control, time and place.
inline constexpr Code csvRadioFinish = 999;
inline constexpr int csvRadioFields = 4;

/// A whole number within 32 bits, nothing for other texts.
std::optional<std::int32_t> csvInteger(std::string_view text);

/// A time; LRK_NO_TIME for other texts. What is neither empty nor dashes is noted.
Time readCsvTime(std::string_view text, std::string_view what, const LineNotes& notes);

/// The sum of two times; LRK_NO_TIME when one is none or the sum no time.
Time sumOfTimes(Time a, Time b);

/// A control code; 0 for a text that is none.
Code csvCode(std::string_view text);
/// The same with a note.
Code readCsvCode(std::string_view text, const LineNotes& notes);

/// 0 to 5 as SportSoftware counts them; any other text leaves the status as it is.
void readCsvStatus(std::string_view text, LRKRunner& runner, const LineNotes& notes);

/// A year of birth, of two digits one from 1905 to 2004; what is no year is noted.
void readBirthYear(std::string_view text, LRKRunner& runner, const LineNotes& notes);

/// The length of the course: kilometres below 100, else metres.
void readCsvLength(std::string_view text, LRKRunner& runner, const LineNotes& notes);

/// Where a row tells of a person; -1 for what it does not.
struct CsvPersonColumns {
  int card = -1;
  int chip = -1;  // another word for the card
  int databaseId = -1;
  int firstName = -1;
  int surname = -1;
  int name = -1;
  int gender = -1;
  int birthYear = -1;
};

void readCsvPerson(const CsvFile& row, const CsvPersonColumns& columns, LRKRunner& runner,
                   const LineNotes& notes);

/// Where a row tells of its class; -1 for what it does not.
struct CsvClassColumns {
  int number = -1;
  int shortName = -1;
  int longName = -1;

  /// False for a row that is cut off before the name.
  bool reachedBy(const CsvFile& row) const {
    return row.noOfFields() > (shortName >= 0 ? shortName : longName);
  }
  /// The long name, or the short one where that is empty.
  std::string_view nameIn(const CsvFile& row) const;
  /// A category with names and number.
  LRKCategory categoryOf(const CsvFile& row) const;
};

}  // namespace larkstone
