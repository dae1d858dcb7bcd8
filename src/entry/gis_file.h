#pragma once

#include "base/messages.h"
#include "base/progress.h"
#include "entry/import_summary.h"
#include "geo/positions.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What a GPS unit recorded, before anything of it stands in a map: tracks, which become trails,
/// and waypoints, which become points.

/// One fix.
struct GisFix {
  double lat = 0;               ///< degrees, within ±90
  double lon = 0;               ///< degrees, at least -180
  float altitude = NoAltitude;  ///< metres, or `NoAltitude`
};

/// All fixes of one name, in the order of the file.
struct GisTrack {
  std::string name;           ///< may be empty; holds no control characters
  std::string date;           ///< as it stands in the file, without the time of day; may be empty
  std::vector<GisFix> fixes;  ///< at least one
};

/// A single fix with a name of its own.
struct GisWaypoint {
  std::string name;  ///< may be empty; holds no control characters
  GisFix fix;
};

/// The content of a file, in the order of the file.
struct GisFile {
  std::vector<GisTrack> tracks;
  std::vector<GisWaypoint> waypoints;
  LeftOutLines leftOut;  ///< fixes without a usable position
};

/// Names are cut to this many bytes, so that they fit on a line of a map file.
constexpr size_t LongestGisName = 150;

/// Reads either form, told by the content: a text whose first byte, blanks aside, is `<` is GPX,
/// any other is comma-separated.
///
/// Comma-separated: a header line, then a line for each fix, with the columns 1 name, 2 date and
/// time, 5 latitude, 6 longitude, 7 altitude; a field may stand in double quotes. If the first two
/// fixes bear the same name (without regard to case) all are tracks, a track being all lines of one
/// name; otherwise, and with a single fix, all are waypoints.
///
/// GPX: each `trk` is one track, its segments joined; each `wpt` is a waypoint.
///
/// What cannot be used is left out and told in one message of each kind; a file that breaks off
/// keeps what stands before the break.
/// \param name  of the file, for messages
/// \param progress  is told of it, and may call it off; what was read so far comes back, and what
///                  was left out is not told
GisFile ReadGisText(std::string_view text, std::string_view name, Messages& messages,
                    Progress* progress = nullptr);

/// \return true if `ReadGisText` takes the text for GPX
bool IsGpxText(std::string_view text);

/// The comma-separated form alone.
GisFile ReadGisLines(std::string_view text, std::string_view name, Messages& messages,
                     Progress* progress = nullptr);

/// GPX alone.
GisFile ReadGpx(std::string_view text, std::string_view name, Messages& messages,
                Progress* progress = nullptr);

}  // namespace orvane
