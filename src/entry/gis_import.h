#pragma once

#include "entry/gis_file.h"
#include "model/map.h"
#include "model/workspace.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orvane {

/// Taking what a GPS unit recorded into a map: waypoints at once, tracks one by one as the user
/// decides on each. A window drives it so: `StartGisImport`; while there is a `CurrentTrack`, show
/// `StartFields`, later `NextFields`; and on each button `TakeTrack`, `TakeAllTracks` or
/// `SkipTrack`.

/// The check boxes of the window. Their state is kept from import to import by the caller. Only
/// `keepAltitude` has an effect; the others were made for later and are read by nothing.
struct GisBoxes {
  bool average = false;
  bool keepAltitude = false;  ///< readings and points take the altitude of the file
  bool times = false;
};

/// The fields of the window "GIS Trail", as the user sees and types them.
struct GisTrailFields {
  std::string type = "Trail";
  std::string date;             ///< empty: each track takes its own
  bool dateIsForAll = false;    ///< not taken for that of the shown track, which may be the same
  std::string focalAnimal;      ///< empty for none
  std::string size;             ///< whole number; empty for 1
  std::string width;            ///< metres; empty for the thinnest line
  std::string name;             ///< empty for a trail without a name
  std::string color = "black";  ///< as `ParseColor` reads it; any other text gives the default
  std::string subSample;        ///< n takes every n-th fix; empty, 0 and 1 take all
  std::string minimumDistance;  ///< metres; empty for 0
  GisBoxes boxes;
};

/// Which field holds a text that is no number, is a negative one or one that is too large, or is
/// no date.
enum class GisField { None, Date, Size, Width, SubSample, MinimumDistance };

/// An import that is under way.
struct GisImport {
  Map* map = nullptr;
  GisFile file;
  std::string fileName;
  size_t current = 0;    ///< index of the track that is shown; past the last one when all are done
  size_t taken = 0;      ///< tracks that became trails
  size_t points = 0;     ///< of these trails
  size_t waypoints = 0;  ///< that became readings of points
  size_t refusedWaypoints = 0;  ///< whose name cannot be used
};

/// Reads a file of either form and puts its waypoints into the map, which is then dirty, and solved
/// if it holds points that no fix of their own places.
///
/// A waypoint is a point named as any other: one whose name the map knows already is a further
/// reading of that point, and one that is named like a time of day is a point of its own. A name
/// that means a point of the basis is told and left out, since the basis does not change.
///
/// A track without a name gets that of the file, without folder and extension, and a number that
/// makes it new to the map and to the file: "walk 1".
/// \return nothing, after a message, if the file cannot be opened or holds neither tracks nor
///         waypoints; nothing, and without a message, if it was called off (`Workspace::progress`),
///         which it can be until the first waypoint is taken
std::optional<GisImport> StartGisImport(Map& map, const std::string& path, const GisBoxes& boxes);

/// As above, from the text of a file.
/// \param name  of the file, for messages
std::optional<GisImport> StartGisImportOfText(Map& map, std::string_view text,
                                              const std::string& name, const GisBoxes& boxes);

/// \return a sentence on what was done so far, for the user
std::string GisSummary(const GisImport& import);

/// \return the track that is to be decided on; null when all are done
const GisTrack* CurrentTrack(const GisImport& import);

/// What the window holds when it comes up: name and date of the current track, no numbers.
GisTrailFields StartFields(const GisImport& import, const GisBoxes& boxes);

/// Puts name and date of the current track into the fields, where the window goes on to it; what
/// else was typed stays.
void NextFields(const GisImport& import, GisTrailFields& fields);

/// Makes a trail of the current track, at the head of the map's trails, with nameless points;
/// solves the map if need be (`NeedsSolving`), brings its ranges up to date, marks it dirty and
/// goes on to the next track.
///
/// The first fix is taken. Another is taken if it is at least the n-th behind the last one taken
/// and lies at least the minimum distance from it on the ground.
/// \return the first field that cannot be read, and nothing was done; `None` if the track was taken
GisField TakeTrack(GisImport& import, const GisTrailFields& fields);

/// As `TakeTrack` for the current track and all behind it, which take their own names and, unless
/// the user gave one, their own dates. A date that is also that of the current track counts as
/// given only with `dateIsForAll`, since the window puts the track's own there. The map is finished
/// once. Where that is called off, what was taken stays, and the next track is the current one.
GisField TakeAllTracks(GisImport& import, const GisTrailFields& fields);

/// Goes on to the next track.
void SkipTrack(GisImport& import);

}  // namespace orvane
