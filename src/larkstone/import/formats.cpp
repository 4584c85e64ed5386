#include "larkstone/import/formats.hpp"

#include "larkstone/import/readers.hpp"

namespace larkstone {

namespace {

constexpr Format splitTimes[] = {
    {LRK_IMPORT_CSV, Evidence::form, detectCsv, readCsv},
    {LRK_IMPORT_XML, Evidence::form, detectIofXml, readIofXml},
    {LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT, Evidence::words, detectSportSoftwareSplits,
     readSportSoftwareSplits},
    {LRK_IMPORT_OLA_HTML, Evidence::form, detectOla, readOlaHtml},
    {LRK_IMPORT_ETIMING_HTML, Evidence::words, detectETiming, readETimingHtml},
    {LRK_IMPORT_PEKKA_PIRILA_HTML, Evidence::words, detectPekkaPirilaHtml, readPekkaPirilaHtml},
    {LRK_IMPORT_LARKSTONE_STANDARD_TEXT, Evidence::form, detectStandardText, readStandardText},
    {LRK_IMPORT_SOLV_HTML, Evidence::words, detectSolv, readSolvHtml},
    {LRK_IMPORT_PEKKA_PIRILA_XML, Evidence::words, detectPekkaPirilaXml, readPekkaPirilaXml},
};

constexpr Format startlists[] = {
    {LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT, Evidence::form, detectSportSoftwareCredit,
     readSportSoftwareStartlist},
    {LRK_IMPORT_STARTLIST_OLA_HTML, Evidence::form, detectOla, readOlaStartlist},
    {LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML, Evidence::form, detectPekkaPirilaStartlist,
     readPekkaPirilaStartlist},
};

constexpr Format byNameOnly[] = {
    {LRK_IMPORT_LRK_LRK3, Evidence::form, nullptr, readLrk3},
    {LRK_IMPORT_CSV_OE200X, Evidence::form, nullptr, readCsvIndividual},
    {LRK_IMPORT_CSV_OS200X, Evidence::form, nullptr, readCsvRelay},
    {LRK_IMPORT_CSV_SIMAN, Evidence::form, nullptr, readCsvSiMan},
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
