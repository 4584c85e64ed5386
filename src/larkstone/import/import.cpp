#include "larkstone/import/import.hpp"

#include "larkstone/core/number.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/formats.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/session.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

constexpr enmImportConstants splitTimeOffer[] = {
    LRK_IMPORT_XML,
    LRK_IMPORT_CSV,
    LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT,
    LRK_IMPORT_OLA_HTML,
    LRK_IMPORT_ETIMING_HTML,
    LRK_IMPORT_PEKKA_PIRILA_HTML,
    LRK_IMPORT_PEKKA_PIRILA_XML,
    LRK_IMPORT_LARKSTONE_STANDARD_TEXT,
    LRK_IMPORT_SOLV_HTML,
};

constexpr enmImportConstants startlistOffer[] = {
    LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT,
    LRK_IMPORT_STARTLIST_OLA_HTML,
    LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML,
};

// What is handed to a reader besides the event and the file.
struct Options {
  Time zeroTime = 0;
  enmRelayParallelMode parallelMode = erpmFastestTime;
  std::int16_t stageIndex = 0;
};

// The format that import() dispatches a code to; LRK_IMPORT_UNKNOWN for none. A CSV variant goes to
// the family, which finds out the variant again.
enmImportConstants dispatched(std::int32_t code, std::span<const Format> formats) {
  const bool csvVariant = code == LRK_IMPORT_CSV_OE200X || code == LRK_IMPORT_CSV_OS200X ||
                          code == LRK_IMPORT_CSV_SIMAN;
  if (csvVariant) code = LRK_IMPORT_CSV;
  for (const Format& format : formats) {
    if (format.code == code) return format.code;
  }
  return LRK_IMPORT_UNKNOWN;
}

std::int32_t importWith(ImportSession& session, enmImportConstants format, LRKEvent& event,
                        const std::string& file, const Options& options = {}) {
  return session.run(readerOf(format), {event, file, session, options.zeroTime,
                                        options.parallelMode, options.stageIndex});
}

// The source is never the target. A reader that fails leaves no file.
std::int32_t convertWith(ImportSession& session, enmImportConstants format,
                         const std::string& lrkFileName, const std::string& file,
                         const Options& options = {}) {
  if (session.importingNow() || readerOf(format) == nullptr) return LRK_IMPORT_UNKNOWN;
  if (fileExists(file) && isSameFile(lrkFileName, file)) {
    return LRK_IMPORT_EVENT_FILE_ERROR + LRK_FILE_ALREADY_EXISTS;
  }
  LRKEvent event;
  event.tempFilePath(session.tempFilePath);
  if (const std::int32_t error = event.createNewEvent(lrkFileName, true)) {
    return LRK_IMPORT_EVENT_FILE_ERROR + error;
  }
  const std::int32_t result = importWith(session, format, event, file, options);
  const std::int32_t error = result == 0 ? event.saveEvent() : 0;
  event.closeEvent();
  if (result != 0 && isRegularFile(lrkFileName) && mayReplaceFile(lrkFileName)) {
    removeFile(lrkFileName);
  }
  return error == 0 ? result : LRK_IMPORT_EVENT_FILE_ERROR + error;
}

}  // namespace

LRKImport::LRKImport() : session_(std::make_unique<ImportSession>()) {}
LRKImport::~LRKImport() = default;
LRKImport::LRKImport(LRKImport&&) noexcept = default;
LRKImport& LRKImport::operator=(LRKImport&&) noexcept = default;

void LRKImport::setLocalizedStrings(const std::string& wholeLegs,
                                    const std::string& commonControls) {
  session_->wholeLegsText = wholeLegs;
  session_->commonControlsText = commonControls;
}
const std::string& LRKImport::master() const { return session_->master; }
void LRKImport::master(std::string name) { session_->master = std::move(name); }
const std::string& LRKImport::tempFilePath() const { return session_->tempFilePath; }
void LRKImport::tempFilePath(std::string path) {
  session_->tempFilePath = folderPath(std::move(path));
}

void LRKImport::onWorkProgress(std::function<void(float)> notify) {
  session_->onWorkProgress = std::move(notify);
}
void LRKImport::onNewCategory(std::function<void(const std::string&)> notify) {
  session_->onNewCategory = std::move(notify);
}
void LRKImport::onNote(std::function<void(const ImportNote&)> notify) {
  session_->onNote = std::move(notify);
}
const std::vector<ImportNote>& LRKImport::warnings() const { return session_->warnings(); }
int LRKImport::noOfWarnings() const { return session_->noOfWarnings(); }
int LRKImport::noOfStartTimesSet() const { return session_->noOfStartTimesSet(); }

