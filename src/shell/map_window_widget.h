#pragma once

#include "commands/menu_state.h"
#include "shell/program_window.h"

#include <QMainWindow>

#include <vector>

namespace orvane {

class CommandMenu;
struct EditNews;
class MapPanes;
class MapView;
struct MapWindow;
class ReloadBar;
class Shell;

/// A window on one map. Several windows may show the same map, each with its own view. The window
/// deletes itself when it is closed; the map stays.
class MapWindowWidget final : public QMainWindow, public ProgramWindow {
  Q_OBJECT

 public:
  /// \param shell  runs the commands; must outlive the window, as must `map`
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
  /// What the window shows of the map, and where: the record behind `View`.
  MapWindow& Shown();
  FocusPlace Focus() const;
  /// The bar that offers to read the map again.
  ReloadBar& Offer() { return *offer_; }

  CommandMenu& Commands() { return *commands_; }
  /// What the menu bar offers; call `ShowMenu` after a change.
  MenuState& Menu() { return menu_; }
  void ShowMenu();
  /// Updates the menu from map, view and focus.
  void RefreshMenu();
  /// As `RefreshMenu`, and also updates what the menu shows of the map and the view: the basis and
  /// the check marks.
  void RefreshMarks();

  /// Puts the name of the map, and whether it has changed, in the title.
  void ShowTitle();
  /// Shows an edit of the map, or of one that it rests on: in the panes, on the map, in the menu.
  void FollowEdit(const EditNews& news);
  /// Call after the rows of the view were made again: shows them and redraws the map.
  void ShowRows();

  /// Windows that close with this one. Each removes itself when it closes.
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
  void ConnectPanes();

  Shell& shell_;
  Map& map_;
  int number_;
  CommandMenu* commands_;
  ReloadBar* offer_;
  MapPanes* panes_;
  MenuState menu_;
  std::vector<ProgramWindow*> dependents_;
  bool mayClose_ = false;  ///< all questions have been answered
};

}  // namespace orvane
