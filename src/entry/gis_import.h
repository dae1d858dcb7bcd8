#pragma once

#include "entry/gis_file.h"
#include "model/map.h"
#include "model/workspace.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The import of a GPS file into a map: waypoints at once, tracks one by one as the user decides on
/// each. A window calls `StartGisImport`. While there is a `CurrentTrack` it shows `StartFields`,
/// later `NextFields`, and on each button calls `TakeTrack`, `TakeAllTracks` or `SkipTrack`.

/// The check boxes of the window. The caller keeps their state from import to import. Nothing reads
/// `average`.
struct GisBoxes {
  bool average = false;
  bool keepAltitude = false;  ///< readings and points take the altitude of the file
  bool times = false;  ///< tracks with times become a trail a day, with points named by the clock
};

/// The texts of the fields of the window "GIS Trail".
struct GisTrailFields {
  std::string type = "Trail";
  std::string date;             ///< empty: each track takes its own
  bool dateIsForAll = false;    ///< `date` was given, even if the shown track has the same
  std::string focalAnimal;      ///< empty for none
  std::string size;             ///< whole number; empty for 1
  std::string width;            ///< metres; empty for the thinnest line
  std::string name;             ///< empty for a trail without a name
  std::string color = "black";  ///< as `ParseColor` reads it; any other text gives the default
  std::string subSample;        ///< n takes every n-th fix; empty, 0 and 1 take all
  std::string minimumDistance;  ///< metres; empty for 0
  GisBoxes boxes;
};

/// The field with a text that is not a number or not a date, or with a number that is negative or
/// too large.
enum class GisField { None, Date, Size, Width, SubSample, MinimumDistance };

/// What becomes of a waypoint.
enum class GisWaypointState {
  Used,
  BadName,   ///< left out: its name can't be used
  InBasis,   ///< left out: the basis has a point of its name
  NoName,    ///< in the map, but no save keeps it
  TimeName,  ///< likewise: it is named like a time of day
};

/// An import that is under way.
struct GisImport {
  Map* map = nullptr;
  GisFile file;
  std::vector<GisWaypointState> waypointStates;  ///< of those of the file, in their order
  std::shared_ptr<const std::string> text;       ///< of the file, for `PreviewGis`
  std::string fileName;
  size_t current = 0;    ///< index of the track that is shown; past the last one when all are done
  size_t taken = 0;      ///< tracks that became trails
  size_t points = 0;     ///< of these trails
  size_t waypoints = 0;  ///< that became readings of points
  size_t refusedWaypoints = 0;  ///< whose name cannot be used
  int offsetMinutes = 0;        ///< of the local clock, east of UTC: the hour of the mean longitude
  size_t timedTracks = 0;       ///< tracks that became trails with times
  size_t repeats = 0;           ///< their fixes in one minute with another, left out
  size_t withoutTime = 0;       ///< their fixes without a time, left out
};

/// Reads a file of either form and adds its waypoints to the map, which is then dirty. It is solved
/// if it has points without a fix of their own.
///
/// A waypoint whose name the map knows is a further reading of that point; one that is named like a
/// time of day is a new point. A waypoint named like a point of the basis is left out with a
/// message, since the basis does not change.
///
/// A track without a name gets that of the file, without folder and extension, and a number that
/// makes it new to the map and to the file: "walk 1".
/// \return nothing, after a message, if the file cannot be opened or holds neither tracks nor
///         waypoints; nothing, without a message, if it was cancelled (`Workspace::progress`),
///         which is possible until the first waypoint is added
std::optional<GisImport> StartGisImport(Map& map, const std::string& path, const GisBoxes& boxes);

/// As above, from the text of a file.
/// \param name  of the file, for messages
std::optional<GisImport> StartGisImportOfText(Map& map, std::string_view text,
                                              const std::string& name, const GisBoxes& boxes);

/// \return a sentence on what was done so far, for the user
std::string GisSummary(const GisImport& import);

/// \return the track to decide on; null when all are done
const GisTrack* CurrentTrack(const GisImport& import);

/// \return the fields when the window opens: name and date of the current track, no numbers
GisTrailFields StartFields(const GisImport& import, const GisBoxes& boxes);

/// Puts name and date of the current track into the fields when the window moves on to it. The
/// other fields stay as typed.
void NextFields(const GisImport& import, GisTrailFields& fields);

/// Makes a trail of the current track, at the head of the map's trails, with nameless points.
/// Solves the map if needed (`NeedsSolving`), updates its ranges, marks it dirty and moves on to
/// the next track.
///
/// With `GisBoxes::times`, a track that has times becomes a trail for each local date, in the order of
/// the times; a date in the fields does not count for it. Its points are named by the clock, "08:30".
/// Of several fixes in one minute the first is taken; those without a time are left out. The first
/// trail has the name, the others have it with their date.
///
/// The first fix (of a date, with times) is taken. Another is taken if it is at least the n-th after the last one taken and
/// at least the minimum distance from it on the ground.
/// \return `None` if the track was taken; else the first field that cannot be read, and nothing
///         changed
GisField TakeTrack(GisImport& import, const GisTrailFields& fields);

/// As `TakeTrack` for the current track and all after it. These have their own names and, unless
/// the user gave one, their own dates. A date equal to that of the current track counts as given
/// only with `dateIsForAll`, since the window fills it in. The map is finished once. If the user
/// cancels, the tracks taken so far stay, and the next one is current.
GisField TakeAllTracks(GisImport& import, const GisTrailFields& fields);

/// What becomes of a fix of a track.
enum class GisFixState { Used, Thinned, Repeat, WithoutTime };

/// \return the first field that cannot be read
GisField FindBadField(const GisImport& import, const GisTrailFields& fields);

/// \return what `TakeTrack` would do with each fix of a track of the import, in their order; nothing if
///         a field cannot be read
std::optional<std::vector<GisFixState>> StatesOfFixes(const GisImport& import,
                                                      const GisTrack& track,
                                                      const GisTrailFields& fields);

/// Moves on to the next track.
void SkipTrack(GisImport& import);

}  // namespace orvane
