#include "base/times.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

void ExpectTime(std::string_view text, int minutes, size_t length) {
  const TimePrefix read = ParseTime(text);
  EXPECT_EQ(read.minutes, minutes) << text;
  EXPECT_EQ(read.length, length) << text;
}

TEST(ParseTime, ReadsHoursAndMinutesWithAColon) {
  ExpectTime("7:05", 425, 4);
  ExpectTime("14:25", 865, 5);
  ExpectTime("7:5", 425, 3);
  ExpectTime(":30", 30, 3);
  ExpectTime("7:", 420, 2);
  ExpectTime(":", 0, 1);
}

TEST(ParseTime, ReadsAPlainNumberAsHoursTimesHundred) {
  ExpectTime("705", 425, 3);
  ExpectTime("1425", 865, 4);
  ExpectTime("12", 12, 2);
  ExpectTime("2400", 1440, 4);
}

TEST(ParseTime, AddsHalfADayForPm) {
  ExpectTime("705pm", 1145, 5);
  ExpectTime("705PM", 1145, 5);
  ExpectTime("705Pm-", 1145, 5);
  ExpectTime("705am", 425, 5);
  ExpectTime("705AM", 425, 5);
  ExpectTime("1159pm", 1439, 6);
  ExpectTime("12pm", 732, 4);
}

TEST(ParseTime, LeavesAmAndPmAfterATimeFromNoonOn) {
  ExpectTime("1200pm", 720, 4);
  ExpectTime("1425pm", 865, 4);
  ExpectTime("1425am", 865, 4);
}

TEST(ParseTime, LeavesAmAndPmAfterAColon) {
  ExpectTime("7:05pm", 425, 4);
  ExpectTime("7:05am", 425, 4);
}

TEST(ParseTime, WantsAmOrPmDirectlyAfterTheNumber) {
  ExpectTime("705 pm", 425, 3);
  ExpectTime("705p", 425, 3);
  ExpectTime("pm", 0, 0);
}

TEST(ParseTime, ReadsNothingFromATextThatIsNotATime) {
  for (const char* text : {"", " 705", "-705", "dawn"}) ExpectTime(text, 0, 0);
}

TEST(ParseTime, StaysBounded) {
  ExpectTime("99999999999999999999", 0, 20);
  ExpectTime("99999999999999999999:99999999999999999999", 0, 41);
}

TEST(FormatTime, WritesTwoDigitsEach) {
  EXPECT_EQ(FormatTime(425), "07:05");
  EXPECT_EQ(FormatTime(865), "14:25");
  EXPECT_EQ(FormatTime(1440), "24:00");
  EXPECT_EQ(FormatTime(6000), "100:00");
  EXPECT_EQ(FormatTime(-65), "-1:-5");
}

TEST(FormatTime, WritesNothingAtMidnight) { EXPECT_EQ(FormatTime(0), ""); }

TEST(FormatTimeSpan, WritesMidnightToo) {
  EXPECT_EQ(FormatTimeSpan(0, 425), "00:00-07:05");
  EXPECT_EQ(FormatTimeSpan(865, 0), "14:25-00:00");
}

TEST(FormatTime, IsReadBack) {
  for (int minutes = 1; minutes < 3000; ++minutes) {
    const std::string text = FormatTime(minutes);
    ExpectTime(text, minutes, text.size());
  }
}

}  // namespace
}  // namespace orvane
