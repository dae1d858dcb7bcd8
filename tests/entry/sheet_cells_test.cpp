#include "entry/sheet_cells.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  SheetLines reader(text);
  while (const auto line = reader.Next()) lines.emplace_back(*line);
  return lines;
}

TEST(ParseColumnRef, CountsNumbersFromZeroAndLettersFromA) {
  EXPECT_EQ(ParseColumnRef("0"), 0);
  EXPECT_EQ(ParseColumnRef("1"), 1);
  EXPECT_EQ(ParseColumnRef("30"), 30);
  EXPECT_EQ(ParseColumnRef("A"), 0);
  EXPECT_EQ(ParseColumnRef("b"), 1);
  EXPECT_EQ(ParseColumnRef("Z"), 25);
  EXPECT_EQ(ParseColumnRef("AA"), 26);
  EXPECT_EQ(ParseColumnRef("aE"), 30);
}

TEST(ParseColumnRef, SkipsBlanksInFrontOnly) {
  EXPECT_EQ(ParseColumnRef(" F"), 5);
  EXPECT_EQ(ParseColumnRef("   12"), 12);
  EXPECT_EQ(ParseColumnRef("F "), ColumnMalformed);
  EXPECT_EQ(ParseColumnRef("12 "), ColumnMalformed);
}

TEST(ParseColumnRef, DistinguishesABlankFieldFromAMalformedOne) {
  EXPECT_EQ(ParseColumnRef(""), ColumnBlank);
  for (const char* text : {"  ", "-1", "-2", "31", "AF", "ZZZZZZZZZZZZZZZZZZZZ", "A1", "1A",
                           "A/B/C", "99999999999999999999", "2147483648", "\xC4", "1.0"}) {
    EXPECT_EQ(ParseColumnRef(text), ColumnMalformed) << text;
  }
}

TEST(ColumnText, CutsAtSingleTabs) {
  constexpr std::string_view Row = "a\t\tc\td e";
  EXPECT_EQ(ColumnText(Row, 0), "a");
  EXPECT_EQ(ColumnText(Row, 1), "");
  EXPECT_EQ(ColumnText(Row, 2), "c");
  EXPECT_EQ(ColumnText(Row, 3), "d e");
  EXPECT_EQ(ColumnText(Row, 4), "");
  EXPECT_EQ(ColumnText("", 0), "");
  EXPECT_EQ(ColumnText("", 30), "");
}

TEST(ColumnText, ReadsTheFirstColumnWhereNoneIsGiven) {
  EXPECT_EQ(ColumnText("oos\tx", ColumnBlank), "oos");
  EXPECT_EQ(ColumnText("oos\tx", ColumnMalformed), "oos");
}

TEST(ColumnText, TakesOffOneBlankAtTheEndAndKeepsFurtherOnes) {
  EXPECT_EQ(ColumnText("Camp \tx", 0), "Camp");
  EXPECT_EQ(ColumnText("Camp  \tx", 0), "Camp ");
  EXPECT_EQ(ColumnText(" Camp\tx", 0), " Camp");
  EXPECT_EQ(ColumnText(" \tx", 0), "");
}

TEST(ColumnText, TakesOffAPairOfQuotesAndThenNoBlank) {
  EXPECT_EQ(ColumnText("\"Camp\"\tx", 0), "Camp");
  EXPECT_EQ(ColumnText("\"Camp \"", 0), "Camp ");
  EXPECT_EQ(ColumnText("\"\"", 0), "");
  EXPECT_EQ(ColumnText("\"Camp\" ", 0), "\"Camp\"");
  EXPECT_EQ(ColumnText("\"Camp", 0), "\"Camp");
  EXPECT_EQ(ColumnText("Camp\"", 0), "Camp\"");
  EXPECT_EQ(ColumnText("\"", 0), "\"");
}

TEST(ColumnNumber, IsZeroUnlessTheWholeCellIsANumber) {
  EXPECT_EQ(ColumnNumber("a\t12", 1), 12);
  EXPECT_EQ(ColumnNumber("a\t\"12\"", 1), 12);
  EXPECT_EQ(ColumnNumber("a\t -3", 1), -3);
  EXPECT_EQ(ColumnNumber("a\t12 ", 1), 0);  // the blank stays here
  for (const char* row : {"a\t", "a", "a\tx", "a\t1x", "a\t1.5", "a\t99999999999"}) {
    EXPECT_EQ(ColumnNumber(row, 1), 0) << row;
  }
  EXPECT_EQ(ColumnNumber("7\t8", ColumnMalformed), 7);
}

