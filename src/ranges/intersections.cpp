#include "ranges/intersections.h"

#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "model/cells.h"
#include "model/workspace.h"
#include "ranges/grid_tally.h"

#include <algorithm>
#include <optional>

// All points are put into one plane for each step: hulls and points about the centre of both
// ranges for the polygon, then about the centre of the overlap for the shares, and back to the
// absolute form at the end. The offset hulls of a range are made for its first overlap and stay in
// the plane of that one; figures already published were made so.

namespace orvane {

namespace {

constexpr size_t LongestNamePart = 20;

GeoBounds BoundsOfBoth(const GeoBounds& a, const GeoBounds& b) {
  return {std::min(a.minLat, b.minLat), std::max(a.maxLat, b.maxLat), std::min(a.minLon, b.minLon),
          std::max(a.maxLon, b.maxLon)};
}

GeoBounds BoundsOf(PointSpan points) {
  const LatLon& first = points.front()->geo;
  GeoBounds bounds{first.lat, first.lat, first.lon, first.lon};
  for (const Point* point : points) {
    bounds = BoundsOfBoth(bounds, {point->geo.lat, point->geo.lat, point->geo.lon, point->geo.lon});
  }
  return bounds;
}

LatLon CentreOf(const GeoBounds& bounds) {
  return {(bounds.maxLat + bounds.minLat) / 2, (bounds.maxLon + bounds.minLon) / 2, NoAltitude};
}

std::string IntersectionName(const Range& a, const Range& b) {
  const auto part = [](const std::string& name) { return name.substr(0, LongestNamePart); };
  if (a.name && b.name) return "Intersection of " + part(*a.name) + " and " + part(*b.name);
  if (a.name || b.name) {
    return "Intersection of " + part(a.name ? *a.name : *b.name) + " and something";
  }
  return "Intersection of two ranges";
}

/// The cells in which the vertices of a polygon lie.
CellWindow WindowOf(PointSpan polygon, const Grid& grid) {
  const GridFrame frame = FrameOf(grid);
  CellWindow window;
  int lastRow = 0;
  int lastColumn = 0;
  bool first = true;
  for (const Point* vertex : polygon) {
    const CellPosition cell = GridCellOf(vertex->geo.lat, vertex->geo.lon, frame);
    const int row = static_cast<int>(cell.alongNorth);
    const int column = static_cast<int>(cell.alongEast);
    window.firstRow = first ? row : std::min(window.firstRow, row);
    window.firstColumn = first ? column : std::min(window.firstColumn, column);
    lastRow = first ? row : std::max(lastRow, row);
    lastColumn = first ? column : std::max(lastColumn, column);
    first = false;
  }
  window.rows = lastRow - window.firstRow + 1;
  window.columns = lastColumn - window.firstColumn + 1;
  return window;
}

/// The time of one side by the cells of the record's window.
class WindowTally {
 public:
  WindowTally(const CellWindow& window, const Grid& grid)
      : window_(window),
        frame_(FrameOf(grid)),
        cells_(static_cast<size_t>(window.rows) * static_cast<size_t>(window.columns)) {}

  /// A stop whose cell lies outside the window counts in no cell.
  void Add(const Point& stop) {
    const CellPosition cell = GridCellOf(stop.geo.lat, stop.geo.lon, frame_);
    const int row = static_cast<int>(cell.alongNorth) - window_.firstRow;
    const int column = static_cast<int>(cell.alongEast) - window_.firstColumn;
    if (row < 0 || row >= window_.rows || column < 0 || column >= window_.columns) return;
    AddStop(cells_[static_cast<size_t>(row * window_.columns + column)], stop);
  }

  const std::vector<CellTally>& Cells() const { return cells_; }

