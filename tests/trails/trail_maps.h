#pragma once

#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace orvane::test {

/// A map with what it needs, for tests that build their trails by hand.
struct TrailMap {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "test.map");

  /// A placed point at metres from latitude 0, longitude 30.
  Point& At(const std::string& name, double north, double east, float altitude = NoAltitude) {
    Point& point = MakePoint(map, name);
    point.geo = {0, 30, altitude};
    AddMeters(point.geo, north, east);
    point.geo.altitude = altitude;
    point.projected = LatLonToMeters(point.geo.lat, point.geo.lon);
    point.flags |= PointPlaced;
    return point;
  }

  /// A placed point at a place that does not matter.
  Point& Named(const std::string& name, std::initializer_list<std::string> synonyms = {}) {
    Point& point = At(name, 0, 0);
    point.synonyms.assign(synonyms);
    return point;
  }

  /// Adds a trail after the others; with an empty name it is nameless.
  Trail& AddTrail(const std::string& name, std::vector<Point*> points) {
    auto last = map.trails.before_begin();
    while (std::next(last) != map.trails.end()) ++last;
    Trail& trail = *map.trails.insert_after(last, Trail{});
    if (!name.empty()) trail.name = name;
    trail.points = std::move(points);
    return trail;
  }

  /// A trail of points with these names.
  Trail& AddNames(const std::string& name, std::initializer_list<std::string> names) {
    std::vector<Point*> points;
    for (const std::string& each : names) points.push_back(&Named(each));
    return AddTrail(name, points);
  }

  /// The texts of all messages so far.
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const RecordedMessages::Entry& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
};

inline std::vector<std::string> NamesOf(const Trail& trail) {
  std::vector<std::string> names;
  for (const Point* point : trail.points) names.push_back(point->name);
  return names;
}

/// Metres north and east of latitude 0, longitude 30.
inline Meters OffsetOf(const LatLon& place) { return LatLonToMeters(place.lat, place.lon - 30); }

}  // namespace orvane::test
