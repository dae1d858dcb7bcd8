#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands that hand a picture of the map to other programs.
void PlugPictureCommands(Shell& shell);

}  // namespace orvane
