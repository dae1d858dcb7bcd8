#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"
#include "reports/point_index_view.h"
#include "reports/range_stats_view.h"
#include "reports/trail_summary_view.h"
#include "support/recording_canvas.h"

#include <deque>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

struct ReportViewsTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "case.map");
  std::deque<Trail> trails;

  /// A straight trail of 100 m to the north.
  Trail& Straight(const std::string& name) {
    Trail& trail = trails.emplace_back();
    trail.name = name;
    for (const double north : {0.0, 100.0}) {
      Point& point = MakePoint(map, "");
      point.geo = MetersToLatLon(north, 0);
      point.flags |= PointPlaced;
      trail.points.push_back(&point);
    }
    return trail;
  }
  Trail& Square(const std::string& name) {
    Trail& trail = trails.emplace_back();
    trail.name = name;
    for (const auto& [north, east] : {std::pair{0, 0}, {100, 0}, {100, 100}, {0, 100}}) {
      Point& point = MakePoint(map, "");
      point.geo = MetersToLatLon(north, east);
      point.geo.altitude = 500;
      point.flags |= PointPlaced;
      trail.points.push_back(&point);
    }
    trail.points.push_back(trail.points.front());
    return trail;
  }
};

struct TrailSummaryViewTest : ReportViewsTest {
  TrailSummaryView view;

  void Lay(int width, int height, std::vector<Trail*> shown) {
    const RecordingCanvas canvas(width, height);
    TakeReportFont(view, canvas);
    view.viewWidth = width;
    view.viewHeight = height;
    view.trails = std::move(shown);
    LayoutTrailSummary(view);
  }
  Texts Drawn() {
    RecordingCanvas canvas(view.viewWidth, view.viewHeight);
    DrawTrailSummary(view, canvas);
    return canvas.Having("text");
  }
};

TEST_F(TrailSummaryViewTest, SpreadsItsColumnsOverAWideWindowOnly) {
  Lay(300, 200, {});  // 38 units of 10 pixels
  EXPECT_EQ(view.scale, 1);
  EXPECT_EQ(view.contentWidth, 380);
  Lay(760, 200, {});
  EXPECT_EQ(view.scale, 2);
  EXPECT_EQ(view.contentWidth, 760);
}

TEST_F(TrailSummaryViewTest, ShowsZeroTotalsWithoutATrail) {
  Lay(380, 200, {});
  EXPECT_EQ(view.headerHeight, 22);
  EXPECT_EQ(view.contentHeight, 12);
  EXPECT_EQ(TrailSummaryLines(view), 1);
  const Texts drawn = Drawn();
  EXPECT_EQ(drawn.back(), "text 136,32 0m");  // ground length, at the right of its column
  EXPECT_NE(std::find(drawn.begin(), drawn.end(), "text 2,32 Totals"), drawn.end());
}

TEST_F(TrailSummaryViewTest, CentersHeadingsAndAlignsFiguresRight) {
  Lay(380, 200, {&Straight("Ridge")});
  const Texts drawn = Drawn();
  EXPECT_EQ(drawn[0], "text 30,9 Trail");  // in the middle of 0 to 90
  EXPECT_EQ(drawn[1], "text 33,19 Name");
  EXPECT_EQ(drawn[2], "text 93,9 Path");
  EXPECT_NE(std::find(drawn.begin(), drawn.end(), "text 2,30 Ridge"), drawn.end());
  EXPECT_NE(std::find(drawn.begin(), drawn.end(), "text 94,30 100m"), drawn.end());
}

TEST_F(TrailSummaryViewTest, CutsALongNameBeforeTheFigures) {
  Lay(380, 200, {&Straight("A name, 14 chs"), &Straight("The name of a trail of thirty letters")});
  RecordingCanvas canvas(view.viewWidth, view.viewHeight);
  DrawTrailSummary(view, canvas);
  const Texts lines = canvas.Lines();
  const auto after = [&lines](const std::string& text) {
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
      return line.starts_with("text") && line.ends_with(text);
    });
    return found == lines.begin() || found == lines.end() ? std::string() : *std::prev(found);
  };
  EXPECT_FALSE(after("A name, 14 chs").starts_with("clip 0,22 90,"));  // it ends at 86
  EXPECT_EQ(after("thirty letters"), "clip 0,22 90,200");
}

TEST_F(TrailSummaryViewTest, ShowsTheAspectsIfATrailIsClosed) {
  Trail& square = Square("Plot");
  Lay(380, 400, {&square});
  EXPECT_EQ(view.totals.closedTrails, 1);
  EXPECT_EQ(view.contentHeight, 10 + 10 + 2 + 100 + 5);
  const Texts drawn = Drawn();
  // The widest label has 20 letters.
  EXPECT_NE(std::find(drawn.begin(), drawn.end(), "text 3,57 Total closed trails:"), drawn.end());
  EXPECT_NE(std::find(drawn.begin(), drawn.end(), "text 130,57 1"), drawn.end());
}

