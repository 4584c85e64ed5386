#include "larkstone/core/text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace larkstone {

namespace {

// The characters of windows-1252 at 0x80 to 0x9F; the five free places keep their control codes.
constexpr std::array<char16_t, 32> highControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// Plain letters for U+0100 to U+017F, in order; those the page holds are found before.
constexpr std::string_view latinExtendedA =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLl"
    "NnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(latinExtendedA.size() == 0x80);

// Greek and Cyrillic letters read by their sound, at the least distance that one byte allows.
constexpr std::string_view greek = "ABGDEZHTIKLMNXOPR?STYFCPO";            // U+0391 to U+03A9
constexpr std::string_view cyrillic = "ABVGDEZZIJKLMNOPRSTUFHCCSS?Y?EUA";  // U+0410 to U+042F

struct Relative {
  char32_t character;
  char plain;
};
constexpr std::array<Relative, 26> relatives = {{
    {0x0218, 'S'},  {0x0219, 's'}, {0x021A, 'T'}, {0x021B, 't'}, {0x01CD, 'A'}, {0x01CE, 'a'},
    {0x01E6, 'G'},  {0x01E7, 'g'}, {0x1E9E, 'S'}, {0x2000, ' '}, {0x2002, ' '}, {0x2003, ' '},
    {0x2009, ' '},  {0x200A, ' '}, {0x2010, '-'}, {0x2011, '-'}, {0x2012, '-'}, {0x2015, '-'},
    {0x2032, '\''}, {0x2033, '"'}, {0x2044, '/'}, {0x202F, ' '}, {0x2212, '-'}, {0x02BC, '\''},
    {0x0401, 'E'},  {0x0451, 'e'},
}};

// Letters with two marks (U+1EA0 to U+1EF9), by their base letter.
constexpr std::string_view vietnamese =
    "AaAaAaAaAaAaAaAaAaAaAaAaEeEeEeEeEeEeEeEeIiIiOoOoOoOoOoOoOoOoOoOoOoOoUuUuUuUuUuUuUuYyYyYyYy";
static_assert(vietnamese.size() == 0x1EFA - 0x1EA0);

constexpr char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

constexpr bool isMark(char32_t c) { return c >= 0x300 && c <= 0x36F; }

struct Decoded {
  char32_t character = 0;
  std::size_t length = 0;  // 0: the bytes are not UTF-8
};

constexpr std::uint32_t continuation(std::string_view text, std::size_t at) {
  return static_cast<std::uint8_t>(text[at]) ^ 0x80U;  // above 0x3F when it is none
}

Decoded decode(std::string_view text) {
  const std::uint32_t lead = static_cast<std::uint8_t>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {};
  std::uint32_t value = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const std::uint32_t next = continuation(text, i);
    if (next > 0x3F) return {};
    value = value << 6 | next;
  }
  const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (overlong || surrogate || value > 0x10FFFF) return {};
  return {value, length};
}

char32_t characterOf(std::uint8_t byte) {
  return byte >= 0x80 && byte < 0xA0 ? highControls[byte - 0x80] : byte;
}

char plainRelative(char32_t c) {
  if (c >= 0x100 && c < 0x180) return latinExtendedA[c - 0x100];
  if (c >= 0x1EA0 && c < 0x1EFA) return vietnamese[c - 0x1EA0];
  if (c >= 0x391 && c <= 0x3A9) return greek[c - 0x391];
  if (c == 0x3C2) return 's';
  if (c >= 0x3B1 && c <= 0x3C9) return lowerAscii(greek[c - 0x3B1]);
  if (c >= 0x410 && c <= 0x42F) return cyrillic[c - 0x410];
  if (c >= 0x430 && c <= 0x44F) return lowerAscii(cyrillic[c - 0x430]);
  for (const Relative& relative : relatives) {
    if (relative.character == c) return relative.plain;
  }
  return '?';
}

char32_t lowerOf(char32_t c) {
  if (c < 0x80) return static_cast<unsigned char>(lowerAscii(static_cast<char>(c)));
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c == 0x178) return 0xFF;
  const bool evenIsUpper = (c >= 0x100 && c <= 0x137 && c != 0x130 && c != 0x131) ||
                           (c >= 0x14A && c <= 0x177) || (c >= 0x218 && c <= 0x21B) ||
                           (c >= 0x1EA0 && c < 0x1EFA);
  if (evenIsUpper) return c | 1;
  const bool oddIsUpper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (oddIsUpper) return c + (c & 1);
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 32;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  return c;
}

