// SIMan lists: a row per card that was read out. They know no categories, so those who punched the
// same controls form one.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

  LRKRunner runner() const {
    LRKRunner runner;
    const LineNotes notes(job_.session, row_.line(), &runner);
    readCsvPerson(row_, person_, runner, notes);
    const std::string_view club = row_.field(club_);
    if (!club.empty()) runner.club(std::string(club));
    const Time start = readCsvTime(row_.field(start_), "unreadable start time", notes);
    const Time finish = readCsvTime(row_.field(finish_), "unreadable finish time", notes);
    runner.startTime(isDisq(start) ? 0 : start);
    runner.finishTime(finish);
    runner.status(isDisq(start) || isDisq(finish) ? estaDidNotFinish : estaOK);
    // The pairs of control and clock time run on to the end of the row.
    for (int at = punches_; at < row_.noOfFields(); at += 2) {
      const std::string_view code = row_.field(at);
      const std::string_view time = row_.field(at + 1);
      if (code.empty() && time.empty()) continue;
      if (runner.punches().add(readCsvTime(time, "unreadable punch time", notes),
                               readCsvCode(code, notes)) < 0) {
        notes("too many punches");
      }
    }
    return runner;
  }

 private:
  ReadJob& job_;
  const CsvFile& row_;
  int start_, finish_, club_, punches_;
  CsvPersonColumns person_;
};

struct Card {
  int line = 0;
  LRKRunner runner;
};

}  // namespace

std::int32_t readCsvSiMan(ReadJob& job) {
  CsvFile file;
  if (!file.read(job.fileName) || !file.header().has("Punch1") || !file.header().has("Read at")) {
    return LRK_IMPORT_CSV_INVALID_FORMAT;
  }
  ReaderRun run(job);
  const RowReader row(job, file);
  std::map<std::string, std::vector<Card>> courses;  // by the text of their controls
  while (file.next()) {
    Card card{file.line(), row.runner()};
    std::string controls = card.runner.punches().codesToString();
    courses[std::move(controls)].push_back(std::move(card));
    if (!run.progress(file.line(), file.noOfLines())) return run.code();
  }
  int number = 0;
  for (auto& [controls, cards] : courses) {
    const int count = cards.front().runner.punches().count() - 2;
    LRKCategory category;
    category.name("Course " + std::to_string(++number) + " (" + std::to_string(count) +
                  " controls)");
    run.beginCategory(std::move(category));
    for (Card& card : cards) {
      const LineNotes notes(job.session, card.line);
      if (!run.addRunner(std::move(card.runner), notes)) return run.code();
    }
  }
  return run.end("SIMan");
}

}  // namespace larkstone
