#pragma once

#include "formats/layers.h"
#include "geo/positions.h"
#include "geometry/poly.h"
#include "output/json_writer.h"

#include <vector>

namespace orvane {

/// Geometry for GeoJSON (RFC 7946): positions are longitude, latitude in degrees of WGS 84; a ring
/// is closed and anticlockwise, a hole clockwise; shapes that cross the 180th meridian are cut there; longitudes are
/// within -180 to 180. Altitudes of places are kept, and are not part of GeoJSON.

/// \return true if the numbers are finite and the latitude is between the poles
bool IsOnEarth(const LatLon& place);

/// \return the places of points in their order, without those that are not on earth
GeoPath PathOf(PointSpan points);
GeoPath PathOf(const std::vector<LatLon>& places);

/// \return no shape for a place that is not on earth
GeoShape PointShape(const LatLon& place);

/// A line along places. One place gives a point, none gives no shape. A step of more than 180
/// degrees of longitude goes the other way around the earth.
GeoShape LineShape(const GeoPath& path);

/// The area within a ring, closed or not, of either direction. A ring whose places lie on one line
/// gives that line from end to end; one place gives a point.
GeoShape AreaShape(GeoPath ring);

/// The area to the left of rings that neither touch nor cross each other: outer rings go
/// anticlockwise, holes clockwise. Longitudes do not jump; beyond 180 they go on.
GeoShape OutlineShape(const std::vector<GeoPath>& rings);

/// Writes the shape as a geometry object, or null.
void PutGeometry(JsonWriter& json, const GeoShape& shape);

}  // namespace orvane
