#pragma once

// A complete web page around a split table.

#include <string>
#include <string_view>

#include "larkstone/online/table.hpp"

namespace larkstone::cli {

/// What a split table shows.
struct TableView {
  bool places = false;
  bool startTimes = false;
  bool finishTimes = false;
  bool relative = false;
  bool tooltips = false;
  int top = 0;          ///< places up to this one are marked
  std::string baseURL;  ///< of the sort links; none without it
};

/// Lets the table show that, with the looks of the program's pages.
void setView(clsLarkstoneOnlineTable& table, const TableView& view);

/// The page over a rendered table. Title and heading are plain text.
std::string pageOf(const clsLarkstoneOnlineTable& table, std::string_view eventName,
                   std::string_view categoryName);

}  // namespace larkstone::cli
