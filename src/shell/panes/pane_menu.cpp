#include "shell/panes/pane_menu.h"

#include "paint/display_text.h"
#include "panes/range_drops.h"
#include "shell/command_menu.h"
#include "shell/map/map_panes.h"
#include "shell/map/map_view.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"

#include <QMenu>

#include <algorithm>

namespace orvane {
namespace {

/// A menu that goes when it is closed.
QMenu& MakeMenu(MapPanes& panes, const char* name) {
  auto* menu = new QMenu(&panes);
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
void AddTrailsTo(MapPanes& panes, const RangePanelRow* wanted) {
  for (RangePanelRow& row : panes.View().Shown().rangeViews) {
    if (&row != wanted) continue;
    Q_EMIT panes.trailsDropped(&row);
    return;
  }
}

void FillRanges(QMenu& menu, MapPanes& panes) {
  for (const RangePanelRow& row : panes.View().Shown().rangeViews) {
    if (row.intersection != nullptr) continue;
    if (row.fixed) menu.addSeparator();
    // The toolkit would take an "&" as the mark of a key.
    QString text = DisplayText(row.text.value_or(""));
    QAction* add = menu.addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
    QObject::connect(add, &QAction::triggered, &panes,
                     [&panes, wanted = &row] { AddTrailsTo(panes, wanted); });
  }
}

}  // namespace

void OpenTrailMenu(MapPanes& panes, const CommandMenu& commands, QPoint global) {
  QMenu& menu = MakeMenu(panes, "trailMenu");
  AddEditAction(menu, QStringLiteral("Edit Trail"), panes.Trails().Rows());
  for (const CommandId id : {CommandAdd, CommandDelete}) menu.addAction(&commands.ActionOf(id));
  menu.addSeparator();
  for (const CommandId id : {CommandViewControl, CommandCheckTrails}) {
    menu.addAction(&commands.ActionOf(id));
  }
  menu.addSeparator();
  QMenu* ranges = menu.addMenu(QStringLiteral("Add to &Range"));
  ranges->setObjectName(QStringLiteral("addToRange"));
  ranges->setEnabled(!KeysFromSelection(panes.View().Shown().trailViews).empty());
  FillRanges(*ranges, panes);
  menu.popup(global);
}

void OpenRangeMenu(MapPanes& panes, const CommandMenu& commands, QPoint global) {
  PaneView& rows = panes.Ranges().Rows();
  QMenu& menu = MakeMenu(panes, "rangeMenu");
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
