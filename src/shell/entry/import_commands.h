#pragma once

namespace orvane {

class Shell;

/// Plugs in the imports of the menu "File": follow sheets, other maps, GPS files.
void PlugImportCommands(Shell& shell);

}  // namespace orvane
