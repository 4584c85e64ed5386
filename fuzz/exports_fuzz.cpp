// Any bytes as an event file, written in the formats of other programs and read again.

#include <algorithm>

#include "larkstone/core/text.hpp"
#include "larkstone/event/export.hpp"
#include "larkstone/import/import.hpp"

#include "support.hpp"

namespace larkstone::fuzz {
namespace {

bool isForbiddenInXml(char c) {
  return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n';
}

void checkXml(LRKEvent& event, bool third) {
  const std::string list = folder() / "list.xml";
  LRKExport exporter;
  require((third ? exporter.exportEventToIOFXML3(event, list)
                 : exporter.exportEventToIOFXML(event, list)) == 0,
          "an event can be exported");
  const std::string bytes = test::bytesOf(list);
  require(std::none_of(bytes.begin(), bytes.end(), isForbiddenInXml), "XML has its characters");
  Event back;
  const std::int32_t code = LRKImport().import(LRK_IMPORT_AUTO, back, list);
  require(code == 0 || code == LRK_IMPORT_IOF_XML_BLANK_NAMES, "our lists are read");
  if (!third) return;
  require(isUtf8(bytes), "version 3 is UTF-8");
  require(noOfRunners(back) == noOfRunners(event), "all runners of version 3 come back");
}

void checkLrk3(LRKEvent& event) {
  const std::string file = folder() / "event.lrk3";
  require(LRKExport().exportEventToLRK3(event, file) == 0, "an event can be exported");
  Event back;
  require(LRKImport().importLRK3(back, file) == 0, "the previous generation's files are read");
  require(noOfRunners(back) == noOfRunners(event), "all runners come back");
}

}  // namespace
}  // namespace larkstone::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace larkstone;
  fuzz::Event event;
  event.openEvent(fuzz::fileOf(data, size));
  if (!event.isOpen()) return 0;
  fuzz::checkXml(event, false);
  fuzz::checkXml(event, true);
  fuzz::checkLrk3(event);
  return 0;
}
