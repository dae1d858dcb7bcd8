#include "view/grids.h"

#include "geo/earth.h"
#include "model/cells.h"
#include "view/pixel_square.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {

namespace {

// A grid is two families of lines. One family:
//
//     start + i * step  o-----------------------------------o  start + i * step + length
//                       |   `step` leads to the next line,
//                       v   `length` along the line

constexpr Color ScreenGridColor = 0xA0A0A0;
constexpr Color FewColorsGridColor = 0x808080;
/// Lines of a grid that is not turned end after so many pixels, or at the edge of a larger page.
constexpr double FarthestEnd = 16000;

struct Vector {
  double x = 0;
  double y = 0;
};

Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y}; }
Vector operator*(double factor, Vector v) { return {factor * v.x, factor * v.y}; }
double Dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y; }

/// One family of parallel lines of a grid.
struct LineFamily {
  Vector start;
  Vector step;
  Vector length;
  std::int64_t count = 0;  ///< cells; there is one line more
};

/// The lines of a family that are drawn: from `first` to `last`, `stride` apart.
struct LineRange {
  std::int64_t first = 0;
  std::int64_t last = -1;
  std::int64_t stride = 1;
};

std::int64_t CountOf(int cells) { return std::abs(std::int64_t{cells}); }

/// The lines whose distance from the first one lets them meet the clip, with some room about it
/// for labels. Lines closer than a pixel are thinned to about one in a pixel.
LineRange ShownLines(const LineFamily& family, const PixelRect& clip, double room) {
  const double spacing = std::hypot(family.step.x, family.step.y);
  if (!std::isfinite(spacing)) return {};
  if (spacing == 0) return {0, 0, 1};
  const Vector across = 1 / spacing * family.step;
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (const double x : {clip.left - room, clip.right + room}) {
    for (const double y : {clip.top - room, clip.bottom + room}) {
      const double distance = Dot(across, {x - family.start.x, y - family.start.y});
      low = std::min(low, distance / spacing);
      high = std::max(high, distance / spacing);
    }
  }
  const double count = static_cast<double>(family.count);
  if (high < 0 || low > count) return {};
  LineRange range;
  range.first = static_cast<std::int64_t>(std::clamp(std::floor(low), 0.0, count));
  range.last = static_cast<std::int64_t>(std::clamp(std::ceil(high), 0.0, count));
  if (spacing < 1) {
    range.stride = static_cast<std::int64_t>(std::min(1 / spacing, std::max(1.0, count)));
  }
  return range;
}

class GridDrawer {
 public:
  explicit GridDrawer(MapWindow& view)
      : view_(view),
        canvas_(*view.target),
        clip_(view.target->Clip()),
        labelRoom_(std::max(LeastLabelRoom, 1.0 * view.lineHeight)) {}

  void Draw(const Grid& grid) {
    if (grid.corner == nullptr || !IsDrawable(*grid.corner)) return;
    const ScreenTransform transform(view_);
    const ExactPixel corner =
        WholePixel(transform.ToUnboundedPixel(transform.Project(grid.corner->geo)));
    const double cell = grid.cellSize * static_cast<double>(view_.scale);
    if (!std::isfinite(cell)) return;
    const Vector start{corner.column, corner.row};
    const double angle = grid.angle - static_cast<double>(view_.rotation);
    const bool turned = angle != 0;
    const double radians = angle * (Pi / 180.0);
    const Vector east =
        turned ? Vector{std::cos(radians) * cell, std::sin(radians) * cell} : Vector{cell, 0};
    const Vector south{-east.y, east.x};

    const LineFamily columns = MakeFamily(start, east, south, grid.columns, grid.rows, turned);
    DrawLines(columns);
    const LineFamily rows = MakeFamily(start, south, east, grid.rows, grid.columns, turned);
    DrawLines(rows);
    if (!(cell > view_.ascent)) return;
    if (turned) {
      LabelTurned(grid, columns, rows, east, south);
    } else {
      LabelColumns(grid, columns, cell);
      LabelRows(grid, rows, cell);
    }
  }

 private:
  /// \param cells   signed number of cells across the lines
  /// \param along   signed number of cells along them
  LineFamily MakeFamily(Vector start, Vector step, Vector line, int cells, int along,
                        bool turned) const {
    LineFamily family{start, cells < 0 ? -1.0 * step : step, along * line, CountOf(cells)};
    if (!turned) {
      // Lines along an axis have their far end within the canvas, wherever they start.
      const Vector end = start + family.length;
      const double far = std::max({FarthestEnd, 1.0 * view_.clientWidth, 1.0 * view_.clientHeight});
      if (line.x != 0) family.length.x = std::clamp(end.x, -far, far) - start.x;
      if (line.y != 0) family.length.y = std::clamp(end.y, -far, far) - start.y;
    }
    return family;
  }

  void DrawLines(const LineFamily& family) {
    const LineRange range = ShownLines(family, clip_, 1);
    for (std::int64_t i = range.first; i <= range.last; i += range.stride) DrawOne(family, i);
    const bool lastLeft =
        range.last >= range.first && (range.last - range.first) % range.stride != 0;
    if (lastLeft) DrawOne(family, range.last);
  }

