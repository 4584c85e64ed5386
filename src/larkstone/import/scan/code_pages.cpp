#include "larkstone/import/scan/code_pages.hpp"

#include <optional>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

// The characters of the bytes 0x80 to 0xFF.
using Page = std::u16string_view;
constexpr Page centralEuropean =
    u"€\uFFFD‚\uFFFD„…†‡\uFFFD‰Š‹ŚŤŽŹ\uFFFD‘’“”•–—\uFFFD™š›śťžź"
    u"\u00A0ˇ˘Ł¤Ą¦§¨©Ş«¬\u00AD®Ż°±˛ł´µ¶·¸ąş»Ľ˝ľż"
    u"ŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎĐŃŇÓÔŐÖ×ŘŮÚŰÜÝŢß"
    u"ŕáâăäĺćçčéęëěíîďđńňóôőö÷řůúűüýţ˙";
constexpr Page cyrillic =
    u"ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–—\uFFFD™љ›њќћџ"
    u"\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї°±Ііґµ¶·ё№є»јЅѕї"
    u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ"
    u"абвгдежзийклмнопрстуфхцчшщъыьэюя";
static_assert(centralEuropean.size() == 128 && cyrillic.size() == 128);

// The text in a page; nothing when the page lacks one of its characters.
std::optional<std::string> bytesIn(Page page, std::string_view utf8) {
  std::string bytes;
  while (!utf8.empty()) {
    const std::string_view character = takeCharacter(utf8);
    if (character.size() == 1) {
      bytes += character;
      continue;
    }
    std::size_t place = 0;
    std::string candidate;
    for (; place < page.size() && candidate != character; ++place) {
      candidate.clear();
      appendUtf8(candidate, page[place]);
    }
    if (candidate != character) return std::nullopt;
    bytes += static_cast<char>(0x7F + place);
  }
  return bytes;
}

}  // namespace

std::string westernReading(std::string_view utf8) {
  std::string western = utf8FromWindows1252(windows1252FromUtf8(utf8));
  if (western == utf8) return western;
  for (const Page page : {centralEuropean, cyrillic}) {
    if (const auto bytes = bytesIn(page, utf8)) return utf8FromWindows1252(*bytes);
  }
  return std::string(utf8);
}

}  // namespace larkstone
