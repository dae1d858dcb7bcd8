#include "shell/help/help_guide.h"

#include "shell/files/local_files.h"
#include "shell/help/help_file.h"
#include "shell/help/help_topics.h"
#include "shell/help/help_window.h"
#include "shell/shell.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace orvane {
namespace {

/// An open menu would keep the keyboard from the help.
void CloseMenus() {
  while (QWidget* menu = QApplication::activePopupWidget()) {
    if (!menu->close()) return;
  }
}

}  // namespace

HelpGuide::HelpGuide(Shell& shell) : QObject(&shell), shell_(shell) {
  QCoreApplication::instance()->installEventFilter(this);
}

HelpGuide::~HelpGuide() { delete window_.data(); }

bool HelpGuide::eventFilter(QObject* watched, QEvent* event) {
  const bool isPress = event->type() == QEvent::KeyPress;
  if ((!isPress && event->type() != QEvent::ShortcutOverride) || !watched->isWidgetType()) {
    return false;
  }
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
  // The menu entry with this key opens the contents, whatever has the focus. So its shortcut is
  // overridden, and F1 arrives as a plain key.
  event->accept();
  if (isPress && !key->isAutoRepeat()) {
    const std::string_view page = HelpPageAt(*static_cast<QWidget*>(watched));
    CloseMenus();
    ShowPage(page);
  }
  return true;
}

void HelpGuide::ShowPage(std::string_view page) {
  if (asking_) return;
  if (helpFile_.empty()) {
    asking_ = true;
    const auto found =
        FindHelpFile(shell_, PathOfLocalFile(QCoreApplication::applicationDirPath()), file_);
    asking_ = false;
    if (!found) return;
    helpFile_ = *found;
  }
  HelpWindow* window = WindowFor(QApplication::activeModalWidget());
  window->ShowPage(page);
  window->show();
  window->raise();
  window->activateWindow();
}

HelpWindow* HelpGuide::WindowFor(QWidget* modal) {
  // While a modal dialog is open, only its children can be used.
  if (modal != nullptr) {
    auto* window = modal->findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
    if (window != nullptr) return window;
    window = new HelpWindow(LocalFileName(helpFile_), modal);
    // The dialog has to be answered first.
    connect(window, &HelpWindow::exitRequested, this, [this] { shell_.Beep(); });
    return window;
  }
  if (window_.isNull()) {
    window_ = new HelpWindow(LocalFileName(helpFile_), nullptr);
    connect(window_, &HelpWindow::exitRequested, this, [this] { shell_.ExitFlow(); });
  }
  return window_;
}

}  // namespace orvane
