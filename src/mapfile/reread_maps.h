#pragma once

#include "model/map.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Reading open maps again. Maps that rest on each other hold pointers into each other: a trail of
/// the basis may run over points of the map above, a point of the basis may know a trail of it. So
/// all of them are read again together, beside the old ones, and take their places only when every
/// one is ready. Whatever fails before leaves all maps as they were.
///
/// A `Map` keeps its address. Every point, trail, range, grid and overlap gets a new one: whoever
/// keeps such an address, as the rows of a view, lets go of it first (`RememberRows`).

/// \return the maps that are read again with `map`: itself, and every map of the workspace that is
///         tied to it by bases, up or down, in any number of steps; a basis before what rests on it
std::vector<Map*> MapsTiedTo(Map& map);

enum class RereadOutcome {
  Done,
  Unreadable,  ///< the file can't be read, which a message says; no map has changed
  Cancelled    ///< no map has changed
};

/// Reads `map` again from its file. Its changes are dropped, and it is no longer marked as changed.
///
/// The maps tied to it keep what they hold: one that still says what its file says is read from
/// there, any other is written to memory and read back, with its unsaved changes. Messages on
/// bases that are read again were seen before and are left out.
/// \throws std::bad_alloc  no map has changed then
RereadOutcome RereadMap(Map& map);

/// What a map is made from again should a change of it fail half way.
struct MapBackup {
  std::optional<std::string> text;  ///< what it holds; none where its file says the same
  Map* basis = nullptr;             ///< what it rests on
  std::uint32_t flags = 0;          ///< its `MapFlag` bits
};

/// The backup of a map as it is now. It costs a save into memory if the map is unlike its file.
MapBackup BackUp(Map& map);

/// Puts a map back to what it was when the backup was made. The maps tied to it are treated as in
/// `RereadMap`; nothing is shown, and it can't be cancelled.
/// \return false if the file that the backup relies on can no longer be read; no map has changed
/// \throws std::bad_alloc  no map has changed then
bool RestoreMap(Map& map, const MapBackup& backup);

}  // namespace orvane
