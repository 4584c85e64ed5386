// Any bytes as an event file of the previous generation.

#include "larkstone/import/import.hpp"

#include "support.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace larkstone;
  fuzz::Event event;
  LRKImport().importLRK3(event, fuzz::fileOf(data, size));
  fuzz::checkSaving(event);
  return 0;
}
