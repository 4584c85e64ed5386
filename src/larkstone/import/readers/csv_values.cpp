#include "larkstone/import/readers/csv_values.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "larkstone/core/date.hpp"
#include "larkstone/core/number.hpp"
#include "larkstone/core/time.hpp"

namespace larkstone {

namespace {

// Letters of the exporting programs' languages; the Cyrillic ones also as windows-1252 reads them.
enmGender genderOf(std::string_view text) {
  for (const std::string_view male : {"M", "H", "М", "Ì"}) {
    if (text == male) return egndMale;
  }
  for (const std::string_view female : {"W", "F", "K", "D", "N", "Ж", "Æ"}) {
    if (text == female) return egndFemale;
  }
  return egndUnknown;
}

template <class Set>
void ifInteger(std::string_view text, std::string_view what, const LineNotes& notes, Set set) {
  if (text.empty()) return;
  if (const auto number = csvInteger(text)) {
    set(*number);
  } else {
    notes(what, text);
  }
}

}  // namespace

std::optional<std::int32_t> csvInteger(std::string_view text) {
  std::int32_t plain = 0;
  const char* const end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, plain);
  if (error == std::errc() && behind == end) return plain;
  const auto number = wholeNumber(text);
  if (!number || std::trunc(*number) != *number) return std::nullopt;
  if (*number < std::numeric_limits<std::int32_t>::min() ||
      *number > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(*number);
}

Time readCsvTime(std::string_view text, std::string_view what, const LineNotes& notes) {
  if (text.empty()) return LRK_NO_TIME;
  const Time time = csvTime(text);
  if (isDisq(time) && !text.starts_with('-')) notes(what, text);
  return time;
}

Time sumOfTimes(Time a, Time b) {
  if (isDisq(a) || isDisq(b)) return LRK_NO_TIME;
  const std::int64_t sum = std::int64_t{a} + b;
  return sum < 0 || sum >= LRK_NO_TIME ? LRK_NO_TIME : static_cast<Time>(sum);
}

Code csvCode(std::string_view text) {
  const auto number = csvInteger(text);
  return number && *number >= 0 && *number < LRK_START_CODE ? static_cast<Code>(*number) : Code{0};
}

Code readCsvCode(std::string_view text, const LineNotes& notes) {
  const Code code = csvCode(text);
  if (code == 0 && !text.empty() && text != "0") notes("no control code", text);
  return code;
}

void readCsvStatus(std::string_view text, LRKRunner& runner, const LineNotes& notes) {
  constexpr enmStatus statuses[] = {estaOK,       estaDidNotStart,  estaDidNotFinish,
                                    estaMisPunch, estaDisqualified, estaOverTime};
  if (text.empty()) return;
  const auto number = csvInteger(text);
  if (number && *number >= 0 && *number < std::int32_t{std::size(statuses)}) {
    runner.status(statuses[*number]);
  } else {
    notes("unknown classifier", text);
  }
}

void readBirthYear(std::string_view text, LRKRunner& runner, const LineNotes& notes) {
  if (text.empty()) return;
  const auto number = csvInteger(text);
  if (!number || *number < 0) {
    notes("unreadable year of birth", text);
    return;
  }
  runner.birthDateFormat("YYYY");
  int year = *number;
  if (text.size() == 2) {
    year += year < 5 ? 2000 : 1900;
  } else if (text.size() != 4) {
    return;
  }
  const Date date = dateOf(CalendarDate{year, 1, 1});
  if (!(date == Date{})) runner.birthDate(date);
}

void readCsvLength(std::string_view text, LRKRunner& runner, const LineNotes& notes) {
  if (text.empty()) return;
  const auto number = wholeNumber(text);
  if (!number) {
    notes("unreadable course length", text);
    return;
  }
  // Truncated to centimetres, but not below what the text says: 1.15 km are 115000 cm.
  constexpr double binaryError = 1e-3;
  const double length = *number * (*number < 100 ? 100000 : 100) + binaryError;
  if (length >= 1) {
    runner.courseLength(length < std::numeric_limits<Length>::max()
                            ? static_cast<Length>(length)
                            : std::numeric_limits<Length>::max());
  }
}

void readCsvPerson(const CsvFile& row, const CsvPersonColumns& columns, LRKRunner& runner,
                   const LineNotes& notes) {
  const auto ifText = [&](int column, auto set) {
    const std::string_view text = row.field(column);
    if (!text.empty()) set(std::string(text));
  };
  ifText(columns.firstName, [&](std::string text) { runner.firstName(std::move(text)); });
  ifText(columns.surname, [&](std::string text) { runner.lastName(std::move(text)); });
  ifText(columns.name, [&](std::string text) { runner.name(std::move(text)); });
  for (const int column : {columns.card, columns.chip}) {
    ifInteger(row.field(column), "unreadable card number", notes,
              [&](std::int32_t number) { runner.cCardID(number); });
  }
  ifInteger(row.field(columns.databaseId), "unreadable database id", notes,
            [&](std::int32_t number) { runner.ID(number); });
  ifText(columns.gender, [&](const std::string& text) { runner.gender(genderOf(text)); });
  readBirthYear(row.field(columns.birthYear), runner, notes);
}

std::string_view CsvClassColumns::nameIn(const CsvFile& row) const {
  const std::string_view name = row.field(longName);
  return sharedName(name.empty() ? row.field(shortName) : name);
}

LRKCategory CsvClassColumns::categoryOf(const CsvFile& row) const {
  LRKCategory category;
  category.name(std::string(nameIn(row)));
  const std::string_view text = row.field(shortName);
  if (!text.empty()) category.shortName(std::string(text));
  if (const auto id = csvInteger(row.field(number))) category.ID(*id);
  return category;
}

}  // namespace larkstone
