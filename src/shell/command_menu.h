#pragma once

#include "commands/menu_state.h"

#include <QObject>

#include <functional>
#include <map>

class QAction;
class QMainWindow;
class QMenu;

namespace orvane {

/// The menu bar of one window: an action for each command of the table, with its key.
class CommandMenu final : public QObject {
  Q_OBJECT

 public:
  /// \param window  gets the bar and owns its actions and menus
  explicit CommandMenu(QMainWindow& window);

  QAction& ActionOf(CommandId id) const;

  /// The menu of a command that opens one (`IsSubmenu`).
  QMenu& MenuOf(CommandId id) const;

  /// \param available  returns true for the commands that have a handler; others stay disabled
  void Show(const MenuState& state, const std::function<bool(CommandId)>& available);

 Q_SIGNALS:
  void picked(int id);

 private:
  void FillMenu(QMenu& menu, const MenuInfo& info);
  QAction* MakeAction(const CommandInfo& command);

  QMainWindow& window_;
  std::map<CommandId, QAction*> actions_;
  std::map<CommandId, QMenu*> menus_;
};

}  // namespace orvane
