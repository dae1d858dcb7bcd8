// Longitudes wrap around. A path that crosses the 180th meridian is first unrolled, so that each
// step takes the short way, and then cut into turns of 360 degrees:
//
//          -180         180          540
//     ...   | turn 0     |  turn 1    |  ...       170, -170 unrolls to 170, 190 and is cut into
//           |        o---+---o        |            170 to 180 and -180 to -170

#include "output/geojson_shapes.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace orvane {

namespace {

constexpr double HalfTurn = 180;
constexpr double FullTurn = 360;

/// An area over more turns than this is not an area on the earth, and is not cut.
constexpr double MostTurnsOfArea = 3;

double WestOf(double turn) { return turn * FullTurn - HalfTurn; }
double EastOf(double turn) { return turn * FullTurn + HalfTurn; }

/// \return the same longitude within -180 to 180; unchanged if it is
double WithinTurn(double lon) {
  return std::fabs(lon) <= HalfTurn ? lon : std::remainder(lon, FullTurn);
}

bool StaysWithinTurn(const GeoPath& path) {
  for (size_t i = 0; i < path.size(); ++i) {
    if (std::fabs(path[i].lon) > HalfTurn) return false;
    if (i > 0 && std::fabs(path[i].lon - path[i - 1].lon) > HalfTurn) return false;
  }
  return true;
}

/// \return the path with each longitude at most 180 degrees from the one before; the first is in
///         turn 0
GeoPath Unrolled(const GeoPath& path) {
  GeoPath unrolled;
  unrolled.reserve(path.size());
  for (size_t i = 0; i < path.size(); ++i) {
    const double lon =
        i == 0
            ? WithinTurn(path[0].lon)
            : unrolled[i - 1].lon +
                  std::remainder(WithinTurn(path[i].lon) - WithinTurn(path[i - 1].lon), FullTurn);
    unrolled.push_back({lon, path[i].lat, path[i].altitude});
  }
  return unrolled;
}

/// \return the place where a step crosses a longitude between its ends
GeoPlace PlaceAt(const GeoPlace& a, const GeoPlace& b, double lon) {
  const double share = (lon - a.lon) / (b.lon - a.lon);
  return {lon, a.lat + (b.lat - a.lat) * share, a.altitude + (b.altitude - a.altitude) * share};
}

void Append(GeoPath& path, const GeoPlace& place) {
  if (path.empty() || path.back() != place) path.push_back(place);
}

/// Cuts an unrolled line into its turns.
std::vector<GeoPath> CutLine(const GeoPath& unrolled) {
  std::vector<GeoPath> parts(1);
  double turn = 0;
  for (size_t i = 0; i < unrolled.size(); ++i) {
    const GeoPlace& place = unrolled[i];
    // A step is at most half a turn, so it crosses one border at most.
    const double way = place.lon > EastOf(turn) ? 1 : place.lon < WestOf(turn) ? -1 : 0;
    if (way != 0) {
      const double edge = way > 0 ? EastOf(turn) : WestOf(turn);
      const GeoPlace border = PlaceAt(unrolled[i - 1], place, edge);
      Append(parts.back(), {way * HalfTurn, border.lat, border.altitude});
      turn += way;
      parts.push_back({{-way * HalfTurn, border.lat, border.altitude}});
    }
    Append(parts.back(), {place.lon - turn * FullTurn, place.lat, place.altitude});
  }
  std::erase_if(parts, [](const GeoPath& part) { return part.size() < 2; });
  return parts;
}

/// The part of a ring on one side of a meridian.
/// \param side  1 for the east of it, -1 for the west
GeoPath ClipRing(const GeoPath& ring, double meridian, double side) {
  GeoPath clipped;
  for (size_t i = 0; i < ring.size(); ++i) {
    const GeoPlace& from = ring[i];
    const GeoPlace& to = ring[i + 1 < ring.size() ? i + 1 : 0];
    const bool fromInside = side * (from.lon - meridian) >= 0;
    const bool toInside = side * (to.lon - meridian) >= 0;
    if (fromInside) Append(clipped, from);
    if (fromInside != toInside) Append(clipped, PlaceAt(from, to, meridian));
  }
  while (clipped.size() > 1 && clipped.front() == clipped.back()) clipped.pop_back();
  return clipped;
}

/// \return twice the area in square degrees, positive for an anticlockwise ring
double DirectedArea(const GeoPath& ring) {
  const GeoPlace& origin = ring.front();
  double sum = 0;
  for (size_t i = 0; i + 1 < ring.size(); ++i) {
    sum += (ring[i].lon - origin.lon) * (ring[i + 1].lat - origin.lat) -
           (ring[i + 1].lon - origin.lon) * (ring[i].lat - origin.lat);
  }
  return sum;
}

/// \return the place of a ring that is farthest from its front
const GeoPlace& FarthestFromFront(const GeoPath& ring) {
  const auto distance = [&](const GeoPlace& place) {
    return std::hypot(place.lon - ring.front().lon, place.lat - ring.front().lat);
  };
  return *std::max_element(ring.begin(), ring.end(), [&](const GeoPlace& a, const GeoPlace& b) {
    return distance(a) < distance(b);
  });
}

/// The two ends of a ring whose places all lie on one line, up to rounding.
/// \param unrolled  at least two different places
/// \return nothing for any other ring
std::optional<GeoPath> EndsOfLine(const GeoPath& unrolled) {
  constexpr double Rounding = 1e-9;  // width of the ring, of its length
  const GeoPlace& front = unrolled.front();
  const GeoPlace& end = FarthestFromFront(unrolled);
  const double dLon = end.lon - front.lon;
  const double dLat = end.lat - front.lat;
  const double length2 = dLon * dLon + dLat * dLat;
  GeoPlace ends[2] = {front, end};
  double least = 0;
  for (const GeoPlace& place : unrolled) {
    const double lon = place.lon - front.lon;
    const double lat = place.lat - front.lat;
    if (std::fabs(lon * dLat - lat * dLon) > Rounding * length2) return std::nullopt;
    const double along = lon * dLon + lat * dLat;
    if (along >= least) continue;
    least = along;
    ends[0] = place;
  }
  return GeoPath{ends[0], ends[1]};
}

GeoPath ClosedRing(GeoPath ring) {
  if (DirectedArea(ring) < 0) std::reverse(ring.begin() + 1, ring.end());
  ring.push_back(ring.front());
  return ring;
}

/// True for an open unrolled ring that does not close on its own side of the earth.
bool GoesRoundEarth(const GeoPath& unrolled) {
  return std::fabs(unrolled.back().lon - unrolled.front().lon) > HalfTurn;
}

/// Cuts an open unrolled ring into its turns. \return nothing if it goes round the earth
std::optional<std::vector<GeoPath>> CutRing(const GeoPath& unrolled) {
  if (GoesRoundEarth(unrolled)) return std::nullopt;
  const auto [west, east] =
      std::minmax_element(unrolled.begin(), unrolled.end(),
                          [](const GeoPlace& a, const GeoPlace& b) { return a.lon < b.lon; });
  const double first = std::floor((west->lon + HalfTurn) / FullTurn);
  const double last = std::floor((east->lon + HalfTurn) / FullTurn);
  if (last - first >= MostTurnsOfArea) return std::nullopt;
  std::vector<GeoPath> rings;
  for (int i = 0; i <= static_cast<int>(last - first); ++i) {
    const double turn = first + i;
    GeoPath part = ClipRing(ClipRing(unrolled, WestOf(turn), 1), EastOf(turn), -1);
    // A ring that only touches the meridian has no part beyond it.
    if (part.size() < 3 || DirectedArea(part) == 0) continue;
    for (GeoPlace& place : part) place.lon -= turn * FullTurn;
    rings.push_back(ClosedRing(std::move(part)));
  }
  if (rings.empty()) return std::nullopt;
  return rings;
}

/// Joins the parts of rings on one side of a meridian: where one leaves that side, the border of the
/// area goes along the meridian to where the next one comes back.
class RingClip {
 public:
  /// \param side  1 for the east of the meridian, -1 for the west
  RingClip(double meridian, double side) : meridian_(meridian), side_(side) {}

