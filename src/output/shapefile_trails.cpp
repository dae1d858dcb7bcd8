#include "geometry/polygon.h"
#include "output/shapefile_groups.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace orvane {

namespace {

constexpr std::string_view CannotOpenTrails =
    "Can't open trail or area datafiles for ArcView shapefiles\n";

constexpr size_t LongestNote = 80;
constexpr size_t WidthWidth = 2;

/// Content of a record up to its points: type, box, number of parts and of points, one part.
constexpr std::uint64_t RecordHeadBytes = 48;
constexpr std::uint64_t PlaceBytes = 16;

// A record with altitudes is longer than its header says: besides X and Y it counts 8 bytes for
// each point, while Z and M take 16, and it leaves out the ranges of both. The length of the file
// counts them all; see docs/compatibility.md.
constexpr std::uint64_t CountedPlaceBytesWithZ = 24;
constexpr std::uint64_t TrailBytes = 56;
constexpr std::uint64_t TrailBytesWithZ = 88;
constexpr std::uint64_t PlaceBytesWithZ = 32;

/// The content of one group, for its fields and headers.
struct TrailGroup {
  std::vector<Trail*> trails;
  std::uint64_t places = 0;  ///< points of all trails
  size_t longestName = 0;
  size_t longestType = 0;
  size_t longestNote = 0;
  bool hasAltitudes = false;
  ShapeBounds bounds;
};

TrailGroup GatherTrails(Map& map, bool filled) {
  TrailGroup group;
  const auto take = [](size_t& longest, const std::string& text, size_t most) {
    longest = std::max(longest, std::min(text.size(), most));
  };
  for (Trail& trail : map.trails) {
    if (!trail.name || trail.points.empty() || trail.filled != filled) continue;
    group.trails.push_back(&trail);
    group.places += trail.points.size();
    take(group.longestName, *trail.name, WidestField);
    take(group.longestType, trail.type, WidestField);
    if (trail.note) take(group.longestNote, *trail.note, LongestNote);
    for (const Point* point : trail.points) {
      group.bounds.Take(point->geo);
      group.hasAltitudes = group.hasAltitudes || HasAltitude(point->geo.altitude);
    }
  }
  return group;
}

/// The box and the altitudes of one trail.
struct TrailBox {
  double minX = 180;
  double minY = 180;
  double maxX = -180;
  double maxY = -180;
  double minAltitude = 9999999.0;
  double maxAltitude = 0;
};

TrailBox BoxOf(const Trail& trail) {
  TrailBox box;
  for (const Point* point : trail.points) {
    const LatLon& place = point->geo;
    box.minX = std::min(box.minX, place.lon);
    box.minY = std::min(box.minY, place.lat);
    box.maxX = std::max(box.maxX, place.lon);
    box.maxY = std::max(box.maxY, place.lat);
    if (!HasAltitude(place.altitude)) continue;
    box.minAltitude = std::min(box.minAltitude, double{place.altitude});
    box.maxAltitude = std::max(box.maxAltitude, double{place.altitude});
  }
  return box;
}

/// \return the points in the order in the file: those of an area are clockwise. The trail and the
///         plane coordinates of its points do not change.
std::vector<const Point*> PointsInOrder(const Trail& trail, bool clockwise) {
  std::vector<const Point*> points(trail.points.begin(), trail.points.end());
  if (!clockwise) return points;
  std::vector<Meters> planes;
  planes.reserve(points.size());
  for (const Point* point : points) planes.push_back(point->projected);
  if (!RingRunsClockwise(trail.points)) std::reverse(points.begin(), points.end());
  for (size_t i = 0; i < planes.size(); ++i) trail.points[i]->projected = planes[i];
  return points;
}

/// The width cut to a whole number.
std::string WidthText(double width) {
  constexpr double Least = std::numeric_limits<int>::min();
  constexpr double Most = std::numeric_limits<int>::max();
  if (!(width >= Least && width <= Most)) width = width > Most ? Most : Least;
  return std::to_string(static_cast<int>(width));
}

void PutAltitudes(ByteBuffer& shape, const TrailBox& box, const std::vector<const Point*>& points) {
  shape.PutDouble(box.minAltitude);
  shape.PutDouble(box.maxAltitude);
  for (const Point* point : points) shape.PutDouble(double{point->geo.altitude});
  for (size_t i = 0; i < points.size() + 2; ++i) shape.PutDouble(NoMeasure);
}

void PutTrailRow(ShapefileSet& set, const Trail& trail, const TrailGroup& group, bool hasWidth) {
  set.BeginRow();
  set.PutField(*trail.name);
  set.PutField(trail.type);
  if (hasWidth) set.PutNumberField(WidthText(trail.width), WidthWidth);
  if (group.longestNote > 0) set.PutField(trail.note ? *trail.note : std::string_view{});
}

void PutTrailShape(ShapefileSet& set, const Trail& trail, ShapeType type) {
  const bool withZ = type == ShapePolyLineZ;
  const TrailBox box = BoxOf(trail);
  const std::vector<const Point*> points = PointsInOrder(trail, type == ShapePolygon);
  const std::uint64_t placeBytes = withZ ? CountedPlaceBytesWithZ : PlaceBytes;
  ByteBuffer& shape = set.BeginShape((placeBytes * points.size() + RecordHeadBytes) / 2);
  for (const double value : {box.minX, box.minY, box.maxX, box.maxY}) shape.PutDouble(value);
  shape.PutLittle(1);
  shape.PutLittle(static_cast<std::uint32_t>(points.size()));
  shape.PutLittle(0);
  for (const Point* point : points) {
    shape.PutDouble(point->geo.lon);
    shape.PutDouble(point->geo.lat);
  }
  if (withZ) PutAltitudes(shape, box, points);
}

void PutGroup(ShapefileExport& shapes, const TrailGroup& group, const std::string& name,
              ShapeType type) {
  if (group.trails.empty()) return;
  ShapefileSet* set = shapes.Open(name, CannotOpenTrails);
  if (set == nullptr) return;
  const bool withZ = type == ShapePolyLineZ;
  const bool hasWidth = type == ShapePolyLine;
  std::vector<TableField> fields = {{"Name", 'C', group.longestName, 0},
                                    {"Type", 'C', group.longestType, 0}};
  if (hasWidth) fields.push_back({"Width", 'N', WidthWidth, 0});
  if (group.longestNote > 0) fields.push_back({"Comments", 'C', group.longestNote, 0});
  const std::uint64_t count = group.trails.size();
  const std::uint64_t bytes = (withZ ? TrailBytesWithZ : TrailBytes) * count +
                              (withZ ? PlaceBytesWithZ : PlaceBytes) * group.places;
  set->PutHeaders({type, group.bounds, count, bytes, shapes.Today()}, fields);
  for (const Trail* trail : group.trails) {
    if (!shapes.GoesOn()) return;
    PutTrailRow(*set, *trail, group, hasWidth);
    PutTrailShape(*set, *trail, type);
  }
}

}  // namespace

void PutTrailShapes(ShapefileExport& shapes) {
  PutGroup(shapes, GatherTrails(shapes.GetMap(), false), "trails", ShapePolyLine);
}

void PutTrailShapesWithAltitude(ShapefileExport& shapes) {
  const TrailGroup group = GatherTrails(shapes.GetMap(), false);
  if (group.hasAltitudes) PutGroup(shapes, group, "trails3d", ShapePolyLineZ);
}

void PutAreaShapes(ShapefileExport& shapes) {
  PutGroup(shapes, GatherTrails(shapes.GetMap(), true), "areas", ShapePolygon);
}

}  // namespace orvane
