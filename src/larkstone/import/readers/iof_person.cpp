#include "larkstone/import/readers/iof_person.hpp"

#include <utility>

#include "larkstone/core/text.hpp"

namespace larkstone {

void readBirthDate(std::string_view text, std::string_view format, LRKRunner& runner,
                   const IofNotes& notes) {
  if (text.empty()) return;
  const auto date = dateOf(text, format);
  if (!date) {
    notes("unreadable birth date", text);
    return;
  }
  const bool yearOnly = text.size() == 4;
  if (format.empty() && yearOnly) format = "YYYY";
  runner.birthDate(*date);
  if (!format.empty()) runner.birthDateFormat(std::string(format));
}

void readNationality(XmlNode element, LRKRunner& runner) {
  Country country = countryOf(element);
  if (!country.code.empty()) runner.nationalityCode(std::move(country.code));
  if (!country.name.empty()) runner.nationality(std::move(country.name));
}

void readClubCountry(Country country, LRKRunner& runner) {
  if (!country.code.empty()) runner.clubCountryCode(std::move(country.code));
  if (!country.name.empty()) runner.clubCountry(std::move(country.name));
}

enmStatus readStatus(std::string_view text, const IofNotes& notes) {
  const enmStatus status = statusFromIof(text);
  if (status == estaOK && !equalNoCase(text, iofStatusText(estaOK))) notes("unknown status", text);
  return status;
}

void readCardNumber(std::string_view text, LRKRunner& runner, const IofNotes& notes) {
  if (text.empty()) return;
  if (const auto number = integerOf(text)) {
    runner.cCardID(*number);
  } else {
    notes("unreadable card number", text);
  }
}

Code readControlCode(std::string_view text, const IofNotes& notes) {
  const Code code = controlCodeOf(text);
  if (code == 0) notes("no number in control code", text);
  return code;
}

void addSplit(const IofSplit& split, Time start, LRKRunner& runner, const IofNotes& notes) {
  const bool valid = !isDisq(start) && !isDisq(split.time) && !isDisq(start + split.time);
  LRKPunches& punches = split.additional ? runner.extraPunches() : runner.punches();
  if (punches.add(valid ? start + split.time : LRK_NO_TIME, split.code) < 0) {
    notes("too many punches");
  }
}

}  // namespace larkstone
