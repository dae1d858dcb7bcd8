#pragma once

#include "estimates/exact_hull.h"
#include "model/records.h"

#include <span>
#include <vector>

namespace orvane {

/// One element of the points of a range that has a place.
struct RangeFix {
  double lat = 0;      ///< degrees
  double lon = 0;      ///< degrees
  PackedDate day = 0;  ///< of the follow by which it came into the range; 0 for none
};

/// True for a point that counts as a fix: it has a finite place.
bool IsFix(const Point& point);

/// The fixes of a range, in the order of its points; a point that is there twice is two fixes. Fixes
/// of follows without a date and those that came by a template have no day. Points without a finite
/// place are left out.
std::vector<RangeFix> FixesOf(const Range& range);

/// The bounds of fixes, which must not be empty.
GeoBounds BoundsOf(std::span<const RangeFix> fixes);

/// Puts fixes into the plane about the centre of `bounds`, as `ProjectPoints` does.
std::vector<PlanePlace> PlacesInPlane(std::span<const RangeFix> fixes, const GeoBounds& bounds);
/// The inverse of `PlacesInPlane` for one place; no altitude.
LatLon FromPlane(const PlanePlace& place, const GeoBounds& bounds);

}  // namespace orvane
