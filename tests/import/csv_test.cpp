#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "larkstone/import/csv_columns.hpp"

#include "imported.hpp"

namespace larkstone {
namespace {

using testing::ElementsAre;

TEST(ColumnKeyTest, HeaderTextsOfAllLanguages) {
  constexpr std::pair<std::string_view, std::string_view> rows[] = {
      {"Stempel1", "Punch1"},
      {"Leima1", "Punch1"},
      {"Zielstempel", "Finish punch"},
      {"Nom", "Surname"},  // of two rows the last
      {"Nome", "First name"},
      {"Ort*", "City*"},
      {"Namn*", "Cl.name"},
      {"", "Leg"},
      {"KURZ", "Short"},
      {"katnr", "Cl. no."},
      {"Èíslo èipu", "Chipno"},  // Czech in its own page
      {"Číslo čipu", "Chipno"},
      {"TRAŤ", "Course"},
      {"Tra\xC2\x9D", "Course"},
      {"Ôèíèø", "Finish"},
      {"Финиш", "Finish"},
      {"ÏßÂ·", "Course"},
      {"线路", "Course"},
      {"Èip", "Chipno"},
      {"SIcard", "SI card"},
      {"Bahn|Course", ""},
      {"Bah", ""},
      {"Ort**", ""},
  };
  for (const auto& [header, key] : rows) EXPECT_EQ(columnKey(header), key) << header;
}

class CsvTest : public test::ImportTest {
 protected:
  std::int32_t importCsv(std::string_view bytes) {
    return importer.import(LRK_IMPORT_CSV, event, folder.write("list.csv", bytes));
  }
  // The only runner of a list.
  const LRKRunner& imported(const std::string& bytes) {
    const int index = event.noOfCategories();
    EXPECT_EQ(importCsv(bytes), 0) << bytes;
    category = event.category(index);
    return category->runner(0);
  }
  std::shared_ptr<LRKCategory> category;
};

constexpr std::string_view individualHeader =
    "Stnr;SI-Karte;Datenbank Id;Nachname;Vorname;Jg;G;Start;Ziel;Wertung;Club-Nr.;Abk;Ort;Nat;"
    "KatNr;Kurz;Lang;Text3;Ort;Bahn;km;Bahn Posten;Pl;Startstempel;Zielstempel;Posten1;Stempel1;\n";

TEST_F(CsvTest, AnIndividualRowGivesARunnerWithEveryField) {
  importer.master("Ann");
  const std::string row =
      "7;12345;99;\"\xD6"
      "berg \"\"O\"\";x\";'\xC5sa';04;D;10:00;25:30;4;12;OK;Syd;SWE;"
      "3;D21;Damen 21;17;Lund;A;5,2;3;1;;;31;5:00;33;-----;F1;12:34;99;1:00;\r\n";
  const std::string bytes = std::string(individualHeader) + row;
  EXPECT_EQ(importer.import(LRK_IMPORT_AUTO, event, folder.write("a.csv", bytes), 100), 0);
  EXPECT_EQ(event.importedFrom() + "," + event.createdBy(), "OE200x,Ann");
  EXPECT_EQ(test::setProperties(*event.category(0)), "ID=3 shortName=D21 courseLength=520000 ");
  EXPECT_EQ(test::setProperties(runner(0, 0)),
            "ID=99 cCardID=12345 firstName=Åsa lastName=Öberg \"O\";x clubID=12 club=OK Syd "
            "clubCountry=SWE rankingPosition=17 gender=2 birthDate=2004-01-01 birthDateFormat=YYYY "
            "courseName=A courseLength=520000 ");
  EXPECT_EQ(runner(0, 0).status(), estaDisqualified);
  // The zero time of a second; 5:00 and 12:34 after the start at 10:01.
  EXPECT_EQ(test::textOf(runner(0, 0).punches()), "S 60100, 31 90100, 33 -, 0 135500, F 153100");
  EXPECT_THAT(told, ElementsAre("no control code \"F1\""));
  EXPECT_EQ(notes[0].where, "line 2 \"Åsa Öberg \"O\";x\"");
}

TEST_F(CsvTest, FieldsOfIndividualRows) {
  struct Row {
    int line;
    std::string header, field;
    std::string_view properties;
    std::string_view note;
  };
  const Row rows[] = {
      {__LINE__, "YB", "54", "birthDate=1954-01-01 birthDateFormat=YYYY ", ""},
      {__LINE__, "YB", "1987", "birthDate=1987-01-01 birthDateFormat=YYYY ", ""},
      {__LINE__, "YB", "7", "birthDateFormat=YYYY ", ""},
      {__LINE__, "YB", "M21", "", "unreadable year of birth \"M21\""},
      {__LINE__, "km", "1.15", "courseLength=115000 ", ""},
      {__LINE__, "km", "5200", "courseLength=520000 ", ""},
      {__LINE__, "km", "99999999", "courseLength=2147483647 ", ""},
      {__LINE__, "km", "2.ruj", "", "unreadable course length \"2.ruj\""},
      {__LINE__, "km", "0", "", ""},
      {__LINE__, "S", "Ж", "gender=2 ", ""},
      {__LINE__, "S", "x", "gender=0 ", ""},
      {__LINE__, "Chipno", "4294967296", "", "unreadable card number \"4294967296\""},
      {__LINE__, "Chip", "\"\"", "", ""},
      {__LINE__, "Name", "Bo \"B\"", "name=Bo \"B\" ", ""},
      {__LINE__, "Club", "OK Syd", "club=OK Syd ", ""},  // where no city has it
      {__LINE__, "Text3", "70000", "rankingPosition=32767 ", ""},
      {__LINE__, "Database Id", "a\"", "", "unreadable database id \"a\"\""},
      {__LINE__, "Classifier", "6", "", "unknown classifier \"6\""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const std::string bytes = "OE0012;Long;" + row.header + ";\n;A;" + row.field + ";\n";
    EXPECT_EQ(test::setProperties(imported(bytes)), row.properties);
    EXPECT_EQ(imported(bytes).status(), estaUnknown);
    EXPECT_EQ(told.empty() ? "" : told.front(), row.note);
    told.clear();
  }
  constexpr enmStatus statuses[] = {estaOK,       estaDidNotStart,  estaDidNotFinish,
                                    estaMisPunch, estaDisqualified, estaOverTime};
  for (int i = 0; i < 6; ++i) {
    const std::string number = std::to_string(i);
    EXPECT_EQ(imported("OE0012;Long;Wertung;\n;A;" + number + ";\n").status(), statuses[i]);
    // Outside of the competition, unless the run failed.
    for (const std::string place : {"nc", "AK", " ak. "}) {
      const std::string bytes = "OE0012;Long;Wertung;Pl\n;A;" + number + ";" + place + ";\n";
      EXPECT_EQ(imported(bytes).status(), i == 0 ? estaNotCompeting : statuses[i]);
    }
  }
  EXPECT_EQ(imported("OE0012;Long;Pl\n;A;AK;\n").status(), estaNotCompeting);
}

TEST_F(CsvTest, TimesAndPunchesOfIndividualRows) {
  const std::string head = "Stno;Start;Finish;Long;Course controls;Pl;Start punch;Finish punch;";
  const std::string pairs = head + "Control1;Punch1;Control2;Punch2;\n;";
  const std::string groups =
      "OE0016;Start;Finish;Long;Course controls;Place;No1;Control1;Punch1;"
      "Pl1;No2;Control2;Punch2;Pl2;\n;";
  struct Row {
    int line;
    std::string bytes;
    std::string_view punches, extra, note;
  };
  const Row rows[] = {
      {__LINE__, pairs + "1:00;203:55;A;2;;;;31;0:30;99;1:02:03;",
       "S 6000, 31 9000, 99 378300, F 1223500", "", ""},
      {__LINE__, pairs + ";5:00;A;1;;;;31;0:30;32;1:00;", "S 0, 31 3000, F 30000", "", ""},
      {__LINE__, pairs + "1:00;;A;2;;;;;;31;0:30;;;;", "S 6000, 31 9000, F -", "", ""},
      {__LINE__, pairs + "1:00;;A;x;;;;31;0:30;32;", "S 6000, F -", "31 9000, 32 -", ""},
      {__LINE__, pairs + "1:00;;A;5000000;;;;31;0:30;", "S 6000, 31 9000, F -", "",
       "fewer punches than the course has controls \"5000000\""},
      {__LINE__, pairs + "1:00;2:00;A;9;;;;;", "S 6000, F 12000", "", ""},
      {__LINE__, pairs + "1:00;2:00;A;-1;;;;31;1:00;", "S 6000, F 12000", "", ""},
      {__LINE__, pairs + "??;-;A;1;;;;32740;1:-2;", "S 0, 0 -, F -", "",
       "unreadable start time \"??\""},
      {__LINE__, groups + "1:00;9:00;A;17;1;8;326;;;12;323;4:00;1;",
       "S 6000, 326 -, 323 30000, F 54000", "", ""},
      {__LINE__, groups + "1:00;;A;17;1;8;326;2:00;1;;999;4:00;1;;;;;",
       "S 6000, 326 18000, F 30000", "", ""},
      // Rows go on behind a header that ends at the place or says that there may be more.
      {__LINE__, "Stno;Start;Long;Course controls;Pl\n;1:00;A;2;1;31;0:30;32;-----;",
       "S 6000, 31 9000, 32 -, F -", "", ""},
      {__LINE__, head + "(may be more)\n;1:00;;A;2;;;;31;0:30;32;1:00;33;2:00;",
       "S 6000, 31 9000, 32 12000, F -", "", ""},
      // A start that cannot be read: the time of the run tells the finish.
      {__LINE__,
       "OE0012;Start;Finish;Tid;Long;Course controls;Pl;;;;Punch1\n;-----;9:00;4:00;A;1;"
       ";;;31;0:30;",
       "S 0, 31 3000, F 24000", "", ""},
      {__LINE__, "OE0012;Start;Finish;Tid;Long;Control1;Punch1\n;x;9:00;?;A;", "S 0, F -", "",
       "unreadable start time \"x\""},
      // Layouts of others, without punches.
      {__LINE__, "\"Stno\";Start;Long;Course controls;Pl\n;1:00;A;17;1;", "S 6000, F -", "", ""},
      {__LINE__, "Stbr;Čip;Start;Dugo;KT staze;Pl\n;7;1:00;A;17;1;", "S 6000, F -", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const LRKRunner& runner = imported(row.bytes);
    EXPECT_EQ(test::textOf(runner.punches()), row.punches);
    EXPECT_EQ(test::textOf(runner.extraPunches()), row.extra);
    EXPECT_EQ(told.empty() ? "" : told.front(), row.note);
    told.clear();
  }
  // A zero time of a second is for what the clock said.
  const std::string list = "OE0012;Start;Finish;Zeit;Long;\n;;9:00;;A;\n;x;9:00;4:00;A;\n";
  newEvent();
  EXPECT_EQ(importer.importOE200xCSV(event, folder.write("list.csv", list), 100), 0);
  EXPECT_EQ(test::textOf(runner(0, 0).punches()), "S 0, F 54100");
  EXPECT_EQ(test::textOf(runner(0, 1).punches()), "S 0, F 24000");
}

TEST_F(CsvTest, CategoriesAreRunsOfRowsAndBrokenRowsCostThemselves) {
  using namespace std::string_literals;
  const std::string rows =
      "Stno;Name;Kurz;Lang;Wertung;km;Bahn Posten;;;;;Stempel1;\n"
      ";1;a;A;0;1.234;\n;2;b;B;\n\n;;;;;\n;only\n;3;a;;0\n;4;a;A;0;1.235;\r;5\0;a;A;0;1.256;\n"s;
  EXPECT_EQ(importCsv(rows), 0);
  EXPECT_THAT(test::categoryNames(event), ElementsAre("A", "B", "a", "A"));
  EXPECT_EQ(runner(3, 1).name(), "5");
  EXPECT_EQ(event.category(3)->courseLength(), 124000);  // of 1.235 and 1.256 km
  EXPECT_THAT(told, ElementsAre("too few fields"));
  EXPECT_EQ(notes[0].where, "line 6");
  for (const char* const bytes : {"", "\n\n", "Stno;Lang;\n;A;", "Stno;Lang\n;A;7;x;",
                                  "Stno;Punch1;\n;1;", "a;Read at;\n1;"}) {
    EXPECT_EQ(importCsv(bytes), LRK_IMPORT_CSV_INVALID_FORMAT) << bytes;
    EXPECT_EQ(importer.importSIManCSV(event, folder / "list.csv"), LRK_IMPORT_CSV_INVALID_FORMAT);
    EXPECT_EQ(importer.importOE200xCSV(event, folder / "list.csv"), LRK_IMPORT_CSV_INVALID_FORMAT);
  }
  EXPECT_EQ(event.noOfCategories(), 4);
}

TEST_F(CsvTest, SiManCardsAreGroupedByTheirControls) {
  EXPECT_EQ(
      importCsv("No,SI-Karte,Gelesen um,Name,Startstempel,Zielstempel,Verein,Posten1,Stempel1,\n"
                "1,7,x,Eva,9:00:00,9:10:00,OK,32,9:05:00,\n"
                "2,8,x,Bo,9:00:00,,OK,31,9:04:00,33,9:05:00,\n"
                "3,9,x,Al,,9:09:00,,32,?,,\n"),
      0);
  EXPECT_EQ(event.importedFrom(), "SIMan");
  EXPECT_THAT(test::categoryNames(event),
              ElementsAre("Course 1 (2 controls)", "Course 2 (1 controls)"));
  EXPECT_EQ(test::textOf(runner(0, 0).punches()), "S 3240000, 31 3264000, 33 3270000, F -");
  EXPECT_EQ(test::setProperties(runner(1, 0)), "cCardID=7 name=Eva club=OK ");
  EXPECT_EQ(test::textOf(runner(1, 1).punches()), "S -, 32 -, F 3294000");
  EXPECT_EQ(runner(1, 0).status(), estaOK);
  EXPECT_EQ(runner(1, 1).status(), estaDidNotFinish);
  EXPECT_EQ(runner(0, 0).status(), estaDidNotFinish);
}

// "Eva: 1 3600000, 31 3606000" per runner, those of a category between semicolons.
std::string runnersOf(const LRKCategory& category) {
  std::string text = category.name() + " -";
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    text += ' ' + runner.name() + " (" + runner.relayTeam() + ", " + runner.club() + ", " +
            std::to_string(runner.status()) + "): " + test::textOf(runner.punches()) + ';';
  }
  return text;
}

TEST_F(CsvTest, RelayRowsOfRunnersAreGatheredByTeam) {
  // In a language that nobody knows.
  EXPECT_EQ(importCsv("OS0016a;b;c;d;e;f;g;h;i;j;k;l;m;n;o;p;q;r;s;t;u;v;w;x;y;z;A;B;C;Kombination;"
                      "D;E;F;No1;H1;I1;J1;No2;H2;I2;J2;\n"
                      ";7;;0;2;1;Dahl;Di;;;1:10:00;1:40:00;0:30:00;0;;;;5;OK Syd "
                      "2;1;H;;;;;B;2,1;;;x;0:50:00;0;1;;32;;;;31;1:20:00;;\n"
                      ";8;;0;1;1;Ek;Ed;;;1:00:00;1:15:00;;3;;;;;Nord;1;H;;;;;B;;;;y;;;;;999;0:15:"
                      "00;;;33;0:12:00;;\n"
                      ";7;;0;1;1;Fors;Fi;;;1:00:00;1:12:00;;0;;;;;OK Syd "
                      "2;1;H;;;;;B;;;;y;;;;;32;0:11:00;;;33;0:10:00;;\n"
                      ";8;;0;2;1;Gran;Gy;;;1:10:00;;;1;;;;;Nord;1;H;;;;;B;;;;x;;3;;;31;0:01:00;;\n"
                      ";9;;0;2;1;Hag;Ha;;;1:20:00;1:45:00;;0;;;;;;1;H;;;;;B;;;;x;0:45:00;0;2;;31;"
                      "0:40:00;;;32;0:25:00;;\n"
                      ";8;;0;0;1;No;Leg;;;;;;;;;;;Nord;1;H;;;;;;\n"),
            0);
  EXPECT_EQ(event.importedFrom(), "OS200x");
  ASSERT_EQ(event.noOfCategories(), 3);
  // Who mispunched hands over without a time. The total is that of the list; where the first leg is
  // left out it tells the start. Controls stand in the order of their times.
  EXPECT_EQ(runnersOf(*event.category(0)),
            "H whole legs - OK Syd 2 (OK Syd 2, OK Syd, 0): S 360000, 31 432000, F 660000; "
            "Nord (Nord, Nord, 6): S 360000, 31 -, F -;  (, , 0): S 360000, 31 -, F 630000;");
  EXPECT_EQ(runnersOf(*event.category(1)),
            "H 1 common controls - Fi Fors (OK Syd 2, OK Syd, 0): S 360000, 33 420000, 32 426000, "
            "F 432000; Ed Ek (Nord, Nord, 6): S 360000, 33 432000, F 450000;");
  EXPECT_EQ(runnersOf(*event.category(2)),
            "H 2 common controls - Di Dahl (OK Syd 2, OK Syd, 0): S 420000, 32 -, 31 480000, "
            "F 600000; Gy Gran (Nord, Nord, 10): S 420000, 31 -, F -; "
            "Ha Hag (, , 0): S 480000, 32 510000, 31 600000, F 630000;");
  EXPECT_EQ(runner(0, 0).resultPlace(), 2);
  EXPECT_EQ(runner(2, 0).courseName(), "B x");
  EXPECT_THAT(told,
              ElementsAre("no leg of a relay \"0\"", "punch outside the leg at control \"31\"",
                          "the list places teams otherwise than their times \"OK Syd 2\""));
}

TEST_F(CsvTest, RelayRowsOfTeamsHoldABlockForEachRunner) {
  const std::string head = "OS0012;b;c;d;e;f;g;h;i;j;k;l;m;n;o;p;q;r;s;t;u;v;w;x;y;z;A;B;C;D;E;";
  EXPECT_EQ(
      importCsv(head + "Xtra1;F;G;H;I;J;K;L;M;N;O;P;Q;R;Xtra2;\n"
                       ";7;;2;;;0:00;28:00;0;2;;;;5;OK;Syd;;;;1;H;Herrar;;;;;;;;;;"
                       "0;1;1;Ek;Ed;;;0:00;15:00;;0;12;;9;0;2;1;Dal;Di;04;F;;26:00;10:00;0;;;;"
                       "0;3;1;;;;;;;;;;;;4;\n"
                       ";7;;;;;;;;;;;;;;;;;;;H;Herrar;\n;7;;Nord;;;;;1;;;;;;;;;;;;D;Damer;\n;7;\n"
                       ";8;;Gast;;;;;0;AK;;;;;;;;;;;D;Damer;\n"),
      0);
  EXPECT_THAT(test::categoryNames(event),
              ElementsAre("Herrar whole legs", "Herrar 1 common controls",
                          "Herrar 2 common controls", "Damer whole legs"));
  EXPECT_EQ(runnersOf(*event.category(0)),
            "Herrar whole legs - OK Syd 2 (OK Syd 2, OK Syd, 0): S 0, 31 90000, F 168000;");
  EXPECT_EQ(test::setProperties(runner(2, 0)),
            "firstName=Di lastName=Dal clubID=5 club=OK Syd gender=2 birthDate=2004-01-01 "
            "birthDateFormat=YYYY relayLeg=2 relayTeamID=7 relayTeam=OK Syd 2 ");
  EXPECT_EQ(test::textOf(runner(2, 0).punches()), "S 96000, F 156000");
  EXPECT_EQ(runner(3, 0).name(), "Nord");
  EXPECT_EQ(runner(3, 1).status(), estaNotCompeting);
  EXPECT_THAT(told, ElementsAre("too few fields", "team stands twice in the list",
                                "the list places teams otherwise than their times \"OK Syd 2\""));
}

}  // namespace
}  // namespace larkstone
