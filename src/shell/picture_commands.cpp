#include "shell/picture_commands.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "model/workspace.h"
#include "paint/render.h"
#include "shell/files/dialog_start.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

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

RenderOptions OptionsOf(MapWindowWidget& window) {
  RenderOptions options;
  options.antialias = window.TheMap().workspace->preferences.smoothLines;
  options.pixelsPerInch = window.View().logicalDpiY() * window.View().devicePixelRatioF();
  options.title = BaseName(window.TheMap().fileName);
  return options;
}

void CopyImage(Shell& shell, MapWindowWidget& window) {
  MapWindow view = ViewToDraw(window);
  std::string error;
  const auto bytes = RenderMap(view, PictureFormat::Png, OptionsOf(window), error);
  if (!bytes) {
    NoteError(shell.TheWorkspace().messages, "%s", {error});
    return;
  }
  QGuiApplication::clipboard()->setImage(QImage::fromData(
      reinterpret_cast<const uchar*>(bytes->data()), static_cast<int>(bytes->size())));
}

void SavePicture(Shell& shell, MapWindowWidget& mapWindow) {
  Messages& messages = shell.TheWorkspace().messages;
  FileSpecification& file = shell.Maps().Files().pictures;
  PrepareSpecification(file, shell.Maps().Files().maps, StartOfDialogs(shell, mapWindow), "png");
  std::string_view name = BaseName(mapWindow.TheMap().fileName);
  name = name.substr(0, name.rfind('.'));
  file.name = std::string(name) + "." + file.type;
  switch (shell.Dialogs().AskSave("Save Picture of Map...", file)) {
    case FileAnswer::Failed:
      NoteFileDialogFailure(messages);
      return;
    case FileAnswer::Canceled:
      return;
    case FileAnswer::Chosen:
      break;
  }
  const size_t dot = file.name.rfind('.');
  if (PictureFormatOf(file.name) && dot != std::string::npos) file.type = file.name.substr(dot + 1);
  MapWindow view = ViewToDraw(mapWindow);
  std::string error;
  if (!RenderMap(view, OptionsOf(mapWindow), PathOf(file), error)) {
    NoteError(messages, "%s", {error});
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
