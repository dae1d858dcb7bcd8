#pragma once

#include "model/former_contents.h"
#include "model/map.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Reading open maps again. A map and its basis have pointers into each other: a trail of the basis
/// can have points of the map above, a point of the basis can refer to a trail of that map. So all
/// of them are read again together, beside the old ones, and replace them only when all are ready.
/// A failure before that leaves all maps unchanged.
///
/// A `Map` keeps its address. Every point, trail, range, grid and overlap gets a new one: code that
/// keeps such an address, such as the rows of a view, must drop it (`RememberRows`), at the latest when
/// the `FormerContents` go.

/// \return the maps that are read again with `map`: itself, and every map of the workspace that is
///         connected to it by bases, up or down, in any number of steps; a basis before the maps
///         above it
std::vector<Map*> MapsTiedTo(Map& map);

enum class RereadOutcome {
  Done,
  Unreadable,  ///< the file can't be read, with a message; no map has changed
  Canceled     ///< no map has changed
};

/// Reads `map` again from its file. Its changes are dropped, and it is no longer marked as changed.
///
/// The connected maps keep their content: one that is still like its file is read from there, any
/// other is written to memory and read back, with its unsaved changes. Messages about bases that
/// are read again were shown before and are omitted.
/// \param former  gets what the maps held before; null if this need not be undone
/// \throws std::bad_alloc  no map has changed then
RereadOutcome RereadMap(Map& map, FormerContents* former = nullptr);

/// What a map is rebuilt from if a change to it fails half way.
struct MapBackup {
  std::optional<std::string> text;  ///< its content; none if its file has the same
  Map* basis = nullptr;             ///< its basis
  std::uint32_t flags = 0;          ///< its `MapFlag` bits
};

/// Makes a backup of a map as it is now. If the map is unlike its file, this is a save into memory.
MapBackup BackUp(Map& map);

/// Restores a map from its backup. The connected maps are treated as in `RereadMap`; no message is
/// shown, and it can't be cancelled.
/// \return false if the backup needs the file and it can no longer be read; no map has changed
/// \throws std::bad_alloc  no map has changed then
bool RestoreMap(Map& map, const MapBackup& backup);

}  // namespace orvane
