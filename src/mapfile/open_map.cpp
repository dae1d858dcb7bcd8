#include "mapfile/open_map.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/text.h"
#include "mapfile/reader.h"
#include "mapfile/reread_maps.h"
#include "model/time_names.h"
#include "ranges/analysis.h"
#include "survey/positions.h"
#include "survey/solver.h"

#include <new>
#include <optional>
#include <vector>

namespace orvane {

namespace {

/// True for a map whose file has that name, in any folder.
bool HasBaseName(const Map& map, std::string_view name) {
  const std::string& path = map.fileName;
  if (path.size() < name.size()) return false;
  const size_t before = path.size() - name.size();
  if (!SameName(std::string_view(path).substr(before), name)) return false;
  // A map made by New has neither a folder nor a file before it is saved.
  return before == 0 ? !IsUntitled(map) : path[before - 1] == '/';
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
  bool read = false;
  {
    // If a basis can't be opened, the message is about the line that names it.
    std::optional<OriginScope> file;
    if (workspace.reading.depth == 0) file.emplace(workspace.messages, name);
    read = ReadMapFile(map, name);
  }
  if (readable != nullptr) *readable = read;
  // Messages after the last line are about the file as a whole.
  const OriginScope origin(workspace.messages, name);
  FinishMap(map);
  return map;
}

namespace {

/// Deletes the maps made since `newest`. Nothing else points to their records, unless their bases
/// were open before.
void DropNewMaps(Workspace& workspace, const Map* newest) {
  while (!workspace.maps.empty() && &workspace.maps.front() != newest) workspace.maps.pop_front();
}

/// The same if maps that were open before can have points and readings from the new ones.
void TakeBackNewMaps(Workspace& workspace, const Map* newest) {
  std::vector<Map*> olderBases;
  for (Map& map : workspace.maps) {
    if (&map == newest) break;
    bool isNew = false;
    for (const Map& each : workspace.maps) {
      if (&each == newest) break;
      isNew = isNew || &each == map.basis;
    }
    if (map.basis != nullptr && !isNew) olderBases.push_back(map.basis);
  }
  for (Map& map : workspace.maps) {
    if (&map == newest) break;
    map.basis = nullptr;
    map.fileName.clear();  // if it has to stay, no lookup finds it
  }
  for (Map* basis : olderBases) {
    if (!RestoreMap(*basis, BackUp(*basis))) return;
  }
  DropNewMaps(workspace, newest);
}

}  // namespace

Map* OpenMapUnlessCanceled(Workspace& workspace, const std::string& name, bool* readable) {
  const Map* newest = workspace.maps.empty() ? nullptr : &workspace.maps.front();
  const ReadingState reading = workspace.reading;
  const double latitude = workspace.lastLatitude;
  const double longitude = workspace.lastLongitude;
  const auto putBack = [&] {
    workspace.reading = reading;
    workspace.lastLatitude = latitude;
    workspace.lastLongitude = longitude;
  };
  try {
    Map& map = OpenMap(workspace, name, readable);
    if (!IsCanceled(workspace.progress)) return &map;
  } catch (const std::bad_alloc&) {
    putBack();
    TakeBackNewMaps(workspace, newest);
    throw;
  }
  putBack();
  DropNewMaps(workspace, newest);
  return nullptr;
}

void FinishPoints(Map& map) {
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
}

void FinishMap(Map& map) {
  if (IsCanceled(map.workspace->progress)) return;
  FinishPoints(map);
  if (!IsCanceled(map.workspace->progress)) AnalyzeAllRanges(map);
}

}  // namespace orvane
