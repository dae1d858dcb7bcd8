#include "reports/line_chart.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace orvane {

namespace {

constexpr int MostSteps = 5;
constexpr Color GridColor = 0xD0D0D0;

/// The plot of a chart, and how its values are placed in it.
struct Plot {
  PixelRect place;
  double xStep = 1;
  double yStep = 1;
  double xEnd = 1;
  double yEnd = 1;

  Pixel At(const ChartPoint& point) const {
    const double x = place.left + point.x / xEnd * (place.right - place.left);
    const double y = place.bottom - point.y / yEnd * (place.bottom - place.top);
    return {static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))};
  }
};

void Widen(const std::vector<ChartPoint>& points, ChartPoint& largest) {
  for (const ChartPoint& point : points) {
    largest.x = std::max(largest.x, point.x);
    largest.y = std::max(largest.y, point.y);
  }
}

ChartPoint LargestOf(const LineChart& chart) {
  ChartPoint largest;
  for (const ChartLine& line : chart.lines) Widen(line.points, largest);
  Widen(chart.band.high, largest);
  return largest;
}

/// The values at which an axis has a tick, from 0 to its end.
std::vector<double> TicksOf(double step, double end) {
  const auto last = static_cast<int>(std::lround(end / step));
  std::vector<double> ticks;
  ticks.reserve(static_cast<size_t>(last) + 1);
  for (int i = 0; i <= last; ++i) ticks.push_back(i * step);
  return ticks;
}

std::string TickText(double value) { return FormatGeneral(value, 4); }

Plot PlotOf(const LineChart& chart, const PixelRect& place, const Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  const ChartPoint largest = LargestOf(chart);
  Plot plot;
  plot.xStep = AxisStep(largest.x, MostSteps);
  plot.yStep = AxisStep(largest.y, MostSteps);
  plot.xEnd = std::max(plot.xStep, std::ceil(largest.x / plot.xStep) * plot.xStep);
  plot.yEnd = std::max(plot.yStep, std::ceil(largest.y / plot.yStep) * plot.yStep);
  int widest = 0;
  for (const double y : TicksOf(plot.yStep, plot.yEnd)) {
    widest = std::max(widest, canvas.TextWidth(TickText(y)));
  }
  plot.place = {place.left + widest + line, place.top + 3 * line, place.right - line,
                place.bottom - 3 * line};
  return plot;
}

void DrawCentered(Canvas& canvas, int middle, int baseline, const std::string& text) {
  canvas.DrawText({middle - canvas.TextWidth(text) / 2, baseline}, text);
}

void DrawAxes(const LineChart& chart, const Plot& plot, const PixelRect& place, Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  const int ascent = canvas.Ascent(CanvasFont::Small);
  canvas.SetFont(CanvasFont::Bold);
  canvas.DrawText({place.left + line / 2, place.top + ascent}, chart.title);
  canvas.SetFont(CanvasFont::Small);
  canvas.DrawText({place.left + line / 2, place.top + line + ascent}, chart.yTitle);
  canvas.SetPen({0, PenPattern::Solid, GridColor});
  for (const double y : TicksOf(plot.yStep, plot.yEnd)) {
    const Pixel at = plot.At({0, y});
    canvas.DrawLine(at, {plot.place.right, at.y});
    const std::string text = TickText(y);
    canvas.DrawText({at.x - canvas.TextWidth(text) - line / 3, at.y + ascent / 2}, text);
  }
  for (const double x : TicksOf(plot.xStep, plot.xEnd)) {
    const Pixel at = plot.At({x, 0});
    canvas.DrawLine(at, {at.x, at.y + line / 4});
    DrawCentered(canvas, at.x, at.y + line / 4 + ascent, TickText(x));
  }
  DrawCentered(canvas, (plot.place.left + plot.place.right) / 2,
               plot.place.bottom + line / 4 + line + ascent, chart.xTitle);
}

void DrawBand(const ChartBand& band, const Plot& plot, Canvas& canvas) {
  if (band.low.empty()) return;
  std::vector<Pixel> corners;
  for (const ChartPoint& point : band.low) corners.push_back(plot.At(point));
  for (size_t i = band.high.size(); i > 0; --i) corners.push_back(plot.At(band.high[i - 1]));
  canvas.SetPen({0, PenPattern::Hollow, band.color});
  canvas.SetBrush({true, band.color});
  canvas.DrawPolygon(corners);
}

void DrawChartLine(const ChartLine& line, const Plot& plot, int width, Canvas& canvas) {
  std::vector<Pixel> points;
  for (const ChartPoint& point : line.points) points.push_back(plot.At(point));
  canvas.SetPen({width, PenPattern::Solid, line.color});
  if (points.size() > 1) canvas.DrawPolyline(points);
  if (!line.dots && points.size() > 1) return;
  const int radius = 2 * width;
  canvas.SetBrush({true, line.color});
  for (const Pixel& at : points) {
    canvas.DrawOval({at.x - radius, at.y - radius, at.x + radius + 1, at.y + radius + 1});
  }
}

/// The names of the lines and of the band, each in its colour, from the upper left of the plot.
void DrawLegend(const LineChart& chart, const Plot& plot, Canvas& canvas) {
  const int line = canvas.LineHeight(CanvasFont::Small);
  const int ascent = canvas.Ascent(CanvasFont::Small);
  int baseline = plot.place.top + ascent;
  const auto add = [&](const std::string& name, Color color) {
    if (name.empty()) return;
    const int left = plot.place.left + line / 2;
    canvas.SetPen({0, PenPattern::Hollow, color});
    canvas.SetBrush({true, color});
    canvas.DrawRect({left, baseline - ascent * 2 / 3, left + line, baseline - ascent / 5});
    canvas.DrawText({left + line + line / 2, baseline}, name);
    baseline += line;
  };
  for (const ChartLine& each : chart.lines) {
    if (!each.points.empty()) add(each.name, each.color);
  }
  if (!chart.band.low.empty()) add(chart.band.name, chart.band.color);
}

}  // namespace

double AxisStep(double largest, int most) {
  if (!(largest > 0) || !std::isfinite(largest)) return 1;
  double power = std::pow(10, std::floor(std::log10(largest / most)));
  while (true) {
    for (const double factor : {1.0, 2.0, 5.0}) {
      if (largest <= factor * power * most * (1 + 1e-9)) return factor * power;
    }
    power *= 10;
  }
}

void DrawLineChart(const LineChart& chart, const PixelRect& place, Canvas& canvas) {
  canvas.SetFont(CanvasFont::Small);
  const Plot plot = PlotOf(chart, place, canvas);
  const int width = std::max(1, canvas.LineHeight(CanvasFont::Small) / 8);
  DrawBand(chart.band, plot, canvas);
  DrawAxes(chart, plot, place, canvas);
  for (const ChartLine& line : chart.lines) DrawChartLine(line, plot, width, canvas);
  DrawLegend(chart, plot, canvas);
}

}  // namespace orvane
