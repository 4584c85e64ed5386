#pragma once

// What the result lists of all versions of IOF XML have in common: classes, their persons and the
// races these ran.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/import/reader_run.hpp"
#include "larkstone/platform/xml.hpp"

namespace larkstone {

/// One person's result in one race of a class.
struct IofResult {
  XmlNode person;  // the PersonResult
  XmlNode result;  // none for a person without one
  int race = 0;
  int number = 0;  // of the PersonResult in its class, from 1
};

/// Tells what of a runner could not be read.
class IofNotes {
 public:
  IofNotes(ImportSession& session, const std::string& className, const IofResult& result,
           const LRKRunner& runner)
      : session_(session), className_(className), result_(result), runner_(runner) {}

  /// "what" or, with a text of the file, "what "text"".
  void operator()(std::string_view what, std::string_view text = {}) const;

 private:
  ImportSession& session_;
  const std::string& className_;
  const IofResult& result_;
  const LRKRunner& runner_;
};

/// What differs between the versions.
struct IofVersion {
  std::string (*importedFrom)(XmlNode list, const std::string& version);
  void (*readEvent)(XmlNode list, LRKEvent& event);
  /// Everything about a class but its course and its runners.
  void (*readClass)(XmlNode classResult, LRKCategory& category);
  /// The course of the race that the category stands for; none when the class has none.
  void (*readCourse)(XmlNode course, LRKCategory& category);
  /// Appends the results of a person with their races; nothing for a person without.
  void (*collectResults)(XmlNode personResult, std::vector<IofResult>& results);
  /// False for a runner that is left out.
  bool (*readRunner)(const IofResult& result, LRKRunner& runner, const IofNotes& notes);
  CourseLengthFrom courseLength;
};

extern const IofVersion iofVersion2;
extern const IofVersion iofVersion3;

/// Reads the classes below a ResultList into the event, as far as the run goes on.
void readIofClasses(const IofVersion& version, XmlNode list, ReadJob& job, ReaderRun& run);

}  // namespace larkstone
