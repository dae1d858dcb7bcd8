#include "shell/files/dialog_start.h"

#include "commands/save_map.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

namespace orvane {

DialogStart StartOfDialogs(Shell& shell, ProgramWindow& window) {
  const MapWindowWidget* mapWindow = window.MapSide();
  return {.mapFolder = mapWindow == nullptr ? std::string() : FolderOf(mapWindow->TheMap()),
          .defaultDirectory = shell.TheSettings().dialogDirectory};
}

std::optional<std::string> AskOpenFile(Shell& shell, const std::string& title,
                                       ProgramWindow& window, FileSpecification& file,
                                       std::string_view type) {
  PrepareSpecification(file, shell.Maps().Files().maps, StartOfDialogs(shell, window), type);
  if (!WasChosen(shell.Dialogs().AskOpen(title, file), shell.TheWorkspace().messages))
    return std::nullopt;
  return PathOf(file);
}

}  // namespace orvane
