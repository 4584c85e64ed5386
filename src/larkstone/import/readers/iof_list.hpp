#pragma once

// What the result lists of all versions of IOF XML have in common: classes, their persons and the
// races these ran.

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "larkstone/import/reader_run.hpp"
#include "larkstone/platform/xml.hpp"

namespace larkstone {

/// One person's result in one race of a class, or on one leg of a relay.
struct IofResult {
  static constexpr int noRace = std::numeric_limits<int>::min();

  XmlNode holder;        // the PersonResult or TeamMemberResult
  XmlNode person;        // the Person in it
  XmlNode organisation;  // the club in it
  XmlNode result;        // none for a person without one
  int race = noRace;
  int number = 0;  // of the PersonResult in its class, from 1
};

/// What a list says about a whole team; start and finish by the clock.
struct IofTeam {
  Time start = 0;
  Time finish = LRK_NO_TIME;
  RelayStanding standing;
};

/// Tells what of a runner could not be read.
class IofNotes {
 public:
  /// "PersonResult 3" of its class.
  struct Element {
    std::string_view name;
    int number = 0;
  };
  IofNotes(ImportSession& session, const std::string& className, Element element,
           const LRKRunner& runner)
      : session_(session), className_(className), element_(element), runner_(runner) {}

  /// "what" or, with a text of the file, "what "text"".
  void operator()(std::string_view what, std::string_view text = {}) const;

 private:
  ImportSession& session_;
  const std::string& className_;
  Element element_;
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
  /// Appends the results of a person with their races; one without a result for a person who has
  /// none.
  void (*collectResults)(XmlNode holder, std::vector<IofResult>& results);
  void (*readRunner)(const IofResult& result, LRKRunner& runner, const IofNotes& notes);
  /// Everything about a team but its members.
  void (*readTeam)(XmlNode team, LRKRunner& runner, IofTeam& listed, const IofNotes& notes);
  /// Where a team stands after the leg of a member's result.
  RelayStanding (*readStanding)(XmlNode result, const IofNotes& notes);
  const char* memberElement;  // of a team
  const char* legElement;     // of a member's result
  bool onlyWithSplits;        // individual runners without split times are left out
  CourseLengthFrom courseLength;
};

extern const IofVersion iofVersion2;
extern const IofVersion iofVersion3;

/// Speakers' lists have radio controls by their codes: puts these in the order of their times, with
/// a note.
void orderRadioControls(ReadJob& job, LRKCategory& category);

/// Reads the classes below a ResultList into the event, as far as the run goes on.
void readIofClasses(const IofVersion& version, XmlNode list, ReadJob& job, ReaderRun& run);

}  // namespace larkstone
