#include "entry/gis_import.h"

#include "base/files.h"
#include "base/number_text.h"
#include "entry/gis_values.h"
#include "geo/earth.h"
#include "mapfile/open_map.h"
#include "model/point_names.h"
#include "model/time_names.h"

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

/// The fields of the window as values.
struct TrailSettings {
  PackedDate date = 0;  ///< 0: the track's own
  int groupSize = 1;
  double width = 0;
  size_t subSample = 0;
  double minimumDistance = 0;
};

/// Group sizes are kept in 16 bits.
constexpr double LargestGroup = 32767;
constexpr double LargestStep = std::numeric_limits<int>::max();

/// Reads a number that may be left out. \return false for a text that is none, or out of bounds
bool ReadField(std::string_view text, double largest, bool isWhole, double& value) {
  if (TrimSpace(text).empty()) return true;
  const auto read = WholeReal(text);
  if (!read || *read < 0 || *read > largest) return false;
  if (isWhole && *read != static_cast<double>(static_cast<int>(*read))) return false;
  value = *read;
  return true;
}

/// \return the date that the whole text is; nothing if it is none
std::optional<PackedDate> WholeDate(std::string_view text, bool europeanDates) {
  text = TrimSpace(text);
  const DatePrefix read = ParseDate(text, europeanDates);
  if (read.length == 0 || read.length != text.size()) return std::nullopt;
  return read.date;
}

GisField ReadFields(const GisTrailFields& fields, bool europeanDates, TrailSettings& settings) {
  if (!TrimSpace(fields.date).empty()) {
    const auto date = WholeDate(fields.date, europeanDates);
    if (!date) return GisField::Date;
    settings.date = *date;
  }
  double size = 1;
  double step = 0;
  if (!ReadField(fields.size, LargestGroup, true, size)) return GisField::Size;
  if (!ReadField(fields.width, std::numeric_limits<float>::max(), false, settings.width)) {
    return GisField::Width;
  }
  if (!ReadField(fields.subSample, LargestStep, true, step)) return GisField::SubSample;
  if (!ReadField(fields.minimumDistance, std::numeric_limits<double>::max(), false,
                 settings.minimumDistance)) {
    return GisField::MinimumDistance;
  }
  settings.groupSize = std::max(static_cast<int>(size), 1);
  settings.subSample = static_cast<size_t>(step);
  return GisField::None;
}

std::optional<std::string> TextOrNone(std::string_view text) {
  std::string clean = CleanName(text);
  if (clean.empty()) return std::nullopt;
  return clean;
}

/// Adds a reading as the map file reader does: the altitude is that of the reading. If its position
/// had one too, the solver would count it twice.
void AddFix(Point& point, const GisFix& fix, bool keepAltitude) {
  Measurement& reading = point.measurements.emplace_front();
  reading.flags = MeasureGps;
  reading.position = {fix.lat, fix.lon, NoAltitude};
  if (keepAltitude) reading.altitude = fix.altitude;
  point.flags &= ~std::uint32_t{PointPlaced};
}

/// What follows each change of the map. What has a place keeps it: a fix alone moves no survey, so
/// the map is solved only where `FinishMap` finds need.
void FinishImport(Map& map) {
  const MustFinish finish(map.workspace->progress);
  FinishMap(map);
  map.flags |= MapDirty;
}

LatLon PlaceOf(const GisFix& fix) { return {fix.lat, fix.lon}; }

/// The date of a track whose user gave none.
PackedDate OwnDate(const GisTrack& track, const Workspace& workspace) {
  if (track.date.empty()) return 0;
  const auto date = WholeDate(track.date, workspace.preferences.europeanDates);
  if (!date) {
    NoteWarning(
        workspace.messages, "Bad date %s of track %s, which gets none",
        {track.date, track.name.empty() ? "<nameless trail>" : std::string_view(track.name)});
  }
  return date.value_or(0);
}

/// Enters the current track as a trail and goes on; the map is left unsolved.
void EnterTrack(GisImport& import, const GisTrailFields& fields, const TrailSettings& settings) {
  Map& map = *import.map;
  const GisTrack& track = import.file.tracks[import.current];
  Trail& trail = map.trails.emplace_front();
  trail.name = TextOrNone(fields.name);
  trail.type = CleanName(fields.type);
  trail.focalAnimal = TextOrNone(fields.focalAnimal);
  trail.date = settings.date != 0 ? settings.date : OwnDate(track, *map.workspace);
  trail.width = settings.width;
  trail.groupSize = settings.groupSize;
  trail.color = ParseColor(fields.color);
  const GisFix* last = nullptr;
  for (const GisFix& fix : track.fixes) {
    if (last != nullptr) {
      if (static_cast<size_t>(&fix - last) < settings.subSample) continue;
      if (GroundDistance(PlaceOf(*last), PlaceOf(fix)) < settings.minimumDistance) continue;
    }
    last = &fix;
    Point& point = MakePoint(map, "");
    point.trail = &trail;
    AddFix(point, fix, fields.boxes.keepAltitude);
    trail.points.push_back(&point);
  }
  ++import.current;
  ++import.taken;
}

/// Enters waypoints one after the other, and counts those that no save will keep: without a name,
/// or with that of a time of day.
class WaypointEntry {
 public:
  WaypointEntry(Map& map, bool keepAltitude) : map_(map), keepAltitude_(keepAltitude) {}

