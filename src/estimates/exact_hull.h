#pragma once

#include <span>
#include <vector>

namespace orvane {

/// A place in the plane of a range, in metres.
struct PlanePlace {
  double north = 0;
  double east = 0;

  friend bool operator==(const PlanePlace&, const PlanePlace&) = default;
};

/// Reduces places to the corners of their convex hull, counterclockwise as seen with north up and
/// east to the left. Every place is inside it or on it: unlike `ConvexHull` no place is left out.
/// \param places  in any order, repeats allowed
void ReduceToHull(std::vector<PlanePlace>& places);

/// \param corners  as `ReduceToHull` leaves them
/// \return square metres; 0 for fewer than three places and for places on one line, which is a hull
///         less than ten nanometres wide
double HullArea(std::span<const PlanePlace> corners);

}  // namespace orvane
