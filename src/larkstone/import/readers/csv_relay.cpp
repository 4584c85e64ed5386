// SportSoftware OS lists of relays: a row per runner with the punches of radio controls, or a row
// per team with a block of fields for each of its runners.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "larkstone/core/text.hpp"
#include "larkstone/import/passing_order.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/csv_relay_teams.hpp"
#include "larkstone/import/readers/csv_values.hpp"
#include "larkstone/import/relay_results.hpp"
#include "larkstone/import/status_words.hpp"

namespace larkstone {

namespace {

// Both layouts have a column that all languages write alike or the table knows best; in lists that
// name their layout every other column stands at a fixed distance, whatever its word. Elsewhere
// the words tell.
class Columns {
 public:
  Columns(const CsvHeader& header, bool fixed) : header_(header), fixed_(fixed) {}
  int operator()(std::string_view key, int place) const {
    return fixed_ ? place : header_.column(key);
  }

 private:
  const CsvHeader& header_;
  bool fixed_;
};

// A runner's own times and status, by the clock.
struct RunColumns {
  int start, finish, time, status;

  void read(const CsvFile& row, Time zeroTime, RelayMember& member, const LineNotes& notes) const {
    const Time startTime = readCsvTime(row.field(start), "unreadable start time", notes);
    const Time finishTime = readCsvTime(row.field(finish), "unreadable finish time", notes);
    const Time running = readCsvTime(row.field(time), "unreadable time", notes);
    Time startClock = sumOfTimes(startTime, zeroTime);
    Time finishClock = sumOfTimes(finishTime, zeroTime);
    if (isDisq(startClock) && !isDisq(finishClock) && running >= 0 && running <= finishClock) {
      startClock = finishClock - running;
    }
    member.startKnown = !isDisq(startClock);
    if (!member.startKnown) startClock = 0;
    if (isDisq(finishClock)) finishClock = sumOfTimes(startClock, running);
    member.runner.startTime(startClock);
    member.runner.finishTime(finishClock);
    readCsvStatus(row.field(status), member.runner, notes);
  }
};

// What the list says of the team.
struct StandingColumns {
  int time = -1;
  int status = -1;
  int place = -1;

  RelayStanding read(const CsvFile& row, const LineNotes& notes) const {
    RelayStanding standing;
    standing.time = readCsvTime(row.field(time), "unreadable time of the team", notes);
    LRKRunner result;
    readCsvStatus(row.field(status), result, notes);
    const enmStatus known = statusByPlace(row.field(place), result.status());
    if (known != estaUnknown) standing.status = known;
    standing.place = csvInteger(row.field(place)).value_or(0);
    return standing;
  }
};

bool isLeg(std::optional<std::int32_t> leg) { return leg && *leg >= 1 && *leg <= mostRelayLegs; }

// "Paimion Rasti 2" runs for the club "Paimion Rasti".
std::string clubOfTeam(std::string_view team) {
  const auto blank = team.find_last_of(' ');
  if (blank == std::string_view::npos) return std::string(team);
  const std::string_view number = team.substr(blank + 1);
  const bool numbered =
      !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
  return std::string(trimmed(numbered ? team.substr(0, blank) : team));
}

// A row per runner. Behind the combination stand the time of the team and its status, both of which
// may be missing, its place, then the punches.
class RunnerRows {
 public:
  static bool fits(const CsvHeader& header) { return header.has("Combination"); }

  explicit RunnerRows(const CsvHeader& header)
      : combination_(header.column("Combination")),
        column_(header, combination_ == 29 && header.layout().starts_with("OS0016")),
        person_{-1,
                column_("Chipno", 14),
                column_("Database Id", 16),
                column_("First name", 7),
                column_("Surname", 6),
                -1,
                column_("S", 9),
                column_("YB", 8)},
        class_{column_("Cl. no.", 19), column_("Short", 20), header.column("Long")},
        run_{column_("Start", 10), column_("Finish", 11), column_("Time", 12),
             column_("Classifier", 13)},
        number_(column_("Stno", 1)),
        leg_(column_("Leg", 4)),
        clubNo_(column_("Club no.", 17)),
        team_(column_("Club", 18)),
        course_(column_("Course", 25)),
        km_(column_("km", 26)),
        punches_(combination_ + 1) {
    while (punches_ < header.noOfColumns() && !header.text(punches_).ends_with('1')) ++punches_;
    const int between = punches_ - combination_ - 1;
    standing_.place = between >= 1 ? punches_ - 1 : -1;
    standing_.time = between >= 2 ? combination_ + 1 : -1;
    standing_.status = between >= 3 ? combination_ + 2 : -1;
  }

