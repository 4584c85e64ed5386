// Start lists of SportSoftware's programs: lines in columns under a header, as a page or a text.
//
//     Stnr Name                 Jg Verein                  Start
//
//     H21  (25)     5.200 km  180 m  15 P
//       12 Eva Berg             80 OLG Beispiel         10:02:00
//
// Lists by club have the class in a column, a heading for the club and a start for each stage:
//
//      Stnr Name                         Jg I-Karte Kategorie     Anz          E1         E2
//
//     2   OLG BEISPIEL          S
//         1 Berg/Muster                             D -12                10:02:00
//         7 Muster Julia                 84    5388 D 17-18              11:31:00   10:57:00
//
// Texts begin below their header word, times end at or below theirs.

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "larkstone/core/text.hpp"
#include "larkstone/import/csv_columns.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/startlist.hpp"

namespace larkstone {

namespace {

constexpr std::string_view nameKeys[] = {"Name", "Surname", "First name"};
constexpr std::string_view startWords[] = {"startzeit", "starttid", "starttime"};
constexpr std::string_view classWords[] = {
    "kategorie", "class",      "cat.",      "klass",     "klasse",
    "catégorie", "categoria",  "kategória", "osztály",   "sarja",
    "luokka",    "kategorija", "categoría", "kategoria", "category",
};

constexpr std::size_t mostStages = 9;

bool isOneOf(std::string_view text, const auto& words) {
  return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

// Where a header word stands, from 0.
struct Span {
  std::size_t start = 0;
  std::size_t end = 0;                        // behind its last character
  std::size_t next = std::string_view::npos;  // where the next word begins
};

struct Columns {
  std::optional<Span> name;
  std::optional<Span> club;
  std::optional<Span> className;
  std::vector<Span> starts;  // one for each stage

  bool areKnown() const { return name && !starts.empty(); }
  void take(const std::string& word, const Span& span);
};

// "E1": the first of at most nine stages.
bool isStageWord(std::string_view word) {
  return word.size() == 2 && word[0] == 'E' && word[1] >= '1' && word[1] <= '9';
}

void Columns::take(const std::string& word, const Span& span) {
  const std::string_view key = columnKey(word);
  const std::string lower = lowered(word);
  if (key == "Start" || isOneOf(lower, startWords) || isStageWord(word)) {
    if (starts.size() < mostStages) starts.push_back(span);
  } else if (!name && isOneOf(key, nameKeys)) {
    name = span;
  } else if (!club && key == "Club") {
    club = span;
  } else if (!className && isOneOf(lower, classWords)) {
    className = span;
  }
}

Columns columnsOf(std::string_view header) {
  Columns columns;
  const std::vector<Word> words = wordsOf(header);
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::size_t next = i + 1 < words.size() ? words[i + 1].begin() : std::string_view::npos;
    columns.take(utf8FromWindows1252(words[i].text), {words[i].begin(), words[i].end, next});
  }
  return columns;
}

// The word that stands below a header word, at least in part.
std::optional<Word> wordBelow(std::string_view line, const Span& span) {
  for (const Word& word : wordsOf(line)) {
    if (word.begin() >= span.end) break;
    if (word.end > span.start) return word;
  }
  return std::nullopt;
}

bool isStart(const std::optional<Word>& word) {
  return word && isClockText(word->text) && word->text.find(':') != std::string_view::npos;
}

// Start numbers stand behind blanks, headings at the margin.
bool isNumberedEntry(std::string_view line) {
  return line.front() == ' ' && beginsWithNumber(line);
}

// "2   OLG BEISPIEL     S": a number, the club, its region.
std::string clubHeadingOf(std::string_view line) {
  line = trimmed(line);
  std::string_view field = popField(line, " ");
  if (field.find_first_not_of("0123456789") != std::string_view::npos) {
    return utf8FromWindows1252(
        trimmed(std::string(field) + ' ' + std::string(textBefore(line, "  "))));
  }
  return utf8FromWindows1252(trimmed(textBefore(trimmed(line), "  ")));
}

class SportSoftwareStartlist {
 public:
  explicit SportSoftwareStartlist(ReadJob& job)
      : list_(job), stage_(static_cast<std::size_t>(std::max<int>(job.stageIndex, 0))) {}

  void read(std::string_view page) {
    for (const auto& [number, line] : preformattedLines(page)) readLine(line, number);
  }
  Startlist& list() { return list_; }

 private:
  void readLine(std::string_view line, int number);
  void readHeading(std::string_view line, int number);
  void addEntry(std::string_view line, const Word& start, int number);

  Startlist list_;
  Columns columns_;
  std::size_t stage_;
  std::string club_;  // of the heading
};

void SportSoftwareStartlist::readLine(std::string_view line, int number) {
  if (line.find(':') == std::string_view::npos) {
    if (Columns columns = columnsOf(line); columns.areKnown()) {
      columns_ = std::move(columns);
      return;
    }
  }
  if (!columns_.areKnown()) return;
  std::vector<std::optional<Word>> starts;
  for (const Span& span : columns_.starts) starts.push_back(wordBelow(line, span));
  if (std::none_of(starts.begin(), starts.end(), isStart)) {
    readHeading(line, number);
  } else if (stage_ < starts.size() && isStart(starts[stage_])) {
    addEntry(line, *starts[stage_], number);
  }
}

// Without a class in the line, or a start number, it is no entry that lacks its start.
void SportSoftwareStartlist::readHeading(std::string_view line, int number) {
  if (columns_.className) {
    if (columnText(line, columns_.className->start).empty()) {
      club_ = clubHeadingOf(line);
      return;
    }
  } else if (const auto name = nameBeforeCount(line); name && !isNumberedEntry(line)) {
    list_.beginClass(utf8FromWindows1252(*name));
    return;
  }
  if (beginsWithNumber(line)) {
    list_.add(utf8FromWindows1252(columnText(line, columns_.name->start, columns_.name->next)), {},
              {}, number);
  }
}

void SportSoftwareStartlist::addEntry(std::string_view line, const Word& start, int number) {
  const auto below = [&](const Span& span) {
    const std::size_t end =
        start.begin() > span.start ? std::min(span.next, start.begin()) : span.next;
    return utf8FromWindows1252(columnText(line, span.start, end));
  };
  if (columns_.className) list_.beginClass(below(*columns_.className));
  const std::string names = below(*columns_.name);
  const std::string club = columns_.club ? below(*columns_.club) : club_;
  // Runners who start together stand in one line.
  std::string_view rest = names;
  do {
    list_.add(std::string(trimmed(popField(rest, "/"))), club, start.text, number);
  } while (!rest.empty());
}

}  // namespace

std::int32_t readSportSoftwareStartlist(ReadJob& job) {
  TextLines lines;
  if (!lines.read(job.fileName, TextLines::Form::windows1252)) return LRK_IMPORT_STARTLIST_UNKNOWN;
  SportSoftwareStartlist reader(job);
  reader.read(lines.text());
  if (!reader.list().hasEntries() && detectSportSoftwareCredit({job.fileName}) == 0) {
    return LRK_IMPORT_STARTLIST_UNKNOWN;
  }
  return reader.list().complete();
}

}  // namespace larkstone
