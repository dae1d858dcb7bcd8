#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// The points of a map that are in one of its lists or found by a name, each once, in the order of
/// the store. The store also has points that an edit removed: reports on a map leave them out.
std::vector<const Point*> ListedPoints(const Map& map);

}  // namespace orvane
