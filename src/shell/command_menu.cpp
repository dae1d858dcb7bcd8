#include "shell/command_menu.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace orvane {
namespace {

QString TextOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

CommandMenu::CommandMenu(QMainWindow& window) : QObject(&window), window_(window) {
  for (const MenuInfo& info : AllMenus()) {
    QMenu* menu = window_.menuBar()->addMenu(TextOf(info.title));
    menu->setObjectName(QStringLiteral("menu") + menu->title().remove(QLatin1Char('&')));
    FillMenu(*menu, info);
  }
  // One of these is always on.
  auto* angles = new QActionGroup(this);
  for (const CommandId id : {CommandDegrees, CommandMinutes, CommandSeconds, CommandUtm}) {
    angles->addAction(&ActionOf(id));
  }
}

void CommandMenu::FillMenu(QMenu& menu, const MenuInfo& info) {
  for (const CommandId id : info.items) {
    if (id == CommandNone) {
      menu.addSeparator();
      continue;
    }
    const CommandInfo& command = *FindCommand(id);
    if (!IsSubmenu(id)) {
      menu.addAction(MakeAction(command));
    } else if (command.text.empty()) {
      menus_[id] = &menu;  // its entries are in this menu itself
    } else {
      menus_[id] = menu.addMenu(TextOf(command.text));
    }
  }
}

QAction* CommandMenu::MakeAction(const CommandInfo& command) {
  auto* action = new QAction(TextOf(command.text), this);
  action->setObjectName(QStringLiteral("command%1").arg(static_cast<int>(command.id)));
  action->setMenuRole(QAction::NoRole);
  action->setShortcut(QKeySequence(TextOf(command.key), QKeySequence::PortableText));
  action->setCheckable(command.checkable);
  connect(action, &QAction::triggered, this, [this, id = command.id] { Q_EMIT picked(id); });
  actions_[command.id] = action;
  window_.addAction(action);  // so that its key works while the bar is hidden
  return action;
}

QAction& CommandMenu::ActionOf(CommandId id) const { return *actions_.at(id); }

QMenu& CommandMenu::MenuOf(CommandId id) const { return *menus_.at(id); }

void CommandMenu::Show(const MenuState& state, const std::function<bool(CommandId)>& available) {
  for (const auto& [id, action] : actions_) {
    const CommandState& command = state.At(id);
    action->setText(TextOf(command.text));
    action->setEnabled(command.enabled && available(id));
    action->setChecked(command.checked);
  }
}

}  // namespace orvane