TEST_F(TrailSummaryViewTest, DrawsOnlyTheLinesInView) {
  std::vector<Trail*> many;
  for (int i = 0; i < 1000; ++i) many.push_back(&Straight("T" + std::to_string(i)));
  view.scrollY = 5000;
  Lay(380, 122, many);
  const Texts drawn = Drawn();
  Texts names;
  for (const std::string& text : drawn) {
    if (text.find(" T5") != std::string::npos) names.push_back(text);
  }
  ASSERT_EQ(names.size(), 10U);  // 100 pixels below the headings
  EXPECT_EQ(names.front(), "text 2,30 T500");
  view.scrollY = 1000000;
  LayoutTrailSummary(view);
  EXPECT_EQ(view.scrollY, 1000 * 10 + 12 - 100);
}

TEST_F(TrailSummaryViewTest, TakesTheLeavesOfSelectedGroupsInTreeOrder) {
  std::list<TrailPanelRow> rows;
  const auto addRow = [](std::list<TrailPanelRow>& to, const std::string& text, Trail* trail) {
    TrailPanelRow& row = to.emplace_back();
    row.text = text;
    row.trail = trail;
    row.selected = true;
    return &row;
  };
  TrailPanelRow* group = addRow(rows, "Trail", nullptr);
  addRow(group->children, "A", &Straight("A"));
  addRow(group->children, "B", &Straight("B"))->selected = false;
  addRow(group->children, "C", &Straight("C"));
  TrailPanelRow* other = addRow(rows, "River", nullptr);
  addRow(other->children, "D", &Straight("D"));
  const std::vector<Trail*> selected = SelectedTrails(rows);
  ASSERT_EQ(selected.size(), 3U);
  EXPECT_EQ(*selected[0]->name, "A");
  EXPECT_EQ(*selected[1]->name, "C");
  EXPECT_EQ(*selected[2]->name, "D");
  EXPECT_EQ(TrailSummaryTitle(rows), "Trail Summary of Trail, River");
  addRow(addRow(rows, std::string(90, 'x'), nullptr)->children, "E", nullptr);
  addRow(addRow(rows, "Road", nullptr)->children, "F", nullptr);
  EXPECT_EQ(TrailSummaryTitle(rows), "Trail Summary of Trail, River, Road");
  EXPECT_EQ(TrailSummaryTitle({}), "Trail Summary");
}

struct PointIndexViewTest : testing::Test {
  PointIndex index;
  PointIndexView view;

  void Add(const std::string& name, float altitude = NoAltitude) {
    PointIndexEntry& entry = index.entries.emplace_back();
    entry.name = name;
    entry.position = {.lat = 1, .lon = 10, .altitude = altitude};
  }
  void Lay(int width) {
    RecordingCanvas canvas(width, 100);
    TakeReportFont(view, canvas);
    view.index = &index;
    view.viewWidth = width;
    view.viewHeight = 100;
    LayoutPointIndex(view, canvas);
  }
};

TEST_F(PointIndexViewTest, PutsAsManyGroupsSideBySideAsFit) {
  for (int i = 0; i < 7; ++i) Add("A" + std::to_string(i));
  Lay(100);
  const int width = view.nameWidth + view.columnGap + view.positionWidth;
  EXPECT_EQ(view.nameWidth, 4 * 6 + 8);
  EXPECT_EQ(view.columnGap, 18);
  EXPECT_EQ(view.groupGap, 36);
  EXPECT_EQ(view.groupWidth, width + 36);
  EXPECT_EQ(view.groupsAcross, 1);  // too narrow for one, and it scrolls
  EXPECT_EQ(view.contentHeight, 70);
  EXPECT_EQ(view.contentWidth, width + 18);
  Lay(2 * width + 36);
  EXPECT_EQ(view.groupsAcross, 2);  // the last one needs no gap
  EXPECT_EQ(view.contentHeight, 40);
  Lay(2 * width + 35);
  EXPECT_EQ(view.groupsAcross, 1);
}

TEST_F(PointIndexViewTest, LeavesOutColumnsWithNothingToShow) {
  Add("A");
  Lay(1000);
  EXPECT_EQ(view.altitudeWidth, 0);
  const int narrow = view.groupWidth;
  Add("B", 12);
  Lay(1000);
  EXPECT_EQ(view.altitudeWidth, 18);
  EXPECT_EQ(view.groupWidth, narrow + 18 + view.columnGap);
  RecordingCanvas canvas(1000, 100);
  DrawPointIndex(view, canvas);
  const Texts texts = canvas.Having("text");
  const int left = view.nameWidth + view.positionWidth + 2 * view.columnGap + 9;
  const int next = view.groupWidth;
  EXPECT_EQ(texts.back(), "text " + std::to_string(next + left) + ",20 12m");
}

