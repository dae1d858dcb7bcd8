#include "shell/panes/pane_menu.h"

#include "paint/display_text.h"
#include "panes/range_drops.h"
#include "shell/command_menu.h"
#include "shell/map/map_panes.h"
#include "shell/map_window_widget.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"

#include <QMenu>

#include <algorithm>

namespace orvane {
namespace {

/// A menu that goes when it is closed.
QMenu& MakeMenu(MapWindowWidget& window, const char* name) {
  auto* menu = new QMenu(&window);
  menu->setObjectName(QString::fromLatin1(name));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  return *menu;
}

void AddEditAction(QMenu& menu, const QString& text, PaneView& rows) {
  // The key is only shown: a shortcut would take it from the menu.
  QAction* edit = menu.addAction(text + QStringLiteral("\tReturn"));
  edit->setEnabled(rows.CanEditCurrent());
  QObject::connect(edit, &QAction::triggered, &rows, &PaneView::EditCurrent);
}

/// Drops the selected trails on a row, if it is still there.
void AddTrailsTo(MapWindowWidget& window, const RangePanelRow* wanted) {
  for (RangePanelRow& row : window.Shown().rangeViews) {
    if (&row != wanted) continue;
    window.AddSelectionToRange(row);
    return;
  }
}

void FillRanges(QMenu& menu, MapWindowWidget& window) {
  for (const RangePanelRow& row : window.Shown().rangeViews) {
    if (row.intersection != nullptr) continue;
    if (row.fixed) menu.addSeparator();
    // The toolkit would take an "&" as the mark of a key.
    QString text = DisplayText(row.text.value_or(""));
    QAction* add = menu.addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
    QObject::connect(add, &QAction::triggered, &window,
                     [&window, wanted = &row] { AddTrailsTo(window, wanted); });
  }
}

}  // namespace

void OpenTrailMenu(MapWindowWidget& window, QPoint global) {
  const CommandMenu& commands = window.Commands();
  QMenu& menu = MakeMenu(window, "trailMenu");
  AddEditAction(menu, QStringLiteral("Edit Trail"), window.Panes().Trails().Rows());
  for (const CommandId id : {CommandAdd, CommandDelete}) menu.addAction(&commands.ActionOf(id));
  menu.addSeparator();
  for (const CommandId id : {CommandViewControl, CommandCheckTrails}) {
    menu.addAction(&commands.ActionOf(id));
  }
  menu.addSeparator();
  QMenu* ranges = menu.addMenu(QStringLiteral("Add to &Range"));
  ranges->setObjectName(QStringLiteral("addToRange"));
  ranges->setEnabled(!KeysFromSelection(window.Shown().trailViews).empty());
  FillRanges(*ranges, window);
  menu.popup(global);
}

void OpenRangeMenu(MapWindowWidget& window, QPoint global) {
  const CommandMenu& commands = window.Commands();
  PaneView& rows = window.Panes().Ranges().Rows();
  QMenu& menu = MakeMenu(window, "rangeMenu");
  AddEditAction(menu, QStringLiteral("Edit Range"), rows);
  for (const CommandId id : {CommandAdd, CommandDelete}) menu.addAction(&commands.ActionOf(id));
  menu.addSeparator();
  menu.addAction(&commands.ActionOf(CommandViewControl));
  menu.addSeparator();
  QObject::connect(menu.addAction(QStringLiteral("Select All")), &QAction::triggered, &rows,
                   &PaneView::selectAllRequested);
  menu.popup(global);
}

}  // namespace orvane
