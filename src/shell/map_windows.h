#pragma once

#include "shell/program_window.h"

#include <QObject>
#include <QString>

#include <vector>

namespace orvane {

struct EditNews;
struct Map;
struct RangePanelRow;
struct TrailPanelRow;

/// A window on a map, as the program around it knows it: what it must show, and how it hears of
/// changes. `MapWindowWidget` is the window itself.
class MapWindowBase : public ProgramWindow {
 public:
  MapWindowBase() : ProgramWindow(WindowKind::Map) {}

  virtual Map& TheMap() const = 0;
  /// Numbers the windows on one map, from 1.
  virtual int Number() const = 0;
  /// The name of the map, with the number of the window if there are others on the map.
  virtual QString Name() const = 0;

  /// Puts the name of the map, and whether it has changed, in the title.
  virtual void ShowTitle() = 0;
  /// Shows an edit of the map, or of one in its basis chain: in the panes, on the map, in the menu.
  virtual void FollowEdit(const EditNews& news) = 0;
  /// Updates the menu from map, view and focus.
  virtual void RefreshMenu() = 0;
  /// As `RefreshMenu`, and also updates what the menu shows of the map and the view: the basis and
  /// the check marks.
  virtual void RefreshMarks() = 0;
  /// As `RefreshMenu`, and also updates the check marks of the preferences.
  virtual void ShowPreferences() = 0;
  /// Draws the map again soon.
  virtual void RequestRepaint() = 0;
  /// Puts the whole map in view.
  virtual void ShowWhole() = 0;
};

/// Makes the windows that `MapWindows` opens.
class WindowMaker {
 public:
  virtual ~WindowMaker() = default;
  /// \return a new window, not yet shown; it deletes itself when it is closed
  virtual MapWindowBase& MakeMapWindow(Map& map) = 0;
};

/// The open map windows, and what all of them do together.
class MapWindows final : public QObject {
  Q_OBJECT

 public:
  /// \param maker  must outlive this
  explicit MapWindows(WindowMaker& maker) : maker_(maker) {}

  /// Shows a map in a new window; several may show one map.
  MapWindowWidget& Open(Map& map);
  /// A window calls this when it is about to close.
  void Forget(MapWindowBase& window);

  /// The open map windows, newest first.
  const std::vector<MapWindowWidget*>& All() const { return widgets_; }
  /// The same windows, for code that need not know how they are built.
  const std::vector<MapWindowBase*>& Bases() const { return windows_; }
  /// The open windows on any of some maps, newest first.
  std::vector<MapWindowWidget*> On(const std::vector<Map*>& maps) const;
  /// \return how many windows show a map
  int CountOn(const Map& map) const;
  /// The number for a new window on a map: the smallest that no other window on the map has.
  int FreeNumber(const Map& map) const;

  void ShowTitles();
  /// Titles and menus: a map has become dirty, or is no longer.
  void ShowDirty();
  void FollowEdit(const EditNews& news);
  /// Updates the marks of the windows on a map.
  void RefreshMarksOn(const Map& map);
  /// Updates the menus, also those of other windows, after the preferences have changed.
  void ShowPreferences();
  void RequestRepaint();
  /// Puts the whole map in view in each window on it: it has got its first places.
  void ShowWhole(const Map& map);

 Q_SIGNALS:
  /// A window has come or gone.
  void windowsChanged();
  /// The last window is about to close.
  void lastWindowClosed(QWidget* window);
  void preferencesChanged();
  /// The user answered the offer of a window to reload its map.
  void reloadAnswered(orvane::MapWindowWidget* window, bool reload);
  /// The user wants to see the Print dialog of a window, without printing.
  void printDialogRequested(orvane::MapWindowWidget* window);
  /// The user dragged a transect across the map of a window.
  void transectDrawn(orvane::MapWindowWidget* window);
  /// The user wants the editor of a row of a pane.
  void trailEditRequested(orvane::MapWindowWidget* window, const orvane::TrailPanelRow* row);
  void rangeEditRequested(orvane::MapWindowWidget* window, orvane::RangePanelRow* row);

 private:
  WindowMaker& maker_;
  std::vector<MapWindowBase*> windows_;    ///< newest first
  std::vector<MapWindowWidget*> widgets_;  ///< the same windows
};

}  // namespace orvane
