#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands of the menu "Help", and makes F1 open the help everywhere.
void PlugHelpCommands(Shell& shell);

}  // namespace orvane
