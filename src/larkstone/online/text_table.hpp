#pragma once

// The split table as plain text.

#include <string>

namespace larkstone {

class clsLarkstoneOnlineTable;
class LRKCourse;

std::string writeTextTable(const clsLarkstoneOnlineTable& table, const LRKCourse& course);

}  // namespace larkstone
