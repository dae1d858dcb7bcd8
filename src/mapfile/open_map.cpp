#include "mapfile/open_map.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/text.h"
#include "mapfile/reader.h"
#include "model/time_names.h"
#include "ranges/analysis.h"
#include "survey/positions.h"
#include "survey/solver.h"

namespace orvane {

namespace {

/// True for a map whose file has that name, in whatever folder.
bool HasBaseName(const Map& map, std::string_view name) {
  const std::string& path = map.fileName;
  if (path.size() < name.size()) return false;
  const size_t before = path.size() - name.size();
  if (!SameName(std::string_view(path).substr(before), name)) return false;
  // A map made by New has no folder, and no file, before it is saved.
  return before == 0 ? (map.flags & MapUntitled) == 0 : path[before - 1] == '/';
}

}  // namespace

Map* FindOpenMap(Workspace& workspace, const std::string& name) {
  const std::string path = WholePath(name);
  const std::string_view baseName = BaseName(path);
  for (Map& map : workspace.maps) {
    if (!HasBaseName(map, baseName)) continue;
    if (SameName(map.fileName, path) || InSameFolder(map.fileName, path)) return &map;
  }
  return nullptr;
}

Map& OpenMap(Workspace& workspace, const std::string& name, bool* readable) {
  if (Map* map = FindOpenMap(workspace, name)) {
    if (readable != nullptr) *readable = true;
    return *map;
  }
  Map& map = MakeMap(workspace, WholePath(name));
  map.shownName = name;
  // What is found out once all lines are read is about the file as a whole.
  const OriginScope origin(workspace.messages, name);
  const bool read = ReadMapFile(map, name);
  if (readable != nullptr) *readable = read;
  FinishMap(map);
  return map;
}

Map* OpenMapUnlessCancelled(Workspace& workspace, const std::string& name, bool* readable) {
  const Map* newest = workspace.maps.empty() ? nullptr : &workspace.maps.front();
  const ReadingState reading = workspace.reading;
  const double latitude = workspace.lastLatitude;
  const double longitude = workspace.lastLongitude;
  Map& map = OpenMap(workspace, name, readable);
  if (!IsCancelled(workspace.progress)) return &map;
  // Nothing but these maps themselves points to what they hold, once it is as before.
  workspace.reading = reading;
  workspace.lastLatitude = latitude;
  workspace.lastLongitude = longitude;
  while (!workspace.maps.empty() && &workspace.maps.front() != newest) workspace.maps.pop_front();
  return nullptr;
}

void FinishMap(Map& map) {
  if (IsCancelled(map.workspace->progress)) return;
  for (Trail& trail : map.trails) FillPointTimes(trail);
  for (const auto& bucket : map.pointHash) {
    for (Point* point : bucket) {
      if (point->trail == nullptr && !point->name.empty()) map.loosePoints.push_front(point);
    }
  }
  if (NeedsSolving(map)) {
    ClearOwnPositions(map);
    SolveMap(map);
  }
  if (!IsCancelled(map.workspace->progress)) AnalyzeAllRanges(map);
}

}  // namespace orvane
