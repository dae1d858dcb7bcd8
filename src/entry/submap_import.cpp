#include "entry/submap_import.h"

#include "base/messages.h"
#include "entry/import_summary.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/workspace.h"

#include <iterator>
#include <vector>

namespace orvane {

namespace {

/// How many records of each kind a map has.
struct Contents {
  size_t points = 0;
  size_t placesOfPoints = 0;
  std::vector<size_t> freePlaces;  ///< those of points that new ones may take
  size_t trails = 0;
  size_t ranges = 0;
  size_t grids = 0;
};

template <typename List>
size_t Length(const List& list) {
  return static_cast<size_t>(std::distance(list.begin(), list.end()));
}

Contents ContentsOf(const Map& map) {
  Contents contents{.points = map.pointStore.size(),
                    .placesOfPoints = map.pointStore.PlaceCount(),
                    .freePlaces = {},
                    .trails = Length(map.trails),
                    .ranges = Length(map.ranges),
                    .grids = Length(map.grids)};
  for (size_t place = 0; place < contents.placesOfPoints; ++place) {
    if (map.pointStore.IsFree(place)) contents.freePlaces.push_back(place);
  }
  return contents;
}

/// How many of the points that are new since then have no place in the world.
size_t CountUnplaced(const Map& map, const Contents& before) {
  const PointStore& points = map.pointStore;
  size_t count = 0;
  const auto look = [&](size_t place) {
    if (!points.IsFree(place) && !IsPlaced(points[place])) ++count;
  };
  for (const size_t place : before.freePlaces) look(place);
  for (size_t place = before.placesOfPoints; place < points.PlaceCount(); ++place) look(place);
  return count;
}

/// \param before  the contents of the map before the import
std::string SummaryOf(const Map& map, const Contents& before, const std::string& path) {
  const Contents after = ContentsOf(map);
  std::vector<std::string> parts;
  const auto add = [&](size_t count, std::string_view one, std::string_view many) {
    if (count > 0) parts.push_back(Counted(count, one, many));
  };
  add(after.points - before.points, "point", "points");
  add(after.trails - before.trails, "trail", "trails");
  add(after.ranges - before.ranges, "range", "ranges");
  add(after.grids - before.grids, "grid", "grids");
  if (parts.empty()) {
    return "Nothing new in " + path +
           ": looked for lines of a map file, each a letter and fields separated by tabs";
  }
  const size_t unplaced = CountUnplaced(map, before);
  std::string text = "Imported " + Joined(parts) + " from " + path;
  if (unplaced > 0) text += "; " + Counted(unplaced, "point has", "points have") + " no place";
  return text;
}

}  // namespace

std::string ImportSubmap(Map& map, const std::string& path) {
  Workspace& workspace = *map.workspace;
  const Contents before = ContentsOf(map);
  const bool readable = ReadMapFile(map, path);
  if (IsCanceled(workspace.progress)) {
    NoteWarning(workspace.messages, "Only a part of %s was imported", {path});
  }
  {
    // What was read stays, and must get its places.
    const MustFinish finish(workspace.progress);
    FinishMap(map);
  }
  return readable ? SummaryOf(map, before, path) : std::string();
}

}  // namespace orvane
