#include "entry/gis_import.h"

#include "base/file_names.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/text.h"
#include "entry/entered_fixes.h"
#include "entry/gis_values.h"
#include "entry/local_time.h"
#include "entry/separated_table.h"
#include "geo/earth.h"
#include "mapfile/open_map.h"
#include "model/point_names.h"
#include "model/time_names.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

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

/// Reads an optional number. \return false for a text that is not a number, or out of bounds
bool ReadField(std::string_view text, double largest, bool isWhole, double& value) {
  if (TrimSpace(text).empty()) return true;
  const auto read = WholeReal(text);
  if (!read || *read < 0 || *read > largest) return false;
  if (isWhole && *read != static_cast<double>(static_cast<int>(*read))) return false;
  value = *read;
  return true;
}

/// \return the date, if the whole text is one
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

LatLon PlaceOf(const GisFix& fix) { return {fix.lat, fix.lon}; }
float AltitudeOf(const GisFix& fix, bool keepAltitude) {
  return keepAltitude ? fix.altitude : NoAltitude;
}

/// The date of a track if the user gave none.
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

/// A fix of a track that is taken.
struct TakenFix {
  size_t index = 0;        ///< in the track
  std::int64_t local = 0;  ///< milliseconds by the local clock; 0 without times
};

/// What becomes of the fixes of a track.
struct FixChoice {
  bool hasTimes = false;
  std::vector<GisFixState> states;  ///< of all fixes
  std::vector<TakenFix> taken;      ///< in the order in which they become points
};

/// The fixes with a time, in the order of their times; of those in one minute the first.
std::vector<TakenFix> TimedFixes(const GisTrack& track, int offsetMinutes,
                                 std::vector<GisFixState>& states) {
  std::vector<TakenFix> timed;
  for (size_t i = 0; i < track.fixes.size(); ++i) {
    const auto& utc = track.fixes[i].utc;
    if (utc) timed.push_back({i, *utc + offsetMinutes * MinuteMs});
    states[i] = utc ? GisFixState::Repeat : GisFixState::WithoutTime;
  }
  std::stable_sort(timed.begin(), timed.end(),
                   [](const TakenFix& a, const TakenFix& b) { return a.local < b.local; });
  const auto minuteOf = [](const TakenFix& fix) { return MinuteOfLocal(fix.local); };
  const auto end = std::unique(timed.begin(), timed.end(), [&](const auto& a, const auto& b) {
    return minuteOf(a) == minuteOf(b);
  });
  timed.erase(end, timed.end());
  return timed;
}

FixChoice ChooseFixes(const GisTrack& track, const TrailSettings& settings, bool times,
                      int offsetMinutes) {
  FixChoice choice;
  choice.states.resize(track.fixes.size(), GisFixState::Thinned);
  choice.hasTimes = times && std::any_of(track.fixes.begin(), track.fixes.end(),
                                         [](const GisFix& fix) { return fix.utc.has_value(); });
  std::vector<TakenFix> fixes;
  if (choice.hasTimes) {
    fixes = TimedFixes(track, offsetMinutes, choice.states);
  } else {
    for (size_t i = 0; i < track.fixes.size(); ++i) fixes.push_back({i, 0});
  }
  size_t last = 0;  // of `fixes`
  for (size_t i = 0; i < fixes.size(); ++i) {
    const GisFix& fix = track.fixes[fixes[i].index];
    const bool isFirst = choice.taken.empty() ||
                         DateOfLocal(fixes[i].local) != DateOfLocal(choice.taken.back().local);
    if (!isFirst && (i - last < settings.subSample ||
                     GroundDistance(PlaceOf(track.fixes[fixes[last].index]), PlaceOf(fix)) <
                         settings.minimumDistance)) {
      choice.states[fixes[i].index] = GisFixState::Thinned;
      continue;
    }
    last = i;
    choice.states[fixes[i].index] = GisFixState::Used;
    choice.taken.push_back(fixes[i]);
  }
  return choice;
}

Trail& MakeTrackTrail(Map& map, const GisTrailFields& fields, const TrailSettings& settings) {
  Trail& trail = map.trails.emplace_front();
  trail.name = TextOrNone(fields.name);
  trail.type = CleanName(fields.type);
  trail.focalAnimal = TextOrNone(fields.focalAnimal);
  trail.width = settings.width;
  trail.groupSize = settings.groupSize;
  trail.color = ParseColor(fields.color);
  return trail;
}

