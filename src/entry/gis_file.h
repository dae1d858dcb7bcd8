#pragma once

#include "base/messages.h"
#include "base/progress.h"
#include "entry/import_summary.h"
#include "geo/positions.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The recordings of a GPS unit before they are in a map: tracks, which become trails, and
/// waypoints, which become points.

/// One fix.
struct GisFix {
  double lat = 0;               ///< degrees, within ±90
  double lon = 0;               ///< degrees, at least -180
  float altitude = NoAltitude;  ///< metres, or `NoAltitude`
  std::uint32_t line = 0;       ///< of the file, from 1
  std::uint32_t number = 0;     ///< among the fixes of the file, from 0, with bad ones
  std::optional<std::int64_t> utc =
      {};  ///< milliseconds since 1970-01-01; only of tracks of GPX and KML
};

/// All fixes of one name, in the order of the file.
struct GisTrack {
  std::string name;           ///< may be empty; holds no control characters
  std::string date;           ///< as in the file, without the time of day; may be empty
  std::vector<GisFix> fixes;  ///< at least one
};

/// A single fix with a name of its own.
struct GisWaypoint {
  std::string name;  ///< may be empty; holds no control characters
  GisFix fix;
};

/// A fix without a usable position.
struct BadGisFix {
  std::uint32_t line = 0;    ///< of the file, from 1
  std::uint32_t number = 0;  ///< as `GisFix::number`
};

/// The content of a file, in the order of the file.
struct GisFile {
  std::vector<GisTrack> tracks;
  std::vector<GisWaypoint> waypoints;
  LeftOutLines leftOut;             ///< fixes without a usable position
  std::vector<BadGisFix> badFixes;  ///< all of them
};

/// The texts of a fix as the file has them: name, time, latitude, longitude, altitude. The name is
/// that of the track or waypoint.
using GisCells = std::array<std::string, 5>;

/// Collects the texts of fixes while a file is read.
struct GisCellTaker {
  size_t most = 0;  ///< no more are taken
  std::vector<GisCells> cells{};
};

/// Names are cut to this many bytes, so that they fit on a line of a map file.
constexpr size_t LongestGisName = 150;

/// The largest KML file that is read: places in it are so short that they take many times as much memory.
constexpr size_t LargestKml = size_t{1} << 28U;

/// Reads any form. A text whose first byte after blanks is `<` is KML if its outermost element is `kml`,
/// else GPX; any other is comma-separated.
///
/// Comma-separated: a header line, then a line for each fix, with the columns 1 name, 2 date and
/// time, 5 latitude, 6 longitude, 7 altitude; a field may be in double quotes. If the first two
/// fixes have the same name (in any case), all lines of one name are a track; otherwise, and with a
/// single fix, all are waypoints.
///
/// GPX: each `trk` is one track, its segments joined; each `wpt` is a waypoint.
///
/// KML: the lines and tracks of a placemark are one track, each point of it is a waypoint. Other shapes
/// are left out, with a note.
///
/// Lines that cannot be used are left out, with one message of each kind. A file that breaks off is
/// read up to the break.
/// \param name  of the file, for messages
/// \param progress  receives how far the reading is and can cancel it; the result is then what was
///                  read so far, without messages on lines left out
/// \param taker  receives the texts of the fixes, if it is not null
GisFile ReadGisText(std::string_view text, std::string_view name, Messages& messages,
                    Progress* progress = nullptr, GisCellTaker* taker = nullptr);

/// \return true if `ReadGisText` takes the text for XML, which is GPX or KML
bool IsXmlText(std::string_view text);

/// \return true if `ReadGisText` takes the text for KML
bool IsKmlText(std::string_view text);

/// Reads the texts of the fixes of a file again, by `GisFix::number`.
/// \param most  fixes at most
std::vector<GisCells> ReadGisCells(std::string_view text, size_t most);

/// Reads the comma-separated form.
/// \param taker  as for `ReadGisText`
GisFile ReadGisLines(std::string_view text, std::string_view name, Messages& messages,
                     Progress* progress = nullptr, GisCellTaker* taker = nullptr);

/// Reads GPX.
/// \param taker  as for `ReadGisText`
GisFile ReadGpx(std::string_view text, std::string_view name, Messages& messages,
                Progress* progress = nullptr, GisCellTaker* taker = nullptr);

/// Reads KML, if it is not larger than `LargestKml`.
/// \param taker  as for `ReadGisText`
GisFile ReadKml(std::string_view text, std::string_view name, Messages& messages,
                Progress* progress = nullptr, GisCellTaker* taker = nullptr);

}  // namespace orvane
