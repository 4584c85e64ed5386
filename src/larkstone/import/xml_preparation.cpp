#include "larkstone/import/xml_preparation.hpp"

#include <algorithm>
#include <string_view>

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

}  // namespace

bool removeDocumentType(std::string& text) {
  const auto begin = endOfProlog(text, 0);
  if (begin == nowhere || !std::string_view(text).substr(begin).starts_with("<!DOCTYPE")) {
    return true;
  }
  const auto end = text.find('>', begin);
  if (end == nowhere) return true;  // the parser refuses it
  std::fill(text.begin() + static_cast<std::ptrdiff_t>(begin),
            text.begin() + static_cast<std::ptrdiff_t>(end) + 1, ' ');
  const auto document = endOfProlog(text, end + 1);
  return document == nowhere ||
         (text[document] == '<' && !std::string_view(text).substr(document).starts_with("<!"));
}

void repairEndTag(std::string& text) {
  constexpr std::string_view misspelt = "</Results>";
  const auto last = text.rfind("</");
  if (last != nowhere && text.compare(last, misspelt.size(), misspelt) == 0) {
    text.replace(last, misspelt.size(), "</ResultList>");
  }
}

}  // namespace larkstone
