#pragma once

#include "commands/save_map.h"

namespace orvane {

enum class CloseAnswer {
  Unchanged,  ///< nothing was to be saved, and nothing was asked
  Saved,
  Discarded,  ///< the user does not want to save; the changes stay in memory
  Refused     ///< the user cancelled, or could not or would not save after all
};

/// Asks what is to become of a changed map whose window closes, or of one that it rests on, and
/// saves if that is wished.
CloseAnswer AskBeforeClosing(Map& map, const SaveContext& context);

/// \return the changed map that lies farthest up the basis chain of `map`, itself included, or null
Map* FarthestChangedMap(Map& map);

}  // namespace orvane
