#pragma once

#include "cli/line_messages.h"
#include "geo/angle_text.h"
#include "model/map.h"
#include "pages/paper.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// What `print` prints.
enum class PrintedKind { Map, Trails, Index, Ranges, Profile };

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

  PrintedKind kind = PrintedKind::Map;
  std::vector<std::string> trails;          ///< the summary's, or the one of the profile
  std::vector<std::string> ranges;          ///< names; all if there is none
  std::vector<std::string> transect;        ///< of the profile: two locations, or none
  std::optional<CoordinateDisplay> format;  ///< of the index
  std::optional<int> measure;               ///< the number of a `TravelChartMode`
};

/// \return what is wrong with options that don't go together, or an empty text
std::string WrongPrintOptions(const PrintRequest& request);

/// Prints the map or a report into a PDF file.
/// \return an `ExitStatus`
int PrintCommand(Map& map, LineMessages& messages, const PrintRequest& request);

}  // namespace orvane
