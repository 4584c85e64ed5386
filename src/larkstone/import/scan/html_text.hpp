#pragma once

// HTML fragments as plain text. Both sides are bytes of windows-1252.

#include <string>
#include <string_view>

namespace larkstone {

/// Without every tag. An unclosed "<" drops the rest.
std::string stripTags(std::string_view text);

/// Without tags and with entities replaced: "</td>" becomes a tab, "</tw>" a line end. An unclosed
/// "<" drops the rest. An entity that is not known stays as written; a numeric one for a character
/// that the page lacks becomes its plainest relative.
std::string htmlToText(std::string_view html);

}  // namespace larkstone