  void Add(const GeoPath& ring) {
    if (ring.empty()) return;
    const size_t size = ring.size();
    size_t start = 0;
    while (start < size && !Enters(ring[start], ring[(start + 1) % size])) ++start;
    if (start == size) {
      if (IsInside(ring.front())) whole_.push_back(ring);
      return;
    }
    for (size_t i = start; i < start + size; ++i) {
      const GeoPlace& from = ring[i % size];
      const GeoPlace& to = ring[(i + 1) % size];
      if (IsInside(from)) Append(paths_.back(), from);
      if (Enters(from, to)) paths_.emplace_back();
      if (IsInside(from) != IsInside(to)) Append(paths_.back(), PlaceAt(from, to, meridian_));
    }
  }

  /// \return rings with the area to their left, as those that were added have it
  std::vector<GeoPath> Take() {
    // From north to south on the east side, which has the area to the left; and the other way.
    std::multimap<double, size_t, std::greater<>> starts;
    for (size_t i = 0; i < paths_.size(); ++i) starts.emplace(Along(paths_[i].front()), i);
    while (!starts.empty()) {
      const size_t first = starts.begin()->second;
      GeoPath ring;
      for (size_t next = first;;) {
        for (const GeoPlace& place : paths_[next]) Append(ring, place);
        const auto at = starts.lower_bound(Along(paths_[next].back()));
        next = at == starts.end() ? first : at->second;
        starts.erase(at == starts.end() ? starts.begin() : at);
        if (next == first) break;
      }
      whole_.push_back(std::move(ring));
    }
    return std::move(whole_);
  }

