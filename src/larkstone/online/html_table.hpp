#pragma once

// The split table as HTML.

#include <string>

namespace larkstone {

class clsLarkstoneOnlineTable;
class LRKCourse;

/// The texts of one rendering.
struct HtmlTable {
  std::string table;
  std::string style;
  std::string script;
};

HtmlTable writeHtmlTable(const clsLarkstoneOnlineTable& table, const LRKCourse& course);

}  // namespace larkstone
