#include "larkstone/import/scan/html_text.hpp"

#include <charconv>
#include <cstdint>
#include <optional>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/fields.hpp"

namespace larkstone {

namespace {

struct Entity {
  std::string_view name;
  char32_t character;
};

constexpr Entity entities[] = {
    {"uuml", 0xFC},   {"eacute", 0xE9}, {"acirc", 0xE2},  {"auml", 0xE4},   {"agrave", 0xE0},
    {"aring", 0xE5},  {"ccedil", 0xE7}, {"ecirc", 0xEA},  {"euml", 0xEB},   {"egrave", 0xE8},
    {"iuml", 0xEF},   {"icirc", 0xEE},  {"igrave", 0xEC}, {"aelig", 0xE6},  {"ocirc", 0xF4},
    {"ouml", 0xF6},   {"ograve", 0xF2}, {"ucirc", 0xFB},  {"ugrave", 0xF9}, {"yuml", 0xFF},
    {"oslash", 0xF8}, {"aacute", 0xE1}, {"iacute", 0xED}, {"oacute", 0xF3}, {"uacute", 0xFA},
    {"ntilde", 0xF1}, {"atilde", 0xE3}, {"eth", 0xF0},    {"szlig", 0xDF},  {"otilde", 0xF5},
    {"yacute", 0xFD}, {"nbsp", ' '},    {"amp", '&'},     {"lt", '<'},      {"gt", '>'},
    {"quot", '"'},    {"apos", '\''},
};

// The longest reference worth a look; a ";" further away belongs to something else.
constexpr std::size_t longestReference = 32;

// "#252" or "#xFC": below 256 a byte of the page, above a character of its own.
std::optional<std::string> numericText(std::string_view number) {
  int base = 10;
  if (number.starts_with('x') || number.starts_with('X')) {
    base = 16;
    number.remove_prefix(1);
  }
  std::uint32_t value = 0;
  const char* const end = number.data() + number.size();
  const auto result = std::from_chars(number.data(), end, value, base);
  if (result.ec != std::errc() || result.ptr != end || value == 0) return std::nullopt;
  if (value < 256) return std::string(1, static_cast<char>(value));
  std::string utf8;
  appendUtf8(utf8, value);
  if (utf8.empty()) return std::nullopt;
  return windows1252FromUtf8(utf8);
}

std::optional<std::string> referenceText(std::string_view reference) {
  if (reference.starts_with('#')) return numericText(reference.substr(1));
  if (reference.empty()) return std::nullopt;
  const bool upper = reference.front() == uppered1252(reference.front());
  const std::string name = lowered1252(reference);
  for (const Entity& entity : entities) {
    if (entity.name != name) continue;
    const char byte = windows1252Byte(entity.character);
    return std::string(1, upper ? uppered1252(byte) : byte);
  }
  return std::nullopt;
}

// Takes a reference off the text that follows its "&", and returns what it stands for. One that is
// not known leaves the text alone, so that tags and references behind it are still read.
std::string takeReference(std::string_view& text) {
  const auto semicolon = text.substr(0, longestReference).find(';');
  if (semicolon == std::string_view::npos) return "&";
  const auto decoded = referenceText(text.substr(0, semicolon));
  if (!decoded) return "&";
  text.remove_prefix(semicolon + 1);
  return *decoded;
}

std::string_view breakAfter(std::string_view tag) {
  const std::string name = lowered1252(tag.substr(0, 4));
  if (name == "/td") return "\t";
  if (name == "/tw") return "\r\n";
  return {};
}

}  // namespace

std::string stripTags(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    result += popField(text, "<");
    removeThrough(text, ">");
  }
  return result;
}

std::string htmlToText(std::string_view html) {
  std::string result;
  for (;;) {
    const auto mark = html.find_first_of("&<");
    result += html.substr(0, mark);
    if (mark == std::string_view::npos) return result;
    const bool reference = html[mark] == '&';
    html.remove_prefix(mark + 1);
    if (reference) {
      result += takeReference(html);
      continue;
    }
    const auto end = html.find('>');
    if (end == std::string_view::npos) return result;
    result += breakAfter(html.substr(0, end));
    html.remove_prefix(end + 1);
  }
}

}  // namespace larkstone
