// SportSoftware OE lists: a row per runner, the rows of a category behind one another.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/time.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/csv_values.hpp"
#include "larkstone/import/status_words.hpp"

namespace larkstone {

namespace {

// Where the pairs of control and time begin: behind the controls stand the place and the punches at
// start and finish, unless the header ends before.
int pairsBegin(const CsvHeader& header) {
  const int controls = header.column("Course controls");
  const int punch1 = header.column("Punch1");
  if (controls < 0) return punch1 >= 0 ? punch1 - 1 : header.noOfColumns();
  return punch1 >= 0 ? controls + 4 : std::min(controls + 4, header.noOfColumns());
}

struct Columns {
  Columns(const CsvHeader& header, bool withPunches)
      : person{header.column("SI card"),    header.column("Chipno"),  header.column("Database Id"),
               header.column("First name"), header.column("Surname"), header.column("Name"),
               header.column("S"),          header.column("YB")},
        category{header.column("Cl. no."), header.column("Short"), header.column("Long")},
        start(header.column("Start")),
        finish(header.column("Finish")),
        time(header.column("Time")),
        place(header.column("Pl")),
        course(header.column("Course")),
        status(header.column("Classifier")),
        clubNo(header.column("Club no.")),
        clubName(header.column("Cl.name")),
        city(header.column("City")),
        club(header.column("Club")),
        nation(header.column("Nat")),
        ranking(header.column("Text3")),
        km(header.column("km")),
        controls(header.column("Course controls")),
        punches(pairsBegin(header)),
        hasPunches(withPunches) {
    const int punch1 = header.column("Punch1");
    inGroups = punch1 >= 0 && header.text(punch1 + 1).ends_with('1');
    if (inGroups) punches = punch1 - 2;
  }

  CsvPersonColumns person;
  CsvClassColumns category;
  int start, finish, time, place, course, status;
  int clubNo, clubName, city, club, nation;
  int ranking, km, controls;
  int punches;  // the first field of the first punch
  bool hasPunches;
  bool inGroups = false;
};

class RowReader {
 public:
  RowReader(ReadJob& job, const CsvFile& row, bool withPunches)
      : job_(job), row_(row), columns_(row.header(), withPunches) {}

  const CsvClassColumns& category() const { return columns_.category; }

  bool addRunner(ReaderRun& run) const {
    LRKRunner runner;
    const LineNotes notes(job_.session, row_.line(), &runner);
    readCsvPerson(row_, columns_.person, runner, notes);
    readTimes(runner, notes);
    const std::string_view course = row_.field(columns_.course);
    if (!course.empty()) runner.courseName(std::string(course));
    readCsvStatus(row_.field(columns_.status), runner, notes);
    if (isNotCompetingWord(row_.field(columns_.place))) {
      runner.status(statusByPlace(row_.field(columns_.place), runner.status()));
    }
    readClub(runner);
    if (const auto place = csvInteger(row_.field(columns_.ranking))) {
      runner.rankingPosition(saturated<std::int16_t>(*place));
    }
    readCsvLength(row_.field(columns_.km), runner, notes);
    if (columns_.inGroups) {
      readGroups(runner, notes);
    } else if (columns_.hasPunches) {
      readPairs(runner, notes);
    }
    return run.addRunner(std::move(runner), notes);
  }

 private:
  // Punches count from the start. A start that is written but cannot be read is 0, and the finish
  // follows from the time of the run.
  void readTimes(LRKRunner& runner, const LineNotes& notes) const {
    const std::string_view text = row_.field(columns_.start);
    const Time start = sumOfTimes(readCsvTime(text, "unreadable start time", notes), job_.zeroTime);
    const bool known = text.empty() || !isDisq(start);
    runner.startTime(isDisq(start) ? 0 : start);
    const Time end = known
                         ? readCsvTime(row_.field(columns_.finish), "unreadable finish time", notes)
                         : readCsvTime(row_.field(columns_.time), "unreadable time", notes);
    runner.finishTime(sumOfTimes(end, known ? job_.zeroTime : 0));
  }

