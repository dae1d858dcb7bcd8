#include "commands/close_map.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "model/workspace.h"

namespace orvane {

Map* FarthestChangedMap(Map& map) {
  Map* farthest = nullptr;
  for (Map* each = &map; each != nullptr; each = each->basis) {
    if (IsDirty(*each)) farthest = each;
  }
  return farthest;
}

CloseAnswer AskBeforeClosing(Map& map, const SaveContext& context) {
  const Map* changed = FarthestChangedMap(map);
  if (changed == nullptr) return CloseAnswer::Unchanged;
  switch (AskUser(map.workspace->messages, "Save Map?", "Save", "Cancel", "Don't Save",
                  "%s has changed, do you want to save it?", {BaseName(changed->fileName)})) {
    case 1:
      return SaveChangedMaps(map, context) ? CloseAnswer::Saved : CloseAnswer::Refused;
    case 2:
      return CloseAnswer::Refused;
    default:
      return CloseAnswer::Discarded;
  }
}

}  // namespace orvane
