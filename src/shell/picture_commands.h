#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands that make a picture of the map: copying it and saving it.
void PlugPictureCommands(Shell& shell);

}  // namespace orvane
