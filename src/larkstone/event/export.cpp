#include "larkstone/event/export.hpp"

#include "larkstone/event/event.hpp"
#include "larkstone/event/export_file.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

using Writer = std::int32_t (*)(const LRKEvent&, ExportFile&);

std::int32_t writeEvent(const LRKEvent& event, const ExportSink& sink, Writer write) {
  if (!event.isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  if (!sink) return LRK_COULD_NOT_OPEN_FILE;
  ExportFile file(sink);
  if (const std::int32_t code = write(event, file)) return code;
  return file.flush() ? 0 : LRK_COULD_NOT_OPEN_FILE;
}

std::int32_t exportEvent(const LRKEvent& event, const std::string& target, Writer write) {
  if (!event.isOpen()) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  if (isSameFile(event.filename(), target)) return LRK_FILE_ALREADY_EXISTS;
  if (isReadOnlyFile(target)) return LRK_FILE_READONLY;
  WholeFile file(target);
  if (!file.isOpen()) return LRK_COULD_NOT_OPEN_FILE;
  const auto sink = [&file](std::string_view bytes) { return file.write(bytes); };
  if (const std::int32_t code = writeEvent(event, sink, write)) return code;
  return file.commit() ? 0 : LRK_COULD_NOT_OPEN_FILE;
}

std::int32_t exportFile(const std::string& source, const std::string& tempFilePath,
                        const std::string& target, Writer write) {
  LRKEvent event;
  event.tempFilePath(tempFilePath);
  const std::int32_t opened = event.openEvent(source);
  if (!event.isOpen()) return opened;
  const std::int32_t written = exportEvent(event, target, write);
  return written == 0 ? opened : written;
}

}  // namespace

void LRKExport::tempFilePath(const std::string& path) { tempFilePath_ = folderPath(path); }

std::int32_t LRKExport::exportLRK3(const std::string& lrk4FileName,
                                   const std::string& lrk3FileName) {
  return exportFile(lrk4FileName, tempFilePath_, lrk3FileName, writeLrk3);
}

std::int32_t LRKExport::writeEventAsLRK3(LRKEvent& event, const ExportSink& sink) {
  return writeEvent(event, sink, writeLrk3);
}

std::int32_t LRKExport::exportEventToLRK3(LRKEvent& event, const std::string& lrk3FileName) {
  return exportEvent(event, lrk3FileName, writeLrk3);
}

std::int32_t LRKExport::exportIOFXML(const std::string& lrk4FileName,
                                     const std::string& xmlFileName) {
  return exportFile(lrk4FileName, tempFilePath_, xmlFileName, writeIofXml2);
}

std::int32_t LRKExport::writeEventAsIOFXML(LRKEvent& event, const ExportSink& sink) {
  return writeEvent(event, sink, writeIofXml2);
}

std::int32_t LRKExport::exportEventToIOFXML(LRKEvent& event, const std::string& xmlFileName) {
  return exportEvent(event, xmlFileName, writeIofXml2);
}

std::int32_t LRKExport::exportIOFXML3(const std::string& lrk4FileName,
                                      const std::string& xmlFileName) {
  return exportFile(lrk4FileName, tempFilePath_, xmlFileName, writeIofXml3);
}

std::int32_t LRKExport::writeEventAsIOFXML3(LRKEvent& event, const ExportSink& sink) {
  return writeEvent(event, sink, writeIofXml3);
}

std::int32_t LRKExport::exportEventToIOFXML3(LRKEvent& event, const std::string& xmlFileName) {
  return exportEvent(event, xmlFileName, writeIofXml3);
}

}  // namespace larkstone
