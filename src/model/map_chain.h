#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// How open maps rest on each other. A basis chain never holds a map twice.

/// \return true if `map` is `other` or rests on it, directly or through other maps
bool RestsOn(const Map& map, const Map& other);

/// The open maps that rest on `map`, without itself.
/// \return those with the fewest steps down to `map` first; of one distance the newest first
std::vector<Map*> MapsRestingOn(const Map& map);

}  // namespace orvane
