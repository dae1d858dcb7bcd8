#include "view/draw_ranges.h"

#include "geo/earth.h"
#include "model/cells.h"
#include "view/canvas.h"
#include "view/fills.h"
#include "view/labels.h"
#include "view/panel_rows.h"
#include "view/pixel_square.h"
#include "view/view_transform.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {

namespace {

bool Meets(const GeoBounds& bounds, const GeoBounds& box) {
  return bounds.minLat <= box.maxLat && box.minLat <= bounds.maxLat &&
         bounds.minLon <= box.maxLon && box.minLon <= bounds.maxLon;
}

bool ShowsRange(const RangePanelRow& row, const GeoBounds& box) {
  return row.visible && row.range != nullptr && row.range->hasBounds && Meets(*row.range, box);
}

int PatternOf(const RangePanelRow& row) {
  return row.drawMode == RangeDrawMode::Hash ? row.shading : FillNone;
}

// --- Cells ----------------------------------------------------------------------------------

/// The shade of a cell that holds a percentage of the whole, on Screen and on Paper.
Color ShadeOf(long percent, bool print) {
  static constexpr std::array<Color, 5> Screen = {0xB0B0B0, 0xA0A0A0, 0x808080, 0x606060, 0x404040};
  static constexpr std::array<Color, 5> Paper = {0xF0F0F0, 0xE0E0E0, 0xC0C0C0, 0x808080, 0x404040};
  const auto index = static_cast<size_t>(std::clamp(percent, 0L, 4L));
  return print ? Paper[index] : Screen[index];
}

/// What a mode of drawing shows of a cell.
std::int64_t ShownValue(const CellTally& tally, RangeDrawMode drawMode) {
  if (drawMode == RangeDrawMode::CoreGrid) return tally.minutes;
  return tally.measure[NumberOf(drawMode) - NumberOf(RangeDrawMode::Sm1)];
}

std::vector<ExactPixel> CornersOf(const ScreenTransform& transform, const Grid& grid,
                                  const RangeCell& cell) {
  static constexpr int RowSteps[] = {1, 1, 0, 0};
  static constexpr int ColumnSteps[] = {0, 1, 1, 0};
  std::vector<ExactPixel> corners;
  for (size_t i = 0; i < 4; ++i) {
    LatLon place = grid.corner->geo;
    const double north = (1.0 * cell.row + RowSteps[i]) * grid.cellSize;
    const double east = (1.0 * cell.column + ColumnSteps[i]) * grid.cellSize;
    if (grid.angle != 0) {
      AddMetersRotated(place, north, east, grid.angle);
    } else {
      AddMeters(place, north, east);
    }
    corners.push_back(WholePixel(transform.ToUnboundedPixel(transform.Project(place))));
  }
  return corners;
}

/// Moves each corner by some pixels towards the middle, along both axes.
/// \param corners  of whole pixels
void Inset(std::vector<ExactPixel>& corners, int pixels) {
  ExactPixel middle;
  for (const ExactPixel& corner : corners) {
    middle.row += corner.row;
    middle.column += corner.column;
  }
  const auto count = static_cast<double>(corners.size());
  const auto step = [pixels](double value, double center) {
    return value < center ? pixels : value > center ? -pixels : 0;
  };
  for (ExactPixel& corner : corners) {
    corner.row += step(corner.row * count, middle.row);
    corner.column += step(corner.column * count, middle.column);
  }
}

bool ShowsCells(const RangePanelRow& row) {
  return row.drawMode >= RangeDrawMode::CoreGrid && row.drawMode <= RangeDrawMode::Sm3;
}

void DrawCellShades(const MapWindow& view, const Grid* grid, const std::vector<RangeCell>& cells,
                    RangeDrawMode drawMode) {
  constexpr int NarrowestCell = 3;  // logical pixels
  std::int64_t total = 0;
  for (const RangeCell& cell : cells) total += ShownValue(cell.tally, drawMode);
  if (grid == nullptr || total <= 0 || !IsPlaced(*grid->corner)) return;
  if (grid->cellSize * static_cast<double>(LogicalScale(view)) < NarrowestCell) return;
  const ScreenTransform transform(view);
  for (const RangeCell& cell : cells) {
    const std::int64_t value = ShownValue(cell.tally, drawMode);
    if (value == 0) continue;
    const long percent = (total / 2 + value * 100) / total;
    const Color color = ShadeOf(percent, IsPrint(view));
    std::vector<ExactPixel> exact = CornersOf(transform, *grid, cell);
    Inset(exact, DevicePixels(view, 1));
    const std::vector<Pixel> corners = CutRing(exact);
    if (corners.empty()) continue;
    view.target->SetPen({0, PenPattern::Hollow, color});
    view.target->SetBrush({true, color});
    view.target->DrawPolygon(corners);
  }
}

/// The colour of a level of clusters: the fewer percent, the nearer to the background.
Color FadedColor(Color color, Color background, int level) {
  Color faded = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    constexpr Color Channel = 0xFF;
    const Color strong = (color >> shift) & Channel;
    const Color weak = (background >> shift) & Channel;
    faded |= ((strong * level + weak * (ClusterLevels - level)) / ClusterLevels) << shift;
  }
  return faded;
}

