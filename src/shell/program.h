#pragma once

#include "base/files.h"
#include "shell/program_places.h"
#include "shell/shell.h"

#include <QObject>

#include <memory>
#include <string>
#include <vector>

namespace orvane {

class MapRecovery;
class TaskWindow;

/// The whole program but its event loop: the shell with its windows, its commands, its preferences
/// and its recovery copies.
class Program final : public QObject, private WindowMaker {
  Q_OBJECT

 public:
  /// A program that keeps nothing.
  /// \param workspace  its messages must be `boxes`; all three must outlive the program
  Program(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings);
  /// A program that keeps preferences, recent maps and recovery copies in its own directory.
  Program(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings,
          const ProgramPlaces& places);
  ~Program() override;

  Shell& TheShell() { return shell_; }

  /// Opens the files from the command line, then reads the preferences. Without a file it opens the
  /// map that the preferences name, or asks for one. Recovered maps are read before all files, so
  /// that opening such a file finds its recovered form; each gets a window.
  void Start(const std::vector<std::string>& files);

  /// Keeps preferences and recent maps in a directory, which is made if it is missing.
  void KeepPreferencesIn(const std::string& directory);
  /// Keeps recovery copies in a directory.
  /// \param system  writes the copies; tests make its calls fail
  MapRecovery& KeepCopiesIn(const std::string& directory, FileSystem system = SystemFiles());

 private:
  MapWindowBase& MakeMapWindow(Map& map) override;
  void ShowTaskWindow();
  TaskWindow& TheTaskWindow();

  Shell shell_;
  std::unique_ptr<TaskWindow> taskWindow_;
};

}  // namespace orvane
