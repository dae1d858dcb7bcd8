#pragma once

#include "model/map.h"

#include <string>

namespace orvane {

class Shell;

/// Ends an import: posts the sentence on what was done as a note, unless it is empty, and puts the
/// whole map in view in its windows if the map had no places before.
/// \param wasEmpty  `!HasDrawablePoints` before the import
void ShowImported(Shell& shell, Map& map, bool wasEmpty, const std::string& sentence);

}  // namespace orvane