/// Makes the trails of the current track and goes to the next one. The map is not solved.
void EnterTrack(GisImport& import, const GisTrailFields& fields, const TrailSettings& settings) {
  Map& map = *import.map;
  const GisTrack& track = import.file.tracks[import.current];
  const FixChoice choice = ChooseFixes(track, settings, fields.boxes.times, import.offsetMinutes);
  Trail* trail = nullptr;
  for (const TakenFix& taken : choice.taken) {
    const PackedDate date = choice.hasTimes ? DateOfLocal(taken.local) : 0;
    if (trail == nullptr || (choice.hasTimes && trail->date != date)) {
      const bool isFirst = trail == nullptr;
      trail = &MakeTrackTrail(map, fields, settings);
      trail->date = date;
      if (!isFirst && trail->name) *trail->name += ' ' + FormatDate(date);
      if (!choice.hasTimes) {
        trail->date = settings.date != 0 ? settings.date : OwnDate(track, *map.workspace);
      }
    }
    const GisFix& fix = track.fixes[taken.index];
    Point& point = MakePoint(map, choice.hasTimes ? ClockText(taken.local) : "");
    point.trail = trail;
    AddFix(point, PlaceOf(fix), AltitudeOf(fix, fields.boxes.keepAltitude));
    trail->points.push_back(&point);
  }
  const auto count = [&](GisFixState state) {
    return static_cast<size_t>(std::count(choice.states.begin(), choice.states.end(), state));
  };
  import.points += choice.taken.size();
  import.timedTracks += choice.hasTimes ? 1 : 0;
  import.repeats += count(GisFixState::Repeat);
  import.withoutTime += count(GisFixState::WithoutTime);
  ++import.current;
  ++import.taken;
}

/// Adds waypoints to the map one by one, and counts those that no save will keep: without a name,
/// or named like a time of day.
class WaypointEntry {
 public:
  WaypointEntry(GisImport& import, bool keepAltitude)
      : import_(import), map_(*import.map), keepAltitude_(keepAltitude) {}

  void Enter(const GisWaypoint& waypoint) { import_.waypointStates.push_back(Add(waypoint)); }
  /// Posts what was not posted yet.
  void Finish() const {
    if (import_.refusedWaypoints > MostNamed) {
      NoteError(map_.workspace->messages, "%s more waypoints are left out",
                {std::to_string(import_.refusedWaypoints - MostNamed)});
    }
    if (unsaved_ > 0) WarnOfUnsaved();
  }

 private:
  static constexpr size_t MostNamed = 5;

  GisWaypointState Add(const GisWaypoint& waypoint) {
    const size_t pointsBefore = map_.pointStore.size();
    Point* point = ResolvePointName(map_, nullptr, waypoint.name);
    if (point == nullptr) {
      Refuse("Bad pointname %s", waypoint.name);
      return GisWaypointState::BadName;
    }
    if (point->map != &map_) {
      Refuse(
          "A GPS location is given to a point (%s) which is in a base map, it will have no effect",
          point->name);
      return GisWaypointState::InBasis;
    }
    const bool isNew = map_.pointStore.size() > pointsBefore;
    if (isNew && !point->name.empty()) map_.loosePoints.push_front(point);
    AddFix(*point, PlaceOf(waypoint.fix), AltitudeOf(waypoint.fix, keepAltitude_));
    ++import_.waypoints;
    if (!waypoint.name.empty() && !IsTimeName(waypoint.name)) return GisWaypointState::Used;
    if (unsaved_++ == 0) unsavedName_ = waypoint.name;
    return waypoint.name.empty() ? GisWaypointState::NoName : GisWaypointState::TimeName;
  }

  void Refuse(std::string_view format, std::string_view name) {
    if (++import_.refusedWaypoints <= MostNamed)
      NoteError(map_.workspace->messages, format, {name});
  }

  void WarnOfUnsaved() const {
    Messages& messages = map_.workspace->messages;
    if (unsaved_ > 1) {
      NoteWarning(messages,
                  "%s waypoints are not kept when the map is saved: they have no name, or that of "
                  "a time of day",
                  {std::to_string(unsaved_)});
    } else if (unsavedName_.empty()) {
      NoteWarning(messages, "1 waypoint is not kept when the map is saved: it has no name");
    } else {
      NoteWarning(messages,
                  "1 waypoint is not kept when the map is saved: %s is the name of a time of day",
                  {unsavedName_});
    }
  }

  GisImport& import_;
  Map& map_;
  bool keepAltitude_;
  size_t unsaved_ = 0;
  std::string unsavedName_;  ///< of the first of these
};

void ImportWaypoints(GisImport& import, bool keepAltitude) {
  WaypointEntry entry(import, keepAltitude);
  for (const GisWaypoint& waypoint : import.file.waypoints) entry.Enter(waypoint);
  entry.Finish();
  if (import.waypoints > 0) FinishImport(*import.map);
}

