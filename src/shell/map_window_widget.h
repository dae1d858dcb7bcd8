#pragma once

#include "commands/menu_state.h"
#include "shell/program_window.h"

#include <QMainWindow>

#include <vector>

namespace orvane {

class CommandMenu;
class MapPanes;
class MapView;
class ReloadBar;
class Shell;

/// A window on one map. Several may show the same map, each in its own way. It frees itself when
/// it is closed; the map stays.
class MapWindowWidget final : public QMainWindow, public ProgramWindow {
  Q_OBJECT

 public:
  /// \param shell  carries out the commands; must outlive the window, as must `map`
  MapWindowWidget(Shell& shell, Map& map);
  ~MapWindowWidget() override;

  QWidget& Widget() override { return *this; }
  MapWindowWidget* MapSide() override { return this; }
  bool TryClose() override;

  Map& TheMap() const { return map_; }
  /// Tells the windows on one map apart, from 1.
  int Number() const { return number_; }
  /// The name of the map, with the number of the window if there are others on the map.
  QString Name() const;
  MapPanes& Panes() { return *panes_; }
  MapView& View();
  FocusPlace Focus() const;
  /// The bar that offers to read the map again.
  ReloadBar& Offer() { return *offer_; }

  CommandMenu& Commands() { return *commands_; }
  /// What the menu bar offers; `ShowMenu` after a change.
  MenuState& Menu() { return menu_; }
  void ShowMenu();
  /// Brings the menu up to date with map, view and focus.
  void RefreshMenu();
  /// As `RefreshMenu`, after a change of what the menu shows of the map and the view: the basis, the
  /// marks.
  void RefreshMarks();

  /// Takes the name of the map as it is now, and whether it has changed.
  void ShowTitle();
  /// Brings the rows of the panes up to date with the map and draws it anew.
  /// \param fresh  make all rows anew, where the map rests on another one
  void ShowMap(bool fresh = false);

  /// Windows that hang on this one: they close with it. Each takes itself out when it goes.
  void AddDependent(ProgramWindow& window) { dependents_.push_back(&window); }
  void RemoveDependent(ProgramWindow& window);
  const std::vector<ProgramWindow*>& Dependents() const { return dependents_; }
  /// Closes them all, the editors first, each after its questions.
  /// \return false if the user wants one to stay
  bool CloseDependents() { return CloseDependents(true) && CloseDependents(false); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  bool AskToClose();
  bool CloseDependents(bool editors);

  Shell& shell_;
  Map& map_;
  int number_;
  CommandMenu* commands_;
  ReloadBar* offer_;
  MapPanes* panes_;
  MenuState menu_;
  std::vector<ProgramWindow*> dependents_;
  bool mayClose_ = false;  ///< all questions were asked
};

}  // namespace orvane
