#include "view/grid_shades.h"

#include "geo/earth.h"
#include "view/pixel_square.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int ScreenHatchSpacing = 4;  // logical pixels
constexpr int PrintHatchSpacing = 18;

bool CanBeDrawn(const GridShade& shade) {
  return shade.grid != nullptr && shade.grid->corner != nullptr && IsDrawable(*shade.grid->corner);
}

/// The places of the corners, in the order of `CellPolygon` without the last.
std::array<LatLon, 4> CellCorners(const GridShade& shade) {
  static constexpr int RowSteps[] = {0, 0, 1, 1};
  static constexpr int ColumnSteps[] = {0, 1, 1, 0};
  const Grid& grid = *shade.grid;
  const double size = grid.cellSize;
  std::array<LatLon, 4> corners;
  for (size_t i = 0; i < corners.size(); ++i) {
    corners[i] = grid.corner->geo;
    const double south = (1.0 * shade.row + RowSteps[i]) * size;
    const double east = (1.0 * shade.column + ColumnSteps[i]) * size;
    AddMetersRotated(corners[i], -south, east, grid.angle);
  }
  return corners;
}

bool MissesClip(const CellRing& corners, const PixelRect& clip) {
  const auto [left, right] =
      std::minmax_element(corners.begin(), corners.end(),
                          [](const auto& a, const auto& b) { return a.column < b.column; });
  const auto [top, bottom] = std::minmax_element(
      corners.begin(), corners.end(), [](const auto& a, const auto& b) { return a.row < b.row; });
  return right->column < clip.left || left->column > clip.right || bottom->row < clip.top ||
         top->row > clip.bottom;
}

void DrawRing(const MapWindow& view, const CellRing& corners) {
  const std::vector<Pixel> cut = CutRing({corners.begin(), corners.end()});
  if (!cut.empty()) view.target->DrawPolygon(cut);
}

void DrawFullShade(const MapWindow& view, const GridShade& shade, const CellRing& corners) {
  view.target->SetPen({0, PenPattern::Hollow, DrawnColor(shade.color)});
  view.target->SetBrush({true, DrawnColor(shade.color)});
  DrawRing(view, corners);
}

void DrawSecondShade(const MapWindow& view, const GridShade& shade, CellRing corners) {
  const double unit = static_cast<double>(view.penWidthFactor);
  if (shade.value == ShadeInset) {
    ShrinkPolygon(corners, 4 * unit);
    DrawFullShade(view, shade, corners);
    return;
  }
  const Color color = DrawnColor(shade.color);
  view.target->SetPen({TruncateToPixel(2 * unit), PenPattern::Solid, color});
  view.target->SetBrush({false, color});
  DrawRing(view, corners);
}

void DrawHatchedShade(const MapWindow& view, const GridShade& shade) {
  const Color color = DrawnColor(shade.color);
  view.target->SetPen({0, PenPattern::Solid, color});
  view.target->SetBrush({false, color});
  HatchCell(view, shade);
}

/// In which of the three passes a shade is drawn; 0 for one that is not drawn.
int PassOf(const GridShade& shade) {
  if (shade.value == ShadeFull) return 1;
  if (shade.value == ShadeInset || shade.value == ShadeOutline) return 2;
  return shade.value >= 0 && std::isfinite(shade.value) ? 3 : 0;
}

/// A turn by which hatch lines become columns, and back.
struct Turn {
  double cosine;
  double sine;

  ExactPixel To(const ExactPixel& p) const {
    return {cosine * p.row - sine * p.column, cosine * p.column + sine * p.row};
  }
  ExactPixel Back(const ExactPixel& p) const {
    return {cosine * p.row + sine * p.column, cosine * p.column - sine * p.row};
  }
};

struct ColumnRange {
  double low;
  double high;
};

template <typename Corners>
ColumnRange ColumnsOf(const Corners& corners) {
  const auto [low, high] = std::minmax_element(
      corners.begin(), corners.end(),
      [](const ExactPixel& a, const ExactPixel& b) { return a.column < b.column; });
  return {low->column, high->column};
}

