#include "entry/fix_cells.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

/// "2004-5-3 08:30:12.500 +420", "a/b" for a date that can have either order, or the fault.
std::string Shown(std::string_view time, std::string_view date = {}) {
  const MomentReading read = ReadMoment(time, date);
  const std::string where = read.isInDateCell ? " in date" : "";
  if (read.fault == MomentFault::Time) return "bad time" + where;
  if (read.fault == MomentFault::Date) return "bad date" + where;
  const CellDate& day = read.moment.date;
  const CellTime& clock = read.moment.time;
  std::string text = std::to_string(day.year) + (day.isEither ? " " : "-") +
                     std::to_string(day.first) + (day.isEither ? "/" : "-") +
                     std::to_string(day.second) + " " + std::to_string(clock.milliseconds);
  if (clock.zoneMinutes) text += " zone " + std::to_string(*clock.zoneMinutes);
  return text;
}

constexpr const char* HalfPastEight = "2004-5-3 30600000";

TEST(TrimCell, RemovesBlanksTabsAndNoBreakSpaces) {
  EXPECT_EQ(TrimCell("  a b\t"), "a b");
  EXPECT_EQ(TrimCell("\xC2\xA0 \xC2\xA0x\xC2\xA0\t"), "x");
  EXPECT_EQ(TrimCell(" \xC2\xA0\t"), "");
  EXPECT_EQ(TrimCell("\na\r"), "\na\r");
  EXPECT_EQ(TrimCell(""), "");
}

TEST(HasValue, KnowsTheWordsForNone) {
  for (const char* none : {"", "-", "NA", "na", "N/A", "n/a", "NaN", "NAN", "null", "NULL"}) {
    EXPECT_FALSE(HasValue(none)) << none;
  }
  for (const char* value : {"--", "0", "none", "nulls", "N", "NA.", "x"}) {
    EXPECT_TRUE(HasValue(value)) << value;
  }
}

TEST(CellNumber, TakesAPointOrACommaAndAnExponent) {
  EXPECT_EQ(CellNumber("12"), 12);
  EXPECT_EQ(CellNumber("-1.25"), -1.25);
  EXPECT_EQ(CellNumber("+1,25"), 1.25);
  EXPECT_EQ(CellNumber(".5"), 0.5);
  EXPECT_EQ(CellNumber("5."), 5);
  EXPECT_EQ(CellNumber("1.5e2"), 150);
  EXPECT_EQ(CellNumber("1,5E-1"), 0.15);
  EXPECT_EQ(CellNumber("0001"), 1);
}

TEST(CellNumber, RefusesAnythingElse) {
  for (const char* text : {"", ".", "-", "+", "1.2.3", "1,2,3", "1.2,3", "1 000", "0x10", "inf",
                           "nan", "1e", "1e+", "e5", "--1", "1m", "12°", "1e999", " 1"}) {
    EXPECT_FALSE(CellNumber(text)) << text;
  }
}

TEST(OutlierCells, SayYesAndNoInAnyCase) {
  for (const char* yes : {"true", "TRUE", "Yes", "t", "Y", "1"}) EXPECT_TRUE(IsYes(yes)) << yes;
  for (const char* no : {"false", "FALSE", "No", "f", "N", "0"}) EXPECT_TRUE(IsNo(no)) << no;
  for (const char* other : {"", "2", "wahr", "truee", "on"}) {
    EXPECT_FALSE(IsYes(other)) << other;
    EXPECT_FALSE(IsNo(other)) << other;
  }
}

TEST(ReadCellZone, IsANumberAndALetter) {
  EXPECT_EQ(ReadCellZone("36M")->number, 36);
  EXPECT_EQ(ReadCellZone("36 m")->letter, 'm');
  EXPECT_EQ(ReadCellZone("06S")->number, 6);
  EXPECT_EQ(ReadCellZone("60x")->number, 60);
  for (const char* text : {"", "M", "36", "0M", "61M", "36  M", "36MM", "M36", "36-M", "036M"}) {
    EXPECT_FALSE(ReadCellZone(text)) << text;
  }
}

