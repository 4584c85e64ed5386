#include "larkstone/import/xml_preparation.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/import/scan/text_encoding.hpp"
#include "larkstone/platform/encoding.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr std::string_view blanks = " \t\r\n";

// Where the document's outermost element or its document type begins: behind blanks, comments and
// processing instructions.
std::size_t endOfProlog(std::string_view text, std::size_t at) {
  for (;;) {
    at = text.find_first_not_of(blanks, at);
    if (at == nowhere) return nowhere;
    const std::string_view rest = text.substr(at);
    std::string_view end;
    if (rest.starts_with("<?")) {
      end = "?>";
    } else if (rest.starts_with("<!--")) {
      end = "-->";
    } else {
      return at;
    }
    const auto found = rest.find(end);
    if (found == nowhere) return nowhere;
    at += found + end.size();
  }
}

// The encoding in the XML declaration; empty without one.
std::string_view declaredEncoding(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  const auto word = declaration.find("encoding");
  if (word == nowhere) return {};
  const auto begin = declaration.find_first_of("\"'", word);
  if (begin == nowhere) return {};
  const auto end = declaration.find(declaration[begin], begin + 1);
  return end == nowhere ? std::string_view() : declaration.substr(begin + 1, end - begin - 1);
}

// Control characters of the upper half are in no list: bytes that mean them are of another page.
bool holdsUpperControls(std::string_view utf8) {
  for (auto at = utf8.find('\xC2'); at != nowhere; at = utf8.find('\xC2', at + 2)) {
    if (at + 1 < utf8.size() && static_cast<unsigned char>(utf8[at + 1]) < 0xA0) return true;
  }
  return false;
}

// Behind a quoted text, comment or processing instruction that begins here, else behind the
// character.
std::size_t endOfPiece(std::string_view text, std::size_t at) {
  constexpr std::pair<std::string_view, std::string_view> pieces[] = {
      {"<!--", "-->"}, {"<?", "?>"}, {"\"", "\""}, {"'", "'"}};
  for (const auto& [begin, end] : pieces) {
    if (!text.substr(at).starts_with(begin)) continue;
    const auto found = text.find(end, at + begin.size());
    return found == nowhere ? nowhere : found + end.size();
  }
  return at + 1;
}

// Behind the document type declaration that begins here, its own declarations in brackets included.
std::size_t endOfDocumentType(std::string_view text, std::size_t begin) {
  bool inBrackets = false;
  for (std::size_t at = begin; at < text.size();) {
    if (text[at] == '[') inBrackets = true;
    if (text[at] == ']') inBrackets = false;
    if (text[at] == '>' && !inBrackets) return at + 1;
    at = endOfPiece(text, at);
  }
  return nowhere;
}

}  // namespace

std::string xmlText(std::string bytes) {
  // Latin-1 is a part of windows-1252, and what else is declared for it holds for the mark as well.
  const std::string encoding = lowered(declaredEncoding(bytes));
  const bool isOther = !encoding.empty() && encoding != "utf-8" && encoding != "iso-8859-1" &&
                       encoding != "windows-1252" && encoding != "cp1252";
  if (isOther && !isUtf16(bytes) && !isUtf8(bytes)) {
    std::optional<std::string> text = utf8From(encoding, bytes);
    if (text && !holdsUpperControls(*text)) return *std::move(text);
  }
  return utf8Text(std::move(bytes));
}

void removeDocumentType(std::string& text) {
  const auto begin = endOfProlog(text, 0);
  if (begin == nowhere || !std::string_view(text).substr(begin).starts_with("<!DOCTYPE")) return;
  auto end = endOfDocumentType(text, begin);
  if (end == nowhere) end = text.find('>', begin) + 1;
  if (end == 0) return;  // the parser refuses it
  std::fill(text.begin() + static_cast<std::ptrdiff_t>(begin),
            text.begin() + static_cast<std::ptrdiff_t>(end), ' ');
}

void repairEndTag(std::string& text) {
  constexpr std::string_view misspelt = "</Results>";
  const auto last = text.rfind("</");
  if (last != nowhere && text.compare(last, misspelt.size(), misspelt) == 0) {
    text.replace(last, misspelt.size(), "</ResultList>");
  }
}

bool loadXml(const std::string& path, XmlDocument& document) {
  std::string bytes;
  if (!readFile(path, bytes)) return false;
  std::string text = xmlText(std::move(bytes));
  removeDocumentType(text);
  repairEndTag(text);
  return document.parse(std::move(text));
}

}  // namespace larkstone
