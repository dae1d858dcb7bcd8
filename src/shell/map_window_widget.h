#pragma once

#include "commands/menu_state.h"
#include "panes/pane_follower.h"
#include "shell/map_windows.h"

#include <QMainWindow>

#include <vector>

namespace orvane {

class CommandMenu;
class MapPanes;
class MapView;
struct MapWindow;
struct RangePanelRow;
class ReloadBar;
class Shell;

/// A window on one map. Several windows may show the same map, each with its own view. The window
/// deletes itself when it is closed; the map stays.
class MapWindowWidget final : public QMainWindow, public MapWindowBase {
  Q_OBJECT

 public:
  /// \param shell  runs the commands; must outlive the window, as must `map`
  MapWindowWidget(Shell& shell, Map& map);
  ~MapWindowWidget() override;

  QWidget& Widget() override { return *this; }
  MapWindowWidget* MapSide() override { return this; }
  bool TryClose() override;

  Map& TheMap() const override { return map_; }
  int Number() const override { return number_; }
  QString Name() const override;
  void ShowTitle() override;
  void FollowEdit(const EditNews& news) override;
  void RefreshMenu() override;
  void RefreshMarks() override;
  void ShowPreferences() override;
  void RequestRepaint() override;
  void ShowWhole() override;

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
  /// Call after the rows of the view were made again: shows them and redraws the map.
  void ShowRows();

  /// Windows that close with this one. Each removes itself when it closes.
  void AddDependent(ProgramWindow& window) { dependents_.push_back(&window); }
  void RemoveDependent(ProgramWindow& window);
  const std::vector<ProgramWindow*>& Dependents() const { return dependents_; }
  /// Closes them all, the editors first, each after its questions.
  /// \return false if the user wants one to stay
  bool CloseDependents() { return CloseDependents(true) && CloseDependents(false); }
  /// The same before the map is read again: windows that follow that stay open.
  bool CloseBeforeReload();

 Q_SIGNALS:
  /// The rows of the panes, their selection, or the map have changed. Rows that a window remembers
  /// from before may be gone.
  void rowsChanged();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  bool AskToClose();
  bool CloseDependents(bool editors);
  void ConnectPanes();
  void AddSelectionToRange(RangePanelRow& row);

  Shell& shell_;
  Map& map_;
  int number_;
  CommandMenu* commands_;
  ReloadBar* offer_;
  MapPanes* panes_;
  MenuState menu_;
  PaneFollower follower_;
  std::vector<ProgramWindow*> dependents_;
  bool mayClose_ = false;  ///< all questions have been answered
};

}  // namespace orvane
