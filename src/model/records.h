#pragma once

#include "base/colors.h"
#include "base/dates.h"
#include "geo/positions.h"
#include "model/styles.h"

#include <array>
#include <cstdint>
#include <deque>
#include <forward_list>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

// clang-format off
/// The records of a map. They are plain: every field has a default, and the functions are
/// elsewhere. All text is 8-bit and never changed; "text or none" is an optional.
///
///     record                  owner                  referred to by (never owning)
///     Map                     Workspace::maps        Map::basis, Point::map, windows
///     Point                   Map::pointStore        Trail::points, Map's lists, Grid::corner,
///                                                    Measurement::base, Link::other
///     Measurement             Point::measurements    -
///     Link (rays)             Map::rayStore          Point::rays, Link::reverse
///     Link (links)            one run of SolveMap    Point::links, Link::reverse
///     Trail                   Map::trails,           Point::trail, panel rows, ranges
///                             Map::contourTrails
///     Grid, GridShade         Map::grids,            GridShade::grid
///                             Map::gridShades
///     Range, SearchKey        Map::ranges,           panel rows
///                             Range::keys
///
/// The order of a list is behaviour. "Newest first" is a forward_list, or a `PointList` of a map,
/// with new items at its front; "in walking order" and "in file order" are vectors.
// clang-format on

struct Map;
struct Point;
struct Trail;

// --- Measurements ---------------------------------------------------------------------------

/// Bits of `Measurement::flags`. Exactly one of the four kinds is set.
enum MeasurementFlag : std::uint32_t {
  MeasureCompass = 1,          ///< bearing, distance and inclination from `base`
  MeasureGps = 2,              ///< a fix in latitude and longitude
  MeasureAltitude = 4,         ///< an altitude by itself
  MeasureAbsoluteBearing = 8,  ///< the bearing is true: no magnetic deviation is added
  MeasureNear = 16,            ///< the point is near a place named by text
  MeasureWritten = 32,         ///< the writer's mark
  MeasureDerived = 64,         ///< made by the program, never saved
};

/// One reading from a notebook, held by the point that it helps to place.
struct Measurement {
  std::uint32_t flags = 0;      ///< `MeasurementFlag` bits
  float altitude = NoAltitude;  ///< metres, a whole number, or `NoAltitude`
  int count = 1;                ///< readings averaged, at least 1; a weight
  LatLon position;              ///< GPS: the fix; its own altitude is `NoAltitude` when read
  Point* base = nullptr;        ///< compass: the far end; null otherwise
  double bearing = 0;      ///< compass: degrees clockwise from north, from the holder to `base`
  double distance = 0;     ///< compass: metres along the slope
  double inclination = 0;  ///< compass: degrees, -90 to 90, up towards `base`
  std::string nearName;    ///< near: the name of the place

  /// Equal but for the writer's mark, which says nothing of the reading.
  friend bool operator==(const Measurement& a, const Measurement& b) {
    constexpr auto WithoutMark = ~std::uint32_t{MeasureWritten};
    return (a.flags & WithoutMark) == (b.flags & WithoutMark) && a.altitude == b.altitude &&
           a.count == b.count && a.position == b.position && a.base == b.base &&
           a.bearing == b.bearing && a.distance == b.distance && a.inclination == b.inclination &&
           a.nearName == b.nearName;
  }
};

/// One direction of a pair of points with shots between them; for the solver.
struct Link {
  Point* other = nullptr;   ///< the far end
  Link* next = nullptr;     ///< next of the same list, older
  Link* reverse = nullptr;  ///< the mirror of this one in `other`'s list
  float bearing = 0;        ///< degrees from the holder to `other`; a weighted sum while collecting
  float distance = 0;       ///< metres along the slope; likewise
  float inclination = 0;    ///< degrees; likewise
  std::int64_t count = 0;   ///< sum of the counts of the measurements
  bool walked = false;      ///< part of a chain
};

// --- Points ---------------------------------------------------------------------------------

/// Bits of `Point::flags`.
enum PointFlag : std::uint32_t {
  PointPlaced = 1,        ///< `geo` and `projected` hold a valid place
  PointInProgress = 2,    ///< being solved; cleared with `PointPlaced` before solving
  PointVisited = 4,       ///< a mark for walks over the map; each walk clears it first
  PointVisitedPrint = 8,  ///< the same for labels on paper
  PointFree = 16,         ///< the point was freed, and its place in the store waits for another
  PointNamedTwice = 32,   ///< the name was looked up and found again after it was made
  PointScratch = 64,      ///< made for a polygon or a transect; in no list of a map
  PointMarkFilled = 512,  ///< the point's own mark is filled
};

