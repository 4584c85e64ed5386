#include "larkstone/event/xml_lines.hpp"

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

// Without the characters that XML has no form for: controls but tab and line ends, and the two code
// points at the end of the basic plane.
std::string allowedInXml(std::string_view utf8) {
  std::string kept;
  kept.reserve(utf8.size());
  while (!utf8.empty()) {
    const char c = utf8.front();
    if (utf8.starts_with("\xEF\xBF\xBE") || utf8.starts_with("\xEF\xBF\xBF")) {
      utf8.remove_prefix(3);
      continue;
    }
    const bool control =
        static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
    if (!control) kept += c;
    utf8.remove_prefix(1);
  }
  return kept;
}

// Bytes that are not UTF-8 are taken for characters of the code page.
std::string contentOf(std::string_view text) {
  if (isUtf8(text)) return escapedMarkup(allowedInXml(text));
  return contentOf(utf8FromWindows1252(windows1252FromUtf8(text)));
}

}  // namespace

XmlTag& XmlTag::with(std::string_view attribute, std::string_view value) {
  attributes_.append(" ").append(attribute).append("=\"");
  for (const char c : contentOf(value)) {
    if (c == '"') {
      attributes_ += "&quot;";
    } else {
      attributes_ += c;
    }
  }
  attributes_ += '"';
  return *this;
}

std::string XmlTag::element(std::string_view content) const {
  return start() + contentOf(content) + "</" + name_ + ">";
}

void XmlLines::line(std::string_view markup) {
  file_.write(std::string(depth_ * form_.indentation, ' '));
  file_.write(form_.codePage ? windows1252FromUtf8(markup) : markup);
  file_.write(form_.lineEnd);
}

void XmlLines::open(const XmlTag& tag) {
  line(tag.start());
  ++depth_;
}

void XmlLines::close(std::string_view name) {
  --depth_;
  line("</" + std::string(name) + ">");
}

}  // namespace larkstone
