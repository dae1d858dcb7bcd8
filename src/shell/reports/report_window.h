#pragma once

#include "commands/menu_state.h"
#include "commands/save_report.h"
#include "paint/render.h"
#include "shell/program_window.h"

#include <QMainWindow>
#include <QPointer>

#include <optional>
#include <string>

namespace orvane {

class CommandMenu;
class MapWindowWidget;
class Shell;

/// A picture that a report shows, such as a chart.
struct ReportPicture {
  Drawing drawing;      ///< in the pixels of the screen
  std::string name;     ///< of the file that is offered, without an ending
  std::string numbers;  ///< a table of what it shows
};

/// A window with a report on what a map window shows: what the windows of all reports share. It
/// follows the rows and the selection of the panes, every edit, and the reading of the map again.
/// It closes with its map window and deletes itself when it is closed.
class ReportWindow : public QMainWindow, public ProgramWindow {
  Q_OBJECT

 public:
  ~ReportWindow() override;

  QWidget& Widget() override { return *this; }
  MapWindowWidget* MapSide() override;
  bool Answer(CommandId id) override;
  bool TryClose() override;
  bool FollowsReload() const override { return true; }

  CommandMenu& Commands() { return *commands_; }

 protected:
  /// \param name  of the window for the help and the tests
  ReportWindow(Shell& shell, MapWindowWidget& mapWindow, WindowKind kind, const QString& name);

  Shell& TheShell() { return shell_; }
  /// May only be called while `FollowMap` may.
  MapWindowWidget& TheMapWindow();

  /// Sets the title to a text of the map.
  void ShowTitle(const std::string& title);
  void ShowMenu();

  virtual ReportMenuFacts MenuFacts() const = 0;
  virtual MenuState MakeMenu(const Map& map) const { return ReportMenu(map, MenuFacts()); }
  /// The rows of the panes, their selection or the map have changed.
  virtual void FollowMap() = 0;
  /// The map window is gone: no pointer into it or into the map may be used from now on.
  virtual void DropMap() = 0;
  /// \return what "Save As..." writes; nothing if it only beeps
  virtual std::optional<ReportFile> FileToSave() { return std::nullopt; }
  /// Copies the selected lines.
  /// \return false if the window has no lines
  virtual bool CopyLines() { return false; }
  /// \return false if the window has no lines
  virtual bool SelectAllLines() { return false; }
  /// \return the picture to copy or save; nothing if there is none now
  virtual std::optional<ReportPicture> PictureToSave() { return std::nullopt; }
  /// "Find..." was picked.
  /// \return false if the map is to be searched
  virtual bool Find() { return false; }

  void CopyPicture(const ReportPicture& picture);
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool SaveText();
  bool SavePicture();

  Shell& shell_;
  QPointer<MapWindowWidget> mapWindow_;
  CommandMenu* commands_;
};

}  // namespace orvane
