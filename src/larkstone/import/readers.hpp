#pragma once

// The readers, one file each in readers/.

#include <cstdint>

#include "larkstone/import/session.hpp"

namespace larkstone {

std::int32_t readCsv(ReadJob& job);  // any of the three that follow
std::int32_t readCsvIndividual(ReadJob& job);
std::int32_t readCsvRelay(ReadJob& job);
std::int32_t readCsvSiMan(ReadJob& job);
std::int32_t readIofXml(ReadJob& job);
std::int32_t readLrk3(ReadJob& job);
std::int32_t readSportSoftwareSplits(ReadJob& job);
std::int32_t readOlaHtml(ReadJob& job);
std::int32_t readETimingHtml(ReadJob& job);
std::int32_t readStandardText(ReadJob& job);
/// Individual results, or a relay whose fastest parallel runners count.
std::int32_t readPekkaPirilaXml(ReadJob& job);
std::int32_t readPekkaPirilaRelayXml(ReadJob& job);
std::int32_t readPekkaPirilaHtml(ReadJob& job);
std::int32_t readSolvHtml(ReadJob& job);

std::int32_t readSportSoftwareStartlist(ReadJob& job);
std::int32_t readOlaStartlist(ReadJob& job);
std::int32_t readPekkaPirilaStartlist(ReadJob& job);

}  // namespace larkstone
