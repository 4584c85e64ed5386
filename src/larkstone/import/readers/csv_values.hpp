#pragma once

// The fields of delimited result lists as values.

#include <cstdint>
#include <optional>
#include <string_view>

#include "larkstone/core/types.hpp"
#include "larkstone/import/csv_file.hpp"
#include "larkstone/import/reader_run.hpp"

namespace larkstone {

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

}  // namespace larkstone
