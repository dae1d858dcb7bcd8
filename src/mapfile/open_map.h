#pragma once

#include "model/map.h"
#include "model/workspace.h"

#include <string>

namespace orvane {

/// The map of that file: the one in the workspace if it was opened before, under whatever spelling
/// of its folder, else read, finished and solved now. A file that can't be read gives a message and
/// an empty map of that name.
/// \param name      a path from the root or from the working directory; messages show it as it is,
///                  and the map's `fileName` is the whole path
/// \param readable  if not null, receives whether the file was read, now or earlier
Map& OpenMap(Workspace& workspace, const std::string& name, bool* readable = nullptr);

/// \return the map of that file if it was opened before, without regard to case and to how its
///         folder is spelled; else null
Map* FindOpenMap(Workspace& workspace, const std::string& name);

/// As `OpenMap`, for work that may be called off (`Workspace::progress`).
/// A map that rests on one that was open before is opened to the end: its lines may change the
/// other one.
/// \return null if it was: then neither the map nor any that was opened with it is left
/// \throws std::bad_alloc  the same; maps that were open before are as they were, if the memory
///                         suffices to read them again
Map* OpenMapUnlessCancelled(Workspace& workspace, const std::string& name,
                            bool* readable = nullptr);

/// What follows a read: time-named points get their times, points on no trail are listed, and all
/// get their places, by the solver only if some place is not known from the file alone. Where that
/// is called off the map is not fit to be shown; who finishes a map that stays keeps it from that
/// by a `MustFinish`.
void FinishMap(Map& map);

}  // namespace orvane