  const CsvClassColumns& classColumns() const { return class_; }

  void read(const CsvFile& row, ReadJob& job, RelayClass& relay) const {
    RelayMember member;
    member.line = row.line();
    const LineNotes notes(job.session, row.line(), &member.runner);
    readCsvPerson(row, person_, member.runner, notes);
    const auto leg = csvInteger(row.field(leg_));
    if (!isLeg(leg)) return notes("no leg of a relay", row.field(leg_));
    member.runner.relayLeg(static_cast<std::int16_t>(*leg));
    run_.read(row, job.zeroTime, member, notes);
    readCourse(row, member.runner, notes);
    readSplits(row, member, notes);

    const std::string_view name = sharedName(row.field(team_));
    RelayTeam& team = relay.team(csvInteger(row.field(number_)), name);
    if (team.members.empty()) {
      team.line = row.line();
      team.name = name;
      team.club = clubOfTeam(name);
      team.clubId = csvInteger(row.field(clubNo_));
    }
    member.standing = standing_.read(row, notes);
    relay.add(std::move(member), team);
  }

 private:
  void readCourse(const CsvFile& row, LRKRunner& runner, const LineNotes& notes) const {
    std::string course(row.field(course_));
    course.append(" ").append(row.field(combination_));
    const std::string_view name = trimmed(course);
    if (!name.empty()) runner.courseName(std::string(name));
    readCsvLength(row.field(km_), runner, notes);
  }

  void readSplits(const CsvFile& row, RelayMember& member, const LineNotes& notes) const {
    for (int at = punches_; at + 2 < row.noOfFields(); at += csvRadioFields) {
      if (row.field(at + 1).empty()) continue;
      const Code code = readCsvCode(row.field(at + 1), notes);
      const Time time = readCsvTime(row.field(at + 2), "unreadable punch time", notes);
      if (code != csvRadioFinish) member.splits.push_back({code, time});
    }
  }

  int combination_;
  Columns column_;
  CsvPersonColumns person_;
  CsvClassColumns class_;
  RunColumns run_;
  int number_, leg_, clubNo_, team_, course_, km_;
  int punches_;
  StandingColumns standing_;
};

// A row per team. The blocks begin with a column that is called Xtra1, Xtra2, ... everywhere.
class TeamRows {
 public:
  static bool fits(const CsvHeader& header) { return blockStart(header, "xtra1") >= 0; }

  explicit TeamRows(const CsvHeader& header)
      : blocks_(blockStart(header, "xtra1")),
        column_(header, blocks_ == 31 && !header.layout().empty()),
        class_{column_("Cl. no.", 19), column_("Short", 20), column_("Long", 21)},
        number_(column_("Stno", 1)),
        description_(column_("Descr", 3)),
        start_(column_("Start", 6)),
        standing_{column_("Time", 7), column_("Classifier", 8), column_("Pl", 9)},
        clubNo_(column_("Club no.", 13)),
        clubName_(column_("Cl.name", 14)),
        city_(column_("City", 15)) {
    const int second = blockStart(header, "xtra2");
    // Leg 1, names 3 and 4, year 5, sex 6, times from 7, status 10, card 11, id 13.
    constexpr int shortest = 14;
    blockLength_ = std::max(second - blocks_, shortest);
  }

  const CsvClassColumns& classColumns() const { return class_; }

