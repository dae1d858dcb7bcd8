#pragma once

#include "cli/line_messages.h"
#include "model/map.h"

#include <optional>
#include <string>

namespace orvane {

/// The arguments of `render`.
struct RenderRequest {
  std::string output;  ///< its extension names the format; "-" is a PNG on standard output
  int width = 1024;    ///< pixels
  int height = 768;    ///< pixels
  std::optional<std::string> center;  ///< a location text
  std::optional<double> scale;        ///< metres per pixel
  bool fit = false;                   ///< all points in view
  double rotate = 0;                  ///< degrees
  bool hideGrids = false;
  bool showAllTrails = false;
  bool contours = false;         ///< makes continuous contours and shows them
  bool classicContours = false;  ///< makes the contours of the Contours group and shows them
  bool antialias = false;
};

/// Draws the map as a new window of that size would, changed as the request asks.
/// \return an `ExitStatus`
int RenderCommand(Map& map, LineMessages& messages, const RenderRequest& request);

}  // namespace orvane