void DrawClusterContours(const MapWindow& view, const RangePanelRow& row) {
  if (row.range->clusters == nullptr) return;
  for (int level = ClusterLevels - 1; level >= 1; --level) {
    const int bit = ClusterLevels - 1 - level;
    if (((row.clusterMask >> static_cast<unsigned>(bit)) & 1U) == 0) continue;
    const Color color = FadedColor(DrawnColor(row.color), view.background, level);
    for (const Cluster& cluster : row.range->clusters->clusters) {
      const auto index = static_cast<size_t>(level);
      if (cluster.area[index] > 0) DrawPolygonFill(view, cluster.hull[index], FillNone, color);
    }
  }
}

void DrawRangeCells(const MapWindow& view, const RangePanelRow& row) {
  if (ShowsCells(row)) DrawCellShades(view, row.range->grid, row.range->cells, row.drawMode);
  DrawClusterContours(view, row);
}

// --- Overlaps -------------------------------------------------------------------------------

const RangePanelRow* RowOf(const MapWindow& view, const Range* range) {
  for (const RangePanelRow& row : view.rangeViews) {
    if (row.range == range) return &row;
  }
  return nullptr;
}

/// Overlaps take the look of the first of two visible ranges; an overlap whose own row is visible
/// is drawn over that, in its own look.
void DrawOverlaps(const MapWindow& view, const GeoBounds& box) {
  for (const RangeIntersection& record : view.map->intersections) {
    if (!Meets(record, box)) continue;
    const RangePanelRow* a = RowOf(view, record.a.range);
    const RangePanelRow* b = RowOf(view, record.b.range);
    if (a == nullptr || b == nullptr || !a->visible || !b->visible) continue;
    DrawPolygonFill(view, record.polygon, PatternOf(*a), a->color);
  }
  for (const RangePanelRow& row : view.rangeViews) {
    if (!row.visible || row.intersection == nullptr || !Meets(*row.intersection, box)) continue;
    const RangeIntersection& record = *row.intersection;
    // The cells are those of the first range.
    if (ShowsCells(row)) DrawCellShades(view, record.grid, CellsOf(record.a), row.drawMode);
    DrawPolygonFill(view, record.polygon, PatternOf(row), row.color);
  }
}

// --- Outlines -------------------------------------------------------------------------------

/// The box of a range's name whose baseline starts at `at`.
PixelRect NameBox(const MapWindow& view, Pixel at, int width) {
  const int top = at.y - view.labelAscent;
  return {at.x, top, at.x + width, top + view.labelHeight};
}

/// The smallest rectangle of pixels around the bounds of a range.
PixelRect ScreenBounds(const MapWindow& view, const Range& range) {
  const Pixel first = MapToScreen(view, {range.minLat, range.minLon, NoAltitude});
  PixelRect bounds{first.x, first.y, first.x, first.y};
  for (const double lat : {range.minLat, range.maxLat}) {
    for (const double lon : {range.minLon, range.maxLon}) {
      const Pixel corner = MapToScreen(view, {lat, lon, NoAltitude});
      bounds = RectAround(bounds, {corner.x, corner.y, corner.x, corner.y});
    }
  }
  return bounds;
}

/// How far a name may be moved: by so many lines up or down and half widths to the side, the
/// nearest place first.
std::vector<Pixel> NameMoves(int lineHeight, int halfWidth) {
  constexpr int Lines = 8;
  constexpr int HalfWidths = 4;
  std::vector<Pixel> moves;
  for (int line = -Lines; line <= Lines; ++line) {
    for (int half = -HalfWidths; half <= HalfWidths; ++half) {
      moves.push_back({half * halfWidth, line * lineHeight});
    }
  }
  const auto distance = [](Pixel move) { return std::hypot(1.0 * move.x, 1.0 * move.y); };
  std::stable_sort(moves.begin(), moves.end(),
                   [&](Pixel a, Pixel b) { return distance(a) < distance(b); });
  return moves;
}

/// Where the baseline of a range's name starts.
Pixel PlaceOfName(const MapWindow& view, const Range& range, int width, const PixelMask& taken) {
  const Pixel middle = MapToScreen(
      view, {(range.minLat + range.maxLat) / 2, (range.minLon + range.maxLon) / 2, NoAltitude});
  const Pixel given{middle.x - width / 2, middle.y + view.labelAscent / 2};
  if (!taken.HasAny(NameBox(view, given, width))) return given;
  const PixelRect bounds = ScreenBounds(view, range);
  const PixelRect clip = view.target->Clip();
  for (const Pixel move : NameMoves(view.labelHeight, width / 2)) {
    const Pixel center{middle.x + move.x, middle.y + move.y};
    if (!Contains(bounds, {center.x, center.y, center.x, center.y})) continue;
    const Pixel at{given.x + move.x, given.y + move.y};
    const PixelRect box = NameBox(view, at, width);
    if (Contains(clip, box) && !taken.HasAny(box)) return at;
  }
  return given;
}