  void read(const CsvFile& row, ReadJob& job, RelayClass& relay) const {
    const LineNotes notes(job.session, row.line());
    const std::string club = clubOf(row);
    const std::string name(sharedName(teamName(row, club)));
    RelayTeam& team = relay.team(csvInteger(row.field(number_)), name);
    if (!team.members.empty()) return notes("team stands twice in the list", name);
    team.line = row.line();
    team.name = name;
    team.club = club;
    team.clubId = csvInteger(row.field(clubNo_));
    team.start =
        sumOfTimes(readCsvTime(row.field(start_), "unreadable start time", notes), job.zeroTime);
    team.standing = standing_.read(row, notes);
    int number = 0;
    // The last field of the row is the place, or nothing.
    for (int block = blocks_; block + 4 < row.noOfFields(); block += blockLength_) {
      readMember(row, block, ++number, job, relay, team);
    }
  }

 private:
  static int blockStart(const CsvHeader& header, std::string_view word) {
    for (int i = 0; i < header.noOfColumns(); ++i) {
      if (lowered(header.text(i)) == word) return i;
    }
    return -1;
  }

  std::string clubOf(const CsvFile& row) const {
    std::string club(row.field(clubName_));
    club.append(" ").append(row.field(city_));
    return std::string(sharedName(trimmed(club)));
  }

  // A description may be a name, or the number of the team in its club.
  std::string teamName(const CsvFile& row, const std::string& club) const {
    const std::string_view text = row.field(description_);
    if (text.empty() || club.empty()) return text.empty() ? club : std::string(text);
    return csvInteger(text) ? club + " " + std::string(text) : std::string(text);
  }

  void readMember(const CsvFile& row, int block, int number, ReadJob& job, RelayClass& relay,
                  RelayTeam& team) const {
    RelayMember member;
    member.line = row.line();
    const LineNotes notes(job.session, row.line(), &member.runner);
    const CsvPersonColumns person{.chip = block + 11,
                                  .databaseId = block + 13,
                                  .firstName = block + 4,
                                  .surname = block + 3,
                                  .gender = block + 6,
                                  .birthYear = block + 5};
    readCsvPerson(row, person, member.runner, notes);
    // A place in the team that nobody took.
    const bool vacant =
        member.runner.name().empty() && !member.runner.cCardIDSet() && row.field(block + 9).empty();
    if (vacant) return;
    const auto leg = csvInteger(row.field(block + 1)).value_or(number);
    if (!isLeg(leg)) return notes("no leg of a relay", row.field(block + 1));
    member.runner.relayLeg(static_cast<std::int16_t>(leg));
    RunColumns{block + 7, block + 8, block + 9, block + 10}.read(row, job.zeroTime, member, notes);
    relay.add(std::move(member), team);
  }

  int blocks_;
  Columns column_;
  CsvClassColumns class_;
  int number_, description_, start_;
  StandingColumns standing_;
  int clubNo_, clubName_, city_;
  int blockLength_ = 0;
};

template <class Rows>
std::int32_t readRows(ReadJob& job, CsvFile& file) {
  const Rows rows(file.header());
  CsvRowGroups classes;
  while (file.next()) {
    if (rows.classColumns().reachedBy(file)) {
      classes.add(rows.classColumns().nameIn(file), file.row());
    } else {
      LineNotes(job.session, file.line())("too few fields");
    }
  }
  ReaderRun run(job, CourseLengthFrom::runners);
  int done = 0;
  for (const CsvRowGroups::Group& group : classes.groups()) {
    file.row(group.rows.front());
    run.beginCategory(rows.classColumns().categoryOf(file));
    RelayClass relay;
    for (const CsvRow& place : group.rows) {
      file.row(place);
      if (relay.isFull()) {
        LineNotes(job.session, file.line())("the category is full");
      } else {
        rows.read(file, job, relay);
      }
      if (!run.progress(++done, classes.noOfRows())) return run.code();
    }
    if (!relay.addTo(run, job.session)) return run.code();
    orderByTimes(run.category());  // radio controls stand by their codes
    run.endRelay();
  }
  return run.end("OS200x");
}

}  // namespace

std::int32_t readCsvRelay(ReadJob& job) {
  CsvFile file;
  if (!file.read(job.fileName)) return LRK_IMPORT_CSV_INVALID_FORMAT;
  if (RunnerRows::fits(file.header())) return readRows<RunnerRows>(job, file);
  if (TeamRows::fits(file.header())) return readRows<TeamRows>(job, file);
  return LRK_IMPORT_CSV_INVALID_FORMAT;
}

}  // namespace larkstone