  void Enter(const GisWaypoint& waypoint) {
    const size_t pointsBefore = map_.pointStore.size();
    Point* point = ResolvePointName(map_, nullptr, waypoint.name);
    if (point == nullptr) {
      Refuse("Bad pointname %s", waypoint.name);
      return;
    }
    if (point->map != &map_) {
      Refuse(
          "A GPS location is given to a point (%s) which is in a base map, it will have no effect",
          point->name);
      return;
    }
    const bool isNew = map_.pointStore.size() > pointsBefore;
    if (isNew && !point->name.empty()) map_.loosePoints.push_front(point);
    if (waypoint.name.empty() || IsTimeName(waypoint.name)) ++unsaved_;
    AddFix(*point, waypoint.fix, keepAltitude_);
  }
  /// Tells what is not told yet.
  void Finish() const {
    if (refused_ > MostTold) {
      NoteError(map_.workspace->messages, "%s more waypoints are left out",
                {std::to_string(refused_ - MostTold)});
    }
    if (unsaved_ == 0) return;
    NoteWarning(map_.workspace->messages,
                "%s waypoints are not kept when the map is saved: they have no name, or that of a "
                "time of day",
                {std::to_string(unsaved_)});
  }

 private:
  static constexpr size_t MostTold = 5;

  void Refuse(std::string_view format, std::string_view name) {
    if (++refused_ <= MostTold) NoteError(map_.workspace->messages, format, {name});
  }

  Map& map_;
  bool keepAltitude_;
  size_t refused_ = 0;
  size_t unsaved_ = 0;
};

void ImportWaypoints(Map& map, const std::vector<GisWaypoint>& waypoints, bool keepAltitude) {
  WaypointEntry entry(map, keepAltitude);
  for (const GisWaypoint& waypoint : waypoints) entry.Enter(waypoint);
  entry.Finish();
  FinishImport(map);
}

}  // namespace

std::optional<GisImport> StartGisImport(Map& map, const std::string& path, const GisBoxes& boxes) {
  const auto text = ReadWholeFile(path);
  if (!text) {
    const OriginScope origin(map.workspace->messages, path);
    NoteError(map.workspace->messages, "Can't open file %s", {path});
    return std::nullopt;
  }
  return StartGisImportOfText(map, *text, path, boxes);
}

std::optional<GisImport> StartGisImportOfText(Map& map, std::string_view text,
                                              const std::string& name, const GisBoxes& boxes) {
  GisImport import;
  import.map = &map;
  import.file = ReadGisText(text, name, map.workspace->messages, map.workspace->progress);
  if (IsCancelled(map.workspace->progress)) return std::nullopt;
  if (import.file.tracks.empty() && import.file.waypoints.empty()) {
    const OriginScope origin(map.workspace->messages, name);
    NoteError(map.workspace->messages, "There are no tracks and no waypoints in %s", {name});
    return std::nullopt;
  }
  if (!import.file.waypoints.empty()) {
    ImportWaypoints(map, import.file.waypoints, boxes.keepAltitude);
  }
  return import;
}

const GisTrack* CurrentTrack(const GisImport& import) {
  if (import.current >= import.file.tracks.size()) return nullptr;
  return &import.file.tracks[import.current];
}

GisTrailFields StartFields(const GisImport& import, const GisBoxes& boxes) {
  GisTrailFields fields;
  fields.boxes = boxes;
  NextFields(import, fields);
  return fields;
}

void NextFields(const GisImport& import, GisTrailFields& fields) {
  const GisTrack* track = CurrentTrack(import);
  if (track == nullptr) return;
  fields.name = track->name;
  fields.date = track->date;
}

GisField TakeTrack(GisImport& import, const GisTrailFields& fields) {
  if (CurrentTrack(import) == nullptr) return GisField::None;
  TrailSettings settings;
  const GisField bad =
      ReadFields(fields, import.map->workspace->preferences.europeanDates, settings);
  if (bad != GisField::None) return bad;
  EnterTrack(import, fields, settings);
  FinishImport(*import.map);
  return GisField::None;
}

GisField TakeAllTracks(GisImport& import, const GisTrailFields& fields) {
  const GisTrack* shown = CurrentTrack(import);
  if (shown == nullptr) return GisField::None;
  TrailSettings settings;
  const GisField bad =
      ReadFields(fields, import.map->workspace->preferences.europeanDates, settings);
  if (bad != GisField::None) return bad;
  // A date that the window has put there itself is that of this track alone.
  const bool dateIsOwn = !fields.dateIsForAll && fields.date == shown->date;
  EnterTrack(import, fields, settings);
  if (dateIsOwn) settings.date = 0;
  GisTrailFields following = fields;
  ProgressSteps steps(import.map->workspace->progress, WorkStage::Importing,
                      import.file.tracks.size());
  while (CurrentTrack(import) != nullptr && steps.Next(import.current)) {
    NextFields(import, following);
    EnterTrack(import, following, settings);
  }
  FinishImport(*import.map);
  return GisField::None;
}

void SkipTrack(GisImport& import) {
  if (CurrentTrack(import) != nullptr) ++import.current;
}

}  // namespace orvane
