#pragma once

#include "cli/line_messages.h"
#include "model/map.h"
#include "pages/paper.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The arguments of `print`. A text that is not given is what the Print dialog fills in for a new
/// window of 1024 x 768 pixels.
struct PrintRequest {
  std::string output;  ///< a PDF file; "-" is standard output
  Paper paper;
  bool landscape = false;
  int resolution = 300;             ///< pixels to the inch
  std::vector<std::string> area;    ///< north, south, east, west; or none
  std::vector<std::string> around;  ///< latitude, longitude; or none
  std::optional<std::string> scale;
  std::optional<std::string> vertical;
  std::optional<std::string> horizontal;
  std::optional<std::string> rotation;
  std::optional<std::string> label;
  std::optional<std::string> pointSize;
  std::optional<std::string> gridColor;
};

/// \return what is wrong with options that don't go together, or an empty text
std::string WrongPrintOptions(const PrintRequest& request);

/// Prints the map into a PDF file.
/// \return an `ExitStatus`
int PrintCommand(Map& map, LineMessages& messages, const PrintRequest& request);

}  // namespace orvane
