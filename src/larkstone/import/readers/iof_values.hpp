#pragma once

// The texts of IOF XML lists as values: statuses, times, dates, countries.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "larkstone/core/date.hpp"
#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/platform/xml.hpp"

namespace larkstone {

/// Whatever the case. An unknown text is nothing; readers take the first value of the enumeration
/// for it and tell of it.
std::optional<enmStatus> statusOf(std::string_view text);
std::optional<enmIDType> idTypeOf(std::string_view text);
std::optional<enmEventForm> eventFormOf(std::string_view text);
std::optional<enmResultListStatus> listStatusOf(std::string_view text);
/// "M" and "F"; unknown for any other text.
enmGender genderOf(std::string_view text);
/// "SI", "Emit" and "manual" in their usual spelling, "other" for an empty text, else the text.
std::string punchingUnitOf(std::string_view text);

/// A whole number within 32 bits.
std::optional<std::int32_t> integerOf(std::string_view text);

/// The number that a control code begins with, 0 for one without a number or beyond the codes that
/// can stand on a course ("F1" is 0, "100-2" is 100).
Code controlCodeOf(std::string_view text);

/// Hundredths of a number of seconds, halves to the even neighbour ("3723.4", "519,2"); nothing for
/// a text that is no number, LRK_NO_TIME for one beyond all times.
std::optional<Time> secondsOf(std::string_view text);
/// A running time like "1:02:03", "27:52.5" or, for a control before the start, "-0:10"; behind
/// colons a full stop or comma begins the fraction of a second. LRK_NO_TIME for any other text
/// ("-----", "--:--:--").
Time runningTimeOf(std::string_view text);
/// A time of day like "10:00:00", "10:00" or "10:00:00.5". LRK_NO_TIME for any other text.
Time clockTimeOf(std::string_view text);
/// The time of day as a date-time writes it, whatever its offset: "2026-05-03T10:00:00.5+02:00";
/// seconds may be left out, so may the date. LRK_NO_TIME for any other text.
Time timeOfDayOf(std::string_view text);

/// A date in the order of its format ("DD.MM.YYYY"), without one in ISO order or, where the year
/// stands last, with the day first. A year alone is its first of January. Nothing for other texts.
std::optional<Date> dateOf(std::string_view text, std::string_view format = {});

struct Country {
  std::string code;
  std::string name;
};
/// What an element says about a country: itself (attribute code, text), its CountryId and Country
/// in either form. The code "other" stands for none.
Country countryOf(XmlNode element);
/// The same for an element that only holds CountryId and Country.
Country countryWithin(XmlNode element);

/// Calls use(text) unless the element is absent or empty.
template <class Use>
void ifText(XmlNode element, Use use) {
  std::string text = element.text();
  if (!text.empty()) use(std::move(text));
}

/// Hands on what an id element says: its number, its type and its manager. An empty one says
/// nothing.
template <class Number, class Type, class Manager>
void readId(XmlNode element, Number number, Type type, Manager manager) {
  const std::string text = element.text();
  if (text.empty()) return;
  if (const auto value = integerOf(text)) number(*value);
  if (element.hasAttribute("type")) type(idTypeOf(element.attribute("type")).value_or(eidtInt));
  const std::string_view name = element.attribute("idManager");
  if (!name.empty()) manager(std::string(name));
}

}  // namespace larkstone
