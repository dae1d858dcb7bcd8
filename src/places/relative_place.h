#pragma once

#include "model/map.h"
#include "places/lookup.h"

#include <optional>
#include <string_view>

namespace orvane {

/// Reads "20m east of Camp", "5 meters left of Main306": a number, a unit of metres, a direction,
/// "of", and a metre mark on a trail or a point. Right and left depend on the direction of travel
/// there, so they need a metre mark.
std::optional<LatLon> ResolveRelativePlace(Lookup& lookup, std::string_view text);

/// Reads "From a to b along t by n" and "From a to b along t via c and u by n": the place at a
/// distance of n metres, or at the fraction n/m, of the way from point a along trail t (to point
/// c and from there along trail u) to point b.
std::optional<LatLon> ResolveAlongTrail(Lookup& lookup, std::string_view text);

}  // namespace orvane
