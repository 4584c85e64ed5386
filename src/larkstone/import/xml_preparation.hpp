#pragma once

// The bytes of an XML list made into a document.

#include <string>

#include "larkstone/platform/xml.hpp"

namespace larkstone {

/// The bytes as UTF-8 without byte-order mark. The encoding that the list declares is believed
/// unless the bytes contradict it: what is valid UTF-8 is UTF-8, and bytes that the declared
/// encoding has no characters for are read as if nothing was declared (see utf8Text()).
std::string xmlText(std::string bytes);

/// Blanks out the document type declaration with all that it declares: nothing of it is expanded.
/// One that does not end as it should goes through the next ">".
void removeDocumentType(std::string& text);

/// Turns the misspelt end tag "</Results>" of a result list into "</ResultList>".
void repairEndTag(std::string& text);

/// Reads a list through all of these. False for a file that cannot be read and for a text that is
/// no XML.
bool loadXml(const std::string& path, XmlDocument& document);

}  // namespace larkstone