 private:
  bool IsInside(const GeoPlace& place) const { return side_ * (place.lon - meridian_) >= 0; }
  bool Enters(const GeoPlace& from, const GeoPlace& to) const {
    return !IsInside(from) && IsInside(to);
  }
  double Along(const GeoPlace& border) const { return side_ * border.lat; }

  double meridian_;
  double side_;
  std::vector<GeoPath> whole_;
  std::vector<GeoPath> paths_;  ///< each from the meridian to the meridian
};

std::vector<GeoPath> ClipRings(const std::vector<GeoPath>& rings, double meridian, double side) {
  RingClip clip(meridian, side);
  for (const GeoPath& ring : rings) clip.Add(ring);
  return clip.Take();
}

/// Adds a ring to the shape, if it is an outer one, or to the holes.
void AddRing(GeoPath ring, GeoShape& shape, std::vector<GeoPath>& holes) {
  while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
  if (ring.size() < 3) return;
  const double area = DirectedArea(ring);
  if (area == 0) return;
  ring.push_back(ring.front());
  (area > 0 ? shape.parts : holes).push_back(std::move(ring));
}

/// \param ring  closed
bool IsWithin(const GeoPlace& place, const GeoPath& ring) {
  bool within = false;
  for (size_t i = 0; i + 1 < ring.size(); ++i) {
    const GeoPlace& a = ring[i];
    const GeoPlace& b = ring[i + 1];
    if ((a.lat > place.lat) == (b.lat > place.lat)) continue;
    const double share = (place.lat - a.lat) / (b.lat - a.lat);
    if (place.lon < a.lon + share * (b.lon - a.lon)) within = !within;
  }
  return within;
}

/// Gives a hole to the smallest part around it.
void PlaceHole(GeoPath hole, GeoShape& shape) {
  std::optional<size_t> around;
  for (size_t i = 0; i < shape.parts.size(); ++i) {
    if (!IsWithin(hole.front(), shape.parts[i])) continue;
    if (!around || DirectedArea(shape.parts[i]) < DirectedArea(shape.parts[*around])) around = i;
  }
  if (!around) return;
  shape.holes.resize(shape.parts.size());
  shape.holes[*around].push_back(std::move(hole));
}

GeoPlace PlaceOf(const LatLon& place) {
  GeoPlace made{place.lon, place.lat};
  if (HasAltitude(place.altitude)) made.altitude = double{place.altitude};
  return made;
}

GeoShape PointOf(GeoPlace place) {
  place.lon = WithinTurn(place.lon);
  return {GeoKind::Point, {{place}}, {}};
}

void PutPlace(JsonWriter& json, const GeoPlace& place) {
  json.BeginArray();
  json.Number(place.lon);
  json.Number(place.lat);
  json.EndArray();
}

void PutPath(JsonWriter& json, const GeoPath& path) {
  json.BeginArray();
  for (const GeoPlace& place : path) PutPlace(json, place);
  json.EndArray();
}

/// The rings of a polygon: the outer one and its holes.
void PutRings(JsonWriter& json, const GeoPath& ring, const std::vector<GeoPath>* holes) {
  json.BeginArray();
  PutPath(json, ring);
  for (size_t i = 0; holes != nullptr && i < holes->size(); ++i) PutPath(json, (*holes)[i]);
  json.EndArray();
}

void PutCoordinates(JsonWriter& json, const GeoShape& shape) {
  const bool several = shape.parts.size() > 1;
  if (several) json.BeginArray();
  for (size_t i = 0; i < shape.parts.size(); ++i) {
    const GeoPath& part = shape.parts[i];
    if (shape.kind == GeoKind::Point) PutPlace(json, part.front());
    if (shape.kind == GeoKind::Line) PutPath(json, part);
    if (shape.kind == GeoKind::Area) {
      PutRings(json, part, i < shape.holes.size() ? &shape.holes[i] : nullptr);
    }
  }
  if (several) json.EndArray();
}

const char* TypeOf(const GeoShape& shape) {
  const bool several = shape.parts.size() > 1;
  if (shape.kind == GeoKind::Point) return "Point";
  if (shape.kind == GeoKind::Line) return several ? "MultiLineString" : "LineString";
  return several ? "MultiPolygon" : "Polygon";
}

}  // namespace

