#pragma once

#include "elevation/profile.h"
#include "view/map_window.h"

#include <optional>

namespace orvane {

/// What the profile of a map window is made of.

/// The profile of the trail that is selected in the pane; of a group, that of the first trail below
/// it. Of several selected rows the first counts.
/// \return nothing, after a message, if no trail is selected, or one of fewer than two points
std::optional<ElevationView> OpenSelectedProfile(MapWindow& view);

/// The message that there is nothing to show a profile of.
void RefuseProfile(const MapWindow& view);

/// The profile of the transect that was dragged across the map: along `selection`, from the press
/// of the button to its release. Ends the transect mode of the view.
/// \return nothing, after a message, if the map has no altitude
std::optional<ElevationView> OpenDraggedTransect(MapWindow& view);

}  // namespace orvane
