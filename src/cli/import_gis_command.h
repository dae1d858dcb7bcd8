#pragma once

#include "cli/line_messages.h"
#include "entry/gis_import.h"
#include "model/map.h"

#include <array>
#include <string>

namespace orvane {

/// The arguments of `import-gis`. The date is empty unless one was given. The name is not used,
/// since each trail gets that of its track.
struct ImportGisRequest {
  std::string file;
  std::string output;
  GisTrailFields fields;
};

/// An option of the batch tool for a field of the window "GIS Trail".
struct GisOption {
  std::string GisTrailFields::*field;
  const char* option;  ///< with its dashes
  const char* type;    ///< what it takes, for the help
  const char* help;
};

/// The options for the fields that hold a text, in the order of the help.
const std::array<GisOption, 8>& GisOptions();

/// The option for `GisBoxes::keepAltitude`.
constexpr const char* GisKeepAltitudeOption = "--keep-altitude";

/// The option for `GisBoxes::times`.
constexpr const char* GisTimesOption = "--times";

/// Posts an error about the field that the window would refuse, if there is one.
void NoteBadGisField(GisField field, const GisTrailFields& fields, Messages& messages);

/// Takes the tracks and waypoints of a file into the map, with its messages.
/// \return false if the file holds nothing, or a field cannot be read
bool ImportGisFile(Map& map, Messages& messages, const std::string& file, GisTrailFields fields);

/// Takes the tracks and waypoints of a file into the map and saves it in full to the file `output`,
/// or to standard output if it is "-". Nothing is written if the file holds nothing or a field
/// cannot be read.
/// \return an `ExitStatus`
int ImportGisCommand(Map& map, LineMessages& messages, const ImportGisRequest& request);

}  // namespace orvane
