#pragma once

#include "editing/edit_history.h"

#include <optional>

namespace orvane {

/// The edits that the menu makes without an editor.

/// Gives a map another magnetic deviation, in degrees. Positions stay: the map is solved again only
/// where the survey changes.
Edit DeviationEdit(Map& map, double deviation);

/// Gives a map another one as its basis. The map is neither marked as changed nor solved. The edit gives up
/// if `map` is in the basis chain of `basis`.
Edit BasisEdit(Map& map, Map& basis);

}  // namespace orvane
