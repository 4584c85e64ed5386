#pragma once

// What all readers share: settings, notifications, the way an import begins and ends.

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/types.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/model/category.hpp"

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
/// called. It tells the session of each category and each step, and stops with LRK_IMPORT_CANCELLED
/// when a step says so.
using Reader = std::int32_t (*)(ReadJob&);

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

  // For readers:

  bool cancelled() const { return cancelRequested_; }
  void newCategory(const std::string& name) const {
    if (onNewCategory) onNewCategory(name);
  }
  /// Reports the part done; false when the reader has to stop.
  bool progress(float fraction);
  /// Tells of something left out. `where` is a function that names the place; it is called only
  /// when somebody listens.
  template <class Where>
  void note(std::string_view what, Where where) const {
    if (onNote) onNote({std::string(what), where()});
  }
  bool notesWanted() const { return static_cast<bool>(onNote); }
  /// Adds a category to the event: 0, or LRK_IMPORT_EVENT_FILE_ERROR and more.
  static std::int32_t addCategory(LRKEvent& event, LRKCategory category);
  /// The end of a complete import: where the event comes from and who made it.
  void complete(LRKEvent& event, const std::string& importedFrom) const;

 private:
  bool importingNow_ = false;
  float fractionCompleted_ = 0;
  std::atomic<bool> cancelRequested_ = false;
};

/// The course length of a category is the average of its runners' lengths, down to 10 m; it stays
/// as it was when no runner has one.
void setCourseLengthFromRunners(LRKCategory& category);

}  // namespace larkstone
