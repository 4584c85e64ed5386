// Any bytes as a result list or start list of whatever format they look like.

#include "larkstone/import/import.hpp"

#include "support.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace larkstone;
  const std::string file = fuzz::fileOf(data, size);
  fuzz::Event event;
  LRKImport importer;
  importer.onNote([](const ImportNote&) {});
  importer.import(LRK_IMPORT_AUTO, event, file);
  importer.importStartlist(LRK_IMPORT_AUTO, event, file);
  fuzz::checkSaving(event);
  return 0;
}