/// Values of `Point::markShape`.
enum PointMark : std::uint8_t { PointMarkNone = 0, PointMarkCircle = 1, PointMarkSquare = 2 };

/// A survey point: a place with a name, readings and, once solved, a position.
struct Point {
  // The fields that every walk reads come first, so that they share lines of the cache.
  std::uint32_t flags = 0;  ///< `PointFlag` bits
  bool namedAbove = false;  ///< a map other than its own has entered a name
  std::uint8_t markShape = PointMarkNone;
  Trail* trail = nullptr;                       ///< the first trail that used it; null for none
  Map* map = nullptr;                           ///< the map that made it; null for a scratch point
  std::forward_list<Measurement> measurements;  ///< newest first
  std::forward_list<std::string> synonyms;      ///< further names, newest first
  std::string name;                             ///< empty for a nameless point
  LatLon geo;                                   ///< the solved or fixed place
  Meters projected;                             ///< the place in the plane that was last used

  double labelLimit = 0;  ///< name and mark are drawn up to so many metres per pixel; 0 for always
  int markSize = 0;       ///< size of the point's own mark, in half widths of a letter
  int timeOfDay = 0;      ///< time-named point: minutes after midnight
  int duration = 0;       ///< time-named point: minutes
  int sm[3] = {0, 0, 0};  ///< the measures SM1, SM2, SM3; 0 for none
  std::optional<std::string> note;

  // The solver's working fields; never saved, and read only by the solver.
  Link* links = nullptr;            ///< shots with a length, newest first; valid during one solve
  Link* rays = nullptr;             ///< shots without a length, newest first; kept between solves
  double latSum = 0;                ///< degrees, weighted; never cleared
  double lonSum = 0;                ///< degrees, weighted; never cleared
  float altSum = 0;                 ///< metres, weighted; never cleared
  std::int64_t positionWeight = 0;  ///< sum of the counts in `latSum`, `lonSum`
  std::int64_t altitudeWeight = 0;  ///< sum of the counts in `altSum`
  int regionIndex = 0;              ///< column of this point in the matrix of its region
  std::uint64_t solverVisit = 0;    ///< the last walk of the solver that visited the point
};

/// \return true if the point has a place
inline bool IsPlaced(const Point& point) { return (point.flags & PointPlaced) != 0; }

// --- Trails ---------------------------------------------------------------------------------

/// Bits of `Trail::flags`.
enum TrailFlag : std::uint32_t {
  TrailContour = 1 << 11,   ///< made by contour generation
  TrailMeasured = 1 << 12,  ///< plane, aspect, slope and slantedArea are valid
  TrailClosed = 1 << 13,    ///< ends at the point where it starts; set with the metrics
  TrailHidden = 1 << 18,    ///< its row starts hidden
};

/// An ordered walk over points: a path in the forest, a boundary, or one day's follow of animals.
struct Trail {
  std::optional<std::string> name;
  std::vector<Point*> points;  ///< in walking order; a point can occur more than once
  std::string type;            ///< path type, or species or group of a follow
  std::optional<std::string> focalAnimal;
  PackedDate date = 0;  ///< 0 for none
  double width = 0;     ///< metres on the ground; 0 for the thinnest line
  int groupSize = 1;    ///< at least 1
  Color color = NoColor;
  LineStyle lineStyle = LineStyle::Unset;
  LabelMode labelMode = LabelMode::Unset;
  bool filled = false;  ///< drawn as a filled area
  int fillPattern = 0;  ///< 0 to 7
  MarkStyle markStyle = MarkStyle::None;
  std::uint32_t flags = 0;  ///< `TrailFlag` bits
  std::optional<std::string> note;

  // Metrics, filled by MeasureTrail and never saved.
  double plane[3] = {0, 0, 0};  ///< altitude = a * north + b * east + c, metres from the mean
  double aspect = 0;            ///< radians
  double slope = 0;             ///< radians
  double area = 0;              ///< square metres
  double slantedArea = 0;       ///< square metres
  double groundLength = double{NoAltitude};  ///< metres, or -9999 if some point has no altitude
  double minAltitude = double{NoAltitude};   ///< metres, or -9999
  double maxAltitude = double{NoAltitude};   ///< metres, or -9999
};

/// \return true for a trail made by contour generation
inline bool IsContour(const Trail& trail) { return (trail.flags & TrailContour) != 0; }
/// \return true for a trail that ends where it starts; known once its metrics are
inline bool IsClosed(const Trail& trail) { return (trail.flags & TrailClosed) != 0; }
/// \return true for a trail whose row starts hidden
inline bool IsHidden(const Trail& trail) { return (trail.flags & TrailHidden) != 0; }

