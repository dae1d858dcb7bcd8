#include "reports/profile_choice.h"

#include "base/messages.h"
#include "model/workspace.h"

#include <algorithm>

namespace orvane {

namespace {

/// \return the trail of the first selected row, or of the first row below it that has one; null for
///         none
const Trail* SelectedTrail(std::list<TrailPanelRow>& rows) {
  const std::vector<TrailPanelRow*> all = TrailRowsInOrder(rows);
  const auto selected =
      std::find_if(all.begin(), all.end(), [](const TrailPanelRow* row) { return row->selected; });
  if (selected == all.end()) return nullptr;
  const TrailPanelRow* row = *selected;
  while (row->trail == nullptr && !row->children.empty()) row = &row->children.front();
  return row->trail;
}

}  // namespace

std::optional<ElevationView> OpenSelectedProfile(MapWindow& view) {
  const Trail* trail = SelectedTrail(view.trailViews);
  if (trail != nullptr) return OpenElevation(*view.map, *trail);
  RefuseProfile(view);
  return std::nullopt;
}

void RefuseProfile(const MapWindow& view) {
  NoteError(view.map->workspace->messages, "Please specify a trail or transect first");
}

std::optional<ElevationView> OpenDraggedTransect(MapWindow& view) {
  view.transectMode = false;
  return OpenTransect(*view.map, view.selection[0], view.selection[1]);
}

}  // namespace orvane
