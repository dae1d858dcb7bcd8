// Reports as their windows know them: where their lines are, what is copied of them, how they scroll
// and how selected lines are drawn.

#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"
#include "reports/shown_point_index.h"
#include "reports/shown_range_stats.h"
#include "reports/shown_trail_summary.h"
#include "support/recording_canvas.h"

#include <deque>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

constexpr ReportColors Highlight{.background = 0x0000FF, .foreground = 0xFFFF00};

void Lay(ShownReport& report, int width, int height) {
  report.View().viewWidth = width;
  report.View().viewHeight = height;
  RecordingCanvas canvas(width, height);
  report.LayOut(canvas);
}

struct ShownTrailSummaryTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "case.map");
  std::deque<Trail> trails;
  ShownTrailSummary report;

  /// A straight trail of 100 m to the north.
  Trail* Straight(const std::string& name) {
    Trail& trail = trails.emplace_back();
    trail.name = name;
    for (const double north : {0.0, 100.0}) {
      Point& point = MakePoint(map, "");
      point.geo = MetersToLatLon(north, 0);
      point.flags |= PointPlaced;
      trail.points.push_back(&point);
    }
    return &trail;
  }
  std::vector<Trail*> Many(int count) {
    std::vector<Trail*> many;
    for (int i = 0; i < count; ++i) many.push_back(Straight("T" + std::to_string(i)));
    return many;
  }
};

TEST_F(ShownTrailSummaryTest, FindsTheLineAtAPixel) {
  report.Show(Many(5), 0);
  Lay(report, 380, 122);
  EXPECT_EQ(report.LineCount(), 6);
  EXPECT_EQ(LineAt(report, {10, 21}), -1) << "the headings";
  EXPECT_EQ(LineAt(report, {10, 22}), 0);
  EXPECT_EQ(LineAt(report, {379, 31}), 0);
  EXPECT_EQ(LineAt(report, {10, 32}), 1);
  EXPECT_EQ(LineAt(report, {10, 73}), -1) << "the gap above the totals";
  EXPECT_EQ(LineAt(report, {10, 74}), 5) << "the totals";
  EXPECT_EQ(LineAt(report, {10, 84}), -1);
}

TEST_F(ShownTrailSummaryTest, CopiesSelectedLinesWithTabs) {
  report.Show(Many(3), 0);
  Lay(report, 380, 122);
  ReportSelection selection;
  selection.lines = {1, 3};
  EXPECT_EQ(CopiedText(report, selection),
            "T1\t100m\t\t\t\t\t\t\t\t\nTotals\t300m\t0m\t\t\t\t\t\t\t\n");
}

TEST_F(ShownTrailSummaryTest, CopiesAllLinesIfNoneIsSelected) {
  report.Show(Many(2), 0);
  Lay(report, 380, 122);
  const std::string all = CopiedText(report, {});
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 3);
  ReportSelection selection;
  SelectAllLines(selection, report.LineCount());
  EXPECT_EQ(CopiedText(report, selection), all);
}

TEST_F(ShownTrailSummaryTest, NothingSelectedLeavesAZeroTotal) {
  Lay(report, 380, 122);
  EXPECT_EQ(CopiedText(report, {}), "Totals\t0m\t0m\t\t\t\t\t\t\t\n");
}

TEST_F(ShownTrailSummaryTest, KnowsWhetherItShowsOtherTrails) {
  const std::vector<Trail*> many = Many(2);
  EXPECT_TRUE(report.Show(many, 0));
  EXPECT_FALSE(report.Show(many, 3));
  EXPECT_TRUE(report.Show({many[1]}, 3));
}

TEST_F(ShownTrailSummaryTest, HoldsNoTrailOnceItIsDropped) {
  report.Show(Many(3), 0);
  Lay(report, 380, 122);
  report.Drop();
  EXPECT_EQ(report.LineCount(), 1);
  EXPECT_EQ(CopiedText(report, {}), "Totals\t0m\t0m\t\t\t\t\t\t\t\n");
}

