#pragma once

#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <cstdio>
#include <string>
#include <vector>

namespace orvane {

/// A stop of a follow, at metres from the middle of the site.
struct Stop {
  double north = 0;
  double east = 0;
  int time = 0;      ///< minutes after midnight
  int duration = 0;  ///< minutes
  int sm1 = 0;
  int sm2 = 0;
  int sm3 = 0;
};

/// A map with follows and ranges, made by hand about a place near the equator.
struct RangeCase {
  static constexpr double MiddleLat = 1;   // degrees
  static constexpr double MiddleLon = 30;  // degrees

  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "case.map");

  /// A placed point that is in no list of the map.
  Point& At(const std::string& name, double north, double east) {
    Point& point = MakePoint(map, name);
    point.geo = {MiddleLat, MiddleLon, NoAltitude};
    AddMeters(point.geo, north, east);
    point.projected = LatLonToMeters(point.geo.lat, point.geo.lon);
    point.flags |= PointPlaced;
    return point;
  }
  /// A placed point that the map knows by its name.
  Point& Named(const std::string& name, double north, double east) {
    Point& point = At(name, north, east);
    AddPointName(map, point, name);
    return point;
  }

  /// A follow after the others. Its points are named by their times.
  Trail& AddFollow(const std::string& type, PackedDate date, const std::vector<Stop>& stops) {
    Trail& trail = AddTrail(type);
    trail.date = date;
    for (const Stop& stop : stops) {
      char name[16];
      std::snprintf(name, sizeof name, "%02d%02d", stop.time / 60 % 100, stop.time % 60);
      Point& point = At(name, stop.north, stop.east);
      point.timeOfDay = stop.time;
      point.duration = stop.duration;
      point.sm[0] = stop.sm1;
      point.sm[1] = stop.sm2;
      point.sm[2] = stop.sm3;
      point.trail = &trail;
      trail.points.push_back(&point);
    }
    return trail;
  }
  /// An empty trail after the others.
  Trail& AddTrail(const std::string& type) {
    auto last = map.trails.before_begin();
    while (std::next(last) != map.trails.end()) ++last;
    Trail& trail = *map.trails.insert_after(last, Trail{});
    trail.type = type;
    return trail;
  }

  /// A range after the others.
  Range& AddRange(const std::string& name, const std::vector<SearchKey>& keys) {
    auto last = map.ranges.before_begin();
    while (std::next(last) != map.ranges.end()) ++last;
    Range& range = *map.ranges.emplace_after(last);
    range.name = name;
    range.keys.assign(keys.begin(), keys.end());
    return range;
  }
  /// A range of all follows of a type.
  Range& AddRangeOf(const std::string& type) { return AddRange(type, {KeyOf(type)}); }
  static SearchKey KeyOf(const std::string& type) {
    SearchKey key;
    key.type = type;
    return key;
  }
  static SearchKey KeyOf(const std::string& type, int timeFrom, int timeTo) {
    SearchKey key = KeyOf(type);
    key.timeFrom = timeFrom;
    key.timeTo = timeTo;
    return key;
  }

  /// A grid whose corner is at metres from the middle.
  Grid& AddGrid(int cellSize, double north, double east) {
    Grid& grid = map.grids.emplace_front();
    grid.corner = &At("Corner", north, east);
    grid.cellSize = cellSize;
    grid.rows = 10;
    grid.columns = 10;
    return grid;
  }

  /// Stops of `minutes` each at the corners of a square, and one in its middle; a follow.
  Trail& AddSquare(const std::string& type, double south, double west, double size,
                   int minutes = 10) {
    return AddFollow(type, 0,
                     {{south, west, 480, minutes, 1, 0, 0},
                      {south + size, west, 500, minutes, 1, 0, 0},
                      {south + size, west + size, 520, minutes, 1, 0, 0},
                      {south, west + size, 540, minutes, 1, 0, 0},
                      {south + size / 2, west + size / 2, 560, minutes, 1, 0, 0}});
  }

  static std::vector<std::string> NamesOf(const std::vector<Point*>& points) {
    std::vector<std::string> names;
    for (const Point* point : points) names.push_back(point->name);
    return names;
  }
  std::vector<std::string> Said() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
};

}  // namespace orvane
