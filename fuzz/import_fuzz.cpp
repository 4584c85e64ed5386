// Any bytes as a result list or start list of whatever format they look like, and as an event file
// of the previous generation.

#include "larkstone/import/import.hpp"

#include "support.hpp"
#include "support/build.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace larkstone;
  const std::string file = fuzz::fileOf(data, size);
  fuzz::Event event;
  LRKImport importer;
  importer.onNote([](const ImportNote&) {});
  importer.import(LRK_IMPORT_AUTO, event, file);
  fuzz::checkSaving(event);

  importer.importLRK3(event, file);
  fuzz::checkSaving(event);

  if (LRKImport::determineStartlistFileFormat(file) == LRK_IMPORT_STARTLIST_UNKNOWN) return 0;
  fuzz::Event known;
  for (const char* name : {"H21", "D21"}) {
    LRKCategory category;
    category.name(name);
    for (const char* who : {"Ann Berg", "Bo Ek"}) category.addRunner(test::runner("S-F", {}, who));
    known.addCategory(category);
  }
  importer.importStartlist(LRK_IMPORT_AUTO, known, file, data[0] % 2 == 0 ? "1" : "");
  fuzz::checkSaving(known);
  return 0;
}