char32_t upperOf(char32_t c) {
  if (c >= 'a' && c <= 'z') return c - 32;
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 32;
  if (c == 0xFF) return 0x178;
  if (c == 0x161 || c == 0x153 || c == 0x17E) return c - 1;
  return c;
}

// Hands on every character, and every byte that is not part of one.
template <class UseCharacter, class UseByte>
void forEachCharacter(std::string_view utf8, UseCharacter useCharacter, UseByte useByte) {
  while (!utf8.empty()) {
    const Decoded next = decode(utf8);
    if (next.length == 0) {
      useByte(utf8.front());
    } else {
      useCharacter(next.character);
    }
    utf8.remove_prefix(std::max<std::size_t>(next.length, 1));
  }
}

template <class Change>
std::string changed(std::string_view utf8, Change change) {
  std::string result;
  result.reserve(utf8.size());
  forEachCharacter(
      utf8, [&](char32_t character) { appendUtf8(result, change(character)); },
      [&](char byte) { result += byte; });
  return result;
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string lowered(std::string_view utf8) { return changed(utf8, lowerOf); }
std::string uppered(std::string_view utf8) { return changed(utf8, upperOf); }

std::string escapedMarkup(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  for (const char c : utf8) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

bool equalNoCase(std::string_view a, std::string_view b) {
  if (isAscii(a) && isAscii(b)) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
  }
  return lowered(a) == lowered(b);
}

std::string_view beginningOf(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && (text[most] & 0xC0) == 0x80) --most;
  return text.substr(0, most);
}

std::string_view takeCharacter(std::string_view& utf8) {
  if (utf8.empty()) return {};
  const std::size_t length = std::max<std::size_t>(decode(utf8).length, 1);
  const std::string_view character = utf8.substr(0, length);
  utf8.remove_prefix(length);
  return character;
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    if ((bytes.front() & 0x80) == 0) {
      bytes.remove_prefix(1);
      continue;
    }
    const std::size_t length = decode(bytes).length;
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

void appendUtf8(std::string& text, char32_t c) {
  const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6);
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    if (c >= 0xD800 && c <= 0xDFFF) return;
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  } else if (c <= 0x10FFFF) {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

std::string utf8FromWindows1252(std::string_view bytes) {
  if (isAscii(bytes)) return std::string(bytes);
  std::string result;
  result.reserve(bytes.size() + bytes.size() / 8);
  for (const char byte : bytes) appendUtf8(result, characterOf(static_cast<std::uint8_t>(byte)));
  return result;
}

char windows1252Byte(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c < 0x100)) return static_cast<char>(c);
  const auto* const found = std::find(highControls.begin(), highControls.end(), c);
  if (found != highControls.end()) {
    return static_cast<char>(0x80 + (found - highControls.begin()));
  }
  return plainRelative(c);
}

std::string windows1252FromUtf8(std::string_view utf8) {
  if (isAscii(utf8)) return std::string(utf8);
  std::string result;
  result.reserve(utf8.size());
  // A combining mark behind its letter: the letter alone is the plainest relative.
  forEachCharacter(
      utf8,
      [&](char32_t character) {
        if (!isMark(character)) result += windows1252Byte(character);
      },
      [&](char byte) { result += byte; });
  return result;
}

namespace {

const std::array<char, 256>& loweredBytes() {
  static const std::array<char, 256> lowered = [] {
    std::array<char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
      table[i] = windows1252Byte(lowerOf(characterOf(static_cast<std::uint8_t>(i))));
    }
    return table;
  }();
  return lowered;
}

}  // namespace

char lowered1252(char byte) { return loweredBytes()[static_cast<std::uint8_t>(byte)]; }

char uppered1252(char byte) {
  return windows1252Byte(upperOf(characterOf(static_cast<std::uint8_t>(byte))));
}

std::string lowered1252(std::string_view bytes) {
  std::string result(bytes);
  const std::array<char, 256>& lower = loweredBytes();
  for (char& byte : result) byte = lower[static_cast<std::uint8_t>(byte)];
  return result;
}

}  // namespace larkstone