  // The club's short name may stand before its name, which the lists call its city.
  void readClub(LRKRunner& runner) const {
    if (const auto number = csvInteger(row_.field(columns_.clubNo))) runner.clubID(*number);
    std::string club(row_.field(columns_.clubName));
    club.append(" ").append(row_.field(columns_.city));
    std::string_view name = trimmed(club);
    if (name.empty()) name = row_.field(columns_.club);
    if (!name.empty()) runner.club(std::string(name));
    const std::string_view nation = row_.field(columns_.nation);
    if (!nation.empty()) runner.clubCountry(std::string(nation));
  }

  Time punchTime(int position, const LRKRunner& runner, const LineNotes& notes) const {
    const Time time = readCsvTime(row_.field(position), "unreadable punch time", notes);
    return sumOfTimes(time, runner.startTime());
  }

  static void add(LRKPunches& punches, Time time, Code code, const LineNotes& notes) {
    if (punches.add(time, code) < 0) notes("too many punches");
  }

  // As many pairs as the course has controls. Nobody knows the course of a runner without that
  // number: the punches are kept beside it. An empty pair pads the row.
  void readPairs(LRKRunner& runner, const LineNotes& notes) const {
    const auto controls = csvInteger(row_.field(columns_.controls));
    LRKPunches& punches = controls ? runner.punches() : runner.extraPunches();
    std::int32_t read = 0;
    bool any = false;
    int position = columns_.punches;
    for (; position < row_.noOfFields() && (!controls || read < *controls); position += 2) {
      ++read;
      const std::string_view code = row_.field(position);
      if (code.empty() && row_.field(position + 1).empty()) continue;
      any = true;
      add(punches, punchTime(position + 1, runner, notes), readCsvCode(code, notes), notes);
    }
    if (controls && any && read < *controls) {
      notes("fewer punches than the course has controls", row_.field(columns_.controls));
    }
  }

  void readGroups(LRKRunner& runner, const LineNotes& notes) const {
    for (int at = columns_.punches; at + 1 < row_.noOfFields(); at += csvRadioFields) {
      if (row_.field(at + 1).empty()) continue;
      const Code code = readCsvCode(row_.field(at + 1), notes);
      const Time time = punchTime(at + 2, runner, notes);
      if (code != csvRadioFinish) {
        add(runner.punches(), time, code, notes);
      } else if (isDisq(runner.finishTime())) {
        runner.finishTime(time);
      }
    }
  }

  ReadJob& job_;
  const CsvFile& row_;
  const Columns columns_;
};

// Whether a row goes on beyond the header with a pair of control and time.
bool hasPairBehindHeader(const CsvFile& row) {
  const int end = row.header().noOfColumns();
  int at = pairsBegin(row.header());
  if (at + 1 < end) at += (end - at) / 2 * 2;
  return csvCode(row.field(at)) != 0 && !isDisq(csvTime(row.field(at + 1)));
}

bool anyRowGoesOn(const std::string& path) {
  CsvFile file;
  if (!file.read(path)) return false;
  while (file.next()) {
    if (hasPairBehindHeader(file)) return true;
  }
  return false;
}

// Newer layouts and those of other programs come without punches as well.
bool isReadWithoutPunches(const std::string& path, const CsvHeader& header) {
  const bool byTheWord = detectCsv({path, false}) != 0 && !header.isImitation();
  return !byTheWord && detectCsv({path, true}) != 0;
}

}  // namespace

std::int32_t readCsvIndividual(ReadJob& job) {
  CsvFile file;
  if (!file.read(job.fileName)) return LRK_IMPORT_CSV_INVALID_FORMAT;
  const CsvHeader& header = file.header();
  const bool withPunches = header.has("Punch1") || anyRowGoesOn(job.fileName);
  if (!header.has("Long") || (!withPunches && !isReadWithoutPunches(job.fileName, header))) {
    return LRK_IMPORT_CSV_INVALID_FORMAT;
  }
  ReaderRun run(job, CourseLengthFrom::runners);
  const RowReader row(job, file, withPunches);
  while (file.next()) {
    if (!row.category().reachedBy(file)) {
      LineNotes(job.session, file.line())("too few fields");
    } else {
      if (!run.hasCategory() || run.category().name() != row.category().nameIn(file)) {
        run.beginCategory(row.category().categoryOf(file));
      }
      if (!row.addRunner(run)) break;
    }
    if (!run.progress(file.line(), file.noOfLines())) break;
  }
  return run.end("OE200x");
}

}  // namespace larkstone
