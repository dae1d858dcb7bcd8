#include "view/find_in_map.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "places/resolve_location.h"
#include "view/view_transform.h"

#include <algorithm>

namespace orvane {

namespace {

void ShowTrail(MapWindow& view, const Trail& trail) {
  view.selectedTrail = &trail;
  view.flags |= MapWindowTrailFlash;
  GeoBounds box;
  bool any = false;
  for (const Point* point : trail.points) {
    if (!IsDrawable(*point)) continue;
    const LatLon& at = point->geo;
    box = any ? GeoBounds{std::min(box.minLat, at.lat), std::max(box.maxLat, at.lat),
                          std::min(box.minLon, at.lon), std::max(box.maxLon, at.lon)}
              : GeoBounds{at.lat, at.lat, at.lon, at.lon};
    any = true;
  }
  if (any) FitToBounds(view, box.maxLat, box.minLat, box.maxLon, box.minLon);
}

void ShowPlace(MapWindow& view, const Location& found) {
  const Point* point = found.point;
  if (point != nullptr && !point->name.empty() && point->labelLimit != 0 &&
      static_cast<double>(LogicalScale(view)) > point->labelLimit) {
    view.scale = BoundedScale(point->labelLimit * view.pixelRatio);
  }
  view.highlight = found.place;
  view.flags |= MapWindowFindMarker;
  CenterOn(view, found.place);
}

}  // namespace

FindOutcome FindInMap(MapWindow& view, std::string_view text) {
  const auto found = ResolveLocation(*view.map, text);
  if (!found) {
    NoteWarning(view.map->workspace->messages, "Can't find %s", {text});
    return FindOutcome::Nothing;
  }
  EndFindMark(view);
  if (const Range* range = found->range) {
    FitToBounds(view, range->maxLat, range->minLat, range->maxLon, range->minLon);
    return FindOutcome::Range;
  }
  if (found->trail != nullptr) {
    ShowTrail(view, *found->trail);
    return FindOutcome::Trail;
  }
  ShowPlace(view, *found);
  return FindOutcome::Place;
}

void EndFindMark(MapWindow& view) {
  view.flags &= ~std::uint32_t{MapWindowFindMarker | MapWindowTrailFlash};
  view.selectedTrail = nullptr;
}

}  // namespace orvane
