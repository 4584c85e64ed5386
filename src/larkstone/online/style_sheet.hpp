#pragma once

// What a page needs beside the HTML of a split table: the style sheet and the script.

#include <string>
#include <string_view>

namespace larkstone {

class clsLarkstoneOnlineTable;
class StyleRegistry;

/// The rules for sort links and for every class of the rendering.
std::string styleSheet(const clsLarkstoneOnlineTable& table, const StyleRegistry& registry);

/// The script element that tints the rows of a runner while the mouse is over them.
std::string highlightScript(std::string_view highlightList);

}  // namespace larkstone
