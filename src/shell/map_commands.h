#pragma once

namespace orvane {

class Shell;

/// Plugs in the commands that work on a map: add, check, the magnetic deviation.
void PlugMapCommands(Shell& shell);

}  // namespace orvane
