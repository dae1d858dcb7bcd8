#include "shell/panes/view_control.h"

#include "shell/map/map_panes.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/panes/contour_work.h"
#include "shell/panes/range_visibility_dialog.h"
#include "shell/panes/trail_visibility_dialog.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"

namespace orvane {

void AskTrailVisibility(Shell& shell, MapWindowWidget& window) {
  MapWindow& view = window.Shown();
  const auto values = OpenTrailVisibility(view);
  if (!values) return;
  TrailVisibilityDialog dialog(
      *values,
      [&](const TrailVisibility& typed) {
        TrailVisibility chosen = typed;
        chosen.gavePattern = values->gavePattern;
        bool applied = false;
        RunContourWork(shell, [&](const ContourProgress& progress) {
          applied = ApplyTrailVisibility(view, chosen, shell.History(), progress);
        });
        return applied;
      },
      &window);
  dialog.exec();
  // Opening the dialog can already set a pattern.
  window.ShowRows();
}

void AskRangeVisibility(Shell& shell, MapWindowWidget& window) {
  MapWindow& view = window.Shown();
  const auto values = OpenRangeVisibility(view);
  if (!values) return;
  RangeVisibilityDialog dialog(
      *values, ControlsOfRange(view), window.TheMap().smName,
      [&](const RangeVisibility& typed) {
        bool applied = false;
        shell.Guard().Run([&] {
          BusyWork busy(shell.TheWorkspace(), shell.Boxes(), QStringLiteral("Drawing estimates"),
                        shell.Clock());
          applied = ApplyRangeVisibility(view, typed, &busy);
        });
        return applied;
      },
      &window);
  if (dialog.exec() == QDialog::Accepted) window.ShowRows();
}

void ViewControl(Shell& shell, MapWindowWidget& window) {
  switch (window.Focus()) {
    case FocusPlace::TrailList:
      return AskTrailVisibility(shell, window);
    case FocusPlace::RangeList:
      return AskRangeVisibility(shell, window);
    case FocusPlace::MapView:
    case FocusPlace::Neither:
      shell.Beep();
  }
}

}  // namespace orvane
