#pragma once

#include <string>

namespace orvane {

/// Where the program keeps its own files, and where its file dialogs begin.
struct ProgramPlaces {
  std::string ownDirectory;     ///< empty to keep nothing
  std::string dialogDirectory;  ///< empty for the working directory
};

/// The places that the environment gives (`DefaultDirectory`). If `ORVANE_HOME` names the program's
/// own directory, file dialogs begin there too.
ProgramPlaces DefaultPlaces();

}  // namespace orvane
