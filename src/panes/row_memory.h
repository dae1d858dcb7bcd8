#pragma once

#include "view/map_window.h"

#include <map>
#include <string>

namespace orvane {

/// What a user did to the rows of a view, so that new rows for a map that was read again get it
/// back. A row is found again by its text and the texts above it; among rows of equal text, by its
/// number.
struct RowMemory {
  /// A row as it was, and as it would have been without the user. Its pointers lead nowhere.
  template <typename Row>
  struct Kept {
    Row was;
    Row untouched;
  };
  std::map<std::string, Kept<TrailPanelRow>> trails;
  std::map<std::string, Kept<RangePanelRow>> ranges;
};

/// Remembers the rows of a view, while the map is still the one they were made for.
RowMemory RememberRows(MapWindow& view);

/// Makes all rows of a view again, for the map as it is now. What was open or selected is so again.
/// Where the user changed the look of a row or whether it is drawn, that stays; otherwise the map
/// decides. What Find showed is over.
void RebuildRows(MapWindow& view, const RowMemory& memory);

}  // namespace orvane
