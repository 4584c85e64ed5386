#pragma once

// The text of an XML list made into one that a parser takes.

#include <string>
#include <string_view>

namespace larkstone {

/// Blanks out the document type declaration from "<!DOCTYPE" through the next ">". False when that
/// leaves a piece of it before the document: declarations of entities are not read.
bool removeDocumentType(std::string& text);

/// Turns the misspelt end tag "</Results>" of a result list into "</ResultList>".
void repairEndTag(std::string& text);

}  // namespace larkstone
