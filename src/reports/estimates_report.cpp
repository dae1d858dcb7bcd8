#include "reports/estimates_report.h"

#include "base/dates.h"
#include "base/number_text.h"
#include "estimates/kernel.h"
#include "estimates/range_fixes.h"
#include "geo/angle_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {

namespace {

constexpr double SquareMetersPerHectare = 10000;
constexpr int CorePercent = 50;
constexpr int WholePercent = 95;

constexpr Color InkColor = 0x000000;
constexpr Color LineColor = 0x1F5FA8;
constexpr Color OtherLineColor = 0xC2571A;
constexpr Color BandColor = 0xC9DCF0;
constexpr Color CoreColor = 0x6FA0D0;
constexpr Color FixColor = 0xC2571A;

/// A line of the table: a figure of each range.
template <typename Figure>
void AddRow(TableReport& table, std::span<const RangeEstimate> estimates, std::string caption,
            Figure figure) {
  std::vector<std::string> row{std::move(caption)};
  for (const RangeEstimate& estimate : estimates) row.push_back(figure(estimate));
  table.rows.push_back(std::move(row));
}

std::string ShareText(std::optional<double> share) {
  return share ? FormatFixed(*share, 3) : std::string("none");
}

void AddPolygons(TableReport& table, std::span<const RangeEstimate> estimates) {
  constexpr size_t Polygons = 11;
  for (size_t i = 0; i < Polygons; ++i) {
    const std::string percent = std::to_string(50 + 5 * i);
    AddRow(table, estimates, "Polygon of " + percent + " % of the fixes",
           [&](const RangeEstimate& estimate) {
             return i < estimate.mcp.size() ? EstimateAreaText(estimate.mcp[i].area)
                                            : std::string("none");
           });
  }
}

void AddKernels(TableReport& table, std::span<const RangeEstimate> estimates) {
  AddRow(table, estimates, "Bandwidth of the kernel", [](const RangeEstimate& estimate) {
    return estimate.kernel ? FormatFixed(estimate.kernel->bandwidth, 1) + " m"
                           : std::string("none");
  });
  for (const int percent : {CorePercent, WholePercent}) {
    AddRow(table, estimates, "Kernel, " + std::to_string(percent) + " % of the density",
           [&](const RangeEstimate& estimate) -> std::string {
             if (!estimate.kernel) return "none";
             for (const AreaOfPercent& area : estimate.kernel->areas) {
               if (area.percent == percent) return EstimateAreaText(area.area);
             }
             return "none";
           });
  }
}

/// What the ranges have in common: a row for each of them, empty in its own column.
void AddOverlaps(TableReport& table, std::span<const RangeEstimate> estimates) {
  const auto find = [](const RangeEstimate& estimate, const Range* other) -> const DensityOverlap* {
    for (const DensityOverlap& overlap : estimate.overlaps) {
      if (overlap.other == other) return &overlap;
    }
    return nullptr;
  };
  for (const RangeEstimate& of : estimates) {
    AddRow(table, estimates, "Density inside the 95 % kernel of " + RangeName(*of.range),
           [&](const RangeEstimate& estimate) {
             const DensityOverlap* overlap = find(estimate, of.range);
             return overlap == nullptr ? std::string() : ShareText(overlap->inside95);
           });
  }
  for (const RangeEstimate& of : estimates) {
    AddRow(table, estimates, "Affinity with " + RangeName(*of.range),
           [&](const RangeEstimate& estimate) {
             const DensityOverlap* overlap = find(estimate, of.range);
             return overlap == nullptr ? std::string() : ShareText(overlap->affinity);
           });
  }
}

std::string DaysSentence(const RangeEstimate& estimate) {
  const std::string name = RangeName(*estimate.range) + ": ";
  if (estimate.curve.empty()) return name + "no fix has a date, so there is no curve of days.";
  if (StillGrows(estimate.curve)) {
    return name +
           "the last quarter of the days still added more than 5 % to the area, so the range was "
           "not "
           "observed to its end.";
  }
  return name + "the last quarter of the days added at most 5 % to the area.";
}

/// What the last quarter of the days did to the area, for a cell.
std::string GrowthText(const RangeEstimate& estimate) {
  if (estimate.curve.empty()) return "no days";
  return StillGrows(estimate.curve) ? "over 5 %" : "at most 5 %";
}

/// The sentences on each range.
std::vector<std::string> NotesOfEach(std::span<const RangeEstimate> estimates) {
  std::vector<std::string> notes;
  for (const RangeEstimate& estimate : estimates) {
    notes.push_back(DaysSentence(estimate));
    if (estimate.kernel) continue;
    notes.push_back(
        RangeName(*estimate.range) +
        ": there is no kernel for fewer than two fixes, or for fixes within a millimetre "
        "of each other.");
  }
  return notes;
}

/// The same about many ranges, whose sentences would leave no room for the table.
std::vector<std::string> NotesOfMany(std::span<const RangeEstimate> estimates) {
  const auto count = [&](auto holds) {
    return std::count_if(estimates.begin(), estimates.end(), holds);
  };
  const auto growing = count([](const RangeEstimate& each) { return StillGrows(each.curve); });
  const auto dateless = count([](const RangeEstimate& each) { return each.curve.empty(); });
  const auto without = count([](const RangeEstimate& each) { return !each.kernel; });
  const std::string all = std::to_string(estimates.size());
  std::vector<std::string> notes{
      "The last quarter of the days still added more than 5 % to the area of " +
      std::to_string(growing) + " of the " + all +
      " ranges, so these were not observed to their end; the table says which."};
  if (dateless > 0) {
    notes.push_back("No fix of " + std::to_string(dateless) + " of the " + all +
                    " ranges has a date, so they have no curve of days.");
  }
  if (without > 0) {
    notes.push_back("There is no kernel for " + std::to_string(without) + " of the " + all +
                    " ranges: they have fewer than two fixes, or fixes within a millimetre of each "
                    "other.");
  }
  return notes;
}

std::vector<std::string> NotesOf(std::span<const RangeEstimate> estimates) {
  constexpr size_t MostNamed = 5;
  if (estimates.empty()) return {"No range is selected in the list beside the map."};
  std::vector<std::string> notes =
      estimates.size() > MostNamed ? NotesOfMany(estimates) : NotesOfEach(estimates);
  notes.emplace_back(
      "Per cents of polygons count fixes, those of kernels count density. The clusters of Range "
      "Stats "
      "count steps.");
  return notes;
}

/// Hectares or square metres, for the axis of a chart.
struct AreaUnit {
  double size = 1;
  std::string name = "m^2";
};

AreaUnit UnitOf(double largest) {
  if (largest >= SquareMetersPerHectare) return {SquareMetersPerHectare, "ha"};
  return {};
}

/// The fixes of a range in the plane of its density.
std::vector<PlanePlace> PlacesOf(const Range& range) {
  const std::vector<RangeFix> fixes = FixesOf(range);
  if (fixes.empty()) return {};
  return PlacesInPlane(fixes, BoundsOf(fixes));
}

/// Adds the strips of one row of a tile.
void AddStrips(const DensityTiles::Tile& tile, int row, double core, double whole,
               std::vector<DensityPicture::Strip>& strips) {
  const auto classOf = [&](int column) {
    const double value =
        tile.values[static_cast<size_t>(row) * DensityTiles::Side + static_cast<size_t>(column)];
    return value >= core ? 2 : value >= whole ? 1 : 0;
  };
  for (int begin = 0; begin < DensityTiles::Side;) {
    int end = begin + 1;
    while (end < DensityTiles::Side && classOf(end) == classOf(begin)) ++end;
    if (classOf(begin) > 0) {
      const std::int64_t left = tile.column * DensityTiles::Side;
      strips.push_back(
          {tile.row * DensityTiles::Side + row, left + begin, left + end, classOf(begin) == 2});
    }
    begin = end;
  }
}

/// Where a plane is on a canvas, north up.
struct PlaneView {
  double north = 0;  ///< metres of the upper edge
  double east = 0;   ///< metres of the left edge
  double scale = 1;  ///< pixels per metre
  Pixel corner;

