#include "reports/table_report.h"

#include "support/recording_canvas.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TableReport Sample(size_t rows) {
  TableReport table;
  table.notes = {"one two three four"};
  table.columns = {{"Name"}, {"m", true}};
  for (size_t i = 0; i < rows; ++i) table.rows.push_back({"row" + std::to_string(i), "7"});
  return table;
}

struct TableReportTest : testing::Test {
  /// Lays the table out in a window of 100 x 80 pixels; letters are 6 wide and lines 10 high.
  void Show(TableReport report) {
    table.Show(std::move(report));
    table.View().viewWidth = 100;
    table.View().viewHeight = 80;
    table.LayOut(canvas);
  }
  RecordingCanvas canvas{100, 80};
  ShownTable table;
};

TEST_F(TableReportTest, TheTextHasNotesHeadingsAndRows) {
  EXPECT_EQ(TableReportText(Sample(2)), "one two three four\n\nName\tm\nrow0\t7\nrow1\t7\n");
  TableReport plain = Sample(1);
  plain.notes.clear();
  EXPECT_EQ(TableReportText(plain), "Name\tm\nrow0\t7\n");
}

TEST_F(TableReportTest, LongNotesAreWrappedBetweenWords) {
  Show(Sample(1));
  EXPECT_EQ(table.View().noteLines, (std::vector<std::string>{"one two three", "four"}));
  // Two lines of notes, half a line, the headings and half a line.
  EXPECT_EQ(table.View().headerHeight, 20 + 5 + 10 + 5);
}

TEST_F(TableReportTest, AWordThatIsTooLongHasItsOwnLine) {
  TableReport report = Sample(0);
  report.notes = {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaa b"};
  Show(report);
  EXPECT_EQ(table.View().noteLines,
            (std::vector<std::string>{"aaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "b"}));
}

TEST_F(TableReportTest, DrawsOnlyTheRowsThatShow) {
  Show(Sample(50));
  table.View().scrollY = 100;
  table.Draw(canvas);
  std::string rows;
  for (const std::string& text : canvas.Having("text")) {
    const size_t row = text.find("row");
    if (row != std::string::npos) rows += text.substr(row) + ' ';
  }
  EXPECT_EQ(rows, "row10 row11 row12 row13 ");
}

TEST_F(TableReportTest, NumbersEndAtTheRightOfTheirColumn) {
  TableReport report = Sample(0);
  report.notes.clear();
  report.rows = {{"a", "7"}, {"b", "777"}};
  Show(report);
  table.Draw(canvas);
  // The margin is 3, the first column four letters, the gap a line.
  EXPECT_GE(canvas.IndexOf("text " + std::to_string(3 + 24 + 10 + 12) + ","), 0) << canvas.Text();
  EXPECT_GE(canvas.IndexOf("text " + std::to_string(3 + 24 + 10) + ","), 0);
}

TEST_F(TableReportTest, LinesAreTheRows) {
  Show(Sample(3));
  EXPECT_EQ(table.LineCount(), 3);
  EXPECT_EQ(table.LineText(1), "row1\t7");
  EXPECT_EQ(table.LinePlace(1).top, table.View().headerHeight + 10);
  table.Drop();
  EXPECT_EQ(table.LineCount(), 0);
}

}  // namespace
}  // namespace orvane
