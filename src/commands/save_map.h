#pragma once

#include "base/files.h"
#include "commands/file_dialogs.h"
#include "model/map.h"

#include <functional>
#include <string>

namespace orvane {

class Messages;

/// Saving maps, with all questions.

/// What saving needs from the program around it.
struct SaveContext {
  FileDialogs& dialogs;
  FileSpecifications& files;
  std::string defaultDirectory;
  /// The map now has no changes that its file lacks: clears `MapDirty`.
  std::function<void(Map& map)> saved;
  /// Notifies the windows that a map has another file name.
  std::function<void(Map& map)> renamed{};
  /// Called after a map was written completely.
  std::function<void(Map& map, const std::string& path)> written{};
  /// The file system for writing; tests make its calls fail.
  FileSystem system = SystemFiles();
};

/// True if a save to `path` would destroy data that this program has never read: the path is the
/// map's own file, which now has other bytes than when it was last read or written. This includes a
/// file that is new or could not be read. A file that is gone has nothing to lose.
bool HasChangedOnDisk(const Map& map, const std::string& path);

/// Saves every changed map from `map` down its basis chain, in full form. A map made by New is
/// asked for its name at each save (see docs/compatibility.md), so that a scratch map does not
/// become the map with which the program starts. If a file has changed on the disk, the user is
/// asked first, and may choose another name.
/// \return false if a name was not given or a map could not be written; the rest of the chain is
///         then not saved
bool SaveChangedMaps(Map& map, const SaveContext& context);

/// Asks for a name and saves the map under it, and, if the user wants, its basis beside it. Asks
/// before it replaces the map's own file if that has changed on the disk.
/// \param full  also stores the solved places
/// \return false if the user cancelled or the map could not be written
bool SaveMapAs(Map& map, bool full, const SaveContext& context);

/// Asks for the folder of a map's shapefiles; the name in the dialog only carries the folder.
/// \return the folder; empty if the user cancelled
std::string AskShapefileFolder(const Map& map, const SaveContext& context);

/// Reports a file dialog that failed, which ends the program.
/// \return true if the user chose a file
bool WasChosen(FileAnswer answer, Messages& messages);

}  // namespace orvane