// --- Grids ----------------------------------------------------------------------------------

/// A survey grid of square cells; rows run south and columns east of the corner at angle 0.
struct Grid {
  Point* corner = nullptr;
  int cellSize = 0;  ///< metres
  int rows = 0;      ///< number of cells; negative: the grid extends the other way
  int columns = 0;   ///< likewise
  double angle = 0;  ///< degrees by which the grid is turned
  GridStyle rowStyle = GridStyle::LettersUpper;
  GridStyle columnStyle = GridStyle::Decimal;
  int rowStart = 0;     ///< number of the first row
  int columnStart = 0;  ///< number of the first column

  friend bool operator==(const Grid&, const Grid&) = default;
};

/// Special values of `GridShade::value`; any value of 0 or more is a hatch angle in degrees.
constexpr double ShadeFull = -10.0;     ///< the whole cell
constexpr double ShadeOutline = -11.0;  ///< a thick outline
constexpr double ShadeInset = -12.0;    ///< a smaller cell inside

/// One shaded cell of a grid.
struct GridShade {
  double value = 0;
  Color color = NoColor;
  Grid* grid = nullptr;
  int row = 0;     ///< counted from the grid's start
  int column = 0;  ///< likewise

  friend bool operator==(const GridShade&, const GridShade&) = default;
};

// --- Ranges ---------------------------------------------------------------------------------

/// One criterion of a range.
struct SearchKey {
  std::string type;  ///< trail type to match, or "points:" and a template
  std::optional<std::string> focalAnimal;
  int timeFrom = 0;  ///< minutes after midnight; equal to `timeTo` for no limit
  int timeTo = 0;
  PackedDate dateFrom = 0;  ///< 0 for no limit
  PackedDate dateTo = 0;

  friend bool operator==(const SearchKey&, const SearchKey&) = default;
};

/// A box in degrees.
struct GeoBounds {
  double minLat = 0;
  double maxLat = 0;
  double minLon = 0;
  double maxLon = 0;
};

/// Owns the new vertices of an operation: crossings of two rings, and the corners of offset hulls.
/// Keep it as long as the ring: the addresses are valid until it is destroyed.
struct ScratchPoints {
  std::list<Point> store;  ///< most rings need none, and an empty list takes no memory

  ScratchPoints() = default;
  ~ScratchPoints() = default;
  // A copy of the record that holds the ring would point into the old store.
  ScratchPoints(const ScratchPoints&) = delete;
  ScratchPoints& operator=(const ScratchPoints&) = delete;
  ScratchPoints(ScratchPoints&&) = default;
  ScratchPoints& operator=(ScratchPoints&&) = default;

  /// Makes a nameless point of no map, flagged `PointScratch`.
  /// \param place  its coordinates in the current plane; `geo` stays 0
  Point& Make(const Meters& place) {
    Point& point = store.emplace_back();
    point.flags = PointScratch;
    point.projected = place;
    return point;
  }
};

/// Time and measures spent in an area.
struct CellTally {
  std::int64_t minutes = 0;
  std::int64_t measure[3] = {0, 0, 0};  ///< sums of SM1, SM2, SM3
  bool operator==(const CellTally&) const = default;
};

/// A rectangle of cells of a grid, counted along north and east from the grid's corner.
struct CellWindow {
  int firstRow = 0;     ///< cells along north
  int firstColumn = 0;  ///< cells along east
  int rows = 0;
  int columns = 0;
};

/// A cell of a grid with what was spent there.
struct RangeCell {
  int row = 0;     ///< along north from the grid's corner
  int column = 0;  ///< along east from the grid's corner
  CellTally tally;
};

/// Levels of clusters: level i shows (i + 1) * 5 %.
constexpr int ClusterLevels = 20;
/// `Cluster::mergedAt` of a cluster that was never merged.
constexpr int NeverMerged = 2147483647;

/// One cluster of a range's locations, and its outline at each level.
struct Cluster {
  int madeAt = 0;              ///< the step at which it was seeded
  int mergedAt = NeverMerged;  ///< the step at which it was merged into `parent`
  Cluster* parent = nullptr;   ///< null if it was never merged
  std::array<std::vector<Point*>, ClusterLevels> hull;  ///< by level; empty where it is not shown
  std::array<double, ClusterLevels> area{};             ///< square metres, by level
};