  int Column(double metersEast) const {
    return corner.x + static_cast<int>(std::lround((metersEast - east) * scale));
  }
  int Row(double metersNorth) const {
    return corner.y + static_cast<int>(std::lround((north - metersNorth) * scale));
  }
};

PlaneView ViewOf(const DensityPicture& picture, const PixelRect& place) {
  double minNorth = picture.fixes.front().north;
  double maxNorth = minNorth;
  double minEast = picture.fixes.front().east;
  double maxEast = minEast;
  const auto widen = [&](double north, double east) {
    minNorth = std::min(minNorth, north);
    maxNorth = std::max(maxNorth, north);
    minEast = std::min(minEast, east);
    maxEast = std::max(maxEast, east);
  };
  for (const PlanePlace& fix : picture.fixes) widen(fix.north, fix.east);
  for (const DensityPicture::Strip& strip : picture.strips) {
    const double north = static_cast<double>(strip.row) * picture.step;
    widen(north, static_cast<double>(strip.begin) * picture.step);
    widen(north, static_cast<double>(strip.end) * picture.step);
  }
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  PlaneView view;
  const double across = std::max({maxEast - minEast, 1e-3});
  const double down = std::max({maxNorth - minNorth, 1e-3});
  view.scale = std::min(width / across, height / down);
  view.north = maxNorth;
  view.east = minEast;
  view.corner = {place.left + static_cast<int>((width - across * view.scale) / 2),
                 place.top + static_cast<int>((height - down * view.scale) / 2)};
  return view;
}

void DrawScaleBar(const PlaneView& view, const PixelRect& place, Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  const int ascent = canvas.Ascent(CanvasFont::Small);
  const double meters = AxisStep((place.right - place.left) / 3.0 / view.scale, 1) / 2;
  const int length = static_cast<int>(std::lround(meters * view.scale));
  const int y = place.bottom + line;
  canvas.SetPen({std::max(1, line / 8), PenPattern::Solid, InkColor});
  canvas.DrawLine({place.left, y}, {place.left + length, y});
  canvas.DrawText({place.left + length + line / 2, y + ascent / 2}, FormatDistance(meters));
}

/// The height of the name above the charts of a range.
int NameHeight(const Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  return line + line / 2;
}

int RowsOfCharts(int columns) { return (EstimateChartCount + columns - 1) / columns; }

std::string NumbersOf(const LineChart& chart) {
  std::string text = chart.title + '\n' + chart.xTitle;
  for (const ChartLine& line : chart.lines) {
    text += '\t' + (line.name.empty() ? chart.yTitle : line.name + ", " + chart.yTitle);
  }
  if (!chart.band.low.empty()) text += "\t2.5 %\t97.5 %";
  text += '\n';
  const size_t rows = chart.lines.empty() ? 0 : chart.lines.front().points.size();
  for (size_t i = 0; i < rows; ++i) {
    text += FormatGeneral(chart.lines.front().points[i].x);
    for (const ChartLine& line : chart.lines) text += '\t' + FormatGeneral(line.points[i].y);
    if (i < chart.band.low.size()) {
      text +=
          '\t' + FormatGeneral(chart.band.low[i].y) + '\t' + FormatGeneral(chart.band.high[i].y);
    }
    text += '\n';
  }
  return text;
}

}  // namespace

