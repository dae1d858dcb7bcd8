#include "reports/range_stats.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane {
namespace {

struct RangeStatsTest : testing::Test {
  Range range;
  Range other;
  RangeIntersection record;
  RangePanelRow rangeRow;
  RangePanelRow overlapRow;
  RangePanelRow newRow;

  RangeStatsTest() {
    range.name = "Ana";
    other.name = "Bob";
    range.mcpArea = 123;
    record.a.range = &range;
    record.b.range = &other;
    rangeRow.range = &range;
    rangeRow.text = "Ana";
    overlapRow.intersection = &record;
    overlapRow.text = "Intersection of Ana and Bob";
    newRow.fixed = true;
    newRow.text = "New";
  }
};

TEST_F(RangeStatsTest, IsEmptyWithoutRows) {
  EXPECT_EQ(RangeStatsText({}, {}), "");
  EXPECT_EQ(RangeStatsText({&newRow}, {}), "");
}

TEST_F(RangeStatsTest, HasTheReportOfARange) {
  EXPECT_EQ(RangeStatsText({&rangeRow}, {}),
            "\t\tAna\n"
            "MCP area: 123m^2                          Grid area: 0m^2\n"
            "\n");
}

TEST_F(RangeStatsTest, HasTheTipOfAnOverlap) {
  EXPECT_EQ(RangeStatsText({&overlapRow}, {"feed", std::nullopt, std::nullopt}),
            "\t\tIntersection of Ana and Bob\n"
            "MCP area: 0m^2\n"
            "Area of grid cells used by both: 0m^2\n"
            "Time of Ana in Bob: 0.00%\n"
            "Time of Ana in grid cells of Bob: 0.00%\n"
            "Time of Bob in Ana: 0.00%\n"
            "Time of Bob in grid cells of Ana: 0.00%\n"
            "feed of Ana in Bob: 0.00%\n"
            "feed of Bob in Ana: 0.00%\n"
            "\n");
}

TEST_F(RangeStatsTest, KeepsTheOrderOfTheRows) {
  range.name.reset();
  rangeRow.text.reset();
  const std::string text = RangeStatsText({&overlapRow, &newRow, &rangeRow}, {});
  EXPECT_EQ(text.find("\t\tIntersection"), 0U);
  EXPECT_NE(text.find("\n\n\t\t\nMCP area: 123m^2"), std::string::npos);
}

TEST_F(RangeStatsTest, HasLinesOfTravel) {
  range.meanDailyPath = 500;
  const std::string text = RangeStatsText({&rangeRow}, {});
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 16);
}

TEST(RangeStatsFileName, IsThatOfTheFirstRow) {
  EXPECT_EQ(RangeStatsFileName({}), "untitled.txt");
  RangePanelRow row;
  EXPECT_EQ(RangeStatsFileName({&row}), "untitled.txt");
  row.text = "North/South";
  const RangePanelRow other;
  EXPECT_EQ(RangeStatsFileName({&row, &other}), "North-South.txt");
}

}  // namespace
}  // namespace orvane
