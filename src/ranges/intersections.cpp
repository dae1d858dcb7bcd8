#include "ranges/intersections.h"

#include "geo/earth.h"
#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "geometry/ring.h"
#include "model/cells.h"
#include "model/workspace.h"
#include "ranges/clusters_hull.h"
#include "ranges/grid_tally.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

// The polygon is found in the plane about the centre of both ranges, area and shares in the one
// about the centre of the overlap. Of the points only the vertices are moved there, and back to the
// absolute form; the stops, of which there are many, are placed one by one as they are looked at.
// The offset hulls of a range are made for its first overlap and stay in the plane of that one; see
// docs/compatibility.md.

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

LatLon CenterOf(const GeoBounds& bounds) {
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

/// The cells of the vertices of a polygon.
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

  /// A stop whose cell is outside the window counts in no cell.
  void Add(const Point& stop) {
    const CellPosition cell = GridCellOf(stop.geo.lat, stop.geo.lon, frame_);
    const int row = static_cast<int>(cell.alongNorth);
    const int column = static_cast<int>(cell.alongEast);
    if (row < window_.firstRow || row >= window_.firstRow + window_.rows ||
        column < window_.firstColumn || column >= window_.firstColumn + window_.columns) {
      return;
    }
    AddStop(cells_[IndexInWindow(window_, row, column)], stop);
  }

  const std::vector<CellTally>& Cells() const { return cells_; }

  /// The cells with any value, row-major.
  std::vector<RangeCell> UsedCells() const {
    std::vector<RangeCell> used;
    for (int row = window_.firstRow; row < window_.firstRow + window_.rows; ++row) {
      for (int column = window_.firstColumn; column < window_.firstColumn + window_.columns;
           ++column) {
        const CellTally& tally = cells_[IndexInWindow(window_, row, column)];
        if (HoldsAnything(tally)) used.push_back({row, column, tally});
      }
    }
    return used;
  }

 private:
  CellWindow window_;
  GridFrame frame_;
  std::vector<CellTally> cells_;
};

/// Cells of a share, of which those that are cells of the range are not kept a second time.
/// \param used  row-major
OverlapCells SharedCells(const Range& range, const std::vector<RangeCell>& used) {
  OverlapCells cells;
  auto own = range.cells.begin();
  for (const RangeCell& cell : used) {
    own = std::lower_bound(own, range.cells.end(), cell, IsCellBefore);
    const bool isOwn = own != range.cells.end() && !IsCellBefore(cell, *own);
    if (isOwn && own->tally == cell.tally) {
      cells.whole.push_back(static_cast<std::uint32_t>(own - range.cells.begin()));
    } else {
      cells.parts.push_back(cell);
    }
  }
  cells.whole.shrink_to_fit();
  cells.parts.shrink_to_fit();
  return cells;
}

void MakeOffset(OffsetHull& offset, PointSpan hull, double margin, const LatLon& center) {
  offset.store = {};
  offset.ring = OffsetPolygon(offset.store, hull, margin);
  ProjectPoints(offset.ring, center.lon, center.lat);
}

void MakeOffsetHulls(Range& range, double margin, const LatLon& center) {
  if (!range.outerHull.ring.empty()) return;
  MakeOffset(range.outerHull, range.hull, margin, center);
  MakeOffset(range.innerHull, range.hull, -margin, center);
}

/// A plane about a place; as `ProjectPoints` has it.
class Plane {
 public:
  explicit Plane(const LatLon& center) : lon0_(center.lon), north0_(DegreesToMeters(center.lat)) {}

  double NorthOf(const LatLon& place) const { return DegreesToMeters(place.lat) - north0_; }
  Meters At(const LatLon& place) const {
    Meters meters = LatLonToMeters(place.lat, place.lon - lon0_);
    meters.north -= north0_;
    return meters;
  }
  Ring RingOf(PointSpan points) const {
    Ring ring;
    for (Point* point : points) ring.push_back({At(point->geo), point});
    return ring;
  }

 private:
  double lon0_;
  double north0_;
};

/// A ring with its bounds: what is outside of these needs no walk around the ring.
class BoundedRing {
 public:
  explicit BoundedRing(Ring ring) : ring_(std::move(ring)), test_(ring_) {
    for (const RingVertex& vertex : ring_) {
      minNorth_ = std::min(minNorth_, vertex.place.north);
      maxNorth_ = std::max(maxNorth_, vertex.place.north);
      minEast_ = std::min(minEast_, vertex.place.east);
      maxEast_ = std::max(maxEast_, vertex.place.east);
    }
  }

