#pragma once

// The event file: header, position tables, data area.

#include <cstdint>
#include <string>

#include "larkstone/event/event.hpp"
#include "larkstone/event/event_store.hpp"

namespace larkstone {

/// Fills the event's properties, the tables (without names) and the working file. An error
/// constant; LRK_UNKNOWN_FILE_VERSION when all was read but the file is newer.
std::int32_t readEventFile(const File& file, LRKEvent& event, EventStore& store);

/// Everything before the data area.
std::string encodeHead(const LRKEvent& event, const EventStore& store);

}  // namespace larkstone
