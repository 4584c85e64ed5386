#pragma once

// The texts of IOF XML lists as values: numbers, times, dates, countries.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "larkstone/core/iof_texts.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/import/scan/date_text.hpp"
#include "larkstone/platform/xml.hpp"

namespace larkstone {

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

/// The same for an attribute.
template <class Use>
void ifAttribute(XmlNode element, std::string_view name, Use use) {
  const std::string_view text = element.attribute(name);
  if (!text.empty()) use(text);
}

/// Hands on what an id element says: its number, its type and its manager. An empty one says
/// nothing.
template <class Number, class Type, class Manager>
void readId(XmlNode element, Number number, Type type, Manager manager) {
  const std::string text = element.text();
  if (text.empty()) return;
  if (const auto value = integerOf(text)) number(*value);
  ifAttribute(element, "type", [&](std::string_view name) { type(idTypeFromIof(name)); });
  ifAttribute(element, "idManager", [&](std::string_view name) { manager(std::string(name)); });
}

}  // namespace larkstone
