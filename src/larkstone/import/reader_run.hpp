#pragma once

// What every reader does besides reading its format: categories, runners, progress, the end.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/import/relay_results.hpp"
#include "larkstone/import/session.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone {

/// Where the course length of a category comes from.
enum class CourseLengthFrom { list, runners };

/// One run of a reader. It holds the open category until that goes into the event, and keeps in
/// mind why the reader has to stop: a request to cancel or an event that takes no more. Whatever is
/// called after that does nothing, so a reader may look at stopped() where it suits it.
///
///     ReaderRun run(job, CourseLengthFrom::runners);
///     LineNotes notes(job.session, lines.number());
///     run.beginCategory(std::move(category));
///     run.addRunner(std::move(runner), notes);
///     if (!run.progress(lines.number(), lines.count())) return run.code();
///     return run.end("OE200x");
class ReaderRun {
 public:
  explicit ReaderRun(ReadJob& job, CourseLengthFrom courseLength = CourseLengthFrom::list)
      : job_(job), courseLength_(courseLength) {}

  /// Ends the open category, tells of the new one and opens it. It has its name.
  void beginCategory(LRKCategory category);
  /// Whether a category is open.
  bool hasCategory() const { return open_; }
  /// The open category.
  LRKCategory& category() { return category_; }
  /// Adds the open category to the event.
  void endCategory();
  /// Adds what the open category, a relay (see relay_results.hpp), consists of. Notes when the list
  /// places its teams otherwise than their times do.
  void endRelay();
  /// Forgets the open category.
  void dropCategory() { open_ = false; }

  /// Adds a complete runner to the open category, with a start and a finish punch whatever the list
  /// says; notes("what") tells that there is no room. False when the reader has to stop.
  template <class Notes>
  bool addRunner(LRKRunner runner, const Notes& notes) {
    if (category_.noOfRunners() >= LRK_MAX_LIST) {
      notes("the category is full");
    } else {
      add(std::move(runner));
    }
    return !stopped();
  }

  /// The same for a team or member of a relay, with what the list says about the team.
  template <class Notes>
  bool addToRelay(LRKRunner runner, const RelayStanding& standing, const Notes& notes) {
    const auto place = static_cast<std::size_t>(category_.noOfRunners());
    const bool goesOn = addRunner(std::move(runner), notes);
    standings_.resize(place);
    standings_.push_back(standing);
    return goesOn;
  }

  /// How many categories and relays were added, and how many of them had no name.
  int noOfAdded() const { return noOfAdded_; }
  int noOfNameless() const { return noOfNameless_; }

  /// Reports the part done, at most all of it (the end of a page counts as its last line); false
  /// when the reader has to stop.
  bool progress(int done, int total);

  bool stopped();
  /// Why the reader stopped; 0 while it goes on.
  std::int32_t code() const { return code_; }
  /// Ends the open category and, unless the reader had to stop, the import: where the event comes
  /// from and who made it. The result of the reader.
  std::int32_t end(const std::string& importedFrom);

 private:
  void add(LRKRunner runner);
  void countCategory();
  void notePlaces(const LRKCategory& teams);

  ReadJob& job_;
  CourseLengthFrom courseLength_;
  LRKCategory category_;
  std::vector<RelayStanding> standings_;  // of the runners of a relay
  bool open_ = false;
  int noOfAdded_ = 0;
  int noOfNameless_ = 0;
  std::int32_t code_ = 0;
};

/// Tells what of a line could not be read. The runner is named when it is known.
class LineNotes {
 public:
  LineNotes(ImportSession& session, int line, const LRKRunner* runner = nullptr)
      : session_(session), line_(line), runner_(runner) {}

  /// "what" or, with a text of the line, "what "text"".
  void operator()(std::string_view what, std::string_view text = {}) const;

 private:
  ImportSession& session_;
  int line_;
  const LRKRunner* runner_;
};

/// Gives a runner the start and the finish punch where they are missing: a start at 0, a finish
/// without a time.
void completePunches(LRKRunner& runner);

/// `element "name"`, as notes name things. Of a long name, which every note of its line would copy,
/// the beginning.
std::string quoted(std::string_view element, std::string_view name);
/// The runner's name, or its beginning.
std::string nameInNotes(const LRKRunner& runner);

}  // namespace larkstone
