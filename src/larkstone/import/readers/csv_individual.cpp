// SportSoftware OE lists: a row per runner, the rows of a category behind one another.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/csv_values.hpp"

namespace larkstone {

namespace {

struct Columns {
  explicit Columns(const CsvHeader& header)
      : person{header.column("SI card"),    header.column("Chipno"),  header.column("Database Id"),
               header.column("First name"), header.column("Surname"), header.column("Name"),
               header.column("S"),          header.column("YB")},
        category{header.column("Cl. no."), header.column("Short"), header.column("Long")},
        start(header.column("Start")),
        finish(header.column("Finish")),
        course(header.column("Course")),
        status(header.column("Classifier")),
        clubNo(header.column("Club no.")),
        clubName(header.column("Cl.name")),
        city(header.column("City")),
        club(header.column("Club")),
        nation(header.column("Nat")),
        ranking(header.column("Text3")),
        km(header.column("km")),
        controls(header.column("Course controls")) {
    // Behind the controls stand the place and the punches at start and finish.
    const int punch1 = header.column("Punch1");
    hasPunches = punch1 >= 0;
    inGroups = hasPunches && header.text(punch1 + 1).ends_with('1');
    punches = controls >= 0 ? controls + 4 : punch1 - 1;
    if (inGroups) punches = punch1 - 2;
  }

  CsvPersonColumns person;
  CsvClassColumns category;
  int start, finish, course, status;
  int clubNo, clubName, city, club, nation;
  int ranking, km, controls;
  int punches = 0;  // the first field of the first punch
  bool hasPunches = false;
  bool inGroups = false;
};

class RowReader {
 public:
  RowReader(ReadJob& job, const CsvFile& row) : job_(job), row_(row), columns_(row.header()) {}

  const CsvClassColumns& category() const { return columns_.category; }

  bool addRunner(ReaderRun& run) const {
    LRKRunner runner;
    const LineNotes notes(job_.session, row_.line(), &runner);
    readCsvPerson(row_, columns_.person, runner, notes);
    readTimes(runner, notes);
    const std::string_view course = row_.field(columns_.course);
    if (!course.empty()) runner.courseName(std::string(course));
    readCsvStatus(row_.field(columns_.status), runner, notes);
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
  void readTimes(LRKRunner& runner, const LineNotes& notes) const {
    const Time start = readCsvTime(row_.field(columns_.start), "unreadable start time", notes);
    const Time finish = readCsvTime(row_.field(columns_.finish), "unreadable finish time", notes);
    const Time startClock = sumOfTimes(start, job_.zeroTime);
    runner.startTime(isDisq(startClock) ? 0 : startClock);
    runner.finishTime(sumOfTimes(finish, job_.zeroTime));
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

// The newer layout of results without punches says so in its first field.
bool isReadable(const CsvHeader& header) {
  return header.has("Long") && (header.has("Punch1") || header.layout().starts_with("OE0012"));
}

}  // namespace

std::int32_t readCsvIndividual(ReadJob& job) {
  CsvFile file;
  if (!file.read(job.fileName) || !isReadable(file.header())) return LRK_IMPORT_CSV_INVALID_FORMAT;
  ReaderRun run(job, CourseLengthFrom::runners);
  const RowReader row(job, file);
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
