#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands of the menu "Help", and lets F1 lead to the help from everywhere.
void PlugHelpCommands(Shell& shell);

}  // namespace orvane
