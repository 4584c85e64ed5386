#include "larkstone/core/text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

#include "larkstone/core/letters.hpp"

namespace larkstone {

namespace {

// The characters of windows-1252 at 0x80 to 0x9F; the five free places keep their control codes.
constexpr std::array<char16_t, 32> highControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Marks that stand on the letter before them: the blocks of combining diacritical marks.
constexpr bool isMark(char32_t c) {
  return (c >= 0x300 && c <= 0x36F) || (c >= 0x1AB0 && c <= 0x1AFF) ||
         (c >= 0x1DC0 && c <= 0x1DFF) || (c >= 0x20D0 && c <= 0x20FF) ||
         (c >= 0xFE20 && c <= 0xFE2F);
}

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

// The byte of a character that the page holds.
std::optional<char> heldByte(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c < 0x100)) return static_cast<char>(c);
  const auto* const found = std::find(highControls.begin(), highControls.end(), c);
  if (found == highControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - highControls.begin()));
}

// How many bytes of ASCII a text begins with.
std::size_t asciiLength(std::string_view text) {
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & 0x8080808080808080U) != 0) break;
  }
  while (length < text.size() && (text[length] & 0x80) == 0) ++length;
  return length;
}

bool isAscii(std::string_view text) { return asciiLength(text) == text.size(); }

// Every character by itself; bytes that are not part of one stay.
template <class Change>
std::string changed(std::string_view utf8, Change change) {
  std::string result;
  result.reserve(utf8.size());
  while (!utf8.empty()) {
    const Decoded next = decode(utf8);
    if (next.length <= 1) {
      result += next.length == 0 ? utf8.front() : static_cast<char>(change(next.character));
      utf8.remove_prefix(1);
    } else {
      appendUtf8(result, change(next.character));
      utf8.remove_prefix(next.length);
    }
  }
  return result;
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
  const std::optional<char> held = heldByte(c);
  return held ? *held : plainestRelative(c);
}

bool windows1252Holds(std::string_view utf8) {
  utf8.remove_prefix(asciiLength(utf8));
  while (!utf8.empty()) {
    const Decoded next = decode(utf8);
    if (next.length > 0 && !heldByte(next.character)) return false;
    utf8.remove_prefix(std::max<std::size_t>(next.length, 1));
    utf8.remove_prefix(asciiLength(utf8));
  }
  return true;
}

std::string windows1252FromUtf8(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  while (!utf8.empty()) {
    const std::size_t ascii = asciiLength(utf8);
    result += utf8.substr(0, ascii);
    utf8.remove_prefix(ascii);
    if (utf8.empty()) break;
    const Decoded next = decode(utf8);
    if (next.length == 0) {
      result += utf8.front();
    } else if (!isMark(next.character)) {
      result += windows1252Byte(next.character);
    }
    utf8.remove_prefix(std::max<std::size_t>(next.length, 1));
  }
  return result;
}

namespace {

// The bytes in another case. A letter whose other case the page lacks stays.
std::array<char, 256> bytesIn(char32_t (*otherCase)(char32_t)) {
  std::array<char, 256> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char32_t other = otherCase(characterOf(static_cast<std::uint8_t>(i)));
    bytes[i] = heldByte(other).value_or(static_cast<char>(i));
  }
  return bytes;
}

const std::array<char, 256>& loweredBytes() {
  static const std::array<char, 256> lowered = bytesIn(lowerOf);
  return lowered;
}

}  // namespace

char lowered1252(char byte) { return loweredBytes()[static_cast<std::uint8_t>(byte)]; }

char uppered1252(char byte) {
  static const std::array<char, 256> uppered = bytesIn(upperOf);
  return uppered[static_cast<std::uint8_t>(byte)];
}

std::string lowered1252(std::string_view bytes) {
  std::string result(bytes);
  const std::array<char, 256>& lower = loweredBytes();
  for (char& byte : result) byte = lower[static_cast<std::uint8_t>(byte)];
  return result;
}

}  // namespace larkstone
