#pragma once

// Result lists and split times of other programs into events.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/import/import_constants.hpp"

namespace larkstone {

class ImportSession;
class LRKCategory;
class LRKEvent;

/// Something that an import skipped or could not read: a runner, a field, a punch.
struct ImportNote {
  std::string what;  ///< "control code \"F1\" is not a number"
  std::string where;  ///< the element or line: "ClassResult \"H21\", PersonResult 3 \"Åsa Öberg\"",
                      ///< "line 12 \"Åsa Öberg\""
};

/// Reads result lists into an event that is open, or converts them straight into event files.
///
/// Every method returns one of enmImportConstants, 0 on success, and raises nothing for bad input.
/// LRK_IMPORT_EVENT_FILE_ERROR plus an event-file error tells that the event could not take a
/// category or the converted file could not be created or saved; plus LRK_FILE_ALREADY_EXISTS, that
/// the event's file is the very list to be read, by whatever name or link, and that nothing was
/// done: a list is never written over. An import that ends with another
/// code than 0 leaves in the event the categories it had already added; a conversion leaves no
/// file. The progress of a reader is raised while it runs, on the caller's thread. One import at a
/// time per object: one that is started from a notification returns LRK_IMPORT_UNKNOWN.
///
///     LRKEvent event;
///     event.createNewEvent("spring.lrk4");
///     LRKImport importer;
///     if (importer.import(LRK_IMPORT_AUTO, event, "results.xml") == 0) event.saveEvent();
class LRKImport {
 public:
  LRKImport();
  ~LRKImport();
  LRKImport(LRKImport&&) noexcept;
  LRKImport& operator=(LRKImport&&) noexcept;

  /// Words in the names of categories made from relay results.
  void setLocalizedStrings(const std::string& wholeLegs, const std::string& commonControls);
  /// The user's name: becomes the event's last modifier, and its creator where it has none.
  const std::string& master() const;
  void master(std::string name);
  /// The folder for working files of conversions; always with a backslash at its end.
  const std::string& tempFilePath() const;
  void tempFilePath(std::string path);

  /// Told after each unit of work (a line, a runner, a class): the part done, 0 to 1.
  void onWorkProgress(std::function<void(float)> notify);
  /// Told when a category has got its name, before its runners are read.
  void onNewCategory(std::function<void(const std::string&)> notify);
  /// Told of each thing that was skipped or could not be read.
  void onNote(std::function<void(const ImportNote&)> notify);
  /// What the running or last import skipped or could not read, in the order of the file: the first
  /// 10,000 of noOfWarnings(). Long texts of the file are cut.
  const std::vector<ImportNote>& warnings() const;
  int noOfWarnings() const;

  bool importingNow() const;
  /// The last reported part of the work; 0 when an import starts.
  float fractionCompleted() const;
  /// Makes the running reader stop with LRK_IMPORT_CANCELLED at its next check, also from a
  /// notification, a signal handler or another thread. When none runs, the next one stops.
  void Cancel();

  /// The formats that can be imported, in the order a host offers them; their number.
  static int getSupportedSplitTimeFileFormats(std::vector<enmImportConstants>& supportedFormats);
  static int getSupportedStartlistFileFormats(std::vector<enmImportConstants>& supportedFormats);

  /// Imports a file whose format is given, or found out for LRK_IMPORT_AUTO. The zero time is added
  /// to the times of SportSoftware's CSV lists. The parallel mode says which of several runners of
  /// a team on one relay leg counts. LRK_IMPORT_UNKNOWN for event files and whatever has no reader.
  std::int32_t import(std::int32_t fileFormat, LRKEvent& lrk, const std::string& importFileName,
                      Time zeroTime = 0);
  std::int32_t import_parallel(std::int32_t fileFormat, LRKEvent& lrk,
                               const std::string& importFileName, Time zeroTime = 0,
                               enmRelayParallelMode parallelMode = erpmFastestTime);
  /// Imports into a new event and saves it under lrkFileName, over a file that is there. With a
  /// result other than 0 there is no such file afterwards, except that an older one survives when
  /// the new one could not be written or may not replace it, or when it is the very file to be
  /// read.
  std::int32_t convert(std::int32_t fileFormat, const std::string& lrkFileName,
                       const std::string& importFileName, Time zeroTime = 0);
  std::int32_t convert_parallel(std::int32_t fileFormat, const std::string& lrkFileName,
                                const std::string& importFileName, Time zeroTime = 0,
                                enmRelayParallelMode parallelMode = erpmFastestTime);
  /// Sets the start times of runners who are in the event already, and saves the event; of a
  /// cancelled import the event keeps what was done, unsaved. extraParameters is the stage of a
  /// list with several start times, counted from 0; empty means the first. A file without any entry
  /// and without the marks of the format gives LRK_IMPORT_STARTLIST_UNKNOWN, the event untouched.
  std::int32_t importStartlist(std::int32_t fileFormat, LRKEvent& lrk,
                               const std::string& importFileName,
                               const std::string& extraParameters = {});
  /// How many runners the running or last import of a start list gave a start time; 0 tells of a
  /// list that meant nobody.
  int noOfStartTimesSet() const;

