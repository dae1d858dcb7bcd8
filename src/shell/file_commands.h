#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands of the menu "File" except printing and imports: open, save, close, exit.
void PlugFileCommands(Shell& shell);

}  // namespace orvane