/// Names the tracks that have none.
void NameTracks(GisImport& import) {
  std::vector<GisTrack>& tracks = import.file.tracks;
  const auto isNameless = [](const GisTrack& track) { return TrimSpace(track.name).empty(); };
  if (std::none_of(tracks.begin(), tracks.end(), isNameless)) return;
  std::unordered_set<std::string> names;
  for (const GisTrack& track : tracks) names.insert(FoldedText(track.name));
  for (const Map* level = import.map; level != nullptr; level = level->basis) {
    for (const Trail& trail : level->trails) names.insert(FoldedText(trail.name.value_or("")));
  }
  // Leaves room for the number.
  constexpr size_t LongestStem = 100;
  const std::string_view file = BaseName(import.fileName);
  const std::string_view stem = TrimSpace(file.substr(0, file.rfind('.')));
  const std::string start = stem.empty() ? "Track " : CleanName(stem.substr(0, LongestStem)) + ' ';
  size_t number = 0;
  for (GisTrack& track : tracks) {
    if (!isNameless(track)) continue;
    do {
      track.name = start + std::to_string(++number);
    } while (names.contains(FoldedText(track.name)));
  }
}

/// The usual offset at the mean longitude of the fixes with times.
int OffsetOfTracks(const GisFile& file) {
  double sum = 0;
  size_t count = 0;
  for (const GisTrack& track : file.tracks) {
    for (const GisFix& fix : track.fixes) {
      if (!fix.utc) continue;
      sum += fix.lon;
      ++count;
    }
  }
  return count == 0 ? 0 : UsualOffset(sum / static_cast<double>(count));
}

/// Posts what was looked for in a file without tracks and waypoints, and which separator it has.
void NoteNothingFound(Messages& messages, std::string_view text, const std::string& name) {
  const OriginScope origin(messages, name);
  if (IsKmlText(text)) {
    NoteError(messages,
              "There are no tracks and no waypoints in %s: looked for points, lines and tracks of "
              "placemarks",
              {name});
    return;
  }
  if (IsXmlText(text)) {
    NoteError(messages, "There are no tracks and no waypoints in %s: looked for trk and wpt",
              {name});
    return;
  }
  const char separator =
      SeparatorOf(TableText(std::string(text.substr(0, text.find_first_of("\r\n")))));
  const bool isOther = separator != ',' && text.find(separator) != std::string_view::npos;
  NoteError(messages,
            "There are no tracks and no waypoints in %s: looked for latitude in column 5 and "
            "longitude in column 6, separated by commas%s",
            {name, isOther ? ", not " + std::string(SeparatorName(separator)) : ""});
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
  import.fileName = name;
  import.text = std::make_shared<std::string>(text);
  import.file = ReadGisText(text, name, map.workspace->messages, map.workspace->progress);
  if (IsCanceled(map.workspace->progress)) return std::nullopt;
  if (import.file.tracks.empty() && import.file.waypoints.empty()) {
    NoteNothingFound(map.workspace->messages, text, name);
    return std::nullopt;
  }
  NameTracks(import);
  import.offsetMinutes = OffsetOfTracks(import.file);
  if (!import.file.waypoints.empty()) ImportWaypoints(import, boxes.keepAltitude);
  return import;
}

std::string GisSummary(const GisImport& import) {
  std::vector<std::string> done;
  const size_t tracks = import.file.tracks.size();
  if (tracks > 0) {
    std::string text = Counted(import.taken, "track", "tracks");
    if (import.taken > 0) text += " with " + Counted(import.points, "point", "points");
    done.push_back(text);
  }
  if (!import.file.waypoints.empty()) {
    done.push_back(Counted(import.waypoints, "waypoint", "waypoints"));
  }
  std::string text = "Imported " + Joined(done) + " from " + import.fileName;
  if (const size_t skipped = tracks - import.taken; skipped > 0) {
    text += "; " + Counted(skipped, "track is skipped", "tracks are skipped");
  }
  if (import.refusedWaypoints > 0) {
    text +=
        "; " + Counted(import.refusedWaypoints, "waypoint is left out", "waypoints are left out");
  }
  text += LeftOutText(import.file.leftOut);
  if (import.timedTracks == 0) return text;
  if (import.repeats > 0) {
    text += "; " + Counted(import.repeats, "fix", "fixes") + " in one minute with another left out";
  }
  if (import.withoutTime > 0) {
    text += "; " + Counted(import.withoutTime, "fix", "fixes") + " without a time left out";
  }
  return text + "; times are UTC" + OffsetText(import.offsetMinutes);
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
  // A date that the window has filled in belongs to this track only.
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

GisField FindBadField(const GisImport& import, const GisTrailFields& fields) {
  TrailSettings settings;
  return ReadFields(fields, import.map->workspace->preferences.europeanDates, settings);
}

std::optional<std::vector<GisFixState>> StatesOfFixes(const GisImport& import,
                                                      const GisTrack& track,
                                                      const GisTrailFields& fields) {
  TrailSettings settings;
  const bool europeanDates = import.map->workspace->preferences.europeanDates;
  if (ReadFields(fields, europeanDates, settings) != GisField::None) return std::nullopt;
  return ChooseFixes(track, settings, fields.boxes.times, import.offsetMinutes).states;
}

void SkipTrack(GisImport& import) {
  if (CurrentTrack(import) != nullptr) ++import.current;
}

}  // namespace orvane
