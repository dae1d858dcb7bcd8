#pragma once

namespace orvane {

class Shell;

/// Makes the command Export work in the windows of the shell.
void PlugExport(Shell& shell);

}  // namespace orvane