bool LRKImport::importingNow() const { return session_->importingNow(); }
float LRKImport::fractionCompleted() const { return session_->fractionCompleted(); }
void LRKImport::Cancel() { session_->cancel(); }

int LRKImport::getSupportedSplitTimeFileFormats(std::vector<enmImportConstants>& supportedFormats) {
  supportedFormats.assign(std::begin(splitTimeOffer), std::end(splitTimeOffer));
  return static_cast<int>(supportedFormats.size());
}
int LRKImport::getSupportedStartlistFileFormats(std::vector<enmImportConstants>& supportedFormats) {
  supportedFormats.assign(std::begin(startlistOffer), std::end(startlistOffer));
  return static_cast<int>(supportedFormats.size());
}

std::int32_t LRKImport::import(std::int32_t fileFormat, LRKEvent& lrk,
                               const std::string& importFileName, Time zeroTime) {
  return import_parallel(fileFormat, lrk, importFileName, zeroTime, erpmFastestTime);
}

std::int32_t LRKImport::import_parallel(std::int32_t fileFormat, LRKEvent& lrk,
                                        const std::string& importFileName, Time zeroTime,
                                        enmRelayParallelMode parallelMode) {
  if (fileFormat == LRK_IMPORT_AUTO) fileFormat = determineFileFormat(importFileName);
  if (fileFormat == LRK_IMPORT_FILE_DOES_NOT_EXIST) return fileFormat;
  return importWith(*session_, dispatched(fileFormat, splitTimeFormats()), lrk, importFileName,
                    {zeroTime, parallelMode});
}

std::int32_t LRKImport::convert(std::int32_t fileFormat, const std::string& lrkFileName,
                                const std::string& importFileName, Time zeroTime) {
  return convert_parallel(fileFormat, lrkFileName, importFileName, zeroTime, erpmFastestTime);
}

std::int32_t LRKImport::convert_parallel(std::int32_t fileFormat, const std::string& lrkFileName,
                                         const std::string& importFileName, Time zeroTime,
                                         enmRelayParallelMode parallelMode) {
  if (fileFormat == LRK_IMPORT_AUTO) fileFormat = determineFileFormat(importFileName);
  const enmImportConstants format = dispatched(fileFormat, splitTimeFormats());
  if (format == LRK_IMPORT_UNKNOWN) return format;
  return convertWith(*session_, format, lrkFileName, importFileName, {zeroTime, parallelMode});
}

std::int32_t LRKImport::importStartlist(std::int32_t fileFormat, LRKEvent& lrk,
                                        const std::string& importFileName,
                                        const std::string& extraParameters) {
  if (fileFormat == LRK_IMPORT_AUTO) fileFormat = determineStartlistFileFormat(importFileName);
  const auto stageIndex = saturated<std::int16_t>(leadingInteger(extraParameters));
  return importWith(*session_, dispatched(fileFormat, startlistFormats()), lrk, importFileName,
                    {.stageIndex = stageIndex});
}

