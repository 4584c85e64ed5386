// Any bytes as an event file, written in the formats of other programs and read again.

#include "larkstone/core/text.hpp"
#include "larkstone/event/export.hpp"
#include "larkstone/import/import.hpp"

#include "support.hpp"

namespace {

using namespace larkstone;

void checkXml(LRKEvent& event, decltype(&LRKExport::exportEventToIOFXML) write, bool complete) {
  const std::string list = fuzz::folder() / "list.xml";
  fuzz::require((LRKExport().*write)(event, list) == 0, "an event can be exported");
  const std::string bytes = test::bytesOf(list);
  fuzz::require(std::none_of(bytes.begin(), bytes.end(),
                             [](char c) {
                               return c >= 0 && c < ' ' && !trimmed({&c, 1}).empty();
                             }),
                "XML has no control characters");
  fuzz::Event back;
  const std::int32_t code = LRKImport().import(LRK_IMPORT_AUTO, back, list);
  fuzz::require(code == 0 || code == LRK_IMPORT_IOF_XML_BLANK_NAMES, "our lists are well-formed");
  fuzz::require(!complete || (isUtf8(bytes) && fuzz::noOfRunners(back) == fuzz::noOfRunners(event)),
                "all runners of version 3 come back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Event event;
  event.openEvent(fuzz::fileOf(data, size));
  if (!event.isOpen()) return 0;
  checkXml(event, &LRKExport::exportEventToIOFXML, false);
  checkXml(event, &LRKExport::exportEventToIOFXML3, true);
  const std::string file = fuzz::folder() / "event.lrk3";
  fuzz::Event back;
  fuzz::require(LRKExport().exportEventToLRK3(event, file) == 0 &&
                    LRKImport().importLRK3(back, file) == 0 &&
                    fuzz::noOfRunners(back) == fuzz::noOfRunners(event),
                "all runners of LRK3 come back");
  return 0;
}
