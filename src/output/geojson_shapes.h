#pragma once

#include "geo/positions.h"
#include "geometry/poly.h"
#include "output/json_writer.h"

#include <vector>

namespace orvane {

/// Geometry as GeoJSON (RFC 7946) has it: positions are longitude, latitude in degrees of WGS 84; a
/// ring is closed and runs anticlockwise; what crosses the 180th meridian is cut there into parts;
/// longitudes lie within -180 to 180.

struct GeoPlace {
  double lon = 0;  ///< degrees
  double lat = 0;  ///< degrees

  bool operator==(const GeoPlace&) const = default;
};

using GeoPath = std::vector<GeoPlace>;

enum class GeoKind { None, Point, Line, Area };

/// One geometry.
struct GeoShape {
  GeoKind kind = GeoKind::None;
  std::vector<GeoPath> parts;  ///< the place alone; the lines; the rings, each closed
};

/// \return true for a place whose numbers are finite and whose latitude lies between the poles
bool IsOnEarth(const LatLon& place);

/// The places of points, in their order. Left out are those that are not on earth.
GeoPath PathOf(PointSpan points);

/// \return no shape for a place that is not on earth
GeoShape PointShape(const LatLon& place);

/// A line along places. One place alone gives a point, none no shape. A step of more than 180
/// degrees of longitude is taken to go the other way round the earth.
GeoShape LineShape(const GeoPath& path);

/// The area within a ring, closed or not, of either direction. A ring whose places lie on one line
/// gives that line from end to end; one place gives a point.
GeoShape AreaShape(GeoPath ring);

/// Writes it as a geometry object, or null.
void PutGeometry(JsonWriter& json, const GeoShape& shape);

}  // namespace orvane
