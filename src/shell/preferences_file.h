#pragma once

#include <string>

namespace orvane {

class Shell;

/// Lets a shell keep its own files in a directory, which is made if it is missing, and lets it read
/// the preferences there when it starts and write them when it ends.
void PlugPreferences(Shell& shell, const std::string& directory);

/// Finds the directory by the environment and `PlugPreferences` with it; see `DefaultDirectory`.
/// One that is named by `ORVANE_HOME` is also where file dialogs begin.
void PlugDefaultPreferences(Shell& shell);

}  // namespace orvane