TEST_F(PointIndexViewTest, RunsAlongTheLineThenDown) {
  for (int i = 0; i < 5; ++i) Add("A" + std::to_string(i));
  Lay(1000);
  view.groupsAcross = 2;
  RecordingCanvas canvas(1000, 100);
  DrawPointIndex(view, canvas);
  const Texts texts = canvas.Having("text");
  const auto has = [&](int x, int y, const std::string& name) {
    const std::string text = "text " + std::to_string(x) + "," + std::to_string(y) + " " + name;
    return std::find(texts.begin(), texts.end(), text) != texts.end();
  };
  const int second = view.groupWidth + 9;
  EXPECT_TRUE(has(9, 20, "A0"));
  EXPECT_TRUE(has(second, 20, "A1"));
  EXPECT_TRUE(has(9, 30, "A2"));
  EXPECT_TRUE(has(second, 30, "A3"));
  EXPECT_TRUE(has(9, 40, "A4"));
}

struct RangeStatsViewTest : testing::Test {
  std::deque<Range> ranges;
  std::deque<RangePanelRow> rows;
  RangeStatsView view;
  RangeStatsCounts counts;

  RangePanelRow& Row(const std::string& name, bool travels) {
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
    return row;
  }
  void Lay() {
    const RecordingCanvas canvas(300, 200);
    TakeReportFont(view, canvas);
    view.viewWidth = 300;
    view.viewHeight = 200;
    LayoutRangeStats(view, counts);
  }
};

TEST_F(RangeStatsViewTest, IsEmptyWithoutARow) {
  Lay();
  EXPECT_EQ(view.contentHeight, 0);
  RecordingCanvas canvas(300, 200);
  DrawRangeStats(view, canvas);
  EXPECT_EQ(canvas.Count("text"), 0);
}

TEST_F(RangeStatsViewTest, KeepsRoomForTheChartOfARangeThatTravels) {
  view.rows = {&Row("Still", false), &Row("Oru", true)};
  Lay();
  // A block without travel has one line; one with travel has 14 lines and 17 for the chart.
  EXPECT_EQ(view.contentHeight, (15 + 10) + (15 + 170 + 140));
  EXPECT_EQ(view.parts[0].kind, RangeStatsPart::Kind::Title);
  EXPECT_EQ(view.parts[3].kind, RangeStatsPart::Kind::Chart);
  EXPECT_EQ(view.parts[3].top, 25 + 15);
  EXPECT_EQ(view.parts[4].top, 25 + 15 + 170);
  RecordingCanvas canvas(300, 400);
  DrawRangeStats(view, canvas);
  const std::vector<std::string> texts = canvas.Having("text");
  EXPECT_EQ(texts.front(), "text 135,10 Still");  // in the middle, a quarter of a line down
  EXPECT_EQ(canvas.IndexOf("font italic") < canvas.IndexOf("text 135"), true);
  EXPECT_EQ(canvas.IndexOf("line 0,26 300,26") > 0, true);
  EXPECT_EQ(canvas.IndexOf("line 0,28 300,28") > 0, true);
}

TEST_F(RangeStatsViewTest, ScrollsLongLinesSidewaysUnderTitleAndChart) {
  RangePanelRow& row = Row("Oru", true);
  view.rows = {&row};
  view.letterWidth = 6;
  Lay();
  size_t longest = 0;
  for (int line = 0; const auto text = RangeStatsLine(view, row, line); ++line) {
    longest = std::max(longest, text->size());
  }
  const int width = static_cast<int>(longest) * 6 + 2 * RangeStatsMargin;
  ASSERT_GT(width, 300);
  EXPECT_EQ(view.contentWidth, width);
  const auto draw = [this] {
    RecordingCanvas canvas(300, 400);
    DrawRangeStats(view, canvas);
    return canvas.Having("text");
  };
  const std::vector<std::string> before = draw();
  view.scrollX = 1000;
  Lay();
  EXPECT_EQ(view.scrollX, width - 300) << "no further than the longest line";
  view.scrollX = 40;
  const std::vector<std::string> after = draw();
  ASSERT_EQ(after.size(), before.size());
  EXPECT_EQ(after.front(), before.front()) << "the title";
  EXPECT_EQ(after[1], before[1]) << "the chart";
  EXPECT_EQ(before.back().substr(0, 7), "text 3,");
  EXPECT_EQ(after.back().substr(0, 9), "text -37,");
  view.letterWidth = 1;
  Lay();
  EXPECT_EQ(view.contentWidth, 300) << "where all lines fit, nothing scrolls";
}

