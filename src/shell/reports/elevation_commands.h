#pragma once

namespace orvane {

class MapWindowWidget;
class Shell;

/// Plugs in the command that opens a profile: that of the selected trail if the list of trails has
/// the keyboard; in the map the user is asked to drag out a transect.
void PlugElevation(Shell& shell);

/// Opens the profile of the transect that was just dragged across a map.
void OpenTransectProfile(Shell& shell, MapWindowWidget& window);

}  // namespace orvane
