#include "entry/separated_table.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

using namespace std::string_literals;

/// Each row as "line: cell|cell".
std::vector<std::string> RowsOf(std::string_view text, char separator = ',') {
  std::vector<std::string> rows;
  TableRows reader(text, separator);
  for (TableRow row; reader.Next(row);) {
    std::string shown = std::to_string(row.line) + ":";
    for (const std::string& cell : row.cells)
      shown += (&cell == row.cells.data() ? " " : "|") + cell;
    rows.push_back(shown);
  }
  return rows;
}
using Rows = std::vector<std::string>;

TEST(TableRows, EndAtAnyLineEnd) {
  EXPECT_EQ(RowsOf("a,b\nc\r\nd\re"), (Rows{"1: a|b", "2: c", "3: d", "4: e"}));
  EXPECT_EQ(RowsOf("a\n\n,\n"), (Rows{"1: a", "2: ", "3: |"}));
  EXPECT_EQ(RowsOf("\r\r\n\n"), (Rows{"1: ", "2: ", "3: "}));
  EXPECT_EQ(RowsOf(""), Rows{});
}

TEST(TableRows, KeepSeparatorsAndLineEndsWithinQuotes) {
  EXPECT_EQ(RowsOf("\"a,b\",c\n"), Rows{"1: a,b|c"});
  EXPECT_EQ(RowsOf("\"a\r\nb\nc\rd\",e\nf\n"), (Rows{"1: a\r\nb\nc\rd|e", "5: f"}));
  EXPECT_EQ(RowsOf("\"a\tb\"\tc", '\t'), Rows{"1: a\tb|c"});
}

TEST(TableRows, TakeADoubledQuoteForOne) {
  EXPECT_EQ(RowsOf("\"say \"\"hi\"\"\",b"), Rows{"1: say \"hi\"|b"});
  EXPECT_EQ(RowsOf("\"\",\"\"\"\",b"), Rows{"1: |\"|b"});
}

TEST(TableRows, TakeAQuoteWithinACellAsItIs) {
  EXPECT_EQ(RowsOf("5\" pipe,b\n x,\"y\""), (Rows{"1: 5\" pipe|b", "2:  x|y"}));
  EXPECT_EQ(RowsOf(" \"a,b\""), Rows{"1:  \"a|b\""});
}

TEST(TableRows, SkipWhatFollowsAClosingQuote) {
  EXPECT_EQ(RowsOf("\"a\" b,c\n\"d\"e"), (Rows{"1: a|c", "2: d"}));
}

TEST(TableRows, TakeTheRestIntoAQuoteThatIsNeverClosed) {
  EXPECT_EQ(RowsOf("a,\"b\nc,d\n"), Rows{"1: a|b\nc,d\n"});
  EXPECT_EQ(RowsOf("\""), Rows{"1: "});
}

TEST(TableText, FollowsTheByteOrderMark) {
  EXPECT_EQ(TableText("\xEF\xBB\xBF"
                      "a\xC3\xBC"),
            "a\xC3\xBC");
  EXPECT_EQ(TableText("\xFF\xFE"
                      "a\0\xFC\0"s),
            "a\xC3\xBC");
  EXPECT_EQ(TableText("\xFE\xFF"
                      "\0a\x20\xAC"s),
            "a\xE2\x82\xAC");
  EXPECT_EQ(TableText("\xFF\xFE\x3D\xD8\x00\xDE"s), "\xF0\x9F\x98\x80");
}

TEST(TableText, IsLatin1IfItIsNotUtf8) {
  EXPECT_EQ(TableText("a\xFC"), "a\xC3\xBC");
  EXPECT_EQ(TableText("\xC3\xBC\xFC"), "\xC3\x83\xC2\xBC\xC3\xBC");
  EXPECT_EQ(TableText(""), "");
}

TEST(TableText, ReplacesWhatIsNotUtf8AfterTheMarkOfUtf8) {
  EXPECT_EQ(TableText("\xEF\xBB\xBF"
                      "\xC3\xA9\xFF\xE2\x82"s),
            "\xC3\xA9\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(TableText, ReplacesHalfCharactersOfUtf16) {
  constexpr const char* Replaced = "\xEF\xBF\xBD";
  EXPECT_EQ(TableText("\xFF\xFE\x3D\xD8"s), Replaced);                 // half a pair at the end
  EXPECT_EQ(TableText("\xFF\xFE\x3D\xD8\x61\x00"s), Replaced + "a"s);  // before a character
  EXPECT_EQ(TableText("\xFF\xFE\x00\xDE"s), Replaced);                 // only the second half
  EXPECT_EQ(TableText("\xFF\xFE\x61\x00\x62"s), "a"s + Replaced);      // half a unit
}

TEST(SeparatorOf, IsTheMostFrequentInTheFirstRowThatIsNotEmpty) {
  EXPECT_EQ(SeparatorOf("a;b;c,d\n,,,,"), ';');
  EXPECT_EQ(SeparatorOf("\r\n  \na,b,c;d"), ',');
  EXPECT_EQ(SeparatorOf("a\tb;c"), '\t');
  EXPECT_EQ(SeparatorOf("a;b,c"), ';');
  EXPECT_EQ(SeparatorOf("abc"), '\t');
  EXPECT_EQ(SeparatorOf(""), '\t');
}

TEST(SeparatorOf, CountsOutsideQuotesOnly) {
  EXPECT_EQ(SeparatorOf("x,\"a;b;c\"\n"), ',');
  EXPECT_EQ(SeparatorOf("\"a;\n;\"\"b;\",c\n"), ',');
  EXPECT_EQ(SeparatorOf("5\" pipe,b;c;d"), ';');
}

}  // namespace
}  // namespace orvane
