#include "larkstone/core/time.hpp"

#include <gtest/gtest.h>

#include "larkstone/core/code_text.hpp"
#include "larkstone/core/length.hpp"

namespace larkstone {
namespace {

TEST(TimeTest, TextBecomesTime) {
  struct Row {
    const char* text;
    enmTimeAccuracy accuracy;
    Time time;
  };
  constexpr Row rows[] = {
      {"12:34", etacSeconds, 75400},
      {" 1:02:03 ", etacSeconds, 372300},
      {"-0.45", etacSeconds, -4500},
      {"62.03", etacAuto, 372300},
      {"1:02:03.4", etacAuto, 372340},
      {"1:02:03,45", etacAuto, 372345},
      {"1.2.3", etacHundredthsSeconds, 6203},
      {"1.2.3", etacTenthsSeconds, 6230},
      {"2:30", etacMinutes, 2 * 360000 + 30 * 6000},
      {"7", etacSeconds, 700},
      {":07", etacSeconds, 700},
      {"12:", etacSeconds, 72000},
      {"12 min 34", etacSeconds, 123400},  // what is no digit is passed over
      {"1:0:0:0", etacSeconds, 360000},    // every group from the hours on is hours
      {"1:00:00:00", etacAuto, 360000},    // two digits behind: hundredths
      {"1000:00:00", etacSeconds, 0},      // a thousand hours add nothing
      {"46:36:12", etacSeconds, 16777200},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(stringToTime(row.text, row.accuracy), row.time) << row.text;
  }
  for (const char* text :
       {"", "-", "1-2", "--1", "-----", "...", "12345:00", "46:36:13", "-46:36:13", "mp"}) {
    EXPECT_EQ(stringToTime(text, etacSeconds), LRK_NO_TIME) << text;
    EXPECT_EQ(stringToTime(text, etacAuto), LRK_NO_TIME) << text;
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
    const char* text;
    Time time;
    int style;
    enmTimeAccuracy accuracy = etacSeconds;
    bool truncate = true;
    const char* delimiters = ":.,";
  };
  constexpr Row rows[] = {
      {"1:02.03", 372345, etstHMS},
      {"1:02.03,45", 372345, etstHMS, etacSeconds, false},
      {"1:02.03,4", 372340, etstHMS, etacSeconds, false},
      {"1:02.03,4", 372345, etstHMS, etacTenthsSeconds},
      {"1:02.03,45", 372345, etstHMS, etacHundredthsSeconds},
      {"1:02.03", 372345, etstHMS, etacAuto},
      {"1:02", 372345, etstHMS, etacMinutes},
      {"1", 372345, etstHMS, etacHours},
      {"62.03", 372345, etstMS},
      {"1.15", 7550, etstHMS},
      {"0.00", 0, etstHMS},
      {"-0.45", -4500, etstHMS},
      {"+0.45", 4500, etstHMS | etstRelative},
      {"+0.00", 0, etstMS | etstRelative},
      {"-0.00", -50, etstMS | etstRelative},
      {"1:00:00", 9000000, etstClockTime, etacSeconds, true, "::."},
      {"01:00:00", 9000000, etstClockTimeForceTwoHourDigits, etacSeconds, true, "::."},
      {"09", 3240000, etstClockTimeForceTwoHourDigits, etacHours, true, "::."},
      {"1’02:03·4", 372345, etstHMS, etacTenthsSeconds, true, "’:·"},
      {"-", LRK_NO_TIME, etstHMS},
      {"-", LRK_NO_TIME + 5, etstHMS | etstRelative},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(timeToString(row.time, static_cast<enmTimeStyle>(row.style), row.accuracy,
                           row.truncate, row.delimiters),
              row.text)
        << row.time;
  }
}

TEST(TimeTest, RoundingAndTruncation) {
  struct Row {
    Time time;
    enmTimeAccuracy accuracy;
    Time rounded, truncated;
  };
  constexpr Row rows[] = {
      {150, etacSeconds, 200, 100},
      {-150, etacSeconds, -100, -100},
      {149, etacSeconds, 100, 100},
      {-151, etacSeconds, -200, -100},
      {155, etacTenthsSeconds, 160, 150},
      {155, etacHundredthsSeconds, 155, 155},
      {3000, etacMinutes, 6000, 0},
      {179999, etacHours, 0, 0},
      {1234, etacAuto, 0, 0},
      {LRK_NO_TIME, etacSeconds, LRK_NO_TIME, LRK_NO_TIME},
      {33554430, etacSeconds, LRK_NO_TIME, LRK_NO_TIME},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(roundTime(row.time, row.accuracy), row.rounded) << row.time;
    EXPECT_EQ(truncateTime(row.time, row.accuracy), row.truncated) << row.time;
  }
}

TEST(TimeTest, AccuracyIsTheCoarsestUnitThatDivides) {
  EXPECT_EQ(getTimeAccuracy(1), etacHundredthsSeconds);
  EXPECT_EQ(getTimeAccuracy(30), etacTenthsSeconds);
  EXPECT_EQ(getTimeAccuracy(-300), etacSeconds);
  EXPECT_EQ(getTimeAccuracy(6000), etacMinutes);
  for (const Time time : {720000, 0, LRK_NO_TIME}) EXPECT_EQ(getTimeAccuracy(time), etacHours);
}

TEST(TimeTest, SexagesimalTextsReadGroupsFromTheRight) {
  EXPECT_EQ(sexagesimalTextToTime("1.02.03"), 372300);
  EXPECT_EQ(sexagesimalTextToTime("10:00-10:45"), 64500);
  EXPECT_EQ(sexagesimalTextToTime(" (62.15) "), 373500);
  // Zeros in front change nothing, however many there are.
  std::string zeros;
  for (int i = 0; i < 5000; ++i) zeros += "0:";
  EXPECT_EQ(sexagesimalTextToTime(zeros + "1:02:03"), 372300);
  EXPECT_EQ(sexagesimalTextToTime(std::string(5000, '0') + "7"), 700);
  for (const std::string& text :
       {std::string("-1.00"), std::string(), std::string("99.99.99.99.99"), std::string(5000, '9'),
        "1" + std::string(5000, '0'), "1:" + zeros + "0"}) {
    EXPECT_EQ(sexagesimalTextToTime(text), LRK_NO_TIME) << text;
  }
}

TEST(TimeTest, TellsTimesFromOtherText) {
  for (const char* text : {" +1:02.3,4 ", "-5"}) EXPECT_TRUE(isTimeText(text)) << text;
  for (const char* text : {"", "--5", "12 34"}) EXPECT_FALSE(isTimeText(text)) << text;
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
  for (const char* text : {"-5", "long"}) EXPECT_EQ(stringToLength(text), 0);
  EXPECT_EQ(stringToLength("5 km"), 500000);
  EXPECT_EQ(stringToLength("99999999999"), 2147483647);
  EXPECT_EQ(stringToLength("0.000005"), 1);  // half a centimetre and a little goes up
}

TEST(CodeTextTest, CodesAsText) {
  struct Row {
    int code;
    const char* start;
    enmCodeStringConversion conversion;
    const char* text;
  };
  constexpr Row rows[] = {
      {32736, "S", ecscDefault, "S"},        {32738, "S", ecscDefault, "S3"},
      {32751, "S", ecscDefault, "S16"},      {32752, "S", ecscForceShowIndex, "F1"},
      {32753, "S", ecscForceHideIndex, "F"}, {32736, "", ecscDefault, "#32736"},
      {101, "S", ecscDefault, "#101"},       {-2, "S", ecscDefault, "#-2"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(codeToString(static_cast<Code>(row.code), row.start, "F", "#", row.conversion),
              row.text);
  }
  EXPECT_EQ(codeToString(32736, "S", "F", "", static_cast<enmCodeStringConversion>(7)), "");
}

TEST(CodeTextTest, TextBecomesCode) {
  struct Row {
    std::string_view text, prefix;
    int code;
  };
  constexpr Row rows[] = {
      {"S", "", 32736},    {"s3", "", 32738},    {"S99", "", 32751}, {"f", "", 32752},
      {"F0", "", 32752},   {"40000", "", 32767}, {"100-2", "", 100}, {"#101", " # ", 101},
      {"# 101", "#", 101}, {"-5", "", 0},        {"none", "", 0},    {"31.5", "", 32},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(stringToCode(row.text, "S", "F", row.prefix), row.code) << row.text;
  }
}

}  // namespace
}  // namespace larkstone
