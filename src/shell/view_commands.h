#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands that change what a view shows, and European dates.
void PlugViewCommands(Shell& shell);

}  // namespace orvane
