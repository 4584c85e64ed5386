#pragma once

// Pages as people leave them.

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "larkstone/core/text.hpp"

namespace larkstone::test {

inline std::string replaced(std::string text, const std::string& what, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
    text.replace(at, what.size(), by);
  }
  return text;
}

// Hands every tag, or what stands between tags, to change().
inline std::string changed(const std::string& page, bool tags,
                           const std::function<std::string(std::string)>& change) {
  std::string result;
  for (std::size_t at = 0; at < page.size();) {
    const bool tag = page[at] == '<';
    const std::size_t end =
        std::min(tag ? page.find('>', at) + 1 : page.find('<', at), page.size());
    const std::string piece = page.substr(at, end - at);
    result += tag == tags ? change(piece) : piece;
    at = end;
  }
  return result;
}

// A page as browsers, editors and mail programs leave it.
inline std::vector<std::pair<std::string, std::string>> treated(const std::string& page) {
  const auto withAttribute = [](const std::string& tag) {
    return tag[1] == '/' || tag.size() > 6 ? tag
                                           : tag.substr(0, tag.size() - 1) + "\n class=\"a\">";
  };
  const auto withoutBlanks = [](const std::string& text) {
    return replaced(text, "  ", "&nbsp; ");
  };
  const auto withNoBreak = [](const std::string& text) { return replaced(text, "  ", " \u00A0"); };
  return {
      {"as it was", page},
      {"windows-1252", windows1252FromUtf8(page)},
      {"byte-order mark", "\xEF\xBB\xBF" + page},
      {"references", replaced(replaced(page, "\u00F6", "&ouml;"), "\u00E4", "&#228;")},
      {"upper case", changed(page, true, [](const std::string& tag) { return uppered(tag); })},
      {"lower case", changed(page, true, [](const std::string& tag) { return lowered(tag); })},
      {"attributes", changed(page, true, withAttribute)},
      {"&nbsp;", changed(page, false, withoutBlanks)},
      {"no-break spaces", changed(page, false, withNoBreak)},
      {"CRLF", replaced(page, "\n", "\r\n")},
      {"CR", replaced(page, "\n", "\r")},
      {"CR CR LF", replaced(page, "\n", "\r\r\n")},
      {"no line end behind PRE", replaced(page, "<PRE>\n", "<PRE>")},
  };
}

}  // namespace larkstone::test