TEST_F(ShownTrailSummaryTest, ScrollsAsLittleAsNeeded) {
  report.Show(Many(50), 0);
  Lay(report, 380, 122);  // ten lines below the headings
  ScrollToLine(report, 9);
  EXPECT_EQ(report.View().scrollY, 0);
  ScrollToLine(report, 10);
  EXPECT_EQ(report.View().scrollY, 10);
  ScrollToLine(report, 5);
  EXPECT_EQ(report.View().scrollY, 10);
  ScrollToLine(report, 0);
  EXPECT_EQ(report.View().scrollY, 0);
  EXPECT_EQ(report.PageStep(), 122 * 7 / 8);
}

TEST_F(ShownTrailSummaryTest, DrawsSelectedLinesInTheColorsOfTheHighlight) {
  report.Show(Many(5), 0);
  Lay(report, 380, 122);
  ReportSelection selection;
  selection.lines = {1, 2, 4};
  RecordingCanvas canvas(380, 122);
  DrawReport(report, selection, Highlight, canvas);
  EXPECT_EQ(canvas.Having("clear"), (Texts{"clear ffffff", "clear 0000ff", "clear 0000ff"}))
      << "neighbours are one area";
  EXPECT_GT(canvas.IndexOf("clip 0,32 380,52"), 0);
  EXPECT_GT(canvas.IndexOf("clip 0,62 380,72"), 0);
  EXPECT_EQ(canvas.Having("fore").back(), "fore ffff00");
  // The texts of a selected line are drawn twice: plain, then over it.
  const auto count = [&](const std::string& text) {
    const Texts texts = canvas.Having("text");
    return std::count(texts.begin(), texts.end(), text);
  };
  EXPECT_EQ(count("text 2,30 T0"), 1);
  EXPECT_EQ(count("text 2,40 T1"), 2);
  EXPECT_EQ(report.View().background, 0xFFFFFF) << "only while they are drawn";
  EXPECT_EQ(report.View().foreground, ForegroundColor);
}

TEST_F(ShownTrailSummaryTest, SelectedLinesDontCoverTheHeadings) {
  report.Show(Many(50), 0);
  report.View().scrollY = 5;
  Lay(report, 380, 122);
  ReportSelection selection;
  selection.lines = {0};
  RecordingCanvas canvas(380, 122);
  DrawReport(report, selection, Highlight, canvas);
  EXPECT_GT(canvas.IndexOf("clip 0,22 380,27"), 0);
}

struct ShownPointIndexTest : testing::Test {
  ShownPointIndex report;

  void Take(int count) {
    PointIndex index;
    for (int i = 0; i < count; ++i) {
      PointIndexEntry& entry = index.entries.emplace_back();
      entry.name = "A" + std::to_string(100 + i);
      entry.position = {.lat = 1, .lon = 10, .altitude = NoAltitude};
    }
    report.Show(std::move(index));
  }
  int GroupWidth() {
    Lay(report, 1, 100);
    return static_cast<const PointIndexView&>(report.View()).groupWidth;
  }
};

TEST_F(ShownPointIndexTest, EachEntryIsALineAndSeveralAreSideBySide) {
  Take(7);
  const int width = GroupWidth();
  Lay(report, 3 * width, 100);
  EXPECT_EQ(report.Across(), 3);
  EXPECT_EQ(report.LineCount(), 7);
  EXPECT_EQ(LineAt(report, {0, 12}), 0);
  EXPECT_EQ(LineAt(report, {width - 1, 21}), 0);
  EXPECT_EQ(LineAt(report, {width, 12}), 1);
  EXPECT_EQ(LineAt(report, {2 * width, 22}), 5);
  EXPECT_EQ(LineAt(report, {0, 32}), 6);
  EXPECT_EQ(LineAt(report, {width, 32}), -1) << "the last line is not full";
  EXPECT_EQ(LineAt(report, {0, 11}), -1);
}

TEST_F(ShownPointIndexTest, CopiesNamesWithTheColumnsInUse) {
  Take(2);
  Lay(report, 1000, 100);
  ReportSelection selection;
  selection.lines = {1};
  EXPECT_EQ(CopiedText(report, selection), "A101\tN1\xB0 0.000' E10\xB0 0.000'\n");
}

