#pragma once

// The team results of IOF XML lists.

#include <vector>

#include "larkstone/import/readers/iof_list.hpp"

namespace larkstone {

/// For every class result of the list the class results of the relay that begins with it: itself
/// and, where lists write each leg as a class result of its own with the same name and number, the
/// other legs of the same teams. Nothing for a class without teams and for a later leg.
std::vector<std::vector<XmlNode>> relaysOf(const IofVersion& version, XmlNode list);

/// Reads the teams of one relay and adds what it consists of to the event.
void readIofRelay(const IofVersion& version, const std::vector<XmlNode>& classResults, ReadJob& job,
                  ReaderRun& run);

}  // namespace larkstone