  void DrawOne(const LineFamily& family, std::int64_t i) {
    const Vector from = family.start + static_cast<double>(i) * family.step;
    const Vector to = from + family.length;
    const auto line = CutSegment({{from.y, from.x}, {to.y, to.x}});
    if (line) canvas_.DrawLine(RoundedPixel(line->from), RoundedPixel(line->to));
  }

  /// Above the upper end of each line, in the middle of the cell to the right. On paper the labels
  /// of a grid that begins above the page are in its first row of cells that shows.
  void LabelColumns(const Grid& grid, const LineFamily& family, double cell) {
    double top = std::min(family.start.y, family.start.y + family.length.y);
    if (IsPrint(view_) && top < 0) {
      top = MovedInside(top + cell / 2, cell, CountOf(grid.rows), 2.0 * view_.ascent, top);
    }
    ForEachLabel(family, grid.columnStart, grid.columnStyle,
                 [&](Vector at, const std::string& text, int width) {
                   DrawLabel(at.x + (cell - width) / 2, top - view_.ascent, text, width);
                 });
  }

  /// Before the left end of each line, just below it; on paper likewise inside the page.
  void LabelRows(const Grid& grid, const LineFamily& family, double cell) {
    const double left = std::min(family.start.x, family.start.x + family.length.x);
    ForEachLabel(family, grid.rowStart, grid.rowStyle,
                 [&](Vector at, const std::string& text, int width) {
                   double end = left;
                   if (IsPrint(view_) && left < 0) {
                     end = MovedInside(left, cell, CountOf(grid.columns), width, left);
                   }
                   DrawLabel(end - width, at.y + view_.ascent, text, width);
                 });
  }

  /// The first of `place`, `place` + cell, ... that is at least `limit`.
  /// \param cells      how many there are; if none will do the result is `otherwise`
  static double MovedInside(double place, double cell, std::int64_t cells, double limit,
                            double otherwise) {
    const double moves = std::max(0.0, std::ceil((limit - place) / cell));
    return moves < static_cast<double>(cells) ? place + moves * cell : otherwise;
  }

  /// At the start of each line and outside the grid, so for counts from 0 on the same places as
  /// without a turn, turned with the grid.
  void LabelTurned(const Grid& grid, const LineFamily& columns, const LineFamily& rows, Vector east,
                   Vector south) {
    const double cell = std::hypot(east.x, east.y);
    const double ascent = view_.ascent;
    const double outOfRows = grid.rows < 0 ? 1 : -1;
    const double outOfColumns = grid.columns < 0 ? 1 : -1;
    const auto draw = [&](Vector middle, const std::string& text, int width) {
      DrawLabel(middle.x - width / 2.0, middle.y + ascent / 2, text, width);
    };
    ForEachLabel(columns, grid.columnStart, grid.columnStyle,
                 [&](Vector at, const std::string& text, int width) {
                   draw(at + 0.5 * east + (outOfRows * 1.5 * ascent / cell) * south, text, width);
                 });
    ForEachLabel(
        rows, grid.rowStart, grid.rowStyle, [&](Vector at, const std::string& text, int width) {
          // Half of what the text takes up at right angles to the grid's edge.
          const double half = (width * std::abs(east.x) + ascent * std::abs(east.y)) / (2 * cell);
          const Vector out = (outOfColumns * half / cell) * east;
          draw(at + out + (0.5 * ascent / cell) * south, text, width);
        });
  }

  /// Calls `place` with the start of each line that shows, its label and the label's width. The
  /// line at the far edge has its label too.
  template <typename Place>
  void ForEachLabel(const LineFamily& family, int firstNumber, GridStyle style, Place place) {
    if (GridLabel(1, style).empty()) return;
    const LineRange range = ShownLines(family, clip_, labelRoom_);
    for (std::int64_t i = range.first; i <= range.last; ++i) {
      const std::string text = GridLabel(firstNumber + i, style);
      place(family.start + static_cast<double>(i) * family.step, text, canvas_.TextWidth(text));
    }
  }

  void DrawLabel(double x, double y, const std::string& text, int width) {
    const bool outside = x > clip_.right + labelRoom_ || x + width < clip_.left - labelRoom_ ||
                         y < clip_.top - labelRoom_ || y > clip_.bottom + labelRoom_;
    if (!outside) canvas_.DrawText({RoundToPixel(x), RoundToPixel(y)}, text);
  }

  static constexpr double LeastLabelRoom = 200;  // pixels

  MapWindow& view_;
  Canvas& canvas_;
  const PixelRect clip_;
  const double labelRoom_;  // pixels about the clip in which labels are placed
};

}  // namespace

void DrawGrids(MapWindow& view) {
  if ((view.flags & MapWindowGridsHidden) != 0) return;
  Color color = view.fewColors ? FewColorsGridColor : ScreenGridColor;
  if (IsPrint(view)) color = view.gridColor;
  view.target->SetPen({0, PenPattern::Solid, color});
  view.target->SetForeColor(ForegroundColor);
  GridDrawer drawer(view);
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    for (const Grid& grid : map->grids) drawer.Draw(grid);
  }
}

std::string GridLabel(std::int64_t number, GridStyle style) {
  constexpr std::int64_t Least = std::numeric_limits<int>::min();
  constexpr std::int64_t Most = std::numeric_limits<int>::max();
  return FormatCellNumber(static_cast<int>(std::clamp(number, Least, Most)), style);
}

}  // namespace orvane
