#pragma once

#include "model/map.h"
#include "model/workspace.h"

#include <string>

namespace orvane {

/// The map of a file: the one in the workspace if it was opened before, under any spelling of its
/// folder; else the file is read, finished and solved now. A file that can't be read gives a
/// message and an empty map with that name.
/// \param name      a path from the root or from the working directory; messages show it as it is,
///                  and the map's `fileName` is the whole path
/// \param readable  if not null, receives whether the file was read, now or earlier
Map& OpenMap(Workspace& workspace, const std::string& name, bool* readable = nullptr);

/// \return the map of that file if it was opened before, without regard to case and to the spelling
///         of its folder; else null
Map* FindOpenMap(Workspace& workspace, const std::string& name);

/// As `OpenMap`, for work that can be cancelled (`Workspace::progress`). A map whose basis was open
/// before is opened to the end: its lines can change the basis.
/// \return null if cancelled: then neither the map nor any that was opened with it is left
/// \throws std::bad_alloc with the same effect; maps that were open before are unchanged, if the
///                         memory is enough to read them again
Map* OpenMapUnlessCanceled(Workspace& workspace, const std::string& name, bool* readable = nullptr);

/// The first part of `FinishMap`: all but the ranges.
void FinishPoints(Map& map);

/// The work after a read: time-named points get their times, points on no trail are listed, and all
/// get their places, with the solver only if the file does not give every place. If this is
/// cancelled, the map can't be shown; for a map that stays open use a `MustFinish`.
void FinishMap(Map& map);

}  // namespace orvane
