#include "entry/sheet_summary.h"

#include "entry/sheet_case.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

struct SheetSummaryTest : SheetCase {
  std::string SummaryOf(std::string_view sheet, const SheetFields& fields = Columns()) {
    return Import(Open(Site), sheet, fields).summary;
  }
};

TEST_F(SheetSummaryTest, CountsFollowsAndStops) {
  EXPECT_EQ(SummaryOf(Row("1000", "Main0")), "Imported 1 follow with 1 stop from follows.txt");
  EXPECT_EQ(SummaryOf(Row("1000", "Main0") + Row("1010", "Main100") +
                      "Oru\tAna\t2003-6-1\t700\tMain0\n" + "Oru\tAna\t2003-6-2\t700\tMain0\n"),
            "Imported 3 follows with 4 stops from follows.txt");
}

TEST_F(SheetSummaryTest, CountsUnknownPlacesOnceAndSaysWhereTheyAreListed) {
  EXPECT_EQ(SummaryOf(Row("1000", "Main0") + Row("1010", "the creek") + Row("1015", "The Creek") +
                      Row("1020", "the hut") + Row("1030", "some rain")),
            "Imported 1 follow with 1 stop from follows.txt; 2 places are unknown, listed in "
            "unknownlocs.txt; 1 note on the weather in badweather.txt; 3 lines are left out, the "
            "first is line 2");
}

TEST_F(SheetSummaryTest, CountsLinesThatGiveNothing) {
  EXPECT_EQ(SummaryOf("\n\t\t \t\n" + Row("1000", "Main0") + "Oru\tUlo\t\t1010\tMain0\n"),
            "Imported 1 follow with 1 stop from follows.txt; line 4 is left out");
  EXPECT_EQ(
      SummaryOf(Row("1000", "") + Row("1000", "Main0") + Row("25:00", "Main0") + Row("", "Main0")),
      "Imported 1 follow with 1 stop from follows.txt; 3 lines are left out, the first is "
      "line 1");
  // "oos" says where the animal was not, and the rest of a long line is not a line.
  EXPECT_EQ(SummaryOf(Row("900", "oos") + Row("1000", "Main0", std::string(1000, 'x'))),
            "Imported 1 follow with 1 stop from follows.txt");
}

TEST_F(SheetSummaryTest, SaysWhereAnImportWasGivenUp) {
  EXPECT_EQ(
      SummaryOf(Row("1000", "Main0") + Row("1010", "Main100") + "Oru\tUlo\tMay\t1020\tMain0\n"),
      "Imported 1 follow with 1 stop from follows.txt; gave up at line 3");
  messages.answers = {2};
  EXPECT_EQ(SummaryOf(Row("1000", "Main0") + Row("1010", "Main100") + Row("1020", "x")),
            "Imported 1 follow with 1 stop from follows.txt; gave up at line 3");
}

TEST_F(SheetSummaryTest, OfNothingSaysWhatWasLookedFor) {
  EXPECT_EQ(SummaryOf(""),
            "No follows in follows.txt: looked for a date in column C, a species in column A, a "
            "time in column D and a place in column E, with tabs between columns");
  SheetFields fields = With(SheetDate, "1/2/30");
  fields[SheetSpecies] = "";
  fields[SheetSpeciesAlways] = "Oru";
  EXPECT_EQ(SummaryOf("", fields),
            "No follows in follows.txt: looked for a day, month and year in column C, column B "
            "and column AE, a time in column D and a place in column E, with tabs between columns");
}

TEST_F(SheetSummaryTest, OfNothingNamesTheSeparatorThatIsNotTheTab) {
  const std::string lookedFor =
      "No follows in follows.txt: looked for a date in column C, a species in column A, a time in "
      "column D and a place in column E, with ";
  EXPECT_EQ(
      SummaryOf("Oru,Ulo,2003-5-31,1000,Main0\n"),
      lookedFor + "tabs between columns, but the file has commas and no tabs; line 1 is left out");
  EXPECT_EQ(SummaryOf("Oru;Ulo;2003-5-31;10,0;Main0\n").find("semicolons and no tabs") !=
                std::string::npos,
            true);
  EXPECT_EQ(SummaryOf("Oru\tUlo, the old\n"),
            lookedFor + "tabs between columns; line 1 is left out");
  Map& map = Open(Site);
  SheetReading reading = ReadSheetFields(Columns(), map);
  const FollowSheet sheet = SheetFromCsv("Oru;Ulo\n");
  reading.spec.sheet = &sheet;
  reading.spec.fileName = "follows.txt";
  EXPECT_EQ(SheetSummary(reading.spec, {}), lookedFor + "semicolons between columns");
}

// A line of 500 bytes was counted twice.
TEST_F(SheetSummaryTest, MessagesComeFromTheLinesOfTheFile) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0", std::string(500, 'x')) + Row("900", "Main0"));
  ASSERT_EQ(messages.origins.size(), 1U);
  EXPECT_EQ(messages.origins[0].line, 2U);
}

TEST_F(SheetSummaryTest, MessagesOnACsvFileComeFromItsLines) {
  Map& map = Open(Site);
  SheetReading reading = ReadSheetFields(Columns(), map);
  const FollowSheet sheet =
      SheetFromCsv("Oru,Ulo,2003-5-31,1000,Main0,\"two\nlines\"\nOru,Ulo,2003-5-31,900,Main0\n");
  reading.spec.sheet = &sheet;
  reading.spec.fileName = "follows.csv";
  RunSpreadsheetImport(reading.spec, logs,
                       [](const std::string&, std::string_view) { return WriteResult::Done; });
  ASSERT_EQ(messages.origins.size(), 1U);
  EXPECT_EQ(messages.origins[0].file, "follows.csv");
  EXPECT_EQ(messages.origins[0].line, 3U);
  EXPECT_EQ(Follows(map), Texts{"Oru/Ulo/2003-5-31: 10:00-09:00@Main0+-60"});
}

TEST(ImportSummary, JoinsWords) {
  EXPECT_EQ(Joined({}), "");
  EXPECT_EQ(Joined({"a"}), "a");
  EXPECT_EQ(Joined({"a", "b"}), "a and b");
  EXPECT_EQ(Joined({"a", "b", "c"}), "a, b and c");
  EXPECT_EQ(Counted(0, "stop", "stops"), "no stops");
}

}  // namespace
}  // namespace orvane