void DrawRangeName(const MapWindow& view, const RangePanelRow& row, PixelMask& taken) {
  constexpr double MetersPerDegree = 60.0 * 1852.0;
  constexpr double SmallestNamed = 40;  // logical pixels
  const Range& range = *row.range;
  const double span = (range.maxLat - range.minLat) + (range.maxLon - range.minLon);
  if (!range.name ||
      !(span * MetersPerDegree * static_cast<double>(LogicalScale(view)) >= SmallestNamed)) {
    return;
  }
  Canvas& canvas = *view.target;
  const int width = canvas.TextWidth(*range.name);
  const Pixel at = PlaceOfName(view, range, width, taken);
  const PixelRect box = NameBox(view, at, width);
  taken.Add(box);
  if (IsPrint(view)) {
    const PixelRect clip = canvas.Clip();
    canvas.SetClip(CommonRect(clip, box));
    canvas.Clear(view.background);
    canvas.SetClip(clip);
  }
  canvas.SetForeColor(DrawnColor(row.color));
  canvas.DrawText(at, *range.name);
}

/// The hull is the contour of 100 %: without that in its mask a range has neither outline nor hash.
void DrawRangeOutline(const MapWindow& view, const RangePanelRow& row, PixelMask& taken) {
  if ((row.clusterMask & 1U) != 0) {
    DrawPolygonFill(view, row.range->hull, PatternOf(row), row.color);
  }
  DrawRangeName(view, row, taken);
}

/// Marks the points of a range that hold a measure which its row shows.
void DrawMeasuredPoints(MapWindow& view, const RangePanelRow& row) {
  MarkLook look;
  look.shape = MarkStyle::Circle;
  look.thickness = 1;
  look.color = row.color;
  look.letterWidth = LetterWidth(view);
  LabelBoxes boxes;
  for (int k = 0; k < 3; ++k) {
    if (row.showSm[k]) {
      DrawTrailPoints(view, row.range->points, StyleOf<PointMode>(NumberOf(PointMode::Sm1) + k),
                      look, boxes);
    }
  }
}

/// The corners of a ring in pixels, without those that hardly differ from the one before: a ring of
/// many short edges, rounded one by one, would be ragged.
std::vector<Pixel> PixelsOfRing(const MapWindow& view, const std::vector<LatLon>& ring) {
  constexpr int ShortestEdge = 3;  // logical pixels
  const ScreenTransform transform(view);
  std::vector<ExactPixel> kept;
  for (const LatLon& place : ring) {
    const ExactPixel corner = transform.ToUnboundedPixel(transform.Project(place));
    if (kept.empty() ||
        std::hypot(corner.row - kept.back().row, corner.column - kept.back().column) >=
            DevicePixels(view, ShortestEdge)) {
      kept.push_back(corner);
    }
  }
  return CutRing(kept);
}

void DrawEstimates(const MapWindow& view, const RangePanelRow& row, const GeoBounds& box) {
  constexpr double LineWidth = 2;  // of the hull it is 3
  if (!row.visible || row.estimates == nullptr || !Meets(row.estimates->bounds, box)) return;
  const int width = TruncateToPixel(LineWidth * static_cast<double>(view.penWidthFactor));
  const Color color = DrawnColor(row.color);
  view.target->SetBrush({false, color});
  for (const EstimateRing& ring : row.estimates->rings) {
    const std::vector<Pixel> pixels = PixelsOfRing(view, ring.corners);
    if (pixels.size() < 2) continue;
    view.target->SetPen({width, ring.pattern, color});
    view.target->DrawPolygon(pixels);
  }
}

}  // namespace

GeoBounds BoxOfUpdate(const MapWindow& view, const PixelRect& update) {
  GeoBounds box;
  bool first = true;
  for (const int x : {update.left, update.right}) {
    for (const int y : {update.top, update.bottom}) {
      const LatLon place = ScreenToMap(view, {x, y});
      box.minLat = first ? place.lat : std::min(box.minLat, place.lat);
      box.maxLat = first ? place.lat : std::max(box.maxLat, place.lat);
      box.minLon = first ? place.lon : std::min(box.minLon, place.lon);
      box.maxLon = first ? place.lon : std::max(box.maxLon, place.lon);
      first = false;
    }
  }
  return box;
}

void DrawRanges(MapWindow& view, const GeoBounds& box, PixelMask& taken) {
  for (const RangePanelRow& row : view.rangeViews) {
    if (ShowsRange(row, box)) DrawRangeCells(view, row);
  }
  DrawOverlaps(view, box);
  for (const RangePanelRow& row : view.rangeViews) DrawEstimates(view, row, box);
  for (const RangePanelRow& row : view.rangeViews) {
    if (!ShowsRange(row, box)) continue;
    DrawRangeOutline(view, row, taken);
    DrawMeasuredPoints(view, row);
  }
}

}  // namespace orvane
