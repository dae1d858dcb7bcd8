#pragma once

#include <string>

namespace orvane {

class Shell;

/// Sets the directory of the shell's own files and makes it if it is missing. The shell reads the
/// preferences there when it starts and writes them when it ends.
void PlugPreferences(Shell& shell, const std::string& directory);

/// Calls `PlugPreferences` with the directory that the environment gives (`DefaultDirectory`). If
/// `ORVANE_HOME` names it, file dialogs begin there too.
void PlugDefaultPreferences(Shell& shell);

}  // namespace orvane
