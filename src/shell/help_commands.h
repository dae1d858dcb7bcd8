#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands of the menu "Help" that need no help file.
void PlugHelpCommands(Shell& shell);

}  // namespace orvane
