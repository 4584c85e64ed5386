#include "larkstone/import/startlist.hpp"

#include <algorithm>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/name_index.hpp"
#include "larkstone/import/reader_run.hpp"

namespace larkstone {

namespace {

// Names are compared as the event file keeps them, one byte a character.
std::string keyOf(std::string_view utf8) { return lowered1252(windows1252FromUtf8(utf8)); }

// The category that a class belongs to, or -1; of several as near the first.
int categoryFor(const std::string& name, const std::vector<std::string>& categories,
                const NameIndex& index) {
  const std::string key = keyOf(name);
  if (key.empty()) return -1;
  int best = -1;
  std::size_t least = 0;
  index.forEachAgreeing(key, [&](std::size_t i) {
    const std::size_t length = categories[i].size();
    if (length == 0) return;
    const std::size_t difference = length < key.size() ? key.size() - length : length - key.size();
    const auto category = static_cast<int>(i);
    if (best >= 0 && std::pair(difference, category) > std::pair(least, best)) return;
    best = category;
    least = difference;
  });
  return best;
}

// The length of "(25)", "(2 Starter)" or, cut off, "(2" or "(" at the start of a text; 0 for any
// other.
std::size_t countLength(std::string_view text) {
  if (!text.starts_with('(')) return 0;
  const auto close = text.find(')');
  const std::string_view count = text.substr(1, close - 1);
  constexpr std::string_view digits = "0123456789";
  const std::size_t word = std::min(count.find_first_not_of(digits), count.size());
  const bool isCut = close == std::string_view::npos;
  const bool hasNumber = word > 0 || (isCut && count.empty());
  const bool isUnit =
      word == count.size() ||
      (count[word] == ' ' && count.find_first_of("0123456789(", word) == std::string_view::npos);
  if (!hasNumber || !isUnit) return 0;
  return isCut ? text.size() : close + 1;
}

}  // namespace

std::optional<std::string_view> nameBeforeCount(std::string_view heading) {
  for (auto at = heading.find('('); at != std::string_view::npos; at = heading.find('(', at + 1)) {
    const std::size_t length = countLength(heading.substr(at));
    if (length == 0) continue;
    // A number that another one follows at once belongs to the name.
    const auto next = heading.find_first_not_of(' ', at + length);
    const bool another = next != std::string_view::npos && countLength(heading.substr(next)) > 0;
    if (!another) return trimmed(heading.substr(0, at));
  }
  return std::nullopt;
}

bool isClockText(std::string_view word) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  return !word.empty() && isDigit(word.front()) && isDigit(word.back()) &&
         word.find_first_not_of("0123456789.:") == std::string_view::npos &&
         word.find_first_of(".:") != std::string_view::npos &&
         word.find_first_not_of("0.") != std::string_view::npos;
}

bool beginsWithNumber(std::string_view text) {
  text = trimmed(text);
  const std::size_t end = text.find_first_not_of("0123456789");
  return end != 0 && !text.empty() && (end == std::string_view::npos || text[end] == ' ');
}

void Startlist::beginClass(const std::string& name) {
  const auto [found, isNew] = classOfName_.try_emplace(keyOf(name), classes_.size());
  if (isNew) classes_.push_back({name, {}});
  current_ = found->second;
}

void Startlist::add(std::string name, std::string club, std::string_view start, int line) {
  const Time time = isClockText(start) ? stringToClockTime(start, etacAuto) : LRK_NO_TIME;
  // A name of another script has become question marks, which would agree with any such name.
  const bool named = keyOf(name).find_first_not_of("? ") != std::string::npos;
  const bool complete = named && !isDisq(time);
  if (!complete || classes_.empty()) {
    const std::string text = start.empty() ? name : name + ' ' + utf8FromWindows1252(start);
    LineNotes(job_.session, line)(complete ? "no class for" : "no name or start time in", text);
    return;
  }
  hasEntries_ = true;
  classes_[current_].entries.push_back({std::move(name), std::move(club), time, line});
}

// Entries of classes that mean the same category come together, so that each category is stored
// once.
std::vector<Startlist::Task> Startlist::tasks() {
  std::vector<std::string> categories;
  categories.reserve(static_cast<std::size_t>(job_.event.noOfCategories()));
  for (int i = 0; i < job_.event.noOfCategories(); ++i) {
    categories.push_back(keyOf(job_.event.categoryName(i)));
  }
  const NameIndex index(categories);
  std::vector<Task> tasks;
  std::unordered_map<int, std::size_t> taskOfCategory;
  for (Class& from : classes_) {
    if (from.entries.empty()) continue;
    const int category = categoryFor(from.name, categories, index);
    if (category < 0) {
      LineNotes(job_.session, from.entries.front().line)("no category for the class", from.name);
      continue;
    }
    const auto [found, isNew] = taskOfCategory.try_emplace(category, tasks.size());
    if (isNew) tasks.push_back({category, {}});
    std::vector<Entry>& entries = tasks[found->second].entries;
    std::move(from.entries.begin(), from.entries.end(), std::back_inserter(entries));
  }
  return tasks;
}

std::int32_t Startlist::perform(const Task& task) const {
  const auto category = job_.event.category(task.category);
  if (!category) return LRK_COULD_NOT_OPEN_TEMPORARY_FILE;
  std::vector<std::string> names;
  std::vector<std::string> clubs;
  for (int i = 0; i < category->noOfRunners(); ++i) {
    names.push_back(keyOf(category->runner(i).name()));
    clubs.push_back(keyOf(category->runner(i).club()));
  }
  const NameIndex index(std::move(names));
  std::vector<Time> starts(clubs.size(), LRK_NO_TIME);  // of the last entry for each runner
  int left = LRK_MAX_LIST;  // a category has no more runners, so no list means more
  for (const Entry& entry : task.entries) {
    const LineNotes notes(job_.session, entry.line);
    if (left-- <= 0) {
      notes("too many entries for the category", category->name());
      break;
    }
    const std::string club = keyOf(entry.club);
    bool found = false;
    index.forEachAgreeing(keyOf(entry.name), [&](std::size_t i) {
      if (!namesAgree(clubs[i], club)) return;
      starts[i] = entry.start;
      found = true;
    });
    if (!found) notes("no such runner in the category", entry.name);
  }
  for (int i = 0; i < category->noOfRunners(); ++i) {
    const Time start = starts[static_cast<std::size_t>(i)];
    if (isDisq(start)) continue;
    category->runner(i).startTime(start);
    job_.session.countStartTime();
  }
  return job_.event.category(task.category, category);
}

std::int32_t Startlist::complete() {
  const std::vector<Task> all = tasks();
  for (std::size_t i = 0; i < all.size(); ++i) {
    // Told before the category changes: the event may still hand out the very object.
    job_.session.progress(static_cast<float>(i + 1) / static_cast<float>(all.size()));
    if (job_.session.cancelled()) return LRK_IMPORT_CANCELLED;
    if (const std::int32_t error = perform(all[i])) return LRK_IMPORT_EVENT_FILE_ERROR + error;
  }
  if (job_.session.cancelled()) return LRK_IMPORT_CANCELLED;
  const std::int32_t error = job_.event.saveEvent();
  return error == 0 ? 0 : LRK_IMPORT_EVENT_FILE_ERROR + error;
}

}  // namespace larkstone
