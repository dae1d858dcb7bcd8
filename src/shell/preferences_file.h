#pragma once

#include "shell/keepers.h"

#include <string>

namespace orvane {

class Shell;

/// Keeps the preferences in a file of the program's own directory. Reading them opens the maps that
/// the file names, but for the last one.
class PreferencesFile final : public PreferencesKeeper {
 public:
  /// \param shell  must outlive this
  PreferencesFile(Shell& shell, const std::string& directory);

  std::string Read() override;
  void Write() override;

 private:
  Shell& shell_;
  std::string path_;
};

}  // namespace orvane
