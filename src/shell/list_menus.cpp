#include "shell/list_menus.h"

#include "shell/bring_to_front.h"
#include "shell/command_menu.h"
#include "shell/files/local_files.h"
#include "shell/shell.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

namespace orvane {
namespace {

/// The object name that marks an entry of a list among the commands of a menu.
constexpr auto EntryName = "listEntry";

void RemoveEntries(QMenu& menu) {
  const QList<QAction*> actions = menu.actions();
  for (QAction* action : actions) {
    if (action->objectName() == QLatin1String(EntryName)) delete action;
  }
}

/// A text with a digit that picks it; from the tenth on without.
QString Numbered(int index, QString text) {
  text.replace(QLatin1Char('&'), QStringLiteral("&&"));
  return index < 9 ? QStringLiteral("&%1  %2").arg(index + 1).arg(text) : text;
}

QAction* AddEntry(QMenu& menu, const QString& text) {
  QAction* action = menu.addAction(text);
  action->setObjectName(QLatin1String(EntryName));
  return action;
}

void FillRecentMaps(Shell& shell, QMenu& menu) {
  RemoveEntries(menu);
  int index = 0;
  for (const std::string& file : shell.Maps().Recent()) {
    QAction* action = AddEntry(menu, Numbered(index++, LocalFileName(file)));
    QObject::connect(action, &QAction::triggered, &shell, [&shell, path = file] {
      shell.Guard().Run([&] { shell.OpenRecentFile(path); });
    });
  }
  if (index == 0) AddEntry(menu, QStringLiteral("No maps yet"))->setEnabled(false);
}

void FillWindowList(Shell& shell, QMenu& menu) {
  RemoveEntries(menu);
  int index = 0;
  // Oldest first, so that a window keeps its digit while others open.
  const std::vector<MapWindowBase*>& windows = shell.Windows().Bases();
  for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
    QWidget* window = &(*it)->Widget();
    QAction* action = AddEntry(menu, Numbered(index++, (*it)->Name()));
    action->setCheckable(true);
    action->setChecked(window->isActiveWindow());
    QObject::connect(action, &QAction::triggered, window, [window] { BringToFront(*window); });
  }
}

}  // namespace

void PlugListMenus(Shell& shell, CommandMenu& commands) {
  QMenu& recent = commands.MenuOf(CommandRecentMaps);
  QObject::connect(&recent, &QMenu::aboutToShow, &commands,
                   [&shell, &recent] { FillRecentMaps(shell, recent); });
  QMenu& windows = commands.MenuOf(CommandWindowList);
  QObject::connect(&windows, &QMenu::aboutToShow, &commands,
                   [&shell, &windows] { FillWindowList(shell, windows); });
}

}  // namespace orvane