TEST(ValidTimeText, TakesHoursAndMinutesAsOneNumber) {
  for (const char* text : {"0", "5", "800", "0800", "1259", "2400", " 800", "+800"}) {
    EXPECT_TRUE(ValidTimeText(text)) << text;
  }
  for (const char* text : {"", " ", "860", "2401", "2500", "-1", "800 ", "800x", "800am", "8.30",
                           "abc", "99999999999999999999"}) {
    EXPECT_FALSE(ValidTimeText(text)) << text;
  }
}

TEST(ValidTimeText, TakesHoursAColonAndMinutes) {
  for (const char* text :
       {"8:05", "0:00", "24:60", "8:5", "8:", ":30", "2:30pm", "2:30 PM", "2:30   am"}) {
    EXPECT_TRUE(ValidTimeText(text)) << text;
  }
  for (const char* text : {"25:00", "-1:00", "8 :30", "8:61", "8:99999999999999999999"}) {
    EXPECT_FALSE(ValidTimeText(text)) << text;
  }
}

TEST(ValidTimeText, RefusesTextAfterTheMinutesOnlyIfTheyAreNegative) {
  EXPECT_TRUE(ValidTimeText("7:22x"));
  EXPECT_TRUE(ValidTimeText("7:22 pm about"));
  EXPECT_TRUE(ValidTimeText("7:about"));
  EXPECT_TRUE(ValidTimeText("8:-4"));
  EXPECT_TRUE(ValidTimeText("8:-4 pm"));
  EXPECT_FALSE(ValidTimeText("8:-4x"));
  EXPECT_FALSE(ValidTimeText("8:-4 p"));
}

TEST(SheetLines, EndAtALineFeedWithAnOptionalCarriageReturn) {
  EXPECT_EQ(LinesOf("a\nb\r\n\r\nc"), (std::vector<std::string>{"a", "b", "", "c"}));
  EXPECT_EQ(LinesOf("a\rb\n"), (std::vector<std::string>{"a\rb"}));
  EXPECT_EQ(LinesOf("a\r\r\n"), (std::vector<std::string>{"a\r"}));
  EXPECT_EQ(LinesOf("a\r"), (std::vector<std::string>{"a"}));
  EXPECT_TRUE(LinesOf("").empty());
}

TEST(SheetLines, GoOnWithTheRestOfALongLine) {
  const std::string whole(399, 'x');
  EXPECT_EQ(LinesOf(whole + "rest\nnext\n"), (std::vector<std::string>{whole, "rest", "next"}));
  // Its line feed counts, and becomes an empty line if there is no room for it.
  EXPECT_EQ(LinesOf(whole + "\nnext\n"), (std::vector<std::string>{whole, "", "next"}));
  const std::string shorter(398, 'x');
  EXPECT_EQ(LinesOf(shorter + "\nnext\n"), (std::vector<std::string>{shorter, "next"}));
  EXPECT_EQ(LinesOf(shorter + "\r\nnext\n"), (std::vector<std::string>{shorter, "", "next"}));
}

TEST(SheetLines, NumberTheLinesOfTheTextAndNotTheirParts) {
  const std::string text = "a\n" + std::string(1000, 'x') + "\n\nlast";
  SheetLines reader(text);
  std::vector<size_t> numbers;
  while (reader.Next()) numbers.push_back(reader.Number());
  EXPECT_EQ(numbers, (std::vector<size_t>{1, 2, 2, 2, 3, 4}));
  // A line feed for which a part has no room belongs to the same line.
  const std::string whole = std::string(399, 'x') + "\nnext\n";
  SheetLines exact(whole);
  numbers.clear();
  while (exact.Next()) numbers.push_back(exact.Number());
  EXPECT_EQ(numbers, (std::vector<size_t>{1, 1, 2}));
}

TEST(SheetLines, PassZeroBytesThrough) {
  using namespace std::string_literals;
  EXPECT_EQ(LinesOf("a\0b\n\0\n"s), (std::vector<std::string>{"a\0b"s, "\0"s}));
}

}  // namespace
}  // namespace orvane
