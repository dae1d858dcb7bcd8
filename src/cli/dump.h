#pragma once

#include "cli/line_messages.h"
#include "model/map.h"

#include <ostream>

namespace orvane {

/// Writes the whole solved map as one JSON document and a line feed. Points are
/// numbered in the order in which they first appear: those of the trails, the loose and the
/// nameless ones, the bases of their readings, and the corners of grids. The map stays as it is:
/// trails are measured for the document only.
void DumpMap(const Map& map, const LineMessages& messages, std::ostream& out);

}  // namespace orvane