bool IsOnEarth(const LatLon& place) {
  return std::isfinite(place.lon) && std::fabs(place.lat) <= 90;
}

GeoPath PathOf(PointSpan points) {
  GeoPath path;
  path.reserve(points.size());
  for (const Point* point : points) {
    if (IsOnEarth(point->geo)) path.push_back(PlaceOf(point->geo));
  }
  return path;
}

GeoPath PathOf(const std::vector<LatLon>& places) {
  GeoPath path;
  path.reserve(places.size());
  for (const LatLon& place : places) {
    if (IsOnEarth(place)) path.push_back(PlaceOf(place));
  }
  return path;
}

GeoShape PointShape(const LatLon& place) {
  if (!IsOnEarth(place)) return {};
  return PointOf(PlaceOf(place));
}

GeoShape LineShape(const GeoPath& path) {
  if (path.empty()) return {};
  if (path.size() == 1) return PointOf(path[0]);
  if (StaysWithinTurn(path)) return {GeoKind::Line, {path}, {}};
  std::vector<GeoPath> parts = CutLine(Unrolled(path));
  if (parts.empty()) return PointOf(path[0]);
  return {GeoKind::Line, std::move(parts), {}};
}

GeoShape AreaShape(GeoPath ring) {
  ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
  while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
  if (ring.size() < 3) return LineShape(ring);
  const GeoPath unrolled = Unrolled(ring);
  if (!GoesRoundEarth(unrolled)) {
    if (const auto ends = EndsOfLine(unrolled)) return LineShape(*ends);
  }
  GeoPath closed = ring;
  closed.push_back(ring.front());
  if (!StaysWithinTurn(closed)) {
    if (auto rings = CutRing(unrolled)) return {GeoKind::Area, std::move(*rings), {}};
    for (GeoPlace& place : ring) place.lon = WithinTurn(place.lon);
  }
  return {GeoKind::Area, {ClosedRing(std::move(ring))}, {}};
}

GeoShape OutlineShape(const std::vector<GeoPath>& rings) {
  double west = 0;
  double east = 0;
  for (const GeoPath& ring : rings) {
    for (const GeoPlace& place : ring) {
      west = std::min(west, place.lon);
      east = std::max(east, place.lon);
    }
  }
  const double first = std::floor((west + HalfTurn) / FullTurn);
  const double last = std::floor((east + HalfTurn) / FullTurn);
  const bool isCut = last - first < MostTurnsOfArea;
  GeoShape shape{GeoKind::Area, {}, {}};
  std::vector<GeoPath> holes;
  for (int i = 0; isCut && i <= static_cast<int>(last - first); ++i) {
    const double turn = first + i;
    for (GeoPath& ring : ClipRings(ClipRings(rings, WestOf(turn), 1), EastOf(turn), -1)) {
      for (GeoPlace& place : ring) place.lon -= turn * FullTurn;
      AddRing(std::move(ring), shape, holes);
    }
  }
  for (GeoPath ring : isCut ? std::vector<GeoPath>() : rings) {
    for (GeoPlace& place : ring) place.lon = WithinTurn(place.lon);
    AddRing(std::move(ring), shape, holes);
  }
  if (shape.parts.empty()) return {};
  for (GeoPath& hole : holes) PlaceHole(std::move(hole), shape);
  return shape;
}

void PutGeometry(JsonWriter& json, const GeoShape& shape) {
  if (shape.kind == GeoKind::None) {
    json.Null();
    return;
  }
  json.BeginObject();
  json.Key("type");
  json.Text(TypeOf(shape));
  json.Key("coordinates");
  PutCoordinates(json, shape);
  json.EndObject();
}

}  // namespace orvane