/// The clusters of a range.
struct ClusterTree {
  std::deque<Cluster> clusters;  ///< in order of creation
  int steps = 0;                 ///< events in which they were made

  ClusterTree() = default;
  ~ClusterTree() = default;
  // `Cluster::parent` points into `clusters`.
  ClusterTree(const ClusterTree&) = delete;
  ClusterTree& operator=(const ClusterTree&) = delete;
  ClusterTree(ClusterTree&&) = default;
  ClusterTree& operator=(ClusterTree&&) = default;
};

/// Slots of five minutes and hours of the day, for travel.
constexpr int SlotsOfDay = 288;
constexpr int HoursOfDay = 24;
constexpr int MinutesOfSlot = 5;

/// Means over the follows that cover a slot of five minutes, or sums of such over an hour.
struct TravelTally {
  double distance = 0;           ///< metres
  std::int64_t count = 0;        ///< follows that cover it
  float measure[3] = {0, 0, 0};  ///< SM1, SM2, SM3
};

/// The vertices of an offset hull, which belong to no map.
struct OffsetHull {
  std::vector<Point*> ring;  ///< empty if there is none
  ScratchPoints store;       ///< its vertices
};

/// A home range, defined by its search keys; everything else is computed from them.
struct Range : GeoBounds {
  std::optional<std::string> name;
  std::optional<std::string> note;
  std::forward_list<SearchKey> keys;  ///< newest first

  // The analysis. Never saved.
  std::vector<Trail*> follows;   ///< matching trails, last of the map first
  std::vector<Point*> points;    ///< newest first; a point can occur more than once
  bool hasBounds = false;        ///< whether the bounds, those of `points`, are valid
  std::vector<Point*> hull;      ///< minimum convex polygon, unclosed
  double mcpArea = 0;            ///< square metres
  double gridArea = 0;           ///< square metres, cells in which time was spent
  const Grid* grid = nullptr;    ///< the grid of the cell figures, or null
  CellWindow window;             ///< of `cells`
  std::vector<RangeCell> cells;  ///< those with any value, row-major; none without a grid
  CellTally tally;               ///< sum over all cells
  std::array<TravelTally, SlotsOfDay> slots;
  std::array<TravelTally, HoursOfDay> hours;
  std::int64_t totalMinutes = 0;          ///< over `points`
  std::vector<Point*> minutesGiven;       ///< stops without a duration; each has a minute since
  std::int64_t meanFollowPath = 0;        ///< metres, cut
  std::int64_t meanDailyPath = 0;         ///< metres
  std::unique_ptr<ClusterTree> clusters;  ///< or null
  OffsetHull outerHull;  ///< `hull` pushed outward; made when first needed, then kept
  OffsetHull innerHull;  ///< `hull` pulled inward; likewise
};

/// The cells of a range within an overlap. In most of them the range spent no time outside it, so
/// they are the range's own. `CellsOf` gives all of them.
struct OverlapCells {
  std::vector<std::uint32_t> whole;  ///< ascending indexes in `Range::cells`
  std::vector<RangeCell> parts;      ///< the cells that the edge cuts, row-major
};

/// How one of two overlapping ranges used the overlap and its surroundings.
struct OverlapShare {
  Range* range = nullptr;
  CellTally tally;        ///< in the overlap
  OverlapCells cells;     ///< in the overlap, those with any value; none without a grid
  CellTally beyond;       ///< outside the other's hull, within the margin
  CellTally withinOther;  ///< inside the other's hull, within the margin of its edge
  CellTally withinOwn;    ///< inside the other's hull, within the margin of its own edge
  float timeShare = 0;    ///< percent of the range's time in the overlap
  float cellShare = 0;    ///< percent of the range's time in cells that both use
};

/// The overlap of the hulls of two ranges; the bounds are those of `polygon`.
struct RangeIntersection : GeoBounds {
  std::string name;
  std::vector<LatLon> polygon;  ///< its vertices, unclosed
  double area = 0;              ///< square metres
  double bothCellsArea = 0;     ///< square metres of the cells that both use
  const Grid* grid = nullptr;   ///< if both count on the same grid
  CellWindow window;            ///< of the cells of both shares
  OverlapShare a;
  OverlapShare b;
};

/// The overlap of a filled trail with a range; the bounds are those of `polygon`.
struct TrailRangeOverlap : GeoBounds {
  Trail* trail = nullptr;
  Range* range = nullptr;
  std::vector<Point*> polygon;  ///< points of either, and of `scratch`
  ScratchPoints scratch;        ///< crossings of the two
};

}  // namespace orvane