std::vector<const Range*> SelectedRangesOnly(const std::list<RangePanelRow>& rows) {
  std::vector<const Range*> ranges;
  for (const RangePanelRow& row : rows) {
    if (row.selected && row.range != nullptr) ranges.push_back(row.range);
  }
  return ranges;
}

std::string RangeName(const Range& range) { return range.name ? *range.name : "(no name)"; }

std::string EstimateAreaText(double squareMeters) {
  if (squareMeters < SquareMetersPerHectare) return FormatFixed(squareMeters, 0) + " m^2";
  return FormatFixed(squareMeters / SquareMetersPerHectare, 2) + " ha";
}

TableReport EstimatesTable(std::span<const RangeEstimate> estimates) {
  TableReport table;
  table.notes = NotesOf(estimates);
  if (estimates.empty()) return table;
  table.columns.push_back({"Figure"});
  for (const RangeEstimate& estimate : estimates) {
    table.columns.push_back({RangeName(*estimate.range), true});
  }
  AddRow(table, estimates, "Fixes",
         [](const RangeEstimate& estimate) { return std::to_string(estimate.fixes); });
  AddRow(table, estimates, "Days",
         [](const RangeEstimate& estimate) { return std::to_string(estimate.days); });
  AddRow(table, estimates, "First day",
         [](const RangeEstimate& estimate) { return FormatDate(estimate.firstDate); });
  AddRow(table, estimates, "Last day",
         [](const RangeEstimate& estimate) { return FormatDate(estimate.lastDate); });
  AddRow(table, estimates, "Added by the last quarter of the days", GrowthText);
  AddPolygons(table, estimates);
  AddKernels(table, estimates);
  if (estimates.size() > 1) AddOverlaps(table, estimates);
  return table;
}

