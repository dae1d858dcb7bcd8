#include "shell/view_commands.h"

#include "base/messages.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"
#include "view/fit_to_map.h"
#include "view/view_transform.h"

namespace orvane {
namespace {

/// A command that makes sense in a map window alone; anywhere else it is answered with a beep.
Shell::Handler OnMap(Shell& shell, void (*run)(Shell& shell, MapWindowWidget& window)) {
  return [&shell, run](ProgramWindow& window) {
    if (window.Kind() == WindowKind::Map) {
      run(shell, *window.MapSide());
    } else {
      shell.Beep();
    }
  };
}

void Zoom(MapWindowWidget& window, float factor) {
  MapWindow& view = window.View().View();
  ZoomAboutPixel(view, {view.centerColumn, view.centerRow}, static_cast<double>(factor));
  window.View().RequestRepaint();
}

void HideGrids(Shell&, MapWindowWidget& window) {
  window.View().View().flags ^= MapWindowGridsHidden;
  window.View().RequestRepaint();
  RefreshMapMenu(window.Menu(), window.View().View());
  window.RefreshMenu();
}

template <CoordinateDisplay Form>
void ShowAngles(Shell&, MapWindowWidget& window) {
  window.View().View().coordinateDisplay = Form;
  window.View().RequestRepaint();
  RefreshMapMenu(window.Menu(), window.View().View());
  window.RefreshMenu();
}

void ShowWholeMap(Shell&, MapWindowWidget& window) {
  FitToMap(window.View().View());
  window.View().RequestRepaint();
}

void FullScreen(ProgramWindow& window) {
  QWidget& widget = window.Widget();
  widget.setWindowState(widget.windowState() ^ Qt::WindowFullScreen);
  if (window.Kind() == WindowKind::Map) window.MapSide()->RefreshMenu();
}

}  // namespace

void PlugViewCommands(Shell& shell) {
  shell.Plug(CommandZoomIn, OnMap(shell, [](Shell&, MapWindowWidget& window) { Zoom(window, 2); }));
  shell.Plug(CommandZoomOut,
             OnMap(shell, [](Shell&, MapWindowWidget& window) { Zoom(window, 0.5F); }));
  shell.Plug(CommandHideGrids, OnMap(shell, HideGrids));
  shell.Plug(CommandDegrees, OnMap(shell, ShowAngles<CoordinateDisplay::Degrees>));
  shell.Plug(CommandMinutes, OnMap(shell, ShowAngles<CoordinateDisplay::Minutes>));
  shell.Plug(CommandSeconds, OnMap(shell, ShowAngles<CoordinateDisplay::Seconds>));
  shell.Plug(CommandShowWholeMap, OnMap(shell, ShowWholeMap));
  shell.Plug(CommandFullScreen, FullScreen);
  shell.Plug(CommandEuropeanDates, [&shell](ProgramWindow&) {
    bool& european = shell.TheWorkspace().preferences.europeanDates;
    european = !european;
    shell.RefreshMenus();
  });
}

}  // namespace orvane
