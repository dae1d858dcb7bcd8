#pragma once

namespace orvane {

class Shell;

/// Plugs in Undo, Redo and the command that deletes trails or ranges.
void PlugUndoCommands(Shell& shell);

}  // namespace orvane
