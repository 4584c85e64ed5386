#include "larkstone/import/scan/text_encoding.hpp"

#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// The first byte at or behind `at` that is not ASCII; the size of the text when there is none.
std::size_t firstNonAscii(std::string_view text, std::size_t at) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  for (; at + 8 <= text.size(); at += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, 8);
    if ((word & highBits) != 0) break;
  }
  while (at < text.size() && (text[at] & 0x80) == 0) ++at;
  return at;
}

// Calls use(begin, end) for every run of bytes that are not ASCII; stops when it says false.
template <class Use>
bool eachNonAsciiRun(std::string_view text, Use use) {
  for (std::size_t begin = firstNonAscii(text, 0); begin < text.size();) {
    std::size_t end = begin;
    while (end < text.size() && (text[end] & 0x80) != 0) ++end;
    if (!use(begin, end)) return false;
    begin = firstNonAscii(text, end);
  }
  return true;
}

// Valid UTF-8, judged at the speed of the ASCII between.
bool isUtf8Text(std::string_view text) {
  return eachNonAsciiRun(text, [&](std::size_t begin, std::size_t end) {
    return isUtf8(text.substr(begin, end - begin));
  });
}

std::string fromPage(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  std::size_t copied = 0;
  eachNonAsciiRun(bytes, [&](std::size_t begin, std::size_t end) {
    text += bytes.substr(copied, begin - copied);
    text += utf8FromWindows1252(bytes.substr(begin, end - begin));
    copied = end;
    return true;
  });
  return text += bytes.substr(copied);
}

// The text when it is UTF-8 in spite of the bytes that belong to no character: when there are more
// characters than such bytes, or when it is `certain`.
std::optional<std::string> mended(std::string_view bytes, bool certain) {
  std::string text;
  text.reserve(bytes.size());
  std::size_t characters = 0;
  std::size_t strays = 0;
  std::size_t copied = 0;
  eachNonAsciiRun(bytes, [&](std::size_t begin, std::size_t end) {
    text += bytes.substr(copied, begin - copied);
    std::string_view run = bytes.substr(begin, end - begin);
    while (!run.empty()) {
      const std::string_view character = takeCharacter(run);
      const bool isStray = character.size() == 1;
      ++(isStray ? strays : characters);
      text += isStray ? utf8FromWindows1252(character) : character;
    }
    copied = end;
    return true;
  });
  if (!certain && characters <= strays) return std::nullopt;
  return text += bytes.substr(copied);
}

// Bytes that are UTF-8, or nothing for those of the code page; without byte-order mark either way.
std::optional<std::string> asUtf8(std::string& bytes) {
  const bool marked = bytes.starts_with(utf8Mark);
  if (marked) bytes.erase(0, utf8Mark.size());
  if (isUtf8Text(bytes)) return std::move(bytes);
  return mended(bytes, marked);
}

}  // namespace

bool isUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv) ||
         bytes.starts_with("<\0"sv) || bytes.starts_with("\0<"sv);
}

std::string utf8FromUtf16(std::string_view bytes) {
  const bool bigEndian = bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<"sv);
  const auto unitAt = [&](std::size_t i) {
    const auto first = static_cast<std::uint8_t>(bytes[i]);
    const auto second = static_cast<std::uint8_t>(bytes[i + 1]);
    return static_cast<char32_t>(bigEndian ? first << 8 | second : second << 8 | first);
  };
  std::string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const char32_t unit = unitAt(i);
    if (i == 0 && unit == 0xFEFF) continue;
    const bool leads = unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size();
    const char32_t next = leads ? unitAt(i + 2) : 0;
    if (leads && next >= 0xDC00 && next < 0xE000) {
      appendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      i += 2;
    } else {
      appendUtf8(text, unit);  // nothing for half a pair
    }
  }
  return text;
}

std::string utf8Text(std::string bytes) {
  if (isUtf16(bytes)) return utf8FromUtf16(bytes);
  std::optional<std::string> text = asUtf8(bytes);
  return text ? *std::move(text) : fromPage(bytes);
}

std::string windows1252Text(std::string bytes) {
  if (isUtf16(bytes)) return windows1252FromUtf8(utf8FromUtf16(bytes));
  const std::optional<std::string> text = asUtf8(bytes);
  if (!text) return bytes;
  const bool ascii = firstNonAscii(*text, 0) == text->size();
  return ascii ? *text : windows1252FromUtf8(*text);
}

}  // namespace larkstone
