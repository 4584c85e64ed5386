#pragma once

// What all readers share: settings, notifications, the way an import begins and ends.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/import/import.hpp"

namespace larkstone {

class ImportSession;

/// What a reader is asked to do.
struct ReadJob {
  LRKEvent& event;
  const std::string& fileName;
  ImportSession& session;
  Time zeroTime = 0;
  enmRelayParallelMode parallelMode = erpmFastestTime;
  std::int16_t stageIndex = 0;
};

/// A reader reads one format: it knows its file and nothing else. The file exists when it is
/// called. What it has read goes through a ReaderRun.
using Reader = std::int32_t (*)(ReadJob&);

/// In bytes; what is longer is cut.
inline constexpr std::size_t longestNoteText = 200;

class ImportSession {
 public:
  std::string master;
  std::string tempFilePath = ".\\";
  std::string wholeLegsText = "whole legs";
  std::string commonControlsText = "common controls";
  std::function<void(float)> onWorkProgress;
  std::function<void(const std::string&)> onNewCategory;
  std::function<void(const ImportNote&)> onNote;

  bool importingNow() const { return importingNow_; }
  float fractionCompleted() const { return fractionCompleted_; }
  void cancel() { cancelRequested_ = true; }

  /// Runs a reader, or returns LRK_IMPORT_UNKNOWN for none.
  std::int32_t run(Reader reader, ReadJob job);

  /// What the last import left out; of many the first ones. How many there were.
  const std::vector<ImportNote>& warnings() const { return warnings_; }
  int noOfWarnings() const { return noOfWarnings_; }
  /// How many runners the last start list gave a start time.
  int noOfStartTimesSet() const { return noOfStartTimesSet_; }

  // For readers:

  bool cancelled() const { return cancelRequested_; }
  void progress(float fraction);
  /// Tells of something left out: "what" or, with a text of the file, "what "text"". where() names
  /// the place; it is called only when the note is wanted.
  template <class Where>
  void note(std::string_view what, std::string_view text, Where where) {
    if (noOfWarnings_ < std::numeric_limits<int>::max()) ++noOfWarnings_;
    if (notesWanted()) keep(what, text, where());
  }
  void countStartTime() { ++noOfStartTimesSet_; }
  /// The end of a complete import: where the event comes from and who made it.
  void complete(LRKEvent& event, const std::string& importedFrom) const;

 private:
  bool notesWanted() const;
  void keep(std::string_view what, std::string_view text, std::string where);

  bool importingNow_ = false;
  float fractionCompleted_ = 0;
  std::atomic<bool> cancelRequested_ = false;
  std::vector<ImportNote> warnings_;
  int noOfWarnings_ = 0;
  int noOfStartTimesSet_ = 0;
};

}  // namespace larkstone
