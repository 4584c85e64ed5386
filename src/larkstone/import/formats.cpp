#include "larkstone/import/formats.hpp"

#include "larkstone/import/readers.hpp"

namespace larkstone {

namespace {

constexpr Format splitTimes[] = {
    {LRK_IMPORT_CSV, detectCsv, readCsv},
    {LRK_IMPORT_XML, detectIofXml, readIofXml},
    {LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT, detectSportSoftwareSplits, readSportSoftwareSplits, true},
    {LRK_IMPORT_OLA_HTML, detectOla, readOlaHtml},
    {LRK_IMPORT_ETIMING_HTML, detectETiming, readETimingHtml, true},
    {LRK_IMPORT_PEKKA_PIRILA_HTML, detectPekkaPirilaHtml, readPekkaPirilaHtml, true},
    {LRK_IMPORT_LARKSTONE_STANDARD_TEXT, detectStandardText, readStandardText},
    {LRK_IMPORT_SOLV_HTML, detectSolv, readSolvHtml, true},
    {LRK_IMPORT_PEKKA_PIRILA_XML, detectPekkaPirilaXml, readPekkaPirilaXml, true},
};

constexpr Format startlists[] = {
    {LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT, detectSportSoftwareCredit,
     readSportSoftwareStartlist},
    {LRK_IMPORT_STARTLIST_OLA_HTML, detectOla, readOlaStartlist},
    {LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML, detectPekkaPirilaStartlist, readPekkaPirilaStartlist},
};

constexpr Format byNameOnly[] = {
    {LRK_IMPORT_LRK_LRK3, nullptr, readLrk3},
    {LRK_IMPORT_CSV_OE200X, nullptr, readCsvIndividual},
    {LRK_IMPORT_CSV_OS200X, nullptr, readCsvRelay},
    {LRK_IMPORT_CSV_SIMAN, nullptr, readCsvSiMan},
};

}  // namespace

std::span<const Format> splitTimeFormats() { return splitTimes; }
std::span<const Format> startlistFormats() { return startlists; }

Reader readerOf(enmImportConstants code) {
  for (const std::span<const Format> formats :
       {splitTimeFormats(), startlistFormats(), std::span<const Format>(byNameOnly)}) {
    for (const Format& format : formats) {
      if (format.code == code) return format.read;
    }
  }
  return nullptr;
}

}  // namespace larkstone
