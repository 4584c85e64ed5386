#pragma once

// The bytes of an XML file as text that a parser takes, whatever its encoding is or claims to be.

#include <string>
#include <string_view>

namespace larkstone {

/// Whether the bytes are UTF-16: with a byte-order mark, or beginning with "<" in two bytes.
bool isUtf16(std::string_view bytes);
std::string utf8FromUtf16(std::string_view bytes);

/// UTF-8 without byte-order mark. What the file declares about its encoding is not believed: bytes
/// that are valid UTF-8 are UTF-8, all others windows-1252.
std::string xmlText(std::string bytes);

/// Blanks out the document type declaration from "<!DOCTYPE" through the next ">". False when that
/// leaves a piece of it before the document: declarations of entities are not read.
bool removeDocumentType(std::string& text);

/// Turns the misspelt end tag "</Results>" of a result list into "</ResultList>".
void repairEndTag(std::string& text);

}  // namespace larkstone
