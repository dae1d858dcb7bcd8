#include "shell/view_commands.h"

#include "base/latin1.h"
#include "base/messages.h"
#include "places/resolve_location.h"
#include "shell/map/map_view.h"
#include "shell/map/orientation_dialog.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"
#include "view/info_panel.h"
#include "view/scale_text.h"

#include <string>
#include <string_view>

namespace orvane {
namespace {

/// Most bytes of an answer, including the final zero.
constexpr size_t ScaleSize = 30;

void Zoom(MapWindowWidget& window, double factor) {
  MapWindow& view = window.Shown();
  ZoomToScale(view, factor * static_cast<double>(LogicalScale(view)));
  window.View().ShowMoved();
}

void ChangeZoom(Shell& shell, MapWindowWidget& window) {
  MapWindow& view = window.Shown();
  std::string answer = ScalePrompt(LogicalScale(view));
  for (;;) {
    if (!PromptForText(shell.TheWorkspace().messages, "Set Scale",
                       "Set the scale (zoom) factor\nExpressed as meters per pixel", answer,
                       ScaleSize)) {
      return;
    }
    if (const auto scale = ParseScale(answer)) {
      ZoomToScale(view, *scale);
      window.View().ShowMoved();
      return;
    }
    shell.Beep();
  }
}

/// \return `text` in UTF-8, or in Latin-1 if the map knows only that
std::string AsTheMapHasIt(Map& map, const std::string& text) {
  const std::string latin1 = AsLatin1(text);
  // Plain text is not looked up twice: a search may move the plane that the next one uses.
  if (latin1 == text || ResolveLocation(map, text)) return text;
  return ResolveLocation(map, latin1) ? latin1 : text;
}

/// Windows with a search of their own have handled the command before.
void Find(Shell& shell, MapWindowWidget& window) {
  const auto text = shell.FindDialog().Ask(shell.TheWorkspace().messages);
  if (text) window.View().Find(AsTheMapHasIt(window.TheMap(), *text));
}

void HideInfo(Shell&, MapWindowWidget& window) {
  window.Shown().flags ^= MapWindowInfoShown;
  window.View().ShowMoved();
  window.RefreshMarks();
}

void AskOrientation(Shell& shell, MapWindowWidget& window) {
  OrientationDialog dialog(window.Shown(), shell.Around(), &window);
  if (dialog.exec() == QDialog::Accepted) window.View().ShowMoved();
}

void HideGrids(Shell&, MapWindowWidget& window) {
  window.Shown().flags ^= MapWindowGridsHidden;
  window.View().RequestRepaint();
  window.RefreshMarks();
}

template <CoordinateDisplay Form>
void ShowAngles(Shell&, MapWindowWidget& window) {
  SetDisplayMode(window.Shown(), Form);
  window.View().RequestRepaint();
  window.RefreshMarks();
}

void ShowWholeMap(Shell&, MapWindowWidget& window) { window.ShowWhole(); }

void FullScreen(ProgramWindow& window) {
  QWidget& widget = window.Widget();
  widget.setWindowState(widget.windowState() ^ Qt::WindowFullScreen);
  if (window.Kind() == WindowKind::Map) window.MapSide()->RefreshMenu();
}

}  // namespace

void PlugViewCommands(Shell& shell) {
  const auto onMap = [&shell](CommandId id, void (*run)(Shell&, MapWindowWidget&)) {
    shell.Commands().PlugOnMap(id, [&shell, run](MapWindowWidget& window) { run(shell, window); });
  };
  onMap(CommandZoomIn, [](Shell&, MapWindowWidget& window) { Zoom(window, 2); });
  onMap(CommandZoomOut, [](Shell&, MapWindowWidget& window) { Zoom(window, 0.5); });
  onMap(CommandChangeZoom, ChangeZoom);
  shell.Commands().PlugOnMapSide(CommandFind,
                                 [&shell](MapWindowWidget& window) { Find(shell, window); });
  onMap(CommandHideInfo, HideInfo);
  onMap(CommandOrientation, AskOrientation);
  onMap(CommandHideGrids, HideGrids);
  onMap(CommandDegrees, ShowAngles<CoordinateDisplay::Degrees>);
  onMap(CommandMinutes, ShowAngles<CoordinateDisplay::Minutes>);
  onMap(CommandSeconds, ShowAngles<CoordinateDisplay::Seconds>);
  onMap(CommandUtm, ShowAngles<CoordinateDisplay::Utm>);
  onMap(CommandShowWholeMap, ShowWholeMap);
  shell.Commands().Plug(CommandFullScreen, FullScreen);
  shell.Commands().Plug(CommandSmoothLines, [&shell](ProgramWindow&) {
    bool& smooth = shell.TheWorkspace().preferences.smoothLines;
    smooth = !smooth;
    shell.Windows().ShowPreferences();
    shell.Windows().RequestRepaint();
  });
  shell.Commands().Plug(CommandEuropeanDates, [&shell](ProgramWindow&) {
    bool& european = shell.TheWorkspace().preferences.europeanDates;
    european = !european;
    shell.Windows().ShowPreferences();
  });
}

}  // namespace orvane