  /// Replaces a relay category by the category of its teams over whole legs, whose controls (31,
  /// 32, ...) are the handovers, and by one category for each leg, reduced to the controls that all
  /// its runners with status OK have in common.
  ///
  /// The relay category holds the teams (extraInfo "team_" and a number) and their members
  /// (extraInfo "runner_" and the number of the team, relayLeg from 1 to 255). Its parts come where
  /// it stands in the event when it is there (by categoryIndex() and name), else behind all others.
  /// Members who are not OK can be left out; of several members of a team on one leg the parallel
  /// mode says who counts. A leg has no time for the team when nobody finished it, and when the one
  /// who counts mispunched, gave up or was disqualified. Afterwards `category` is the category of
  /// the teams. A category without teams and members is left alone; when the event takes no more,
  /// nothing is changed.
  std::int32_t createRelayResults(LRKEvent& ev, LRKCategory& category,
                                  bool ignoreDisqualifiedRunners,
                                  enmRelayParallelMode parallelMode);

  /// What a file is: the code of an event file, a split-time format, a start list, a CSV variant.
  /// LRK_IMPORT_FILE_DOES_NOT_EXIST for a missing file.
  static std::int32_t determineLRKFileFormat(const std::string& lrkFileName);
  static std::int32_t determineFileFormat(const std::string& filename);
  static std::int32_t determineStartlistFileFormat(const std::string& filename);
  static std::int32_t determineSportSoftwareCSVFileFormat(const std::string& csvFileName);

  /// One format each. The CSV variants are read as what the method says, without detection.
  std::int32_t importSportSoftwareCSV(LRKEvent& lrk, const std::string& file, Time zeroTime = 0);
  std::int32_t importOE200xCSV(LRKEvent& lrk, const std::string& file, Time zeroTime = 0);
  std::int32_t importOS200xCSV(LRKEvent& lrk, const std::string& file, Time zeroTime = 0);
  std::int32_t importSIManCSV(LRKEvent& lrk, const std::string& file, Time zeroTime = 0);
  std::int32_t importLRK3(LRKEvent& lrk, const std::string& file);
  std::int32_t importIOFXML(LRKEvent& lrk, const std::string& file,
                            enmRelayParallelMode parallelMode = erpmFastestTime);
  std::int32_t importIOFXML_old(LRKEvent& lrk, const std::string& file);
  std::int32_t importLarkstoneStandardText(LRKEvent& lrk, const std::string& file);
  std::int32_t importPekkaPirilaHTML(LRKEvent& lrk, const std::string& file);
  std::int32_t importPekkaPirilaXML(LRKEvent& lrk, const std::string& file);
  std::int32_t importPekkaPirilaRelayXML(LRKEvent& lrk, const std::string& file,
                                         enmRelayParallelMode parallelMode = erpmFastestTime);
  std::int32_t importSOLVHTML(LRKEvent& lrk, const std::string& file);
  std::int32_t importSportSoftwareHTMLText(LRKEvent& lrk, const std::string& file);
  std::int32_t importOLAHTML(LRKEvent& lrk, const std::string& file);
  std::int32_t importETimingHTML(LRKEvent& lrk, const std::string& file);
  std::int32_t importStartlistSportSoftwareHTMLText(LRKEvent& lrk, const std::string& file);
  std::int32_t importStartlistOLAHTML(LRKEvent& lrk, const std::string& file);
  std::int32_t importStartlistPekkaPirilaHTML(LRKEvent& lrk, const std::string& file,
                                              std::int16_t stageIndex = 0);

  std::int32_t convertSportSoftwareCSV(const std::string& lrkFileName, const std::string& file,
                                       Time zeroTime = 0);
  std::int32_t convertOE200xCSV(const std::string& lrkFileName, const std::string& file,
                                Time zeroTime = 0);
  std::int32_t convertOS200xCSV(const std::string& lrkFileName, const std::string& file,
                                Time zeroTime = 0);
  std::int32_t convertSIManCSV(const std::string& lrkFileName, const std::string& file,
                               Time zeroTime = 0);
  std::int32_t convertIOFXML(const std::string& lrkFileName, const std::string& file,
                             enmRelayParallelMode parallelMode = erpmFastestTime);
  std::int32_t convertPekkaPirilaHTML(const std::string& lrkFileName, const std::string& file);
  std::int32_t convertPekkaPirilaXML(const std::string& lrkFileName, const std::string& file);
  std::int32_t convertSOLVHTML(const std::string& lrkFileName, const std::string& file);
  std::int32_t convertSportSoftwareHTMLText(const std::string& lrkFileName,
                                            const std::string& file);
  std::int32_t convertLRK3(const std::string& lrkFileName, const std::string& file);
  std::int32_t convertLarkstoneStandardText(const std::string& lrkFileName,
                                            const std::string& file);
  std::int32_t convertOLAHTML(const std::string& lrkFileName, const std::string& file);
  std::int32_t convertETimingHTML(const std::string& lrkFileName, const std::string& file);

 private:
  std::unique_ptr<ImportSession> session_;
};

}  // namespace larkstone
