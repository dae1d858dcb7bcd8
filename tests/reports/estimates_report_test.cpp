#include "reports/estimates_report.h"

#include "support/map_from_text.h"
#include "support/recording_canvas.h"

#include <algorithm>
#include <limits>
#include <list>

namespace orvane {
namespace {

/// Four days of an animal, the last of them far away, and a range of one fix without a date.
constexpr std::string_view Days =
    "T\t\tOru\tUlo\t2003-3-1\nG\t8:00\tN0\tE0\nG\t9:00\tN0.001\tE0\nG\t10:00\tN0\tE0.001\n"
    "T\t\tOru\tUlo\t2003-3-2\nG\t8:00\tN0\tE0.0002\nG\t9:00\tN0.0007\tE0.0001\n"
    "T\t\tOru\tUlo\t2003-3-3\nG\t8:00\tN0.0003\tE0.0004\n"
    "T\t\tOru\tUlo\t2003-3-4\nG\t8:00\tN0.004\tE0.004\n"
    "T\t\tTavu\nG\t8:00\tN0.01\tE0.01\n"
    "R\tUlos\nK\tOru\nR\tTavus\nK\tTavu\n";

struct EstimatesReport : MapFixture {
  std::vector<RangeEstimate> Of(std::string_view text) {
    Map& map = Open(text);
    std::vector<const Range*> ranges;
    for (const Range& range : map.ranges) ranges.push_back(&range);
    std::sort(ranges.begin(), ranges.end(),
              [](const Range* a, const Range* b) { return *a->name > *b->name; });
    return EstimateRanges(ranges, {}, nullptr);
  }
  static std::string Cell(const TableReport& table, std::string_view caption, size_t column) {
    for (const auto& row : table.rows) {
      if (row[0] == caption) return row[column];
    }
    ADD_FAILURE() << caption;
    return {};
  }
  static bool HasNote(const TableReport& table, std::string_view start) {
    return std::any_of(table.notes.begin(), table.notes.end(), [&](const std::string& note) {
      return note.substr(0, start.size()) == start;
    });
  }
};

TEST_F(EstimatesReport, HasAColumnForEachRange) {
  const auto estimates = Of(Days);
  ASSERT_EQ(estimates.size(), 2U);
  const TableReport table = EstimatesTable(estimates);
  ASSERT_EQ(table.columns.size(), 3U);
  EXPECT_EQ(table.columns[1].caption, "Ulos");
  EXPECT_EQ(table.columns[2].caption, "Tavus");
  for (const auto& row : table.rows) EXPECT_EQ(row.size(), 3U) << row[0];
  EXPECT_EQ(Cell(table, "Fixes", 1), "7");
  EXPECT_EQ(Cell(table, "Days", 1), "4");
  EXPECT_EQ(Cell(table, "First day", 1), "2003-3-1");
  EXPECT_EQ(Cell(table, "Last day", 1), "2003-3-4");
  EXPECT_EQ(Cell(table, "Polygon of 100 % of the fixes", 1),
            EstimateAreaText(estimates[0].mcp.back().area));
  EXPECT_EQ(Cell(table, "Polygon of 50 % of the fixes", 1),
            EstimateAreaText(estimates[0].mcp.front().area));
  EXPECT_EQ(Cell(table, "Kernel, 95 % of the density", 1),
            EstimateAreaText(estimates[0].kernel->areas[1].area));
  EXPECT_EQ(Cell(table, "Kernel, 95 % of the density", 2), "none");
  EXPECT_EQ(Cell(table, "Affinity with Tavus", 1), "none");
  EXPECT_EQ(Cell(table, "Affinity with Ulos", 1), "") << "nothing is compared with itself";
}

TEST_F(EstimatesReport, SaysWhetherTheLastDaysStillAdded) {
  const TableReport table = EstimatesTable(Of(Days));
  EXPECT_TRUE(HasNote(table, "Ulos: the last quarter of the days still added more than 5 %"));
  EXPECT_TRUE(HasNote(table, "Tavus: no fix has a date"));
  EXPECT_TRUE(HasNote(table, "Tavus: there is no kernel"));
  EXPECT_TRUE(HasNote(table, "Per cents of polygons count fixes"));
  const TableReport still = EstimatesTable(
      Of("T\t\tOru\tUlo\t2003-3-1\nG\t8:00\tN0\tE0\nG\t9:00\tN0.001\tE0\nG\t10:00\tN0\tE0.001\n"
         "T\t\tOru\tUlo\t2003-3-2\nG\t8:00\tN0\tE0.0002\nR\tUlos\nK\tOru\n"));
  EXPECT_TRUE(HasNote(still, "Ulos: the last quarter of the days added at most 5 %"));
}

/// A sentence on each of many ranges left no room for the table.
TEST_F(EstimatesReport, ManyRangesShareTheirSentences) {
  const auto two = Of(Days);
  std::vector<RangeEstimate> many(4, two[0]);
  many.push_back(two[1]);
  EXPECT_EQ(EstimatesTable(many).notes.size(), 4U + 2U + 1U);
  many.push_back(two[1]);
  const TableReport table = EstimatesTable(many);
  ASSERT_EQ(table.notes.size(), 4U);
  EXPECT_TRUE(HasNote(table,
                      "The last quarter of the days still added more than 5 % to the area of "
                      "4 of the 6 ranges, so these were not observed to their end"));
  EXPECT_TRUE(HasNote(table, "No fix of 2 of the 6 ranges has a date"));
  EXPECT_TRUE(HasNote(table, "There is no kernel for 2 of the 6 ranges: "));
  EXPECT_TRUE(HasNote(table, "Per cents of polygons count fixes"));
  EXPECT_EQ(Cell(table, "Added by the last quarter of the days", 1), "over 5 %");
  EXPECT_EQ(Cell(table, "Added by the last quarter of the days", 6), "no days");
  many.resize(0);
  many.assign(6, two[0]);
  EXPECT_EQ(EstimatesTable(many).notes.size(), 2U);
}

TEST_F(EstimatesReport, ARangeByItselfIsNotCompared) {
  const auto estimates = Of(Days);
  const TableReport table = EstimatesTable(std::span(estimates).first(1));
  EXPECT_NE(table.rows.back()[0].rfind("Kernel", 0), std::string::npos);
  EXPECT_FALSE(std::any_of(table.rows.begin(), table.rows.end(),
                           [](const auto& row) { return row[0].rfind("Affinity", 0) == 0; }));
}

TEST_F(EstimatesReport, WithoutRangesThereIsASentence) {
  const TableReport table = EstimatesTable({});
  EXPECT_TRUE(table.rows.empty());
  EXPECT_EQ(table.notes,
            (std::vector<std::string>{"No range is selected in the list beside the map."}));
}

TEST_F(EstimatesReport, AreasAreInHectaresFromOne) {
  EXPECT_EQ(EstimateAreaText(0), "0 m^2");
  EXPECT_EQ(EstimateAreaText(9999.4), "9999 m^2");
  EXPECT_EQ(EstimateAreaText(10000), "1.00 ha");
  EXPECT_EQ(EstimateAreaText(123456), "12.35 ha");
}

TEST_F(EstimatesReport, ChartsHoldTheFigures) {
  const auto estimates = Of(Days);
  const EstimateCharts charts = ChartsOf(estimates[0], 1);
  EXPECT_EQ(charts.rangeName, "Ulos");
  ASSERT_EQ(charts.polygons.lines.size(), 1U);
  EXPECT_EQ(charts.polygons.lines[0].points.size(), 11U);
  EXPECT_EQ(charts.polygons.lines[0].points.back().x, 100);
  ASSERT_EQ(charts.days.lines.size(), 2U);
  EXPECT_EQ(charts.days.lines[0].points.size(), 4U);
  EXPECT_EQ(charts.days.band.low.size(), 4U);
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_LE(charts.days.band.low[i].y, charts.days.lines[0].points[i].y + 1e-9);
    EXPECT_GE(charts.days.band.high[i].y, charts.days.lines[0].points[i].y - 1e-9);
  }
  EXPECT_EQ(charts.density.fixes.size(), 7U);
  const std::string numbers = EstimateChartNumbers(charts);
  EXPECT_EQ(numbers.rfind("Polygons\n% of the fixes\t", 0), 0U) << numbers;
  EXPECT_EQ(std::count(numbers.begin(), numbers.end(), '\n'), 2 + 11 + 1 + 2 + 4);
}

/// The strips cover the areas of the kernel's figures.
TEST_F(EstimatesReport, TheDensityCoversItsAreas) {
  const auto estimates = Of(Days);
  const DensityPicture picture = DensityPictureOf(*estimates[0].range, 1);
  double core = 0;
  double whole = 0;
  for (const DensityPicture::Strip& strip : picture.strips) {
    const double area = static_cast<double>(strip.end - strip.begin) * picture.step * picture.step;
    whole += area;
    if (strip.isCore) core += area;
  }
  EXPECT_NEAR(core, estimates[0].kernel->areas[0].area, 0.1 * core);
  EXPECT_NEAR(whole, estimates[0].kernel->areas[1].area, 0.1 * whole);
  EXPECT_TRUE(DensityPictureOf(*estimates[1].range, 1).strips.empty());
}

TEST_F(EstimatesReport, ChartsStayWithinTheirPicture) {
  const auto estimates = Of(Days);
  for (const RangeEstimate& estimate : estimates) {
    RecordingCanvas canvas(900, 300);
    DrawEstimateCharts(ChartsOf(estimate, 1), {0, 0, 900, 300}, 3, canvas);
    EXPECT_GT(canvas.Count("text"), 6);
    for (const std::string& line : canvas.Having("oval")) {
      const int x = std::stoi(line.substr(5));
      EXPECT_GE(x, 0);
      EXPECT_LE(x, 900);
    }
  }
}

TEST_F(EstimatesReport, ChartsAreInAsManyColumnsAsHaveRoom) {
  const RecordingCanvas measuring(1, 1);
  EXPECT_EQ(EstimateChartColumns(100, measuring), 1);
  EXPECT_EQ(EstimateChartWidth(measuring), 160);
  EXPECT_EQ(EstimateChartColumns(320, measuring), 2);
  EXPECT_EQ(EstimateChartColumns(479, measuring), 2);
  EXPECT_EQ(EstimateChartColumns(480, measuring), 3);
  EXPECT_EQ(EstimateChartColumns(9000, measuring), 3);
  EXPECT_EQ(EstimateChartsHeight(100, measuring), 15 + 3 * 100);
  EXPECT_EQ(EstimateChartsHeight(320, measuring), 15 + 2 * 160);
  EXPECT_EQ(EstimateChartsHeight(900, measuring), 15 + 300);
  const auto estimates = Of(Days);
  const EstimateCharts charts = ChartsOf(estimates[0], 1);
  const auto titlesOf = [&](int columns) {
    RecordingCanvas canvas(1000, 1000);
    DrawEstimateCharts(charts, {100, 50, 700, 650}, columns, canvas);
    std::vector<std::string> places;
    for (const char* title : {"Polygons", "Polygon of all fixes against days", "Kernel"}) {
      for (const std::string& line : canvas.Having("text")) {
        const size_t text = line.find(' ', 5);
        if (line.substr(text + 1) == title) places.push_back(line.substr(5, text - 5));
      }
    }
    return places;
  };
  EXPECT_EQ(titlesOf(3), (std::vector<std::string>{"105,73", "305,73", "505,73"}));
  EXPECT_EQ(titlesOf(2), (std::vector<std::string>{"105,73", "405,73", "105,365"}));
  EXPECT_EQ(titlesOf(1), (std::vector<std::string>{"105,73", "105,268", "105,463"}));
}

TEST(AxisStep, IsAOneTwoOrFive) {
  EXPECT_DOUBLE_EQ(AxisStep(100, 5), 20);
  EXPECT_DOUBLE_EQ(AxisStep(4, 5), 1);
  EXPECT_DOUBLE_EQ(AxisStep(0.23, 5), 0.05);
  EXPECT_DOUBLE_EQ(AxisStep(11, 5), 5);
  EXPECT_DOUBLE_EQ(AxisStep(0, 5), 1);
  EXPECT_DOUBLE_EQ(AxisStep(-3, 5), 1);
}

TEST(LineChart, ItsLegendHasOnlyLinesWithPoints) {
  RecordingCanvas canvas(300, 200);
  LineChart chart;
  chart.lines = {{"full", 0, false, {{1, 1}, {2, 3}}}, {"empty", 0, false, {}}};
  DrawLineChart(chart, {0, 0, 300, 200}, canvas);
  EXPECT_NE(canvas.Text().find(" full\n"), std::string::npos);
  EXPECT_EQ(canvas.Text().find(" empty\n"), std::string::npos);
}

TEST(LineChart, AnEmptyChartHasItsAxes) {
  RecordingCanvas canvas(300, 200);
  LineChart chart;
  chart.title = "Nothing";
  DrawLineChart(chart, {0, 0, 300, 200}, canvas);
  EXPECT_EQ(canvas.Count("polyline"), 0);
  EXPECT_GE(canvas.Count("line"), 4);
}

TEST_F(EstimatesReport, ARangeWithoutANameIsCalledSo) {
  Map& map = Open(Days);
  Range& range = map.ranges.front();
  range.name.reset();
  EXPECT_EQ(RangeName(range), "(no name)");
  const std::vector<const Range*> only{&range};
  const auto estimates = EstimateRanges(only, {}, nullptr);
  EXPECT_EQ(EstimatesTable(estimates).columns[1].caption, "(no name)");
}

TEST_F(EstimatesReport, TakesOnlySelectedRowsOfRanges) {
  Map& map = Open(Days);
  std::list<RangePanelRow> rows(4);
  auto row = rows.begin();
  row->range = &map.ranges.front();
  (++row)->selected = true;  // an overlap
  (++row)->range = &*std::next(map.ranges.begin());
  row->selected = true;
  EXPECT_EQ(SelectedRangesOnly(rows), std::vector<const Range*>{&*std::next(map.ranges.begin())});
}

TEST_F(EstimatesReport, SmallRangesAreDrawnInSquareMetres) {
  const auto estimates = Of(Days);
  EXPECT_EQ(PolygonChart(estimates[0]).yTitle, "ha");
  EXPECT_EQ(PolygonChart(estimates[1]).yTitle, "m^2");
  const LineChart polygons = PolygonChart({});
  EXPECT_TRUE(polygons.lines.at(0).points.empty());
  EXPECT_EQ(polygons.yTitle, "m^2");
  const LineChart days = DaysChart({});
  EXPECT_TRUE(days.band.low.empty());
}

TEST_F(EstimatesReport, WithoutAKernelThePictureSaysSo) {
  const auto estimates = Of(Days);
  RecordingCanvas canvas(300, 300);
  DrawDensity(DensityPictureOf(*estimates[1].range, 1), {0, 0, 300, 300}, canvas);
  const auto texts = canvas.Having("text");
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_NE(texts[1].find("There is no kernel."), std::string::npos);
  EXPECT_EQ(canvas.Count("oval"), 0);
  EXPECT_TRUE(DensityPictureOf(Range(), 1).fixes.empty());
}

TEST_F(EstimatesReport, NumbersOfChartsHaveAColumnForEachLine) {
  EstimateCharts charts;
  charts.polygons.title = "Empty";
  charts.polygons.xTitle = "x";
  charts.days.title = "Two";
  charts.days.xTitle = "x";
  charts.days.yTitle = "ha";
  charts.days.lines.resize(2);
  charts.days.lines[1].name = "first";
  for (ChartLine& line : charts.days.lines) line.points = {{1, 2}, {3, 4}};
  charts.days.band.low = {{1, 0.5}};
  charts.days.band.high = {{1, 2.5}};
  EXPECT_EQ(EstimateChartNumbers(charts),
            "Empty\nx\n\nTwo\nx\tha\tfirst, ha\t2.5 %\t97.5 %\n1\t2\t2\t0.5\t2.5\n3\t4\t4\n");
}

TEST(LineChart, ALineOfOnePointIsADot) {
  RecordingCanvas canvas(300, 200);
  LineChart chart;
  chart.lines.resize(1);
  chart.lines[0].points = {{1, 2}};
  DrawLineChart(chart, {0, 0, 300, 200}, canvas);
  EXPECT_EQ(canvas.Count("polyline"), 0);
  EXPECT_EQ(canvas.Count("oval"), 1);
  chart.lines[0].points.push_back({2, 3});
  RecordingCanvas two(300, 200);
  DrawLineChart(chart, {0, 0, 300, 200}, two);
  EXPECT_EQ(two.Count("polyline"), 1);
  EXPECT_EQ(two.Count("oval"), 0);
  chart.lines[0].dots = true;
  RecordingCanvas dots(300, 200);
  DrawLineChart(chart, {0, 0, 300, 200}, dots);
  EXPECT_EQ(dots.Count("oval"), 2);
}

TEST(AxisStep, OfWhatIsNoNumberIsOne) {
  EXPECT_DOUBLE_EQ(AxisStep(std::numeric_limits<double>::infinity(), 5), 1);
  EXPECT_DOUBLE_EQ(AxisStep(std::numeric_limits<double>::quiet_NaN(), 5), 1);
}

TEST_F(EstimatesReport, SharesOfTwoKernelsHaveThreeDecimals) {
  const auto estimates =
      Of("T\t\tOru\tUlo\t2003-3-1\nG\t8:00\tN0\tE0\nG\t9:00\tN0.001\tE0\nG\t10:00\tN0\tE0.001\n"
         "T\t\tTavu\tAna\t2003-3-1\nG\t8:00\tN0\tE0\nG\t9:00\tN0.0012\tE0\nG\t10:00\tN0\tE0.0012\n"
         "R\tUlos\nK\tOru\nR\tTavus\nK\tTavu\n");
  ASSERT_EQ(estimates.size(), 2U);
  ASSERT_TRUE(estimates[0].kernel && estimates[1].kernel);
  const TableReport table = EstimatesTable(estimates);
  const std::string affinity = Cell(table, "Affinity with Tavus", 1);
  EXPECT_EQ(affinity.size(), 5U) << affinity;
  EXPECT_TRUE(affinity.starts_with("0.")) << affinity;
  EXPECT_NE(Cell(table, "Density inside the 95 % kernel of Ulos", 2), "none");
}

TEST_F(EstimatesReport, FiguresThatAreMissingAreNone) {
  const Range range;
  RangeEstimate estimate;
  estimate.range = &range;
  estimate.kernel.emplace();
  const std::vector<RangeEstimate> one{estimate};
  const TableReport table = EstimatesTable(one);
  EXPECT_EQ(Cell(table, "Polygon of 95 % of the fixes", 1), "none");
  EXPECT_EQ(Cell(table, "Kernel, 95 % of the density", 1), "none");
  EXPECT_EQ(Cell(table, "Bandwidth of the kernel", 1), "0.0 m");
}

}  // namespace
}  // namespace orvane
