#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands of the menu "File" except printing: open, save, import, close, exit.
void PlugFileCommands(Shell& shell);

}  // namespace orvane
