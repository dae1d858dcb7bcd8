#pragma once

#include "geo/positions.h"
#include "model/map.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvane {

/// Surveyors name the points of a trail by metres: Pde120 or Pde120m on the trail Pde. These
/// functions read such names, and find a mark without a point between its neighbours. Numbers are
/// whole and limited to 32 bits; a larger one becomes the largest.

/// The position of the number at the end of a name: its last digits, with a preceding "-" and a
/// following "m" or "M" if present. In Pdem it is only the "m", which counts as 0.
/// \return nothing if the name has no such number or nothing before it
std::optional<size_t> TrailNumberStart(std::string_view name);

/// \param text  the name from `TrailNumberStart` on
/// \return its value with its sign; 0 if it has no digit
int TrailNumberValue(std::string_view text);

/// The number that a name gives on a trail. It must follow the trail's name, in any case; on a
/// trail whose name ends in "'", the name without it is accepted too. A "-" is a separator here:
/// Pde-20 is 20, where `TrailNumberText` gives the text of -20.
/// \return -1 if the name gives none, or if the trail has no name
int PointNumberOnTrail(const Trail& trail, std::string_view name);

/// The text of the number in the point's name, or else in its first synonym that fits. It must
/// follow the trail's exact name; case matters.
/// \return a view into that name; nothing if none fits, or if the trail has no name
std::optional<std::string_view> TrailNumberText(const Trail& trail, const Point& point);

/// \return the first synonym that is a number, or null; the point's own name never counts
const std::string* PointNumericSynonym(const Point& point);

/// \return the trail named `trailName` (at most 97 bytes of it) followed by "'", in the map or its
///         basis chain; null if there is none
Trail* FindPrimeTrail(Map& map, std::string_view trailName);

/// \return true if `name` is the name of a trail, or of one with "'" added, and a number: only then
///         does `PositionOnTrail` look at any point
bool IsMarkOfTrail(Map& map, std::string_view name);

/// The place of a metre mark, such as Pde135, with or without a point of that name. Between two
/// marks their numbers count as fractions of the measured path between them; before the first and
/// after the last mark numbers are metres. A trail may continue in a second one of the same name
/// followed by "'".
/// \param name     trail name and number
/// \param bearing  if not null, receives the direction of the trail there in radians, clockwise
///                 from north, or 0 if the trail ends there. Not written if the name is not a trail
///                 and a number
/// \return nothing if the name is not such a mark, if the trail does not reach it, or if it depends
///         on a point that is not placed. Even then the trail's points may be left in another plane
std::optional<LatLon> PositionOnTrail(Map& map, std::string_view name, double* bearing = nullptr);

}  // namespace orvane