TEST(ReadMoment, TakesDateAndTimeFromOneCell) {
  EXPECT_EQ(Shown("2004-05-03 08:30"), HalfPastEight);
  EXPECT_EQ(Shown("2004-05-03T08:30"), HalfPastEight);
  EXPECT_EQ(Shown("2004/5/3   8:30"), HalfPastEight);
  EXPECT_EQ(Shown("2004.5.3 8:30:00"), HalfPastEight);
  EXPECT_EQ(Shown("3.5.2004 8:30"), HalfPastEight);
  EXPECT_EQ(Shown("3.5.04 8:30"), HalfPastEight);
  EXPECT_EQ(Shown("5/3/2004 8:30"), "2004 5/3 30600000");
  EXPECT_EQ(Shown("5-3-2004 8:30"), "2004 5/3 30600000");
  EXPECT_EQ(Shown("3 May 2004 8:30"), HalfPastEight);
  EXPECT_EQ(Shown("03-MAY-2004 8:30"), HalfPastEight);
  EXPECT_EQ(Shown("3.may.04 8:30"), HalfPastEight);
  EXPECT_EQ(Shown("3/September/1999 0:00"), "1999-9-3 0");
  EXPECT_EQ(Shown("3 sep 1999 0:00"), "1999-9-3 0");
}

TEST(ReadMoment, RefusesOtherDates) {
  for (const char* text : {"2004-05/03 8:30",  "2004-5 8:30",      "20040503 8:30",
                           "204-5-3 8:30",     "5/3/204 8:30",     "5/3/20044 8:30",
                           "123/3/2004 8:30",  "2004-005-03 8:30", "2004-5-003 8:30",
                           "3 Sept 2004 8:30", "3 Ma 2004 8:30",   "2004 May 3 8:30",
                           "3May2004 8:30",    "3 5 2004 8:30",    "3-May 8:30",
                           "May 3 2004 8:30",  "2004-05-03t08:30", "2004-05-03 T08:30",
                           "2004-05-0308:30",  "2004-05-03",       "soon",
                           "-2004-5-3 8:30"}) {
    EXPECT_EQ(Shown(text), "bad time") << text;
  }
}

TEST(ReadMoment, GivesYearsOfTwoDigitsTheirCentury) {
  EXPECT_EQ(Shown("1.1.79 0:00"), "2079-1-1 0");
  EXPECT_EQ(Shown("1.1.80 0:00"), "1980-1-1 0");
  EXPECT_EQ(Shown("1.1.99 0:00"), "1999-1-1 0");
  EXPECT_EQ(Shown("1.1.00 0:00"), "2000-1-1 0");
}

TEST(ReadMoment, TakesSecondsFractionsHalvesOfTheDayAndZones) {
  const auto time = [](const std::string& text) { return Shown("2004-5-3 " + text); };
  EXPECT_EQ(time("23:59:59.999"), "2004-5-3 86399999");
  EXPECT_EQ(time("0:00:01,5"), "2004-5-3 1500");
  EXPECT_EQ(time("0:00:01.99999"), "2004-5-3 1999");
  EXPECT_EQ(time("12:00 AM"), "2004-5-3 0");
  EXPECT_EQ(time("12:00pm"), "2004-5-3 43200000");
  EXPECT_EQ(time("8:30 Am"), HalfPastEight);
  EXPECT_EQ(time("8:30:00PM"), "2004-5-3 73800000");
  EXPECT_EQ(time("08:30Z"), std::string(HalfPastEight) + " zone 0");
  EXPECT_EQ(time("08:30 utc"), std::string(HalfPastEight) + " zone 0");
  EXPECT_EQ(time("08:30GMT"), std::string(HalfPastEight) + " zone 0");
  EXPECT_EQ(time("08:30+07"), std::string(HalfPastEight) + " zone 420");
  EXPECT_EQ(time("08:30 -0330"), std::string(HalfPastEight) + " zone -210");
  EXPECT_EQ(time("8:30 AM +14:00"), std::string(HalfPastEight) + " zone 840");
}

TEST(ReadMoment, RefusesOtherTimes) {
  for (const char* text :
       {"24:00",       "8:60",       "8:30:60",  "8:3",       "8:300",      "008:30",
        "8",           "830",        "8:30:5",   "8:30.5",    "8:30:00.",   "0:30 AM",
        "13:00 PM",    "8:30 XM",    "8:30 +7",  "8:30 +070", "8:30 +7:00", "8:30 +14:01",
        "8:30 +05:60", "8:30 UTC+7", "8:30 Z Z", "8:30 CET",  ":30",        "8:30:"}) {
    EXPECT_EQ(Shown(std::string("2004-5-3 ") + text), "bad time") << text;
  }
}

