#pragma once

#include "elevation/profile.h"
#include "geo/angle_text.h"
#include "reports/profile_view.h"
#include "view/canvas.h"
#include "view/info_panel.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What is drawn of a profile: texts along both axes, and the line itself. All in pixels of the
/// window; `at` is the start of a text's baseline.

/// A text on an axis.
struct ElevationText {
  Pixel at;
  std::string text;
};

/// The first line below the plot: the labels of the samples, those that would collide left out, but
/// never that of the last column; without any label the coordinates of both ends.
std::vector<ElevationText> PlaceNameTexts(const ElevationView& view, CoordinateDisplay display,
                                          const TextWidth& textWidth);

/// The second line below the plot: distances, as many as fit.
std::vector<ElevationText> DistanceTexts(const ElevationView& view, const TextWidth& textWidth);

/// Lowest and highest altitude of the line, at the left edge.
std::vector<ElevationText> AltitudeTexts(const ElevationView& view);

/// \return the vertex of one column, which must be known
Pixel ElevationVertexAt(const ElevationView& view, int column);

/// The line over all known columns.
std::vector<Pixel> ElevationLine(const ElevationView& view);

/// What the info pane shows of the column under the pointer: its place with the altitude, as the
/// panel of the map does, and its label.
std::vector<InfoRow> ElevationInfoRows(const ElevationView& view, CoordinateDisplay display);

/// Why a plot is empty, in lines; none if it is not.
std::vector<std::string_view> EmptyPlotTexts(const ElevationView& view);

}  // namespace orvane
