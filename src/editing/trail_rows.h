#pragma once

#include "geo/positions.h"
#include "model/records.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// A point's own mark on the map.
struct OwnMark {
  std::uint8_t shape = PointMarkNone;
  bool filled = false;
  int size = 0;
};

OwnMark MarkOf(const Point& point);
void GiveMark(const OwnMark& mark, Point& point);

/// One row of the trail editor's table: a reading of a point, or a visit without one.
struct TrailRow {
  LatLon gps;              ///< the fix of a GPS row
  double bearing = 0;      ///< degrees from the point to `basePoint`, as in a compass reading
  double distance = 0;     ///< metres along the slope
  double inclination = 0;  ///< degrees
  std::optional<std::string> nearName;   ///< of a near reading: the text that names the place
  int altitude = -9999;                  ///< metres; -9999 for none
  int weight = 0;                        ///< readings averaged; 0 counts as 1
  bool isGps = false;                    ///< holds a fix
  bool isAltitude = false;               ///< holds an altitude by itself
  bool isAbsolute = false;               ///< the bearing is true, without magnetic deviation
  bool showsNear = false;                ///< the Point cell shows `nearName`
  bool isRepeat = false;                 ///< a visit that holds no reading of its own
  std::array<int, 3> sm{};               ///< 16 bits each
  std::string name;                      ///< name or time of the point; "A=B" declares synonyms
  std::optional<std::string> comment;    ///< goes into the point's note
  double scale = 0;                      ///< metres per pixel, `Point::labelLimit`; 0 for none
  std::optional<std::string> basePoint;  ///< of a compass row: the name of the other end
  OwnMark mark;                          ///< of a nameless point; those of others go by their names
};

/// `TrailRow::altitude` of a row without one.
constexpr int NoRowAltitude = -9999;

/// \return an altitude cut to whole metres, within a thousand million; `NoRowAltitude` for none and
///         for what is not a number
int WholeMeters(float altitude);

/// \return true for a row that adds its point to the trail and makes no reading
bool IsVisit(const TrailRow& row);

/// \return true for a row that makes a point or a reading; a visit without a name makes neither
bool IsKept(const TrailRow& row);

/// \return true for a row that loses something if it is not kept: it is of a point of the map, or
///         something was typed into it
bool HoldsAnything(const TrailRow& row);

/// The rows of a trail: one for each reading, those of one point newest first, and one for a point
/// without readings. Where the trail returns to a point, its row has only the name. A
/// vertex of a contour has a row with its place.
/// Uses the mark `PointVisited`.
std::vector<TrailRow> LoadTrailRows(const Trail& trail);

}  // namespace orvane
