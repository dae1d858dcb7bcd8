#pragma once

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
  /// May refuse to let a map be written to its file, after a question of its own: the file may
  /// have changed since it was read. None lets every map be written.
  std::function<bool(Map& map, const std::string& path)> mayWrite{};
  /// Called after a map was written whole.
  std::function<void(Map& map, const std::string& path)> written{};
};

/// Saves every changed map from `map` up its basis chain, in full form. A map made by New is asked
/// for its name at each save: that it is untitled is never forgotten, so that a scratch map can
/// not become the map with which the program starts.
/// \return false if a name was not given or a map could not be written; what follows in the chain
///         is then not saved
bool SaveChangedMaps(Map& map, const SaveContext& context);

/// Asks for a name and saves the map under it, and, where the user wants it, its basis beside it.
/// \param full  also stores the solved places
/// \return false if the user cancelled or the map could not be written
bool SaveMapAs(Map& map, bool full, const SaveContext& context);

/// Asks for the folder of a set of shapefiles; the name in the dialog only tells the folder.
/// \return the folder; empty if the user cancelled
std::string AskShapefileFolder(Messages& messages, const SaveContext& context);

/// Tells that a file dialog broke down. That ends the program.
void NoteFileDialogFailure(Messages& messages);

}  // namespace orvane