  BoundedRing(const BoundedRing&) = delete;
  BoundedRing& operator=(const BoundedRing&) = delete;

  bool Exists() const { return !ring_.empty(); }
  bool ReachesNorth(double north) const { return north >= minNorth_ && north <= maxNorth_; }
  /// As `PointInPolygon`.
  bool Holds(const Meters& place) {
    return ReachesNorth(place.north) && place.east >= minEast_ && place.east <= maxEast_ &&
           test_.IsInside(place);
  }

 private:
  Ring ring_;
  InsideTest test_;
  double minNorth_ = std::numeric_limits<double>::infinity();
  double maxNorth_ = -std::numeric_limits<double>::infinity();
  double minEast_ = std::numeric_limits<double>::infinity();
  double maxEast_ = -std::numeric_limits<double>::infinity();
};

/// The rings against which the stops of one range are tested.
struct ShareRings {
  BoundedRing otherHull;
  BoundedRing otherOuter;
  BoundedRing otherInner;
  BoundedRing ownInner;
};

/// Adds a stop to the tallies of the ground near the edges of the two hulls.
void AddNearEdges(const Point& stop, const Meters& place, bool inside, ShareRings& rings,
                  OverlapShare& share) {
  if (!inside) {
    if (rings.otherOuter.Holds(place)) AddStop(share.beyond, stop);
    return;
  }
  if (rings.otherInner.Exists() && !rings.otherInner.Holds(place)) {
    AddStop(share.withinOther, stop);
  }
  if (rings.ownInner.Exists() && !rings.ownInner.Holds(place)) AddStop(share.withinOwn, stop);
}

/// Tallies the stops of one range that the overlap concerns.
/// \param cells  null without a common grid
/// \return the minutes spent inside the other's hull
std::int64_t TallyStops(const Range& range, const RangeIntersection& record, double margin,
                        ShareRings& rings, OverlapShare& share, WindowTally* cells,
                        Messages& messages) {
  const Plane plane(CenterOf(record));
  std::int64_t minutes = 0;
  for (const Point* stop : range.points) {
    // The margin is in metres and the box in degrees: with a grid practically every point passes,
    // and the rings decide.
    const LatLon& geo = stop->geo;
    if (!(geo.lat >= record.minLat - margin && geo.lat <= record.maxLat + margin &&
          geo.lon >= record.minLon - margin && geo.lon <= record.maxLon + margin)) {
      continue;
    }
    const double north = plane.NorthOf(geo);
    if (!rings.otherHull.ReachesNorth(north) && !rings.otherOuter.ReachesNorth(north)) continue;
    const Meters place = plane.At(geo);
    const bool inside = rings.otherHull.Holds(place);
    if (inside) {
      minutes += stop->duration;
      if (stop->duration < 0) NoteInternalError(messages, "Negative time");
    }
    if (cells == nullptr) continue;
    if (inside) {
      cells->Add(*stop);
      AddStop(share.tally, *stop);
    }
    AddNearEdges(*stop, place, inside, rings, share);
  }
  return minutes;
}

/// The percent of its time that one range spent in the overlap; fills the tallies of its share.
/// \param cells  null without a common grid
double PercentTimeInIntersection(Range& range, Range& other, const RangeIntersection& record,
                                 OverlapShare& share, WindowTally* cells, Messages& messages) {
  if (range.totalMinutes == 0 || !BoundsOverlap(range, record)) return 0;
  const LatLon center = CenterOf(record);
  double margin = 0;
  if (cells != nullptr) {
    margin = record.grid->cellSize * MarginInCells;
    MakeOffsetHulls(range, margin, center);
    MakeOffsetHulls(other, margin, center);
  }
  const auto offset = [&](const OffsetHull& hull) {
    return cells != nullptr ? RingOf(hull.ring) : Ring();
  };
  ShareRings rings{BoundedRing(Plane(center).RingOf(other.hull)),
                   BoundedRing(offset(other.outerHull)), BoundedRing(offset(other.innerHull)),
                   BoundedRing(offset(range.innerHull))};
  const std::int64_t minutes = TallyStops(range, record, margin, rings, share, cells, messages);
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

/// Fills what the two ranges spent where.
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
  if (record.grid == nullptr) return;
  TallyCommonCells(record, *cellsA, *cellsB);
  record.a.cells = SharedCells(a, cellsA->UsedCells());
  record.b.cells = SharedCells(b, cellsB->UsedCells());
}

}  // namespace

