#include "larkstone/core/time.hpp"

#include <gtest/gtest.h>

#include "larkstone/core/code_text.hpp"
#include "larkstone/core/length.hpp"

namespace larkstone {
namespace {

TEST(TimeTest, TextBecomesTime) {
  struct Row {
    int line;
    const char* text;
    enmTimeAccuracy accuracy;
    Time time;
  };
  constexpr Row rows[] = {
      {__LINE__, "12:34", etacSeconds, 75400},
      {__LINE__, " 1:02:03 ", etacSeconds, 372300},
      {__LINE__, "-0.45", etacSeconds, -4500},
      {__LINE__, "62.03", etacAuto, 372300},
      {__LINE__, "1:02:03.4", etacAuto, 372340},
      {__LINE__, "1:02:03,45", etacAuto, 372345},
      {__LINE__, "1.2.3", etacHundredthsSeconds, 6203},
      {__LINE__, "1.2.3", etacTenthsSeconds, 6230},
      {__LINE__, "2:30", etacMinutes, 2 * 360000 + 30 * 6000},
      {__LINE__, "7", etacSeconds, 700},
      {__LINE__, ":07", etacSeconds, 700},
      {__LINE__, "12:", etacSeconds, 72000},
      {__LINE__, "12 min 34", etacSeconds, 123400},  // what is no digit is passed over
      {__LINE__, "1:0:0:0", etacSeconds, 360000},    // every group from the hours on is hours
      {__LINE__, "1:00:00:00", etacAuto, 360000},    // two digits behind: hundredths
      {__LINE__, "1000:00:00", etacSeconds, 0},      // a thousand hours add nothing
      {__LINE__, "", etacSeconds, LRK_NO_TIME},
      {__LINE__, "-", etacSeconds, LRK_NO_TIME},
      {__LINE__, "1-2", etacSeconds, LRK_NO_TIME},
      {__LINE__, "--1", etacSeconds, LRK_NO_TIME},
      {__LINE__, "-----", etacAuto, LRK_NO_TIME},
      {__LINE__, "...", etacAuto, LRK_NO_TIME},
      {__LINE__, "12345:00", etacSeconds, LRK_NO_TIME},
      {__LINE__, "46:36:12", etacSeconds, 16777200},
      {__LINE__, "46:36:13", etacSeconds, LRK_NO_TIME},
      {__LINE__, "-46:36:13", etacSeconds, LRK_NO_TIME},
      {__LINE__, "mp", etacSeconds, LRK_NO_TIME},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(stringToTime(row.text, row.accuracy), row.time);
  }
}

TEST(TimeTest, ClockTextsMayStopEarly) {
  EXPECT_EQ(stringToClockTime("9"), 3240000);
  EXPECT_EQ(stringToClockTime("9:30"), 3420000);
  EXPECT_EQ(stringToClockTime("9:30:15"), 3421500);
  EXPECT_EQ(stringToClockTime("9:30:15,50", etacAuto), 3421550);
  EXPECT_EQ(stringToClockTime("9:30", etacMinutes), 3420000);
  EXPECT_EQ(stringToClockTime("--:--:--"), LRK_NO_TIME);
}

TEST(TimeTest, TimeBecomesText) {
  struct Row {
    int line;
    Time time;
    int style;
    enmTimeAccuracy accuracy;
    bool truncate;
    const char* delimiters;
    const char* text;
  };
  constexpr Row rows[] = {
      {__LINE__, 372345, etstHMS, etacSeconds, true, ":.,", "1:02.03"},
      {__LINE__, 372345, etstHMS, etacSeconds, false, ":.,", "1:02.03,45"},
      {__LINE__, 372340, etstHMS, etacSeconds, false, ":.,", "1:02.03,4"},
      {__LINE__, 372345, etstHMS, etacTenthsSeconds, true, ":.,", "1:02.03,4"},
      {__LINE__, 372345, etstHMS, etacHundredthsSeconds, true, ":.,", "1:02.03,45"},
      {__LINE__, 372345, etstHMS, etacAuto, true, ":.,", "1:02.03"},
      {__LINE__, 372345, etstHMS, etacMinutes, true, ":.,", "1:02"},
      {__LINE__, 372345, etstHMS, etacHours, true, ":.,", "1"},
      {__LINE__, 372345, etstMS, etacSeconds, true, ":.,", "62.03"},
      {__LINE__, 7550, etstHMS, etacSeconds, true, ":.,", "1.15"},
      {__LINE__, 0, etstHMS, etacSeconds, true, ":.,", "0.00"},
      {__LINE__, -4500, etstHMS, etacSeconds, true, ":.,", "-0.45"},
      {__LINE__, 4500, etstHMS | etstRelative, etacSeconds, true, ":.,", "+0.45"},
      {__LINE__, 0, etstMS | etstRelative, etacSeconds, true, ":.,", "+0.00"},
      {__LINE__, -50, etstMS | etstRelative, etacSeconds, true, ":.,", "-0.00"},
      {__LINE__, 9000000, etstClockTime, etacSeconds, true, "::.", "1:00:00"},
      {__LINE__, 9000000, etstClockTimeForceTwoHourDigits, etacSeconds, true, "::.", "01:00:00"},
      {__LINE__, 3240000, etstClockTimeForceTwoHourDigits, etacHours, true, "::.", "09"},
      {__LINE__, 372345, etstHMS, etacTenthsSeconds, true, "’:·", "1’02:03·4"},
      {__LINE__, LRK_NO_TIME, etstHMS, etacSeconds, true, ":.,", "-"},
      {__LINE__, LRK_NO_TIME + 5, etstHMS | etstRelative, etacSeconds, true, ":.,", "-"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(timeToString(row.time, static_cast<enmTimeStyle>(row.style), row.accuracy,
                           row.truncate, row.delimiters),
              row.text);
  }
}

TEST(TimeTest, RoundingAndTruncation) {
  struct Row {
    int line;
    Time time;
    enmTimeAccuracy accuracy;
    Time rounded;
    Time truncated;
  };
  constexpr Row rows[] = {
      {__LINE__, 150, etacSeconds, 200, 100},
      {__LINE__, -150, etacSeconds, -100, -100},
      {__LINE__, 149, etacSeconds, 100, 100},
      {__LINE__, -151, etacSeconds, -200, -100},
      {__LINE__, 155, etacTenthsSeconds, 160, 150},
      {__LINE__, 155, etacHundredthsSeconds, 155, 155},
      {__LINE__, 3000, etacMinutes, 6000, 0},
      {__LINE__, 179999, etacHours, 0, 0},
      {__LINE__, 1234, etacAuto, 0, 0},
      {__LINE__, LRK_NO_TIME, etacSeconds, LRK_NO_TIME, LRK_NO_TIME},
      {__LINE__, 33554430, etacSeconds, LRK_NO_TIME, LRK_NO_TIME},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(roundTime(row.time, row.accuracy), row.rounded);
    EXPECT_EQ(truncateTime(row.time, row.accuracy), row.truncated);
  }
}

TEST(TimeTest, AccuracyIsTheCoarsestUnitThatDivides) {
  EXPECT_EQ(getTimeAccuracy(1), etacHundredthsSeconds);
  EXPECT_EQ(getTimeAccuracy(30), etacTenthsSeconds);
  EXPECT_EQ(getTimeAccuracy(-300), etacSeconds);
  EXPECT_EQ(getTimeAccuracy(6000), etacMinutes);
  EXPECT_EQ(getTimeAccuracy(720000), etacHours);
  EXPECT_EQ(getTimeAccuracy(0), etacHours);
  EXPECT_EQ(getTimeAccuracy(LRK_NO_TIME), etacHours);
}

TEST(TimeTest, SexagesimalTextsReadGroupsFromTheRight) {
  EXPECT_EQ(sexagesimalTextToTime("1.02.03"), 372300);
  EXPECT_EQ(sexagesimalTextToTime("10:00-10:45"), 64500);
  EXPECT_EQ(sexagesimalTextToTime(" (62.15) "), 373500);
  EXPECT_EQ(sexagesimalTextToTime("-1.00"), LRK_NO_TIME);
  EXPECT_EQ(sexagesimalTextToTime(""), LRK_NO_TIME);
  EXPECT_EQ(sexagesimalTextToTime("99.99.99.99.99"), LRK_NO_TIME);
  EXPECT_EQ(sexagesimalTextToTime(std::string(5000, '9')), LRK_NO_TIME);
  // Zeros in front change nothing, however many there are.
  std::string zeros;
  for (int i = 0; i < 5000; ++i) zeros += "0:";
  EXPECT_EQ(sexagesimalTextToTime(zeros + "1:02:03"), 372300);
  EXPECT_EQ(sexagesimalTextToTime(std::string(5000, '0') + "7"), 700);
  EXPECT_EQ(sexagesimalTextToTime("1" + std::string(5000, '0')), LRK_NO_TIME);
  EXPECT_EQ(sexagesimalTextToTime("1:" + zeros + "0"), LRK_NO_TIME);
}

TEST(TimeTest, TellsTimesFromOtherText) {
  EXPECT_TRUE(isTimeText(" +1:02.3,4 "));
  EXPECT_TRUE(isTimeText("-5"));
  EXPECT_FALSE(isTimeText(""));
  EXPECT_FALSE(isTimeText("--5"));
  EXPECT_FALSE(isTimeText("12 34"));
}

TEST(LengthTest, LengthsAsText) {
  EXPECT_EQ(lengthToString(1250000), "12 500 m");
  EXPECT_EQ(lengthToString(1250000, elstkM), "12.5 km");
  EXPECT_EQ(lengthToString(420000, elstkM, 2), "4.20 km");
  EXPECT_EQ(lengthToString(196000, elstkM, 1), "2.0 km");
  EXPECT_EQ(lengthToString(0), "0 m");
  EXPECT_EQ(lengthToString(1), "0.01 m");
  EXPECT_EQ(lengthToString(150, elstM, 0), "2 m");
  EXPECT_EQ(lengthToString(-125050), "-1 250.5 m");
  EXPECT_EQ(lengthToString(123456789, elstM, 3, "'", ",", ""), "1'234'567,890");
}

TEST(LengthTest, TextBecomesLength) {
  for (const char* text : {"1500", "1.5", "1,5 km", " 1500 m", "1.5 KM"}) {
    EXPECT_EQ(stringToLength(text), 150000) << text;
  }
  EXPECT_EQ(stringToLength("-5"), 0);
  EXPECT_EQ(stringToLength("long"), 0);
  EXPECT_EQ(stringToLength("5 km"), 500000);
  EXPECT_EQ(stringToLength("99999999999"), 2147483647);
  EXPECT_EQ(stringToLength("0.000005"), 1);  // half a centimetre and a little goes up
}

TEST(CodeTextTest, CodesAsText) {
  struct Row {
    int line;
    int code;
    const char* start;
    enmCodeStringConversion conversion;
    const char* text;
  };
  constexpr Row rows[] = {
      {__LINE__, 32736, "S", ecscDefault, "S"},
      {__LINE__, 32738, "S", ecscDefault, "S3"},
      {__LINE__, 32751, "S", ecscDefault, "S16"},
      {__LINE__, 32752, "S", ecscForceShowIndex, "F1"},
      {__LINE__, 32753, "S", ecscForceHideIndex, "F"},
      {__LINE__, 32736, "", ecscDefault, "#32736"},
      {__LINE__, 101, "S", ecscDefault, "#101"},
      {__LINE__, -2, "S", ecscDefault, "#-2"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(codeToString(static_cast<Code>(row.code), row.start, "F", "#", row.conversion),
              row.text);
  }
  EXPECT_EQ(codeToString(32736, "S", "F", "", static_cast<enmCodeStringConversion>(7)), "");
}

TEST(CodeTextTest, TextBecomesCode) {
  struct Row {
    int line;
    const char* text;
    const char* prefix;
    int code;
  };
  constexpr Row rows[] = {
      {__LINE__, "S", "", 32736},   {__LINE__, "s3", "", 32738},    {__LINE__, "S99", "", 32751},
      {__LINE__, "f", "", 32752},   {__LINE__, "F0", "", 32752},    {__LINE__, "40000", "", 32767},
      {__LINE__, "100-2", "", 100}, {__LINE__, "#101", " # ", 101}, {__LINE__, "# 101", "#", 101},
      {__LINE__, "-5", "", 0},      {__LINE__, "none", "", 0},      {__LINE__, "31.5", "", 32},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(stringToCode(row.text, "S", "F", row.prefix), row.code);
  }
}

}  // namespace
}  // namespace larkstone
