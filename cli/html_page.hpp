#pragma once

// A complete web page around a split table.

#include <string>
#include <string_view>

#include "larkstone/online/table.hpp"

namespace larkstone::cli {

/// Gives the table the looks of the program's pages.
void setLooks(clsLarkstoneOnlineTable& table);

/// The page over a rendered table. Title and heading are plain text.
std::string pageOf(const clsLarkstoneOnlineTable& table, std::string_view eventName,
                   std::string_view categoryName);

}  // namespace larkstone::cli