TEST_F(ShownPointIndexTest, BringsAnEntryToTheSecondLine) {
  Take(300);
  Lay(report, GroupWidth(), 112);  // ten lines
  EXPECT_TRUE(report.BringEntryToView(9));
  EXPECT_EQ(report.View().scrollY, 0) << "it is in view";
  EXPECT_TRUE(report.BringEntryToView(100));
  EXPECT_EQ(report.View().scrollY, 990);
  EXPECT_TRUE(report.BringEntryToView(100));
  EXPECT_EQ(report.View().scrollY, 990);
  EXPECT_TRUE(report.BringEntryToView(0));
  EXPECT_EQ(report.View().scrollY, 0);
  EXPECT_FALSE(report.BringEntryToView(300));
  EXPECT_FALSE(report.BringEntryToView(-1));
  EXPECT_EQ(report.PageStep(), 100 * 7 / 8);
}

TEST_F(ShownPointIndexTest, TheArrowsToTheSidesMoveItUpAndDown) {
  Take(300);
  const int width = GroupWidth();
  Lay(report, width, 112);
  report.StepSideways(-1);
  EXPECT_EQ(report.View().scrollY, width);
  EXPECT_EQ(report.View().scrollX, 0);
  report.StepSideways(-1);
  report.StepSideways(1);
  EXPECT_EQ(report.View().scrollY, width);
  for (int i = 0; i < 5; ++i) report.StepSideways(1);
  EXPECT_EQ(report.View().scrollY, 0);
  for (int i = 0; i < 100; ++i) report.StepSideways(-1);
  EXPECT_EQ(report.View().scrollY, 3000 - 100);
}

TEST_F(ShownPointIndexTest, MeasuresAgainOnlyForAnotherFormOrFont) {
  Take(50);
  RecordingCanvas canvas(500, 100);
  report.View().viewWidth = 500;
  report.View().viewHeight = 100;
  report.LayOut(canvas);
  const int first = canvas.widthsAsked;
  report.View().viewWidth = 700;
  report.LayOut(canvas);
  EXPECT_EQ(canvas.widthsAsked, first);
  EXPECT_TRUE(report.SetDisplay(CoordinateDisplay::Seconds));
  EXPECT_FALSE(report.SetDisplay(CoordinateDisplay::Seconds));
  report.LayOut(canvas);
  EXPECT_EQ(canvas.widthsAsked, 2 * first);
}

TEST_F(ShownPointIndexTest, SelectedNeighborsOfFullLinesAreOneArea) {
  Take(6);
  const int width = GroupWidth();
  Lay(report, 2 * width, 100);
  ReportSelection selection;
  SelectAllLines(selection, 6);
  RecordingCanvas canvas(2 * width, 100);
  DrawReport(report, selection, Highlight, canvas);
  EXPECT_EQ(canvas.Count("clear"), 2);
}

TEST_F(ShownPointIndexTest, DrawsOnlyTheGroupsThatTheClipShows) {
  Take(6);
  const int width = GroupWidth();
  Lay(report, 3 * width, 100);
  RecordingCanvas canvas(3 * width, 100);
  canvas.SetClip({width, 12, 2 * width, 22});
  report.Draw(canvas);
  const Texts texts = canvas.Having("text");
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_NE(texts[0].find("A101"), std::string::npos);
}

TEST_F(ShownPointIndexTest, AWindowTooNarrowForOneGroupScrollsSideways) {
  Take(6);
  const int width = GroupWidth();
  Lay(report, width / 2, 100);
  EXPECT_EQ(report.Across(), 1);
  EXPECT_GT(report.View().contentWidth, width / 2);
  report.View().scrollX = 20;
  EXPECT_EQ(LineAt(report, {0, 12}), 0);
  EXPECT_EQ(report.LinePlace(0).left, -20);
}

struct ShownRangeStatsTest : testing::Test {
  std::deque<Range> ranges;
  std::deque<RangePanelRow> rows;
  RangeStatsCounts counts;
  ShownRangeStats report{counts};

  const RangePanelRow* Row(const std::string& name, bool travels) {
    Range& range = ranges.emplace_back();
    if (travels) {
      range.meanDailyPath = 100;
      range.slots[100].distance = 10;
      range.hours[8].distance = 100;
    }
    RangePanelRow& row = rows.emplace_back();
    row.text = name;
    row.range = &range;
    row.selected = true;
    return &row;
  }
};