TEST_F(RangeStatsViewTest, GivesLaterBlocksTheHeightOfTheFirstOfTheirKind) {
  counts.withoutChart = 5;
  view.rows = {&Row("Still", false)};
  Lay();
  EXPECT_EQ(view.contentHeight, 15 + 50);
  view.printing = true;
  Lay();
  EXPECT_EQ(view.contentHeight, 15 + 10);
  EXPECT_EQ(counts.withoutChart, 5);
  view.printing = false;
  counts.withoutChart = 0;
  Lay();
  EXPECT_EQ(counts.withoutChart, 1);
}

TEST_F(RangeStatsViewTest, ChoosesOnlyMeasuresWithNames) {
  EXPECT_FALSE(ChooseChartMeasure(view, TravelChartMode::Distance));
  view.names[0] = "feed";
  EXPECT_TRUE(ChooseChartMeasure(view, TravelChartMode::Sm1));
  EXPECT_EQ(view.chartMeasure, TravelChartMode::Sm1);
  EXPECT_FALSE(ChooseChartMeasure(view, TravelChartMode::Sm2));
  view.names[2] = "rest";
  EXPECT_FALSE(ChooseChartMeasure(view, TravelChartMode::Sm3));
  view.names[1] = "move";
  EXPECT_TRUE(ChooseChartMeasure(view, TravelChartMode::Sm3));
  EXPECT_TRUE(ChooseChartMeasure(view, TravelChartMode::Distance));
  EXPECT_EQ(view.chartMeasure, TravelChartMode::Distance);
}

TEST_F(RangeStatsViewTest, TakesSelectedRowsWithARangeOrAnOverlap) {
  std::list<RangePanelRow> pane(2);
  pane.front().fixed = true;
  pane.front().selected = true;
  pane.back().range = &ranges.emplace_back();
  EXPECT_TRUE(SelectedRanges(pane).empty());
  pane.back().selected = true;
  EXPECT_EQ(SelectedRanges(pane).size(), 1U);
}

TEST(TrailSummaryTitle, NamesTheSelectedGroups) {
  std::list<TrailPanelRow> rows(4);
  const char* const texts[] = {"Path", "River", "Road", "Ridge"};
  size_t i = 0;
  for (TrailPanelRow& row : rows) {
    row.text = texts[i++];
    row.selected = i != 3;
    if (i < 4) row.children.emplace_back();
  }
  EXPECT_EQ(TrailSummaryTitle(rows), "Trail Summary of Path, River") << "Ridge is not a group";
  rows.back().children.emplace_back();
  rows.back().text = std::string(1000, 'x');
  EXPECT_EQ(TrailSummaryTitle(rows), "Trail Summary of Path, River") << "too long";
}

TEST(SelectedTrails, LeavesOutRowsWithoutATrail) {
  Trail trail;
  std::list<TrailPanelRow> rows(2);
  rows.front().selected = true;  // as the row "New"
  rows.back().selected = true;
  rows.back().trail = &trail;
  EXPECT_EQ(SelectedTrails(rows), std::vector<Trail*>{&trail});
}

TEST(RangeStatsView, OfAnOverlapHasTheLinesOfBothRanges) {
  Range a;
  Range b;
  a.name = "A";
  b.name = "B";
  RangeIntersection overlap;
  overlap.a.range = &a;
  overlap.b.range = &b;
  RangePanelRow row;
  row.text = "A and B";
  row.intersection = &overlap;
  RangeStatsView view;
  view.lineHeight = 10;
  view.rows = {&row, &row};
  RangeStatsCounts counts;
  LayoutRangeStats(view, counts);
  ASSERT_GT(counts.overlap, 0);
  EXPECT_EQ(counts.withChart + counts.withoutChart, 0);
  EXPECT_EQ(view.parts.size(), 2 * (1 + static_cast<size_t>(counts.overlap)));
  EXPECT_FALSE(RangeStatsLine(view, row, counts.overlap));
  // A second title has lines above it, but not on paper.
  for (const bool printing : {false, true}) {
    view.printing = printing;
    RecordingCanvas canvas(300, 200);
    DrawRangeStatsPart(view, view.parts.at(view.parts.size() / 2), canvas, 50);
    EXPECT_EQ(canvas.Count("line"), printing ? 0 : 2);
    EXPECT_EQ(canvas.Having("text").size(), 1U);
  }
}

}  // namespace
}  // namespace orvane
