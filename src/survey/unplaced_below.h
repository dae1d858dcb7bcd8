#pragma once

#include "model/map.h"

namespace orvane {

/// Points of basis maps that have no place of their own. A solve of a map above can give them one,
/// which must not count as known in the next solve of that map.

/// Remembers in `Map::unplacedBelow` the points of the map's bases that have no place, and what they
/// have gathered. Call it before readings of the map place any of them. What is remembered already
/// stays. Maps above forget the points of which this map knows better.
void NoteUnplacedBelow(Map& map);

/// Forgets the points that got nothing since `NoteUnplacedBelow`.
void KeepGivenBelow(Map& map);

/// Takes back what solves of this map, and of those above it, have given to points of its bases: they
/// are as the bases leave them. A place from another map over the same basis stays.
void RestoreUnplacedBelow(Map& map);

}  // namespace orvane
