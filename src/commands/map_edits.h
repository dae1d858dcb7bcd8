#pragma once

#include "editing/edit_history.h"

#include <optional>

namespace orvane {

/// The edits that the menu makes without an editor.

/// Gives a map another magnetic deviation, in degrees. Positions stay: the map is solved again only
/// where the survey changes.
Edit DeviationEdit(Map& map, double deviation);

/// Lets a map rest on another one. The map is neither marked as changed nor solved. The edit gives up
/// if `basis` rests on `map`.
Edit BasisEdit(Map& map, Map& basis);

}  // namespace orvane
