#include "shell/task_window.h"

#include "shell/command_menu.h"
#include "shell/files/dropped_files.h"
#include "shell/first_size.h"
#include "shell/list_menus.h"
#include "shell/quiet_text.h"
#include "shell/shell.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>

namespace orvane {
TaskWindow::TaskWindow(Shell& shell)
    : ProgramWindow(WindowKind::Task), shell_(shell), commands_(new CommandMenu(*this)) {
  setObjectName(QStringLiteral("taskWindow"));
  setWindowTitle(QStringLiteral("Orvane"));
  setAcceptDrops(true);
  auto* hint = new QLabel(
      QStringLiteral("No map is open\n\nOpen one with Ctrl+O, begin a new one with Ctrl+N, "
                     "or drop a map file here"),
      this);
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  MakeTextQuiet(*hint);
  setCentralWidget(hint);
  GiveFirstSize(*this);
  connect(commands_, &CommandMenu::picked, this, [this](int id) {
    shell_.Commands().Run(id, *this);
    ShowMenu();  // a command that did nothing has still toggled its check mark
  });
  PlugListMenus(shell_, *commands_);
  ShowMenu();
}

void TaskWindow::ShowMenu() {
  MenuState menu = StartMenu(shell_.TheWorkspace().preferences);
  menu.At(CommandFullScreen).checked = isFullScreen();
  commands_->Show(menu, [this](CommandId id) { return shell_.Commands().IsPlugged(id); });
}

void TaskWindow::TakePlaceOf(const QWidget& window) {
  const bool fillsScreen = window.isFullScreen() || window.isMaximized();
  setWindowState(Qt::WindowNoState);
  setGeometry(fillsScreen ? window.normalGeometry() : window.geometry());
  setWindowState(window.windowState() & ~Qt::WindowMinimized);
}

void TaskWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange) ShowMenu();
}

bool TaskWindow::TryClose() { return shell_.ExitFlow(); }

void TaskWindow::closeEvent(QCloseEvent* event) { event->setAccepted(TryClose()); }

void TaskWindow::dragEnterEvent(QDragEnterEvent* event) { WelcomeFiles(*event); }

void TaskWindow::dropEvent(QDropEvent* event) { OpenDroppedFiles(shell_, *event); }

}  // namespace orvane
