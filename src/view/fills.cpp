#include "view/fills.h"

#include "geo/earth.h"
#include "view/pixel_square.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orvane {

namespace {

// Hatching, in coordinates along and across the lines:
//
//     level = v - slope * u        u runs along the rows and v upwards, or, for steep lines, u
//                                  upwards and v along the rows
//
// A line is all that has one level. The edges of the ring are sorted by their lowest level, and a
// sweep over the levels keeps those that the present line may cross.

// Added to each level, so that no line runs exactly through a corner: corners of pixels have
// whole levels at all slopes that the patterns use.
constexpr double LevelOffset = 0.0078125;

/// How lines at one angle are counted.
struct HatchFrame {
  bool byColumn;  ///< lines are indexed along the columns
  double slope;

  double U(Pixel p) const { return byColumn ? -p.y : p.x; }
  double V(Pixel p) const { return byColumn ? p.x : -p.y; }
  double Level(Pixel p) const { return V(p) - slope * U(p); }
  Pixel At(double u, double v) const {
    return byColumn ? Pixel{RoundToPixel(v), RoundToPixel(-u)}
                    : Pixel{RoundToPixel(u), RoundToPixel(-v)};
  }
};

HatchFrame FrameOfAngle(double angle) {
  if (angle == 0) return {false, 0};
  if (angle == 90) return {true, 0};
  if (angle == 45) return {false, 1};
  if (angle == -45) return {false, -1};
  const double size = std::abs(angle);
  if (size >= 45 && size <= 135) return {true, std::tan((90 - angle) * (Pi / 180.0))};
  return {false, std::tan(angle * (Pi / 180.0))};
}

struct HatchEdge {
  double lowLevel, lowU;
  double highLevel, highU;
};

struct LevelRange {
  double low;
  double high;
};

PixelRect BoundsOf(const std::vector<Pixel>& points) {
  PixelRect box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const Pixel point : points) {
    box.left = std::min(box.left, point.x);
    box.right = std::max(box.right, point.x);
    box.top = std::min(box.top, point.y);
    box.bottom = std::max(box.bottom, point.y);
  }
  return box;
}

LevelRange LevelsOf(const HatchFrame& frame, const PixelRect& box) {
  const double levels[] = {frame.Level({box.left, box.top}), frame.Level({box.right, box.top}),
                           frame.Level({box.left, box.bottom}),
                           frame.Level({box.right, box.bottom})};
  return {*std::min_element(std::begin(levels), std::end(levels)),
          *std::max_element(std::begin(levels), std::end(levels))};
}

std::vector<HatchEdge> EdgesByLevel(const HatchFrame& frame, const std::vector<Pixel>& points) {
  std::vector<HatchEdge> edges;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const double a = frame.Level(points[i]);
    const double b = frame.Level(points[i + 1]);
    const double ua = frame.U(points[i]);
    const double ub = frame.U(points[i + 1]);
    if (a < b) edges.push_back({a, ua, b, ub});
    if (b < a) edges.push_back({b, ub, a, ua});
  }
  std::sort(edges.begin(), edges.end(),
            [](const HatchEdge& a, const HatchEdge& b) { return a.lowLevel < b.lowLevel; });
  return edges;
}

bool IsOutside(const PixelRect& clip, Pixel a, Pixel b) {
  return std::max(a.x, b.x) < clip.left || std::min(a.x, b.x) > clip.right ||
         std::max(a.y, b.y) < clip.top || std::min(a.y, b.y) > clip.bottom;
}

/// Draws the parts of one line between the first and second crossing, the third and fourth, ...
void DrawHatchLine(Canvas& canvas, const PixelRect& clip, const HatchFrame& frame, double level,
                   const std::vector<HatchEdge>& crossed, std::vector<double>& crossings) {
  crossings.clear();
  for (const HatchEdge& edge : crossed) {
    const double t = (level + LevelOffset - edge.lowLevel) / (edge.highLevel - edge.lowLevel);
    crossings.push_back(edge.lowU + t * (edge.highU - edge.lowU));
  }
  std::sort(crossings.begin(), crossings.end());
  for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
    const Pixel from = frame.At(crossings[i], level + frame.slope * crossings[i]);
    const Pixel to = frame.At(crossings[i + 1], level + frame.slope * crossings[i + 1]);
    if (!IsOutside(clip, from, to)) canvas.DrawLine(from, to);
  }
}

}  // namespace

