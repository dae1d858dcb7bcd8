#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// Which open maps are the basis of others. A basis chain never has a map twice.

/// \return true if `map` is `other` or has it in its basis chain
bool RestsOn(const Map& map, const Map& other);

/// The open maps that have `map` in their basis chain, without itself.
/// \return those with the fewest steps to `map` first; at one distance the newest first
std::vector<Map*> MapsBasedOn(const Map& map);

}  // namespace orvane