 private:
  CellWindow window_;
  GridFrame frame_;
  std::vector<CellTally> cells_;
};

void MakeOffset(OffsetHull& offset, PointSpan hull, double margin, const LatLon& centre) {
  offset.store = {};
  offset.ring = OffsetPolygon(offset.store, hull, margin);
  ProjectPoints(offset.ring, centre.lon, centre.lat);
}

void MakeOffsetHulls(Range& range, double margin, const LatLon& centre) {
  if (!range.outerHull.ring.empty()) return;
  MakeOffset(range.outerHull, range.hull, margin, centre);
  MakeOffset(range.innerHull, range.hull, -margin, centre);
}

bool Holds(PointSpan ring, const Point& point) {
  return PointInPolygon(point.projected.east, point.projected.north, ring);
}

/// Adds a stop to the tallies of the ground near the edges of the two hulls.
void AddNearEdges(const Point& stop, bool inside, const Range& range, const Range& other,
                  OverlapShare& share) {
  if (!inside) {
    if (!other.outerHull.ring.empty() && Holds(other.outerHull.ring, stop)) {
      AddStop(share.beyond, stop);
    }
    return;
  }
  if (!other.innerHull.ring.empty() && !Holds(other.innerHull.ring, stop)) {
    AddStop(share.withinOther, stop);
  }
  if (!range.innerHull.ring.empty() && !Holds(range.innerHull.ring, stop)) {
    AddStop(share.withinOwn, stop);
  }
}

/// The percent of its time that one range spent in the overlap; fills the tallies of its share.
/// \param cells  null without a common grid
double PercentTimeInIntersection(Range& range, Range& other, const RangeIntersection& record,
                                 OverlapShare& share, WindowTally* cells, Messages& messages) {
  if (range.totalMinutes == 0 || !BoundsOverlap(range, record)) return 0;
  double margin = 0;
  if (cells != nullptr) {
    margin = record.grid->cellSize * MarginInCells;
    const LatLon centre = CentreOf(record);
    MakeOffsetHulls(range, margin, centre);
    MakeOffsetHulls(other, margin, centre);
  }
  std::int64_t minutes = 0;
  for (const Point* stop : range.points) {
    // The margin is in metres and the box in degrees: with a grid practically every point passes.
    // Figures already published were made so.
    const LatLon& place = stop->geo;
    if (!(place.lat >= record.minLat - margin && place.lat <= record.maxLat + margin &&
          place.lon >= record.minLon - margin && place.lon <= record.maxLon + margin)) {
      continue;
    }
    const bool inside = Holds(other.hull, *stop);
    if (inside) {
      minutes += stop->duration;
      if (stop->duration < 0) NoteInternalError(messages, "Negative time");
    }
    if (cells == nullptr) continue;
    if (inside) {
      cells->Add(*stop);
      AddStop(share.tally, *stop);
    }
    AddNearEdges(*stop, inside, range, other, share);
  }
  if (minutes < 0 || range.totalMinutes < 0) {
    NoteInternalError(messages, "negative time percentage in: PercentTimeInIntersection");
  }
  return static_cast<double>(minutes) * 100 / static_cast<double>(range.totalMinutes);
}

void TallyCommonCells(RangeIntersection& record, const WindowTally& a, const WindowTally& b) {
  std::int64_t minutesA = 0;
  std::int64_t minutesB = 0;
  double used = 0;
  for (size_t i = 0; i < a.Cells().size(); ++i) {
    if (a.Cells()[i].minutes == 0 || b.Cells()[i].minutes == 0) continue;
    minutesA += a.Cells()[i].minutes;
    minutesB += b.Cells()[i].minutes;
    ++used;
  }
  const auto share = [](std::int64_t minutes, const OverlapShare& side) {
    if (side.tally.minutes == 0 || side.range->totalMinutes == 0) return 0.0F;
    return static_cast<float>(static_cast<double>(minutes) * 100 /
                              static_cast<double>(side.range->totalMinutes));
  };
  record.a.cellShare = share(minutesA, record.a);
  record.b.cellShare = share(minutesB, record.b);
  const auto cellSize = static_cast<double>(record.grid->cellSize);
  record.bothCellsArea = cellSize * used * cellSize;
}

/// Fills what the two ranges spent where. The points and the polygon must stand in the plane about
/// the centre of the record.
void FillShares(RangeIntersection& record, Messages& messages) {
  Range& a = *record.a.range;
  Range& b = *record.b.range;
  std::optional<WindowTally> cellsA;
  std::optional<WindowTally> cellsB;
  if (record.grid != nullptr) {
    cellsA.emplace(record.window, *record.grid);
    cellsB.emplace(record.window, *record.grid);
  }
  const auto orNull = [](std::optional<WindowTally>& cells) { return cells ? &*cells : nullptr; };
  record.a.timeShare = static_cast<float>(
      PercentTimeInIntersection(a, b, record, record.a, orNull(cellsA), messages));
  record.b.timeShare = static_cast<float>(
      PercentTimeInIntersection(b, a, record, record.b, orNull(cellsB), messages));
  if (record.grid != nullptr) TallyCommonCells(record, *cellsA, *cellsB);
}

}  // namespace

bool BoundsOverlap(const GeoBounds& a, const GeoBounds& b) {
  return a.minLat <= b.maxLat && b.minLat <= a.maxLat && a.minLon <= b.maxLon &&
         b.minLon <= a.maxLon;
}

Poly IntersectHulls(Range& a, Range& b, ScratchPoints& scratch, Messages& messages) {
  if (a.hull.empty() || b.hull.empty() || !BoundsOverlap(a, b)) return {};
  const LatLon centre = CentreOf(BoundsOfBoth(a, b));
  ProjectPoints(a.points, centre.lon, centre.lat);
  ProjectPoints(b.points, centre.lon, centre.lat);
  Poly polygon = IntersectPolygons(scratch, a.hull, b.hull, centre.lon, centre.lat, messages);
  ProjectPoints(a.points, 0, 0);
  ProjectPoints(b.points, 0, 0);
  return polygon;
}

void IntersectRanges(Range& a, Range& b, std::forward_list<RangeIntersection>& list,
                     Messages& messages) {
  ScratchPoints scratch;
  const Poly polygon = IntersectHulls(a, b, scratch, messages);
  if (polygon.empty()) return;
  RangeIntersection& record = list.emplace_front();
  record.scratch = std::move(scratch);
  record.polygon = polygon;
  record.a.range = &a;
  record.b.range = &b;
  record.name = IntersectionName(a, b);
  static_cast<GeoBounds&>(record) = BoundsOf(polygon);
  if (a.grid == b.grid && a.grid != nullptr) {
    record.grid = a.grid;
    record.window = WindowOf(polygon, *record.grid);
  }
  const LatLon centre = CentreOf(record);
  const auto project = [&](double lon, double lat) {
    ProjectPoints(a.points, lon, lat);
    ProjectPoints(b.points, lon, lat);
    ProjectPoints(record.polygon, lon, lat);
  };
  project(centre.lon, centre.lat);
  record.area = PolygonArea(record.polygon);
  FillShares(record, messages);
  project(0, 0);
}

void IntersectTrailWithRanges(Map& map, Trail& trail, std::forward_list<TrailRangeOverlap>& list) {
  constexpr size_t fewestPoints = 3;
  if (!trail.filled || trail.points.size() < fewestPoints) return;
  const GeoBounds trailBounds = BoundsOf(trail.points);
  for (Range& range : map.ranges) {
    if (range.hull.empty() || !BoundsOverlap(range, trailBounds)) continue;
    const LatLon centre = CentreOf(BoundsOfBoth(range, trailBounds));
    ProjectPoints(trail.points, centre.lon, centre.lat);
    ProjectPoints(range.hull, centre.lon, centre.lat);
    ScratchPoints scratch;
    Poly polygon = IntersectPolygons(scratch, range.hull, trail.points, centre.lon, centre.lat,
                                     map.workspace->messages);
    if (polygon.empty()) continue;
    TrailRangeOverlap& overlap = list.emplace_front();
    overlap.trail = &trail;
    overlap.range = &range;
    overlap.scratch = std::move(scratch);
    overlap.polygon = std::move(polygon);
    static_cast<GeoBounds&>(overlap) = BoundsOf(overlap.polygon);
  }
}

}  // namespace orvane
