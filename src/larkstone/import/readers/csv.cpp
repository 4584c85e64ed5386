// The family of delimited lists: which of them a file is decides who reads it.

#include "larkstone/import/import.hpp"
#include "larkstone/import/readers.hpp"

namespace larkstone {

std::int32_t readCsv(ReadJob& job) {
  switch (LRKImport::determineSportSoftwareCSVFileFormat(job.fileName)) {
    case LRK_IMPORT_CSV_OE200X:
      return readCsvIndividual(job);
    case LRK_IMPORT_CSV_OS200X:
      return readCsvRelay(job);
    case LRK_IMPORT_CSV_SIMAN:
      return readCsvSiMan(job);
    default:
      return LRK_IMPORT_CSV_INVALID_FORMAT;
  }
}

}  // namespace larkstone