/// The columns that the clip covers, once it is turned.
ColumnRange ColumnsOfClip(const Turn& turn, const PixelRect& clip) {
  std::array<ExactPixel, 4> corners;
  size_t i = 0;
  for (const int row : {clip.top, clip.bottom}) {
    for (const int column : {clip.left, clip.right}) {
      corners[i++] = turn.To({static_cast<double>(row), static_cast<double>(column)});
    }
  }
  return ColumnsOf(corners);
}

}  // namespace

CellRing CellPolygon(const MapWindow& view, const GridShade& shade) {
  const std::array<LatLon, 4> places = CellCorners(shade);
  const ScreenTransform transform(view);
  CellRing corners;
  for (size_t i = 0; i < places.size(); ++i) {
    corners[i] = WholePixel(transform.ToUnboundedPixel(transform.Project(places[i])));
  }
  corners[4] = corners[0];
  return corners;
}

void ShrinkPolygon(CellRing& corners, double size) {
  const double side =
      std::hypot(corners[1].column - corners[0].column, corners[1].row - corners[0].row);
  if (!(side > size)) return;
  const double f = (side - size) / (2 * side);
  for (const size_t i : {size_t{0}, size_t{1}}) {
    ExactPixel& a = corners[i];
    ExactPixel& b = corners[i + 2];
    const ExactPixel step{std::trunc(f * (b.row - a.row)), std::trunc(f * (b.column - a.column))};
    a = {a.row + step.row, a.column + step.column};
    b = {b.row - step.row, b.column - step.column};
  }
  corners[4] = corners[0];
}

void HatchCell(const MapWindow& view, const GridShade& shade) {
  const std::array<LatLon, 4> places = CellCorners(shade);
  const ScreenTransform transform(view);
  const double radians = shade.value * (Pi / 180.0);
  const Turn turn{std::cos(radians), std::sin(radians)};
  std::array<ExactPixel, 4> corners;
  for (size_t i = 0; i < places.size(); ++i) {
    corners[i] = turn.To(transform.ToUnboundedPixel(transform.Project(places[i])));
  }
  const ColumnRange cell = ColumnsOf(corners);
  const ColumnRange shown = ColumnsOfClip(turn, view.target->Clip());
  const double spacing = DevicePixels(view, IsPrint(view) ? PrintHatchSpacing : ScreenHatchSpacing);
  const double low = std::max(cell.low, shown.low - 1);
  const double high = std::min(cell.high, shown.high + 1);
  if (!(low <= high)) return;
  const int first = static_cast<int>(std::ceil(low / spacing));
  const int last = static_cast<int>(std::floor(high / spacing));
  for (int line = first; line <= last; ++line) {
    const double column = line * spacing;
    std::vector<double> rows;
    for (size_t i = 0; i < corners.size(); ++i) {
      const ExactPixel& a = corners[i];
      const ExactPixel& b = corners[(i + 1) % corners.size()];
      // A side counts from its left end up to but not including its right one, so a line through
      // a corner crosses one of the two sides there.
      if ((a.column <= column) == (b.column <= column)) continue;
      const double t = (column - a.column) / (b.column - a.column);
      rows.push_back(a.row + t * (b.row - a.row));
    }
    if (rows.size() != 2) continue;
    const auto cut = CutSegment({turn.Back({rows[0], column}), turn.Back({rows[1], column})});
    if (!cut) continue;
    view.target->DrawLine({TruncateToPixel(cut->from.column), TruncateToPixel(cut->from.row)},
                          {TruncateToPixel(cut->to.column), TruncateToPixel(cut->to.row)});
  }
}

void DrawGridShades(MapWindow& view) {
  const PixelRect clip = view.target->Clip();
  for (int pass = 1; pass <= 3; ++pass) {
    for (const Map* map = view.map; map != nullptr; map = map->basis) {
      for (const GridShade& shade : map->gridShades) {
        if (PassOf(shade) != pass || !CanBeDrawn(shade)) continue;
        const CellRing corners = CellPolygon(view, shade);
        if (MissesClip(corners, clip)) continue;
        if (pass == 1) DrawFullShade(view, shade, corners);
        if (pass == 2) DrawSecondShade(view, shade, corners);
        if (pass == 3) DrawHatchedShade(view, shade);
      }
    }
  }
}

}  // namespace orvane
