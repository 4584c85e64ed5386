// SIMan lists: a row per card that was read out. They know no categories, so those who punched the
// same controls form one.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/csv_values.hpp"

namespace larkstone {

namespace {

class RowReader {
 public:
  RowReader(ReadJob& job, const CsvFile& row)
      : job_(job),
        row_(row),
        start_(row.header().column("Start punch")),
        finish_(row.header().column("Finish punch")),
        club_(row.header().column("Club")),
        punches_(club_ >= 0 ? club_ + 1 : row.header().column("Punch1") - 1) {
    person_.card = row.header().column("SI card");
    person_.name = row.header().column("Name");
  }

  // The text of the controls, alike for those of one category.
  std::string controls() const {
    LRKPunches punches;
    punches.add(0, LRK_START_CODE);
    eachPair([&](std::string_view code, std::string_view) { punches.add(0, csvCode(code)); });
    punches.add(0, LRK_FINISH_CODE);
    return punches.codesToString();
  }

  bool addRunner(ReaderRun& run) const {
    LRKRunner runner;
    const LineNotes notes(job_.session, row_.line(), &runner);
    readCsvPerson(row_, person_, runner, notes);
    const std::string_view club = row_.field(club_);
    if (!club.empty()) runner.club(std::string(club));
    const Time start = readCsvTime(row_.field(start_), "unreadable start time", notes);
    const Time finish = readCsvTime(row_.field(finish_), "unreadable finish time", notes);
    runner.startTime(start);
    runner.finishTime(finish);
    runner.status(isDisq(start) || isDisq(finish) ? estaDidNotFinish : estaOK);
    eachPair([&](std::string_view code, std::string_view text) {
      const Time time = readCsvTime(text, "unreadable punch time", notes);
      if (runner.punches().add(time, readCsvCode(code, notes)) < 0) notes("too many punches");
    });
    return run.addRunner(std::move(runner), notes);
  }

 private:
  // The pairs of control and clock time run on to the end of the row; empty ones pad it.
  template <class Use>
  void eachPair(Use use) const {
    for (int at = punches_; at < row_.noOfFields(); at += 2) {
      const std::string_view code = row_.field(at);
      const std::string_view time = row_.field(at + 1);
      if (!code.empty() || !time.empty()) use(code, time);
    }
  }

  ReadJob& job_;
  const CsvFile& row_;
  int start_, finish_, club_, punches_;
  CsvPersonColumns person_;
};

// "S-31-32-F" has two controls.
std::string categoryName(int number, std::string_view controls) {
  const auto count = std::count(controls.begin(), controls.end(), '-') - 1;
  return "Course " + std::to_string(number) + " (" + std::to_string(count) + " controls)";
}

}  // namespace

std::int32_t readCsvSiMan(ReadJob& job) {
  CsvFile file;
  if (!file.read(job.fileName) || !file.header().has("Punch1") || !file.header().has("Read at")) {
    return LRK_IMPORT_CSV_INVALID_FORMAT;
  }
  const RowReader row(job, file);
  CsvRowGroups courses;
  while (file.next()) courses.add(row.controls(), file.row());
  courses.sortByKey();

  ReaderRun run(job);
  int number = 0;
  int done = 0;
  for (const CsvRowGroups::Group& course : courses.groups()) {
    LRKCategory category;
    category.name(categoryName(++number, course.key));
    run.beginCategory(std::move(category));
    for (const CsvRow& place : course.rows) {
      file.row(place);
      const bool goesOn = row.addRunner(run);
      if (!goesOn || !run.progress(++done, courses.noOfRows())) return run.code();
    }
  }
  return run.end("SIMan");
}

}  // namespace larkstone
