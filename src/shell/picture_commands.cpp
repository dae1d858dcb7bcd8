#include "shell/picture_commands.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "model/workspace.h"
#include "paint/render.h"
#include "shell/files/picture_files.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

#include <string>

namespace orvane {
namespace {

/// The view as the window shows it, without a drag, a mark of Find or the like.
MapWindow ViewToDraw(MapWindowWidget& window) {
  MapWindow view = window.Shown();
  view.target = nullptr;
  view.flags &=
      ~std::uint32_t{MapWindowDrag | MapWindowPan | MapWindowFindMarker | MapWindowTrailFlash};
  return view;
}

RenderOptions OptionsOf(Shell& shell, MapWindowWidget& window) {
  return PictureOptionsOf(shell, window.View(), std::string(BaseName(window.TheMap().fileName)));
}

void CopyImage(Shell& shell, MapWindowWidget& window) {
  MapWindow view = ViewToDraw(window);
  std::string error;
  const auto png = RenderMap(view, PictureFormat::Png, OptionsOf(shell, window), error);
  CopyPng(png, error, {}, shell.TheWorkspace().messages);
}

void SavePicture(Shell& shell, MapWindowWidget& window) {
  std::string_view name = BaseName(window.TheMap().fileName);
  name = name.substr(0, name.rfind('.'));
  const auto path =
      AskPictureFile(shell, window, "Save Picture of Map...", name, shell.Maps().Files().pictures);
  if (!path) return;
  MapWindow view = ViewToDraw(window);
  std::string error;
  if (!RenderMap(view, OptionsOf(shell, window), *path, error)) {
    NoteError(shell.TheWorkspace().messages, "%s", {error});
  }
}

}  // namespace

void PlugPictureCommands(Shell& shell) {
  shell.Commands().PlugOnMap(CommandCopyImage,
                             [&shell](MapWindowWidget& window) { CopyImage(shell, window); });
  shell.Commands().PlugOnMap(CommandSavePicture,
                             [&shell](MapWindowWidget& window) { SavePicture(shell, window); });
}

}  // namespace orvane
