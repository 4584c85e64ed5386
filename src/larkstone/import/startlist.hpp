#pragma once

// Start times from a start list into the runners of an event.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "larkstone/import/session.hpp"

namespace larkstone {

/// What a start list says: classes in the order of their first mention, and whom each starts when.
/// A reader fills it; complete() then looks for the categories and runners that are meant.
///
/// A class belongs to the category whose name it begins, or that begins its name, with the smallest
/// difference in length. An entry is meant for every runner whose name and club agree with it in
/// the same way. Letter case does not matter.
///
///     Startlist list(job);
///     list.beginClass("H21");
///     list.add("Eva Berg", "OK Syd", "10:02:00", line);
///     return list.complete();
class Startlist {
 public:
  explicit Startlist(ReadJob& job) : job_(job) {}

  /// The class that is meant from here on; one of the same name is gone on with.
  void beginClass(const std::string& name);
  /// An entry of the class, its start a time of day. One whose start is missing or cannot be read
  /// is dropped, so is one outside of any class; a note tells.
  void add(std::string name, std::string club, std::string_view start, int line);
  bool hasEntries() const { return hasEntries_; }

  /// Sets the start times and saves the event. After a cancel the categories done so far are
  /// changed and the event is not saved.
  std::int32_t complete();

 private:
  struct Entry {
    std::string name;
    std::string club;
    Time start;
    int line;
  };
  struct Class {
    std::string name;
    std::vector<Entry> entries;
  };
  // The entries for one category.
  struct Task {
    int category;
    std::vector<Entry> entries;
  };

  std::vector<Task> tasks();
  std::int32_t perform(const Task& task) const;

  ReadJob& job_;
  std::vector<Class> classes_;
  std::unordered_map<std::string, std::size_t> classOfName_;
  std::size_t current_ = 0;
  bool hasEntries_ = false;
};

/// Whether a word is a time of day: digits in groups, "10:02:00" or "10.02". "0.00" stands where
/// there is none.
bool isClockText(std::string_view word);

/// What stands before the number of entries in the heading of a class: "H21 (A)" of "H21 (A) (25)",
/// "H21" of "H21 (2 Starter)  5.2 km" or of "H21 (2", which is cut off. Nothing without a number.
std::optional<std::string_view> nameBeforeCount(std::string_view heading);

/// Whether a text begins with a start number, as entries do and headers do not.
bool beginsWithNumber(std::string_view text);

}  // namespace larkstone
