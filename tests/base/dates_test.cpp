#include "base/dates.h"

#include <climits>
#include <ctime>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace orvane {
namespace {

void ExpectDate(std::string_view text, bool europeanDates, PackedDate date, size_t length) {
  const DatePrefix read = ParseDate(text, europeanDates);
  EXPECT_EQ(read.date, date) << text;
  EXPECT_EQ(read.length, length) << text;
}

TEST(ParseDate, TakesTheFirstNumberAsTheDayWithEuropeanDates) {
  ExpectDate("2-3-99", true, PackDate(1999, 3, 2), 6);
  ExpectDate("2-3-99", false, PackDate(1999, 2, 3), 6);
}

TEST(ParseDate, TakesALargeFirstNumberAsTheYear) {
  for (const bool european : {false, true}) {
    ExpectDate("99-3-2", european, PackDate(1999, 3, 2), 6);
    ExpectDate("2001-3-2", european, PackDate(2001, 3, 2), 8);
    ExpectDate("32-1-1", european, PackDate(1932, 1, 1), 6);
    ExpectDate("100-1-1", european, PackDate(100, 1, 1), 7);
  }
}

TEST(ParseDate, KeepsAFullYearAtTheEnd) {
  ExpectDate("2-3-2001", false, PackDate(2001, 2, 3), 8);
  ExpectDate("2-3-2001", true, PackDate(2001, 3, 2), 8);
  ExpectDate("2-3-100", false, PackDate(100, 2, 3), 7);
}

TEST(ParseDate, FindsTheCenturyOfTwoDigits) {
  ExpectDate("1-1-80", false, PackDate(1980, 1, 1), 6);
  ExpectDate("1-1-79", false, PackDate(2079, 1, 1), 6);
  ExpectDate("31-1-0", true, PackDate(2000, 1, 31), 6);
}

TEST(ParseDate, KnowsThreeSeparators) {
  for (const char* text : {"2/3/99", "2.3.99", "2-3/99", "2.3-99"}) {
    ExpectDate(text, false, PackDate(1999, 2, 3), 6);
  }
}

TEST(ParseDate, StaysAtATextWithoutADigit) {
  for (const char* text : {"", "-2-3-99", " 2-3-99", "May 2", "/"}) ExpectDate(text, false, 0, 0);
}

TEST(ParseDate, CountsAMissingNumberAsZero) {
  ExpectDate("3", false, PackDate(2000, 3, 0), 1);
  ExpectDate("3-4", false, PackDate(2000, 3, 4), 3);
  ExpectDate("3-4-", false, PackDate(2000, 3, 4), 4);
  ExpectDate("99", false, PackDate(1999, 0, 0), 2);
}

TEST(ParseDate, StopsAtTheEndOfTheDate) {
  ExpectDate("2-3-99 am", false, PackDate(1999, 2, 3), 6);
  ExpectDate("2-3-99-4", false, PackDate(1999, 2, 3), 6);
  ExpectDate("2:3", false, PackDate(2000, 2, 0), 1);
  ExpectDate("2- 3-99", false, PackDate(2000, 2, 0), 2);
  ExpectDate("2--3-99", false, PackDate(2000, 2, 0), 2);
}

TEST(ParseDate, ChecksNoRange) {
  ExpectDate("30-31-99", false, PackDate(1999, 30, 31), 8);
  ExpectDate("0-0-1900", false, -32, 8);
}

TEST(ParseDate, GivesNoDateForWhatDoesNotFit) {
  ExpectDate("99999999-1-1", false, 0, 12);
  ExpectDate("1-1-99999999999999999999999", false, 0, 27);
  ExpectDate("1-999999999999-99", false, 0, 17);
}

TEST(PackDate, CountsMonthsOf31Days) {
  EXPECT_EQ(PackDate(1900, 1, 1), 0);
  EXPECT_EQ(PackDate(1900, 1, 2), 1);
  EXPECT_EQ(PackDate(1900, 2, 1), 31);
  EXPECT_EQ(PackDate(1901, 1, 1), 372);
  EXPECT_EQ(PackDate(1999, 4, 29), 36949);
  EXPECT_EQ(PackDate(INT_MAX, 1, 1), 0);
  EXPECT_EQ(PackDate(INT_MIN, INT_MIN, INT_MIN), 0);
}

TEST(FormatDate, WritesYearMonthAndDay) {
  EXPECT_EQ(FormatDate(PackDate(1999, 4, 29)), "1999-4-29");
  EXPECT_EQ(FormatDate(PackDate(2001, 12, 31)), "2001-12-31");
  EXPECT_EQ(FormatDate(0), "");
  EXPECT_EQ(FormatDate(PackDate(1900, 1, 1)), "");
}

TEST(FormatDate, WritesYearsBefore1900) {
  EXPECT_EQ(FormatDate(PackDate(1899, 12, 31)), "1899-12-31");
  EXPECT_EQ(FormatDate(PackDate(1899, 1, 1)), "1899-1-1");
  EXPECT_EQ(FormatDate(PackDate(100, 2, 3)), "100-2-3");
  EXPECT_EQ(FormatDate(INT_MIN).empty(), false);
  EXPECT_EQ(FormatDate(INT_MAX).empty(), false);
}

TEST(FormatDate, IsReadBack) {
  constexpr unsigned Seed = 5;
  std::mt19937 random(Seed);
  for (int i = 0; i < 20000; ++i) {
    // A first number of three digits or more is the year.
    const PackedDate date =
        PackDate(static_cast<int>(100 + random() % 3000), static_cast<int>(1 + random() % 12),
                 static_cast<int>(1 + random() % 31));
    if (date == 0) continue;
    const std::string text = FormatDate(date);
    for (const bool european : {false, true}) {
      ASSERT_EQ(ParseDate(text, european).date, date) << text << " seed " << Seed;
      ASSERT_EQ(ParseDate(text, european).length, text.size()) << text;
    }
  }
}

TEST(UnpackDate, GivesBackWhatWasPacked) {
  for (const int year : {1850, 1899, 1900, 1999, 2026}) {
    for (const int month : {1, 2, 12}) {
      for (const int day : {1, 28, 31}) {
        const DateParts parts = UnpackDate(PackDate(year, month, day));
        EXPECT_EQ(parts.year, year);
        EXPECT_EQ(parts.month, month);
        EXPECT_EQ(parts.day, day);
      }
    }
  }
}

TEST(LocalDate, IsTheDayOfTheLocalClock) {
  const auto now = [] {
    const std::time_t seconds = std::time(nullptr);
    char text[32];
    std::tm local{};
    std::strftime(text, sizeof text, "%Y-%m-%d", localtime_r(&seconds, &local));
    const std::string_view digits = text;
    EXPECT_EQ(digits.size(), 10U);
    return ParseDate(digits, false).date;
  };
  // Midnight may pass between the two clocks, but not twice.
  const PackedDate before = now();
  const PackedDate today = LocalDate();
  EXPECT_TRUE(today == before || today == now());
}

}  // namespace
}  // namespace orvane
