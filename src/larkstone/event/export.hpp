#pragma once

// Events in the formats of other programs.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace larkstone {

class LRKEvent;

/// Takes the next bytes of an export; false when it cannot.
using ExportSink = std::function<bool(std::string_view)>;

/// Writes events as IOF XML 2.0.3, as IOF XML 3.0 and as event files of the previous generation
/// (LRK3). A target appears whole or not at all and replaces a file of that name, but never the
/// event's own; one category is decoded at a time, whatever the size of the event. What is written
/// is what the event has stored: a category that was handed out and changed since does not count
/// and is left alone.
///
/// Every method returns enmErrorConstants, 0 on success: LRK_FILE_ALREADY_EXISTS when the target is
/// the event's file by whatever name or link, LRK_FILE_READONLY or LRK_COULD_NOT_OPEN_FILE when it
/// cannot be written (or a sink took not everything), LRK_COULD_NOT_OPEN_TEMPORARY_FILE for an
/// event that is closed or whose working file cannot be read. The methods that take the name of an
/// event file return what openEvent() says when it cannot be opened; its warning
/// LRK_UNKNOWN_FILE_VERSION is returned after the target was written.
///
///     LRKExport exporter;
///     const std::int32_t code = exporter.exportIOFXML3("race.lrk4", "race.xml");
class LRKExport {
 public:
  /// The folder for working files of the exports by file name, always with a backslash at its end;
  /// "" means the current one.
  const std::string& tempFilePath() const { return tempFilePath_; }
  void tempFilePath(const std::string& path);

  /// LRK3: names, a start time and leg times, no more. Texts are cut to 255 characters.
  std::int32_t exportLRK3(const std::string& lrk4FileName, const std::string& lrk3FileName);
  std::int32_t exportEventToLRK3(LRKEvent& event, const std::string& lrk3FileName);
  std::int32_t writeEventAsLRK3(LRKEvent& event, const ExportSink& sink);

  /// A result list of IOF XML 2.0.3 in the code page of the event files, with CR LF and times in
  /// whole seconds. Members of relay teams are written as individual results. Additional punches
  /// have no place in it.
  std::int32_t exportIOFXML(const std::string& lrk4FileName, const std::string& xmlFileName);
  std::int32_t exportEventToIOFXML(LRKEvent& event, const std::string& xmlFileName);
  std::int32_t writeEventAsIOFXML(LRKEvent& event, const ExportSink& sink);

  /// A result list of IOF XML 3.0 in UTF-8, valid by its schema, with times to the hundredth. Our
  /// own importer reads from it the runners, punches and statuses that it read from another list of
  /// this version. What the schema has no word for:
  ///  - an unknown status is left out together with an empty result, else written as "Finished"
  ///    (with a time), "Active" (with a punch) or "Inactive";
  ///  - a start at 0 is the start that nobody knows: the clock times of start and finish are left
  ///    out, the running time is not;
  ///  - clock times of an event without a date stand on 30 December 1899;
  ///  - members of relay teams are individual results, and the format of a birth date is lost.
  std::int32_t exportIOFXML3(const std::string& lrk4FileName, const std::string& xmlFileName);
  std::int32_t exportEventToIOFXML3(LRKEvent& event, const std::string& xmlFileName);
  std::int32_t writeEventAsIOFXML3(LRKEvent& event, const ExportSink& sink);

 private:
  std::string tempFilePath_ = ".\\";
};

}  // namespace larkstone