std::int32_t LRKImport::importSportSoftwareCSV(LRKEvent& lrk, const std::string& file,
                                               Time zeroTime) {
  return importWith(*session_, LRK_IMPORT_CSV, lrk, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::importOE200xCSV(LRKEvent& lrk, const std::string& file, Time zeroTime) {
  return importWith(*session_, LRK_IMPORT_CSV_OE200X, lrk, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::importOS200xCSV(LRKEvent& lrk, const std::string& file, Time zeroTime) {
  return importWith(*session_, LRK_IMPORT_CSV_OS200X, lrk, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::importSIManCSV(LRKEvent& lrk, const std::string& file, Time zeroTime) {
  return importWith(*session_, LRK_IMPORT_CSV_SIMAN, lrk, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::importLRK3(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_LRK_LRK3, lrk, file);
}
std::int32_t LRKImport::importIOFXML(LRKEvent& lrk, const std::string& file,
                                     enmRelayParallelMode parallelMode) {
  return importWith(*session_, LRK_IMPORT_XML, lrk, file, {.parallelMode = parallelMode});
}
std::int32_t LRKImport::importIOFXML_old(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_XML, lrk, file);
}
std::int32_t LRKImport::importLarkstoneStandardText(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_LARKSTONE_STANDARD_TEXT, lrk, file);
}
std::int32_t LRKImport::importPekkaPirilaHTML(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_PEKKA_PIRILA_HTML, lrk, file);
}
std::int32_t LRKImport::importPekkaPirilaXML(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_PEKKA_PIRILA_XML, lrk, file);
}
std::int32_t LRKImport::importPekkaPirilaRelayXML(LRKEvent& lrk, const std::string& file,
                                                  enmRelayParallelMode parallelMode) {
  return session_->run(readPekkaPirilaRelayXml, {lrk, file, *session_, 0, parallelMode});
}
std::int32_t LRKImport::importSOLVHTML(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_SOLV_HTML, lrk, file);
}
std::int32_t LRKImport::importSportSoftwareHTMLText(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT, lrk, file);
}
std::int32_t LRKImport::importOLAHTML(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_OLA_HTML, lrk, file);
}
std::int32_t LRKImport::importETimingHTML(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_ETIMING_HTML, lrk, file);
}
std::int32_t LRKImport::importStartlistSportSoftwareHTMLText(LRKEvent& lrk,
                                                             const std::string& file) {
  return importWith(*session_, LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT, lrk, file);
}
std::int32_t LRKImport::importStartlistOLAHTML(LRKEvent& lrk, const std::string& file) {
  return importWith(*session_, LRK_IMPORT_STARTLIST_OLA_HTML, lrk, file);
}
std::int32_t LRKImport::importStartlistPekkaPirilaHTML(LRKEvent& lrk, const std::string& file,
                                                       std::int16_t stageIndex) {
  return importWith(*session_, LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML, lrk, file,
                    {.stageIndex = stageIndex});
}

std::int32_t LRKImport::convertSportSoftwareCSV(const std::string& lrkFileName,
                                                const std::string& file, Time zeroTime) {
  return convertWith(*session_, LRK_IMPORT_CSV, lrkFileName, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::convertOE200xCSV(const std::string& lrkFileName, const std::string& file,
                                         Time zeroTime) {
  return convertWith(*session_, LRK_IMPORT_CSV_OE200X, lrkFileName, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::convertOS200xCSV(const std::string& lrkFileName, const std::string& file,
                                         Time zeroTime) {
  return convertWith(*session_, LRK_IMPORT_CSV_OS200X, lrkFileName, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::convertSIManCSV(const std::string& lrkFileName, const std::string& file,
                                        Time zeroTime) {
  return convertWith(*session_, LRK_IMPORT_CSV_SIMAN, lrkFileName, file, {.zeroTime = zeroTime});
}
std::int32_t LRKImport::convertLRK3(const std::string& lrkFileName, const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_LRK_LRK3, lrkFileName, file);
}
std::int32_t LRKImport::convertIOFXML(const std::string& lrkFileName, const std::string& file,
                                      enmRelayParallelMode parallelMode) {
  return convertWith(*session_, LRK_IMPORT_XML, lrkFileName, file, {.parallelMode = parallelMode});
}
std::int32_t LRKImport::convertLarkstoneStandardText(const std::string& lrkFileName,
                                                     const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_LARKSTONE_STANDARD_TEXT, lrkFileName, file);
}
std::int32_t LRKImport::convertPekkaPirilaHTML(const std::string& lrkFileName,
                                               const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_PEKKA_PIRILA_HTML, lrkFileName, file);
}
std::int32_t LRKImport::convertPekkaPirilaXML(const std::string& lrkFileName,
                                              const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_PEKKA_PIRILA_XML, lrkFileName, file);
}
std::int32_t LRKImport::convertSOLVHTML(const std::string& lrkFileName, const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_SOLV_HTML, lrkFileName, file);
}
std::int32_t LRKImport::convertSportSoftwareHTMLText(const std::string& lrkFileName,
                                                     const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT, lrkFileName, file);
}
std::int32_t LRKImport::convertOLAHTML(const std::string& lrkFileName, const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_OLA_HTML, lrkFileName, file);
}
std::int32_t LRKImport::convertETimingHTML(const std::string& lrkFileName,
                                           const std::string& file) {
  return convertWith(*session_, LRK_IMPORT_ETIMING_HTML, lrkFileName, file);
}

}  // namespace larkstone
