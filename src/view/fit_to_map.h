#pragma once

namespace orvane {

struct Map;
struct MapWindow;

/// \return true if the map or a map of its basis chain has a point that can be shown
bool HasDrawablePoints(const Map& map);

/// Sets scale and centre so that every placed point of the map and its basis chain shows, with a
/// margin of a twentieth of their extent at each side. The rotation of the view is kept and taken
/// into account. Points at both sides of the 180th meridian are shown across it where that takes
/// less room. A map without placed points leaves the view as it is.
void FitToMap(MapWindow& view);

}  // namespace orvane