LineChart PolygonChart(const RangeEstimate& estimate) {
  LineChart chart;
  const AreaUnit unit = UnitOf(estimate.mcp.empty() ? 0 : estimate.mcp.back().area);
  chart.title = "Polygons";
  chart.xTitle = "% of the fixes";
  chart.yTitle = unit.name;
  ChartLine& line = chart.lines.emplace_back();
  line.color = LineColor;
  line.dots = true;
  for (const AreaOfPercent& area : estimate.mcp) {
    line.points.push_back({static_cast<double>(area.percent), area.area / unit.size});
  }
  return chart;
}

LineChart DaysChart(const RangeEstimate& estimate) {
  LineChart chart;
  double largest = 0;
  for (const CurveRow& row : estimate.curve) largest = std::max(largest, row.all.high);
  const AreaUnit unit = UnitOf(largest);
  chart.title = "Polygon of all fixes against days";
  chart.xTitle = "days";
  chart.yTitle = unit.name;
  chart.band.name = "95 % of random orders";
  chart.band.color = BandColor;
  chart.lines.resize(2);
  ChartLine& mean = chart.lines[0];
  mean.name = "mean of random orders";
  mean.color = LineColor;
  ChartLine& first = chart.lines[1];
  first.name = "first days by date";
  first.color = OtherLineColor;
  for (const CurveRow& row : estimate.curve) {
    const auto days = static_cast<double>(row.days);
    mean.points.push_back({days, row.all.mean / unit.size});
    first.points.push_back({days, row.all.firstDays / unit.size});
    chart.band.low.push_back({days, row.all.low / unit.size});
    chart.band.high.push_back({days, row.all.high / unit.size});
  }
  return chart;
}

DensityPicture DensityPictureOf(const Range& range, double factor) {
  DensityPicture picture;
  picture.fixes = PlacesOf(range);
  const auto bandwidth = ReferenceBandwidth(picture.fixes, factor);
  if (!bandwidth) return {};
  const KernelDensity density(picture.fixes, *bandwidth, true);
  picture.step = density.Step();
  const double square = density.Step() * density.Step();
  const double core = density.SetOf(CorePercent).level * square;
  const double whole = density.SetOf(WholePercent).level * square;
  for (const DensityTiles::Tile& tile : density.Shares().Tiles()) {
    for (int row = 0; row < DensityTiles::Side; ++row) {
      AddStrips(tile, row, core, whole, picture.strips);
    }
  }
  return picture;
}