void HatchPolygon(Canvas& canvas, const std::vector<Pixel>& points, double angle, int spacing) {
  if (points.size() < 3) return;
  const double step = std::max(1, spacing);
  const HatchFrame frame = FrameOfAngle(std::remainder(angle, 360.0));
  LevelRange levels = LevelsOf(frame, BoundsOf(points));
  const PixelRect clip = canvas.Clip();
  const LevelRange shown = LevelsOf(frame, clip);
  levels = {std::max(levels.low, shown.low - 1), std::min(levels.high, shown.high + 1)};
  if (!(levels.low <= levels.high)) return;
  const auto first = static_cast<std::int64_t>(std::ceil(levels.low / step));
  const auto last = static_cast<std::int64_t>(std::floor(levels.high / step));

  const std::vector<HatchEdge> edges = EdgesByLevel(frame, points);
  std::vector<HatchEdge> crossed;
  std::vector<double> crossings;
  size_t next = 0;
  for (std::int64_t line = first; line <= last; ++line) {
    const double level = static_cast<double>(line) * step;
    const double tested = level + LevelOffset;
    while (next < edges.size() && edges[next].lowLevel <= tested) crossed.push_back(edges[next++]);
    // An edge belongs to the levels from its low end up to but not including its high one: at a
    // corner where the ring runs on, one edge counts; at a peak both or none.
    std::erase_if(crossed, [&](const HatchEdge& edge) { return edge.highLevel <= tested; });
    DrawHatchLine(canvas, clip, frame, level, crossed, crossings);
  }
}

int HatchSpacing(const MapWindow& view) {
  const int spacing = TruncateToPixel(4 * static_cast<double>(view.penWidthFactor));
  return std::max(1, IsPrint(view) ? 2 * spacing : spacing);
}

void DrawPolygonFill(const MapWindow& view, const std::vector<Point*>& points, int pattern,
                     Color color) {
  std::vector<LatLon> places;
  places.reserve(points.size());
  for (const Point* point : points) {
    if (IsDrawable(*point)) places.push_back(point->geo);
  }
  DrawPolygonFill(view, places, pattern, color);
}

void DrawPolygonFill(const MapWindow& view, const std::vector<LatLon>& places, int pattern,
                     Color color) {
  Canvas& canvas = *view.target;
  const ScreenTransform transform(view);
  std::vector<ExactPixel> corners;
  corners.reserve(places.size());
  for (const LatLon& place : places) {
    if (!std::isfinite(place.lat) || !std::isfinite(place.lon)) continue;
    corners.push_back(transform.ToUnboundedPixel(transform.Project(place)));
  }
  std::vector<Pixel> pixels = CutRing(corners);
  if (pixels.size() < 2) return;
  pixels.push_back(pixels.front());

  if (pattern == FillSolid) {
    canvas.SetPen({0, PenPattern::Solid, color});
    canvas.SetBrush({true, color});
    canvas.DrawPolygon(pixels);
    return;
  }
  if (pattern == FillNone || pattern == FillOutline) {
    canvas.SetPen(
        {TruncateToPixel(3 * static_cast<double>(view.penWidthFactor)), PenPattern::Solid, color});
    canvas.SetBrush({false, color});
    canvas.DrawPolygon(pixels);
    return;
  }
  static constexpr double FirstAngle[] = {45, -45, 0, 90, 45, 0};
  static constexpr double SecondAngle[] = {-45, 90};
  if (pattern < FillRising || pattern > FillCross) return;
  canvas.SetPen({0, PenPattern::Solid, color});
  canvas.SetBrush({false, color});
  const int spacing = HatchSpacing(view);
  HatchPolygon(canvas, pixels, FirstAngle[pattern], spacing);
  if (pattern >= FillDiagonals) {
    HatchPolygon(canvas, pixels, SecondAngle[pattern - FillDiagonals], spacing);
  }
}

void DrawFilledTrails(const MapWindow& view, const std::vector<ShownTrail>& shown) {
  for (const auto& [row, bounds] : shown) {
    if (!row->visible || !row->filled) continue;
    DrawPolygonFill(view, row->trail->points, row->fillPattern, DrawnColor(row->color));
  }
}

}  // namespace orvane
