#include "entry/time_zone.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

const std::string Database = "/usr/share/zoneinfo";

std::int64_t Offset(const std::string& name, std::int64_t seconds) {
  const auto zone = FindTimeZone(name);
  EXPECT_TRUE(zone) << name;
  return zone ? zone->OffsetAt(seconds) : -1;
}

TEST(FindTimeZone, KnowsNamesExactly) {
  EXPECT_TRUE(FindTimeZone("Asia/Makassar"));
  EXPECT_TRUE(FindTimeZone("UTC"));
  EXPECT_TRUE(FindTimeZone("Etc/GMT+5"));
  EXPECT_TRUE(FindTimeZone("America/Argentina/Buenos_Aires"));
  for (const char* name :
       {"", "asia/makassar", "Asia/Makassar ", "Asia", "Asia/", "Makassar", "/Asia/Makassar",
        "../zoneinfo/UTC", "Asia//Makassar", "Asia/../UTC", "posix/UTC", "right/UTC", "posixrules",
        "localtime", "zone.tab", "tzdata.zi", "CEST", "+08:00"}) {
    EXPECT_FALSE(FindTimeZone(name)) << name;
  }
}

TEST(FindTimeZone, NeedsTheDatabase) {
  EXPECT_FALSE(FindTimeZone("UTC", "/nowhere"));
  EXPECT_TRUE(FindTimeZone("UTC", Database));
}

// The expected offsets are those of another reader of the same database.
TEST(TimeZone, FollowsTheTableOfChanges) {
  EXPECT_EQ(Offset("UTC", 1072915200), 0);
  EXPECT_EQ(Offset("Etc/GMT+5", 1072915200), -18000);
  EXPECT_EQ(Offset("Asia/Makassar", 1083542400), 28800);
  EXPECT_EQ(Offset("Asia/Makassar", -1893456000), 28656);
  EXPECT_EQ(Offset("Africa/Nairobi", -2051222400), 8836);
  EXPECT_EQ(Offset("America/New_York", 1088640000), -14400);
  EXPECT_EQ(Offset("America/New_York", 1072915200), -18000);
}

TEST(TimeZone, FollowsTheRuleAfterTheTable) {
  EXPECT_EQ(Offset("America/New_York", 3802550400), -14400);
  EXPECT_EQ(Offset("America/New_York", 3792985199), -18000);
  EXPECT_EQ(Offset("America/New_York", 3792985200), -14400);
  EXPECT_EQ(Offset("America/New_York", 3813544799), -14400);
  EXPECT_EQ(Offset("America/New_York", 3813544800), -18000);
  // South of the equator summer is at the turn of the year; here the clocks move by half an hour.
  EXPECT_EQ(Offset("Australia/Lord_Howe", 2840140800), 39600);
  EXPECT_EQ(Offset("Australia/Lord_Howe", 2855865600), 37800);
  // Here winter has the name of summer time.
  EXPECT_EQ(Offset("Europe/Dublin", 2855865600), 3600);
  EXPECT_EQ(Offset("Europe/Dublin", 2840140800), 0);
}

std::string Number(std::int64_t value, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

/// A file of the database with changes at 1000 and 2000 to +1 and +2 hours.
std::string MadeZone(const std::string& rule) {
  const std::string version = "2" + std::string(15, '\0');
  const std::string nothing = "TZif" + version + std::string(24, '\0');
  std::string text = nothing + "TZif" + version + Number(0, 4) + Number(0, 4) + Number(0, 4) +
                     Number(2, 4) + Number(3, 4) + Number(4, 4);
  text += Number(1000, 8) + Number(2000, 8) + std::string("\1\2");
  for (const int offset : {-60, 3600, 7200}) text += Number(offset, 4) + std::string(2, '\0');
  return text + std::string("LMT\0", 4) + "\n" + rule + "\n";
}

std::int64_t OffsetOf(const std::string& bytes, std::int64_t seconds) {
  const auto zone = ReadTimeZone(bytes);
  EXPECT_TRUE(zone);
  return zone ? zone->OffsetAt(seconds) : -1;
}

TEST(ReadTimeZone, TakesTheFirstClockBeforeTheFirstChange) {
  const std::string zone = MadeZone("");
  EXPECT_EQ(OffsetOf(zone, -5000000000), -60);
  EXPECT_EQ(OffsetOf(zone, 999), -60);
  EXPECT_EQ(OffsetOf(zone, 1000), 3600);
  EXPECT_EQ(OffsetOf(zone, 1999), 3600);
  EXPECT_EQ(OffsetOf(zone, 2000), 7200);
}

TEST(ReadTimeZone, ReadsRulesOfAllForms) {
  constexpr std::int64_t Day = 86400;
  EXPECT_EQ(OffsetOf(MadeZone("<+0530>-5:30"), 50 * Day), 19800);
  EXPECT_EQ(OffsetOf(MadeZone("ABC5"), 50 * Day), -18000);
  // 1971 begins on day 365; day 60 without leap days is March 1st.
  const std::string julian = MadeZone("ABC0DEF,J60/0,J61/0");
  EXPECT_EQ(OffsetOf(julian, (365 + 59) * Day - 1), 0);
  EXPECT_EQ(OffsetOf(julian, (365 + 59) * Day), 3600);
  EXPECT_EQ(OffsetOf(julian, (365 + 60) * Day - 3600), 0);
  EXPECT_EQ(OffsetOf(julian, (730 + 60) * Day), 3600);  // a leap year
  const std::string ordinal = MadeZone("ABC0DEF-2,59/0:30,60/-1:00:30");
  EXPECT_EQ(OffsetOf(ordinal, (365 + 59) * Day + 1799), 0);
  EXPECT_EQ(OffsetOf(ordinal, (365 + 59) * Day + 1800), 7200);
  EXPECT_EQ(OffsetOf(ordinal, (365 + 60) * Day - 3630 - 7200 - 1), 7200);
  EXPECT_EQ(OffsetOf(ordinal, (365 + 60) * Day - 3630 - 7200), 0);
}

TEST(ReadTimeZone, KeepsTheLastClockIfTheRuleIsDamaged) {
  for (const char* rule : {"A,", "ABC", "ABC5DEF", "ABC5DEF,M3.2.0", "ABC5DEF,M13.2.0,M3.1.0",
                           "ABC5DEF,M3.6.0,M3.1.0", "ABC5DEF,J0,J5", "ABC5DEF,366,1", "<ABC5",
                           "ABC5DEF,M3.2.0,M4.1.0,", "ABC5DEF,M3.2.0/x,M4.1.0", "ABC1:2:3:4"}) {
    EXPECT_EQ(OffsetOf(MadeZone(rule), 5000), 7200) << rule;
  }
}

TEST(ReadTimeZone, RefusesDamagedFiles) {
  const std::string zone = MadeZone("ABC5");
  EXPECT_FALSE(ReadTimeZone(""));
  EXPECT_FALSE(ReadTimeZone("Here is text that is long enough for a header, but is none."));
  const size_t tables = zone.size() - 6;
  for (size_t size = 0; size < tables; ++size) {
    EXPECT_FALSE(ReadTimeZone(zone.substr(0, size))) << size;
  }
  EXPECT_TRUE(ReadTimeZone(zone.substr(0, tables)));
  std::string old = zone;
  old[4] = '\0';
  EXPECT_FALSE(ReadTimeZone(old));
  std::string outside = zone;
  outside[outside.find(std::string("\1\2")) + 1] = '\3';
  EXPECT_FALSE(ReadTimeZone(outside));
}

}  // namespace
}  // namespace orvane
