#include "elevation/contours_lines.h"

#include "base/number_text.h"
#include "geo/earth.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace orvane {

namespace {

constexpr size_t LevelWidth = 4;

/// "Contour %4.0f"
std::string ContourType(float level) {
  std::string number = FormatFixed(static_cast<double>(level), 0);
  number.insert(0, LevelWidth - std::min(number.size(), LevelWidth), ' ');
  return "Contour " + number;
}

/// A vertex has plain metres too, from the meridian of 0: `projected` is where a trail's points
/// are until something measures them.
Point& MakeVertex(const LatLon& place, ScratchPoints& store) {
  Point& point = store.Make(LatLonToMeters(place.lat, place.lon));
  point.flags |= PointPlaced;
  point.geo = place;
  return point;
}

void MakeContourTrail(const ContourLine& line, int number, std::forward_list<Trail>& trails,
                      ScratchPoints& store) {
  Trail& trail = trails.emplace_front();
  trail.points.reserve(line.vertices.size() + (line.closed ? 1 : 0));
  for (const LatLon& place : line.vertices) trail.points.push_back(&MakeVertex(place, store));
  if (line.closed) trail.points.push_back(trail.points.front());
  trail.flags = TrailContour;
  trail.type = ContourType(line.level);
  trail.name = trail.type + " #" + std::to_string(number);
  trail.color = NoColor;
  trail.groupSize = 0;
}

}  // namespace

void MakeContourTrails(const std::vector<ContourLine>& lines, std::map<double, int>& counts,
                       std::forward_list<Trail>& trails, ScratchPoints& store) {
  for (const ContourLine& line : lines) {
    const int number = ++counts[static_cast<double>(line.level)];
    MakeContourTrail(line, number, trails, store);
  }
}

}  // namespace orvane
