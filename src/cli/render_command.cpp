#include "cli/render_command.h"

#include "base/latin1.h"
#include "cli/contours_command.h"
#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "paint/render.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "places/resolve_location.h"
#include "view/fit_to_map.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <cmath>

namespace orvane {

namespace {

constexpr double FullTurn = 360;  // degrees

/// Turns the view about its middle.
void Rotate(MapWindow& view, double degrees) {
  const LatLon middle = ScreenToMap(view, {view.centerColumn, view.centerRow});
  view.rotation = static_cast<float>(std::fmod(degrees, FullTurn));
  CenterOn(view, middle);
}

/// Makes the contours of one kind, gives them rows and shows them.
/// \return false after an error
bool ShowContours(MapWindow& view, LineMessages& messages, bool continuous) {
  Map* const source = MakeContours(*view.map, messages, {std::nullopt, continuous});
  if (source == nullptr) return false;
  for (Trail& trail : continuous ? source->continuousContours : source->contourTrails) {
    AddContourRow(view, trail).visible = true;
  }
  return true;
}

/// Draws into the file, or as a PNG to standard output if it is "-".
bool Draw(MapWindow& view, const RenderOptions& options, const std::string& output,
          std::string& error) {
  if (output != "-") return RenderMap(view, options, output, error);
  const auto picture = RenderMap(view, PictureFormat::Png, options, error);
  if (picture) Print(*picture);
  return picture.has_value();
}

}  // namespace

int RenderCommand(Map& map, LineMessages& messages, const RenderRequest& request) {
  MapWindow view;
  view.map = &map;
  BuildTrailRows(view);
  BuildRangeRows(view);
  SizeView(view, request.width, request.height);
  if (request.rotate != 0) Rotate(view, request.rotate);
  if (request.fit) FitToMap(view);
  if (request.scale) {
    const LatLon middle = ScreenToMap(view, {view.centerColumn, view.centerRow});
    view.scale = BoundedScale(1 / *request.scale);
    CenterOn(view, middle);
  }
  if (request.center) {
    const auto location = FindTyped(
        *request.center, [&map](std::string_view each) { return ResolveLocation(map, each); });
    if (!location) {
      NoteError(messages, "Can't find %s", {*request.center});
      return ExitFailed;
    }
    CenterOn(view, location->place);
  }
  if (request.contours && !ShowContours(view, messages, true)) return ExitFailed;
  if (request.classicContours && !ShowContours(view, messages, false)) return ExitFailed;
  if (request.hideGrids) view.flags |= MapWindowGridsHidden;
  if (request.showAllTrails) {
    for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) row->visible = true;
  }
  RenderOptions options;
  options.antialias = request.antialias;
  std::string error;
  if (Draw(view, options, request.output, error)) return ExitDone;
  messages.Post(Severity::Error, error);
  return ExitFailed;
}

}  // namespace orvane
