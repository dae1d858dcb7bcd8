#pragma once

#include "base/files.h"
#include "commands/file_dialogs.h"
#include "model/map.h"

#include <functional>
#include <string>

namespace orvane {

class Messages;

/// The flows that save maps, with all their questions.

/// What a flow needs of the program around it.
struct SaveContext {
  FileDialogs& dialogs;
  FileSpecifications& files;
  std::string defaultDirectory;
  /// Sets or clears `MapDirty` and tells the windows.
  std::function<void(Map& map, bool dirty)> setDirty;
  /// Tells the windows that a map bears another file name.
  std::function<void(Map& map)> renamed{};
  /// Called after a map was written whole.
  std::function<void(Map& map, const std::string& path)> written{};
  /// What files are written with; a test lets its calls fail.
  FileSystem system = SystemFiles();
};

/// True if a save to `path` would destroy what this program has never read: the path leads to the
/// map's own file, and other bytes stand there than when it was last read or written. So does a
/// file that stands there by now, or that could not be read; one that has gone has nothing to lose.
bool HasChangedOnDisk(const Map& map, const std::string& path);

/// Saves every changed map from `map` up its basis chain, in full form. A map made by New is asked
/// for its name at each save: that it is untitled is never forgotten, so that a scratch map can
/// not become the map with which the program starts. Where the file has changed on the disk, the
/// user is asked first, and may give the map another name.
/// \return false if a name was not given or a map could not be written; what follows in the chain
///         is then not saved
bool SaveChangedMaps(Map& map, const SaveContext& context);

/// Asks for a name and saves the map under it, and, where the user wants it, its basis beside it.
/// Choosing the map's own file, when that has changed on the disk, is asked about too.
/// \param full  also stores the solved places
/// \return false if the user cancelled or the map could not be written
bool SaveMapAs(Map& map, bool full, const SaveContext& context);

/// Asks for the folder of a map's shapefiles; the name in the dialog only shows the folder.
/// \return the folder; empty if the user cancelled
std::string AskShapefileFolder(const Map& map, const SaveContext& context);

/// Tells that a file dialog broke down. That ends the program.
void NoteFileDialogFailure(Messages& messages);

}  // namespace orvane
