#pragma once

// The readers, one file each in readers/.

#include <cstdint>

#include "larkstone/import/session.hpp"

namespace larkstone {

std::int32_t readIofXml(ReadJob& job);
std::int32_t readSportSoftwareSplits(ReadJob& job);

}  // namespace larkstone
