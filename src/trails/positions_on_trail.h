#pragma once

#include "geo/positions.h"
#include "model/map.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvane {

/// Surveyors name the points of a trail by its metres: Pde120 or Pde120m on the trail Pde. Here
/// such names are read, and a mark that no point stands at is found between its neighbours.
/// Numbers are whole and are held within 32 bits; one that is larger becomes the largest.

/// Where the number begins at the end of a name: its last digits, with a "-" in front and an "m"
/// or "M" behind if they are there. In Pdem it is the "m" alone, which counts as 0.
/// \return nothing if the name has no such number or nothing stands before it
std::optional<size_t> TrailNumberStart(std::string_view name);

/// \param text  what stands from `TrailNumberStart` on
/// \return its value, sign included; 0 if no digit stands there
int TrailNumberValue(std::string_view text);

/// The number that a name gives on a trail, whose name must stand before it, without regard to
/// case; on a trail whose name ends in "'" the name without it will do. A "-" is read as a
/// separator here: Pde-20 is 20, where `TrailNumberText` gives the text of -20.
/// \return -1 if the name gives none, or if the trail has no name
int PointNumberOnTrail(const Trail& trail, std::string_view name);

/// The text of the number in the point's name, or else in the first of its synonyms that fits.
/// The trail's name must stand before it exactly, with regard to case.
/// \return a view into that name; nothing if none fits, or if the trail has no name
std::optional<std::string_view> TrailNumberText(const Trail& trail, const Point& point);

/// \return the first synonym that is wholly a number, or null; the point's own name never counts
const std::string* PointNumericSynonym(const Point& point);

/// \return the trail named `trailName` (at most 97 bytes of it) with "'" behind, in the map or its
///         basis chain; null if there is none
Trail* FindPrimeTrail(Map& map, std::string_view trailName);

/// \return true if `name` ends in a number after the name of a trail, or of one with "'" added: only
///         then does `PositionOnTrail` look at any point
bool IsMarkOfTrail(Map& map, std::string_view name);

/// The place of a metre mark, such as Pde135, whether or not a point bears it. Between two marks
/// their numbers count as fractions of the measured path between them; before the first and
/// behind the last mark numbers are metres. A trail may go on in a second one of the same name
/// with "'" behind.
/// \param name     trail name and number
/// \param bearing  if not null, receives the direction of the trail there in radians, clockwise
///                 from north, or 0 if the trail ends there. Not written if the name holds no
///                 trail and number
/// \return nothing if the name is no such mark, if the trail does not reach it, or if a point that
///         it would be computed from is not placed. The trail's points may then stand in a plane
///         of their own all the same
std::optional<LatLon> PositionOnTrail(Map& map, std::string_view name, double* bearing = nullptr);

}  // namespace orvane