TEST_F(ShownRangeStatsTest, TitlesChartsAndLinesAreItsLines) {
  report.Show({Row("Oru", true)}, {});
  Lay(report, 300, 200);
  EXPECT_EQ(report.LineCount(), 1 + 1 + 14);
  EXPECT_EQ(LineAt(report, {0, 0}), 0);
  EXPECT_EQ(LineAt(report, {0, 12}), 0);
  EXPECT_EQ(LineAt(report, {0, 13}), 1) << "the topmost label of the chart";
  EXPECT_TRUE(report.IsChart(1));
  EXPECT_FALSE(report.IsChart(0));
  EXPECT_EQ(LineAt(report, {0, 185}), 2);
  EXPECT_EQ(report.LineText(0), "\t\tOru");
  EXPECT_EQ(report.LineText(1), "");
  EXPECT_EQ(report.LineText(2).substr(0, 10), "MCP area: ");
  EXPECT_EQ(report.PageStep(), 190);
  const std::string copied = CopiedText(report, {});
  EXPECT_EQ(std::count(copied.begin(), copied.end(), '\n'), 15) << "the chart has no text";
}

TEST_F(ShownRangeStatsTest, NoRowGivesNoLineAndAnEmptyFile) {
  Lay(report, 300, 200);
  EXPECT_EQ(report.LineCount(), 0);
  EXPECT_EQ(report.FileText(), "");
  EXPECT_EQ(CopiedText(report, {}), "");
  EXPECT_EQ(LineAt(report, {0, 0}), -1);
  EXPECT_EQ(report.ChartRow(-1), nullptr);
}

TEST_F(ShownRangeStatsTest, TheChartIsThatOfTheBlockOrTheOneInView) {
  const RangePanelRow* still = Row("Still", false);
  const RangePanelRow* oru = Row("Oru", true);
  const RangePanelRow* ana = Row("Ana", true);
  report.Show({still, oru, ana}, {});
  Lay(report, 300, 200);
  EXPECT_EQ(report.ChartRow(-1), oru);
  EXPECT_EQ(report.ChartRow(report.LineCount() - 1), ana);
  EXPECT_EQ(report.ChartRow(0), oru) << "its own block has none";
  report.View().scrollY = 25 + 15 + 170;
  EXPECT_EQ(report.ChartRow(-1), ana) << "the first one in view";
  report.Show({still}, {});
  Lay(report, 300, 200);
  EXPECT_EQ(report.ChartRow(-1), nullptr);
}

TEST_F(ShownRangeStatsTest, KnowsWhetherItShowsOtherRows) {
  const RangePanelRow* oru = Row("Oru", true);
  RangePanelRow again = *oru;
  EXPECT_TRUE(report.Show({oru}, {}));
  EXPECT_FALSE(report.Show({&again}, {})) << "a new row on the same range";
  EXPECT_TRUE(report.Show({&again, Row("Ana", true)}, {}));
}

TEST_F(ShownRangeStatsTest, HoldsNoRowOnceItIsDropped) {
  report.Show({Row("Oru", true)}, {});
  Lay(report, 300, 200);
  report.Drop();
  EXPECT_EQ(report.LineCount(), 0);
  EXPECT_EQ(report.FileText(), "");
  EXPECT_EQ(report.ChartRow(0), nullptr);
}

TEST_F(ShownRangeStatsTest, ASelectedChartHasTheColorsOfTheHighlight) {
  report.Show({Row("Oru", true)}, {});
  Lay(report, 300, 200);
  ReportSelection selection;
  selection.lines = {1};
  RecordingCanvas canvas(300, 200);
  DrawReport(report, selection, Highlight, canvas);
  EXPECT_GT(canvas.IndexOf("clip 0,13 300,185"), 0);
  EXPECT_GT(canvas.IndexOf("pen 0 dotted ffff00"), 0) << "the line of the slots";
  EXPECT_GT(canvas.IndexOf("pen 0 solid ffff00"), 0);
}

TEST_F(ShownRangeStatsTest, FineScreensHaveWiderMargins) {
  report.View().unit = 2;
  report.Show({Row("Still", false), Row("Oru", false)}, {});
  Lay(report, 300, 200);
  RecordingCanvas canvas(300, 200);
  report.Draw(canvas);
  EXPECT_GT(canvas.IndexOf("text 6,23 MCP area"), 0);
  EXPECT_GT(canvas.IndexOf("line 0,27 300,27"), 0);
  EXPECT_GT(canvas.IndexOf("line 0,31 300,31"), 0);
}

}  // namespace
}  // namespace orvane