bool BoundsOverlap(const GeoBounds& a, const GeoBounds& b) {
  return a.minLat <= b.maxLat && b.minLat <= a.maxLat && a.minLon <= b.maxLon &&
         b.minLon <= a.maxLon;
}

Poly IntersectHulls(Range& a, Range& b, ScratchPoints& scratch, Messages& messages) {
  if (a.hull.empty() || b.hull.empty() || !BoundsOverlap(a, b)) return {};
  const LatLon center = CenterOf(BoundsOfBoth(a, b));
  ProjectPoints(a.hull, center.lon, center.lat);
  ProjectPoints(b.hull, center.lon, center.lat);
  Poly polygon = IntersectPolygons(scratch, a.hull, b.hull, center.lon, center.lat, messages);
  ProjectPoints(a.hull, 0, 0);
  ProjectPoints(b.hull, 0, 0);
  return polygon;
}

bool IntersectRanges(Range& a, Range& b, std::forward_list<RangeIntersection>& list,
                     Messages& messages) {
  ScratchPoints scratch;
  const Poly polygon = IntersectHulls(a, b, scratch, messages);
  if (polygon.empty()) return false;
  RangeIntersection& record = list.emplace_front();
  record.a.range = &a;
  record.b.range = &b;
  record.name = IntersectionName(a, b);
  static_cast<GeoBounds&>(record) = BoundsOf(polygon);
  if (a.grid == b.grid && a.grid != nullptr) {
    record.grid = a.grid;
    record.window = WindowOf(polygon, *record.grid);
  }
  const LatLon center = CenterOf(record);
  ProjectPoints(polygon, center.lon, center.lat);
  record.area = PolygonArea(polygon);
  ProjectPoints(polygon, 0, 0);
  record.polygon.reserve(polygon.size());
  for (const Point* vertex : polygon) record.polygon.push_back(vertex->geo);
  FillShares(record, messages);
  return true;
}

OverlapMaker::OverlapMaker(Map& map, size_t most) : map_(map), left_(most) {
  for (const RangeIntersection& record : map.intersections) Count(record);
}

void OverlapMaker::Intersect(Range& a, Range& b) {
  if (left_ > 0) {
    if (IntersectRanges(a, b, map_.intersections, map_.workspace->messages)) {
      Count(map_.intersections.front());
    }
    return;
  }
  if (full_) return;
  ScratchPoints scratch;
  if (IntersectHulls(a, b, scratch, map_.workspace->messages).empty()) return;
  full_ = true;
  NoteError(map_.workspace->messages,
            "The ranges overlap too often: overlaps of %s with later ranges are left out",
            {a.name ? std::string_view(*a.name) : "<nameless range>"});
}

void OverlapMaker::Count(const RangeIntersection& record) {
  size_t bytes = sizeof record + record.name.capacity() + record.polygon.size() * sizeof(LatLon);
  for (const OverlapCells* cells : {&record.a.cells, &record.b.cells}) {
    bytes += cells->whole.size() * sizeof(cells->whole[0]);
    bytes += cells->parts.size() * sizeof(RangeCell);
  }
  left_ -= std::min(left_, bytes);
}

void IntersectTrailWithRanges(Map& map, Trail& trail, std::forward_list<TrailRangeOverlap>& list) {
  constexpr size_t FewestPoints = 3;
  if (!trail.filled || trail.points.size() < FewestPoints) return;
  const GeoBounds trailBounds = BoundsOf(trail.points);
  for (Range& range : map.ranges) {
    if (range.hull.empty() || !BoundsOverlap(range, trailBounds)) continue;
    const LatLon center = CenterOf(BoundsOfBoth(range, trailBounds));
    ProjectPoints(trail.points, center.lon, center.lat);
    ProjectPoints(range.hull, center.lon, center.lat);
    ScratchPoints scratch;
    Poly polygon = IntersectPolygons(scratch, range.hull, trail.points, center.lon, center.lat,
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
