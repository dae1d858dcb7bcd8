#pragma once

#include "shell/program_window.h"

#include <QMainWindow>

namespace orvane {

class CommandMenu;
class Shell;

/// The window that is shown when no map is open, so that the user can open one. Closing it ends the
/// program.
class TaskWindow final : public QMainWindow, public ProgramWindow {
  Q_OBJECT

 public:
  explicit TaskWindow(Shell& shell);

  QWidget& Widget() override { return *this; }
  MapWindowWidget* MapSide() override { return nullptr; }
  bool TryClose() override;

  CommandMenu& Commands() { return *commands_; }
  /// Updates the menu from the preferences.
  void ShowMenu();
  /// Takes the place and size of `window`; fills the screen if that does.
  void TakePlaceOf(const QWidget& window);

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  Shell& shell_;
  CommandMenu* commands_;
};

}  // namespace orvane
