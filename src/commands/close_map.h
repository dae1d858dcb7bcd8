#pragma once

#include "commands/save_map.h"

namespace orvane {

enum class CloseAnswer {
  Unchanged,  ///< nothing was to be saved, and nothing was asked
  Saved,
  Discarded,  ///< the user does not want to save; the changes stay in memory
  Refused     ///< the user cancelled, or could not or would not save after all
};

/// Asks what to do with a changed map whose window closes, or with a changed basis, and saves it if
/// the user wants.
CloseAnswer AskBeforeClosing(Map& map, const SaveContext& context);

/// \return the changed map farthest down the basis chain of `map`, itself included, or null
Map* FarthestChangedMap(Map& map);

}  // namespace orvane
