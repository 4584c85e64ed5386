#include "larkstone/core/tag_value.hpp"

#include <cmath>
#include <cstdio>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

template <class... Ts>
struct Overloaded : Ts... {
  using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

std::string shortest(float value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
  return text;
}

}  // namespace

std::optional<double> numberOf(const TagValue& value) {
  using Number = std::optional<double>;
  const Number number =
      std::visit(Overloaded{[](std::monostate) -> Number { return std::nullopt; },
                            [](bool flag) -> Number { return flag ? 1 : 0; },
                            [](std::int32_t whole) -> Number { return whole; },
                            [](float single) -> Number { return static_cast<double>(single); },
                            [](Date date) -> Number { return date.day; },
                            [](const std::string& text) -> Number { return wholeNumber(text); }},
                 value);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<bool> flagFrom(const TagValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    const std::string_view word = trimmed(*text);
    if (equalNoCase(word, "true")) return true;
    if (equalNoCase(word, "false")) return false;
  }
  const std::optional<double> number = numberOf(value);
  return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<Date> dateFrom(const TagValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (const std::optional<Date> date = dateFromIso(trimmed(*text))) return date;
  }
  const std::optional<double> number = numberOf(value);
  return number ? std::optional(Date{*number}) : std::nullopt;
}

std::optional<std::string> textOf(const TagValue& value) {
  using Text = std::optional<std::string>;
  return std::visit(Overloaded{[](std::monostate) -> Text { return std::nullopt; },
                               [](bool flag) -> Text { return flag ? "1" : "0"; },
                               [](std::int32_t whole) -> Text { return std::to_string(whole); },
                               [](float single) -> Text { return shortest(single); },
                               [](Date date) -> Text { return toIsoText(date); },
                               [](const std::string& text) -> Text { return text; }},
                    value);
}

}  // namespace larkstone