void DrawDensity(const DensityPicture& picture, const PixelRect& place, Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  const int ascent = canvas.Ascent(CanvasFont::Small);
  canvas.SetFont(CanvasFont::Bold);
  canvas.DrawText({place.left + line / 2, place.top + ascent}, "Kernel");
  canvas.SetFont(CanvasFont::Small);
  if (picture.fixes.empty()) {
    canvas.DrawText({place.left + line / 2, place.top + 2 * line + ascent}, "There is no kernel.");
    return;
  }
  canvas.DrawText({place.left + line / 2, place.top + line + ascent}, "50 and 95 % of the density");
  const PixelRect plot{place.left + line / 2, place.top + 2 * line, place.right - line,
                       place.bottom - 2 * line - line / 2};
  const PlaneView view = ViewOf(picture, plot);
  for (const DensityPicture::Strip& strip : picture.strips) {
    const double north = static_cast<double>(strip.row) * picture.step;
    const double half = picture.step / 2;
    canvas.SetPen({0, PenPattern::Hollow, BandColor});
    canvas.SetBrush({true, strip.isCore ? CoreColor : BandColor});
    const int top = view.Row(north + half);
    const int left = view.Column(static_cast<double>(strip.begin) * picture.step - half);
    canvas.DrawRect(
        {left, top,
         std::max(left + 1, view.Column(static_cast<double>(strip.end) * picture.step - half)),
         std::max(top + 1, view.Row(north - half))});
  }
  canvas.SetPen({0, PenPattern::Hollow, FixColor});
  canvas.SetBrush({true, FixColor});
  const int radius = std::max(1, line / 10);
  for (const PlanePlace& fix : picture.fixes) {
    const int x = view.Column(fix.east);
    const int y = view.Row(fix.north);
    canvas.DrawOval({x - radius, y - radius, x + radius + 1, y + radius + 1});
  }
  DrawScaleBar(view, plot, canvas);
}

EstimateCharts ChartsOf(const RangeEstimate& estimate, double factor) {
  return {RangeName(*estimate.range), PolygonChart(estimate), DaysChart(estimate),
          DensityPictureOf(*estimate.range, factor)};
}

int EstimateChartWidth(const Canvas& canvas) {
  constexpr int LinesOfChart = 16;
  return LinesOfChart * std::max(1, canvas.LineHeight(CanvasFont::Small));
}

int EstimateChartColumns(int width, const Canvas& canvas) {
  return std::clamp(width / EstimateChartWidth(canvas), 1, EstimateChartCount);
}

int EstimateChartsHeight(int width, const Canvas& canvas) {
  const int columns = EstimateChartColumns(width, canvas);
  return NameHeight(canvas) + RowsOfCharts(columns) * (width / columns);
}

void DrawEstimateCharts(const EstimateCharts& charts, const PixelRect& place, int columns,
                        Canvas& canvas) {
  canvas.SetForeColor(InkColor);
  canvas.SetFont(CanvasFont::Bold);
  const int line = canvas.LineHeight(CanvasFont::Small);
  canvas.DrawText({place.left + line / 2, place.top + canvas.Ascent(CanvasFont::Small) + line / 4},
                  charts.rangeName);
  const int top = place.top + NameHeight(canvas);
  const int width = (place.right - place.left) / columns;
  const int height = (place.bottom - top) / RowsOfCharts(columns);
  const auto placeOf = [&](int chart) {
    const int left = place.left + chart % columns * width;
    const int above = top + chart / columns * height;
    return PixelRect{left, above, left + width, above + height};
  };
  DrawLineChart(charts.polygons, placeOf(0), canvas);
  DrawLineChart(charts.days, placeOf(1), canvas);
  DrawDensity(charts.density, placeOf(2), canvas);
}

std::string EstimateChartNumbers(const EstimateCharts& charts) {
  return NumbersOf(charts.polygons) + '\n' + NumbersOf(charts.days);
}

}  // namespace orvane