TEST(ReadMoment, TakesTheDateFromItsOwnCell) {
  EXPECT_EQ(Shown("8:30", "2004-5-3"), HalfPastEight);
  EXPECT_EQ(Shown("8:30Z", "3.5.2004"), std::string(HalfPastEight) + " zone 0");
  // Spreadsheet programs write midnight after a date; the own zone of that time counts as little.
  EXPECT_EQ(Shown("8:30", "2004-5-3 00:00:00"), HalfPastEight);
  EXPECT_EQ(Shown("8:30", "2004-5-3T11:11+05:00"), HalfPastEight);
  EXPECT_EQ(Shown("2004-5-3 8:30", "1999-1-1"), HalfPastEight);
  EXPECT_EQ(Shown("2004-5-3 8:30", "soon"), HalfPastEight);
  EXPECT_EQ(Shown("", "2004-5-3 8:30"), HalfPastEight);
}

TEST(ReadMoment, SaysWhichCellIsAtFault) {
  EXPECT_EQ(Shown("8:30", ""), "bad date in date");
  EXPECT_EQ(Shown("8:30", "soon"), "bad date in date");
  EXPECT_EQ(Shown("8:30", "2004-5-3 25:00"), "bad date in date");
  EXPECT_EQ(Shown("8:30", "2004-5-3 x"), "bad date in date");
  EXPECT_EQ(Shown("soon", "2004-5-3"), "bad time");
  EXPECT_EQ(Shown("2004-5-3", "2004-5-3 8:30"), "bad time");
  EXPECT_EQ(Shown("", "2004-5-3"), "bad time in date");
  EXPECT_EQ(Shown("", "soon"), "bad date in date");
  EXPECT_EQ(Shown("", ""), "bad time in date");
}

TEST(DayPlaceShownBy, NeedsOneNumberAboveTwelve) {
  const auto place = [](const char* date) { return DayPlaceShownBy(*DateOfCells("", date)); };
  EXPECT_EQ(place("13/12/2004"), 1);
  EXPECT_EQ(place("31-1-2004"), 1);
  EXPECT_EQ(place("12/13/2004"), 2);
  EXPECT_EQ(place("2/31/04"), 2);
  EXPECT_EQ(place("12/12/2004"), 0);
  EXPECT_EQ(place("13/13/2004"), 0);
  EXPECT_EQ(place("32/12/2004"), 0);
  EXPECT_EQ(place("13/0/2004"), 0);
  EXPECT_EQ(place("13.12.2004"), 0);
  EXPECT_EQ(place("2004-12-13"), 0);
}

TEST(DateOfCells, IgnoresWhatTheTimeOfDayIsLike) {
  EXPECT_EQ(DateOfCells("13/5/2004 99:00", "")->first, 13);
  EXPECT_EQ(DateOfCells("soon", "13/5/2004 x")->first, 13);
  EXPECT_EQ(DateOfCells("14/5/2004", "13/5/2004")->first, 14);
  EXPECT_FALSE(DateOfCells("13/5/2004x", ""));
  EXPECT_FALSE(DateOfCells("", ""));
}

TEST(DaysOf, FollowsTheCalendarFrom1901To2100) {
  const auto days = [](const char* date, bool dayFirst) {
    return DaysOf(*DateOfCells("", date), dayFirst);
  };
  EXPECT_EQ(days("1970-1-1", false), 0);
  EXPECT_EQ(days("2/1/1970", true), 1);
  EXPECT_EQ(days("2/1/1970", false), 31);
  EXPECT_EQ(days("2.1.1970", false), 1);
  EXPECT_EQ(days("2000-2-29", false), 11016);
  EXPECT_FALSE(days("1999-2-29", false));
  EXPECT_FALSE(days("2100-2-29", false));
  EXPECT_FALSE(days("2004-4-31", false));
  EXPECT_FALSE(days("2004-13-1", false));
  EXPECT_FALSE(days("2004-0-1", false));
  EXPECT_FALSE(days("2004-1-0", false));
  EXPECT_TRUE(days("1901-1-1", false));
  EXPECT_FALSE(days("1900-12-31", false));
  EXPECT_TRUE(days("2100-12-31", false));
  EXPECT_FALSE(days("2101-1-1", false));
}

}  // namespace
}  // namespace orvane
