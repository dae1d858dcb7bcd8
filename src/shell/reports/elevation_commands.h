#pragma once

namespace orvane {

class Shell;

/// Plugs in the command that opens a profile: that of the selected trail if the list of trails has
/// the keyboard; in the map the user is asked to drag out a transect, which opens its profile.
void PlugElevation(Shell& shell);

}  // namespace orvane
